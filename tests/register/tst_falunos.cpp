#include "cenario_cadastro.h"

#include "data/bd.h"
#include "lessons/andamento.h"
#include "platform/janela.h"
#include "platform/protocolo.h"
#include "register/estado.h"
#include "register/login.h"
#include "startup/estado.h"
#include "support/suporte.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The register's window: opening, closing, its modes, and the choice of class and pupil.
class TstFAlunos : public QObject
{
    Q_OBJECT
private slots:
    void opensWithItsButtonsOnly();
    void closingBringsThePanelBack_data();
    void closingBringsThePanelBack();
    void selectionShowsTheCurrentClass();
    void choosingTellsTheShell();
    void classAloneGivesTheGenericPupil_data();
    void classAloneGivesTheGenericPupil();
    void noClassIsTheGenericOne();
    void textThatNamesNothingTakesTheCurrentOne_data();
    void textThatNamesNothingTakesTheCurrentOne();
    void classThatIsGoneGivesWayToTheFirst();
    void pupilsOfOneNameAreToldApart();
    void classesOfOneNameAreToldApart();
    void clickOnTheClassBoxEmptiesThePupils();
    void sameClassAgainBringsItsPupilsBack();
    void protectedModesAskForThePassword_data();
    void protectedModesAskForThePassword();
    void noClassChosenIsTold();
    void firstClassNeedsNoPassword();
    void leavingAProtectedModeForgetsThePassword();
    void unnamedIndexesDoNothing();
};

void TstFAlunos::opensWithItsButtonsOnly()
{
    CenarioCadastro c;
    QVERIFY(c.alunos().isVisible());
    QCOMPARE(c.alunos().windowTitle(), u"Cadastros"_s);
    QCOMPARE(c.alunos().pos(), QPoint(100, 60)); // where the panel stands
    for (int i = 1; i <= 6; ++i)
        QCOMPARE(c.botao(u"CmdAluno(%1)"_s.arg(i)).isVisible(), i >= 2 && i <= 4);
    for (const QString &quadro : {u"FrmSel"_s, u"FrmCadAluno"_s, u"frmClasses"_s})
        QVERIFY2(!c.aberto(quadro), qPrintable(quadro));
}

void TstFAlunos::closingBringsThePanelBack_data()
{
    QTest::addColumn<bool>("porBotao");
    QTest::newRow("by its button") << true;
    QTest::newRow("by the system box") << false;
}

void TstFAlunos::closingBringsThePanelBack()
{
    QFETCH(bool, porBotao);
    CenarioCadastro c;
    c.abreCadastro(1);
    c.aperta(u"cmdCadClasses"_s);
    c.aperta(u"CmdAulaNova"_s);
    if (porBotao)
        c.aperta(u"CmdFecha"_s);
    else
        c.alunos().close();
    QVERIFY(!c.alunos().isVisible());
    QCOMPARE(c.paineis, 1);
    c.alunos().mostra();
    QVERIFY(!c.aberto(u"FrmCadAluno"_s) && !c.aberto(u"frmClasses"_s)); // a new window
    QCOMPARE(c.combo(u"CmbAluClasses"_s).count(), 0);
    c.aperta(u"CmdAluno(3)"_s); // the password stands
    QVERIFY(c.botao(u"CmdAulaCancela"_s).isHidden());
    QCOMPARE(c.campo(u"TxtAulaInf"_s).text(), u"1 / 3"_s); // what the register held, it holds
}

void TstFAlunos::selectionShowsTheCurrentClass()
{
    CenarioCadastro c;
    gClasse = 1;
    gAluno = 2;
    c.aperta(u"CmdAluno(2)"_s);
    QVERIFY(c.aberto(u"FrmSel"_s));
    QCOMPARE(c.combo(u"CmbClasse"_s).currentText(), u"Turma A"_s);
    QCOMPARE(itens(c.combo(u"CmbClasse"_s)), (QStringList{u"Genérica"_s, u"Turma A"_s, u"Turma B"_s, u"Turma C"_s}));
    QCOMPARE(c.combo(u"CmbAluno"_s).currentText(), QString()); // the class's change has emptied it
    QCOMPARE(itens(c.combo(u"CmbAluno"_s)), (QStringList{u"Ari"_s, u"Bia"_s, u"Caio"_s}));
    QCOMPARE(gClasse, 1);
}

