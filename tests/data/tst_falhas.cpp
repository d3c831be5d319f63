#include "apoio.h"
#include "disco_falho.h"
#include "gravacoes.h"

#include "data/bd.h"
#include "data/cadastros.h"
#include "lessons/andamento.h"
#include "platform/costuras.h"
#include "platform/erro.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <algorithm>
#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

namespace {

/// How the disk fails from a call on.
enum class Modo { Uma, Sempre, Cheio };

/// All that may be told of a disk that fails.
const QStringList kTold = {
    u"Falha de leitura ou gravação no arquivo do banco de dados."_s,
    u"O arquivo do banco de dados não pôde ser aberto."_s,
    u"Não há espaço em disco para gravar no banco de dados."_s,
    u"A transação foi desfeita por uma falha anterior; nada foi gravado."_s,
    u"Não há conexão aberta com o banco de dados."_s,
};
/// And of a file with noise in it; the last two are about a table that the start could not open.
const QStringList kDamaged = {
    u"O arquivo do banco de dados está danificado."_s,
    u"O arquivo não é um banco de dados, ou está danificado."_s,
    u"Não há conexão aberta com o banco de dados."_s,
    u"A operação não é permitida quando o objeto está fechado."_s,
    u"a Primeira Tabela da Lista"_s,
};
const QString kFailed = kTold.at(0);
const QString kFull = kTold.at(2);

const QString kClassRows = u"SELECT CL_Prof, CL_Nome, CL_Senha FROM CL_Classes ORDER BY CL_Cod"_s;
const QString kLogRows = u"SELECT LG_Aluno, LG_Classe, RO_Cod, LG_Resp FROM LG_LogAulas ORDER BY LG_Id"_s;
const QString kRow = u"9999|9999|7|<disc>Rota<rot>A:E:"_s;
const QString kNewClass = u"Nova|Nova|Nova"_s;
const QString kOldClass = u"Velha|Velha|Velha"_s;

bool allKnown(const QStringList &told, const QStringList &known)
{
    return std::ranges::all_of(told, [&](const QString &text) {
        return std::ranges::any_of(known, [&](const QString &end) { return text.endsWith(end); });
    });
}

} // namespace

Q_DECLARE_METATYPE(Modo)

class TstFalhas final : public QObject
{
    Q_OBJECT
private:
    using Acao = std::function<void()>;
    /// @param rows  of the register afterwards @param done  whether the operation's rows are all there
    /// @return whether the register holds each transaction whole or not at all
    using Confere = std::function<bool(bool &done)>;

    void breakOff(Modo modo, const Acao &before, const Acao &operation, const Confere &whole);
    QStringList rows(const QString &sql) const { return mRegistro->sql(sql); }
    void openWithClass();

    std::unique_ptr<DiscoFalho> mDisco;
    std::unique_ptr<Registro> mRegistro;
    QByteArray mInicial; ///< the register's file before each attempt
    QStringList mTold;

private slots:
    void initTestCase() { mDisco = std::make_unique<DiscoFalho>(); }
    void init();
    void cleanup();
    void cleanupTestCase() { mDisco.reset(); }
    void startUp_data() { modes(); }
    void startUp();
    void logRowWritten_data() { modes(); }
    void logRowWritten();
    void classAdded_data() { modes(); }
    void classAdded();
    void classChanged_data() { modes(); }
    void classChanged();
    void noiseInAnyPageIsTold();
    void logRowTakesTheSyncsOfOneTransaction();
    void rowLoggedWhileAClassIsSavedAndItsBoxIsUp();

private:
    static void modes();
};

void TstFalhas::modes()
{
    QTest::addColumn<Modo>("modo");
    QTest::newRow("one call fails") << Modo::Uma;
    QTest::newRow("all calls fail from one on") << Modo::Sempre;
    QTest::newRow("the disk is full from a write on") << Modo::Cheio;
}

void TstFalhas::init()
{
    failOnWarnings();
    reiniciaCosturas();
    reiniciaStartup();
    reiniciaLessons();
    reiniciaData();
    mDisco->reset();
    mRegistro = std::make_unique<Registro>();
    mInicial = le(mRegistro->native());
}

void TstFalhas::cleanup()
{
    reiniciaData();
    reiniciaCosturas();
    mRegistro.reset();
}

void TstFalhas::openWithClass()
{
    rows(u"INSERT INTO CL_Classes VALUES (1, 'Velha', 'Velha', 'Velha')"_s);
    mInicial = le(mRegistro->native());
}

/// Runs the operation with the disk failing at its first call, at its second, and so on until none fails any more.
void TstFalhas::breakOff(Modo modo, const Acao &before, const Acao &operation, const Confere &whole)
{
    costuras().box = [this](const Caixa &box) {
        mTold << box.texto;
        return Resposta::Ok;
    };
    QStringList allTold;
    for (int call = 1;; ++call) {
        QFile::remove(mRegistro->native() + u"-journal"_s);
        escreve(mRegistro->native(), mInicial);
        before();
        mTold.clear();
        mDisco->failAt(call, modo != Modo::Uma, modo == Modo::Cheio);
        try {
            operation();
        } catch (const ErroExecucao &erro) { // would end the program with its description in a box
            mTold << erro.descricao();
        }
        reiniciaData(); // the program ends, or goes on with its next step: the disk still fails as it did
        const bool failed = mDisco->failed();
        mDisco->reset();
        const QByteArray where = "call " + QByteArray::number(call) + ", told: " + mTold.join(u" / "_s).toUtf8();
        QVERIFY2(allKnown(mTold, kTold), where);
        QVERIFY2(rows(u"PRAGMA integrity_check"_s) == QStringList(u"ok"_s), where);
        bool done = false;
        QVERIFY2(whole(done), where);
        QVERIFY2(done || !mTold.isEmpty(), where); // what was not written was told
        allTold += mTold;
        if (failed)
            continue;
        QVERIFY2(done && mTold.isEmpty(), where);
        break;
    }
    const QString &expected = modo == Modo::Cheio ? kFull : kFailed;
    QVERIFY(std::ranges::any_of(allTold, [&](const QString &text) { return text.endsWith(expected); }));
}

