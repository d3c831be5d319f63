#pragma once

#include "support/failure.h"

#include "platform/caixas.h"

#include <QApplication>
#include <QList>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <functional>
#include <vector>

namespace quorel::teste {

/// A backslash path of a file below a directory given natively: how tests hand real temporary files to the system.
QString barras(const QString &native);

/// Writes bytes to a native path, making its directories. Fails the test when it can't.
void escreve(const QString &native, const QByteArray &bytes);
QByteArray le(const QString &native); ///< whole file; a missing one is empty

/// A directory of the test's own, gone with its scope. Its path holds no "-", at which names of media are cut.
class ScratchDir
{
public:
    ScratchDir();
    ~ScratchDir();
    Q_DISABLE_COPY_MOVE(ScratchDir)
    QString native(const QString &rest = {}) const { return mDir.path() + rest; } ///< of what lies in it, "/sub/file"
    QString at(const QString &rest = {}) const { return barras(mDir.path()) + rest; } ///< with backslashes, "\subile"
    void put(const QString &rest, const QByteArray &bytes = "x") const { escreve(native(rest), bytes); }
    QByteArray get(const QString &rest) const { return le(native(rest)); }

private:
    QTemporaryDir mDir;
};

/// A program that ends with its scope, at the latest. Fails the test when it does not start.
class ChildProcess final : public QProcess
{
public:
    explicit ChildProcess(const QString &program, const QStringList &arguments = {});
    ~ChildProcess() override { end(); }
    void end(); ///< at once, wherever it hangs
};

/// What a console program printed, with "\n" at the ends of lines, also where the system writes "\r\n".
QByteArray linhas(QByteArray printed);

/// Answers message and input boxes from a list, in order; a box too many, or one never shown, fails the test at the
/// end of the scope. Restores the real boxes then.
class BoxScript final
{
    Q_DISABLE_COPY_MOVE(BoxScript)
public:
    explicit BoxScript(std::initializer_list<Resposta> respostas = {});
    ~BoxScript();

    void respondeTexto(const QString &texto) { mTextos.push_back(texto); } ///< one more answer for input boxes
    const std::vector<Caixa> &shown() const { return mShown; }
    const std::vector<CaixaTexto> &asked() const { return mAsked; }
    const Caixa &last() const;

private:
    std::deque<Resposta> mRespostas;
    std::deque<QString> mTextos;
    std::vector<Caixa> mShown;
    std::vector<CaixaTexto> mAsked;
};

/// Answers the next modal window of a kind as soon as it is up, within its scope.
template <typename T>
class NextWindow final
{
    Q_DISABLE_COPY_MOVE(NextWindow)
public:
    explicit NextWindow(std::function<void(T &window)> answer) : mAnswer(std::move(answer))
    {
        QObject::connect(&mTimer, &QTimer::timeout, &mTimer, [this] {
            auto *window = qobject_cast<T *>(QApplication::activeModalWidget());
            if (!window || !window->isVisible()) // its load may run events before it is there
                return;
            mTimer.stop();
            mAnswer(*window);
        });
        mTimer.start(1);
    }

    bool came() const { return !mTimer.isActive(); }

private:
    std::function<void(T &window)> mAnswer;
    QTimer mTimer;
};

/// A control of a window by its objectName; fails the test with the name it missed.
template <typename T>
T &child(const QWidget &window, const QString &name)
{
    T *found = window.findChild<T *>(name);
    if (!found)
        qFatal("no control %s in %s", qPrintable(name), qPrintable(window.objectName()));
    return *found;
}

/// Turns unexpected Qt warnings into failures (the offscreen plugin's own remarks excepted). Call it in every init().
void failOnWarnings();

} // namespace quorel::teste
