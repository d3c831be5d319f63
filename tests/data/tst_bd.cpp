#include "apoio.h"

#include "data/bd.h"
#include "data/conexao.h"
#include "data/consultas.h"
#include "data/datas.h"
#include "data/errobd.h"
#include "data/recordset.h"
#include "platform/costuras.h"
#include "support/suporte.h"

#include <QDateTime>
#include <QFile>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// The registry of BD: connections, opening queries, aliases and slots. Three classes named a, b, c; no pupils.
class TstBd final : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Registro> mRegistro;

private slots:
    void init();
    void cleanup();
    void logRowIsInTheFile();
    void opensWithASearch_data();
    void opensWithASearch();
    void failedOpeningIsToldAndRaised_data();
    void failedOpeningIsToldAndRaised();
    void failedOpeningTakesTheSlot();
    void opensBetweenTurnsOfEvents();
    void resolves_data();
    void resolves();
    void aliasesIgnoreCase();
    void emptyAliasMeansTheLastTable();
    void emptySqlLeavesItClosed();
    void aliasUsedAgainForgetsPositionFilterAndOrder();
    void closesATable();
    void closesAll();
    void closingEndsAtTheFirstFailure();
    void connectionStrings_data();
    void connectionStrings();
    void sources();
    void fieldsWaitForAQuery();
    void sharesItsRecordSets();
};

void TstBd::init()
{
    failOnWarnings();
    reiniciaCosturas();
    mRegistro = std::make_unique<Registro>();
    mRegistro->sql(u"INSERT INTO CL_Classes (CL_Nome) VALUES ('a'), ('b'), ('c')"_s);
    mRegistro->open();
}

void TstBd::cleanup()
{
    gBD.reset();
    mRegistro.reset();
}

void TstBd::logRowIsInTheFile()
{
    BoxScript boxes;
    gBD->Records_Set(consultas::logDoAluno(9999, 9999), u"RSLog"_s);
    QVERIFY(gBD->ExisteAlias(u"rslog"_s));
    for (int i = 1; i <= 2; ++i) {
        gBD->TransacaoInicio();
        gBD->RegistroAdiciona(u"RSLog"_s);
        QCOMPARE(gBD->PosicaoRegistroAtual(), 0);
        gBD->RegistroTroca(u"LG_Aluno"_s, 9999, u"RSLog"_s);
        gBD->RegistroTroca(u"LG_Classe"_s, 9999, u"RSLog"_s);
        gBD->RegistroTroca(u"LG_Data"_s, QDateTime({2026, 11, 24}, {10, 0, i, 500}), u"RSLog"_s);
        gBD->RegistroTroca(u"RO_Cod"_s, 7, u"RSLog"_s);
        gBD->RegistroTroca(u"LG_Resp"_s, u"Ciências<disc>Água<rot>A:"_s, u"RSLog"_s);
        gBD->RegistroAtualiza(u"RSLog"_s);
        gBD->TransacaoFim();
        gBD->ReAtualizaRecordSet(u"RSLog"_s);
    }
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"RSLog"_s), 2);
    QCOMPARE(gBD->Campo(u"lg_data"_s, u"RSLog"_s), QVariant(wallClock({2026, 11, 24}, {10, 0, 2})));
    gBD.reset();
    QCOMPARE(mRegistro->sql(u"SELECT * FROM LG_LogAulas ORDER BY LG_Id"_s),
        (QStringList{u"9999|9999|2026-11-24 10:00:01|7|NULL|Ciências<disc>Água<rot>A:|1"_s,
            u"9999|9999|2026-11-24 10:00:02|7|NULL|Ciências<disc>Água<rot>A:|2"_s}));
}

void TstBd::opensWithASearch_data()
{
    QTest::addColumn<QString>("search");
    QTest::addColumn<qint32>("position");
    QTest::newRow("a hit") << u"CL_Nome='B'"_s << 2;
    QTest::newRow("no hit: the first") << u"CL_Nome='x'"_s << 1;
}

void TstBd::opensWithASearch()
{
    QFETCH(QString, search);
    QFETCH(qint32, position);
    const BoxScript boxes;
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"RS"_s, search);
    QCOMPARE(gBD->PosicaoRegistroAtual(), position);
}

