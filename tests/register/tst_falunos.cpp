#include "cenario_cadastro.h"

#include "data/bd.h"
#include "lessons/andamento.h"
#include "platform/protocolo.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QLabel>
#include <QTimer>

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
    void textThatIsNoPupilIsNotKept_data();
    void textThatIsNoPupilIsNotKept();
    void newerChoiceWhileRowsAreRead_data();
    void newerChoiceWhileRowsAreRead();
    void longNamesShowTheirBeginning();
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
    QCOMPARE(c.mostra(u"CmdAulaCancela"_s), u"sim"_s); // also that a pupil is begun
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
    QTest::newRow("a beginning that fits one pupil alone") << "CmbClasse~Turma A; CmbAluno~bI" << 1 << 2 << "Bia";
    QTest::newRow("a class of no name: the last that was named") << "CmbClasse~Turma Bis" << 2 << 9999 << QString();
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

void TstFAlunos::textThatIsNoPupilIsNotKept_data()
{
    QTest::addColumn<QString>("classe");
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("alvo"); // what the box is left for; upper case: a key
    QTest::addColumn<QString>("fica");
    QTest::newRow("nobody's, Selecionar pressed") << "Turma A"
                                                  << "Zeca"
                                                  << "CmdSelecionar"
                                                  << "";
    QTest::newRow("in a class without pupils") << "Turma C"
                                               << "Zeca"
                                               << "CmdSelecionar"
                                               << "";
    QTest::newRow("a beginning of two, left by a key") << "Turma D"
                                                       << "Bi"
                                                       << "TAB"
                                                       << "";
    QTest::newRow("a beginning of one, left by a key") << "Turma D"
                                                       << "Bian"
                                                       << "TAB"
                                                       << "Bianca";
    QTest::newRow("nobody's, another button pressed") << "Turma A"
                                                      << "Zeca"
                                                      << "CmdAluno(4)"
                                                      << "";
    QTest::newRow("nobody's, with the list of the box open") << "Turma A"
                                                             << "Zeca"
                                                             << "LIST"
                                                             << "";
    QTest::newRow("a beginning of one, with that list open") << "Turma A"
                                                             << "Ca"
                                                             << "LIST"
                                                             << "Caio";
}

void TstFAlunos::textThatIsNoPupilIsNotKept()
{
    QFETCH(QString, classe);
    QFETCH(QString, texto);
    QFETCH(QString, alvo);
    QFETCH(QString, fica);
    CenarioCadastro c(linhasDeSempre()
        + u"; INSERT INTO CL_Classes VALUES (4, 'Turma D', 'Davi', ''); INSERT INTO AL_Alunos VALUES (5, 'Bianca'); "
          "INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (2, 4), (5, 4)"_s);
    c.confirmaCaixas();
    c.faz(u"CmdAluno(2)"_s);
    c.combo(u"CmbClasse"_s).setEditText(classe);
    gMensagem = {};
    auto &combo = c.combo(u"CmbAluno"_s);
    QTest::mouseClick(c.combo(u"CmbClasse"_s).lineEdit(), Qt::LeftButton); // opens the box of an empty class
    c.alunos().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&c.alunos()));
    combo.setFocus();
    QVERIFY(combo.hasFocus());
    tecla(*combo.lineEdit(), texto);
    if (alvo == u"TAB"_s) {
        combo.completer()->popup()->hide();
        QTest::keyClick(&combo, Qt::Key_Tab);
    } else if (alvo == u"LIST"_s) {
        combo.showPopup();
        QWidget &lista = *combo.view()->window();
        auto &botao = c.botao(u"CmdSelecionar"_s);
        QTest::mousePress(&lista, Qt::LeftButton, {}, lista.mapFromGlobal(botao.mapToGlobal(botao.rect().center())));
        QTest::mouseRelease(&botao, Qt::LeftButton);
    } else {
        c.aperta(alvo);
    }
    const std::vector<Caixa> told =
        fica.isEmpty() ? std::vector<Caixa>{{.texto = u"Escolha o aluno na lista."_s}} : std::vector<Caixa>{};
    QTRY_COMPARE(c.caixas, told);
    QTRY_COMPARE(combo.currentText(), fica);
    QCOMPARE(c.titulos.size(), alvo == u"LIST"_s && !fica.isEmpty() ? 1 : 0); // a press that told does nothing more
    QCOMPARE(gMensagem.Codigo != 0, c.titulos.size() == 1);
    QCOMPARE(c.desempenhos, alvo == u"CmdAluno(4)"_s ? 1 : 0);
}

