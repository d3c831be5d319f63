#include "cenario_cadastro.h"

#include "platform/costuras.h"

#include <sqlite3.h>

#include <memory>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The register of pupils, in a teacher's stories; what each leaves is read back with plain SQL.
class TstFrmCadAluno : public QObject
{
    Q_OBJECT
private slots:
    void browsing_data();
    void browsing() { contaDaLinha(); }
    void saving_data();
    void saving() { contaDaLinha(); }
    void deleting_data();
    void deleting() { contaDaLinha(); }
    void newPupilAndOtherButtons_data();
    void newPupilAndOtherButtons() { contaDaLinha(); }
    void deletingAsksFirst();
    void childReportsWhileAPupilIsPending();
    void childReportsInsideADelete();
    void lockedRegisterIsToldAndTheWindowGoesOn();
};

static void story(const char *name, const Historia &historia)
{
    QTest::newRow(name) << historia;
}

void TstFrmCadAluno::browsing_data()
{
    QTest::addColumn<Historia>("historia");
    story("opens on the first", {.passos = "aluno?Ari, 1 / 3"});
    story("next", {.passos = "CmdAulaFrente; aluno?Bia, 2 / 3"});
    story("next on the last stays", {.passos = "CmdAulaUltimo; CmdAulaFrente; aluno?Caio, 3 / 3"});
    story("previous", {.passos = "CmdAulaUltimo; CmdAulaVolta; aluno?Bia, 2 / 3"});
    story("previous on the first stays", {.passos = "CmdAulaVolta; aluno?Ari, 1 / 3"});
    story("first", {.passos = "CmdAulaUltimo; CmdAulaInicio; aluno?Ari, 1 / 3"});
    story("a class of one", {.classe = 2, .passos = "CmdAulaFrente; aluno?Dora, 1 / 1"});
    story("an empty class", {.classe = 3, .passos = "CmdAulaFrente; CmdAulaVolta; aluno?, 0 / 0"});
    story("no class at all shows all", {.classe = 0, .passos = "CmdAulaUltimo; aluno?Genérico, 5 / 5"});
    story("the generic class shows all", {.classe = 9999, .passos = "CmdAulaUltimo; aluno?Genérico, 5 / 5"});
    story("a link without a pupil shows no name",
        {.antes = "DELETE FROM AL_Alunos WHERE AL_Cod=2",
            .passos = "CmdAulaFrente; aluno?, 2 / 3; CmbAluClasses?Turma A",
            .alunos = "1|Ari, 3|Caio, 4|Dora"});
}

/// Two classes of one name, which only their codes tell apart.
static const QString kMesmoNome = u"UPDATE CL_Classes SET CL_Nome='Turma' WHERE CL_Cod < 3"_s;
static const QString kMesmoNomeGravado = u"1|Turma|Ana Lima|amora, 2|Turma|Beto Reis|Caju, "_s + kC + kGenerica;