void TstBd::failedOpeningIsToldAndRaised_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("search");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("description");
    QTest::newRow("no query") << u"Abre te"_s << u""_s << int(kErroSql) << u"A instrução SQL não pôde ser entendida."_s;
    QTest::newRow("no table") << u"Select * From Nada"_s << u""_s << int(kErroTabela)
                              << u"Não existe a tabela ou consulta \"Nada\"."_s;
    QTest::newRow("no column") << u"Select Nada From CL_Classes"_s << u""_s << int(kErroSql)
                               << u"Não existe a coluna \"Nada\"."_s;
    QTest::newRow("no criterion") << u"Select * From CL_Classes"_s << u"a"_s << int(kErroCriterio)
                                  << u"O critério não pôde ser entendido."_s;
    QTest::newRow("nothing to search in")
        << u"Select * From AL_Alunos"_s << u"AL_Nome='x'"_s << int(kErroSemRegistro)
        << u"Não há registro atual: BOF ou EOF é verdadeiro, ou o registro atual foi excluído."_s;
    QTest::newRow("no date") << u"Select #02/30/2026#"_s << u""_s << int(kErroSql)
                             << u"A data #02/30/2026# não existe."_s;
}

void TstBd::failedOpeningIsToldAndRaised()
{
    QFETCH(QString, sql);
    QFETCH(QString, search);
    QFETCH(int, number);
    QFETCH(QString, description);
    BoxScript boxes{Resposta::Ok};
    QCOMPARE(failureOf([&] { gBD->Records_Set(sql, u"Rs"_s, search); }), number);
    QCOMPARE(boxes.last(), (Caixa{sql + u"\r\n%1\t"_s.arg(number) + description, u"Rs"_s}));
}

/// The slot is taken all the same, without an alias; the next one goes behind it.
void TstBd::failedOpeningTakesTheSlot()
{
    BoxScript boxes{Resposta::Ok, Resposta::Ok};
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"um"_s);
    QVERIFY(failureOf([] { gBD->Records_Set(u"x"_s, u"dois"_s); }) != 0);
    QVERIFY(!gBD->ExisteAlias(u"dois"_s));
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"três"_s);
    QCOMPARE(gBD->TabelasAbertas(), QVariant(u"um\r\n\r\ntrês\r\n"_s));
    QVERIFY(failureOf([] { gBD->Records_Set(u"x"_s, u"UM"_s); }) != 0); // what was open there is gone
    QCOMPARE(failureOf([] { gBD->NumeroTotalDeRegistros(u"um"_s); }), int(kErroFechado));
}

/// A click that comes in while a query opens opens another one, in a slot of its own.
void TstBd::opensBetweenTurnsOfEvents()
{
    const BoxScript boxes;
    QTimer::singleShot(0, [] { gBD->Records_Set(u"Select * From AL_Alunos"_s, u"dentro"_s); });
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"fora"_s);
    QCOMPARE(gBD->TabelasAbertas(), QVariant(u"fora\r\ndentro\r\n"_s));
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"fora"_s), 3);
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"dentro"_s), 0);
}

void TstBd::resolves_data()
{
    QTest::addColumn<QVariant>("alias");
    QTest::addColumn<bool>("warns");
    QTest::addColumn<int>("slot");
    QTest::addColumn<int>("after"); // what an empty alias means then
    QTest::newRow("first") << QVariant(u"um"_s) << true << 1 << 1;
    QTest::newRow("case, accents") << QVariant(u"TRÊS"_s) << true << 3 << 3;
    QTest::newRow("empty") << QVariant(u""_s) << true << 2 << 2;
    QTest::newRow("nothing") << QVariant() << true << 2 << 2;
    QTest::newRow("a number") << QVariant(3) << true << 3 << 3;
    QTest::newRow("a text that begins with a digit") << QVariant(u"3 classes"_s) << true << 3 << 3;
    QTest::newRow("a slot that is not there") << QVariant(40) << true << 40 << 40;
    QTest::newRow("halves to even") << QVariant(2.5) << true << 2 << 2;
    QTest::newRow("too large for a slot") << QVariant(40000) << true << 1 << 1;
    QTest::newRow("unknown, without warning") << QVariant(u"quatro"_s) << false << 4 << 4;
    QTest::newRow("0 is no slot") << QVariant(0) << false << 4 << 4;
    QTest::newRow("nor is -1") << QVariant(-1) << false << 4 << 4;
    QTest::newRow("a blank is no empty alias") << QVariant(u" "_s) << false << 4 << 4;
    QTest::newRow("unknown, with a box") << QVariant(u"quatro"_s) << true << 1 << 2;
}

void TstBd::resolves()
{
    QFETCH(QVariant, alias);
    QFETCH(bool, warns);
    QFETCH(int, slot);
    QFETCH(int, after);
    for (const QString &name : {u"um"_s, u"dois"_s, u"três"_s})
        gBD->Records_Set(u"Select * From CL_Classes"_s, name);
    gBD->NumeroTotalDeRegistros(u"dois"_s);
    const bool told = slot != after;
    const auto boxes = told ? std::make_unique<BoxScript>(std::initializer_list<Resposta>{Resposta::Ok})
                            : std::make_unique<BoxScript>();
    QCOMPARE(gBD->Resolve_Alias(alias, warns), qint16(slot));
    QCOMPARE(gBD->Resolve_Alias({}), qint16(after));
    if (told)
        QCOMPARE(boxes->last(),
            Caixa{u"Tabela não especificada !!!!  (quatro)\r\n"
                  "Como padrão será selecionda a Primeira Tabela da Lista"_s});
}

