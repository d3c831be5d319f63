// A child program for tests, known by the titles that belong to the name it is started under. It writes what it gets
// into the file named by FILHO_DIARIO, and a lesson tells it what to do.
#include "platform/codec.h"
#include "platform/endereco.h"
#include "platform/preparo.h"
#include "platform/protocolo.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QTimer>

#include <unistd.h>

using namespace quorel;
using namespace Qt::StringLiterals;

static Endereco *gLugar = nullptr;

static void note(const QString &line)
{
    QFile diary(qEnvironmentVariable("FILHO_DIARIO"));
    if (diary.open(QIODevice::Append))
        diary.write(line.toUtf8() + '\n');
}

static qintptr report(Janela sender, quint32 code, QByteArrayView bytes, qint32 size)
{
    return sendCopyData(publishedWindowOf(sender, kTituloGerenciador), gLugar->handle(), code, size, bytes);
}

static void sendProxima(Janela sender, const QString &answer)
{
    QByteArray bytes = encode1252(answer);
    bytes.append('\0');
    report(sender, MSG_PROXIMA, bytes, qint32(bytes.size()));
}

static void runLesson(Janela sender, const QString &linha)
{
    const QString word = linha.section(u':', 0, 0);
    const QString answer = linha.section(u':', 1);
    if (word == "MORRE"_L1)
        ::_exit(3);
    if (word == "MUDO"_L1)
        ::pause();
    if (word == "DENTRO"_L1)
        sendProxima(sender, answer);
    if (word == "FORA"_L1)
        QTimer::singleShot(0, qApp, [=] { sendProxima(sender, answer); });
    if (word == "SEMNUL"_L1)
        QTimer::singleShot(0, qApp, [=] { report(sender, MSG_PROXIMA, "abc", 3); });
    if (word == "ENXURRADA"_L1)
        QTimer::singleShot(0, qApp, [=] {
            for (int i = 0; i < 500; ++i)
                report(sender, 4711, "x", 2);
            report(sender, MSG_PROXIMA, QByteArray(300000, 'x'), 300000); // never gets there
            sendProxima(sender, answer);
        });
}

int main(int argc, char **argv)
{
    preparePlatform();
    QApplication app(argc, argv);
    const QString name = QFileInfo(QString::fromLocal8Bit(argv[0])).completeBaseName();
    Endereco lugar;
    gLugar = &lugar;
    setSendLimit(0);
    lugar.replaceProc([](Janela, quint32 message, quintptr sender, qintptr lParam) -> qintptr {
        if (message != kCopyData)
            return 0;
        const auto &data = *reinterpret_cast<const CopyData *>(lParam);
        const QString text =
            decode1252(QByteArrayView(static_cast<const char *>(data.bytes), data.size ? data.size - 1 : 0));
        note(QString::number(data.code) + u' ' + text);
        if (data.code == MSG_AULA)
            runLesson(sender, text);
        if (data.code == MSG_SAI)
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        return 1;
    });
    note("inicio "_L1 + QString::number(app.applicationPid()) + u' ' + name + u' '
        + app.arguments().sliced(1).join(u' '));
    const QHash<QString, QString> titles{{u"Desenho"_s, u"Editor de Desenhos"_s}, {u"Vrel"_s, u"Histórias"_s},
        {u"Calc"_s, u"Calculadora"_s}, {u"calc"_s, u"Calculadora"_s}};
    lugar.publish(titles.value(name, name) + " - Quorel"_L1);
    return app.exec();
}
