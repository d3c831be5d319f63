#include "cenario_cadastro.h"

#include "support/acesso.h"

#include <QAccessible>
#include <QGroupBox>
#include <QLabel>
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
    void passwordIsNeitherShownNorReadAloud();
    void textsFitTheirControls();
    void controlsDontOverlap();
    void labelsArePlain();
};

void TstAcessoCadastro::everyControlHasAName()
{
    CenarioCadastro c;
    todosTemNome(c.alunos());
    todosTemNome(c.login());
}

void TstAcessoCadastro::tabReachesWhatCanBeUsed_data()
{
    QTest::addColumn<QString>("passos");
    QTest::newRow("buttons only") << "";
    QTest::newRow("selection") << "CmdAluno(2)";
    QTest::newRow("pupils and classes, a new one each") << "CmdAluno(3); cmdCadClasses; CmdAulaNova; CmdProfNovo";
}

void TstAcessoCadastro::tabReachesWhatCanBeUsed()
{
    QFETCH(QString, passos);
    CenarioCadastro c;
    gClasse = 1;
    c.faz(passos);
    const QStringList names = voltaDoTab(c.alunos());
    for (const QWidget *controle : controles(c.alunos())) {
        const bool usable = controle->focusPolicy() != Qt::NoFocus && controle->isVisible() && controle->isEnabled();
        QVERIFY2(names.contains(controle->objectName()) == usable,
            qPrintable(controle->objectName() + u" in "_s + names.join(u' ')));
    }
}

void TstAcessoCadastro::loginIsReachedByTab()
{
    CenarioCadastro c;
    c.aperta(u"CmdAluno(3)"_s);
    QCOMPARE(voltaDoTab(c.login()), (QStringList{u"txtPassword"_s, u"cmdOK"_s, u"cmdCancel"_s}));
    QVERIFY(c.botao(u"cmdOK"_s).isDefault()); // still, after the focus was there and went
    QTest::keyClick(&c.login(), Qt::Key_S, Qt::AltModifier);
    QCOMPARE(c.login().focusWidget(), &c.campo(u"txtPassword"_s));
}

void TstAcessoCadastro::passwordIsNeitherShownNorReadAloud()
{
    CenarioCadastro c;
    c.aperta(u"CmdAluno(3)"_s);
    auto &entrada = c.campo(u"txtPassword"_s);
    QTest::keyClicks(&entrada, u"caju"_s);
    QCOMPARE(entrada.displayText(), u"****"_s);
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&entrada);
    QVERIFY(interface->state().passwordEdit);
    QVERIFY(!interface->text(QAccessible::Value).contains(u"caju"_s));
}

void TstAcessoCadastro::textsFitTheirControls()
{
    CenarioCadastro c;
    c.aperta(u"CmdAluno(3)"_s);
    textosCabem(c.alunos(), 12);
    textosCabem(c.login(), 12);
    for (const auto *legenda : c.alunos().findChildren<QRadioButton *>())
        cabe(*legenda, legenda->text(), 2);
    cabe(c.campo(u"TxtProfSenh"_s), u"WWWWWWWW"_s, 8);
    cabe(c.campo(u"TxtAulaInf"_s), u"20000 / 20000"_s, 8);
}

// Hidden ones may share a place; the frames of the two registers stand one below the other.
void TstAcessoCadastro::controlsDontOverlap()
{
    CenarioCadastro c;
    c.abreCadastro(1);
    c.faz(u"cmdCadClasses; CmdAulaNova; CmdProfNovo"_s);
    QList<QWidget *> parents{&c.alunos(), &c.login()};
    for (auto *quadro : c.alunos().findChildren<QGroupBox *>())
        parents << quadro;
    for (const QWidget *parent : parents) {
        QList<const QWidget *> shown;
        for (const QWidget *one : parent->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (one->isHidden())
                continue;
            QVERIFY2(parent->rect().contains(one->geometry()), qPrintable(one->objectName()));
            for (const QWidget *other : shown)
                QVERIFY2(!one->geometry().intersects(other->geometry()),
                    qPrintable(one->objectName() + u" "_s + other->objectName()));
            shown << one;
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
