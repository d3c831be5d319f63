#include "platform/aplicacao.h"
#include "platform/costuras.h"
#include "platform/erro.h"
#include "support/suporte.h"

#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <new>
#include <stdexcept>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstCaixas : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
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
    QTest::addColumn<Botoes>("botoes");
    QTest::addColumn<int>("key");
    QTest::addColumn<Resposta>("answer");
    QTest::newRow("Enter takes the first") << Botoes::SimNao << int(Qt::Key_Return) << Resposta::Sim;
    QTest::newRow("S") << Botoes::SimNao << int(Qt::Key_S) << Resposta::Sim;
    QTest::newRow("N") << Botoes::SimNao << int(Qt::Key_N) << Resposta::Nao;
    QTest::newRow("closing it is a no") << Botoes::SimNao << int(Qt::Key_Escape) << Resposta::Nao;
    QTest::newRow("Enter takes OK") << Botoes::OkCancela << int(Qt::Key_Return) << Resposta::Ok;
    QTest::newRow("closing it cancels") << Botoes::OkCancela << int(Qt::Key_Escape) << Resposta::Cancela;
}

void TstCaixas::questions()
{
    QFETCH(Botoes, botoes);
    QFETCH(int, key);
    QFETCH(Resposta, answer);
    whenShown<QMessageBox>([key, botoes](QMessageBox &box) {
        QStringList texts;
        for (const QAbstractButton *button : box.buttons())
            texts.append(button->text());
        texts.sort();
        const bool yesNo = botoes == Botoes::SimNao;
        QCOMPARE(texts, yesNo ? QStringList({u"Não"_s, u"Sim"_s}) : QStringList({u"Cancelar"_s, u"OK"_s}));
        QTest::keyClick(&box, Qt::Key(key));
    });
    QCOMPARE(mostraCaixa({.texto = u"Apagar?"_s, .botoes = botoes}), answer);
}