// Reading the rows runs events: a second choice that comes in there is the one that counts.
void TstFAlunos::newerChoiceWhileRowsAreRead_data()
{
    QTest::addColumn<QString>("primeiro"); // its rows are being read
    QTest::addColumn<QString>("segundo"); // when this comes in
    QTest::addColumn<QString>("depois"); // what is then to be seen
    QTest::newRow("another class") << "CmdAluno(2); Turma A"
                                   << "CmbClasse=Turma B"
                                   << "CmbClasse?Turma B; corrente?2; CmbAluno=Abel";
    QTest::newRow("the selection, over the register") << "CmdAluno(3)"
                                                      << "CmdAluno(2)"
                                                      << "CmbClasse?Turma B; CmbAluno=Abel";
    QTest::newRow("the register, over the selection") << "CmdAluno(2)"
                                                      << "CmdAluno(3)"
                                                      << "CmdAulaFrente; aluno?Abel, 2 / 2";
    QTest::newRow("the register twice") << "CmdAluno(3)"
                                        << "CmdAluno(3)"
                                        << "CmdAulaFrente; aluno?Abel, 2 / 2";
    QTest::newRow("a class saved twice over the selection")
        << "CmdAluno(3); cmdCadClasses; CmdProfProx; CmdProfProx; CmdAluno(2); CmdProfSalvar"
        << "CmdProfSalvar"
        << "CmbClasse?Turma B; CmbAluno=Abel";
}

void TstFAlunos::newerChoiceWhileRowsAreRead()
{
    QFETCH(QString, primeiro);
    QFETCH(QString, segundo);
    QFETCH(QString, depois);
    // entered the class after Dora, and stands before her by name
    CenarioCadastro c(linhasDeSempre()
        + u"; INSERT INTO AL_Alunos VALUES (5, 'Abel'); INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (5, 2)"_s);
    gClasse = 2;
    const qsizetype last = primeiro.lastIndexOf(u"; "_s);
    c.faz(primeiro.left(std::max<qsizetype>(last, 0)));
    bool came = false;
    QTimer::singleShot(0, &c.alunos(), [&] {
        came = true;
        c.faz(segundo);
    });
    const QString step = primeiro.mid(last < 0 ? 0 : last + 2);
    if (step.startsWith(u"Cmd"_s))
        c.faz(step);
    else
        c.combo(u"CmbClasse"_s).setEditText(step);
    QVERIFY(came);
    c.faz(depois);
    if (c.aberto(u"FrmSel"_s)) {
        c.faz(u"CmdSelecionar; corrente?2"_s);
        QCOMPARE(gAluno, 5);
    }
}

void TstFAlunos::longNamesShowTheirBeginning()
{
    const QString nome = u"Pedro de Alcântara João Carlos Leopoldo Salvador Bibiano Francisco Xavier"_s;
    CenarioCadastro c(linhasDeSempre()
        + u"; UPDATE AL_Alunos SET AL_Nome='%1' WHERE AL_Cod=4; UPDATE CL_Classes SET CL_Nome='%1', CL_Prof='%1'"
          " WHERE CL_Cod=2"_s.arg(nome));
    c.abreCadastro(2);
    c.faz(u"cmdCadClasses; CmdProfProx; CmdAulaGrava"_s);
    QList<QLineEdit *> campos{&c.campo(u"TxtAluno"_s), &c.campo(u"TxtNomeClasse"_s), &c.campo(u"TxtNomeProf"_s),
        c.combo(u"CmbAluClasses"_s).lineEdit()};
    c.faz(u"CmdAluno(2); CmbAluno="_s + nome);
    campos << c.combo(u"CmbClasse"_s).lineEdit() << c.combo(u"CmbAluno"_s).lineEdit();
    for (const QLineEdit *campo : campos) {
        QCOMPARE(campo->text(), nome);
        QVERIFY2(campo->cursorPosition() == 0, qPrintable(campo->objectName() + campo->parentWidget()->objectName()));
    }
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
