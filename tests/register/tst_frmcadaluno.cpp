#include "cenario_cadastro.h"

#include "data/bd.h"
#include "lessons/andamento.h"
#include "lessons/gancho.h"
#include "lessons/mensagens.h"
#include "platform/costuras.h"
#include "platform/janela.h"
#include "platform/protocolo.h"
#include "startup/estado.h"
#include "support/suporte.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

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
    void browsesTheClass_data();
    void browsesTheClass();
    void newPupilGoesToTheClassShown_data();
    void newPupilGoesToTheClassShown();
    void newPupilWithoutAClassHasNoLink();
    void emptyNameIsTold();
    void savingRenewsTheDateOfEntry();
    void pupilMovesToAnotherClass();
    void sameNamedClassesAreToldApart_data();
    void sameNamedClassesAreToldApart();
    void arrowsGoOnFromTheClassShown();
    void emptiedClassBoxTakesThePupilOut();
    void pupilOfAnotherClassGetsASecondRow();
    void cancelDropsTheNewPupil();
    void browsingWhileANewPupilIsPendingKeepsIt();
    void savingInAnEmptyClassRenamesTheFirstPupil();
    void deletingAsksFirst();
    void deletingWhileFilteredKeepsOtherLinks();
    void deletingGoesByName();
    void genericPupilCanGo();
    void linkWithoutAPupilShowsNoName();
    void childReportsWhileAPupilIsPending();
    void childReportsInsideADelete();
    void lockedRegisterIsToldAndTheWindowGoesOn();
};

static QString entrada(const CenarioCadastro &c, int aluno, int classe)
{
    return c.sql(u"SELECT CLxAL_DataIngr FROM CLxAL WHERE AL_Cod=%1 AND CL_Cod=%2"_s.arg(aluno).arg(classe)).join(u';');
}

static QString mostrado(CenarioCadastro &c)
{
    return c.campo(u"TxtAluno"_s).text() + u", "_s + c.campo(u"TxtAulaInf"_s).text();
}

void TstFrmCadAluno::browsesTheClass_data()
{
    QTest::addColumn<int>("classe");
    QTest::addColumn<QStringList>("botoes");
    QTest::addColumn<QString>("aluno");
    QTest::newRow("opens on the first") << 1 << QStringList{} << u"Ari, 1 / 3"_s;
    QTest::newRow("next") << 1 << QStringList{u"CmdAulaFrente"_s} << u"Bia, 2 / 3"_s;
    QTest::newRow("next on the last stays")
        << 1 << QStringList{u"CmdAulaUltimo"_s, u"CmdAulaFrente"_s} << u"Caio, 3 / 3"_s;
    QTest::newRow("previous") << 1 << QStringList{u"CmdAulaUltimo"_s, u"CmdAulaVolta"_s} << u"Bia, 2 / 3"_s;
    QTest::newRow("previous on the first stays") << 1 << QStringList{u"CmdAulaVolta"_s} << u"Ari, 1 / 3"_s;
    QTest::newRow("first") << 1 << QStringList{u"CmdAulaUltimo"_s, u"CmdAulaInicio"_s} << u"Ari, 1 / 3"_s;
    QTest::newRow("a class of one") << 2 << QStringList{u"CmdAulaFrente"_s} << u"Dora, 1 / 1"_s;
    QTest::newRow("an empty class") << 3 << QStringList{u"CmdAulaFrente"_s, u"CmdAulaVolta"_s} << u", 0 / 0"_s;
    QTest::newRow("no class at all shows all") << 0 << QStringList{u"CmdAulaUltimo"_s} << u"Genérico, 5 / 5"_s;
    QTest::newRow("the generic class shows all") << 9999 << QStringList{u"CmdAulaUltimo"_s} << u"Genérico, 5 / 5"_s;
}

void TstFrmCadAluno::browsesTheClass()
{
    QFETCH(int, classe);
    QFETCH(QStringList, botoes);
    QFETCH(QString, aluno);
    CenarioCadastro c;
    c.abreCadastro(classe);
    for (const QString &botao : botoes)
        c.aperta(botao);
    QCOMPARE(mostrado(c), aluno);
}

void TstFrmCadAluno::newPupilGoesToTheClassShown_data()
{
    QTest::addColumn<bool>("depoisDaSelecao");
    QTest::addColumn<QString>("digitado");
    QTest::addColumn<QString>("nome");
    QTest::newRow("at once") << false << u"Eva"_s << u"Eva"_s;
    QTest::newRow("with a class chosen in the selection's frame") << true << u"Eva"_s << u"Eva"_s;
    QTest::newRow("apostrophes are taken out") << false << u"O'Brien d'Ávila"_s << u"OBrien dÁvila"_s;
}

