#include "cenario_cadastro.h"

#include "register/estado.h"
#include "register/login.h"
#include "startup/estado.h"
#include "support/suporte.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// Every control of the teacher's windows: its name for a screen reader, its place in the round of the Tab key, its
/// text and its place beside the others.
class TstAcessoCadastro : public QObject
{
    Q_OBJECT
private slots:
    void everyControlHasAName();
    void tabReachesWhatCanBeUsed_data();
    void tabReachesWhatCanBeUsed();
    void loginIsReachedByTab();
    void passwordIsNotReadAloud();
    void textsFitTheirControls();
    void controlsDontOverlap();
    void labelsArePlain();
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

void TstAcessoCadastro::everyControlHasAName()
{
    CenarioCadastro c;
    for (const QWidget *janela : std::initializer_list<const QWidget *>{&c.alunos(), &c.login()}) {
        QVERIFY(!controls(*janela).isEmpty());
        for (QWidget *controle : controls(*janela)) {
            const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(controle);
            QVERIFY2(interface && !interface->text(QAccessible::Name).isEmpty(), qPrintable(controle->objectName()));
        }
    }
}

// The names met in one round of the Tab key, in its order.
static QStringList reached(QWidget &janela)
{
    janela.activateWindow();
    if (!QTest::qWaitForWindowActive(&janela))
        return {};
    if (!janela.focusWidget())
        QTest::keyClick(&janela, Qt::Key_Tab);
    QStringList names;
    for (int i = 0; i < 60; ++i) {
        QWidget *focus = QApplication::focusWidget();
        if (!focus || names.contains(focus->objectName()))
            break;
        names << focus->objectName();
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    return names;
}

void TstAcessoCadastro::tabReachesWhatCanBeUsed_data()
{
    QTest::addColumn<QStringList>("botoes");
    QTest::newRow("buttons only") << QStringList{};
    QTest::newRow("selection") << QStringList{u"CmdAluno(2)"_s};
    QTest::newRow("pupils and classes, a new one each")
        << QStringList{u"CmdAluno(3)"_s, u"cmdCadClasses"_s, u"CmdAulaNova"_s, u"CmdProfNovo"_s};
}

void TstAcessoCadastro::tabReachesWhatCanBeUsed()
{
    QFETCH(QStringList, botoes);
    CenarioCadastro c;
    gClasse = 1;
    gSenhaOK = true;
    for (const QString &botao : botoes)
        c.aperta(botao);
    const QStringList names = reached(c.alunos());
    for (const QWidget *controle : controls(c.alunos())) {
        const bool usable = controle->focusPolicy() != Qt::NoFocus && controle->isVisible() && controle->isEnabled();
        QVERIFY2(names.contains(controle->objectName()) == usable,
            qPrintable(controle->objectName() + u" in "_s + names.join(u' ')));
    }
}

void TstAcessoCadastro::loginIsReachedByTab()
{
    CenarioCadastro c;
    c.aperta(u"CmdAluno(3)"_s);
    QCOMPARE(reached(c.login()), (QStringList{u"txtPassword"_s, u"cmdOK"_s, u"cmdCancel"_s}));
    QVERIFY(c.botao(u"cmdOK"_s).isDefault()); // still, after the focus was there and went
    QTest::keyClick(&c.login(), Qt::Key_S, Qt::AltModifier);
    QCOMPARE(c.login().focusWidget(), &c.campo(u"txtPassword"_s));
}

void TstAcessoCadastro::passwordIsNotReadAloud()
{
    CenarioCadastro c;
    c.aperta(u"CmdAluno(3)"_s);
    QTest::keyClicks(&c.campo(u"txtPassword"_s), u"caju"_s);
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&c.campo(u"txtPassword"_s));
    QVERIFY(interface->state().passwordEdit);
    QVERIFY(!interface->text(QAccessible::Value).contains(u"caju"_s));
}

static void fits(const QWidget &controle, const QString &texto, int margem)
{
    const QSize ink = controle.fontMetrics().tightBoundingRect(texto).size();
    QVERIFY2(ink.width() + margem <= controle.width() && ink.height() < controle.height(),
        qPrintable(controle.objectName() + u": "_s + texto));
}

void TstAcessoCadastro::textsFitTheirControls()
{
    CenarioCadastro c;
    c.aperta(u"CmdAluno(3)"_s);
    for (const QWidget *janela : std::initializer_list<const QWidget *>{&c.alunos(), &c.login()}) {
        for (const auto *rotulo : janela->findChildren<QLabel *>()) {
            const QRect room = rotulo->fontMetrics().boundingRect(rotulo->rect(), Qt::TextWordWrap, rotulo->text());
            QVERIFY2(rotulo->text().isEmpty() || rotulo->rect().contains(room), qPrintable(rotulo->objectName()));
        }
        for (const auto *botao : janela->findChildren<QPushButton *>())
            fits(*botao, botao->text(), 12);
        for (const auto *legenda : janela->findChildren<QRadioButton *>())
            fits(*legenda, legenda->text(), 2);
    }
    fits(c.campo(u"TxtProfSenh"_s), u"WWWWWWWW"_s, 8);
    fits(c.campo(u"TxtAulaInf"_s), u"20000 / 20000"_s, 8);
}

// Hidden ones may share a place; the frames of the two registers stand one below the other.
void TstAcessoCadastro::controlsDontOverlap()
{
    CenarioCadastro c;
    c.abreCadastro(1);
    c.aperta(u"cmdCadClasses"_s);
    c.aperta(u"CmdAulaNova"_s);
    c.aperta(u"CmdProfNovo"_s);
    QList<QWidget *> parents{&c.alunos(), &c.login()};
    for (auto *quadro : c.alunos().findChildren<QGroupBox *>())
        parents << quadro;
    for (const QWidget *parent : parents) {
        const auto siblings = parent->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
        for (qsizetype i = 0; i < siblings.size(); ++i) {
            const QWidget &one = *siblings[i];
            if (one.isHidden())
                continue;
            QVERIFY2(parent->rect().contains(one.geometry()), qPrintable(one.objectName()));
            for (qsizetype j = 0; j < i; ++j) {
                const bool apart = siblings[j]->isHidden() || !one.geometry().intersects(siblings[j]->geometry());
                QVERIFY2(apart, qPrintable(one.objectName() + u" "_s + siblings[j]->objectName()));
            }
        }
    }
}

void TstAcessoCadastro::labelsArePlain()
{
    CenarioCadastro c(
        u"INSERT INTO CL_Classes VALUES (1, '<b>Turma</b> & Cia', '<i>Ana</i>', 'x');"
        "INSERT INTO AL_Alunos VALUES (1, '<img src=x>'); INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (1, 1)"_s);
    gClasse = 1;
    c.login().mostra();
    for (const QWidget *janela : std::initializer_list<const QWidget *>{&c.alunos(), &c.login()}) {
        for (const auto *rotulo : janela->findChildren<QLabel *>())
            QCOMPARE(rotulo->textFormat(), Qt::PlainText);
    }
    QCOMPARE(child<QLabel>(c.login(), u"lblLabels(0)"_s).text(), u"Professor(a) <i>Ana</i> digite sua senha."_s);
}

QTEST_MAIN(TstAcessoCadastro)
#include "tst_acesso_cadastro.moc"