void TstBd::aliasesIgnoreCase()
{
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"rsClasses"_s);
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"RSÁgua"_s);
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"RSCLASSES"_s); // replaces it, with the new spelling
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"RsClasses"_s), 0);
    QCOMPARE(gBD->TabelasAbertas(), QVariant(u"RSCLASSES\r\nRSÁgua\r\n"_s));
    QCOMPARE(gBD->NomeAlias(u"rsclasses"_s), QVariant(u"RSCLASSES"_s));
    QVERIFY(gBD->ExisteAlias(u"rságua"_s));
    QVERIFY(!gBD->ExisteAlias(u"rsagua"_s));
    QVERIFY(!gBD->ExisteAlias(u"1"_s)); // a slot is no alias
}

void TstBd::emptyAliasMeansTheLastTable()
{
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"RSCLxAL"_s);
    QCOMPARE(gBD->NumeroTotalDeRegistros(), 3);
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"rsAlunos"_s);
    QCOMPARE(gBD->NumeroTotalDeRegistros(), 0);
    gBD->ExisteAlias(u"RSCLxAL"_s); // does not name it
    QCOMPARE(gBD->NumeroTotalDeRegistros(), 0);
    gBD->SeekEx(u"RSCLxAL"_s);
    QCOMPARE(gBD->NumeroTotalDeRegistros(), 3);
    gBD->Linha_Conexao();
    QCOMPARE(gBD->Resolve_Alias({}), qint16(0));
    QCOMPARE(failureOf([] { gBD->NumeroTotalDeRegistros(); }), int(kFalhaIndice));
    const BoxScript boxes; // and nothing is told
    QCOMPARE(failureOf([] { gBD->Records_Set(u"Select * From AL_Alunos"_s, {}); }), int(kFalhaIndice));
}

void TstBd::emptySqlLeavesItClosed()
{
    gBD->Records_Set({}, u"vazio"_s);
    QVERIFY(gBD->ExisteAlias(u"vazio"_s));
    QVERIFY(!gBD->GetRecordSet(u"vazio"_s)->isOpen());
    QVERIFY(gBD->TabelaVazia(u"vazio"_s));
}

void TstBd::aliasUsedAgainForgetsPositionFilterAndOrder()
{
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"RS"_s);
    const auto first = gBD->GetRecordSet(u"RS"_s);
    gBD->Filtro(u"CL_Cod>1"_s, u"RS"_s);
    gBD->Sort(u"CL_Nome DESC"_s, u"RS"_s);
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"RS"_s);
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s), QVariant(u"a"_s));
    QCOMPARE(gBD->NumeroTotalDeRegistros(), 3);
    QCOMPARE(first->RecordCount(), 2); // released, not closed: its holder goes on
}

void TstBd::closesATable()
{
    const BoxScript boxes;
    for (const QString &name : {u"um"_s, u"dois"_s, u"três"_s})
        gBD->Records_Set(u"Select * From CL_Classes"_s, name);
    const auto second = gBD->GetRecordSet(u"dois"_s);
    gBD->FechaTabela(u"um"_s); // slot 1 is never closed
    gBD->FechaTabela(u"quatro"_s);
    gBD->FechaTabela(u"dois"_s);
    QVERIFY(!second->isOpen());
    QCOMPARE(gBD->TabelasAbertas(), QVariant(u"um\r\n\r\ntrês\r\n"_s));
    QCOMPARE(gBD->NomeAlias(2), QVariant(u""_s));
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"um"_s), 3);
    QCOMPARE(failureOf([] { gBD->NumeroTotalDeRegistros(2); }), int(kFalhaObjeto));
    QCOMPARE(failureOf([] { gBD->FechaTabela(2); }), int(kFalhaObjeto));
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"dois"_s); // the slot is not given again
    QCOMPARE(gBD->TabelasAbertas(), QVariant(u"um\r\n\r\ntrês\r\ndois\r\n"_s));
}

void TstBd::closesAll()
{
    const auto connection = gBD->Source();
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"um"_s);
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"dois"_s);
    const auto set = gBD->GetRecordSet(u"um"_s);
    gBD->Fechar();
    QVERIFY(!set->isOpen());
    QVERIFY(!connection->isOpen());
    QVERIFY(!gBD->Source());
    QVERIFY(!gBD->ExisteAlias(u"um"_s));
    QCOMPARE(failureOf([] { gBD->TabelasAbertas(); }), int(kFalhaIndice));
    BoxScript boxes{Resposta::Ok};
    QCOMPARE(failureOf([] { gBD->Records_Set(u"Select * From CL_Classes"_s, u"um"_s); }), int(kErroSemConexao));
    gBD->Source(mRegistro->path());
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"um"_s);
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"um"_s), 3);
}

