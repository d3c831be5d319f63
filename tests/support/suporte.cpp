#include "support/suporte.h"

#include "platform/caminho.h"
#include "platform/costuras.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace quorel::teste {

QString barras(const QString &native)
{
    return backslashPath(native);
}

void escreve(const QString &native, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(native).path());
    QFile file(native);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("can't write %s", qPrintable(native));
}

QByteArray le(const QString &native)
{
    QFile file(native);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

ScratchDir::ScratchDir() : mDir(QDir::tempPath() + QStringLiteral("/scratchXXXXXX")) { }

/// A program that has just ended may hold its file and its directory a moment longer on Windows.
ScratchDir::~ScratchDir()
{
    mDir.setAutoRemove(false);
    if (!QTest::qWaitFor([this] { return QDir(mDir.path()).removeRecursively(); }))
        qWarning("can't remove %s", qPrintable(mDir.path()));
}

ChildProcess::ChildProcess(const QString &program, const QStringList &arguments)
{
    setProcessChannelMode(ForwardedErrorChannel);
    start(program, arguments);
    if (!waitForStarted())
        qFatal("%s does not start", qPrintable(program));
}

void ChildProcess::end()
{
    kill();
    waitForFinished();
}

QByteArray linhas(QByteArray printed)
{
    return printed.replace("\r\n", "\n");
}

BoxScript::BoxScript(std::initializer_list<Resposta> respostas) : mRespostas(respostas)
{
    costuras().box = [this](const Caixa &caixa) {
        mShown.push_back(caixa);
        if (mRespostas.empty()) {
            QTest::qFail(qPrintable(QStringLiteral("unexpected box: ") + caixa.texto), __FILE__, __LINE__);
            return caixa.botoes == Botoes::Ok ? Resposta::Ok : Resposta::Nao;
        }
        const Resposta resposta = mRespostas.front();
        mRespostas.pop_front();
        return resposta;
    };
    costuras().input = [this](const CaixaTexto &caixa) {
        mAsked.push_back(caixa);
        if (mTextos.empty()) {
            QTest::qFail(qPrintable(QStringLiteral("unexpected input box: ") + caixa.texto), __FILE__, __LINE__);
            return QString();
        }
        const QString texto = mTextos.front();
        mTextos.pop_front();
        return texto;
    };
}

BoxScript::~BoxScript()
{
    costuras().box = mostraCaixa;
    costuras().input = pedeTexto;
    if (!mRespostas.empty() || !mTextos.empty())
        QTest::qFail("a box was expected and never shown", __FILE__, __LINE__);
}

const Caixa &BoxScript::last() const
{
    if (mShown.empty())
        qFatal("no box was shown");
    return mShown.back();
}

void failOnWarnings()
{
    QTest::failOnWarning(
        QRegularExpression(QStringLiteral("^(?!This plugin does not support|Cannot create accessible)")));
}

} // namespace quorel::teste
