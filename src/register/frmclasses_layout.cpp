#include "register/frmclasses.h"

#include <QLabel>
#include <QLineEdit>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr LinhaLayout kFrmClasses{u"frmClasses", {2490, 3945, 4650, 4095}};
static constexpr LinhaLayout kLabel2{u"Label2", {180, 510, 4290, 285}};
static constexpr LinhaLayout kTxtNomeClasse{u"TxtNomeClasse", {180, 795, 4290, 390}};
static constexpr LinhaLayout kLblNomeProf{u"LblNomeProf", {180, 1260, 4290, 285}};
static constexpr LinhaLayout kTxtNomeProf{u"TxtNomeProf", {180, 1545, 4290, 390}};
static constexpr LinhaLayout kLblSenhaOrg{u"LblSenhaOrg", {180, 2085, 1650, 285}};
static constexpr LinhaLayout kTxtProfSenh{u"TxtProfSenh", {1860, 2040, 2610, 390}};
static constexpr double kTopoBarra = 2595;
static constexpr int kMaxSenha = 8; // characters
static constexpr NomesBarra kNomes{.primeiro = u"CmdProfPrim",
    .anterior = u"CmdProfAnt",
    .proximo = u"CmdProfProx",
    .ultimo = u"CmdProfUlt",
    .posicao = u"TxtProfResult",
    .grava = u"CmdProfSalvar",
    .novo = u"CmdProfNovo",
    .apaga = u"CmdProfExcluir",
    .cancela = u"CmdProfCancela"};

FrmClasses::FrmClasses(FrmCadAluno &alunos, QWidget *parent)
    : Quadro(kFrmClasses, u"Cadastro de Classes:"_s, parent), mAlunos(alunos)
{
    buildLayout();
    connectEvents();
    hide();
}

void FrmClasses::buildLayout()
{
    mTxtNomeClasse = novoCampo(kTxtNomeClasse, u"Nome da Classe"_s, this);
    novoRotulo(kLabel2, u"Nome da Classe"_s, mTxtNomeClasse, this);
    mTxtNomeProf = novoCampo(kTxtNomeProf, u"Nome do Professor"_s, this);
    novoRotulo(kLblNomeProf, u"Nome do Professor"_s, mTxtNomeProf, this);
    mTxtProfSenh = novoCampo(kTxtProfSenh, u"Digite a Senha"_s, this);
    mTxtProfSenh->setMaxLength(kMaxSenha);
    novoRotulo(kLblSenhaOrg, u"Digite a Senha"_s, mTxtProfSenh, this);
    mBarra = novaBarra(kNomes, kTopoBarra, this);
}

} // namespace quorel