void TstFrmCadAluno::newPupilGoesToTheClassShown()
{
    QFETCH(bool, depoisDaSelecao);
    QFETCH(QString, digitado);
    QFETCH(QString, nome);
    CenarioCadastro c;
    costuras().now = [] { return QDateTime(QDate(2026, 3, 4), QTime(9, 5, 6)); };
    if (depoisDaSelecao) {
        c.aperta(u"CmdAluno(2)"_s);
        c.escolhe(u"CmbClasse"_s, u"Turma B"_s);
    }
    c.abreCadastro(2);
    c.aperta(u"CmdAulaNova"_s);
    QCOMPARE(mostrado(c), u", Novo"_s);
    QCOMPARE(c.alunos().focusWidget(), &c.campo(u"TxtAluno"_s));
    QVERIFY(c.botao(u"CmdAulaCancela"_s).isVisible() && !c.botao(u"CmdAulaApaga"_s).isEnabled());
    QCOMPARE(c.combo(u"CmbClasse"_s).currentText(), QString());
    QCOMPARE(c.combo(u"CmbAluClasses"_s).currentText(), u"Turma B"_s);
    c.digita(u"TxtAluno"_s, digitado);
    c.aperta(u"CmdAulaGrava"_s);
    QVERIFY(!c.botao(u"CmdAulaCancela"_s).isVisible() && c.botao(u"CmdAulaApaga"_s).isEnabled());
    QCOMPARE(alunos(c).last(), u"10000|"_s + nome); // codes are not used again
    QCOMPARE(ligacoes(c).last(), u"10000|2"_s);
    QCOMPARE(entrada(c, 10000, 2), u"2026-03-04 09:05:06"_s);
    QCOMPARE(mostrado(c), u"Dora, 1 / 2"_s); // back on the first
    c.aperta(u"CmdAulaFrente"_s);
    QCOMPARE(mostrado(c), nome + u", 2 / 2"_s);
}

void TstFrmCadAluno::newPupilWithoutAClassHasNoLink()
{
    CenarioCadastro c;
    c.abreCadastro(1);
    const QStringList antes = ligacoes(c);
    c.aperta(u"CmdAulaNova"_s);
    c.digita(u"TxtAluno"_s, u"Eva"_s);
    c.combo(u"CmbAluClasses"_s).lineEdit()->selectAll();
    QTest::keyClick(c.combo(u"CmbAluClasses"_s).lineEdit(), Qt::Key_Delete);
    c.aperta(u"CmdAulaGrava"_s);
    QCOMPARE(alunos(c).last(), u"10000|Eva"_s);
    QCOMPARE(ligacoes(c), antes);
    c.aperta(u"CmdAulaUltimo"_s);
    QCOMPARE(mostrado(c), u"Caio, 3 / 3"_s);
}

void TstFrmCadAluno::emptyNameIsTold()
{
    CenarioCadastro c;
    c.abreCadastro(1);
    c.aperta(u"CmdAulaNova"_s);
    BoxScript boxes{Resposta::Ok};
    c.aperta(u"CmdAulaGrava"_s);
    QCOMPARE(boxes.last(), (Caixa{.texto = u"Digite o nome do aluno"_s}));
    QVERIFY(c.botao(u"CmdAulaCancela"_s).isVisible()); // still pending
    QCOMPARE(alunos(c).size(), 4);
}

void TstFrmCadAluno::savingRenewsTheDateOfEntry()
{
    CenarioCadastro c;
    costuras().now = [] { return QDateTime(QDate(2026, 3, 4), QTime(0, 0)); };
    c.abreCadastro(1);
    c.aperta(u"CmdAulaFrente"_s);
    c.digita(u"TxtAluno"_s, u"Bianca"_s);
    c.aperta(u"CmdAulaGrava"_s);
    QCOMPARE(alunos(c).at(1), u"2|Bianca"_s);
    QCOMPARE(ligacoes(c), (QStringList{u"1|1"_s, u"2|1"_s, u"3|1"_s, u"4|2"_s}));
    QCOMPARE(entrada(c, 2, 1), u"2026-03-04 00:00:00"_s);
    QCOMPARE(entrada(c, 3, 1), u"2020-02-03 08:00:00"_s);
}

