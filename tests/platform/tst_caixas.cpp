#include "platform/aplicacao.h"
#include "platform/costuras.h"
#include "platform/erro.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QTimer>

#include <cstdio>
#include <new>
#include <stdexcept>

using namespace quorel;
using namespace quorel::teste;

class TstCaixas : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void cleanup() { reiniciaCosturas(); }
    void questions_data();
    void questions();
    void plainTextWithItsTitleAndIcon();
    void titlesAreShownWhole_data();
    void titlesAreShownWhole();
    void inputs();
    void messagesAreServedMeanwhile();
    void seamsAreReplacedAndPutBack();
    void failuresAreShownOnceAndEndTheProgram_data();
    void failuresAreShownOnceAndEndTheProgram();
    void failuresAreSkippedWhereTheyAreIgnored();
    void aKeyThatIsHeldPressesOnce();
    void theSecondPressOfADoubleClickIsForTheFirstOnesTarget();
};

/// Does something with the box once it stands.
template <typename Box>
static void whenShown(const std::function<void(Box &)> &work)
{
    QTimer::singleShot(0, qApp, [work] {
        auto *box = qobject_cast<Box *>(QApplication::activeModalWidget());
        QVERIFY(box);
        work(*box);
    });
}

void TstCaixas::questions_data()
{
    const Table<Botoes, QStringList, Qt::Key, Resposta> row("buttons", "texts", "key", "answer");
    const QStringList simNao{"Não", "Sim"}, okCancela{"Cancelar", "OK"};
    row("Enter takes the first", Botoes::SimNao, simNao, Qt::Key_Return, Resposta::Sim);
    row("S", Botoes::SimNao, simNao, Qt::Key_S, Resposta::Sim);
    row("N", Botoes::SimNao, simNao, Qt::Key_N, Resposta::Nao);
    row("closing it is a no", Botoes::SimNao, simNao, Qt::Key_Escape, Resposta::Nao);
    row("Enter takes OK", Botoes::OkCancela, okCancela, Qt::Key_Return, Resposta::Ok);
    row("closing it cancels", Botoes::OkCancela, okCancela, Qt::Key_Escape, Resposta::Cancela);
    row("closing a box without a choice", Botoes::Ok, {"OK"}, Qt::Key_Escape, Resposta::Ok);
}

void TstCaixas::questions()
{
    QFETCH(Botoes, buttons);
    QFETCH(QStringList, texts);
    QFETCH(Qt::Key, key);
    whenShown<QMessageBox>([&](QMessageBox &box) {
        QStringList shown;
        for (const QAbstractButton *button : box.buttons())
            shown << button->text();
        shown.sort();
        QCOMPARE(shown, texts);
        QTest::keyClick(&box, key);
    });
    QTEST(mostraCaixa({.texto = "Apagar?", .botoes = buttons}), "answer");
}

void TstCaixas::plainTextWithItsTitleAndIcon()
{
    whenShown<QMessageBox>([](QMessageBox &box) {
        QCOMPARE(box.text(), "<b>Um</b>\nDois");
        QCOMPARE(box.textFormat(), Qt::PlainText);
        QCOMPARE(box.windowTitle(), "Atenção");
        QCOMPARE(box.icon(), QMessageBox::Critical);
        box.close();
    });
    mostraCaixa({.texto = "<b>Um</b>\r\nDois", .titulo = "Atenção", .icone = Icone::Critico});
    QCOMPARE(Caixa{}.titulo, "Blocos de Roteiros do Sistema Quorel");
}

void TstCaixas::titlesAreShownWhole_data()
{
    const Table<QString, Botoes> row("title", "buttons");
    row("longer than the text", "Conexão por rede DIAL-UP não encontrada", Botoes::SimNao);
    row("of a box without one", QString::fromUtf16(kTituloPadrao), Botoes::Ok);
    row("wider than any screen", QString("Muito comprido ").repeated(200), Botoes::Ok);
}

void TstCaixas::titlesAreShownWhole()
{
    QFETCH(QString, title);
    QFETCH(Botoes, buttons);
    QFont bold = QApplication::font();
    bold.setBold(true);
    const int beside = 16 + 3 * 20; // the least that a title bar has in it besides: icon and buttons
    const int wanted = QFontMetrics(bold).horizontalAdvance(title) + beside;
    const auto check = [wanted](QDialog &box) {
        const int screen = box.screen()->availableGeometry().width();
        const int width = box.width();
        QTest::keyClick(&box, Qt::Key_Escape);
        QVERIFY2(width >= qMin(wanted, screen * 9 / 10) && width <= screen, qPrintable(QString::number(width)));
    };
    whenShown<QDialog>(check);
    mostraCaixa({.texto = "Sim?", .titulo = title, .botoes = buttons});
    whenShown<QDialog>(check);
    pedeTexto({.texto = "Nome", .titulo = title, .proposta = {}});
}

