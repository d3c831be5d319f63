#include "apoio.h"
#include "passos.h"

#include "data/conexao.h"
#include "support/tabela.h"

#include <QFile>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

static const QString kClasses = u"Select * From CL_Classes"_s;
static const QString kPupils = u"Select * From AL_Alunos"_s;

/// The registry of BD: connections, opening queries, aliases and slots. Three classes, no pupils.
class TstBd final : public TesteBD
{
    Q_OBJECT
public:
    TstBd() : TesteBD(kTresClasses, {}) { }

private slots:
    void opensWithASearch();
    void failedOpeningIsToldAndRaised_data();
    void failedOpeningIsToldAndRaised();
    void failedOpeningTakesTheSlot();
    void opensBetweenTurnsOfEvents();
    void resolves_data();
    void resolves();
    void aliasesIgnoreCase();
    void emptyAliasMeansTheLastTable();
    void aliasUsedAgainForgetsPositionFilterAndOrder();
    void closesATable();
    void closesAll();
    void closingEndsAtTheFirstFailure();
    void connectionStrings_data();
    void connectionStrings();
    void sources();
    void fieldsWaitForAQuery();
    void sharesItsRecordSets();

private:
    static QString open() { return gBD->TabelasAbertas().toString().replace(u"\r\n"_s, u"/"_s); }
    static void openThree();
};

void TstBd::openThree()
{
    for (const QString &name : {u"um"_s, u"dois"_s, u"três"_s})
        gBD->Records_Set(kClasses, name);
}

void TstBd::opensWithASearch()
{
    gBD->Records_Set(kClasses, u"RS"_s, u"CL_Nome='B'"_s);
    QCOMPARE(gBD->PosicaoRegistroAtual(), 2);
    gBD->Records_Set(kClasses, u"RS"_s, u"CL_Nome='x'"_s); // no hit: the first
    QCOMPARE(gBD->PosicaoRegistroAtual(), 1);
}

void TstBd::failedOpeningIsToldAndRaised_data()
{
    const QString notRead = u"A instrução SQL não pôde ser entendida."_s;
    rows<QString, QString, int, QString>({
        {"no query", u"Abre te"_s, {}, kErroSql, notRead},
        {"no table", u"Select * From Nada"_s, {}, kErroTabela, "Não existe a tabela ou consulta \"Nada\"."},
        {"no column", u"Select Nada From CL_Classes"_s, {}, kErroSql, "Não existe a coluna \"Nada\"."},
        {"no criterion", kClasses, "a", kErroCriterio, "O critério não pôde ser entendido."},
        {"nothing to search in", kPupils, "AL_Nome='x'", kErroSemRegistro,
            "Não há registro atual: BOF ou EOF é verdadeiro, ou o registro atual foi excluído."},
        {"no date", u"Select #02/30/2026#"_s, {}, kErroSql, "A data #02/30/2026# não existe."},
        {"two statements", kClasses + u"; Delete From CL_Classes"_s, {}, kErroSql, {}},
        {"what reads nothing", u"Delete From CL_Classes"_s, {}, kErroSql, {}},
        {"a query that writes", u"Delete From CL_Classes Returning *"_s, {}, kErroSql, {}},
        {"a NUL behind the query", kClasses + QChar(0) + u"; Delete From CL_Classes"_s, {}, kErroSql, {}},
        {"blanks", u"  "_s, {}, kErroSql, {}},
        {"a text that never ends", u"Select 'x From CL_Classes"_s, {}, kErroSql, {}},
    });
}

/// A query reads; whatever else stands in it changes nothing.
void TstBd::failedOpeningIsToldAndRaised()
{
    const auto [sql, search, number, description] = row<QString, QString, int, QString>();
    QCOMPARE(failureOf([&] { gBD->Records_Set(sql, u"Rs"_s, search); }), number);
    const QString box = told();
    const QString begin = u"Rs: %1/%2\t"_s.arg(sql).arg(number);
    if (description.isEmpty()) // the store's own reasons differ
        QVERIFY2(box.startsWith(begin) && box.size() > begin.size(), qPrintable(box));
    else
        QCOMPARE(box, begin + description);
    QCOMPARE(inFile(), u"1a 2b 3c"_s);
}