void TstFrmCadAluno::pupilMovesToAnotherClass()
{
    CenarioCadastro c;
    c.abreCadastro(1);
    c.aperta(u"CmdAulaFrente"_s);
    c.escolhe(u"CmbAluClasses"_s, u"Turma B"_s);
    c.aperta(u"CmdAulaGrava"_s);
    QCOMPARE(ligacoes(c), (QStringList{u"1|1"_s, u"2|2"_s, u"3|1"_s, u"4|2"_s}));
    QCOMPARE(mostrado(c), u"Ari, 1 / 2"_s); // no longer among this class's
    QCOMPARE(alunos(c).at(1), u"2|Bia"_s);
}

void TstFrmCadAluno::sameNamedClassesAreToldApart_data()
{
    QTest::addColumn<bool>("passando");
    QTest::newRow("at once") << false;
    QTest::newRow("the focus passing through the class box") << true;
}

void TstFrmCadAluno::sameNamedClassesAreToldApart()
{
    QFETCH(bool, passando);
    CenarioCadastro c(linhasDeSempre() + u"; UPDATE CL_Classes SET CL_Nome='Turma' WHERE CL_Cod < 3"_s);
    c.abreCadastro(9999);
    for (int i = 0; i < 3; ++i)
        c.aperta(u"CmdAulaFrente"_s);
    QCOMPARE(mostrado(c), u"Dora, 4 / 5"_s);
    if (passando)
        passaPor(c.combo(u"CmbAluClasses"_s));
    c.aperta(u"CmdAulaGrava"_s);
    QCOMPARE(ligacoes(c), (QStringList{u"1|1"_s, u"2|1"_s, u"3|1"_s, u"4|2"_s}));
}

void TstFrmCadAluno::arrowsGoOnFromTheClassShown()
{
    CenarioCadastro c;
    c.abreCadastro(9999);
    c.aperta(u"CmdAulaFrente"_s); // shown by code, pupil after pupil
    c.aperta(u"CmdAulaInicio"_s);
    QCOMPARE(mostrado(c), u"Ari, 1 / 5"_s);
    QTest::keyClick(&c.combo(u"CmbAluClasses"_s), Qt::Key_Down);
    QCOMPARE(c.combo(u"CmbAluClasses"_s).currentText(), u"Turma B"_s);
    c.aperta(u"CmdAulaGrava"_s);
    QCOMPARE(ligacoes(c), (QStringList{u"1|2"_s, u"2|1"_s, u"3|1"_s, u"4|2"_s}));
}

void TstFrmCadAluno::emptiedClassBoxTakesThePupilOut()
{
    CenarioCadastro c;
    c.abreCadastro(1);
    c.aperta(u"CmdAulaUltimo"_s);
    c.combo(u"CmbAluClasses"_s).lineEdit()->selectAll();
    QTest::keyClick(c.combo(u"CmbAluClasses"_s).lineEdit(), Qt::Key_Delete);
    c.aperta(u"CmdAulaGrava"_s);
    QCOMPARE(ligacoes(c), (QStringList{u"1|1"_s, u"2|1"_s, u"4|2"_s}));
    QCOMPARE(alunos(c).at(2), u"3|Caio"_s);
}

void TstFrmCadAluno::pupilOfAnotherClassGetsASecondRow()
{
    CenarioCadastro c;
    c.abreCadastro(1);
    c.aperta(u"CmdAulaNova"_s);
    c.digita(u"TxtAluno"_s, u"Dora"_s); // the first of that name is in the other class
    c.aperta(u"CmdAulaGrava"_s);
    QCOMPARE(ligacoes(c), (QStringList{u"1|1"_s, u"2|1"_s, u"3|1"_s, u"4|2"_s, u"4|1"_s}));
    QCOMPARE(alunos(c).last(), u"10000|Dora"_s); // and the new one has no class
}

void TstFrmCadAluno::cancelDropsTheNewPupil()
{
    CenarioCadastro c;
    c.abreCadastro(1);
    c.aperta(u"CmdAulaFrente"_s);
    c.aperta(u"CmdAulaNova"_s);
    c.digita(u"TxtAluno"_s, u"Eva"_s);
    c.aperta(u"CmdAulaCancela"_s);
    QCOMPARE(mostrado(c), u"Bia, 2 / 3"_s);
    QVERIFY(!c.botao(u"CmdAulaCancela"_s).isVisible() && c.botao(u"CmdAulaApaga"_s).isEnabled());
    c.digita(u"TxtAluno"_s, u"Bianca"_s);
    c.aperta(u"CmdAulaGrava"_s);
    QCOMPARE(alunos(c), (QStringList{u"1|Ari"_s, u"2|Bianca"_s, u"3|Caio"_s, u"4|Dora"_s}));
}

