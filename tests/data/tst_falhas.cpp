#include "apoio.h"
#include "disco_falho.h"
#include "gravacoes.h"

#include "data/cadastros.h"
#include "lessons/andamento.h"
#include "platform/costuras.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// All that may be told of a disk that fails.
static const QStringList kKnown{
    u"Falha de leitura ou gravação no arquivo do banco de dados."_s,
    u"O arquivo do banco de dados não pôde ser aberto."_s,
    u"Não há espaço em disco para gravar no banco de dados."_s,
    u"A transação foi desfeita por uma falha anterior; nada foi gravado."_s,
    u"Não há conexão aberta com o banco de dados."_s,
};
static const QString kClassRows = u"SELECT CL_Prof, CL_Nome, CL_Senha FROM CL_Classes ORDER BY CL_Cod"_s;
static const QString kLogRows = u"SELECT LG_Aluno, LG_Classe, RO_Cod, LG_Resp FROM LG_LogAulas ORDER BY LG_Id"_s;
static const QString kStartRows = u"SELECT * FROM CL_Classes; SELECT * FROM AL_Alunos;"
                                  "SELECT AL_Cod, CL_Cod, CLxAL_DataIngr IS NOT NULL FROM CLxAL"_s;
static const QString kRow = u"9999|9999|7|<disc>Rota<rot>A:E:"_s;

/// A disk that fails at each call of a save in turn: every transaction is in the file whole or not at all, and what is
/// not was told. At first one class.
class TstFalhas final : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { mDisco = std::make_unique<DiscoFalho>(); }
    void init();
    void cleanup();
    void cleanupTestCase() { mDisco.reset(); }
    void brokenOffAtAnyCall_data();
    void brokenOffAtAnyCall();
    void logRowTakesTheSyncsOfOneTransaction();
    void rowLoggedWhileAClassIsSavedAndItsBoxIsUp();

private:
    QStringList sql(const QString &text) const { return mRegistro->sql(text); }

    std::unique_ptr<DiscoFalho> mDisco;
    std::unique_ptr<Registro> mRegistro;
    QStringList mTold;
};

void TstFalhas::init()
{
    failOnWarnings();
    reiniciaCosturas();
    reiniciaStartup();
    reiniciaLessons();
    reiniciaData();
    mDisco->reset();
    mRegistro = std::make_unique<Registro>(u"INSERT INTO CL_Classes VALUES (1, 'Velha', 'Velha', 'Velha')"_s);
    costuras().box = [this](const Caixa &box) {
        mTold << box.texto;
        return Resposta::Ok;
    };
}

void TstFalhas::cleanup()
{
    reiniciaData();
    reiniciaCosturas();
    mRegistro.reset();
}

struct Gravacao
{
    const char *name;
    std::function<void(const Registro &)> before;
    std::function<void()> save;
    QString sql; ///< tells what there is
    QStringList absent, done; ///< its rows before and afterwards
    bool waits = false; ///< what the register does not take is delivered when the disk is well again
};

static QList<Gravacao> saves()
{
    const auto configured = [](const Registro &registro) {
        registro.sql(u"DELETE FROM CL_Classes"_s);
        gClasse = 0;
        gConfig.SetaCFG(u"ZETO_CAD="_s + barras(QFileInfo(registro.native()).path()) + u"\r\n"_s);
    };
    const auto opened = [](const Registro &registro) {
        registro.open();
        openClasses();
    };
    const auto waiting = [](const Registro &registro) {
        registro.open();
        registro.sql(u"ALTER TABLE LG_LogAulas RENAME TO Outra"_s);
        logRow(7);
        registro.sql(u"ALTER TABLE Outra RENAME TO LG_LogAulas"_s);
    };
    const QString old = u"Velha|Velha|Velha"_s, fresh = u"Nova|Nova|Nova"_s;
    return {
        {"start", configured, AbreBDAlunos, kStartRows, {},
            {u"9999|Genérica|Genérica|Chavema"_s, u"9999|Genérico"_s, u"9999|9999|1"_s}},
        {"log row", opened, [] { logRow(7); }, kLogRows, {}, {kRow}, true},
        {"log row behind one that waits", waiting, [] { logRow(7); }, kLogRows, {}, {kRow, kRow}, true},
        {"class added", opened, [] { saveNewClass(u"Nova"_s); }, kClassRows, {old}, {old, fresh}},
        {"class changed", opened, [] { saveFirstClass(u"Nova"_s); }, kClassRows, {old}, {fresh}},
    };
}

struct Modo
{
    const char *name;
    bool forEver, full;
    QString told; ///< of one attempt at least, unless the row can wait
    bool answerLost = false;
};

