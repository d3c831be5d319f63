#include "register/frmcadaluno.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr LinhaLayout kFrmCadAluno{u"FrmCadAluno", {2490, 120, 4650, 3705}};
static constexpr LinhaLayout kLblAluno{u"LblAluno", {180, 510, 4290, 285}};
static constexpr LinhaLayout kTxtAluno{u"TxtAluno", {180, 795, 4290, 390}};
static constexpr LinhaLayout kLabel3{u"Label3", {180, 1260, 2850, 285}};
static constexpr LinhaLayout kCmbAluClasses{u"CmbAluClasses", {180, 1545, 3060, 390}};
static constexpr LinhaLayout kCmdCadClasses{u"cmdCadClasses", {3390, 1530, 1080, 420}};
static constexpr double kTopoBarra = 2190;
static constexpr NomesBarra kNomes{.primeiro = u"CmdAulaInicio",
    .anterior = u"CmdAulaVolta",
    .proximo = u"CmdAulaFrente",
    .ultimo = u"CmdAulaUltimo",
    .posicao = u"TxtAulaInf",
    .grava = u"CmdAulaGrava",
    .novo = u"CmdAulaNova",
    .apaga = u"CmdAulaApaga",
    .cancela = u"CmdAulaCancela"};

FrmCadAluno::FrmCadAluno(QWidget *parent) : Quadro(kFrmCadAluno, u"Cadastro de Alunos:"_s, parent)
{
    buildLayout();
    connectEvents();
    hide();
}

void FrmCadAluno::buildLayout()
{
    mTxtAluno = novoCampo(kTxtAluno, u"Nome do Aluno"_s, this);
    novoRotulo(kLblAluno, u"Nome do Aluno"_s, mTxtAluno, this);
    mCmbAluClasses = novoCombo(kCmbAluClasses, u"Classes"_s, this);
    novoRotulo(kLabel3, u"Classes"_s, mCmbAluClasses, this);
    mCmdCadClasses = novoBotaoDeTexto(kCmdCadClasses, u"Classes"_s, this);
    mCmdCadClasses->setToolTip(u"Cadastra Novas Classes"_s);
    mBarra = novaBarra(kNomes, kTopoBarra, this);
}

} // namespace quorel
