// A child program for tests, known by the titles that belong to the name it is started under. It writes what it gets
// into the file named by FILHO_DIARIO, if any, and a lesson tells it what to do.
#include "platform/codec.h"
#include "platform/endereco.h"
#include "platform/preparo.h"
#include "platform/protocolo.h"
#include "support/sistema.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QThread>
#include <QTimer>

#include <cstdlib>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

static constexpr QRect kCorpo{300, 200, 400, 300}, kDentro{10, 20, 200, 100};
static constexpr QSize kMenorCorpo{120, 80}, kMenorDentro{50, 40};

static constexpr int kImpatience = 300; ///< ms

static Endereco *gLugar = nullptr;
static QString gSaida; ///< what it does when the shell closes, and the answer that goes with it
static QWidget *gCorpo = nullptr; ///< with two children, of which the first one is the inner window

static void note(const QString &line)
{
    QFile diary(qEnvironmentVariable("FILHO_DIARIO"));
    if (!diary.fileName().isEmpty() && diary.open(QIODevice::Append))
        diary.write(line.toUtf8() + '\n');
}

static QString placeOf(const QWidget &widget)
{
    const QPoint corner = widget.isWindow() ? cantoDe(widget) : widget.pos();
    return QStringLiteral("%1,%2 %3x%4").arg(corner.x()).arg(corner.y()).arg(widget.width()).arg(widget.height());
}

/// Where the windows stand when a lesson comes, into a file beside the diary.
static void notePlaces()
{
    const QString diary = qEnvironmentVariable("FILHO_DIARIO");
    QFile places(diary + ".lugar"_L1);
    const auto &dentro = *gCorpo->findChild<QWidget *>(u"dentro"_s);
    const bool topmost = sempreNaFrente(*gCorpo);
    const bool inFront = gCorpo->children().last() == &dentro;
    if (!diary.isEmpty() && places.open(QIODevice::WriteOnly))
        places.write((placeOf(*gCorpo) + (topmost ? " sempre na frente"_L1 : ""_L1) + " / "_L1 + placeOf(dentro)
            + (inFront ? " na frente"_L1 : ""_L1))
                         .toUtf8());
}

static qintptr report(Janela sender, quint32 code, QByteArrayView bytes, qint32 size)
{
    return sendCopyData(publishedWindowOf(sender, kTituloGerenciador), gLugar->handle(), code, size, bytes);
}

static void sendAnswer(Janela sender, quint32 code, const QString &answer)
{
    QByteArray bytes = encode1252(answer);
    bytes.append('\0');
    report(sender, code, bytes, qint32(bytes.size()));
}

/// Answers to be recorded at once, by a child that waits a short time for each instead of the 5 s.
static void sendImpatiently(Janela sender, const QStringList &answers)
{
    setSendLimit(kImpatience);
    for (const QString &answer : answers) {
        note("envia "_L1 + answer);
        sendAnswer(sender, MSG_RESPOSTA, answer);
    }
    note(u"enviou tudo"_s);
    setSendLimit(0);
}

/// Ms after the shell's MSG_SAI was acknowledged: a shell that does not wait has gone by then.
static constexpr int kLate = 300;

/// The end, as a lesson "SAI-…" has asked for it.
static void leave(Janela sender)
{
    const QString answer = gSaida.section(u':', 1);
    if (gSaida.startsWith("SAI-FECHADO"_L1)) {
        gLugar->withdraw(); // and lives on
        return;
    }
    if (gSaida.startsWith("SAI-ADIANTE"_L1)) {
        sendAnswer(sender, MSG_PROXIMA, answer);
        sendAnswer(sender, MSG_EXEC_CALC, u"1"_s);
    }
    if (!gSaida.isEmpty())
        sendAnswer(sender, MSG_SAI, answer);
    QCoreApplication::quit();
}

/// What a lesson makes the child do once it has taken it.
static void afterLesson(Janela sender, const QString &word, const QString &answer)
{
    if (word == "APRESSADO"_L1)
        sendImpatiently(sender, answer.split(u','));
    if (word == "SEMNUL"_L1)
        report(sender, MSG_PROXIMA, "abc", 3);
    if (word == "ENXURRADA"_L1) {
        for (int i = 0; i < 500; ++i)
            report(sender, 4711, "x", 2);
        report(sender, MSG_PROXIMA, QByteArray(300000, 'x'), 300000); // never gets there
    }
    if (word == "ENXURRADA"_L1 || word == "FORA"_L1 || word == "SAI-DENTRO"_L1)
        sendAnswer(sender, MSG_PROXIMA, answer);
}

static void runLesson(Janela sender, const QString &linha)
{
    const QString word = linha.section(u':', 0, 0);
    const QString answer = linha.section(u':', 1);
    if (word.startsWith("SAI-"_L1))
        gSaida = linha;
    if (word == "MORRE"_L1)
        std::_Exit(3);
    while (word == "MUDO"_L1)
        QThread::sleep(1);
    if (word == "DENTRO"_L1)
        sendAnswer(sender, MSG_PROXIMA, answer);
    QTimer::singleShot(0, qApp, [=] { afterLesson(sender, word, answer); });
}

int main(int argc, char **argv)
{
    preparePlatform();
    QApplication app(argc, argv);
    const QString name = QFileInfo(QString::fromLocal8Bit(argv[0])).completeBaseName();
    QWidget corpo;
    auto *dentro = new QWidget(&corpo);
    auto *irmao = new QWidget(&corpo);
    dentro->setObjectName(u"dentro"_s);
    dentro->setMinimumSize(kMenorDentro);
    dentro->setGeometry(kDentro);
    irmao->setGeometry(kDentro);
    corpo.setMinimumSize(kMenorCorpo);
    corpo.move(kCorpo.topLeft());
    corpo.resize(kCorpo.size());
    gCorpo = &corpo;
    Endereco lugar(&corpo);
    gLugar = &lugar;
    setSendLimit(0);
    lugar.replaceProc([](Janela, quint32 message, quintptr sender, qintptr lParam) -> qintptr {
        if (message != kCopyData)
            return 0;
        const auto &data = *reinterpret_cast<const CopyData *>(lParam);
        const QString text =
            decode1252(QByteArrayView(static_cast<const char *>(data.bytes), data.size ? data.size - 1 : 0));
        note(QString::number(data.code) + u' ' + text);
        if (data.code == MSG_AULA) {
            notePlaces();
            runLesson(sender, text);
        }
        if (data.code == MSG_SAI)
            QTimer::singleShot(gSaida.isEmpty() ? 0 : kLate, qApp, [sender] { leave(sender); });
        return 1;
    });
    note("inicio "_L1 + QString::number(app.applicationPid()) + u' ' + name + u' '
        + app.arguments().sliced(1).join(u' '));
    const QHash<QString, QString> titles{{u"Desenho"_s, u"Editor de Desenhos"_s}, {u"Vrel"_s, u"Histórias"_s},
        {u"Calc"_s, u"Calculadora"_s}, {u"calc"_s, u"Calculadora"_s}};
    lugar.publish(titles.value(name, name) + " - Quorel"_L1, {name == "Zeto"_L1 ? u"ZETO"_s : name, dentro});
    corpo.show();
    corpo.move(corpo.pos() + kCorpo.topLeft() - cantoDe(corpo)); // where the toolkit takes a frame for granted
    return app.exec();
}
