#include "register/quadro.h"

#include "data/ligacoes.h"
#include "visual/aparencia.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr double kPontosTitulo = 12;
static constexpr QRgb kCartao = 0xfffffaf4;
static constexpr QRgb kBorda = 0xffe0b384;
static constexpr QRect kTitulo{12, 7, 600, 22}; // pixels
static constexpr double kRaio = 10; // pixels

Quadro::Quadro(const LinhaLayout &linha, const QString &titulo, QWidget *parent) : QGroupBox(titulo, parent)
{
    setObjectName(QString::fromUtf16(linha.nome));
    setAccessibleName(titulo);
    coloca(*this, linha.lugar);
}

void Quadro::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QColor::fromRgb(kBorda));
    painter.setBrush(QColor::fromRgb(kCartao));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRaio, kRaio);
    painter.setFont(fonte(Tipo::Arial, kPontosTitulo));
    painter.setPen(QColor::fromRgb(kAzul));
    painter.drawText(kTitulo, Qt::AlignLeft | Qt::AlignVCenter, title());
}

Legenda::Legenda(const QString &nome, const Lugar &lugar, const QString &texto, QWidget *parent)
    : QRadioButton(texto, parent)
{
    setObjectName(nome);
    setAccessibleName(texto);
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    coloca(*this, lugar);
}

void Legenda::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), Qt::AlignCenter, text());
}

static void names(QWidget &controle, const LinhaLayout &linha, const QString &nome)
{
    controle.setObjectName(QString::fromUtf16(linha.nome));
    controle.setAccessibleName(nome);
    coloca(controle, linha.lugar);
}

QLabel *novoRotulo(const LinhaLayout &linha, const QString &texto, QWidget *dono, QWidget *parent)
{
    auto *rotulo = new QLabel(texto, parent);
    names(*rotulo, linha, QString());
    rotulo->setTextFormat(Qt::PlainText);
    rotulo->setBuddy(dono);
    return rotulo;
}

QLineEdit *novoCampo(const LinhaLayout &linha, const QString &nome, QWidget *parent)
{
    auto *campo = new QLineEdit(parent);
    names(*campo, linha, nome);
    QObject::connect(campo, &QLineEdit::editingFinished, campo, [campo] { campo->setCursorPosition(0); });
    return campo;
}

void showText(QLineEdit &campo, const QString &texto)
{
    campo.setText(texto);
    campo.setCursorPosition(0);
}

QComboBox *novoCombo(const LinhaLayout &linha, const QString &nome, QWidget *parent)
{
    auto *combo = new QComboBox(parent);
    names(*combo, linha, nome);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon); // never measures all its rows
    LigacaoCombo::of(*combo); // before anybody hears of its changes
    const auto home = [combo] { combo->lineEdit()->setCursorPosition(0); };
    QObject::connect(combo, &QComboBox::activated, combo, home);
    QObject::connect(combo->lineEdit(), &QLineEdit::editingFinished, combo, home);
    QPalette paleta;
    paleta.setColor(QPalette::AlternateBase, QColor::fromRgb(kCartao)); // the style draws the frame from Window
    combo->setPalette(paleta);
    combo->setBackgroundRole(QPalette::AlternateBase);
    combo->setAutoFillBackground(true); // nothing behind it is painted again when its text or its rows change
    return combo;
}

QPushButton *novoBotaoDeTexto(const LinhaLayout &linha, const QString &texto, QWidget *parent)
{
    auto *botao = new QPushButton(texto, parent);
    names(*botao, linha, texto);
    botao->setAutoDefault(true); // Enter presses it as Space does
    return botao;
}

} // namespace quorel
