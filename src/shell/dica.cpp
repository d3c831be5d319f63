#include "shell/dica.h"

#include "platform/twips.h"
#include "shell/geometria_dica.h"
#include "visual/aparencia.h"

#include <QEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTextDocument>

#include <algorithm>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr double kPontos = 9.75;
static constexpr int kBorda = 2; // pixels
static constexpr int kRecuoEsquerdo = 10; // pixels from the frame to the text
static constexpr int kRecuoDireito = 15; // likewise; 25 characters still find room in a line

Dica::Dica(const Lugar &frame, const Lugar &box, QWidget *parent)
    : QFrame(parent), mLugar(frame), mLugarTexto(box), mCor(kAzulClaro)
{
    setObjectName(u"FrmTip"_s);
    setAccessibleName(u"Dica"_s);
    setMouseTracking(true);
    coloca(*this, mLugar);
    hide();
}

namespace {

/// A text box whose text keeps away from the edges.
class CaixaRecuada final : public QPlainTextEdit
{
public:
    CaixaRecuada(int left, int right, QWidget *parent) : QPlainTextEdit(parent)
    {
        setViewportMargins(left, 0, right, 0);
    }
};

} // namespace

/// Pixels that are missing between an edge of the box and that of the frame.
static int missing(int wanted, double twips)
{
    return std::max(wanted - pixels(twips), 0);
}

void Dica::buildTxtInf()
{
    // The box ends at the frame's border, and the frame may end beyond the window's edge.
    const double beside = mLugar.Width - mLugarTexto.Left - mLugarTexto.Width;
    mTxtInf = new CaixaRecuada(missing(kRecuoEsquerdo, mLugarTexto.Left), missing(kRecuoDireito, beside), this);
    mTxtInf->setContextMenuPolicy(Qt::NoContextMenu);
    mTxtInf->setObjectName(u"TxtInf"_s);
    mTxtInf->setAccessibleName(u"Texto da dica"_s);
    mTxtInf->setReadOnly(true);
    mTxtInf->setUndoRedoEnabled(false);
    mTxtInf->setFocusPolicy(Qt::NoFocus);
    mTxtInf->setFrameShape(QFrame::NoFrame);
    mTxtInf->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    mTxtInf->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    mTxtInf->setFont(fonte(Tipo::CourierNew, kPontos));
    mTxtInf->document()->setDocumentMargin(0);
    mTxtInf->viewport()->setMouseTracking(true);
    mTxtInf->viewport()->installEventFilter(this);
    coloca(*mTxtInf, mLugarTexto);
    mTxtInf->show();
    setCor(mCor);
}

void Dica::setTexto(const QString &texto)
{
    mTexto = texto;
    if (!mTxtInf && texto.isEmpty())
        return;
    if (!mTxtInf)
        buildTxtInf();
    mTxtInf->setPlainText(texto);
}

void Dica::setCor(QRgb cor)
{
    mCor = cor;
    if (!mTxtInf)
        return;
    QPalette paleta = mTxtInf->palette();
    paleta.setColor(QPalette::Base, Qt::transparent); // the frame's border runs under the corners of the box
    paleta.setColor(QPalette::Text, QColor::fromRgb(cor));
    mTxtInf->setPalette(paleta);
}

void Dica::setLugar(const Lugar &lugar)
{
    mLugar = lugar;
    coloca(*this, mLugar);
}

void Dica::setAlturaTexto(double altura)
{
    mLugarTexto.Height = altura;
    if (mTxtInf)
        coloca(*mTxtInf, mLugarTexto);
    Lugar frame = mLugar;
    frame.Height = altura + kMargemDica;
    setLugar(frame);
}

void Dica::arredonda(quint8 raio)
{
    mRaio = raio;
    ArredondaJanela(*this, mLugar, raio);
}

void Dica::mostra()
{
    show();
    raise();
}

void Dica::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), QColor::fromRgb(kFundoDica));
    painter.setPen(QPen(QColor(0x8a, 0x86, 0x5a), kBorda));
    const double raio = mRaio / 2.0 - 1; // the line runs inside the region
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), raio, raio);
}

void Dica::mouseMoveEvent(QMouseEvent *)
{
    emit tocada();
}

bool Dica::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseMove)
        emit tocada();
    return QFrame::eventFilter(watched, event);
}

} // namespace quorel