void TstFrmCadAluno::saving_data()
{
    QTest::addColumn<Historia>("historia");
    story("a new pupil goes to the class shown, under a code never used, and the first is shown",
        {.classe = 2,
            .passos = "CmdAulaNova; TxtAluno=Eva; CmdAulaGrava; aluno?Dora, 1 / 2; CmdAulaFrente; aluno?Eva, 2 / 2",
            .alunos = kAlunos + ", 10000|Eva",
            .ligacoes = kLigacoes + ", 10000|2*"});
    story("the buttons while a new pupil is begun",
        {.passos = "CmdAulaNova; aluno?, Novo; foco?TxtAluno; CmdAulaCancela?sim; CmdAulaApaga?não; TxtAluno=Eva;"
                   " CmdAulaGrava; CmdAulaCancela?não; CmdAulaApaga?sim",
            .alunos = kAlunos + ", 10000|Eva",
            .ligacoes = kLigacoes + ", 10000|1*"});
    story("New empties the selection's class box, not its own",
        {.passos = "CmdAluno(2); CmbClasse=Turma B; CmdAluno(3); CmdAulaNova; CmbClasse?; CmbAluClasses?Turma B;"
                   " TxtAluno=Eva; CmdAulaGrava",
            .alunos = kAlunos + ", 10000|Eva",
            .ligacoes = kLigacoes + ", 10000|2*"});
    story("apostrophes are taken out",
        {.classe = 2,
            .passos = "CmdAulaNova; TxtAluno=O'Brien d'Ávila; CmdAulaGrava; CmdAulaUltimo; aluno?OBrien dÁvila, 2 / 2",
            .alunos = kAlunos + ", 10000|OBrien dÁvila",
            .ligacoes = kLigacoes + ", 10000|2*"});
    story("a new pupil without a class has no link",
        {.passos = "CmdAulaNova; TxtAluno=Eva; CmbAluClasses=; CmdAulaGrava; CmdAulaUltimo; aluno?Caio, 3 / 3",
            .alunos = kAlunos + ", 10000|Eva"});
    story("an empty name is told, and the pupil stays pending",
        {.passos = "CmdAulaNova; CmdAulaGrava; CmdAulaCancela?sim", .caixas = {{.texto = "Digite o nome do aluno"}}});
    story("the date of entry is renewed, of the one pupil",
        {.passos = "CmdAulaFrente; TxtAluno=Bianca; CmdAulaGrava",
            .alunos = "1|Ari, 2|Bianca, 3|Caio, 4|Dora",
            .ligacoes = "1|1, 2|1*, 3|1, 4|2"});
    story("a pupil who moves to another class leaves this one's set",
        {.passos = "CmdAulaFrente; CmbAluClasses=Turma B; CmdAulaGrava; aluno?Ari, 1 / 2",
            .ligacoes = "1|1, 2|2*, 3|1, 4|2"});
    story("an emptied class box takes the pupil out",
        {.passos = "CmdAulaUltimo; CmbAluClasses=; CmdAulaGrava", .ligacoes = "1|1, 2|1, 4|2"});
    story("of two pupils of one name the first gets the class, a second row",
        {.passos = "CmdAulaNova; TxtAluno=Dora; CmdAulaGrava",
            .alunos = kAlunos + ", 10000|Dora",
            .ligacoes = kLigacoes + ", 4|1*"});
    story("classes of one name are told apart",
        {.antes = kMesmoNome,
            .classe = 9999,
            .passos = "CmdAulaFrente; CmdAulaFrente; CmdAulaFrente; aluno?Dora, 4 / 5; CmdAulaGrava",
            .ligacoes = "1|1, 2|1, 3|1, 4|2*",
            .classes = kMesmoNomeGravado});
    story("classes of one name, the focus passing through their box",
        {.antes = kMesmoNome,
            .classe = 9999,
            .passos = "CmdAulaFrente; CmdAulaFrente; CmdAulaFrente; CmbAluClasses:Tab; CmdAulaGrava",
            .ligacoes = "1|1, 2|1, 3|1, 4|2*",
            .classes = kMesmoNomeGravado});
    story("arrows go on from the class shown",
        {.classe = 9999,
            .passos = "CmdAulaFrente; CmdAulaInicio; CmbAluClasses:Down; CmbAluClasses?Turma B; CmdAulaGrava",
            .ligacoes = "1|2*, 2|1, 3|1, 4|2"});
    story("cancelled, the new pupil is dropped",
        {.passos = "CmdAulaFrente; CmdAulaNova; TxtAluno=Eva; CmdAulaCancela; aluno?Bia, 2 / 3; foco?TxtAluno;"
                   " CmdAulaCancela?não; CmdAulaApaga?sim; TxtAluno=Bianca; CmdAulaGrava",
            .alunos = "1|Ari, 2|Bianca, 3|Caio, 4|Dora",
            .ligacoes = "1|1, 2|1*, 3|1, 4|2"});
    story("in an empty class a save begins a new pupil",
        {.classe = 3, .passos = "TxtAluno=Zeca; CmdAulaGrava; aluno?, 0 / 0", .alunos = kAlunos + ", 10000|Zeca"});
    story("with nobody on display, in a class with pupils, likewise",
        {.passos = "CmdAulaNova; TxtAluno=Eva; CmbAluClasses=; CmdAulaGrava; aluno?, 0 / 3; TxtAluno=Zeca;"
                   " CmbAluClasses=Turma A; CmdAulaGrava",
            .alunos = kAlunos + ", 10000|Eva, 10001|Zeca",
            .ligacoes = kLigacoes + ", 10001|1*"});
    story("a link without a pupil begins a new one",
        {.antes = "DELETE FROM AL_Alunos WHERE AL_Cod=2",
            .passos = "CmdAulaFrente; aluno?, 2 / 3; TxtAluno=Zeca; CmdAulaGrava",
            .alunos = "1|Ari, 3|Caio, 4|Dora, 10000|Zeca",
            .ligacoes = kLigacoes + ", 10000|1*"});
    story("of a pupil's two rows the one on display is changed",
        {.antes = "INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (1, 3)",
            .classe = 9999,
            .passos = "CmdAulaUltimo; CmdAulaVolta; aluno?Ari, 5 / 6; CmbAluClasses?Turma C; CmdAulaGrava",
            .ligacoes = kLigacoes + ", 1|3*"});
}