void TstFalhas::brokenOffAtAnyCall_data()
{
    QTest::addColumn<Gravacao>("save");
    QTest::addColumn<Modo>("mode");
    for (const Gravacao &save : saves()) {
        for (const Modo &mode : {Modo{"one call fails", false, false, kKnown.at(0)},
                 Modo{"all fail from one on", true, false, kKnown.at(0)},
                 Modo{"the disk is full from a write on", true, true, kKnown.at(2)},
                 Modo{"one call is made and its answer lost", false, false, kKnown.at(0), true}})
            QTest::addRow("%s, %s", save.name, mode.name) << save << mode;
    }
}

static bool tells(const QString &text, const QStringList &known)
{
    return std::ranges::any_of(known, [&](const QString &each) { return text.contains(each); });
}

void TstFalhas::brokenOffAtAnyCall()
{
    QFETCH(Gravacao, save);
    QFETCH(Modo, mode);
    const QByteArray bytes = le(mRegistro->native());
    QStringList allTold;
    bool failed = true;
    for (int call = 1; failed; ++call) {
        QFile::remove(mRegistro->native() + u"-journal"_s);
        escreve(mRegistro->native(), bytes);
        QDir(QFileInfo(mRegistro->native()).path() + u"/espera"_s).removeRecursively();
        save.before(*mRegistro);
        mTold.clear();
        if (mode.answerLost)
            mDisco->loseAnswerAt(call);
        else
            mDisco->failAt(call, mode.forEver, mode.full);
        try {
            save.save();
        } catch (const ErroExecucao &erro) { // would end the program with its description in a box
            mTold << erro.descricao();
        }
        reiniciaData(); // the program ends, or goes on with its next step: the disk still fails as it did
        failed = mDisco->failed();
        mDisco->reset();
        if (save.waits) {
            mRegistro->open();
            gBD->deliverWaitingRows();
            reiniciaData();
        }
        const QStringList found = sql(save.sql);
        const QByteArray where = "call " + QByteArray::number(call) + ", found: " + found.join(u' ').toUtf8()
            + ", told: " + mTold.join(u" / "_s).toUtf8();
        QCOMPARE(sql(u"PRAGMA integrity_check"_s), QStringList(u"ok"_s));
        // What begins with nothing may be several transactions, a row each.
        QVERIFY2(found == save.absent || found == save.done
                || (save.absent.isEmpty()
                    && std::ranges::all_of(found, [&](auto &row) { return save.done.contains(row); })),
            where);
        QVERIFY2(std::ranges::all_of(mTold, [](auto &text) { return tells(text, kKnown); }), where);
        QVERIFY2(found == save.done || !mTold.isEmpty(), where);
        QVERIFY2(failed || (found == save.done && mTold.isEmpty()), where);
        allTold += mTold;
    }
    const bool toldSo = std::ranges::any_of(allTold, [&](auto &text) { return text.contains(mode.told); });
    QVERIFY(toldSo || (save.waits && !mode.forEver) || mode.answerLost);
}

void TstFalhas::logRowTakesTheSyncsOfOneTransaction()
{
    mRegistro->open();
    logRow(1);
    mDisco->reset();
    logRow(2);
    const int ours = mDisco->syncs();
    reiniciaData();
    mDisco->reset();
    sql(u"PRAGMA synchronous=EXTRA; BEGIN IMMEDIATE; INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, "
        "LG_Resp) VALUES (9999, 9999, '2026-11-25 10:00:00', 3, 'x'); INSERT INTO LG_Entregas VALUES ('x', 9, 'x', "
        "'2026-11-25 10:00:00'); COMMIT"_s);
    QVERIFY(ours > 0);
    QCOMPARE(ours, mDisco->syncs());
}

void TstFalhas::rowLoggedWhileAClassIsSavedAndItsBoxIsUp()
{
    mRegistro->open();
    openClasses();
    int boxes = 0;
    costuras().box = [&](const Caixa &) {
        if (++boxes == 1) // a message comes in while the box is up
            logRow(7);
        return Resposta::Ok;
    };
    gBD->RegistroAdiciona(u"RsClasses"_s);
    gBD->TransacaoInicio();
    gBD->RegistroTroca(u"CL_Nome"_s, u"Nova"_s, u"RsClasses"_s, kTrocaTexto);
    gBD->RegistroAtualiza(u"RsClasses"_s);
    gBD->RegistroTroca(u"CL_Apelido"_s, u"x"_s, u"RsClasses"_s, kTrocaTexto); // the column is missing: a box
    gBD->TransacaoFim();
    gBD->ReAtualizaRecordSet(u"RsClasses"_s);
    QCOMPARE(boxes, 1);
    reiniciaData();
    QCOMPARE(sql(u"SELECT CL_Nome FROM CL_Classes ORDER BY CL_Cod"_s), (QStringList{u"Velha"_s, u"Nova"_s}));
    QCOMPARE(sql(kLogRows), QStringList(kRow));
}

QTEST_MAIN(TstFalhas)
#include "tst_falhas.moc"
