#include "cenario_cadastro.h"

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The register of classes and teachers, in stories; what each leaves is read back with plain SQL.
class TstFrmClasses : public QObject
{
    Q_OBJECT
private slots:
    void browsing_data();
    void browsing() { contaDaLinha(); }
    void saving_data();
    void saving() { contaDaLinha(); }
    void deleting_data();
    void deleting() { contaDaLinha(); }
    void newClassAndOtherButtons_data();
    void newClassAndOtherButtons() { contaDaLinha(); }
    void deletingCanBeCancelled();
};

/// A story that begins with the classes' frame.
static void story(const char *name, Historia historia)
{
    historia.passos.prepend(u"cmdCadClasses; "_s);
    QTest::newRow(name) << historia;
}

void TstFrmClasses::browsing_data()
{
    QTest::addColumn<Historia>("historia");
    story("opens on the first", {.passos = "classe?Genérica, 1 / 4"});
    story("next", {.passos = "CmdProfProx; classe?Turma A, 2 / 4"});
    story("last", {.passos = "CmdProfUlt; classe?Turma C, 4 / 4"});
    story("next on the last stays", {.passos = "CmdProfUlt; CmdProfProx; classe?Turma C, 4 / 4"});
    story("previous", {.passos = "CmdProfUlt; CmdProfAnt; classe?Turma B, 3 / 4"});
    story("previous on the first stays", {.passos = "CmdProfAnt; classe?Genérica, 1 / 4"});
    story("first", {.passos = "CmdProfUlt; CmdProfPrim; classe?Genérica, 1 / 4"});
    story("teacher and password, in clear",
        {.passos = "CmdProfProx; CmdProfProx; TxtNomeProf?Beto Reis; TxtProfSenh?Caju"});
    story("the button that opened the frame closes it, and opens it on the first",
        {.passos = "CmdProfUlt; cmdCadClasses; CmdProfProx?não; cmdCadClasses; classe?Genérica, 1 / 4"});
}

static const QString kNova = u"CmdProfNovo; TxtNomeClasse=Turma D; TxtNomeProf=Davi Sá; TxtProfSenh=Uva; "_s;

