#include "licao/readingtools.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace quorel {

// Measures in pixels.
static constexpr int kSide = 44; // what a finger hits
static constexpr int kIcon = 26;

QIcon loudspeaker(QRgb cor, int side)
{
    constexpr double kDrawn = 24; // side of the drawing below
    QPixmap pixmap(side * 2, side * 2);
    pixmap.setDevicePixelRatio(2);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / kDrawn, side / kDrawn);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgb(cor));
    painter.drawPolygon(QPolygonF{{2, 9}, {7, 9}, {13, 3}, {13, 21}, {7, 15}, {2, 15}});
    painter.setPen(QPen(QColor::fromRgb(cor), 2));
    painter.setBrush(Qt::NoBrush);
    for (const int radius : {4, 8})
        painter.drawArc(QRect(13 - radius, 12 - radius, 2 * radius, 2 * radius), -60 * 16, 120 * 16);
    return QIcon(pixmap);
}

ReadingTools::ReadingTools(QRgb cor, QWidget *parent)
    : QWidget(parent), mRead(button(u"CmdLer"_s, {}, u"Ler em voz alta (F8)"_s)),
      mSmaller(button(u"CmdMenor"_s, u"A−"_s, u"Letras menores (Ctrl e −)"_s)),
      mLarger(button(u"CmdMaior"_s, u"A+"_s, u"Letras maiores (Ctrl e +)"_s))
{
    mRead->setIcon(loudspeaker(cor, kIcon));
    mRead->setIconSize({kIcon, kIcon});
    mRead->hide();
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    for (QPushButton *each : {mRead, mSmaller, mLarger})
        row->addWidget(each);
    connect(mRead, &QPushButton::clicked, this, &ReadingTools::read);
    connect(mSmaller, &QPushButton::clicked, this, [this] { emit zoom(-1); });
    connect(mLarger, &QPushButton::clicked, this, [this] { emit zoom(1); });
}

QPushButton *ReadingTools::button(const QString &name, const QString &face, const QString &tip)
{
    auto *made = new QPushButton(face, this);
    made->setObjectName(name);
    made->setToolTip(tip);
    made->setAccessibleName(tip.section(u" ("_s, 0, 0));
    made->setAutoDefault(true);
    made->setProperty("ferramenta", true);
    made->setFixedSize(kSide, kSide);
    return made;
}

void ReadingTools::setReadable(bool readable)
{
    mRead->setVisible(readable);
}

} // namespace quorel
