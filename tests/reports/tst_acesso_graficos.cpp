#include "cenario_graficos.h"

#include "support/suporte.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>

#include <set>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The window for those who use the keyboard, or hear it.
class TstAcessoGraficos : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void everyControlHasAName();
    void tabReachesWhatShows_data();
    void tabReachesWhatShows();
    void textsFitTheirControls();
    void pagesOfTheWindowAreDrawnOnADarkDesktopToo();
};

void TstAcessoGraficos::everyControlHasAName()
{
    CenarioGraficos c;
    c.janela().mostra();
    for (QWidget *controle : c.janela().findChildren<QWidget *>()) {
        if (controle->objectName().isEmpty() || controle->objectName().startsWith(u"qt_"_s))
            continue;
        const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(controle);
        QVERIFY2(interface && !interface->text(QAccessible::Name).isEmpty(), qPrintable(controle->objectName()));
    }
    auto &lista = child<QListWidget>(c.janela(), u"LstDisciplinas"_s);
    QAccessibleInterface *line = QAccessible::queryAccessibleInterface(&lista)->child(3);
    QCOMPARE(line->text(QAccessible::Name), u"Desenv. Sensorio Motor"_s); // without tabs and number
}

static std::set<QString> reached()
{
    std::set<QString> names;
    for (int i = 0; i < 40; ++i) {
        QWidget *focus = QApplication::focusWidget();
        if (!focus)
            break;
        names.insert(focus->objectName());
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    return names;
}

void TstAcessoGraficos::tabReachesWhatShows_data()
{
    using Names = std::set<QString>;
    QTest::addColumn<QStringList>("clicks");
    QTest::addColumn<Names>("expected");
    const Names always{u"MskDataInicial"_s, u"MskDataFinal"_s, u"LstDisciplinas"_s, u"ChkDisciplinas"_s,
        u"CmdGrafPlan(0)"_s, u"CmdGrafPlan(1)"_s, u"CmdImprime"_s, u"CmdFecha"_s};
    const auto with = [&always](const QString &nome) {
        Names names = always;
        names.insert(nome);
        return names;
    };
    QTest::newRow("filter alone") << QStringList{} << always;
    QTest::newRow("chart") << QStringList{u"ChkDisciplinas"_s} << with(u"CrtGrafico"_s);
    QTest::newRow("sheet") << QStringList{u"ChkDisciplinas"_s, u"CmdGrafPlan(1)"_s} << with(u"GrdRot"_s);
    QTest::newRow("chart over the sheet") << QStringList{u"ChkDisciplinas"_s, u"CmdGrafPlan(1)"_s, u"ChkDisciplinas"_s,
        u"ChkDisciplinas"_s} << with(u"CrtGrafico"_s);
    QTest::newRow("preview") << QStringList{u"ChkDisciplinas"_s, u"CmdImprime"_s}
                             << Names{u"WWW"_s, u"CmdImprime"_s, u"CmdFecha"_s};
}

void TstAcessoGraficos::tabReachesWhatShows()
{
    QFETCH(QStringList, clicks);
    QFETCH(std::set<QString>, expected);
    CenarioGraficos c;
    c.log(u"2026-03-10 09:00:00"_s, 101, u"A:E:"_s);
    c.janela().mostra();
    QVERIFY(QTest::qWaitForWindowActive(&c.janela()));
    for (const QString &botao : clicks)
        c.clica(botao);
    child<QWidget>(c.janela(), u"CmdFecha"_s).setFocus();
    QCOMPARE(reached(), expected);
}

void TstAcessoGraficos::textsFitTheirControls()
{
    CenarioGraficos c;
    c.log(u"2026-03-10 09:00:00"_s, 101, u"A:E:"_s);
    c.janela().mostra();
    c.clicaLinha(0);
    const auto fits = [](const QWidget &w, const QString &text, int room) {
        return w.fontMetrics().horizontalAdvance(text) <= room;
    };
    for (const auto *label : c.janela().findChildren<QLabel *>()) {
        QVERIFY2(fits(*label, label->text(), label->width()), qPrintable(label->text()));
        QVERIFY2(label->fontMetrics().height() <= label->height(), qPrintable(label->text()));
    }
    const auto &lista = child<QListWidget>(c.janela(), u"LstDisciplinas"_s);
    QVERIFY(lista.visualItemRect(lista.item(3)).bottom() <= lista.viewport()->height());
    QVERIFY(fits(lista, u"Desenv. Sensorio Motor"_s, lista.viewport()->width() - 8));
    const auto &grade = child<QTableView>(c.janela(), u"GrdRot"_s);
    int widths = 0;
    for (int column = 0; column < 4; ++column) {
        const QString title = grade.model()->headerData(column, Qt::Horizontal).toString();
        QVERIFY2(grade.horizontalHeader()->sectionSizeHint(column) <= grade.columnWidth(column), qPrintable(title));
        widths += grade.columnWidth(column);
    }
    QVERIFY(widths <= grade.viewport()->width());
    QVERIFY(fits(grade, u"20/03/26 12:00:00"_s, grade.columnWidth(0) - 8));
    for (const QString &nome : {u"MskDataInicial"_s, u"MskDataFinal"_s}) {
        const auto &box = child<QLineEdit>(c.janela(), nome);
        QVERIFY(fits(box, u"00/00/00"_s, box.width() - 12));
    }
}

void TstAcessoGraficos::pagesOfTheWindowAreDrawnOnADarkDesktopToo()
{
    QApplication::setPalette(QPalette(Qt::white, Qt::black));
    CenarioGraficos c;
    c.log(u"2026-03-10 09:00:00"_s, 101, u"A:E:"_s);
    c.janela().mostra();
    c.clicaLinha(0);
    c.clica(u"CmdGrafPlan(1)"_s);
    const QWidget &grade = child<QWidget>(c.janela(), u"GrdRot"_s);
    QVERIFY(grade.palette().color(QPalette::Base).lightness() > 200);
    QVERIFY(grade.palette().color(QPalette::Text).lightness() < 80);
    c.clica(u"CmdImprime"_s);
    const QWidget &www = child<QWidget>(c.janela(), u"WWW"_s);
    QVERIFY(www.palette().color(QPalette::Text).lightness() < 80);
    QApplication::setPalette(QPalette());
}

QTEST_MAIN(TstAcessoGraficos)
#include "tst_acesso_graficos.moc"
