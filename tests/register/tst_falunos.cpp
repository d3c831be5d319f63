#include "cenario_cadastro.h"

#include "data/bd.h"
#include "lessons/andamento.h"
#include "platform/protocolo.h"

#include <QAbstractItemView>
#include <QLabel>

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
    void closingBringsThePanelBack();
    void selectionShowsTheCurrentClass();
    void choosing_data();
    void choosing();
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

void TstFAlunos::closingBringsThePanelBack()
{
    CenarioCadastro c;
    c.abreCadastro(1);
    c.faz(u"cmdCadClasses; CmdAulaNova"_s);
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

void TstFAlunos::choosing_data()
{
    QTest::addColumn<QString>("passos"); // between the selection's button and its confirmation
    QTest::addColumn<qint32>("classe");
    QTest::addColumn<qint32>("aluno");
    QTest::addColumn<QString>("nome"); // in the shell's title; null where it stays
    QTest::newRow("class and pupil; the class counts before it is confirmed")
        << "CmbClasse=Turma A; corrente?1; CmbAluno=Bia" << 1 << 2 << "Bia";
    QTest::newRow("a class alone: the generic pupil") << "CmbClasse=Turma B; CmbAluno?" << 2 << 9999 << QString();
    QTest::newRow("a class without pupils shuts their box")
        << "CmbClasse=Turma C; CmbAluno?fechada" << 3 << 9999 << QString();
    QTest::newRow("no class: the generic one") << "CmbClasse=Turma A; CmbClasse=" << 9999 << 9999 << QString();
    QTest::newRow("both typed, case aside; the title has it as typed")
        << "CmbClasse~turma b; CmbAluno~DORA" << 2 << 4 << "DORA";
    QTest::newRow("a pupil of no name there: the first") << "CmbClasse~Turma A; CmbAluno~Zeca" << 1 << 1 << "Zeca";
    QTest::newRow("a class of no name: the last that was named") << "CmbClasse~Turma Bis" << 2 << 9999 << QString();
    QTest::newRow("a pupil typed for a class without pupils: none")
        << "CmbClasse~Turma C; CmbAluno~Zeca" << 3 << 0 << "Zeca";
}

void TstFAlunos::choosing()
{
    QFETCH(QString, passos);
    QFETCH(qint32, classe);
    QFETCH(qint32, aluno);
    QFETCH(QString, nome);
    CenarioCadastro c;
    gAluno = 3; // whom no row ends with
    c.faz(u"CmdAluno(2); "_s + passos + u"; CmdSelecionar"_s);
    QCOMPARE(gClasse, classe);
    QCOMPARE(gAluno, aluno);
    QCOMPARE(c.titulos, nome.isNull() ? QStringList() : QStringList(u"Série: Fundamental I | "_s + nome));
    QCOMPARE(gMensagem.Codigo, qint32(MSG_CLASSE)); // the pupil's came before it, and opened the log
    QCOMPARE(gMensagem.Texto, QString::number(classe));
    QCOMPARE(gBD->ExisteAlias(u"RSLog"_s), aluno != 0);
    QVERIFY(!gSenhaOK);
    QVERIFY(c.aberto(u"FrmSel"_s)); // the window stays open
}

void TstFAlunos::classThatIsGoneGivesWayToTheFirst()
{
    CenarioCadastro c;
    gClasse = 77;
    c.faz(u"CmdAluno(2); CmbClasse?; corrente?9999"_s);
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
    c.faz(u"CmdAluno(2); CmbClasse:Tab; CmbAluno=Dora; CmdSelecionar; corrente?2"_s);
    QCOMPARE(gAluno, 4);
}

void TstFAlunos::clickOnTheClassBoxEmptiesThePupils()
{
    CenarioCadastro c;
    gClasse = 1;
    c.faz(u"CmdAluno(2); CmbAluno=Caio"_s);
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
    c.faz(u"CmdAluno(2); CmdAluno(3)"_s);
    QVERIFY(c.aberto(u"FrmCadAluno"_s) && !c.aberto(u"FrmSel"_s)); // whose rows the register has replaced
    c.aperta(u"CmdAluno(2)"_s);
    QVERIFY(c.aberto(u"FrmSel"_s) && !c.aberto(u"FrmCadAluno"_s));
    QCOMPARE(itens(c.combo(u"CmbAluno"_s)), (QStringList{u"Ari"_s, u"Bia"_s, u"Caio"_s}));
    c.faz(u"corrente?1; CmbAluno=Caio; CmdSelecionar"_s);
    QCOMPARE(gAluno, 3);
}

void TstFAlunos::protectedModesAskForThePassword_data()
{
    QTest::addColumn<int>("indice");
    QTest::addColumn<bool>("pede");
    QTest::newRow("pupils' register") << 3 << true;
    QTest::newRow("courses") << 5 << true;
    QTest::newRow("blocks") << 6 << true;
    for (const int indice : {-1, 0, 1, 7})
        QTest::addRow("%d does nothing", indice) << indice << false;
}

void TstFAlunos::protectedModesAskForThePassword()
{
    QFETCH(int, indice);
    QFETCH(bool, pede);
    CenarioCadastro c;
    c.alunos().CmdAluno_Click(qint16(indice));
    QCOMPARE(c.login().isVisible(), pede);
    QVERIFY(!c.aberto(u"FrmSel"_s) && !c.aberto(u"FrmCadAluno"_s) && !c.aberto(u"frmClasses"_s));
    if (!pede)
        return;
    QCOMPARE(child<QLabel>(c.login(), u"lblLabels(0)"_s).text(), u"Professor(a) , digite sua senha."_s);
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

// A class that is only begun counts: the register that was free to open is locked, and an empty entry opens it.
void TstFAlunos::firstClassNeedsNoPassword()
{
    CenarioCadastro c(QString{});
    c.sql(u"DELETE FROM CL_Classes"_s); // not even the generic one
    gBD->ReAtualizaRecordSet(u"rsClasses"_s);
    c.aperta(u"CmdAluno(3)"_s);
    QVERIFY(c.aberto(u"FrmCadAluno"_s) && c.aberto(u"frmClasses"_s));
    c.aperta(u"CmdAluno(3)"_s); // what opens the frame closes it
    QVERIFY(!c.aberto(u"frmClasses"_s));
    c.aperta(u"CmdAluno(3)"_s);
    c.aperta(u"CmdProfNovo"_s);
    c.aperta(u"CmdAluno(3)"_s);
    QVERIFY(c.login().isVisible());
    c.aperta(u"cmdOK"_s);
    QVERIFY(!c.login().isVisible());
    c.faz(u"TxtNomeClasse=Primeira; CmdProfSalvar"_s);
    QCOMPARE(classes(c), QString::number(gClasse) + u"|Primeira||"_s);
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

QTEST_MAIN(TstFAlunos)
#include "tst_falunos.moc"
