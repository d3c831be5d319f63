#include "licao/janelalicao.h"

#include "licao/aparencia.h"
#include "licao/calculadora.h"
#include "licao/digitacao.h"
#include "licao/editor.h"
#include "licao/faixa.h"
#include "licao/readingtools.h"

#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace quorel {

// Measures in pixels.
static constexpr QSize kMinimo(780, 540); // fits a screen of 800 by 600; what the shell's placing comes down to
static constexpr QSize kTamanho(1000, 690);
static constexpr QSize kMoldura(10, 36); // what the desktop draws around a window
static constexpr QSize kProgresso(0, 44); // where the shell shows how far the Roteiro is
static constexpr int kMargem = 16;
static constexpr int kLadoIcone = 64;

namespace {

/// The inner window. The shell places it too, with a size of 0: it takes its room in the window back.
class Miolo final : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void resizeEvent(QResizeEvent *) override { updateGeometry(); }
    void moveEvent(QMoveEvent *) override { updateGeometry(); }
};

QIcon sign(Programa programa)
{
    QPixmap pixmap(kLadoIcone, kLadoIcone);
    pixmap.fill(QColor::fromRgb(carater(programa).cor));
    QPainter painter(&pixmap);
    constexpr int kBorda = 6;
    pintaSinal(painter, programa, QRectF(pixmap.rect()).adjusted(kBorda, kBorda, -kBorda, -kBorda));
    return QIcon(pixmap);
}

} // namespace

void JanelaLicao::buildLayout()
{
    const CaraterRec &qual = carater(mPrograma);
    setObjectName(qual.arquivo.toString());
    setWindowTitle(qual.titulo.toString());
    setWindowIcon(sign(mPrograma));
    setStyleSheet(folhaDeEstilo(mPrograma));
    setMinimumSize(kMinimo);
    resize(kTamanho.boundedTo(screen()->availableSize() - kMoldura - kProgresso));

    mFaixa = new Faixa(mPrograma, this);
    mTools = new ReadingTools(carater(mPrograma).cor, mFaixa);
    mFaixa->addTools(mTools);
    mMiolo = new Miolo(this);
    mMiolo->setMinimumSize(kMinimo.width() / 2, kMinimo.height() / 2);
    mRolagem = new QScrollArea(mMiolo);
    mRolagem->setWidgetResizable(true);
    mRolagem->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    mRolagem->viewport()->setAutoFillBackground(false);
    mRolagem->setFocusPolicy(Qt::NoFocus);
    mColunas = new QHBoxLayout(mMiolo);
    mColunas->setContentsMargins(kMargem, kMargem, kMargem, 0);
    mColunas->setSpacing(kMargem);
    mColunas->addWidget(mRolagem, 1);
    if (mPrograma == Programa::Calc) {
        mCalculadora = new Calculadora(mMiolo);
        mColunas->addWidget(mCalculadora);
    }
    mEditor = new Editor(mMiolo);
    mColunas->addWidget(mEditor, 3); // three times the room of the lesson's text

    auto *foot = new QVBoxLayout;
    foot->setContentsMargins(kMargem, 8, kMargem, kMargem);
    mRetorno = new Retorno(this);
    foot->addWidget(mRetorno);
    foot->addLayout(buildButtons());

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(mFaixa);
    column->addWidget(mMiolo, 1);
    column->addLayout(foot);
}

QHBoxLayout *JanelaLicao::buildButtons()
{
    const auto button = [this](const QString &nome, const QString &face) {
        auto *made = new QPushButton(face, this);
        made->setObjectName(nome);
        made->setAutoDefault(true); // the Enter key presses the one that has the focus
        return made;
    };
    mConfere = button(u"CmdConferir"_s, u"&Conferir"_s);
    mProxima = button(u"CmdProxima"_s, u"&Próxima"_s);
    mAnterior = button(u"CmdAnterior"_s, u"&Anterior"_s);
    mSai = button(u"CmdSair"_s, u"&Sair"_s);
    auto *row = new QHBoxLayout;
    row->setSpacing(kMargem);
    row->addWidget(mSai);
    row->addStretch();
    for (QPushButton *each : {mAnterior, mConfere, mProxima})
        row->addWidget(each);
    return row;
}

void JanelaLicao::connectEvents()
{
    connect(mSai, &QPushButton::clicked, this, &JanelaLicao::sai);
    connect(mAnterior, &QPushButton::clicked, this, &JanelaLicao::goBack);
    connect(mConfere, &QPushButton::clicked, this, &JanelaLicao::check);
    connect(mProxima, &QPushButton::clicked, this, &JanelaLicao::goOn);
    if (mCalculadora) {
        connect(mCalculadora, &Calculadora::usa, this, [this](const QString &numero) {
            if (auto *digitacao = qobject_cast<Digitacao *>(mExercicio))
                digitacao->preenche(numero);
        });
    }
}

} // namespace quorel
