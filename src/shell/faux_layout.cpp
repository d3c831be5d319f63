#include "shell/faux.h"
#include "shell/opcao_mes.h"
#include "shell/rolagem.h"
#include "visual/aparencia.h"
#include "visual/controles.h"

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr double kPontosQuadro = 12;
static constexpr int kPassoPequeno = 500; // twips
static constexpr int kPassoGrande = 1000; // twips

static constexpr LinhaLayout kFrmMeses{u"FrmMeses", {0, 0, 3255, 6615}};
static constexpr LinhaLayout kTxtSelecMes{u"txtSelecMes", {-90, 0, 3255, 285}};
static constexpr Lugar kOptMeses{0, 0, 3015, 210};
static constexpr LinhaLayout kScrVertical{u"scrVertical", {3060, 270, 210, 6315}};
static constexpr LinhaLayout kFrmSelecAluno{u"FrmSelecAluno", {0, 0, 1635, 4815}};
static constexpr LinhaLayout kLstAlunos{u"LstAlunos", {60, 300, 1515, 4350}};
static constexpr LinhaLayout kLabel1{u"Label1", {345, 0, 900, 285}};
static constexpr LinhaLayout kCmdAluno{u"CmdAluno", {630, 6690, 735, 735}};
static constexpr LinhaLayout kCmdDesemp{u"CmdDesemp", {630, 6690, 735, 735}};
static constexpr LinhaLayout kCmdInternet{u"CmdInternet", {1950, 6690, 735, 735}};
static constexpr LinhaLayout kChkSelec{u"chkSelec", {60, 7530, 1515, 495}};
static constexpr LinhaLayout kChkFig{u"ChkFig", {1680, 7590, 1515, 495}};

namespace {

/// A frame that hides what lies behind it with the panel's own picture. As a brush of the palette it would be tiled,
/// for which Qt starts threads.
class QuadroOpaco final : public QFrame
{
public:
    explicit QuadroOpaco(QWidget *parent) : QFrame(parent), mFundo(u"fundo_painel"_s)
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QPainter painter(this);
        mFundo.paint(painter, event->rect());
    }

private:
    Fundo mFundo; ///< larger than the frame
};

/// A scroll bar that shows when it has the focus, which the style leaves out.
class BarraRolagem final : public QScrollBar
{
public:
    explicit BarraRolagem(QWidget *parent) : QScrollBar(Qt::Vertical, parent) { }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QScrollBar::paintEvent(event);
        if (!hasFocus())
            return;
        QPainter painter(this);
        pintaFoco(painter, rect(), 0);
    }
};

} // namespace

static QFrame *novoQuadro(QFrame *quadro, const LinhaLayout &linha, const QString &nome)
{
    quadro->setObjectName(QString::fromUtf16(linha.nome));
    quadro->setAccessibleName(nome);
    quadro->setFont(fonte(Tipo::Arial, kPontosQuadro));
    coloca(*quadro, linha.lugar);
    return quadro;
}

void fAux::buildLayout()
{
    QPalette paleta = palette();
    paleta.setColor(QPalette::Window, QColor::fromRgb(kLaranjaPalido));
    setPalette(paleta);
    setFundo(u"fundo_painel"_s);
    setWindowTitle(u" "_s); // no caption; Qt would put the program's name in the place of an empty one
    buildAlunos();
    buildMeses();
    buildBotoes();
}

void fAux::buildMeses()
{
    mFrmMeses = novoQuadro(new QuadroOpaco(this), kFrmMeses, u"Temas"_s); // the pupil list lies behind
    mTxtSelecMes = new QLineEdit(u"TEMAS"_s, mFrmMeses);
    mTxtSelecMes->setObjectName(QString::fromUtf16(kTxtSelecMes.nome));
    mTxtSelecMes->setAccessibleName(u"Temas"_s);
    mTxtSelecMes->setReadOnly(true);
    mTxtSelecMes->setFocusPolicy(Qt::NoFocus);
    mTxtSelecMes->setContextMenuPolicy(Qt::NoContextMenu); // a heading: there is nothing to copy
    mTxtSelecMes->setCursor(Qt::ArrowCursor);
    connect(mTxtSelecMes, &QLineEdit::selectionChanged, mTxtSelecMes, &QLineEdit::deselect);
    mTxtSelecMes->setAlignment(Qt::AlignCenter);
    mTxtSelecMes->setFont(fonte(Tipo::Arial, kPontosQuadro));
    QPalette paleta = mTxtSelecMes->palette();
    paleta.setColor(QPalette::Text, QColor::fromRgb(kVermelho));
    mTxtSelecMes->setPalette(paleta);
    coloca(*mTxtSelecMes, kTxtSelecMes.lugar);

    mScrVertical = new BarraRolagem(mFrmMeses);
    mScrVertical->setObjectName(QString::fromUtf16(kScrVertical.nome));
    mScrVertical->setAccessibleName(u"Rolar os temas"_s);
    mScrVertical->setRange(kRolagemInicial, kRolagemInicial);
    mScrVertical->setSingleStep(kPassoPequeno);
    mScrVertical->setPageStep(kPassoGrande);
    mScrVertical->setTracking(false); // dragging the thumb moves nothing until it is let go
    mScrVertical->setFocusPolicy(Qt::StrongFocus);
    coloca(*mScrVertical, kScrVertical.lugar);
    mScrVertical->hide();

    mOptMeses.push_back(new OpcaoMes(0, kOptMeses, mFrmMeses));
    mOptMeses.front()->setCaption(u"01"_s);
    mTxtSelecMes->raise();
}

void fAux::buildAlunos()
{
    mFrmSelecAluno = novoQuadro(new QFrame(this), kFrmSelecAluno, u"Alunos"_s);
    auto *label = new QLabel(u"Alunos:"_s, mFrmSelecAluno);
    label->setObjectName(QString::fromUtf16(kLabel1.nome));
    coloca(*label, kLabel1.lugar);
    mLstAlunos = new QListView(mFrmSelecAluno);
    mLstAlunos->setObjectName(QString::fromUtf16(kLstAlunos.nome));
    mLstAlunos->setAccessibleName(u"Alunos"_s);
    mLstAlunos->setFocusPolicy(Qt::ClickFocus); // behind the months: the Tab key would lead to what nobody sees
    coloca(*mLstAlunos, kLstAlunos.lugar);
}

void fAux::buildBotoes()
{
    mCmdAluno = novoBotao(kCmdAluno, u"cadastro"_s, u"Formulário auxiliar."_s, this);
    mCmdDesemp = novoBotao(kCmdDesemp, u"desempenho"_s, u"Desempenho do Aluno"_s, this);
    mCmdInternet = novoBotao(kCmdInternet, u"internet"_s, u"Acesse nossa página"_s, this);
    mChkSelec = new CaixaMarca(kChkSelec, u"Seleciona Roteiros"_s, this);
    mChkFig = new CaixaMarca(kChkFig, u"Copiar as Figuras"_s, this);
    for (QWidget *oculto : std::initializer_list<QWidget *>{mCmdAluno, mCmdDesemp, mChkSelec})
        oculto->hide();
}

} // namespace quorel
