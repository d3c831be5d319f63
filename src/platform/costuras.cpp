#include "platform/costuras.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdlib>

namespace quorel {

static void pauseNow(int milliseconds)
{
    const std::chrono::milliseconds time(std::max(milliseconds, 0));
    if (!QCoreApplication::instance()) { // a program without events
        QThread::msleep(static_cast<unsigned long>(time.count()));
        return;
    }
    QEventLoop loop;
    QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

static void endProcessNow(int exitCode)
{
    std::_Exit(exitCode); // encerraPrograma() has flushed
}

static Costuras realOnes()
{
    return {mostraCaixa, pedeTexto, [] { return QDateTime::currentDateTime(); }, pauseNow, startProgramNow,
        openDocumentNow, endProcessNow};
}

Costuras &costuras()
{
    static Costuras inForce = realOnes();
    return inForce;
}

void reiniciaCosturas()
{
    costuras() = realOnes();
}

// Each is copied before the call: another one may be put in its place while it runs.

Resposta caixa(const Caixa &pedido)
{
    const auto box = costuras().box;
    return box(pedido);
}

QString perguntaTexto(const CaixaTexto &pedido)
{
    const auto input = costuras().input;
    return input(pedido);
}

void pausa(int milliseconds)
{
    const auto pause = costuras().pause;
    pause(milliseconds);
}

QDateTime agora()
{
    const auto now = costuras().now;
    return now();
}

bool startProgram(const ProgramRequest &request)
{
    const auto start = costuras().startProgram;
    return start(request);
}

bool openDocument(const DocumentRequest &request)
{
    const auto open = costuras().openDocument;
    return open(request);
}

} // namespace quorel
