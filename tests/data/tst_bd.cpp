#include "apoio.h"
#include "passos.h"

#include "data/conexao.h"
#include "support/table.h"

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
    void opensAndCloses_data();
    void opensAndCloses() { plays(words()); }
    void holdersKeepWhatTheyHave();
    void closesAll();
    void failedOpeningIsToldAndRaised_data();
    void failedOpeningIsToldAndRaised();
    void opensBetweenTurnsOfEvents();
    void resolves_data();
    void resolves();
    void connectionStrings_data();
    void connectionStrings();

private:
    Palavras words();
    static QString aliases() { return gBD->TabelasAbertas().toString().replace(u"\r\n"_s, u"/"_s); }

    const Registro mOther{u"INSERT INTO CL_Classes VALUES (7, 'outra', '', '')"_s};
};

static void openThree()
{
    for (const QString &name : {u"um"_s, u"dois"_s, u"três"_s})
        gBD->Records_Set(kClasses, name);
}

static QVariant aliasOf(const QString &rest)
{
    bool isSlot = false;
    const int slot = rest.toInt(&isSlot);
    return rest.isEmpty() ? QVariant() : isSlot ? QVariant(slot) : QVariant(rest);
}

/// Words with an alias behind them open queries under it, or ask about it.
Palavras TstBd::words()
{
    const auto open = [](const QString &sql, const QString &search = {}) {
        return [sql, search](const QString &alias) { gBD->Records_Set(sql, aliasOf(alias), search); };
    };
    const auto fails = [this](const QString &alias) {
        ignora([&] { gBD->Records_Set(u"x"_s, alias); });
        told();
    };
    return {
        {u"classes"_s, open(kClasses)},
        {u"pupils"_s, open(kPupils)},
        {u"named-b"_s, open(kClasses, u"CL_Nome='B'"_s)}, // with a search
        {u"named-x"_s, open(kClasses, u"CL_Nome='x'"_s)},
        {u"none"_s, open({})}, // without a query
        {u"bad"_s, fails}, // a query that can't be read; what is told of it is taken
        {u"three"_s, [](auto &) { openThree(); }},
        {u"narrow"_s, [](auto &alias) { gBD->Filtro(u"CL_Cod>1"_s, alias), gBD->Sort(u"CL_Nome DESC"_s, alias); }},
        {u"reread"_s, [](auto &alias) { gBD->ReAtualizaRecordSet(alias); }},
        {u"seek"_s, [](auto &alias) { gBD->SeekEx(alias); }},
        {u"close"_s, [](auto &alias) { gBD->FechaTabela(aliasOf(alias)); }},
        {u"closeall"_s, [](auto &) { gBD->Fechar(); }},
        {u"source"_s, [this](auto &) { gBD->Source(mRegistro->path()); }},
        {u"other"_s, [this](auto &) { gBD->Source(mOther.path()); }},
        {u"slot"_s, [](auto &slot) { gBD->SourceAtual(slot.toShort()); }},
        {u"begin"_s, [](auto &) { gBD->TransacaoInicio(); }},
        {u"line"_s, [](auto &) { gBD->Linha_Conexao(); }},
        {u"log"_s, [](auto &text) { gBD->Log(text); }},
        {u"aliases"_s, [](auto &) { return aliases(); }},
        {u"exists"_s, [](auto &alias) { return gBD->ExisteAlias(alias); }},
        {u"name"_s, [](auto &alias) { return gBD->NomeAlias(aliasOf(alias)); }},
        {u"resolve"_s, [](auto &alias) { return gBD->Resolve_Alias(aliasOf(alias)); }},
        {u"count"_s, [](auto &alias) { return gBD->NumeroTotalDeRegistros(aliasOf(alias)); }},
        {u"place"_s, [](auto &alias) { return stateOf(*gBD->GetRecordSet(alias)); }},
        {u"field"_s, [](auto &alias) { return gBD->Campo(u"CL_Nome"_s, alias); }},
        {u"cache"_s, [](auto &size) { gBD->DefineCache(size.toShort(), u"RS"_s); }},
    };
}

