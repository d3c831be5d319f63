#include "apoio.h"
#include "gravacoes.h"

#include "data/bd.h"
#include "data/cadastros.h"
#include "data/conexao.h"
#include "data/manutencao.h"
#include "data/pendentes.h"
#include "lessons/andamento.h"
#include "platform/costuras.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/sistema.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QDir>
#include <QFileInfo>

#include <functional>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

static const QString kLog = u"SELECT RO_Cod FROM LG_LogAulas ORDER BY LG_Id"_s;

/// Rows of the log whose register does not take them, on real files. No box is shown, unless a test expects one.
class TstPendentes final : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void waitsAndComesInLater_data();
    void waitsAndComesInLater();
    void isLostWithABoxWhenItCanNotWaitEither();
    void aRegisterThatWasNotThereAtTheStart();
    void neverJoinsATransaction();
    void oneBadRowAmongManyHoldsUpNoOther();
    void rowsForOthersStay();
    void aDamagedFileIsSetAside();
    void anOlderRegisterTakesEachOnce();
    void aClockSetBackDoesNotReorder();

private:
    QString log() const { return mRegistro->sql(kLog).join(u' '); }
    void fillsUp() const { mRegistro->sql(u"ALTER TABLE LG_LogAulas RENAME TO Outra"_s); }
    void isMended() const { mRegistro->sql(u"ALTER TABLE Outra RENAME TO LG_LogAulas"_s); }
    /// The machine is switched off and on again.
    void restarts() const
    {
        reiniciaData();
        mRegistro->open();
        gBD->deliverWaitingRows();
    }
    static qint64 waiting() { return gBD->waitingRows().count(); }

    std::unique_ptr<Registro> mRegistro;
    std::unique_ptr<BoxScript> mBoxes;
};

void TstPendentes::init()
{
    failOnWarnings();
    reiniciaCosturas();
    reiniciaStartup();
    reiniciaLessons();
    mRegistro = std::make_unique<Registro>(kTresClasses);
    mRegistro->open();
    mBoxes = std::make_unique<BoxScript>();
}

void TstPendentes::cleanup()
{
    reiniciaData();
    mBoxes.reset();
    mRegistro.reset();
}

using Passo = std::function<void(const Registro &)>;

void TstPendentes::waitsAndComesInLater_data()
{
    const auto folder = [](const Registro &registro) { return QFileInfo(registro.native()).path(); };
    const auto moves = [folder](const QString &from, const QString &to) {
        return
            [=](const Registro &registro) { QVERIFY(QFile::rename(folder(registro) + from, folder(registro) + to)); };
    };
    const auto runs = [](const QString &sql) { return [=](const Registro &registro) { registro.sql(sql); }; };
    rows<Passo, Passo>({
        {"the register refuses it",
            runs(u"CREATE TRIGGER t BEFORE INSERT ON LG_LogAulas BEGIN SELECT RAISE(ABORT, 'x'); END"_s),
            runs(u"DROP TRIGGER t"_s)},
        {"a register that moved, and came back", runs(u"INSERT INTO QR_Registro VALUES ('mudou', 'x')"_s),
            runs(u"DELETE FROM QR_Registro WHERE chave = 'mudou'"_s)},
    });
    if (kOpenFilesMove)
        QTest::newRow("a share that goes and comes back") << std::tuple<Passo, Passo>(
            moves(u"/Cadastros.mdb"_s, u"/longe.mdb"_s), moves(u"/longe.mdb"_s, u"/Cadastros.mdb"_s));
}

void TstPendentes::waitsAndComesInLater()
{
    const auto [breaks, mends] = row<Passo, Passo>();
    logRow(1);
    for (const bool restart : {false, true}) {
        breaks(*mRegistro);
        logRow(2);
        logRow(3);
        QCOMPARE(waiting(), 2);
        mends(*mRegistro);
        if (restart)
            restarts();
        logRow(4);
        if (!restart)
            restarts(); // one that was refused is offered again at the start
        QCOMPARE(waiting(), 0);
    }
    QCOMPARE(mRegistro->sql(u"SELECT RO_Cod, count(*) FROM LG_LogAulas GROUP BY RO_Cod"_s),
        (QStringList{u"1|1"_s, u"2|2"_s, u"3|2"_s, u"4|2"_s}));
    QCOMPARE(mRegistro->sql(u"SELECT count(*) FROM LG_Entregas"_s), QStringList(u"7"_s));
}

void TstPendentes::isLostWithABoxWhenItCanNotWaitEither()
{
    mBoxes.reset();
    const BoxScript box{Resposta::Ok};
    mRegistro->nothingWaits();
    fillsUp();
    logRow(1);
    QCOMPARE(box.last().titulo, u"RSLog - Registro Atualiza"_s);
    QCOMPARE(box.last().texto, u"Não existe a tabela ou consulta \"LG_LogAulas\"."_s);
}

void TstPendentes::aRegisterThatWasNotThereAtTheStart()
{
    mBoxes.reset();
    const BoxScript notFound{Resposta::Ok};
    const QString away = mRegistro->native() + u".longe"_s;
    reiniciaData();
    gConfig.SetaCFG(u"ZETO_CAD="_s + barras(QFileInfo(mRegistro->native()).path()) + u"\r\n"_s);
    QVERIFY(QFile::rename(mRegistro->native(), away));
    AbreBDAlunos();
    logRow(1);
    QCOMPARE(waiting(), 1);
    QVERIFY(QFile::rename(away, mRegistro->native()));
    restarts();
    QCOMPARE(log(), u"1"_s);
}

