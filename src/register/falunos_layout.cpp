#include "register/falunos.h"

#include "register/frmcadaluno.h"
#include "register/frmclasses.h"
#include "register/frmsel.h"
#include "register/login.h"
#include "visual/aparencia.h"
#include "visual/controles.h"

#include <QLabel>
#include <QPushButton>

#include <array>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr double kPontos = 9.75;
static constexpr LinhaLayout kFrmAluno{u"FrmAluno", {120, 120, 2250, 7920}};
static constexpr LinhaLayout kCmdFecha{u"CmdFecha", {180, 7260, 1890, 480}};
static constexpr LinhaLayout kLblEspera{u"LblEspera", {90, 5130, 2070, 2010}};
static constexpr double kLadoBotao = 960; // twips
static constexpr double kLeftBotao = 645; // twips
static constexpr Lugar kLegenda{45, 1020, 2160, 285}; // below its button, twips

/// A large button, from 1, and its caption.
struct LinhaOpcao
{
    const char16_t *nome;
    const char16_t *face;
    const char16_t *tip;
    const char16_t *legenda;
    double top; ///< twips
    bool visivel;
};

// Kept: the last two captions don't go together; nothing shows either of them.
static constexpr std::array<LinhaOpcao, 6> kOpcoes{{
    {u"CmdAluno(1)", u"manual", u"Histórico de Aulas", u"Histórico de Aulas", 5130, false},
    {u"CmdAluno(2)", u"selecionar", u"Selecionar Aluno", u"Selecionar Aluno", 630, true},
    {u"CmdAluno(3)", u"cadastro", u"Cadastrar Aluno", u"Cadastrar Aluno", 2130, true},
    {u"CmdAluno(4)", u"desempenho", u"Desempenho do Aluno", u"Desempenho do ALuno", 3630, true},
    {u"CmdAluno(5)", u"revista", u"Selecionar Curso", u"Selecionar Curso", 5130, false},
    {u"CmdAluno(6)", u"quorel", u"Cadastrar Blocos", u"Cadastrar Professor", 5130, false},
}};

void fAlunos::buildLayout()
{
    QPalette paleta = palette();
    paleta.setColor(QPalette::Window, QColor::fromRgb(kLaranjaPalido));
    setPalette(paleta);
    setFont(fonte(Tipo::Arial, kPontos));
    setFundo(u"fundo_cadastro"_s);
    setWindowTitle(u"Cadastros"_s);
    buildOpcoes();
    mFrmSel = new FrmSel(mArredores, mAbertura, this);
    mFrmCadAluno = new FrmCadAluno(this);
    mFrmClasses = new FrmClasses(*mFrmCadAluno, this);
}

void fAlunos::buildOpcoes()
{
    auto *frmAluno = new Quadro(kFrmAluno, u"Opções"_s, this);
    for (int i = 0; const LinhaOpcao &opcao : kOpcoes) {
        QPushButton *botao = novoBotao({opcao.nome, {kLeftBotao, opcao.top, kLadoBotao, kLadoBotao}},
            QString::fromUtf16(opcao.face), QString::fromUtf16(opcao.tip), frmAluno);
        auto *legenda = new Legenda(u"OptAluno(%1)"_s.arg(i),
            {kLegenda.Left, opcao.top + kLegenda.Top, kLegenda.Width, kLegenda.Height},
            QString::fromUtf16(opcao.legenda), frmAluno);
        botao->setVisible(opcao.visivel);
        legenda->setVisible(opcao.visivel);
        mCmdAluno.push_back(botao);
        ++i;
    }
    mLblEspera = novoRotulo(kLblEspera, {}, nullptr, frmAluno);
    mLblEspera->setWordWrap(true);
    mLblEspera->setAlignment(Qt::AlignHCenter | Qt::AlignBottom);
    mLblEspera->setTextFormat(Qt::PlainText);
    mLblEspera->hide();
    mCmdFecha = novoBotaoDeTexto(kCmdFecha, u"Fecha Histórico"_s, frmAluno);
}

} // namespace quorel