// The name on display goes into the pending record, and the membership to the first pupil of that name.
void TstFrmCadAluno::browsingWhileANewPupilIsPendingKeepsIt()
{
    CenarioCadastro c;
    costuras().now = [] { return QDateTime(QDate(2026, 3, 4), QTime(9, 5, 6)); };
    c.abreCadastro(1);
    c.aperta(u"CmdAulaNova"_s);
    c.digita(u"TxtAluno"_s, u"Eva"_s);
    c.aperta(u"CmdAulaFrente"_s);
    QCOMPARE(mostrado(c), u"Bia, 2 / 3"_s);
    QVERIFY(c.botao(u"CmdAulaCancela"_s).isVisible());
    c.aperta(u"CmdAulaGrava"_s);
    QCOMPARE(alunos(c), (QStringList{u"1|Ari"_s, u"2|Bia"_s, u"3|Caio"_s, u"4|Dora"_s, u"10000|Bia"_s}));
    QCOMPARE(ligacoes(c), (QStringList{u"1|1"_s, u"2|1"_s, u"3|1"_s, u"4|2"_s}));
    QCOMPARE(entrada(c, 2, 1), u"2026-03-04 09:05:06"_s);
}

void TstFrmCadAluno::savingInAnEmptyClassRenamesTheFirstPupil()
{
    CenarioCadastro c;
    c.abreCadastro(3);
    QCOMPARE(mostrado(c), u", 0 / 0"_s);
    c.digita(u"TxtAluno"_s, u"Zeca"_s);
    c.aperta(u"CmdAulaGrava"_s); // without New
    QCOMPARE(alunos(c), (QStringList{u"1|Zeca"_s, u"2|Bia"_s, u"3|Caio"_s, u"4|Dora"_s}));
    QCOMPARE(ligacoes(c), (QStringList{u"1|1"_s, u"2|1"_s, u"3|1"_s, u"4|2"_s}));
}

void TstFrmCadAluno::deletingAsksFirst()
{
    CenarioCadastro c;
    c.abreCadastro(1);
    BoxScript boxes{Resposta::Nao, Resposta::Sim};
    c.aperta(u"CmdAulaApaga"_s);
    QCOMPARE(boxes.last(), (Caixa{.texto = u"Deseja Apagar o Aluno ? "_s, .botoes = Botoes::SimNao}));
    QCOMPARE(alunos(c).size(), 4);
    QCOMPARE(ligacoes(c).size(), 4);
    QTest::keyClick(&c.botao(u"CmdAulaApaga"_s), Qt::Key_Return);
    QCOMPARE(alunos(c), (QStringList{u"2|Bia"_s, u"3|Caio"_s, u"4|Dora"_s}));
    QCOMPARE(ligacoes(c), (QStringList{u"2|1"_s, u"3|1"_s, u"4|2"_s}));
    QCOMPARE(mostrado(c), u"Bia, 1 / 2"_s);
}

void TstFrmCadAluno::deletingWhileFilteredKeepsOtherLinks()
{
    CenarioCadastro c(linhasDeSempre()
        + u"; INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (2, 2);"
          "INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, LG_Resp) "
          "VALUES (2, 1, '2026-01-01 10:00:00', 12, 'x')"_s);
    c.abreCadastro(1);
    c.aperta(u"CmdAulaFrente"_s);
    BoxScript boxes{Resposta::Sim};
    c.aperta(u"CmdAulaApaga"_s);
    QCOMPARE(alunos(c), (QStringList{u"1|Ari"_s, u"3|Caio"_s, u"4|Dora"_s}));
    QCOMPARE(ligacoes(c), (QStringList{u"1|1"_s, u"3|1"_s, u"4|2"_s, u"2|2"_s}));
    QCOMPARE(c.sql(u"SELECT LG_Aluno FROM LG_LogAulas"_s), QStringList{u"2"_s});
}