/// The slot is taken all the same, without an alias; the next one goes behind it.
void TstBd::failedOpeningTakesTheSlot()
{
    gBD->Records_Set(kClasses, u"um"_s);
    QVERIFY(failureOf([] { gBD->Records_Set(u"x"_s, u"dois"_s); }) != 0);
    QVERIFY(!gBD->ExisteAlias(u"dois"_s));
    gBD->Records_Set(kPupils, u"três"_s);
    QCOMPARE(open(), u"um//três/"_s);
    QVERIFY(failureOf([] { gBD->Records_Set(u"x"_s, u"UM"_s); }) != 0); // what was open there is gone
    QCOMPARE(failureOf([] { gBD->NumeroTotalDeRegistros(u"um"_s); }), int(kErroFechado));
    QVERIFY(!told().isEmpty());
}

/// A click that comes in while a query opens opens another one, in a slot of its own.
void TstBd::opensBetweenTurnsOfEvents()
{
    QTimer::singleShot(0, [] { gBD->Records_Set(kPupils, u"dentro"_s); });
    gBD->Records_Set(kClasses, u"fora"_s);
    QCOMPARE(open(), u"fora/dentro/"_s);
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"fora"_s), 3);
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"dentro"_s), 0);
}

void TstBd::resolves_data()
{
    rows<QVariant, bool, qint16, qint16, QString>({
        // what it means; what an empty alias means then
        {"first", u"um"_s, true, 1, 1, ""},
        {"case, accents", u"TRÊS"_s, true, 3, 3, ""},
        {"empty", u""_s, true, 2, 2, ""},
        {"nothing", {}, true, 2, 2, ""},
        {"a number", 3, true, 3, 3, ""},
        {"a text that begins with a digit", u"3 classes"_s, true, 3, 3, ""},
        {"a slot that is not there", 40, true, 40, 40, ""},
        {"halves to even", 2.5, true, 2, 2, ""},
        {"too large for a slot", 40000, true, 1, 1, ""},
        {"unknown, without warning", u"quatro"_s, false, 4, 4, ""},
        {"0 is no slot", 0, false, 4, 4, ""},
        {"nor is -1", -1, false, 4, 4, ""},
        {"a blank is no empty alias", u" "_s, false, 4, 4, ""},
        {"unknown, with a box", u"quatro"_s, true, 1, 2,
            "Blocos de Roteiros do Sistema Quorel: Tabela não especificada !!!!  (quatro)/"
            "Como padrão será selecionda a Primeira Tabela da Lista"},
    });
}

void TstBd::resolves()
{
    const auto [alias, warns, slot, after, box] = row<QVariant, bool, qint16, qint16, QString>();
    openThree();
    gBD->NumeroTotalDeRegistros(u"dois"_s);
    QCOMPARE(gBD->Resolve_Alias(alias, warns), slot);
    QCOMPARE(gBD->Resolve_Alias({}), after);
    QCOMPARE(told(), box);
}

void TstBd::aliasesIgnoreCase()
{
    gBD->Records_Set(kClasses, u"rsClasses"_s);
    gBD->Records_Set(kPupils, u"RSÁgua"_s);
    gBD->Records_Set(kPupils, u"RSCLASSES"_s); // replaces it, with the new spelling
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"RsClasses"_s), 0);
    QCOMPARE(open(), u"RSCLASSES/RSÁgua/"_s);
    QCOMPARE(gBD->NomeAlias(u"rsclasses"_s), QVariant(u"RSCLASSES"_s));
    QVERIFY(gBD->ExisteAlias(u"rságua"_s));
    QVERIFY(!gBD->ExisteAlias(u"rsagua"_s));
    QVERIFY(!gBD->ExisteAlias(u"1"_s)); // a slot is no alias
}