void TstFrmCadAluno::deleting_data()
{
    QTest::addColumn<Historia>("historia");
    const std::vector<Caixa> pergunta{{.texto = "Deseja Apagar o Aluno ? ", .botoes = Botoes::SimNao}};
    story("links in other classes stay",
        {.antes = "INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (2, 2)",
            .passos = "CmdAulaFrente; CmdAulaApaga",
            .alunos = "1|Ari, 3|Caio, 4|Dora",
            .ligacoes = "1|1, 3|1, 4|2, 2|2",
            .caixas = pergunta});
    story("the row on display goes, and the first pupil of its name, whose own row stays",
        {.antes = "UPDATE AL_Alunos SET AL_Nome='Ari' WHERE AL_Cod=3",
            .passos = "CmdAulaUltimo; aluno?Ari, 3 / 3; CmdAulaApaga; aluno?, 1 / 2",
            .alunos = "2|Bia, 3|Ari, 4|Dora",
            .ligacoes = "1|1, 2|1, 4|2",
            .caixas = pergunta});
    story("with nobody on display nobody goes by the name in the box",
        {.classe = 3,
            .passos = "TxtAluno=Ari; CmdAulaApaga",
            .caixas = {pergunta.front(), relato("RSCLxAL - RegistroApaga")}});
    story("a guard that looked at another row leaves the one on display",
        {.classe = 9999,
            .passos = "CmdAulaUltimo; CmdAulaVolta; aluno?Dora, 4 / 5; cmdCadClasses; CmdProfProx; CmdProfExcluir;"
                      " CmdAulaApaga",
            .alunos = "1|Ari, 2|Bia, 3|Caio",
            .ligacoes = "1|1, 2|1, 3|1",
            .caixas = {
                {.texto = "Exclua primeiro os alunos relacionados a esse professor.", .icone = Icone::Informacao},
                pergunta.front()}});
    story("the generic pupil can go",
        {.classe = 9999, .passos = "CmdAulaUltimo; CmdAulaApaga; aluno?Ari, 1 / 4", .caixas = pergunta});
}

// A pupil begun and not saved stays pending behind whatever the windows show, and the next save goes into it.
void TstFrmCadAluno::newPupilAndOtherButtons_data()
{
    QTest::addColumn<Historia>("historia");
    const auto after = [](const char *name, const QString &passos) {
        const bool anotherOnDisplay =
            passos.endsWith(u"Dora, 1 / 1"_s); // goes into the pending record, without a class
        story(name,
            {.classe = 2,
                .passos = u"CmdAulaNova; TxtAluno=Eva; "_s + passos + u"; gravados?5 4; CmdAulaGrava"_s,
                .alunos = kAlunos + (anotherOnDisplay ? ", 10000|Dora" : ", 10000|Eva"),
                .ligacoes = anotherOnDisplay ? kLigacoes + "*" : kLigacoes + ", 10000|2*"});
    };
    after("performance", "CmdAluno(4); aluno?Eva, Novo");
    after("classes browsed: the class shown stays", "cmdCadClasses; CmdProfUlt; aluno?Eva, Novo");
    after("a new class begun and cancelled", "cmdCadClasses; CmdProfNovo; CmdProfCancela; aluno?Eva, Novo");
    after("New again: begins anew", "CmdAulaNova; aluno?, Novo; TxtAluno=Eva");
    after("the register again", "CmdAluno(3); CmdAulaCancela?sim; CmdAulaApaga?não; aluno?Dora, 1 / 1");
    after("selection and register", "CmdAluno(2); CmdAluno(3); aluno?Dora, 1 / 1");
    after("window closed and opened", "CmdFecha; CmdAluno(3); CmdAulaCancela?sim; CmdAulaApaga?não; aluno?Dora, 1 / 1");
    after("the class saved", "cmdCadClasses; CmdProfProx; CmdProfProx; CmdProfSalvar; aluno?Dora, 1 / 1");
    story("browsing",
        {.passos = "CmdAulaNova; TxtAluno=Eva; CmdAulaFrente; aluno?Bia, 2 / 3; CmdAulaCancela?sim; CmdAulaGrava",
            .alunos = kAlunos + ", 10000|Bia",
            .ligacoes = "1|1, 2|1*, 3|1, 4|2"});
}