void TstBd::opensAndCloses_data()
{
    rows<QString, QString>({
        {"with a search", "named-b RS; place RS", "2/3 0 b"},
        {"with one that misses: the first", "named-x RS; place RS", "1/3 0 a"},
        {"an opening that fails takes the slot", "classes um; bad dois; pupils três; aliases", "um//três/"},
        {"without an alias", "classes um; bad dois; exists dois", "false"},
        {"what was open there is gone", "classes um; bad UM; count um", "fails 3704"},
        {"opened again, in the new spelling", "classes rsClasses; pupils b; pupils RSCLASSES; aliases", "RSCLASSES/b/"},
        {"with the new rows", "classes rsClasses; pupils RSCLASSES; count rsClasses", "0"},
        {"forgetting position, filter and order", "classes RS; narrow RS; classes RS; place RS", "1/3 0 a"},

        {"known in any case", "pupils RSÁgua; exists rságua", "true"},
        {"an accent counts", "pupils RSÁgua; exists rsagua", "false"},
        {"a slot is no alias", "classes um; exists 1", "false"},
        {"its name as it was given", "classes rsClasses; name RSCLASSES", "rsClasses"},
        {"fields wait for a query", "field RS", "nothing"},
        {"and no longer", "classes RS; field RS", "a"},
        {"and again behind another source", "classes RS; source; field RS", "nothing"},
        {"a line of the log goes nowhere", "classes RS; log nada mais; place RS", "1/3 0 a"},
        {"a cache of one", "classes RS; cache 1", "nothing"},
        {"a cache of none", "classes RS; cache 0", "fails 3001"},

        {"no alias: the last opened", "classes um; pupils dois; count", "0"},
        {"or the last named", "classes um; pupils dois; seek um; count", "3"},
        {"asking for one names none", "classes um; pupils dois; exists um; count", "0"},
        {"slot 0 after the connection's line", "classes um; line; resolve", "0"},
        {"which there is not", "classes um; line; count", "fails 9"},
        {"nor can be opened", "classes um; line; pupils", "fails 9"},

        {"kept: slot 1 can't be closed", "three; close um; count um", "3"},
        {"closing an alias that is none", "three; close quatro; aliases", "um/dois/três/"},
        {"closed: its slot has no name", "three; close dois; name 2", ""},
        {"nor a table", "three; close dois; count 2", "fails 91"},
        {"closed twice", "three; close dois; close 2", "fails 91"},
        {"its slot is not given again", "three; close dois; pupils dois; aliases", "um//três/dois/"},
        {"all closed", "three; closeall; exists um", "false"},
        {"nothing to list", "three; closeall; aliases", "fails 9"},
        {"opened anew", "three; closeall; source; classes um; count um", "3"},
        {"closing all ends at the first failure", "classes um; none dois; classes três; closeall; count três", "3"},
        {"what came before is closed", "classes um; none dois; classes três; closeall; count um", "fails 91"},

        {"another slot of the sources has none", "slot 1; begin", "fails 3709"},
        {"but may get one", "slot 1; other; classes dois; field dois", "outra"},
        {"each set stays with its own", "classes um; slot 1; other; reread um; count um", "3"},
        {"slot 2 is slot 0", "slot 1; other; slot 2; classes RS; count", "3"},
        {"so is -1", "slot 1; other; slot -1; classes RS; count", "3"},
    });
}

void TstBd::holdersKeepWhatTheyHave()
{
    openThree();
    const auto first = gBD->GetRecordSet(u"um"_s), second = gBD->GetRecordSet(u"DOIS"_s);
    first->MoveLast(); // it is the alias's own
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"um"_s), QVariant(u"c"_s));
    gBD->Records_Set(kPupils, u"um"_s); // released, not closed
    QCOMPARE(stateOf(*first), u"3/3 0 c"_s);
    gBD->FechaTabela(u"dois"_s);
    QVERIFY(!second->isOpen());
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
    QCOMPARE(failureOf([] { gBD->Records_Set(kClasses, u"um"_s); }), int(kErroSemConexao));
    QVERIFY(told().startsWith(u"um: "_s + kClasses + u"/3709\tNão há conexão aberta com o banco de dados. "_s));
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
        {"no column between brackets", u"Select * From CL_Classes Where [Nada] = ''"_s, {}, kErroSql,
            "Não existe a coluna \"Nada\"."},
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

/// A click that comes in while a query opens opens another one, in a slot of its own.
void TstBd::opensBetweenTurnsOfEvents()
{
    QTimer::singleShot(0, [] { gBD->Records_Set(kPupils, u"dentro"_s); });
    gBD->Records_Set(kClasses, u"fora"_s);
    QCOMPARE(aliases(), u"fora/dentro/"_s);
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

QTEST_MAIN(TstBd)
#include "tst_bd.moc"