void TstCaixas::inputs()
{
    const CaixaTexto asked{.texto = "Digite o <i>Diretório</i>",
        .titulo = "Diretório",
        .proposta = "C:\\Um diretório com um nome comprido\\e outro dentro dele"};
    whenShown<QInputDialog>([&](QInputDialog &box) {
        auto &line = *box.findChild<QLineEdit *>();
        QCOMPARE(box.windowTitle(), asked.titulo);
        QCOMPARE(box.textValue(), asked.proposta);
        QVERIFY(line.fontMetrics().horizontalAdvance(line.text()) < line.width());
        QCOMPARE(box.findChild<QLabel *>()->textFormat(), Qt::PlainText);
        QCOMPARE(box.cancelButtonText(), "Cancelar");
        for (const QPushButton *button : box.findChildren<QPushButton *>())
            QVERIFY(button->icon().isNull());
        QTest::keyClicks(&line, "D:\\y"); // over the selected proposal
        QTest::keyClick(&box, Qt::Key_Return);
    });
    QCOMPARE(pedeTexto(asked), "D:\\y");
    whenShown<QInputDialog>([](QInputDialog &box) { QTest::keyClick(&box, Qt::Key_Escape); });
    QCOMPARE(pedeTexto(asked), "");
}

void TstCaixas::messagesAreServedMeanwhile()
{
    int served = 0;
    QTimer::singleShot(0, this, [&] { ++served; });
    pausa(20);
    QCOMPARE(served, 1);
    pausa(-1); // no time at all, and no failure
    whenShown<QMessageBox>([&](QMessageBox &box) {
        QTimer::singleShot(0, &box, [&] {
            ++served;
            box.close();
        });
    });
    mostraCaixa({.texto = "x"});
    QCOMPARE(served, 2);
}

void TstCaixas::seamsAreReplacedAndPutBack()
{
    const QDateTime fixed(QDate(2001, 2, 3), QTime(4, 5));
    costuras().now = [fixed] { return fixed; };
    costuras().pause = [](int) { costuras().pause = {}; }; // one that replaces itself while it runs
    costuras().startProgram = [](const ProgramRequest &r) { return r.program == "/x"; };
    costuras().openDocument = [](const DocumentRequest &r) { return r.document == "\\d"; };
    pausa(5000);
    QCOMPARE(agora(), fixed);
    QVERIFY(startProgram({.program = "/x", .arguments = {}}));
    QVERIFY(openDocument({.verb = {}, .document = "\\d", .directory = {}}));
    reiniciaCosturas();
    QVERIFY(agora() > fixed);
    QVERIFY(costuras().pause && costuras().endProcess);
}

void TstCaixas::failuresAreShownOnceAndEndTheProgram_data()
{
    const Table<QString, QByteArray> row("kind", "shown");
    row("in an event", "event", "9 Índice fora dos limites\n");
    row("in a loop inside an event", "loop", "6 Estouro: número grande demais\n");
    row("again while the box stands", "again", "9 Índice fora dos limites\n");
    row("memory", "memory", "7 Memória insuficiente\n");
    row("memory, before the loop", "start", "7 Memória insuficiente\n");
    row("of the library", "std", "51 Erro interno: disco\n");
}

void TstCaixas::failuresAreShownOnceAndEndTheProgram()
{
    QFETCH(QString, kind);
    ChildProcess child(QCoreApplication::applicationFilePath(), {"--falha", kind});
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 1);
    QFETCH(QByteArray, shown);
    QCOMPARE(linhas(child.readAllStandardOutput()), shown + "O programa será fechado. Abra-o de novo.\n");
}

void TstCaixas::failuresAreSkippedWhereTheyAreIgnored()
{
    QVERIFY(QByteArrayView(ErroExecucao(kFalhaControle).what()).startsWith("340 "));
    int work = 0;
    ignora([&] {
        ++work;
        throw ErroExecucao(kFalhaFoco);
    });
    QCOMPARE(work, 1);
}