void TstFrmClasses::saving_data()
{
    QTest::addColumn<Historia>("historia");
    story("a new class becomes the current one",
        {.passos = kNova + "CmdProfSalvar; classe?Turma D, 5 / 5; corrente?10000; aluno?, 0 / 0; CmbAluClasses=Turma D",
            .classes = kClasses + ", 10000|Turma D|Davi Sá|Uva"});
    story("the buttons while a new class is begun",
        {.passos = "CmdProfNovo; classe?, Novo; TxtNomeProf?; TxtProfSenh?; foco?TxtNomeClasse; CmdProfCancela?sim;"
                   " CmdProfExcluir?não; TxtNomeClasse=Turma D; CmdProfSalvar; CmdProfCancela?não; CmdProfExcluir?sim",
            .classes = kClasses + ", 10000|Turma D||"});
    story("a new, empty class saved twice stays one",
        {.passos = kNova + "CmdProfSalvar; CmdProfSalvar; corrente?10000",
            .classes = kClasses + ", 10000|Turma D|Davi Sá|Uva"});
    story("the class on display is saved, the pupil's being current",
        {.passos = "CmdAluno(3); classe?Genérica, 1 / 4; TxtProfSenh=kiwi; CmdProfSalvar",
            .classes = kA + kB + kC + "9999|Genérica|Genérica|kiwi"});
    story("with no class left a save begins one",
        {.antes = "DELETE FROM CL_Classes",
            .passos = "CmdProfExcluir; classe?, 0 / 0; CmdProfExcluir; TxtNomeClasse=Turma D; CmdProfSalvar",
            .classes = "10000|Turma D||",
            .caixas = {{.texto = "Deseja Apagar o Professor(a) Genérica ?", .botoes = Botoes::OkCancela},
                {.texto = "Deseja Apagar o Professor(a)  ?", .botoes = Botoes::OkCancela},
                relato("RsClasses - RegistroApaga")}});
    story("over the selection, the class saved is current there, with its pupils",
        {.passos = "CmdProfProx; CmdProfProx; CmdAluno(2); TxtProfSenh=kiwi; CmdProfSalvar; CmbClasse?Turma B;"
                   " corrente?2; CmbAluno=Dora; corrente?2",
            .classes = kA + "2|Turma B|Beto Reis|kiwi, " + kC + kGenerica});
    story("saved twice in a row, and at most eight characters of the password",
        {.passos = "CmdProfProx; CmdProfProx; TxtProfSenh=jabuticaba; CmdProfSalvar; CmdProfSalvar; corrente?2;"
                   " aluno?Dora, 1 / 1",
            .classes = kA + "2|Turma B|Beto Reis|jabutica, " + kC + kGenerica});
    story("a teacher of two classes lands on the first",
        {.classe = 2,
            .passos =
                "CmdProfUlt; TxtProfSenh=kiwi; CmdProfSalvar; classe?Turma A, 2 / 4; corrente?1; aluno?Ari, 1 / 3",
            .classes = kA + kB + "3|Turma C|Ana Lima|kiwi, " + kGenerica});
    story("an apostrophe in the teacher's name is saved, and its search fails",
        {.passos = "CmdProfProx; CmdProfProx; TxtNomeProf=Beto d'Ávila; CmdProfSalvar; classe?Turma B, 3 / 4;"
                   " corrente?2; aluno?Dora, 1 / 1",
            .classes = kA + "2|Turma B|Beto d'Ávila|Caju, " + kC + kGenerica,
            .caixas = {relato("RsClasses - Pesquisa")}});
    story("a new class of such a teacher is the current one",
        {.passos = "CmdProfNovo; TxtNomeClasse=Turma D; TxtNomeProf=Sant'Ana; CmdProfSalvar; classe?Turma D, 5 / 5;"
                   " corrente?10000",
            .classes = kClasses + ", 10000|Turma D|Sant'Ana|",
            .caixas = {relato("RsClasses - Pesquisa")}});
    story("an empty name is told, and the class stays pending",
        {.passos = "CmdProfNovo; TxtNomeProf=Davi Sá; CmdProfSalvar; CmdProfCancela?sim; TxtNomeClasse=Turma D;"
                   " CmdProfSalvar",
            .classes = kClasses + ", 10000|Turma D|Davi Sá|",
            .caixas = {{"Digite o nome da classe!", "Cadastro de Classes", Icone::Informacao}}});
    story("cancelled, the new class is dropped",
        {.passos = "CmdProfProx; CmdProfProx; " + kNova
                + "CmdProfCancela; classe?Turma B, 3 / 4; foco?TxtNomeClasse; CmdProfCancela?não; CmdProfExcluir?sim"});
}

void TstFrmClasses::deleting_data()
{
    QTest::addColumn<Historia>("historia");
    const Caixa comAlunos{
        .texto = "Exclua primeiro os alunos relacionados a esse professor.", .icone = Icone::Informacao};
    const auto pergunta = [](const QString &nome) {
        return Caixa{.texto = u"Deseja Apagar o Professor(a) %1 ?"_s.arg(nome), .botoes = Botoes::OkCancela};
    };
    const QString turmaB = u"CmdProfProx; CmdProfProx; "_s;
    story("pupils in the filter hold the class",
        {.classe = 2, .passos = turmaB + "CmdProfExcluir", .caixas = {comAlunos}});
    story("pupils hidden by the filter don't, and their links stay",
        {.passos = turmaB + "CmdProfExcluir", .classes = kA + kC + kGenerica, .caixas = {pergunta("Beto Reis")}});
    story("the teacher's first class goes, another on display",
        {.classe = 2,
            .passos = "CmdProfUlt; CmdProfExcluir",
            .classes = kB + kC + kGenerica,
            .caixas = {pergunta("Ana Lima")}});
    story("the pupils of the teacher's first class hold the second",
        {.passos = "CmdProfUlt; CmdProfExcluir", .caixas = {comAlunos}});
    story("the generic class can go",
        {.passos = "CmdProfExcluir", .classes = (kA + kB + kC).chopped(2), .caixas = {pergunta("Genérica")}});
    story("a name that nobody has leaves nothing to delete",
        {.passos = turmaB + "TxtNomeProf=Beto; CmdProfExcluir; classe?Genérica, 1 / 4",
            .caixas = {pergunta("Beto"), relato("RsClasses - RegistroApaga")}});
    const QString apostrofo = u"UPDATE CL_Classes SET CL_Prof='Beto d''Ávila' WHERE CL_Cod=2"_s;
    story("a name with an apostrophe fails the search: the class on display goes",
        {.antes = apostrofo,
            .passos = turmaB + "CmdProfExcluir",
            .classes = kA + kC + kGenerica,
            .caixas = {relato("RsClasses - Pesquisa"), pergunta("Beto d'Ávila")}});
    story("typed over another teacher's, it is that one who is asked about",
        {.passos = turmaB + "TxtNomeProf=d'Ávila; CmdProfExcluir",
            .classes = kA + kC + kGenerica,
            .caixas = {relato("RsClasses - Pesquisa"), pergunta("Beto Reis")}});
    story("and whose pupils hold the class",
        {.antes = apostrofo,
            .classe = 2,
            .passos = turmaB + "CmdProfExcluir",
            .classes = kA + "2|Turma B|Beto d'Ávila|Caju, " + kC + kGenerica,
            .caixas = {relato("RsClasses - Pesquisa"), comAlunos}});
    story("over the selection, pupils hold the class as they do in the register",
        {.classe = 2, .passos = turmaB + "CmdAluno(2); CmdProfExcluir; CmbAluno=Dora", .caixas = {comAlunos}});
}

