#include "apoio.h"

#include "data/criterio.h"
#include "support/table.h"

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// Criteria of searches and filters, and orders, on a table with a column of each type.
class TstCriterio final : public TesteBD
{
    Q_OBJECT
public:
    TstCriterio()
        : TesteBD(
            u"CREATE TABLE T (Cod INTEGER PRIMARY KEY AUTOINCREMENT, Nome VARCHAR, Dia DATETIME, Sim BOOLEAN, Valor "
            u"REAL);"
            "INSERT INTO T VALUES (1, 'Ana', '2026-11-24 00:00:00', 1, 1.5), (2, 'ÁGUA', '2026-11-24 10:00:00', 0, -2),"
            "(3, 'Água e Sal', NULL, NULL, NULL), (4, NULL, '2001-02-03 04:05:06', 1, 0), (5, '', NULL, NULL, NULL),"
            "(6, 'ana paula', NULL, NULL, NULL), (7, 'Çá 100%', NULL, NULL, NULL), (8, '12', NULL, NULL, NULL)"_s,
            u"Select * From T"_s)
    { }

private slots:
    void meets_data();
    void meets();
    void refuses_data();
    void refuses();
    void isNoSearch_data();
    void isNoSearch();
    void sorts_data();
    void sorts();

private:
    static QString codes() { return gBD->lista(u"RS"_s, u"Cod"_s, u","_s); }
};

void TstCriterio::meets_data()
{
    rows<QString>({
        {"Cod=3", "3"},
        {"  cod  =  +3  ", "3"},
        {"[COD]=3.0", "3"},
        {"Cod='3'", "3"},
        {"Cod<>3", "1,2,4,5,6,7,8"},
        {"Cod<3", "1,2"},
        {"Cod>6", "7,8"},
        {"Cod<=1", "1"},
        {"Cod>=8", "8"},
        {"Cod=-1", ""},
        {"Cod=9999999999", ""},
        {"Cod like 1*", "1"},
        {"Nome='ana'", "1"},
        {"Nome = 'ÁGUA'", "2"},
        {"Nome='água e SAL'", "3"},
        {"Nome='agua'", ""}, // an accent counts
        {"Nome='çÁ 100%'", "7"},
        {"Nome=''", "5"}, // Null is no empty text
        {"Nome<>'ana'", "2,3,5,6,7,8"},
        {"Nome=12", "8"},
        {"Nome<'b'", "1,2,3,5,6,8"}, // accented letters beside their plain ones
        {"Nome>'ana'", "6,7"},
        {"Nome<='ANA'", "1,2,3,5,8"},
        {"Nome like ana*", "1,6"},
        {"Nome LIKE 'ana*'", "1,6"},
        {"[Nome] like *a", "1,2,6"},
        {"Nome like '*a*'", "1,2,3,6"},
        {"Nome like *", "1,2,3,5,6,7,8"},
        {"Nome like água e*", "3"}, // bare to the end, with its blanks
        {"Nome like '*%*'", "7"}, // no other wildcard
        {"Nome like ?na*", ""},
        {"Dia='24/11/26'", "1"},
        {"Dia>'24/11/2026'", "2"},
        {"Dia<='24/11/26 10:00'", "1,2,4"},
        {"Dia<>'03/02/01 04:05:06'", "1,2"},
        {"Dia like 24/11*", "1,2"},
        {"Sim=1", "1,4"},
        {"Sim=-1", "1,4"},
        {"Sim='true'", "1,4"},
        {"Sim=0", "2"},
        {"Valor=1.5", "1"},
        {"Valor<.5", "2,4"},
        {"Valor>=-2", "1,2,4"},
    });
}

void TstCriterio::meets()
{
    const auto [expected] = row<QString>();
    QStringList found;
    for (mSet->Find(rowName()); !mSet->EOF_(); mSet->Find(rowName())) {
        found << mSet->value(0).toString();
        mSet->MoveNext();
    }
    QCOMPARE(found.join(u','), expected);
    gBD->Filtro(rowName(), u"RS"_s);
    QCOMPARE(codes(), expected);
    gBD->Filtro({}, u"RS"_s);
    QCOMPARE(gBD->NumeroTotalDeRegistros(), 8);
}

void TstCriterio::refuses_data()
{
    texts({"=3", "Cod==3", "Cod=abc", "Cod=1e3", "Cod='dois'", "Cod='nan'", "Cod='inf'", "Cod=''", "Cod=1 and Cod=2",
        "Cod=1;", "[Cod=1", "Cod='", "Nome='O'Neil'", "Nome='O''Neil'", "Nome='ana", "Nome=ana'", "Nome=\"ana\"",
        "Nome like", "Nome like ana", "Nome like 'ana'", "Nome like 'ana*", "Nome like ana*'x", "Nome like a*b",
        "Nome like a*b*", "Nome likea*", "Nome not like a*", "Nomelike a*", "Dia='31/02/26'", "Dia='24/11/26 25:00'",
        "Dia='11-24-2026'", "Dia=24", "Sim='talvez'", "Valor='1,5'", "Dia=#11/24/2026#"});
}

void TstCriterio::refuses()
{
    const QString text = rowName();
    QString criterion = text;
    QCOMPARE(gBD->Pesquisa(criterion, u"RS"_s, 0, false), u""_s);
    QCOMPARE(told(), u""_s);
    QCOMPARE(gBD->Pesquisa(criterion, u"RS"_s, 0), u""_s);
    QCOMPARE(told(), u"! RS - Pesquisa: O critério não pôde ser entendido."_s);
    QCOMPARE(gBD->PosicaoRegistroAtual(), 1);
    QCOMPARE(failureOf([&] { gBD->Filtro(text, u"RS"_s); }), int(kErroCriterio));
    QCOMPARE(gBD->NumeroTotalDeRegistros(), 8);
}

/// With nothing behind an equals sign, and no "like", it is only refused as a filter.
void TstCriterio::isNoSearch_data()
{
    texts({"Cod", "=", "Cod 3", "Cod=", "Cod= ", "Cod<>", "Cod<x", "3Cod>1", "[]<1", "[Cod<1"});
}

void TstCriterio::isNoSearch()
{
    const QString text = rowName();
    QString criterion = text;
    QCOMPARE(gBD->Pesquisa(criterion, u"RS"_s, 0), u""_s);
    QCOMPARE(gBD->PosicaoRegistroAtual(), 1);
    QCOMPARE(failureOf([&] { gBD->Filtro(text, u"RS"_s); }), int(kErroCriterio));
}

void TstCriterio::sorts_data()
{
    rows<QString>({
        {" ", "1,2,3,4,5,6,7,8"}, // as read
        {"Nome", "4,5,8,2,3,1,6,7"}, // Null first, accents beside, case ignored
        {"[nome] desc, Cod", "7,6,1,3,2,8,5,4"}, // equal ones as read
        {"Sim DESC,Valor ASC", "4,1,2,3,5,6,7,8"},
        {"Dia DESC , Cod DESC", "2,1,4,8,7,6,5,3"},
    });
}

void TstCriterio::sorts()
{
    const auto [expected] = row<QString>();
    gBD->Sort(rowName(), u"RS"_s);
    QCOMPARE(codes(), expected);
}

QTEST_MAIN(TstCriterio)
#include "tst_criterio.moc"
