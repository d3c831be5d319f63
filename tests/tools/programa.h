#pragma once

#include "support/suporte.h"

#include <QDir>
#include <QProcess>

#include <memory>

namespace quorel::teste {

/// A test of a real console program, in a directory of its own for each row.
class TesteDePrograma : public QObject
{
    Q_OBJECT
public:
    explicit TesteDePrograma(const QString &name) : mProgram(QStringLiteral(QUOREL_BIN "/") + name) { }

protected:
    /// Runs the program in the directory. @return its exit code; -1 when it crashed
    int run(const QStringList &arguments)
    {
        QProcess process;
        process.setWorkingDirectory(mDir->native());
        process.start(mProgram, arguments);
        if (!process.waitForFinished())
            return -1;
        mSaida = linhas(process.readAllStandardOutput());
        mErros = linhas(process.readAllStandardError());
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }
    /// Runs the program. @return its exit code and the lines that it printed, or the last one that it told as an error,
    /// " / " between them; "/" in paths on every system
    QString outcome(const QString &arguments)
    {
        const int code = run(arguments.split(u' ', Qt::SkipEmptyParts));
        QStringList told = mSaida.isEmpty() ? errors().trimmed().split(u'\n').last(1) : lines();
        told.replaceInStrings(QString(QDir::separator()), QStringLiteral("/"));
        return (QStringList(QString::number(code)) + told).join(QStringLiteral(" / "));
    }
    QStringList lines() const { return QString::fromUtf8(mSaida).split(u'\n', Qt::SkipEmptyParts); }
    QString errors() const { return QString::fromUtf8(mErros); }
    QString path(const QString &name) const { return mDir->native(u'/' + name); }
    QString file(const QString &name, const QByteArray &bytes) const
    {
        escreve(path(name), bytes);
        return path(name);
    }
    QStringList files() const { return QDir(mDir->native()).entryList(QDir::Files); }

    QByteArray mSaida; ///< what the last run printed
    QByteArray mErros;

protected slots:
    void init()
    {
        failOnWarnings();
        mDir = std::make_unique<ScratchDir>();
    }

private:
    QString mProgram;
    std::unique_ptr<ScratchDir> mDir;
};

} // namespace quorel::teste
