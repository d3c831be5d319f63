#include "apoio.h"

#include "data/consultas.h"
#include "data/dialeto.h"
#include "support/table.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// The translator by itself, and every query of the system on real tables.
class TstDialeto final : public TesteBD
{
    Q_OBJECT
public:
    TstDialeto();

private slots:
    void translates_data();
    void translates();
    void refuses_data();
    void refuses();
    void gives_data();
    void gives();
};

static Dialeto dialeto()
{
    return {u"-1"_s, u"0"_s, u" ORDEM"_s,
        [](QStringView column) { return column.compare("Nome"_L1, Qt::CaseInsensitive) == 0; }};
}

void TstDialeto::translates_data()
{
    rows<QString, QString>({
        {"nothing to translate", "", ""},
        {"DISTINCTROW is dropped", "SELECT distinctrow A FROM B", "SELECT  A FROM B"},
        {"a date, month first", "A >= #11/24/2026#", "A >= '2026-11-24 00:00:00'"},
        {"a date with blanks", "A<# 2/29/2028 #", "A<'2028-02-29 00:00:00'"},
        {"double quotes", "A <> \"\"", "A <> ''"},
        {"quotes within quotes", "A = \"it's \"\"so\"\"\"", "A = 'it''s \"so\"'"},
        {"apostrophes stay", "A = 'it''s'", "A = 'it''s'"},
        {"nothing inside a text", "'#11/24/2026# [A] True DISTINCTROW \"'", "'#11/24/2026# [A] True DISTINCTROW \"'"},
        {"a name between brackets", "[Meu campo], [a\"b], `it's`", "\"Meu campo\", \"a\"\"b\", \"it's\""},
        {"True and False", "(A=True) or B=FALSE", "(A=-1) or B=0"},
        {"names that begin so", "Trueish, falso, t.True", "Trueish, falso, t.True"},
        {"order of a text column", "order by Nome", "order by Nome ORDEM"},
        {"of several", "ORDER  BY t.NOME DESC, Cod, [Nome];", "ORDER  BY t.NOME ORDEM DESC, Cod, \"Nome\" ORDEM;"},
        {"direction written out", "order by nome asc , Cod", "order by nome ORDEM asc , Cod"},
        {"of an expression: none", "order by Len(Nome), Nome & 'x'", "order by Len(Nome), Nome & 'x'"},
        {"behind a group", "group by Nome order by Cod", "group by Nome order by Cod"},
        {"inside parentheses", "(select Nome from T order by Nome) union select Nome from T order by Nome",
            "(select Nome from T order by Nome ORDEM) union select Nome from T order by Nome ORDEM"},
        {"before a limit", "order by Nome limit 3", "order by Nome ORDEM limit 3"},
    });
}

void TstDialeto::translates()
{
    const auto [sql, expected] = row<QString, QString>();
    QCOMPARE(translated(sql, dialeto()), expected);
}

void TstDialeto::refuses_data()
{
    texts({"'abc", "'abc''", "\"abc", "[abc", "#11/24/2026", "##", "#13/01/2026#", "#02/30/2026#", "#02/29/2027#",
        "#24/11/26#", "#2026-11-24#", "#11/24/2026 10:00#"});
}

void TstDialeto::refuses()
{
    const QString text = rowName();
    QCOMPARE(failureOf([&] { translated(text, dialeto()); }), int(kErroSql));
}

TstDialeto::TstDialeto()
    : TesteBD(
        u"INSERT INTO CL_Classes VALUES (1, 'Quinta A', 'Zé', 'abc'), (2, 'ÁGUIAS', 'Bia', ''),"
        "(3, 'abelhas', NULL, NULL), (9999, 'Genérica', 'Genérica', 'Chavema');"
        "INSERT INTO AL_Alunos VALUES (10, 'Caio'), (11, 'ana'), (12, 'Átila'), (13, 'Ana'), (14, 'Bia'), (15, NULL);"
        "INSERT INTO CLxAL (AL_Cod, CL_Cod, CLxAL_DataIngr) VALUES (10, 1, '2026-02-01 00:00:00'), (11, 1, NULL),"
        "(12, 1, '2026-02-03 07:30:00'), (13, 2, NULL), (77, 1, NULL), (14, 78, NULL);"
        "INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, AU_Cod, LG_Resp) VALUES"
        "(11, 1, '2026-11-01 00:00:00', 70, NULL, 'A'), (11, 1, '2026-11-20 09:00:00', 71, 5, 'it''s \"x\" #1#'),"
        "(11, 1, '2026-11-21 00:00:00', 72, NULL, 'meia-noite'), (11, 1, '2026-11-21 00:00:01', 73, NULL, 'fora'),"
        "(11, 1, '2026-11-10 10:00:00', 74, NULL, ''), (11, 1, '2026-11-11 10:00:00', 75, NULL, NULL),"
        "(11, 2, '2026-11-12 10:00:00', 76, NULL, 'outra classe'), (12, 1, '2026-11-13 10:00:00', 77, NULL, 'outro');"
        "CREATE TABLE PR_Projeto (PR_Cod INTEGER); CREATE TABLE PRxDI (PR_Cod INTEGER, DI_Cod INTEGER);"
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
        "INSERT INTO ROxAU VALUES (20, 30), (20, 31), (21, 30), (22, 32)"_s,
        {})
{ }

