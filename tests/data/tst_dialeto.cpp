#include "apoio.h"

#include "data/bd.h"
#include "data/consultas.h"
#include "data/dialeto.h"
#include "data/errobd.h"
#include "platform/costuras.h"
#include "support/suporte.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// The translator by itself, and every query of the system on real tables.
class TstDialeto final : public QObject
{
    Q_OBJECT
private:
    Registro mRegistro;

private slots:
    void initTestCase();
    void init();
    void translates_data();
    void translates();
    void refuses_data();
    void refuses();
    void gives_data();
    void gives();
    void startsAnotherStatement_data();
    void startsAnotherStatement();
};

static Dialeto dialeto()
{
    return {u"-1"_s, u"0"_s, u" ORDEM"_s,
        [](QStringView column) { return column.compare("Nome"_L1, Qt::CaseInsensitive) == 0; }};
}

void TstDialeto::translates_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *sql, const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(sql) << QString::fromUtf8(expected);
    };
    row("nothing to translate", "", "");
    row("DISTINCTROW is dropped", "SELECT distinctrow A FROM B", "SELECT  A FROM B");
    row("a date, month first", "A >= #11/24/2026#", "A >= '2026-11-24 00:00:00'");
    row("a date with blanks", "A<# 2/29/2028 #", "A<'2028-02-29 00:00:00'");
    row("double quotes", "A <> \"\"", "A <> ''");
    row("quotes within quotes", "A = \"it's \"\"so\"\"\"", "A = 'it''s \"so\"'");
    row("apostrophes stay", "A = 'it''s'", "A = 'it''s'");
    row("nothing inside a text", "'#11/24/2026# [A] True DISTINCTROW \"'", "'#11/24/2026# [A] True DISTINCTROW \"'");
    row("a name between brackets", "[Meu campo], [a\"b], [it's]", "\"Meu campo\", \"a\"\"b\", \"it's\"");
    row("True and False", "(A=True) or B=FALSE", "(A=-1) or B=0");
    row("names that begin so", "Trueish, falso, t.True", "Trueish, falso, t.True");
    row("order of a text column", "order by Nome", "order by Nome ORDEM");
    row("of several", "ORDER  BY t.NOME DESC, Cod, [Nome];", "ORDER  BY t.NOME ORDEM DESC, Cod, \"Nome\" ORDEM;");
    row("direction written out", "order by nome asc , Cod", "order by nome ORDEM asc , Cod");
    row("of an expression: none", "order by Len(Nome), Nome & 'x'", "order by Len(Nome), Nome & 'x'");
    row("behind a group", "group by Nome order by Cod", "group by Nome order by Cod");
    row("inside parentheses", "(select Nome from T order by Nome) union select Nome from T order by Nome",
        "(select Nome from T order by Nome ORDEM) union select Nome from T order by Nome ORDEM");
    row("before a limit", "order by Nome limit 3", "order by Nome ORDEM limit 3");
}

void TstDialeto::translates()
{
    QFETCH(QString, sql);
    QFETCH(QString, expected);
    QCOMPARE(translated(sql, dialeto()), expected);
}

void TstDialeto::refuses_data()
{
    QTest::addColumn<QString>("sql");
    for (const char *sql : {"'abc", "'abc''", "\"abc", "[abc", "#11/24/2026", "##", "#13/01/2026#", "#02/30/2026#",
             "#02/29/2027#", "#24/11/26#", "#2026-11-24#", "#11/24/2026 10:00#"})
        QTest::newRow(sql) << QString::fromUtf8(sql);
}

void TstDialeto::refuses()
{
    QFETCH(QString, sql);
    QCOMPARE(failureOf([&] { translated(sql, dialeto()); }), int(kErroSql));
}