void TstFAlunos::choosingTellsTheShell()
{
    CenarioCadastro c;
    gSenhaOK = true;
    c.aperta(u"CmdAluno(2)"_s);
    c.escolhe(u"CmbClasse"_s, u"Turma A"_s);
    QCOMPARE(gClasse, 1); // before the choice is confirmed
    QCOMPARE(gAluno, 9999);
    c.escolhe(u"CmbAluno"_s, u"Bia"_s);
    c.aperta(u"CmdSelecionar"_s);
    QCOMPARE(gAluno, 2);
    QCOMPARE(gClasse, 1);
    QCOMPARE(c.titulos, QStringList{u"Série: Fundamental I | Bia"_s});
    QCOMPARE(gMensagem.Codigo, qint32(MSG_CLASSE)); // the pupil's came before it, and opened the log
    QCOMPARE(gMensagem.Texto, u"1"_s);
    QVERIFY(gBD->ExisteAlias(u"RSLog"_s));
    QVERIFY(!gSenhaOK);
    QVERIFY(c.aberto(u"FrmSel"_s)); // the window stays open
}

void TstFAlunos::classAloneGivesTheGenericPupil_data()
{
    QTest::addColumn<QString>("classe");
    QTest::addColumn<qint32>("codigo");
    QTest::addColumn<bool>("comAlunos");
    QTest::newRow("a class with pupils") << u"Turma B"_s << 2 << true;
    QTest::newRow("a class without pupils shuts their box") << u"Turma C"_s << 3 << false;
}

void TstFAlunos::classAloneGivesTheGenericPupil()
{
    QFETCH(QString, classe);
    QFETCH(qint32, codigo);
    QFETCH(bool, comAlunos);
    CenarioCadastro c;
    gAluno = 1;
    c.aperta(u"CmdAluno(2)"_s);
    QTest::mouseClick(&c.combo(u"CmbClasse"_s), Qt::LeftButton);
    c.escolhe(u"CmbClasse"_s, classe);
    QCOMPARE(c.combo(u"CmbAluno"_s).isEnabled(), comAlunos);
    c.aperta(u"CmdSelecionar"_s);
    QCOMPARE(gAluno, 9999);
    QCOMPARE(gClasse, codigo);
    QVERIFY(c.titulos.isEmpty()); // the caption stays
}

void TstFAlunos::noClassIsTheGenericOne()
{
    CenarioCadastro c;
    gClasse = 1;
    gAluno = 1;
    c.aperta(u"CmdAluno(2)"_s);
    auto &classe = *c.combo(u"CmbClasse"_s).lineEdit();
    classe.selectAll();
    QTest::keyClick(&classe, Qt::Key_Delete);
    c.aperta(u"CmdSelecionar"_s);
    QCOMPARE(gAluno, 9999);
    QCOMPARE(gClasse, 9999);
}

void TstFAlunos::textThatNamesNothingTakesTheCurrentOne_data()
{
    QTest::addColumn<QString>("classe"); // typed
    QTest::addColumn<QString>("aluno"); // likewise
    QTest::addColumn<qint32>("codClasse");
    QTest::addColumn<qint32>("codAluno");
    QTest::newRow("both named, case aside") << u"turma b"_s << u"DORA"_s << 2 << 4;
    QTest::newRow("a pupil of no name there: the first") << u"Turma A"_s << u"Zeca"_s << 1 << 1;
    QTest::newRow("a class of no name: the last that was named") << u"Turma Bis"_s << QString() << 2 << 9999;
    QTest::newRow("a pupil typed for a class without pupils: none") << u"Turma C"_s << u"Zeca"_s << 3 << 0;
}

void TstFAlunos::textThatNamesNothingTakesTheCurrentOne()
{
    QFETCH(QString, classe);
    QFETCH(QString, aluno);
    QFETCH(qint32, codClasse);
    QFETCH(qint32, codAluno);
    CenarioCadastro c;
    c.aperta(u"CmdAluno(2)"_s);
    auto &cmbClasse = *c.combo(u"CmbClasse"_s).lineEdit();
    auto &cmbAluno = c.combo(u"CmbAluno"_s);
    cmbClasse.selectAll();
    tecla(cmbClasse, classe);
    QTest::mouseClick(&cmbClasse, Qt::LeftButton); // opens the pupils' box in any case
    QVERIFY(cmbAluno.isEnabled());
    tecla(*cmbAluno.lineEdit(), aluno);
    c.aperta(u"CmdSelecionar"_s);
    QCOMPARE(gClasse, codClasse);
    QCOMPARE(gAluno, codAluno);
    QCOMPARE(c.titulos.isEmpty(), aluno.isEmpty());
    if (!aluno.isEmpty())
        QCOMPARE(c.titulos, QStringList{u"Série: Fundamental I | "_s + aluno}); // as typed
    QCOMPARE(gBD->ExisteAlias(u"RSLog"_s), codAluno != 0);
}

