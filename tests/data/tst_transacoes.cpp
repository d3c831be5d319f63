#include "apoio.h"

#include "data/bd.h"
#include "data/conexao.h"
#include "data/errobd.h"
#include "platform/costuras.h"
#include "support/suporte.h"

#include <QComboBox>
#include <QTest>

#include <sqlite3.h>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// Transactions through BD, nested ones too, against what stands in the file afterwards.
class TstTransacoes final : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Registro> mRegistro;
    QString names() const { return mRegistro->sql(u"SELECT CL_Nome FROM CL_Classes ORDER BY CL_Cod"_s).join(u' '); }

private slots:
    void init();
    void cleanup();
    void ends_data();
    void ends();
    void beginningTouchesNoFile();
    void writesAreSeenAtTheEndOnly();
    void failedCommitUndoesItAndRaises();
    void withoutAConnection_data();
    void withoutAConnection();
    void endOfTheProgramUndoes_data();
    void endOfTheProgramUndoes();
};

void TstTransacoes::init()
{
    failOnWarnings();
    reiniciaCosturas();
    mRegistro = std::make_unique<Registro>();
    mRegistro->sql(u"INSERT INTO CL_Classes (CL_Nome) VALUES ('a')"_s);
    mRegistro->open();
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"RS"_s);
}

void TstTransacoes::cleanup()
{
    gBD.reset();
    mRegistro.reset();
}

static void addClass(QChar name)
{
    gBD->RegistroAdiciona(u"RS"_s);
    gBD->RegistroTroca(u"CL_Nome"_s, QString(name), u"RS"_s);
    gBD->RegistroAtualiza(u"RS"_s);
}

/// "(" begins, ")" ends, "!" cancels, a letter adds a class of that name, "-" deletes the current one.
static void playTransactions(const QString &steps)
{
    for (const QChar step : steps) {
        if (step == u'(')
            gBD->TransacaoInicio();
        else if (step == u')')
            gBD->TransacaoFim();
        else if (step == u'!')
            gBD->TransacaoCancela();
        else if (step == u'-')
            gBD->RegistroApaga(u"RS"_s, kAfetaAtual, false);
        else
            addClass(step);
    }
}

void TstTransacoes::ends_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("names");
    QTest::addColumn<int>("number");
    const auto row = [](const char *steps, const char *names, int number = 0) {
        QTest::newRow(steps) << QString::fromLatin1(steps) << QString::fromLatin1(names) << number;
    };
    row("b", "a b");
    row("(b)", "a b");
    row("(bc)d", "a b c d");
    row("(b!", "a");
    row("(-!", "a");
    row("(-b)", "b"); // at first the only one
    row("()", "a");
    row("(!", "a");
    row("(b!(c)", "a c");
    row("(b(c))", "a b c");
    row("(b(c!)", "a b");
    row("(b(c)!", "a");
    row("((b)c)", "a b c");
    row("((b!c)", "a c");
    row("((b)!", "a");
    row("(((b!c)d)", "a c d");
    row("(b(c(d!e!f)", "a b f");
    row("(b(c)(d!(e))", "a b c e");
    row(")", "a", kErroArmazem);
    row("!", "a", kErroArmazem);
    row("(b))", "a b", kErroArmazem);
    row("(b!!", "a", kErroArmazem);
    row("(b(c", "a"); // never ended
}

void TstTransacoes::ends()
{
    QFETCH(QString, steps);
    QFETCH(QString, names);
    QFETCH(int, number);
    QCOMPARE(failureOf([&] { playTransactions(steps); }), number);
    gBD.reset();
    QCOMPARE(this->names(), names);
}

/// A lock of another program, held while this lives.
class Trava final
{
    Q_DISABLE_COPY_MOVE(Trava)
public:
    Trava(const QString &native, const char *sql)
    {
        sqlite3_open(native.toUtf8().constData(), &mDb);
        if (sqlite3_exec(mDb, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
            qFatal("no lock: %s", sqlite3_errmsg(mDb));
    }
    ~Trava() { sqlite3_close(mDb); }

private:
    sqlite3 *mDb = nullptr;
};

void TstTransacoes::beginningTouchesNoFile()
{
    const auto lock = std::make_unique<Trava>(mRegistro->native(), "BEGIN IMMEDIATE");
    QCOMPARE(failureOf([] { gBD->TransacaoInicio(); }), 0);
    gBD->ReAtualizaRecordSet(u"RS"_s); // a read runs by itself
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s), QVariant(u"a"_s));
    BoxScript boxes{Resposta::Ok};
    gBD->RegistroAdiciona(u"RS"_s);
    gBD->RegistroAtualiza(u"RS"_s); // here the lock is told
    QCOMPARE(boxes.last(),
        (Caixa{u"O banco de dados está em uso por outro programa. Tente novamente."_s, u"RS - Registro Atualiza"_s,
            Icone::Informacao}));
    QCOMPARE(failureOf([] { gBD->TransacaoFim(); }), 0);
}

void TstTransacoes::writesAreSeenAtTheEndOnly()
{
    playTransactions(u"(b"_s);
    QCOMPARE(names(), u"a"_s);
    playTransactions(u"(c"_s);
    playTransactions(u")"_s);
    QCOMPARE(names(), u"a"_s);
    playTransactions(u")"_s);
    QCOMPARE(names(), u"a b c"_s);
}

void TstTransacoes::failedCommitUndoesItAndRaises()
{
    {
        const Trava reader(mRegistro->native(), "BEGIN; SELECT * FROM CL_Classes");
        playTransactions(u"(b(c)"_s);
        QCOMPARE(failureOf([] { gBD->TransacaoFim(); }), int(kErroArmazem));
        QCOMPARE(gBD->Source()->depth(), 0);
    }
    playTransactions(u"(d)"_s);
    QCOMPARE(names(), u"a d"_s);
}

void TstTransacoes::withoutAConnection_data()
{
    QTest::addColumn<QString>("steps");
    for (const char *steps : {"(", ")", "!"})
        QTest::newRow(steps) << QString::fromLatin1(steps);
}

void TstTransacoes::withoutAConnection()
{
    QFETCH(QString, steps);
    gBD->Source()->Close(); // a holder of the connection may
    QCOMPARE(failureOf([&] { playTransactions(steps); }), int(kErroSemConexao));
    reiniciaData();
    QCOMPARE(failureOf([&] { playTransactions(steps); }), int(kErroSemConexao));
}

void TstTransacoes::endOfTheProgramUndoes_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"release", "release under a list", "close", "another source"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TstTransacoes::endOfTheProgramUndoes()
{
    QFETCH(QString, way);
    playTransactions(u"(b(c)"_s);
    QComboBox combo; // keeps its record set, and that its connection
    QString field = u"CL_Nome"_s;
    if (way == "release under a list"_L1)
        gBD->Combo_Set(combo, u"RS"_s, field);
    if (way.startsWith("release"_L1)) {
        gBD.reset();
    } else if (way == "close"_L1) {
        gBD->Fechar();
    } else { // record sets keep the connection that they were opened on
        gBD->Source(mRegistro->path());
        QCOMPARE(gBD->Source()->depth(), 0);
        gBD->Records_Set(u"Select * From CL_Classes"_s, u"RS"_s);
    }
    const QStringList found = mRegistro->sql(u"SELECT CL_Nome FROM CL_Classes"_s);
    QCOMPARE(found, QStringList{u"a"_s});
    plainSql(mRegistro->native(), u"BEGIN IMMEDIATE; ROLLBACK"_s); // no lock is left
}

QTEST_MAIN(TstTransacoes)
#include "tst_transacoes.moc"