void TstCaixas::plainTextWithItsTitleAndIcon()
{
    whenShown<QMessageBox>([](QMessageBox &box) {
        QCOMPARE(box.text(), u"<b>Um</b>\nDois"_s);
        QCOMPARE(box.textFormat(), Qt::PlainText);
        QCOMPARE(box.windowTitle(), u"Atenção"_s);
        QCOMPARE(box.icon(), QMessageBox::Critical);
        QCOMPARE(box.buttons().size(), 1);
        QCOMPARE(box.buttons().first()->text(), u"OK"_s);
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    const Caixa shown{.texto = u"<b>Um</b>\r\nDois"_s, .titulo = u"Atenção"_s, .icone = Icone::Critico};
    QCOMPARE(mostraCaixa(shown), Resposta::Ok);
    QCOMPARE(Caixa{}.titulo, u"Blocos de Roteiros do Sistema Quorel"_s);
}

void TstCaixas::titlesAreShownWhole_data()
{
    QTest::addColumn<QString>("titulo");
    QTest::addColumn<Botoes>("botoes");
    QTest::newRow("longer than the text") << u"Conexão por rede DIAL-UP não encontrada"_s << Botoes::SimNao;
    QTest::newRow("of a box without one") << QString::fromUtf16(kTituloPadrao) << Botoes::Ok;
    QTest::newRow("wider than any screen") << u"Muito comprido "_s.repeated(200) << Botoes::Ok;
}

void TstCaixas::titlesAreShownWhole()
{
    QFETCH(QString, titulo);
    QFETCH(Botoes, botoes);
    QFont bold = QApplication::font();
    bold.setBold(true);
    const int beside = 16 + 3 * 20; // the least that a title bar has in it besides: icon and buttons
    const int wanted = QFontMetrics(bold).horizontalAdvance(titulo) + beside;
    const auto check = [wanted](QDialog &box) {
        const int screen = box.screen()->availableGeometry().width();
        const int width = box.width();
        QTest::keyClick(&box, Qt::Key_Escape);
        QVERIFY2(width >= qMin(wanted, screen * 9 / 10) && width <= screen, qPrintable(QString::number(width)));
    };
    whenShown<QDialog>(check);
    mostraCaixa({.texto = u"Sim?"_s, .titulo = titulo, .botoes = botoes});
    whenShown<QDialog>(check);
    pedeTexto({.texto = u"Nome"_s, .titulo = titulo, .proposta = {}});
}

void TstCaixas::inputs()
{
    const CaixaTexto asked{.texto = u"Digite o <i>Diretório</i>"_s,
        .titulo = u"Diretório"_s,
        .proposta = u"C:\\Um diretório com um nome comprido\\e outro dentro dele"_s};
    whenShown<QInputDialog>([](QInputDialog &box) {
        QCOMPARE(box.windowTitle(), u"Diretório"_s);
        QVERIFY(box.textValue().endsWith(u"dentro dele"_s));
        QCOMPARE(box.cancelButtonText(), u"Cancelar"_s);
        for (const QPushButton *button : box.findChildren<QPushButton *>())
            QVERIFY(button->icon().isNull());
        const auto *line = box.findChild<QLineEdit *>();
        QVERIFY(line->fontMetrics().horizontalAdvance(line->text()) < line->width());
        QCOMPARE(box.findChild<QLabel *>()->textFormat(), Qt::PlainText);
        QTest::keyClicks(box.findChild<QLineEdit *>(), u"D:\\y"_s); // over the selected proposal
        QTest::keyClick(&box, Qt::Key_Return);
    });
    QCOMPARE(pedeTexto(asked), u"D:\\y"_s);
    whenShown<QInputDialog>([](QInputDialog &box) { QTest::keyClick(&box, Qt::Key_Escape); });
    QCOMPARE(pedeTexto(asked), QString());
}

void TstCaixas::messagesAreServedMeanwhile()
{
    bool served = false;
    QTimer::singleShot(0, this, [&] { served = true; });
    pausa(20);
    QVERIFY(served);
    pausa(-1); // no time at all, and no failure
    whenShown<QMessageBox>([&](QMessageBox &box) {
        served = false;
        QTimer::singleShot(0, &box, [&] {
            served = true;
            box.close();
        });
    });
    mostraCaixa({.texto = u"x"_s});
    QVERIFY(served);
}

void TstCaixas::seamsAreReplacedAndPutBack()
{
    const QDateTime fixed(QDate(2001, 2, 3), QTime(4, 5));
    costuras().now = [fixed] { return fixed; };
    costuras().pause = [](int) { costuras().pause = {}; }; // one that replaces itself while it runs
    costuras().startProgram = [](const ProgramRequest &r) { return r.program == u"/x"_s; };
    costuras().openDocument = [](const DocumentRequest &r) { return r.document == u"\\d"_s; };
    pausa(5000);
    QCOMPARE(agora(), fixed);
    ProgramRequest program;
    program.program = u"/x"_s;
    QVERIFY(startProgram(program));
    DocumentRequest document;
    document.document = u"\\d"_s;
    QVERIFY(openDocument(document));
    QVERIFY(!costuras().pause);
    reiniciaCosturas();
    QVERIFY(agora() > fixed);
    QVERIFY(costuras().pause && costuras().endProcess);
}

void TstCaixas::failuresAreShownOnceAndEndTheProgram_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QByteArray>("shown");
    QTest::newRow("in an event") << u"event"_s << QByteArray("9 Índice fora dos limites\n");
    QTest::newRow("in a loop inside an event") << u"loop"_s << QByteArray("6 Estouro: número grande demais\n");
    QTest::newRow("again while the box stands") << u"again"_s << QByteArray("9 Índice fora dos limites\n");
    QTest::newRow("memory") << u"memory"_s << QByteArray("7 Memória insuficiente\n");
    QTest::newRow("memory, before the loop") << u"start"_s << QByteArray("7 Memória insuficiente\n");
    QTest::newRow("of the library") << u"std"_s << QByteArray("51 Erro interno: disco\n");
}

void TstCaixas::failuresAreShownOnceAndEndTheProgram()
{
    QFETCH(QString, kind);
    QFETCH(QByteArray, shown);
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {u"--falha"_s, kind});
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 1);
    QCOMPARE(linhas(child.readAllStandardOutput()), shown);
}

void TstCaixas::failuresAreSkippedWhereTheyAreIgnored()
{
    QCOMPARE(QByteArray(ErroExecucao(340).what()).left(4), QByteArray("340 "));
    bool next = false;
    ignora([] { throw ErroExecucao(kFalhaFoco); });
    next = true;
    QVERIFY(next);
}

/// What the child does: fails in an event, and prints the boxes that are shown.
static int failInAnEvent(int argc, char **argv)
{
    Aplicacao app(argc, argv);
    const QString kind = app.arguments().last();
    costuras().box = [kind](const Caixa &shown) {
        std::printf("%s\n", qUtf8Printable(shown.texto));
        if (kind == u"again"_s) {
            QTimer::singleShot(0, qApp, [] { throw ErroExecucao(kFalhaIndice); });
            pausa(1000);
        }
        return Resposta::Ok;
    };
    if (kind == u"start"_s)
        encerraPorFalha(std::bad_alloc());
    QTimer::singleShot(0, &app, [kind] {
        if (kind == u"std"_s)
            throw std::runtime_error("disco");
        if (kind == u"memory"_s)
            throw std::bad_alloc();
        if (kind != u"loop"_s)
            throw ErroExecucao(kFalhaIndice);
        QTimer::singleShot(0, qApp, [] { throw ErroExecucao(kFalhaEstouro); });
        pausa(1000);
    });
    return Aplicacao::exec();
}

int main(int argc, char **argv)
{
    if (argc > 1 && qstrcmp(argv[1], "--falha") == 0)
        return failInAnEvent(argc, argv);
    QApplication app(argc, argv);
    TstCaixas test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_caixas.moc"
