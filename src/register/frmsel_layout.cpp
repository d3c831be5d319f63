#include "register/frmsel.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr LinhaLayout kFrmSel{u"FrmSel", {2490, 120, 4650, 3225}};
static constexpr LinhaLayout kLblClasse{u"LblClasse", {180, 555, 4290, 285}};
static constexpr LinhaLayout kCmbClasse{u"CmbClasse", {180, 855, 4290, 420}};
static constexpr LinhaLayout kLabel1{u"Label1", {180, 1410, 4290, 285}};
static constexpr LinhaLayout kCmbAluno{u"CmbAluno", {180, 1710, 4290, 420}};
static constexpr LinhaLayout kCmdSelecionar{u"CmdSelecionar", {2520, 2460, 1950, 540}};

FrmSel::FrmSel(const Arredores &arredores, Abertura &abertura, QWidget *parent)
    : Quadro(kFrmSel, u"Selecionar Aluno"_s, parent), mArredores(arredores), mAbertura(abertura)
{
    buildLayout();
    connectEvents();
    hide();
}

void FrmSel::buildLayout()
{
    mCmbClasse = novoCombo(kCmbClasse, u"Classe"_s, this);
    mCmbAluno = novoCombo(kCmbAluno, u"Aluno"_s, this);
    novoRotulo(kLblClasse, u"Escolha uma Classe:"_s, mCmbClasse, this);
    novoRotulo(kLabel1, u"Escolha um Aluno:"_s, mCmbAluno, this);
    mCmdSelecionar = novoBotaoDeTexto(kCmdSelecionar, u"Selecionar"_s, this);
    mCmdSelecionar->setToolTip(u"Seleciona Aluno e Classe"_s);
}

} // namespace quorel
