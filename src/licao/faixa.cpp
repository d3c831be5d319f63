#include "licao/faixa.h"

#include "licao/aparencia.h"
#include "licao/typesize.h"
#include "visual/result_mark.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace quorel {

// Measures in pixels.
static constexpr int kAltura = 72;
static constexpr int kSinal = 52;
static constexpr int kMargem = 12;
static constexpr int kAlturaRetorno = 52;
static constexpr int kMarca = 32;
static constexpr int kMaxTitulo = 200; // characters

static QLabel *plainLabel(QWidget *parent, int letra, bool negrito, QRgb cor)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    setType(*label, letra, negrito);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, QColor::fromRgb(cor));
    label->setPalette(palette);
    return label;
}

Faixa::Faixa(Programa programa, QWidget *parent)
    : QWidget(parent), mPrograma(programa), mTitulo(plainLabel(this, kLetraTitulo, true, cores::kPapel)),
      mLado(plainLabel(this, kLetraBotao, false, cores::kPapel))
{
    mTitulo->setObjectName(u"LblTitulo"_s);
    mLado->setObjectName(u"LblLado"_s);
    mLado->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    mLado->setWordWrap(false);
    setMinimumHeight(kAltura);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(kSinal + 2 * kMargem, 4, kMargem, 4);
    row->addWidget(mTitulo, 1);
    row->addWidget(mLado);
    row->setSpacing(kMargem);
}

void Faixa::mostra(const QString &titulo, const QString &lado)
{
    const QString nome = carater(mPrograma).nome.toString();
    mTitulo->setText(quebravel(titulo.isEmpty() ? nome : titulo.simplified().left(kMaxTitulo)));
    mLado->setText(lado.isEmpty() && !titulo.isEmpty() ? nome : lado);
}

void Faixa::addTools(QWidget *tools)
{
    layout()->addWidget(tools);
}

void Faixa::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(carater(mPrograma).cor));
    pintaSinal(painter, mPrograma, QRectF(kMargem, (height() - kSinal) / 2.0, kSinal, kSinal));
}

Retorno::Retorno(QWidget *parent) : QWidget(parent), mTexto(plainLabel(this, kLetraBotao + 1, true, cores::kTexto))
{
    mTexto->setObjectName(u"LblRetorno"_s);
    setMinimumHeight(kAlturaRetorno);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(kMarca + 2 * kMargem, 6, kMargem, 6);
    row->addWidget(mTexto);
}

QString Retorno::texto() const
{
    return mTexto->text();
}

void Retorno::show(Tom tom, const QString &texto)
{
    mTom = tom;
    const QRgb cor = tom == Tom::Certo ? cores::kCerto : tom == Tom::Errado ? cores::kErrado : cores::kTexto;
    QPalette palette = mTexto->palette();
    palette.setColor(QPalette::WindowText, QColor::fromRgb(cor));
    mTexto->setPalette(palette);
    mTexto->setText(quebravel(texto));
    setAccessibleName(texto);
    QAccessibleEvent said(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
    update();
}

void Retorno::diz(bool certa, const QString &texto)
{
    show(certa ? Tom::Certo : Tom::Errado, texto);
}

void Retorno::pede(const QString &texto)
{
    show(Tom::Pedido, texto);
}

void Retorno::cala()
{
    show(Tom::Calado, {});
}

void Retorno::paintEvent(QPaintEvent *)
{
    if (mTom == Tom::Calado)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    if (mTom == Tom::Pedido)
        return;
    painter.setBrush(QColor::fromRgb(mTom == Tom::Certo ? cores::kFundoCerto : cores::kFundoErrado));
    painter.drawRoundedRect(rect(), 10, 10);
    paintResultMark(painter, mTom == Tom::Certo, QRectF(kMargem, (height() - kMarca) / 2.0, kMarca, kMarca));
}

} // namespace quorel