void TstBd::closingEndsAtTheFirstFailure()
{
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"um"_s);
    gBD->Records_Set({}, u"dois"_s); // not open, so it can't be closed
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"três"_s);
    gBD->Fechar();
    QVERIFY(gBD->Source()->isOpen());
    QCOMPARE(failureOf([] { gBD->NumeroTotalDeRegistros(u"um"_s); }), int(kFalhaObjeto));
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"três"_s), 3);
}

void TstBd::connectionStrings_data()
{
    QTest::addColumn<QString>("line"); // "" is the default
    QTest::addColumn<QString>("source"); // %1 is the register's path
    QTest::addColumn<int>("number");
    QTest::newRow("a path") << u""_s << u"%1"_s << 0;
    QTest::newRow("a whole string") << u""_s << u"Data Source=%1;PROVIDER=Microsoft.Jet.OLEDB.4.0"_s << 0;
    QTest::newRow("in any case") << u"nada="_s << u"pRoViDeR = microsoft.jet.oledb.4.0 ; data source=%1;User=x"_s << 0;
    QTest::newRow("a prefix of one's own") << u"Provider=Microsoft.Jet.OLEDB.4.0;Mode=1;Data Source="_s << u"%1"_s << 0;
    QTest::newRow("another provider") << u""_s << u"Provider=MSDASQL;Data Source=%1"_s << int(kErroArmazem);
    QTest::newRow("a prefix without provider") << u"Data Source="_s << u"%1"_s << int(kErroArmazem);
    QTest::newRow("no such file") << u""_s << u"%1.x"_s << int(kErroArmazem);
    QTest::newRow("no file at all") << u""_s << u""_s << int(kErroArmazem);
}

void TstBd::connectionStrings()
{
    QFETCH(QString, line);
    QFETCH(QString, source);
    QFETCH(int, number);
    reiniciaData();
    gBD->Linha_Conexao(line);
    QCOMPARE(gBD->Linha_Conexao(), line.isEmpty() ? u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s : line);
    const BoxScript boxes; // a failure reaches the caller, without one
    QCOMPARE(failureOf([&] { gBD->Source(source.replace("%1"_L1, mRegistro->path())); }), number);
    QCOMPARE(gBD->Source() != nullptr, number == 0);
    if (number == 0) { // the prefix served once
        QCOMPARE(gBD->Linha_Conexao(), u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s);
        gBD->Records_Set(u"Select * From CL_Classes"_s, u"RS"_s);
        QCOMPARE(gBD->NumeroTotalDeRegistros(), 3);
    } else {
        QCOMPARE(QFile::exists(mRegistro->native() + u".x"_s), false); // nothing is created
    }
}

void TstBd::sources()
{
    const Registro other;
    other.sql(u"INSERT INTO CL_Classes (CL_Nome) VALUES ('outra')"_s);
    const auto first = gBD->Source();
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"um"_s);
    gBD->SourceAtual(1);
    QCOMPARE(failureOf([] { gBD->TransacaoInicio(); }), int(kErroSemConexao));
    gBD->Source(other.path());
    QCOMPARE(gBD->Source(), first); // slot 0, whatever slot is in use
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"dois"_s);
    QCOMPARE(gBD->lista(u"dois"_s, u"CL_Nome"_s), u"outra"_s);
    gBD->ReAtualizaRecordSet(u"um"_s); // each set stays with its own
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"um"_s), 3);
    for (const qint16 slot : {qint16(2), qint16(-1), qint16(0)}) {
        gBD->SourceAtual(1);
        gBD->SourceAtual(slot);
        gBD->Records_Set(u"Select * From CL_Classes"_s, u"três"_s);
        QCOMPARE(gBD->NumeroTotalDeRegistros(), 3);
    }
}

void TstBd::fieldsWaitForAQuery()
{
    const BoxScript boxes;
    QVERIFY(!gBD->Campo(u"CL_Nome"_s, u"RS"_s).isValid());
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"RS"_s);
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s), QVariant(u"a"_s));
    gBD->Source(mRegistro->path()); // and again behind another source
    QVERIFY(!gBD->Campo(u"CL_Nome"_s, u"RS"_s).isValid());
}

void TstBd::sharesItsRecordSets()
{
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"RS"_s);
    gBD->GetRecordSet(u"rs"_s)->MoveLast();
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s), QVariant(u"c"_s));
    gBD->DefineCache(1, u"RS"_s);
    QCOMPARE(failureOf([] { gBD->DefineCache(0, u"RS"_s); }), int(kErroCriterio));
    gBD->Log(u"nada mais"_s);
}

QTEST_MAIN(TstBd)
#include "tst_bd.moc"
