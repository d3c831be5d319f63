#include "licao/calculadora.h"

#include "licao/aparencia.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

struct TeclaRec
{
    int linha, coluna, largura; ///< place and width in cells of the grid
    QStringView face;
    QStringView nome; ///< said by a screen reader; empty when the face says it
    char16_t tecla;
};

constexpr TeclaRec kTeclas[] = {
    {1, 0, 2, u"C", u"Limpar", u'C'},
    {1, 2, 1, u"←", u"Apagar o último", u'<'},
    {1, 3, 1, u"÷", u"Dividido por", u'/'},
    {2, 0, 1, u"7", u"", u'7'},
    {2, 1, 1, u"8", u"", u'8'},
    {2, 2, 1, u"9", u"", u'9'},
    {2, 3, 1, u"×", u"Vezes", u'*'},
    {3, 0, 1, u"4", u"", u'4'},
    {3, 1, 1, u"5", u"", u'5'},
    {3, 2, 1, u"6", u"", u'6'},
    {3, 3, 1, u"−", u"Menos", u'-'},
    {4, 0, 1, u"1", u"", u'1'},
    {4, 1, 1, u"2", u"", u'2'},
    {4, 2, 1, u"3", u"", u'3'},
    {4, 3, 1, u"+", u"Mais", u'+'},
    {5, 0, 2, u"0", u"", u'0'},
    {5, 2, 1, u",", u"Vírgula", u','},
    {5, 3, 1, u"=", u"Igual a", u'='},
};

constexpr int kLargura = 290; // pixels
constexpr int kColunas = 4;

/// The calculator's key for a key of the keyboard; 0 when it has none.
char16_t keyOf(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Backspace:
        return u'<';
    case Qt::Key_Delete:
        return u'C';
    case Qt::Key_X:
        return u'*';
    case Qt::Key_Period:
        return u',';
    default:
        break;
    }
    const QString text = event.text().toUpper();
    return text.size() == 1 && QStringView(u"0123456789,+-*/=C").contains(text[0]) ? text[0].unicode() : u'\0';
}

} // namespace

Calculadora::Calculadora(QWidget *parent)
    : QWidget(parent), mVisor(new QLabel(u"0"_s, this)), mUsa(new QPushButton(u"Usar na resposta"_s, this))
{
    setObjectName(u"Calculadora"_s);
    setAccessibleName(u"Calculadora"_s);
    setFocusPolicy(Qt::StrongFocus);
    setFixedWidth(kLargura);
    mVisor->setObjectName(u"LblVisor"_s);
    mVisor->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    mVisor->setStyleSheet(u"background: #101820; color: #E8FFE8; font-size: 32px; padding: 8px; border-radius: 8px;"_s);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(6);
    grid->addWidget(mVisor, 0, 0, 1, kColunas);
    for (const TeclaRec &key : kTeclas)
        grid->addWidget(
            addKey(key.face.toString(), key.nome.toString(), key.tecla), key.linha, key.coluna, 1, key.largura);
    grid->addWidget(mUsa, 6, 0, 1, kColunas);
    grid->setRowStretch(7, 1);
    mUsa->setObjectName(u"CmdUsar"_s);
    mUsa->setAutoDefault(true);
    mUsa->hide();
    connect(mUsa, &QPushButton::clicked, this, [this] { emit usa(mConta.visor()); });
}

QPushButton *Calculadora::addKey(const QString &face, const QString &nome, char16_t tecla)
{
    auto *button = new QPushButton(face, this);
    button->setObjectName(u"Tecla"_s + QChar(tecla));
    if (!nome.isEmpty())
        button->setAccessibleName(nome);
    button->setProperty("principal", tecla == u'=');
    button->setStyleSheet(u"padding: 4px; font-size: 24px; min-height: 30px;"_s);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QPushButton::clicked, this, [this, tecla] { press(tecla); });
    return button;
}

void Calculadora::setUsavel(bool usavel)
{
    mUsa->setVisible(usavel);
}

void Calculadora::press(char16_t tecla)
{
    mConta.tecla(tecla);
    mVisor->setText(mConta.visor());
}

void Calculadora::keyPressEvent(QKeyEvent *event)
{
    if (const char16_t key = keyOf(*event))
        press(key);
    else
        QWidget::keyPressEvent(event);
}

} // namespace quorel