void TstBd::emptyAliasMeansTheLastTable()
{
    gBD->Records_Set(kClasses, u"RSCLxAL"_s);
    QCOMPARE(gBD->NumeroTotalDeRegistros(), 3);
    gBD->Records_Set(kPupils, u"rsAlunos"_s);
    QCOMPARE(gBD->NumeroTotalDeRegistros(), 0);
    gBD->ExisteAlias(u"RSCLxAL"_s); // does not name it
    QCOMPARE(gBD->NumeroTotalDeRegistros(), 0);
    gBD->SeekEx(u"RSCLxAL"_s);
    QCOMPARE(gBD->NumeroTotalDeRegistros(), 3);
    gBD->Linha_Conexao();
    QCOMPARE(gBD->Resolve_Alias({}), qint16(0));
    QCOMPARE(failureOf([] { gBD->NumeroTotalDeRegistros(); }), int(kFalhaIndice));
    QCOMPARE(failureOf([] { gBD->Records_Set(kPupils, {}); }), int(kFalhaIndice)); // and nothing is told
}

void TstBd::aliasUsedAgainForgetsPositionFilterAndOrder()
{
    gBD->Records_Set(kClasses, u"RS"_s);
    const auto first = gBD->GetRecordSet(u"RS"_s);
    gBD->Filtro(u"CL_Cod>1"_s, u"RS"_s);
    gBD->Sort(u"CL_Nome DESC"_s, u"RS"_s);
    gBD->Records_Set(kClasses, u"RS"_s);
    QCOMPARE(stateOf(*gBD->GetRecordSet(u"RS"_s)), u"1/3 0 a"_s);
    QCOMPARE(stateOf(*first), u"1/2 0 c"_s); // released, not closed: its holder goes on
}

void TstBd::closesATable()
{
    openThree();
    const auto second = gBD->GetRecordSet(u"dois"_s);
    gBD->FechaTabela(u"um"_s); // slot 1 is never closed
    gBD->FechaTabela(u"quatro"_s);
    gBD->FechaTabela(u"dois"_s);
    QVERIFY(!second->isOpen());
    QCOMPARE(open(), u"um//três/"_s);
    QCOMPARE(gBD->NomeAlias(2), QVariant(u""_s));
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"um"_s), 3);
    QCOMPARE(failureOf([] { gBD->NumeroTotalDeRegistros(2); }), int(kFalhaObjeto));
    QCOMPARE(failureOf([] { gBD->FechaTabela(2); }), int(kFalhaObjeto));
    gBD->Records_Set(kPupils, u"dois"_s); // the slot is not given again
    QCOMPARE(open(), u"um//três/dois/"_s);
}

void TstBd::closesAll()
{
    const auto connection = gBD->Source();
    gBD->Records_Set(kClasses, u"um"_s);
    const auto set = gBD->GetRecordSet(u"um"_s);
    gBD->Fechar();
    QVERIFY(!set->isOpen());
    QVERIFY(!connection->isOpen());
    QVERIFY(!gBD->Source());
    QVERIFY(!gBD->ExisteAlias(u"um"_s));
    QCOMPARE(failureOf([] { gBD->TabelasAbertas(); }), int(kFalhaIndice));
    QCOMPARE(failureOf([] { gBD->Records_Set(kClasses, u"um"_s); }), int(kErroSemConexao));
    QCOMPARE(told(), u"um: "_s + kClasses + u"/3709\tNão há conexão aberta com o banco de dados."_s);
    gBD->Source(mRegistro->path());
    gBD->Records_Set(kClasses, u"um"_s);
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"um"_s), 3);
}

void TstBd::closingEndsAtTheFirstFailure()
{
    gBD->Records_Set(kClasses, u"um"_s);
    gBD->Records_Set({}, u"dois"_s); // not open, so it can't be closed
    gBD->Records_Set(kClasses, u"três"_s);
    gBD->Fechar();
    QVERIFY(gBD->Source()->isOpen());
    QCOMPARE(failureOf([] { gBD->NumeroTotalDeRegistros(u"um"_s); }), int(kFalhaObjeto));
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"três"_s), 3);
}