void TstFrmCadAluno::deletingGoesByName()
{
    CenarioCadastro c(linhasDeSempre() + u"; UPDATE AL_Alunos SET AL_Nome='Ari' WHERE AL_Cod=3"_s);
    c.abreCadastro(1);
    c.aperta(u"CmdAulaUltimo"_s);
    QCOMPARE(mostrado(c), u"Ari, 3 / 3"_s);
    BoxScript boxes{Resposta::Sim};
    c.aperta(u"CmdAulaApaga"_s);
    QCOMPARE(ligacoes(c), (QStringList{u"1|1"_s, u"2|1"_s, u"4|2"_s})); // the row on display
    QCOMPARE(alunos(c), (QStringList{u"2|Bia"_s, u"3|Ari"_s, u"4|Dora"_s})); // the first of that name
    QCOMPARE(mostrado(c), u", 1 / 2"_s); // whose row stays, without a pupil
}

void TstFrmCadAluno::genericPupilCanGo()
{
    CenarioCadastro c;
    c.abreCadastro(9999);
    c.aperta(u"CmdAulaUltimo"_s);
    BoxScript boxes{Resposta::Sim};
    c.aperta(u"CmdAulaApaga"_s);
    QCOMPARE(c.sql(u"SELECT AL_Cod FROM AL_Alunos UNION ALL SELECT AL_Cod FROM CLxAL WHERE AL_Cod > 4"_s),
        (QStringList{u"1"_s, u"2"_s, u"3"_s, u"4"_s}));
    QCOMPARE(mostrado(c), u"Ari, 1 / 4"_s);
}

void TstFrmCadAluno::linkWithoutAPupilShowsNoName()
{
    CenarioCadastro c(linhasDeSempre() + u"; DELETE FROM AL_Alunos WHERE AL_Cod=2"_s);
    c.abreCadastro(1);
    c.aperta(u"CmdAulaFrente"_s);
    QCOMPARE(mostrado(c), u", 2 / 3"_s);
    QCOMPARE(c.combo(u"CmbAluClasses"_s).currentText(), u"Turma A"_s);
}

static void reporta(const QString &resposta)
{
    gCodRoteiro = 12;
    gNomeRoteiro = u"Contar"_s;
    EnviaTexto(findWindow(QString::fromUtf16(kTituloGerenciador), true), janelaBlocos(), MSG_RESPOSTA, resposta);
}

static QStringList aulas(const CenarioCadastro &c)
{
    return c.sql(u"SELECT LG_Aluno, LG_Classe, RO_Cod, LG_Resp FROM LG_LogAulas"_s);
}

void TstFrmCadAluno::childReportsWhileAPupilIsPending()
{
    CenarioCadastro c;
    gAluno = 3;
    c.abreCadastro(1);
    c.aperta(u"CmdAulaNova"_s);
    c.digita(u"TxtAluno"_s, u"Eva"_s);
    reporta(u"A"_s);
    QCOMPARE(aulas(c), QStringList{u"3|1|12|<disc>Contar<rot>A:"_s});
    c.aperta(u"CmdAulaGrava"_s);
    QCOMPARE(alunos(c).last(), u"10000|Eva"_s);
    QCOMPARE(ligacoes(c).last(), u"10000|1"_s);
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
    const QString linha = u"3|3|12|<disc>Contar<rot>E:"_s;
    QCOMPARE(aulas(c), QStringList(titulos.size(), linha));
    QCOMPARE(alunos(c).size(), 4);
}

void TstFrmCadAluno::lockedRegisterIsToldAndTheWindowGoesOn()
{
    CenarioCadastro c;
    c.abreCadastro(1);
    c.digita(u"TxtAluno"_s, u"Ariel"_s);
    sqlite3 *outro = nullptr;
    QCOMPARE(sqlite3_open(c.native().toUtf8().constData(), &outro), SQLITE_OK);
    const std::unique_ptr<sqlite3, int (*)(sqlite3 *)> fecha(outro, sqlite3_close);
    QCOMPARE(sqlite3_exec(outro, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    QStringList titulos;
    costuras().box = [&](const Caixa &caixa) {
        titulos << caixa.titulo;
        return Resposta::Ok;
    };
    c.aperta(u"CmdAulaGrava"_s);
    QCOMPARE(titulos.value(0), u"rsAlunos - Registro Atualiza"_s);
    QCOMPARE(sqlite3_exec(outro, "ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK);
    QCOMPARE(alunos(c).first(), u"1|Ari"_s);
    QCOMPARE(mostrado(c), u"Ari, 1 / 3"_s);
    c.digita(u"TxtAluno"_s, u"Ariel"_s);
    c.aperta(u"CmdAulaGrava"_s);
    QCOMPARE(alunos(c).first(), u"1|Ariel"_s);
}

QTEST_MAIN(TstFrmCadAluno)
#include "tst_frmcadaluno.moc"