void TstFAlunos::classThatIsGoneGivesWayToTheFirst()
{
    CenarioCadastro c;
    gClasse = 77;
    c.aperta(u"CmdAluno(2)"_s);
    QCOMPARE(c.combo(u"CmbClasse"_s).currentText(), QString());
    QCOMPARE(gClasse, 9999);
    QCOMPARE(itens(c.combo(u"CmbAluno"_s)), QStringList{u"Genérico"_s});
}

void TstFAlunos::pupilsOfOneNameAreToldApart()
{
    CenarioCadastro c(linhasDeSempre() + u"; UPDATE AL_Alunos SET AL_Nome='Bia' WHERE AL_Cod=3"_s);
    gClasse = 1;
    c.aperta(u"CmdAluno(2)"_s);
    auto &combo = c.combo(u"CmbAluno"_s);
    QCOMPARE(itens(combo), (QStringList{u"Ari"_s, u"Bia"_s, u"Bia"_s}));
    QList<qint32> codigos;
    for (const int linha : {1, 2}) {
        combo.showPopup();
        combo.view()->setCurrentIndex(combo.model()->index(linha, 0));
        QTest::keyClick(combo.view(), Qt::Key_Return);
        c.aperta(u"CmdSelecionar"_s);
        codigos << gAluno;
    }
    std::ranges::sort(codigos);
    QCOMPARE(codigos, (QList<qint32>{2, 3}));
}

void TstFAlunos::classesOfOneNameAreToldApart()
{
    CenarioCadastro c(linhasDeSempre() + u"; UPDATE CL_Classes SET CL_Nome='Turma' WHERE CL_Cod < 3"_s);
    gClasse = 2;
    c.aperta(u"CmdAluno(2)"_s);
    QCOMPARE(itens(c.combo(u"CmbAluno"_s)), QStringList{u"Dora"_s});
    passaPor(c.combo(u"CmbClasse"_s));
    c.escolhe(u"CmbAluno"_s, u"Dora"_s);
    c.aperta(u"CmdSelecionar"_s);
    QCOMPARE(gClasse, 2);
    QCOMPARE(gAluno, 4);
}

void TstFAlunos::clickOnTheClassBoxEmptiesThePupils()
{
    CenarioCadastro c;
    gClasse = 1;
    c.aperta(u"CmdAluno(2)"_s);
    c.escolhe(u"CmbAluno"_s, u"Caio"_s);
    QTest::mouseClick(c.combo(u"CmbClasse"_s).lineEdit(), Qt::RightButton); // for the menu of cut and paste
    QCOMPARE(c.combo(u"CmbAluno"_s).currentText(), u"Caio"_s);
    QTest::mouseClick(c.combo(u"CmbClasse"_s).lineEdit(), Qt::LeftButton);
    QCOMPARE(c.combo(u"CmbAluno"_s).currentText(), QString());
    QCOMPARE(itens(c.combo(u"CmbAluno"_s)).size(), 3);
}

void TstFAlunos::sameClassAgainBringsItsPupilsBack()
{
    CenarioCadastro c;
    gClasse = 1;
    c.aperta(u"CmdAluno(2)"_s);
    QCOMPARE(gBD->NomeCampo(-1, u"RSCLxAL"_s, u","_s), u"AL_Cod,AL_Nome"_s);
    c.abreCadastro(1);
    QVERIFY(!c.aberto(u"FrmSel"_s));
    QVERIFY(gBD->NomeCampo(-1, u"RSCLxAL"_s, u","_s).contains(u"CL_Cod"_s));
    c.aperta(u"CmdAluno(2)"_s);
    QVERIFY(!c.aberto(u"FrmCadAluno"_s));
    QCOMPARE(gBD->NomeCampo(-1, u"RSCLxAL"_s, u","_s), u"AL_Cod,AL_Nome"_s); // the text was the same
    QCOMPARE(gClasse, 1);
    QCOMPARE(itens(c.combo(u"CmbAluno"_s)), (QStringList{u"Ari"_s, u"Bia"_s, u"Caio"_s}));
    c.escolhe(u"CmbAluno"_s, u"Ari"_s);
    c.aperta(u"CmdSelecionar"_s);
    QCOMPARE(gAluno, 1);
}

