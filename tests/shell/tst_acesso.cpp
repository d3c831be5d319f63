#include "cenario.h"

#include "shell/estado.h"
#include "shell/fatencao.h"
#include "shell/opcao_mes.h"
#include "support/acesso.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// Every control of every window: its name for a screen reader, its place in the round of the Tab key and on the
/// window, its text.
class TstAcesso : public QObject
{
    Q_OBJECT
private slots:
    void everyControlHasAName();
    void tabReachesWhatCanBeUsed();
    void focusIsSeen();
    void picturesAreButtonsToAScreenReader();
    void textsFitTheirControls();
    void placesAreRoundedFromTwips_data();
    void placesAreRoundedFromTwips();
    void coloursAreTheWindowsOwn();
    void picturesAreSharp();
};

void TstAcesso::everyControlHasAName()
{
    Cenario c(12);
    gImgApontada = 9; // the text of a tip is a control too, made with the first one
    QTRY_VERIFY(c.principal().findChild<QWidget *>(u"TxtInf"_s));
    todosTemNome(c.principal());
    todosTemNome(c.blocos());
    todosTemNome(c.painel());
    todosTemNome(fAtencao(nullptr));
}

/// Brings each of the windows to the front in turn, as a user would.
template <typename Look>
static void lookAtEach(Cenario &c, Look look)
{
    for (QWidget *janela : std::initializer_list<QWidget *>{&c.principal(), &c.painel(), &c.blocos()}) {
        if (janela == &c.blocos())
            c.clica(u"ImgBloco(2)"_s);
        janela->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(janela));
        look(*janela);
    }
}

void TstAcesso::tabReachesWhatCanBeUsed()
{
    Cenario c(12);
    lookAtEach(c, [](QWidget &janela) {
        const QStringList names = voltaDoTab(janela);
        QVERIFY(!names.contains(u"LstAlunos"_s)); // behind the months
        for (const auto *botao : janela.findChildren<QAbstractButton *>())
            QVERIFY2(!botao->isVisible() || names.contains(botao->objectName()), qPrintable(botao->objectName()));
    });
}

// Whatever the Tab key reaches looks different while it has the focus.
void TstAcesso::focusIsSeen()
{
    Cenario c(12);
    lookAtEach(c, [](QWidget &janela) {
        for (QWidget *controle : janela.findChildren<QWidget *>()) {
            if (!controle->isVisible() || !(controle->focusPolicy() & Qt::TabFocus))
                continue;
            controle->setFocus(Qt::TabFocusReason);
            const QImage with = controle->grab().toImage();
            controle->clearFocus();
            QVERIFY2(with != controle->grab().toImage(), qPrintable(controle->objectName()));
        }
    });
}

void TstAcesso::picturesAreButtonsToAScreenReader()
{
    Cenario c;
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&c.principal().bloco(9));
    QCOMPARE(interface->role(), QAccessible::Button);
    QCOMPARE(interface->text(QAccessible::Name), u"Matemática"_s);
}

void TstAcesso::textsFitTheirControls()
{
    Cenario c(12);
    fAtencao aviso(nullptr);
    aviso.ensurePolished();
    for (const QWidget *janela :
        std::initializer_list<const QWidget *>{&c.principal(), &c.blocos(), &c.painel(), &aviso})
        textosCabem(*janela);
    for (int mes = 1; mes <= 12; ++mes)
        QVERIFY(c.painel().opcao(mes).fontMetrics().tightBoundingRect(u"ÁÇgjp"_s).height()
            <= c.painel().opcao(mes).height() + 1);
    for (const auto *caixa : c.painel().findChildren<QCheckBox *>()) {
        cabe(*caixa, caixa->text().section(u' ', 0, -2), 19); // 19: the box and its gap
        cabe(*caixa, caixa->text().section(u' ', -1), 19);
        QVERIFY(2 * caixa->fontMetrics().tightBoundingRect(u"Fg"_s).height() <= caixa->height());
    }
}

void TstAcesso::placesAreRoundedFromTwips_data()
{
    QTest::addColumn<QString>("janela");
    QTest::addColumn<QString>("nome"); // empty: the window's own size
    QTest::addColumn<QRect>("lugar"); // pixels
    const auto add = [](const QString &janela, const QString &nome, const QRect &lugar) {
        QTest::addRow("%s %s", qPrintable(janela), qPrintable(nome)) << janela << nome << lugar;
    };
    add("fPrincip", "", {0, 0, 528, 551});
    add("fPrincip", "ImgBloco(5)", {223, 404, 85, 85});
    add("fPrincip", "LblMes", {16, 564, 21, 22}); // unused, below the edge
    add("fPrincip", "FrmTip", {176, 152, 226, 37});
    add("fBlocos", "", {0, 0, 528, 552});
    add("fBlocos", "ImgBotao(16)", {436, 420, 85, 85});
    add("fBlocos", "CmdJogos(15)", {80, 256, 21, 21}); // third of the fifth picture
    add("fBlocos", "CmdJogos(45)", {356, 512, 21, 21});
    add("fBlocos", "CmdJogos(46)", {440, 512, 21, 21}); // the last three stand 60 twips further
    add("fBlocos", "FrmTip", {64, 424, 294, 37});
    add("fAux", "", {0, 0, 218, 551}); // as high as fPrincip
    add("fAux", "txtSelecMes", {-6, 0, 217, 19});
    add("fAux", "OptMeses(2)", {1, 60, 201, 14});
    add("fAux", "LstAlunos", {4, 20, 101, 290});
}

void TstAcesso::placesAreRoundedFromTwips()
{
    QFETCH(QString, janela);
    QFETCH(QString, nome);
    QFETCH(QRect, lugar);
    Cenario c;
    const QWidget &alvo = janela == u"fAux"_s ? static_cast<QWidget &>(c.painel())
        : janela == u"fBlocos"_s              ? static_cast<QWidget &>(c.blocos())
                                              : c.principal();
    QCOMPARE(nome.isEmpty() ? QRect({}, alvo.size()) : child<QWidget>(alvo, nome).geometry(), lugar);
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
    QApplication::setPalette(QPalette(Qt::white, Qt::black)); // of a dark desktop
    Cenario c;
    const QPixmap painel = c.painel().grab();
    const QColor laranja(0xff, 0xe0, 0xc0);
    QCOMPARE(painel.toImage().pixelColor(QPoint(5, 300) * painel.devicePixelRatio()), laranja);
    QVERIFY(contrast(Qt::blue, laranja) >= 4.5);
    for (const auto *caixa : c.painel().findChildren<QCheckBox *>())
        QVERIFY(contrast(caixa->palette().color(QPalette::WindowText), laranja) >= 4.5);
    const QPalette titulo = child<QLineEdit>(c.painel(), u"txtSelecMes"_s).palette();
    QVERIFY(contrast(titulo.color(QPalette::Text), titulo.color(QPalette::Base)) >= 4.5);
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
