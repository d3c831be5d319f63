#include "visual/controles.h"

#include "visual/aparencia.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

namespace quorel {

static constexpr double kPontosMarca = 11.25;
static constexpr double kPontosTitulo = 14.25;
static constexpr int kLado = 14; // pixels of the box
static constexpr int kEspaco = 5; // pixels between box and caption

QPushButton *novoBotao(const LinhaLayout &linha, const QString &nomeFace, const QString &tip, QWidget *parent)
{
    auto *botao = new QPushButton(parent);
    botao->setObjectName(QString::fromUtf16(linha.nome));
    coloca(*botao, linha.lugar);
    const QIcon icon = face(nomeFace);
    botao->setIcon(icon);
    botao->setIconSize(icon.availableSizes().value(0));
    botao->setToolTip(tip);
    botao->setAccessibleName(tip);
    botao->setAutoDefault(true); // Enter presses it as Space does
    return botao;
}

QLabel *novoTitulo(const LinhaLayout &linha, const QString &texto, const QString &nome, QWidget *parent)
{
    auto *titulo = new QLabel(texto, parent);
    titulo->setObjectName(QString::fromUtf16(linha.nome));
    titulo->setAccessibleName(nome);
    titulo->setTextFormat(Qt::PlainText);
    titulo->setFont(fonte(Tipo::Arial, kPontosTitulo));
    QPalette paleta = titulo->palette();
    paleta.setColor(QPalette::WindowText, QColor::fromRgb(kAzul));
    titulo->setPalette(paleta);
    coloca(*titulo, linha.lugar);
    return titulo;
}

CaixaMarca::CaixaMarca(const LinhaLayout &linha, const QString &texto, QWidget *parent) : QCheckBox(texto, parent)
{
    setObjectName(QString::fromUtf16(linha.nome));
    setAccessibleName(texto);
    setFont(fonte(Tipo::TimesNewRoman, kPontosMarca, true));
    setCursor(Qt::PointingHandCursor);
    coloca(*this, linha.lugar);
}

// Two lines share the height evenly, which is less than the font's own spacing; the letters have the room.
void CaixaMarca::drawCaption(QPainter &painter, const QRect &area) const
{
    QStringList lines{text()};
    const qsizetype blank = text().lastIndexOf(u' ');
    if (blank > 0 && fontMetrics().horizontalAdvance(text()) > area.width())
        lines = {text().left(blank), text().mid(blank + 1)};
    const double step = double(area.height()) / double(lines.size());
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const double middle = area.top() + (double(i) + 0.5) * step;
        painter.drawText(QPointF(area.left(), middle + fontMetrics().capHeight() / 2.0), lines[i]);
    }
}

void CaixaMarca::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box(1, (height() - kLado) / 2.0, kLado, kLado);
    painter.setPen(QPen(QColor(0x59, 0x46, 0x33), 1.5));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(box, 3, 3);
    if (isChecked()) {
        QPainterPath tick(box.topLeft() + QPointF(3, 7));
        tick.lineTo(box.topLeft() + QPointF(6, 10.5));
        tick.lineTo(box.topLeft() + QPointF(11.5, 3.5));
        painter.setPen(QPen(QColor(0x1d, 0x6b, 0x2d), 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(tick);
    }
    const QRect caption = rect().adjusted(kLado + kEspaco, 0, 0, 0);
    painter.setPen(palette().color(QPalette::WindowText));
    drawCaption(painter, caption);
    if (hasFocus())
        pintaFoco(painter, caption.adjusted(-4, 0, 0, 0));
}

bool CaixaMarca::hitButton(const QPoint &pos) const
{
    return rect().contains(pos);
}

void CaixaMarca::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QCheckBox::keyPressEvent(event);
}

} // namespace quorel