void TstDialeto::gives_data()
{
    using namespace consultas;
    const QString pupil = u"AL_Cod,AL_Nome"_s;
    const QString theClass = u"CL_Cod,CL_Nome,CL_Prof,CL_Senha"_s;
    const QString joined = u"AL_Cod,AL_Nome,CL_Cod,CL_Nome"_s;
    const QString link = u"AL_Cod,CL_Cod,CLxAL_DataIngr,CLxAL_Id"_s;
    const QStringList links{
        "10|1|01/02/26|1|", "11|1||2|", "12|1|03/02/26 07:30:00|3|", "13|2||4|", "14|78||6|", "77|1||5|"};
    const QString period = u"LG_Data,RO_Cod,AU_Cod,LG_Resp,LG_Aluno,LG_Classe"_s;
    const QString roteiro = u"DI_Cod,PR_Cod,TO_Cod,TE_Cod,RO_Cod,NI_Cod,DI_Cod,FI_Cod,SO_Cod,RO_Nome"_s;
    const QString water = u"5|1|7|8|21|2|6|3|4|água|"_s;
    const QString zebra = u"5|1|7|8|20|2|6|3|4|Zebra|"_s;
    rows<QString, QString, QStringList>({
        {"classes", todasClasses(), theClass,
            {"1|Quinta A|Zé|abc|", "2|ÁGUIAS|Bia||", "3|abelhas|||", "9999|Genérica|Genérica|Chavema|"}},
        {"pupils", todosAlunos(), pupil, {"10|Caio|", "11|ana|", "12|Átila|", "13|Ana|", "14|Bia|", "15||"}},
        {"links", todasLigacoes(), link, links},
        {"links for the register", ligacoes(), link, links},
        {"pupils and classes", alunosEClasses(), joined,
            {"10|Caio|1|Quinta A|", "11|ana|1|Quinta A|", "12|Átila|1|Quinta A|", "13|Ana|2|ÁGUIAS|"}},
        {"of one class", alunosEClasses(2), joined, {"13|Ana|2|ÁGUIAS|"}},
        {"of no class", alunosEClasses(3), joined, {}},
        {"pupils by name", alunosPorNome(), pupil, {"15||", "13|Ana|", "11|ana|", "12|Átila|", "14|Bia|", "10|Caio|"}},
        {"classes by name", classesPorNome(), theClass,
            {"3|abelhas|||", "2|ÁGUIAS|Bia||", "9999|Genérica|Genérica|Chavema|", "1|Quinta A|Zé|abc|"}},
        {"pupils of a class by name", alunosDaClasse(1), pupil, {"11|ana|", "12|Átila|", "10|Caio|"}},
        {"log, newest first", logDoAluno(11, 2), "LG_Aluno,LG_Classe,LG_Data,RO_Cod,AU_Cod,LG_Resp,LG_Id",
            {"11|2|12/11/26 10:00:00|76||outra classe|7|"}},
        {"log with answers and the name", nomeNoLog(11, 1), "LG_Data,LG_Aluno,AL_Nome,LG_Classe,RO_Cod,LG_Resp",
            {"21/11/26 00:00:01|11|ana|1|73|fora|", "21/11/26|11|ana|1|72|meia-noite|",
                "20/11/26 09:00:00|11|ana|1|71|it's \"x\" #1#|", "01/11/26|11|ana|1|70|A|"}},
        {"log of a period, both midnights in it", logDoPeriodo(u"11/01/2026"_s, u"11/21/2026"_s, 11, 1), period,
            {"21/11/26|72||meia-noite|11|1|", "20/11/26 09:00:00|71|5|it's \"x\" #1#|11|1|", "01/11/26|70||A|11|1|"}},
        {"log of a period that ends before it begins", logDoPeriodo(u"11/21/2026"_s, u"11/01/2026"_s, 11, 1), period,
            {}},
        // On the authoring side's tables.
        {"roteiros of an exercise, each once", roteirosProntos(u"JG=99"_s, u"Manutenção"_s), roteiro + ",JG_Cod",
            {zebra + "99|", water + "99|"}},
        {"of an exercise in unfinished ones only", roteirosProntos(u"=98"_s, u"BOTAO Manu"_s), roteiro + ",JG_Cod", {}},
        {"roteiros, by name", roteirosProntos(u""_s, u""_s), roteiro, {water, zebra}},
        {"of a class", roteirosProntos(u"3"_s, u"x"_s), roteiro, {zebra}},
        {"of a class without a number", roteirosProntos(u"A"_s, u""_s), roteiro, {water, zebra}},
    });
}

void TstDialeto::gives()
{
    const auto [sql, names, rows] = row<QString, QString, QStringList>();
    gBD->Records_Set(sql, u"RS"_s);
    QCOMPARE(gBD->NomeCampo(-1, u"RS"_s, u","_s), names);
    QStringList found = gBD->lista(u"RS"_s, {}, u"\n"_s, {}, u"|"_s).split(u'\n', Qt::SkipEmptyParts);
    if (!sql.contains("order by"_L1, Qt::CaseInsensitive)) // in any order
        std::ranges::sort(found);
    QCOMPARE(found, rows);
    QCOMPARE(gBD->NumeroTotalDeRegistros(), rows.size());
}

QTEST_MAIN(TstDialeto)
#include "tst_dialeto.moc"
