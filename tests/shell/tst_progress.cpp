#include "shell/progress_strip.h"
#include "shell/progress_view.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QApplication>
#include <QScreen>
#include <QTest>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

using Story = QStringList; ///< "n" an Aula of five begins, "<text" an answer, "." the end, "!" left

/// How far a Roteiro is, as it is told and shown.
class TstProgress final : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void tellsHowFar_data();
    void tellsHowFar();
    void staysUntilTheNextPress();

private:
    static ProgressStrip *strip();
};

void TstProgress::init()
{
    failOnWarnings();
}

ProgressStrip *TstProgress::strip()
{
    for (QWidget *each : QApplication::topLevelWidgets()) {
        if (auto *found = qobject_cast<ProgressStrip *>(each))
            return found;
    }
    return nullptr;
}

void TstProgress::tellsHowFar_data()
{
    const Table<Story, QString> row("story", "text");
    row("on the way", {"1", "2"}, "2 de 5");
    row("back again", {"1", "2", "1"}, "1 de 5");
    row("all right", {"1", "<A", "2", "<A", "."}, "Fim do roteiro: tudo certo!");
    row("one wrong", {"1", "<A", "2", "<E", "."}, "Fim do roteiro: 1 de 2 certas. Para tentar de novo: 2.");
    row("some wrong, a part of an answer too", {"1", "<E", "2", "<AAE", "3", "<A", "4", "<E", "."},
        "Fim do roteiro: 1 de 4 certas. Para tentar de novo: 1, 2 e 4.");
    row("the first answer counts", {"1", "<E", "1", "<A", "2", "<A", "."},
        "Fim do roteiro: 1 de 2 certas. Para tentar de novo: 1.");
    row("answers without marks", {"1", "<x", "."}, "Fim do roteiro.");
    row("another one after the end", {"1", "<E", ".", "1"}, "1 de 5");
    row("another one after one that was left", {"1", "<E", "!", "1", "<A", "."}, "Fim do roteiro: tudo certo!");
    row("an answer outside a Roteiro", {"<A"}, "0 de 0");
}

void TstProgress::tellsHowFar()
{
    QFETCH(Story, story);
    QFETCH(QString, text);
    RoteiroProgress progress;
    for (const QString &step : story) {
        if (step.startsWith('<'))
            noteAnswer(progress, step.mid(1));
        else if (step == ".")
            progress.ended = true;
        else if (step == "!")
            progress = {};
        else
            beginAula(progress, step.toInt(), 5);
    }
    QCOMPARE(progressText(progress), text);
}

void TstProgress::staysUntilTheNextPress()
{
    ProgressView view;
    view.answerTaken(u"A"_s);
    view.roteiroEnded();
    QVERIFY(!strip()); // nothing is made before a lesson begins
    view.aulaBegan(1, 2);
    QVERIFY(strip()->isVisible());
    QVERIFY(!strip()->isActiveWindow());
    QVERIFY(strip()->screen()->availableGeometry().contains(strip()->geometry()));
    view.programAwaited(u"Zeto - Quorel"_s);
    QCOMPARE(strip()->accessibleName(), u"1 de 2 – abrindo Zeto…"_s);
    view.programAwaited({});
    view.answerTaken(u"E"_s);
    view.aulaBegan(2, 2);
    QWidget other;
    QTest::mouseClick(&other, Qt::LeftButton);
    QVERIFY(strip()->isVisible());
    view.roteiroEnded();
    QCOMPARE(strip()->accessibleName(), u"Fim do roteiro: 0 de 1 certas. Para tentar de novo: 1."_s);
    QTest::keyClick(&other, Qt::Key_A);
    QVERIFY(!strip()->isVisible());
    view.aulaBegan(1, 2);
    view.roteiroLeft();
    QVERIFY(!strip()->isVisible());
}

QTEST_MAIN(TstProgress)
#include "tst_progress.moc"
