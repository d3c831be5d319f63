#include "apoio.h"

#include "data/bd.h"
#include "data/criterio.h"
#include "data/errobd.h"
#include "data/recordset.h"
#include "platform/costuras.h"
#include "support/suporte.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// Criteria of searches and filters, on a table with a column of each type.
class TstCriterio final : public QObject
{
    Q_OBJECT
private:
    Registro mRegistro;

private slots:
    void initTestCase();
    void init();
    void meets_data();
    void meets();
    void refuses_data();
    void refuses();
    void unknownColumnIsTold();
    void sorts_data();
    void sorts();
};

void TstCriterio::initTestCase()
{
    mRegistro.sql(
        u"CREATE TABLE T (Cod INTEGER PRIMARY KEY AUTOINCREMENT, Nome VARCHAR, Dia DATETIME, Sim BOOLEAN, Valor REAL);"
        "INSERT INTO T VALUES (1, 'Ana', '2026-11-24 00:00:00', 1, 1.5), (2, 'ÁGUA', '2026-11-24 10:00:00', 0, -2),"
        "(3, 'Água e Sal', NULL, NULL, NULL), (4, NULL, '2001-02-03 04:05:06', 1, 0), (5, '', NULL, NULL, NULL),"
        "(6, 'ana paula', NULL, NULL, NULL), (7, 'Çá 100%', NULL, NULL, NULL), (8, '12', NULL, NULL, NULL)"_s);
}

void TstCriterio::init()
{
    failOnWarnings();
    reiniciaCosturas();
    mRegistro.open();
    gBD->Records_Set(u"Select * From T"_s, u"T"_s);
}

void TstCriterio::meets_data()
{
    QTest::addColumn<QString>("criterion");
    QTest::addColumn<QString>("codes");
    const auto row = [](const char *criterion, const char *codes) {
        QTest::newRow(criterion) << QString::fromUtf8(criterion) << QString::fromUtf8(codes);
    };
    row("Cod=3", "3");
    row("  cod  =  +3  ", "3");
    row("[COD]=3.0", "3");
    row("Cod='3'", "3");
    row("Cod<>3", "1,2,4,5,6,7,8");
    row("Cod<3", "1,2");
    row("Cod>6", "7,8");
    row("Cod<=1", "1");
    row("Cod>=8", "8");
    row("Cod=-1", "");
    row("Cod=9999999999", "");
    row("Cod like 1*", "1");
    row("Nome='ana'", "1");
    row("Nome = 'ÁGUA'", "2");
    row("Nome='água e SAL'", "3");
    row("Nome='agua'", ""); // an accent counts
    row("Nome='çÁ 100%'", "7");
    row("Nome=''", "5"); // Null is no empty text
    row("Nome<>'ana'", "2,3,5,6,7,8");
    row("Nome=12", "8");
    row("Nome<'b'", "1,2,3,5,6,8"); // accented letters beside their plain ones
    row("Nome>'ana'", "6,7");
    row("Nome<='ANA'", "1,2,3,5,8");
    row("Nome like ana*", "1,6");
    row("Nome LIKE 'ana*'", "1,6");
    row("[Nome] like *a", "1,2,6");
    row("Nome like '*a*'", "1,2,3,6");
    row("Nome like *", "1,2,3,5,6,7,8");
    row("Nome like água e*", "3"); // bare to the end, with its blanks
    row("Nome like '*%*'", "7"); // no other wildcard
    row("Nome like ?na*", "");
    row("Dia='24/11/26'", "1");
    row("Dia>'24/11/2026'", "2");
    row("Dia<='24/11/26 10:00'", "1,2,4");
    row("Dia<>'03/02/01 04:05:06'", "1,2");
    row("Dia like 24/11*", "1,2");
    row("Sim=1", "1,4");
    row("Sim=-1", "1,4");
    row("Sim='true'", "1,4");
    row("Sim=0", "2");
    row("Valor=1.5", "1");
    row("Valor<.5", "2,4");
    row("Valor>=-2", "1,2,4");
}

void TstCriterio::meets()
{
    QFETCH(QString, criterion);
    QFETCH(QString, codes);
    const BoxScript boxes;
    const auto set = gBD->GetRecordSet(u"T"_s);
    QStringList found;
    for (set->Find(criterion); !set->EOF_(); set->Find(criterion)) {
        found << set->value(0).toString();
        set->MoveNext();
    }
    QCOMPARE(found.join(u','), codes);
    gBD->Filtro(criterion, u"T"_s);
    QCOMPARE(gBD->lista(u"T"_s, u"Cod"_s, u","_s), codes);
    gBD->Filtro({}, u"T"_s);
    QCOMPARE(gBD->NumeroTotalDeRegistros(), 8);
}