void TstFalhas::startUp()
{
    QFETCH(Modo, modo);
    const auto before = [this] {
        gClasse = 0;
        gConfig.SetaCFG(u"ZETO_CAD="_s + barras(QFileInfo(mRegistro->native()).path()) + u"\r\n"_s);
    };
    breakOff(
        modo, before, [] { AbreBDAlunos(); },
        [this](bool &done) {
            const QStringList classes = rows(u"SELECT * FROM CL_Classes"_s);
            const QStringList pupils = rows(u"SELECT * FROM AL_Alunos"_s);
            const QStringList links = rows(u"SELECT AL_Cod, CL_Cod, CLxAL_DataIngr IS NOT NULL FROM CLxAL"_s);
            done = classes.size() == 1 && pupils.size() == 1 && links.size() == 1;
            return (classes.isEmpty() || classes == QStringList(u"9999|Genérica|Genérica|Chavema"_s))
                && (pupils.isEmpty() || pupils == QStringList(u"9999|Genérico"_s))
                && (links.isEmpty() || links == QStringList(u"9999|9999|1"_s));
        });
}

void TstFalhas::logRowWritten()
{
    QFETCH(Modo, modo);
    breakOff(
        modo, [this] { mRegistro->open(); }, [] { logRow(7); },
        [this](bool &done) {
            const QStringList log = rows(kLogRows);
            done = log == QStringList(kRow);
            return done || log.isEmpty();
        });
}

void TstFalhas::classAdded()
{
    QFETCH(Modo, modo);
    openWithClass();
    const auto before = [this] {
        mRegistro->open();
        openClasses();
    };
    breakOff(
        modo, before, [] { saveNewClass(u"Nova"_s); },
        [this](bool &done) {
            const QStringList classes = rows(kClassRows);
            done = classes == QStringList{kOldClass, kNewClass};
            return done || classes == QStringList(kOldClass);
        });
}

void TstFalhas::classChanged()
{
    QFETCH(Modo, modo);
    openWithClass();
    const auto before = [this] {
        mRegistro->open();
        openClasses();
    };
    breakOff(
        modo, before, [] { saveFirstClass(u"Nova"_s); },
        [this](bool &done) {
            const QStringList classes = rows(kClassRows);
            done = classes == QStringList(kNewClass);
            return done || classes == QStringList(kOldClass);
        });
}

void TstFalhas::noiseInAnyPageIsTold()
{
    openWithClass();
    const int pageSize = rows(u"PRAGMA page_size"_s).first().toInt();
    costuras().box = [this](const Caixa &box) {
        mTold << box.texto;
        return Resposta::Ok;
    };
    QStringList allTold;
    for (qsizetype page = 0; page < mInicial.size() / pageSize; ++page) {
        QByteArray noisy = mInicial;
        for (qsizetype i = 0; i < pageSize; ++i)
            noisy[page * pageSize + i] = static_cast<char>(i * 31 + 7);
        escreve(mRegistro->native(), noisy);
        mTold.clear();
        try {
            gConfig.SetaCFG(u"ZETO_CAD="_s + barras(QFileInfo(mRegistro->native()).path()) + u"\r\n"_s);
            reiniciaData();
            AbreBDAlunos();
            logRow(7);
            saveNewClass(u"Nova"_s);
        } catch (const ErroExecucao &erro) {
            mTold << erro.descricao();
        }
        QVERIFY2(allKnown(mTold, kDamaged), mTold.join(u" / "_s).toUtf8());
        QVERIFY(page > 0 || !mTold.isEmpty());
        allTold += mTold;
    }
    QVERIFY(std::ranges::any_of(allTold, [](const QString &text) { return text.endsWith(kDamaged.at(0)); }));
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
    rows(u"PRAGMA synchronous=EXTRA; BEGIN IMMEDIATE; INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, "
         "LG_Resp) VALUES (9999, 9999, '2026-11-25 10:00:00', 3, 'x'); COMMIT"_s);
    QVERIFY(ours > 0);
    QCOMPARE(ours, mDisco->syncs());
}

void TstFalhas::rowLoggedWhileAClassIsSavedAndItsBoxIsUp()
{
    openWithClass();
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
    QCOMPARE(rows(u"SELECT CL_Nome FROM CL_Classes ORDER BY CL_Cod"_s), (QStringList{u"Velha"_s, u"Nova"_s}));
    QCOMPARE(rows(kLogRows), QStringList(kRow));
}

QTEST_MAIN(TstFalhas)
#include "tst_falhas.moc"