/// What the child does: fails in an event, and prints the boxes that are shown.
static int failInAnEvent(int argc, char **argv)
{
    Aplicacao app(argc, argv);
    const QString kind = app.arguments().last();
    costuras().box = [kind](const Caixa &shown) {
        std::printf("%s\n", qUtf8Printable(shown.texto));
        if (kind == "again") {
            QTimer::singleShot(0, qApp, [] { throw ErroExecucao(kFalhaIndice); });
            pausa(1000);
        }
        return Resposta::Ok;
    };
    if (kind == "start")
        encerraPorFalha(std::bad_alloc());
    QTimer::singleShot(0, &app, [kind] {
        if (kind == "std")
            throw std::runtime_error("disco");
        if (kind == "memory")
            throw std::bad_alloc();
        if (kind != "loop")
            throw ErroExecucao(kFalhaIndice);
        QTimer::singleShot(0, qApp, [] { throw ErroExecucao(kFalhaEstouro); });
        pausa(1000);
    });
    return Aplicacao::exec();
}

static void hold(QWidget &target, Qt::Key key, const QString &text = {}, Qt::KeyboardModifiers modifiers = {})
{
    constexpr int kTimes = 4;
    target.setFocus();
    for (int i = 0; i < kTimes; ++i)
        QTest::simulateEvent(&target, true, key, modifiers, text, i > 0);
}

void TstCaixas::aKeyThatIsHeldPressesOnce()
{
    QDialog dialog;
    QPushButton button(&dialog);
    QLineEdit line(&dialog);
    QPlainTextEdit text(&dialog);
    QListWidget list(&dialog);
    list.addItems({"a", "b", "c", "d", "e"});
    const QShortcut undo(QKeySequence::Undo, &dialog);
    button.setDefault(true);
    int presses = 0;
    connect(&button, &QPushButton::clicked, &button, [&] { ++presses; });
    connect(&undo, &QShortcut::activated, &button, [&] { ++presses; });
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    hold(button, Qt::Key_Return, "\r");
    QCOMPARE(presses, 1);
    hold(line, Qt::Key_Enter, "\r"); // the dialogue's button
    QCOMPARE(presses, 2);
    hold(list, Qt::Key_Z, {}, Qt::ControlModifier); // a shortcut, which a line would take for itself
    QCOMPARE(presses, 3);
    hold(line, Qt::Key_Space, " ");
    QCOMPARE(line.text(), "    ");
    hold(text, Qt::Key_Return, "\r");
    QCOMPARE(text.toPlainText(), "\n\n\n\n");
    int time = 1000; // without the toolkit's mark, by the events' times: held, let go and pressed, held
    for (const auto &[type, passed] : {std::pair{QEvent::KeyPress, 1}, {QEvent::KeyRelease, 600}, {QEvent::KeyPress, 0},
             {QEvent::KeyRelease, 40}, {QEvent::KeyPress, 60}, {QEvent::KeyPress, 600}}) {
        QKeyEvent event(type, Qt::Key_Return, Qt::NoModifier, "\r");
        event.setTimestamp(quint64(time += passed));
        button.setFocus();
        QApplication::sendEvent(dialog.windowHandle(), &event);
    }
    QCOMPARE(presses, 5);
    hold(list, Qt::Key_Down);
    QCOMPARE(list.currentRow(), 4);
}

void TstCaixas::theSecondPressOfADoubleClickIsForTheFirstOnesTarget()
{
    QDialog dialog;
    QPushButton below(&dialog), above(&dialog);
    QString presses;
    connect(&above, &QPushButton::clicked, &above, [&] {
        presses += 'a';
        above.hide();
    });
    connect(&below, &QPushButton::clicked, &below, [&] { presses += 'b'; });
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    const QPoint at(5, 5);
    const auto click = [&](int time) {
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            qt_handleMouseEvent(dialog.windowHandle(), at, dialog.mapToGlobal(at),
                type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::LeftButton, type, {}, time);
        QApplication::processEvents();
    };
    for (const int time : {100000, 100200, 100500}) // ms; the third comes on the heels of the second
        click(time);
    QCOMPARE(presses, "a");
    for (const int time : {101500, 101700})
        click(time);
    QCOMPARE(presses, "abb");
}

int main(int argc, char **argv)
{
    if (argc > 1 && qstrcmp(argv[1], "--falha") == 0)
        return failInAnEvent(argc, argv);
    Aplicacao app(argc, argv);
    TstCaixas test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_caixas.moc"