void TstCriterio::refuses_data()
{
    QTest::addColumn<QString>("criterion");
    QTest::addColumn<bool>("searches"); // nothing behind an equals sign, and no "like", is no search
    for (const char *text : {"Cod", "=", "Cod 3", "Cod=", "Cod= ", "Cod<>", "Cod<x", "3Cod>1", "[]<1", "[Cod<1"})
        QTest::newRow(text) << QString::fromUtf8(text) << false;
    for (const char *text :
        {"=3", "Cod==3", "Cod=abc", "Cod=1e3", "Cod='dois'", "Cod='nan'", "Cod='inf'", "Cod=''", "Cod=1 and Cod=2",
            "Cod=1;", "[Cod=1", "Cod='", "Nome='O'Neil'", "Nome='O''Neil'", "Nome='ana", "Nome=ana'", "Nome=\"ana\"",
            "Nome like", "Nome like ana", "Nome like 'ana'", "Nome like 'ana*", "Nome like ana*'x", "Nome like a*b",
            "Nome like a*b*", "Nome likea*", "Nome not like a*", "Nomelike a*", "Dia='31/02/26'",
            "Dia='24/11/26 25:00'", "Dia='11-24-2026'", "Dia=24", "Sim='talvez'", "Valor='1,5'", "Dia=#11/24/2026#"})
        QTest::newRow(text) << QString::fromUtf8(text) << true;
}

void TstCriterio::refuses()
{
    QFETCH(QString, criterion);
    QFETCH(bool, searches);
    const QString text = u"O critério não pôde ser entendido."_s;
    {
        const auto boxes = searches ? std::make_unique<BoxScript>(std::initializer_list<Resposta>{Resposta::Ok})
                                    : std::make_unique<BoxScript>();
        QString spent = criterion;
        QCOMPARE(gBD->Pesquisa(spent, u"T"_s, 0), u""_s);
        if (searches)
            QCOMPARE(boxes->last(), (Caixa{text, u"T - Pesquisa"_s, Icone::Critico}));
        QCOMPARE(gBD->Pesquisa(spent, u"T"_s, 0, false), u""_s);
        QCOMPARE(gBD->PosicaoRegistroAtual(), 1);
    }
    const BoxScript none;
    QCOMPARE(failureOf([&] { gBD->Filtro(criterion, u"T"_s); }), int(kErroCriterio));
    QCOMPARE(gBD->NumeroTotalDeRegistros(), 8);
}

void TstCriterio::unknownColumnIsTold()
{
    BoxScript boxes{Resposta::Ok};
    QString criterion = u"Preco=3"_s;
    QCOMPARE(gBD->Pesquisa(criterion, u"T"_s, 0), u""_s);
    QCOMPARE(boxes.last(),
        (Caixa{u"O item não foi encontrado na coleção com o nome ou número pedido.\r\n"
               "O nome do campo não esta na tabela !!!"_s,
            u"T - Pesquisa"_s, Icone::Critico}));
    QCOMPARE(failureOf([] { gBD->Filtro(u"Preco=3"_s, u"T"_s); }), int(kErroNome));
}

void TstCriterio::sorts_data()
{
    QTest::addColumn<QString>("order");
    QTest::addColumn<QString>("codes");
    QTest::newRow("as read") << u" "_s << u"1,2,3,4,5,6,7,8"_s;
    QTest::newRow("Null first, accents beside, case ignored") << u"Nome"_s << u"4,5,8,2,3,1,6,7"_s;
    QTest::newRow("downwards, equal ones as read") << u"[nome] desc, Cod"_s << u"7,6,1,3,2,8,5,4"_s;
    QTest::newRow("two columns") << u"Sim DESC,Valor ASC"_s << u"4,1,2,3,5,6,7,8"_s;
    QTest::newRow("dates") << u"Dia DESC , Cod DESC"_s << u"2,1,4,8,7,6,5,3"_s;
}

void TstCriterio::sorts()
{
    QFETCH(QString, order);
    QFETCH(QString, codes);
    const BoxScript boxes;
    gBD->Sort(order, u"T"_s);
    QCOMPARE(gBD->lista(u"T"_s, u"0"_s, u","_s), codes);
}

QTEST_MAIN(TstCriterio)
#include "tst_criterio.moc"