void TstFAlunos::protectedModesAskForThePassword_data()
{
    QTest::addColumn<int>("indice");
    QTest::newRow("pupils' register") << 3;
    QTest::newRow("courses") << 5;
    QTest::newRow("blocks") << 6;
}

void TstFAlunos::protectedModesAskForThePassword()
{
    QFETCH(int, indice);
    CenarioCadastro c;
    c.alunos().CmdAluno_Click(qint16(indice));
    QVERIFY(c.login().isVisible());
    QCOMPARE(child<QLabel>(c.login(), u"lblLabels(0)"_s).text(), u"Professor(a) , digite sua senha."_s);
    QVERIFY(!c.aberto(u"FrmCadAluno"_s));
    c.digita(u"txtPassword"_s, u"chavema"_s);
    QTest::keyClick(&c.campo(u"txtPassword"_s), Qt::Key_Return);
    QVERIFY(gSenhaOK);
    QVERIFY(!c.login().isVisible());
    QCOMPARE(c.aberto(u"FrmCadAluno"_s), indice == 3); // the others only ask
    if (indice == 3)
        QCOMPARE(c.campo(u"TxtAulaInf"_s).text(), u"1 / 5"_s); // the generic class shows all rows
}

void TstFAlunos::noClassChosenIsTold()
{
    CenarioCadastro c;
    gClasse = 0;
    BoxScript boxes{Resposta::Ok};
    c.aperta(u"CmdAluno(3)"_s);
    QCOMPARE(boxes.last(),
        (Caixa{
            u"Escolha uma classe e clique novamente em \"Cadastrar Alunos\" "_s, u"Histórico"_s, Icone::Informacao}));
    QVERIFY(!c.login().isVisible());
    QVERIFY(!c.aberto(u"FrmCadAluno"_s));
}

void TstFAlunos::firstClassNeedsNoPassword()
{
    CenarioCadastro c(QString{});
    c.sql(u"DELETE FROM CL_Classes"_s); // not even the generic one
    gBD->ReAtualizaRecordSet(u"rsClasses"_s);
    c.aperta(u"CmdAluno(3)"_s);
    QVERIFY(c.aberto(u"FrmCadAluno"_s));
    QVERIFY(c.aberto(u"frmClasses"_s));
    c.aperta(u"CmdAluno(3)"_s); // what opens the frame closes it
    QVERIFY(!c.aberto(u"frmClasses"_s));
    c.aperta(u"CmdAluno(3)"_s);
    c.aperta(u"CmdProfNovo"_s);
    c.digita(u"TxtNomeClasse"_s, u"Primeira"_s);
    c.aperta(u"CmdProfSalvar"_s);
    QCOMPARE(c.sql(u"SELECT CL_Nome, CL_Prof, CL_Senha FROM CL_Classes"_s), QStringList{u"Primeira||"_s});
    QCOMPARE(QString::number(gClasse), c.sql(u"SELECT CL_Cod FROM CL_Classes"_s).value(0));
    QCOMPARE(itens(c.combo(u"CmbAluClasses"_s)), QStringList{u"Primeira"_s});
}

void TstFAlunos::leavingAProtectedModeForgetsThePassword()
{
    CenarioCadastro c;
    c.abreCadastro(1);
    c.aperta(u"CmdAluno(3)"_s);
    QVERIFY(!c.login().isVisible()); // still given
    c.aperta(u"CmdAluno(4)"_s);
    QCOMPARE(c.desempenhos, 1);
    QVERIFY(!gSenhaOK);
    QVERIFY(c.aberto(u"FrmCadAluno"_s)); // what was open stays
    gSenhaOK = true;
    c.aperta(u"CmdAluno(2)"_s);
    QVERIFY(!gSenhaOK);
    c.aperta(u"CmdAluno(3)"_s);
    QVERIFY(c.login().isVisible());
}

void TstFAlunos::unnamedIndexesDoNothing()
{
    CenarioCadastro c;
    for (const int indice : {-1, 0, 1, 7})
        c.alunos().CmdAluno_Click(qint16(indice));
    QVERIFY(!c.login().isVisible());
    QVERIFY(!c.aberto(u"FrmSel"_s) && !c.aberto(u"FrmCadAluno"_s) && !c.aberto(u"frmClasses"_s));
}

QTEST_MAIN(TstFAlunos)
#include "tst_falunos.moc"