void TstDialeto::initTestCase()
{
    mRegistro.sql(
        u"INSERT INTO CL_Classes VALUES (1, 'Quinta A', 'Zé', 'abc'), (2, 'ÁGUIAS', 'Bia', ''),"
        "(3, 'abelhas', NULL, NULL), (9999, 'Genérica', 'Genérica', 'Chavema');"
        "INSERT INTO AL_Alunos VALUES (10, 'Caio'), (11, 'ana'), (12, 'Átila'), (13, 'Ana'), (14, 'Bia'), (15, NULL);"
        "INSERT INTO CLxAL (AL_Cod, CL_Cod, CLxAL_DataIngr) VALUES (10, 1, '2026-02-01 00:00:00'), (11, 1, NULL),"
        "(12, 1, '2026-02-03 07:30:00'), (13, 2, NULL), (77, 1, NULL), (14, 78, NULL);"
        "INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, AU_Cod, LG_Resp) VALUES"
        "(11, 1, '2026-11-01 00:00:00', 70, NULL, 'A'), (11, 1, '2026-11-20 09:00:00', 71, 5, 'it''s \"x\" #1#'),"
        "(11, 1, '2026-11-21 00:00:00', 72, NULL, 'meia-noite'), (11, 1, '2026-11-21 00:00:01', 73, NULL, 'fora'),"
        "(11, 1, '2026-11-10 10:00:00', 74, NULL, ''), (11, 1, '2026-11-11 10:00:00', 75, NULL, NULL),"
        "(11, 2, '2026-11-12 10:00:00', 76, NULL, 'outra classe'), (12, 1, '2026-11-13 10:00:00', 77, NULL, 'outro')"_s);
    mRegistro.sql(
        u"CREATE TABLE PR_Projeto (PR_Cod INTEGER); CREATE TABLE PRxDI (PR_Cod INTEGER, DI_Cod INTEGER);"
        "CREATE TABLE TO_Topicos (TO_Cod INTEGER, PR_Cod INTEGER);"
        "CREATE TABLE TE_Temas (TE_Cod INTEGER, TO_Cod INTEGER);"
        "CREATE TABLE RO_Roteiros (RO_Cod INTEGER, TE_Cod INTEGER, NI_Cod INTEGER, DI_Cod INTEGER, FI_Cod INTEGER,"
        "SO_Cod INTEGER, RO_Nome VARCHAR, RO_Pronta BOOLEAN);"
        "CREATE TABLE ROxCL (RO_Cod INTEGER, CL_Cod INTEGER); CREATE TABLE ROxAU (RO_Cod INTEGER, AU_Cod INTEGER);"
        "CREATE TABLE AU_Aulas (AU_Cod INTEGER, JG_Cod INTEGER);"
        "INSERT INTO PR_Projeto VALUES (1); INSERT INTO PRxDI VALUES (1, 5); INSERT INTO TO_Topicos VALUES (7, 1);"
        "INSERT INTO TE_Temas VALUES (8, 7);"
        "INSERT INTO RO_Roteiros VALUES (20, 8, 2, 6, 3, 4, 'Zebra', 1), (21, 8, 2, 6, 3, 4, 'água', 1),"
        "(22, 8, 2, 6, 3, 4, 'Por fazer', 0);"
        "INSERT INTO ROxCL VALUES (20, 3), (21, 4), (22, 3); INSERT INTO AU_Aulas VALUES (30, 99), (31, 99), (32, 98);"
        "INSERT INTO ROxAU VALUES (20, 30), (20, 31), (21, 30), (22, 32)"_s);
}

void TstDialeto::init()
{
    failOnWarnings();
    reiniciaCosturas();
    mRegistro.open();
}

