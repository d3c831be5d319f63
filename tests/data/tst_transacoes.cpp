#include "apoio.h"
#include "passos.h"

#include "data/conexao.h"
#include "support/table.h"

#include <QComboBox>

#include <sqlite3.h>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// Transactions through BD, nested ones too, against what stands in the file afterwards; at first one class, a.
class TstTransacoes final : public TesteBD
{
    Q_OBJECT
public:
    TstTransacoes() : TesteBD(u"INSERT INTO CL_Classes (CL_Nome) VALUES ('a')"_s) { }

private slots:
    void ends_data();
    void ends();
    void failedWrites_data();
    void failedWrites();
    void beginningTouchesNoFile();
    void writesAreSeenAtTheEndOnly();
    void failedCommitUndoesItAndRaises();
    void withoutAConnection_data();
    void withoutAConnection();
    void endOfTheProgramUndoes_data();
    void endOfTheProgramUndoes();

private:
    void playTransactions(const QString &steps) const;
    QString names() const { return mRegistro->sql(u"SELECT CL_Nome FROM CL_Classes ORDER BY CL_Cod"_s).join(u' '); }
};

/// "(" begins, ")" ends, "!" cancels, a letter adds a class of that name, "-" deletes the current one.
void TstTransacoes::playTransactions(const QString &steps) const
{
    for (const QChar step : steps) {
        if (step == u'(')
            gBD->TransacaoInicio();
        else if (step == u')')
            gBD->TransacaoFim();
        else if (step == u'!')
            gBD->TransacaoCancela();
        else if (step == u'-')
            play(u"RegistroApaga"_s);
        else
            play(u"RegistroAdiciona; RegistroTroca CL_Nome=%1; RegistroAtualiza"_s.arg(step));
    }
}

void TstTransacoes::ends_data()
{
    rows<QString, int>({
        {"b", "a b", 0}, {"(b)", "a b", 0}, {"(bc)d", "a b c d", 0}, {"(b!", "a", 0}, {"(-!", "a", 0},
        {"(-b)", "b", 0}, // at first the only one
        {"()", "a", 0}, {"(!", "a", 0}, {"(b!(c)", "a c", 0}, {"(b(c))", "a b c", 0}, {"(b(c!)", "a b", 0},
        {"(b(c)!", "a", 0}, {"((b)c)", "a b c", 0}, {"((b!c)", "a c", 0}, {"((b)!", "a", 0}, {"(((b!c)d)", "a c d", 0},
        {"(b(c(d!e!f)", "a b f", 0}, {"(b(c)(d!(e))", "a b c e", 0}, {")", "a", kErroArmazem}, {"!", "a", kErroArmazem},
        {"(b))", "a b", kErroArmazem}, {"(b!!", "a", kErroArmazem}, {"(b(c", "a", 0}, // never ended
    });
}

void TstTransacoes::ends()
{
    const auto [expected, number] = row<QString, int>();
    QCOMPARE(failureOf([&] { playTransactions(rowName()); }), number);
    gBD.reset();
    QCOMPARE(names(), expected);
}

void TstTransacoes::failedWrites_data()
{
    const QString rule = u"O valor repete uma chave ou fere uma regra da tabela; nada foi gravado."_s;
    const QString undone = u"A transação foi desfeita por uma falha anterior; nada foi gravado."_s;
    rows<QString, QStringList>({
        {"(bxc)", "a b c", QStringList{rule}}, // undoes itself alone; the rest is committed
        {"(b(xc))", "a b c", QStringList{rule}},
        {"(byc)d", "a d", QStringList{rule, undone}}, // the store gives the whole up; the commit is silent
    });
}

/// The table refuses a class x; with a class y the store undoes the transaction as well.
void TstTransacoes::failedWrites()
{
    const auto [expected, texts] = row<QString, QStringList>();
    for (const auto &[name, action] : {std::pair(u"x"_s, u"ABORT"_s), std::pair(u"y"_s, u"ROLLBACK"_s)})
        mRegistro->sql(u"CREATE TRIGGER %1 BEFORE INSERT ON CL_Classes WHEN NEW.CL_Nome = '%1' "
                       "BEGIN SELECT RAISE(%2, 'no'); END"_s.arg(name, action));
    QCOMPARE(failureOf([&] { playTransactions(rowName()); }), 0);
    QStringList boxes;
    for (const QString &text : texts)
        boxes << u"i RS - Registro Atualiza: "_s + text;
    QCOMPARE(told(), boxes.join(u'\n'));
    gBD.reset();
    QCOMPARE(names(), expected);
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
    const Trava lock(mRegistro->native(), "BEGIN IMMEDIATE");
    QCOMPARE(failureOf([] { gBD->TransacaoInicio(); }), 0);
    play(u"ReAtualizaRecordSet"_s); // a read runs by itself
    QCOMPARE(state(), u"1/1 0 a"_s);
    play(u"RegistroAdiciona; RegistroAtualiza"_s); // here the lock is told
    QCOMPARE(told(), u"i RS - Registro Atualiza: O banco de dados está em uso por outro programa. Tente novamente."_s);
    QCOMPARE(failureOf([] { gBD->TransacaoFim(); }), 0);
}

void TstTransacoes::writesAreSeenAtTheEndOnly()
{
    for (const char *steps : {"(b", "(c", ")"}) {
        playTransactions(steps);
        QCOMPARE(names(), u"a"_s);
    }
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
    texts({"(", ")", "!"});
}

void TstTransacoes::withoutAConnection()
{
    const QString text = rowName();
    gBD->Source()->Close(); // a holder of the connection may
    QCOMPARE(failureOf([&] { playTransactions(text); }), int(kErroSemConexao));
    reiniciaData();
    QCOMPARE(failureOf([&] { playTransactions(text); }), int(kErroSemConexao));
}

void TstTransacoes::endOfTheProgramUndoes_data()
{
    texts({"release", "release under a list", "close", "another source"});
}

void TstTransacoes::endOfTheProgramUndoes()
{
    const QString text = rowName();
    playTransactions(u"(b(c)"_s);
    mSet.reset();
    QComboBox combo; // keeps its record set, and that its connection
    QString field = u"CL_Nome"_s;
    if (text == "release under a list"_L1)
        gBD->Combo_Set(combo, u"RS"_s, field);
    if (text.startsWith("release"_L1)) {
        gBD.reset();
    } else if (text == "close"_L1) {
        gBD->Fechar();
    } else { // record sets keep the connection that they were opened on
        gBD->Source(mRegistro->path());
        QCOMPARE(gBD->Source()->depth(), 0);
        gBD->Records_Set(u"Select * From CL_Classes"_s, u"RS"_s);
    }
    QCOMPARE(names(), u"a"_s);
    mRegistro->sql(u"BEGIN IMMEDIATE; ROLLBACK"_s); // no lock is left
}

QTEST_MAIN(TstTransacoes)
#include "tst_transacoes.moc"