// A class begun and not saved stays pending behind whatever the windows show, and the next save goes into it.
void TstFrmClasses::newClassAndOtherButtons_data()
{
    QTest::addColumn<Historia>("historia");
    const QString digitada = u"Turma D|Davi Sá|Uva"_s;
    const QString generica = u"Genérica|Genérica|Chavema"_s;
    const auto after = [](const char *name, const QString &passos, const QString &gravada, const QString &corrente,
                           const QString &ligacoes = kLigacoes) {
        story(name,
            {.classe = 2,
                .passos = kNova + passos + "; gravados?5 4; CmdProfSalvar; corrente?" + corrente,
                .ligacoes = ligacoes,
                .classes = kClasses + ", 10000|" + gravada});
    };
    after("a pupil saved", "CmdAulaGrava; classe?Turma D, Novo", digitada, "10000", kLigacoes + "*");
    after("a new pupil begun and cancelled", "CmdAulaNova; CmdAulaCancela; classe?Turma D, Novo", digitada, "10000");
    after("New again: begins anew",
        "CmdProfNovo; classe?, Novo; TxtNomeClasse=Turma D; TxtNomeProf=Davi Sá; TxtProfSenh=Uva", digitada, "10000");
    after("next: the last goes into it as well", "CmdProfProx; classe?Turma C, 4 / 5", "Turma C|Ana Lima|", "1");
    after("first: likewise", "CmdProfPrim; classe?Genérica, 1 / 5", generica, "9999");
    after("frame closed and opened", "cmdCadClasses; cmdCadClasses; classe?Genérica, 1 / 5", generica, "9999");
    after("selection and register", "CmdAluno(2); CmdAluno(3); classe?Genérica, 1 / 5", generica, "9999");
    after("window closed and opened",
        "CmdFecha; CmdAluno(3); cmdCadClasses; CmdProfCancela?sim; CmdProfExcluir?não; classe?Genérica, 1 / 5",
        generica, "9999");
    // One mark serves both registers: the fourth pupil's, by name, leads to the fourth class.
    story("cancelled after a new pupil was begun",
        {.classe = 2,
            .passos = "CmdProfProx; CmdProfNovo; CmdAulaNova; CmdProfCancela; classe?Turma C, 4 / 4; TxtAluno=Eva;"
                      " CmdAulaGrava",
            .alunos = kAlunos + ", 10000|Eva",
            .ligacoes = kLigacoes + ", 10000|2*"});
}

void TstFrmClasses::deletingCanBeCancelled()
{
    CenarioCadastro c;
    c.abreCadastro(1);
    BoxScript boxes{Resposta::Cancela};
    c.faz(u"cmdCadClasses; CmdProfProx; CmdProfProx; CmdProfExcluir; classe?Turma B, 3 / 4"_s);
    QCOMPARE(classes(c), kClasses);
}

QTEST_MAIN(TstFrmClasses)
#include "tst_frmclasses.moc"