void TstBd::connectionStrings_data()
{
    rows<QString, QString, int>({
        // prefix, "" the default; source, %1 the register's path
        {"a path", "", "%1", 0},
        {"a whole string", "", "Data Source=%1;PROVIDER=Microsoft.Jet.OLEDB.4.0", 0},
        {"in any case", "nada=", "pRoViDeR = microsoft.jet.oledb.4.0 ; data source=%1;User=x", 0},
        {"a prefix of one's own", "Provider=Microsoft.Jet.OLEDB.4.0;Mode=1;Data Source=", "%1", 0},
        {"another provider", "", "Provider=MSDASQL;Data Source=%1", kErroArmazem},
        {"a prefix without provider", "Data Source=", "%1", kErroArmazem},
        {"no such file", "", "%1.x", kErroArmazem},
        {"no file at all", "", "", kErroArmazem},
    });
}

void TstBd::connectionStrings()
{
    const auto [line, pattern, number] = row<QString, QString, int>();
    const QString usual = u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s;
    reiniciaData();
    gBD->Linha_Conexao(line);
    QCOMPARE(gBD->Linha_Conexao(), line.isEmpty() ? usual : line);
    const QString source = QString(pattern).replace("%1"_L1, mRegistro->path());
    QCOMPARE(failureOf([&] { gBD->Source(source); }), number); // reaches the caller, without a box
    QCOMPARE(gBD->Source() != nullptr, number == 0);
    QVERIFY(!QFile::exists(mRegistro->native() + u".x"_s)); // nothing is created
    if (number != 0)
        return;
    QCOMPARE(gBD->Linha_Conexao(), usual); // the prefix served once
    gBD->Records_Set(kClasses, u"RS"_s);
    QCOMPARE(gBD->NumeroTotalDeRegistros(), 3);
}

void TstBd::sources()
{
    const Registro other(u"INSERT INTO CL_Classes (CL_Nome) VALUES ('outra')"_s);
    const auto first = gBD->Source();
    gBD->Records_Set(kClasses, u"um"_s);
    gBD->SourceAtual(1);
    QCOMPARE(failureOf([] { gBD->TransacaoInicio(); }), int(kErroSemConexao));
    gBD->Source(other.path());
    QCOMPARE(gBD->Source(), first); // slot 0, whatever slot is in use
    gBD->Records_Set(kClasses, u"dois"_s);
    QCOMPARE(gBD->lista(u"dois"_s, u"CL_Nome"_s), u"outra"_s);
    gBD->ReAtualizaRecordSet(u"um"_s); // each set stays with its own
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"um"_s), 3);
    for (const qint16 slot : {qint16(2), qint16(-1), qint16(0)}) {
        gBD->SourceAtual(1);
        gBD->SourceAtual(slot);
        gBD->Records_Set(kClasses, u"três"_s);
        QCOMPARE(gBD->NumeroTotalDeRegistros(), 3);
    }
}

void TstBd::fieldsWaitForAQuery()
{
    QVERIFY(!gBD->Campo(u"CL_Nome"_s, u"RS"_s).isValid());
    gBD->Records_Set(kClasses, u"RS"_s);
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s), QVariant(u"a"_s));
    gBD->Source(mRegistro->path()); // and again behind another source
    QVERIFY(!gBD->Campo(u"CL_Nome"_s, u"RS"_s).isValid());
}

void TstBd::sharesItsRecordSets()
{
    gBD->Records_Set(kClasses, u"RS"_s);
    gBD->GetRecordSet(u"rs"_s)->MoveLast();
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s), QVariant(u"c"_s));
    gBD->DefineCache(1, u"RS"_s);
    QCOMPARE(failureOf([] { gBD->DefineCache(0, u"RS"_s); }), int(kErroCriterio));
    gBD->Log(u"nada mais"_s);
}

QTEST_MAIN(TstBd)
#include "tst_bd.moc"
