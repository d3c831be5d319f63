#include "cenario.h"

#include "shell/estado.h"
#include "shell/fatencao.h"
#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/fprincip.h"
#include "shell/imagem.h"
#include "shell/opcao_mes.h"
#include "support/suporte.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <array>
#include <set>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// Every control of every window: its name for a screen reader, its place in the round of the Tab key, its text.
class TstAcesso : public QObject
{
    Q_OBJECT
private slots:
    void everyControlHasAName();
    void tabReachesWhatCanBeUsed();
    void focusIsSeen();
    void picturesAreButtonsToAScreenReader();
    void textsFitTheirControls();
    void coloursAreTheWindowsOwn();
    void picturesAreSharp();
};

static QList<QWidget *> controls(const QWidget &janela)
{
    QList<QWidget *> found;
    for (QWidget *widget : janela.findChildren<QWidget *>()) {
        if (!widget->objectName().isEmpty() && !widget->objectName().startsWith(u"qt_"_s))
            found << widget;
    }
    return found;
}

void TstAcesso::everyControlHasAName()
{
    Cenario c(12);
    fAtencao aviso(nullptr);
    gImgApontada = 9; // the text of a tip is a control too, made with the first one
    QTRY_VERIFY(c.principal().findChild<QWidget *>(u"TxtInf"_s));
    for (const QWidget *janela :
        std::initializer_list<const QWidget *>{&c.principal(), &c.blocos(), &c.painel(), &aviso}) {
        QVERIFY(!controls(*janela).isEmpty());
        for (QWidget *controle : controls(*janela)) {
            const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(controle);
            QVERIFY2(interface && !interface->text(QAccessible::Name).isEmpty(), qPrintable(controle->objectName()));
        }
    }
}

// Goes once round by Tab, and by the arrows inside the group of months.
static std::set<QString> reached()
{
    std::set<QString> names;
    for (int i = 0; i < 100; ++i) {
        QWidget *focus = QApplication::focusWidget();
        if (!focus)
            break;
        names.insert(focus->objectName());
        const bool mes = qobject_cast<OpcaoMes *>(focus);
        QTest::keyClick(focus, mes ? Qt::Key_Down : Qt::Key_Tab);
        if (mes && names.contains(QApplication::focusWidget()->objectName()))
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    return names;
}

static std::array<QWidget *, 3> windows(Cenario &c)
{
    return {&c.principal(), &c.painel(), &c.blocos()};
}

/// Brings a window to the front as a user would. @return whether it came
static bool comesUp(Cenario &c, QWidget &janela)
{
    if (&janela == &c.blocos())
        QTest::mouseClick(&c.principal().bloco(2), Qt::LeftButton);
    janela.activateWindow();
    return QTest::qWaitForWindowActive(&janela);
}

void TstAcesso::tabReachesWhatCanBeUsed()
{
    Cenario c(12);
    for (QWidget *janela : windows(c)) {
        QVERIFY(comesUp(c, *janela));
        if (!QApplication::focusWidget())
            QTest::keyClick(janela, Qt::Key_Tab);
        const std::set<QString> names = reached();
        for (QAbstractButton *botao : janela->findChildren<QAbstractButton *>()) {
            if (botao->isVisible())
                QVERIFY2(names.contains(botao->objectName()), qPrintable(botao->objectName()));
        }
    }
}

// Whatever the Tab key reaches looks different while it has the focus.
void TstAcesso::focusIsSeen()
{
    Cenario c(12);
    for (QWidget *janela : windows(c)) {
        QVERIFY(comesUp(c, *janela));
        for (QWidget *controle : janela->findChildren<QWidget *>()) {
            if (!controle->isVisible() || !(controle->focusPolicy() & Qt::TabFocus))
                continue;
            controle->setFocus(Qt::TabFocusReason);
            const QImage with = controle->grab().toImage();
            controle->clearFocus();
            QVERIFY2(with != controle->grab().toImage(), qPrintable(controle->objectName()));
        }
    }
}

void TstAcesso::picturesAreButtonsToAScreenReader()
{
    Cenario c;
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&c.principal().bloco(9));
    QCOMPARE(interface->role(), QAccessible::Button);
    QCOMPARE(interface->text(QAccessible::Name), u"Matemática"_s);
    QCOMPARE(
        QAccessible::queryAccessibleInterface(&c.painel().opcao(1))->text(QAccessible::Name), u"Números & cores"_s);
}