void TstPendentes::neverJoinsATransaction()
{
    openClasses();
    gBD->RegistroAdiciona(u"RsClasses"_s);
    gBD->TransacaoInicio();
    gBD->RegistroAtualiza(u"RsClasses"_s);
    logRow(1); // a message came in
    QCOMPARE(waiting(), 1);
    gBD->TransacaoCancela();
    QCOMPARE(waiting(), 0);
    QCOMPARE(log(), u"1"_s);
    QCOMPARE(mRegistro->sql(u"SELECT count(*) FROM CL_Classes"_s), QStringList(u"3"_s));
}

void TstPendentes::oneBadRowAmongManyHoldsUpNoOther()
{
    constexpr int kMany = 1203;
    const QString identity = gBD->Source()->identity().identidade;
    for (int i = 1; i <= kMany; ++i)
        gBD->waitingRows().keep({.uuid = QString::number(i),
                                    .aluno = kGenerico,
                                    .classe = kGenerico,
                                    .data = agora(),
                                    .roteiro = i,
                                    .respostas = u"A:"_s,
                                    .cadastro = identity},
            mRegistro->native());
    mRegistro->sql(u"CREATE TRIGGER t BEFORE INSERT ON LG_LogAulas WHEN NEW.RO_Cod = 700 BEGIN "
                   "SELECT RAISE(ABORT, 'x'); END"_s);
    logRow(9999);
    QCOMPARE(waiting(), 1);
    QCOMPARE(gBD->waitingRows().rows(0, 2, true).front().motivo,
        u"O valor repete uma chave ou fere uma regra da tabela; nada foi gravado."_s);
    QVERIFY(!gBD->waitingRows().anyFresh());
    QCOMPARE(
        mRegistro->sql(u"SELECT count(*), min(RO_Cod = 9999 OR RO_Cod = LG_Id + (LG_Id > 699)) FROM LG_LogAulas"_s),
        QStringList(u"1203|1"_s)); // in their order
    mRegistro->sql(u"DROP TRIGGER t"_s);
    gBD->deliverWaitingRows();
    QCOMPARE(waiting(), 0);
}

void TstPendentes::rowsForOthersStay()
{
    gBD->waitingRows().keep({.uuid = u"a"_s,
                                .aluno = kGenerico,
                                .classe = kGenerico,
                                .data = agora(),
                                .roteiro = 1,
                                .respostas = u""_s,
                                .cadastro = u"outro"_s},
        mRegistro->native());
    gBD->waitingRows().keep({.uuid = u"b"_s,
                                .aluno = kGenerico,
                                .classe = kGenerico,
                                .data = agora(),
                                .roteiro = 2,
                                .respostas = u""_s}, // its register's identity was not known
        mRegistro->native() + u"x"_s);
    logRow(3);
    gBD->deliverWaitingRows();
    QCOMPARE(waiting(), 2);
    QCOMPARE(log(), u"3"_s);
    mRegistro->sql(u"UPDATE QR_Registro SET valor = 'outro' WHERE chave = 'identidade'"_s);
    reiniciaData();
    renewRegister(mRegistro->path()); // a backup came back: it answers to what it was
    restarts();
    QCOMPARE(log(), u"3 1"_s);
}

void TstPendentes::aDamagedFileIsSetAside()
{
    fillsUp();
    logRow(1);
    const QString file = waitingPlace().arquivo;
    reiniciaData();
    const QByteArray damaged(5000, 'x');
    escreve(file, damaged);
    mRegistro->open();
    logRow(2);
    const QStringList aside = gBD->waitingRows().setAside();
    QCOMPARE(aside.size(), 1);
    QCOMPARE(le(QFileInfo(file).path() + u'/' + aside.front()), damaged);
    QCOMPARE(waiting(), 1);
    isMended();
    restarts();
    QCOMPARE(log(), u"2"_s);
}

void TstPendentes::anOlderRegisterTakesEachOnce()
{
    mRegistro->sql(u"DROP TABLE QR_Registro; DROP TABLE LG_Entregas"_s);
    fillsUp();
    restarts();
    logRow(1);
    isMended();
    logRow(2);
    QCOMPARE(log(), u"1 2"_s);
    LinhaEspera doubtful;
    doubtful.linha = {.uuid = u"u"_s,
        .aluno = kGenerico,
        .classe = kGenerico,
        .data = agora(),
        .roteiro = 3,
        .respostas = u""_s,
        .incerta = true};
    gBD->waitingRows().keep(doubtful.linha, mRegistro->native());
    restarts();
    QCOMPARE(waiting(), 1);
    QVERIFY(gBD->waitingRows().rows(0, 1, true).front().motivo.contains(u"atualiza"_s));
    reiniciaData();
    QVERIFY(updateRegister(mRegistro->path()));
    restarts();
    QCOMPARE(log(), u"1 2 3"_s);
    QCOMPARE(mRegistro->sql(u"SELECT count(*) FROM LG_Entregas"_s), QStringList(u"3"_s));
}

void TstPendentes::aClockSetBackDoesNotReorder()
{
    mRegistro->sql(u"CREATE TRIGGER t BEFORE INSERT ON LG_LogAulas BEGIN SELECT RAISE(ABORT, 'x'); END"_s);
    for (int hour = 12; hour > 9; --hour) {
        costuras().now = [hour] { return QDateTime(QDate(2026, 3, 4), QTime(hour, 0)); };
        logRow(hour);
    }
    mRegistro->sql(u"DROP TRIGGER t"_s);
    restarts(); // rows that were refused are offered again at a start
    logRow(1);
    QCOMPARE(log(), u"12 11 10 1"_s);
    QCOMPARE(mRegistro->sql(u"SELECT LG_Data FROM LG_LogAulas WHERE RO_Cod = 12"_s),
        QStringList(u"2026-03-04 12:00:00"_s)); // never corrected
}

QTEST_MAIN(TstPendentes)
#include "tst_pendentes.moc"
