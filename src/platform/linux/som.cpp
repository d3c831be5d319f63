#include "platform/som.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>
#include <QProcess>
#include <QStandardPaths>

namespace quorel {

namespace {

/// The player at work, a child of the application object; one for the process.
QPointer<QProcess> &player()
{
    static QPointer<QProcess> running;
    return running;
}

QString playerProgram()
{
    for (const QLatin1String name : {QLatin1String("pw-play"), QLatin1String("paplay"), QLatin1String("aplay")}) {
        QString found = QStandardPaths::findExecutable(name);
        if (!found.isEmpty())
            return found;
    }
    return {};
}

} // namespace

bool playSound(const QString &native)
{
    stopSound();
    const QString program = playerProgram();
    if (program.isEmpty() || !QFileInfo(native).isFile())
        return false;
    auto *process = new QProcess(QCoreApplication::instance());
    player() = process;
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice()); // what a machine without a sound device has to say
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    QObject::connect(process, &QProcess::errorOccurred, process, &QObject::deleteLater);
    process->start(program, {native});
    return true;
}

void stopSound()
{
    if (QProcess *running = player()) {
        player().clear();
        running->kill();
    }
}

} // namespace quorel