/// The queries on the authoring side's tables.
static void catalogueRows()
{
    using namespace consultas;
    const QString catalogue = u"DI_Cod,PR_Cod,TO_Cod,TE_Cod,RO_Cod,NI_Cod,DI_Cod,FI_Cod,SO_Cod,RO_Nome"_s;
    const QString water = u"5|1|7|8|21|2|6|3|4|água|"_s;
    const QString zebra = u"5|1|7|8|20|2|6|3|4|Zebra|"_s;
    QTest::newRow("roteiros of an exercise, each once") << roteirosProntos(u"JG=99"_s,
        u"Manutenção"_s) << catalogue + u",JG_Cod"_s << QStringList{zebra + u"99|"_s, water + u"99|"_s};
    QTest::newRow("of an exercise in unfinished ones only")
        << roteirosProntos(u"=98"_s, u"BOTAO Manu"_s) << catalogue + u",JG_Cod"_s << QStringList{};
    QTest::newRow("roteiros, by name") << roteirosProntos(u""_s, u""_s) << catalogue << QStringList{water, zebra};
    QTest::newRow("of a class") << roteirosProntos(u"3"_s, u"x"_s) << catalogue << QStringList{zebra};
    QTest::newRow("of a class without a number")
        << roteirosProntos(u"A"_s, u""_s) << catalogue << QStringList{water, zebra};
}

void TstDialeto::gives_data()
{
    using namespace consultas;
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("names");
    QTest::addColumn<QStringList>("rows");

    const QString joined = u"AL_Cod,AL_Nome,CL_Cod,CL_Nome"_s;
    QTest::newRow("classes") << todasClasses() << u"CL_Cod,CL_Nome,CL_Prof,CL_Senha"_s
                             << QStringList{u"1|Quinta A|Zé|abc|"_s, u"2|ÁGUIAS|Bia||"_s, u"3|abelhas|||"_s,
                                    u"9999|Genérica|Genérica|Chavema|"_s};
    QTest::newRow("pupils") << todosAlunos() << u"AL_Cod,AL_Nome"_s
                            << QStringList{
                                   u"10|Caio|"_s, u"11|ana|"_s, u"12|Átila|"_s, u"13|Ana|"_s, u"14|Bia|"_s, u"15||"_s};
    const QStringList links{u"10|1|01/02/26|1|"_s, u"11|1||2|"_s, u"12|1|03/02/26 07:30:00|3|"_s, u"13|2||4|"_s,
        u"14|78||6|"_s, u"77|1||5|"_s};
    QTest::newRow("links") << todasLigacoes() << u"AL_Cod,CL_Cod,CLxAL_DataIngr,CLxAL_Id"_s << links;
    QTest::newRow("links for the register") << ligacoes() << u"AL_Cod,CL_Cod,CLxAL_DataIngr,CLxAL_Id"_s << links;
    QTest::newRow("pupils and classes") << alunosEClasses() << joined
                                        << QStringList{u"10|Caio|1|Quinta A|"_s, u"11|ana|1|Quinta A|"_s,
                                               u"12|Átila|1|Quinta A|"_s, u"13|Ana|2|ÁGUIAS|"_s};
    QTest::newRow("of one class") << alunosEClasses(2) << joined << QStringList{u"13|Ana|2|ÁGUIAS|"_s};
    QTest::newRow("of no class") << alunosEClasses(3) << joined << QStringList{};
    QTest::newRow("pupils by name") << alunosPorNome() << u"AL_Cod,AL_Nome"_s
                                    << QStringList{u"15||"_s, u"13|Ana|"_s, u"11|ana|"_s, u"12|Átila|"_s, u"14|Bia|"_s,
                                           u"10|Caio|"_s};
    QTest::newRow("classes by name") << classesPorNome() << u"CL_Cod,CL_Nome,CL_Prof,CL_Senha"_s
                                     << QStringList{u"3|abelhas|||"_s, u"2|ÁGUIAS|Bia||"_s,
                                            u"9999|Genérica|Genérica|Chavema|"_s, u"1|Quinta A|Zé|abc|"_s};
    QTest::newRow("pupils of a class by name")
        << alunosDaClasse(1) << u"AL_Cod,AL_Nome"_s << QStringList{u"11|ana|"_s, u"12|Átila|"_s, u"10|Caio|"_s};
    QTest::newRow("log, newest first") << logDoAluno(11, 2)
                                       << u"LG_Aluno,LG_Classe,LG_Data,RO_Cod,AU_Cod,LG_Resp,LG_Id"_s
                                       << QStringList{u"11|2|12/11/26 10:00:00|76||outra classe|7|"_s};
    QTest::newRow("log with answers and the name")
        << nomeNoLog(11, 1) << u"LG_Data,LG_Aluno,AL_Nome,LG_Classe,RO_Cod,LG_Resp"_s
        << QStringList{u"21/11/26 00:00:01|11|ana|1|73|fora|"_s, u"21/11/26|11|ana|1|72|meia-noite|"_s,
               u"20/11/26 09:00:00|11|ana|1|71|it's \"x\" #1#|"_s, u"01/11/26|11|ana|1|70|A|"_s};
    QTest::newRow("log of a period, both midnights in it")
        << logDoPeriodo(u"11/01/2026"_s, u"11/21/2026"_s, 11, 1)
        << u"LG_Data,RO_Cod,AU_Cod,LG_Resp,LG_Aluno,LG_Classe"_s
        << QStringList{u"21/11/26|72||meia-noite|11|1|"_s, u"20/11/26 09:00:00|71|5|it's \"x\" #1#|11|1|"_s,
               u"01/11/26|70||A|11|1|"_s};
    QTest::newRow("log of a period that ends before it begins")
        << logDoPeriodo(u"11/21/2026"_s, u"11/01/2026"_s, 11, 1)
        << u"LG_Data,RO_Cod,AU_Cod,LG_Resp,LG_Aluno,LG_Classe"_s << QStringList{};

    catalogueRows();
}