void TstFrmCadAluno::deletingAsksFirst()
{
    CenarioCadastro c(linhasDeSempre()
        + u"; INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, LG_Resp) "
          "VALUES (1, 1, '2026-01-01 10:00:00', 12, 'x')"_s);
    c.abreCadastro(1);
    BoxScript boxes{Resposta::Nao, Resposta::Sim};
    c.aperta(u"CmdAulaApaga"_s);
    QCOMPARE(alunos(c), kAlunos);
    QCOMPARE(ligacoes(c), kLigacoes);
    QTest::keyClick(&c.botao(u"CmdAulaApaga"_s), Qt::Key_Return);
    QCOMPARE(alunos(c), u"2|Bia, 3|Caio, 4|Dora"_s);
    QCOMPARE(ligacoes(c), u"2|1, 3|1, 4|2"_s);
    QCOMPARE(c.mostra(u"aluno"_s), u"Bia, 1 / 2"_s);
    QCOMPARE(aulas(c), u"1|1|12|x"_s); // the log stays
}

void TstFrmCadAluno::childReportsWhileAPupilIsPending()
{
    CenarioCadastro c;
    gAluno = 3;
    c.abreCadastro(1);
    c.faz(u"CmdAulaNova; TxtAluno=Eva"_s);
    reporta(u"A"_s);
    QCOMPARE(aulas(c), u"3|1|12|<disc>Contar<rot>A:"_s);
    c.aperta(u"CmdAulaGrava"_s);
    QVERIFY(alunos(c).endsWith(u", 10000|Eva"_s));
    QVERIFY(ligacoes(c).endsWith(u", 10000|1"_s));
}

// In an empty class there is no row to delete; the box that tells so stands inside the transaction.
void TstFrmCadAluno::childReportsInsideADelete()
{
    CenarioCadastro c;
    gAluno = 3;
    c.abreCadastro(3);
    QStringList titulos;
    costuras().box = [&](const Caixa &caixa) {
        titulos << caixa.titulo;
        reporta(u"E"_s);
        return Resposta::Sim;
    };
    c.aperta(u"CmdAulaApaga"_s);
    QCOMPARE(titulos.value(1), u"RSCLxAL - RegistroApaga"_s);
    QCOMPARE(aulas(c), QStringList(titulos.size(), u"3|3|12|<disc>Contar<rot>E:"_s).join(u", "_s));
    QCOMPARE(alunos(c), kAlunos);
}

void TstFrmCadAluno::lockedRegisterIsToldAndTheWindowGoesOn()
{
    CenarioCadastro c;
    c.abreCadastro(1);
    sqlite3 *outro = nullptr;
    QCOMPARE(sqlite3_open(c.native().toUtf8().constData(), &outro), SQLITE_OK);
    const std::unique_ptr<sqlite3, int (*)(sqlite3 *)> fecha(outro, sqlite3_close);
    QCOMPARE(sqlite3_exec(outro, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    c.confirmaCaixas();
    c.faz(u"TxtAluno=Ariel; CmdAulaGrava"_s);
    QCOMPARE(c.caixas.at(0).titulo, u"rsAlunos - Registro Atualiza"_s);
    QCOMPARE(sqlite3_exec(outro, "ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK);
    QCOMPARE(alunos(c), kAlunos);
    c.faz(u"aluno?Ari, 1 / 3; TxtAluno=Ariel; CmdAulaGrava"_s);
    QVERIFY(alunos(c).startsWith(u"1|Ariel, "_s));
}

QTEST_MAIN(TstFrmCadAluno)
#include "tst_frmcadaluno.moc"