static QSize inkOf(const QWidget &widget, const QString &text)
{
    return widget.fontMetrics().tightBoundingRect(text).size();
}

void TstAcesso::textsFitTheirControls()
{
    Cenario c(12);
    fAtencao aviso(nullptr);
    aviso.ensurePolished();
    for (const QWidget *janela :
        std::initializer_list<const QWidget *>{&c.principal(), &c.blocos(), &c.painel(), &aviso}) {
        for (const auto *label : janela->findChildren<QLabel *>()) {
            const QRect room = label->fontMetrics().boundingRect(label->rect(), Qt::TextWordWrap, label->text());
            QVERIFY2(label->text().isEmpty() || label->rect().contains(room.adjusted(0, 1, 0, -1)),
                qPrintable(label->objectName()));
        }
        for (const auto *botao : janela->findChildren<QPushButton *>()) {
            const QSize ink = inkOf(*botao, botao->text());
            QVERIFY2(ink.width() < botao->width() && ink.height() < botao->height(), qPrintable(botao->objectName()));
            QVERIFY2(
                botao->icon().isNull() || botao->iconSize().width() < botao->width(), qPrintable(botao->objectName()));
        }
    }
    for (int mes = 1; mes <= 12; ++mes)
        QVERIFY(inkOf(c.painel().opcao(mes), u"ÁÇgjp"_s).height() <= c.painel().opcao(mes).height() + 1);
    for (const auto *caixa : c.painel().findChildren<QCheckBox *>()) {
        for (const QString &linha : {caixa->text().section(u' ', 0, -2), caixa->text().section(u' ', -1)})
            QVERIFY2(inkOf(*caixa, linha).width() <= caixa->width() - 19, qPrintable(linha)); // 19: the box and its gap
        QVERIFY(2 * inkOf(*caixa, u"Fg"_s).height() <= caixa->height());
    }
}

// Contrast of two colours as accessibility rules count it, 1 to 21.
static double contrast(const QColor &a, const QColor &b)
{
    const auto channel = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    const auto luminance = [&](const QColor &c) {
        return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
    };
    const double high = std::max(luminance(a), luminance(b));
    const double low = std::min(luminance(a), luminance(b));
    return (high + 0.05) / (low + 0.05);
}

void TstAcesso::coloursAreTheWindowsOwn()
{
    QPalette dark(Qt::white, Qt::black);
    QApplication::setPalette(dark);
    Cenario c;
    const QPixmap painel = c.painel().grab();
    QCOMPARE(QColor(painel.toImage().pixel(5 * int(painel.devicePixelRatio()), 300 * int(painel.devicePixelRatio()))),
        QColor(0xff, 0xe0, 0xc0));
    const QColor laranja = c.painel().palette().color(QPalette::Window);
    QVERIFY(contrast(Qt::blue, laranja) >= 4.5);
    for (const auto *caixa : c.painel().findChildren<QCheckBox *>())
        QVERIFY(contrast(caixa->palette().color(QPalette::WindowText), laranja) >= 4.5);
    const auto &titulo = child<QLineEdit>(c.painel(), u"txtSelecMes"_s);
    QVERIFY(contrast(titulo.palette().color(QPalette::Text), titulo.palette().color(QPalette::Base)) >= 4.5);
    QApplication::setPalette(QPalette());
}

void TstAcesso::picturesAreSharp()
{
    Cenario c;
    const auto &ajuda = child<QPushButton>(c.principal(), u"CmdHelp"_s);
    const QPixmap face = ajuda.icon().pixmap(ajuda.iconSize(), qApp->devicePixelRatio());
    QCOMPARE(face.width(), int(28 * qApp->devicePixelRatio()));
}

QTEST_MAIN(TstAcesso)
#include "tst_acesso.moc"