void TstDialeto::gives()
{
    QFETCH(QString, sql);
    QFETCH(QString, names);
    QFETCH(QStringList, rows);
    const BoxScript boxes;
    gBD->Records_Set(sql, u"RS"_s);
    QCOMPARE(gBD->NomeCampo(-1, u"RS"_s, u","_s), names);
    QStringList found = gBD->lista(u"RS"_s, {}, u"\n"_s, {}, u"|"_s).split(u'\n', Qt::SkipEmptyParts);
    if (!sql.contains("order by"_L1, Qt::CaseInsensitive)) // in any order
        std::ranges::sort(found);
    QCOMPARE(found, rows);
    QCOMPARE(gBD->NumeroTotalDeRegistros(), rows.size());
}

void TstDialeto::startsAnotherStatement_data()
{
    QTest::addColumn<QString>("sql");
    QTest::newRow("two statements") << u"Select * From CL_Classes; Delete From CL_Classes"_s;
    QTest::newRow("no query") << u"Delete From CL_Classes"_s;
    QTest::newRow("a query that writes") << u"Delete From CL_Classes Returning *"_s;
    QTest::newRow("a NUL behind the query") << u"Select * From CL_Classes"_s + QChar(0) + u"; Delete From CL_Classes"_s;
    QTest::newRow("blanks") << u"  "_s;
    QTest::newRow("a text that never ends") << u"Select 'x From CL_Classes"_s;
}

/// A query reads; whatever else stands in it changes nothing.
void TstDialeto::startsAnotherStatement()
{
    QFETCH(QString, sql);
    BoxScript boxes{Resposta::Ok};
    QCOMPARE(failureOf([&] { gBD->Records_Set(sql, u"RS"_s); }), int(kErroSql));
    QVERIFY(boxes.last().texto.startsWith(sql + u"\r\n-2147217900\t"_s));
    QCOMPARE(boxes.last().titulo, u"RS"_s);
    QCOMPARE(boxes.last().icone, Icone::Nenhum);
    gBD->Fechar();
    QCOMPARE(mRegistro.sql(u"SELECT count(*) FROM CL_Classes"_s), QStringList{u"4"_s});
}

QTEST_MAIN(TstDialeto)
#include "tst_dialeto.moc"
