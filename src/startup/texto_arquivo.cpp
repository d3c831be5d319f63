#include "startup/texto_util.h"

#include "platform/caminho.h"
#include "platform/codec.h"
#include "platform/costuras.h"
#include "platform/sistema.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace quorel {

using namespace Qt::StringLiterals;

static bool isFile(const QString &native)
{
    return !native.isEmpty() && QFileInfo(native).isFile();
}

QByteArray TextoUtil::LeBytes(const QString &Caminho) const
{
    const QString native = nativePath(Caminho);
    QFile file(native);
    return isFile(native) && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString TextoUtil::LeArquivo(const QString &Caminho, int, int) const
{
    return decode1252(LeBytes(Caminho));
}

bool TextoUtil::ArquivoExiste(const QString &Caminho) const
{
    const QString native = nativePath(Caminho);
    if (native.isEmpty())
        return false;
    const QFileInfo info(native);
    return Caminho.endsWith(u'\\') ? info.isDir() : info.isFile();
}

QString TextoUtil::ArquivoTemporario(const QString &Prefixo) const
{
    // The whole pattern is made native: a prefix by itself would take the spelling of a file named so.
    const QString pattern = nativePath(temporaryDirectory() + u'\\' + Prefixo + u"XXXXXX.TMP"_s);
    if (pattern.isEmpty())
        return {};
    QTemporaryFile file(pattern);
    file.setAutoRemove(false);
    return file.open() ? backslashPath(file.fileName()) : QString();
}

static bool replaceContent(QFile &file, const QByteArray &bytes)
{
    return file.seek(0) && file.write(bytes) == bytes.size() && file.flush() && file.resize(bytes.size());
}

/// For a file that may be written in a directory that may not. It is never emptied first, and what can't be written
/// whole is taken back.
static void writeInPlace(const QString &native, const QByteArray &bytes)
{
    QFile file(native);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        return;
    const QByteArray before = file.readAll();
    if (!replaceContent(file, bytes))
        replaceContent(file, before);
}

void TextoUtil::GravaArquivo(const QString &Caminho, const QString &Texto, int, int) const
{
    const QString native = nativePath(Caminho);
    if (native.isEmpty())
        return;
    const QByteArray bytes = encode1252(Texto);
    QSaveFile file(native); // a file beside it that takes its name at the end
    const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    if (!written)
        writeInPlace(native, bytes);
}

void TextoUtil::ApagaArquivo(const QString &Caminho) const
{
    const QString native = nativePath(Caminho);
    if (!native.isEmpty())
        QFile::remove(native);
}

/// The program and the rest of a command line; no program when no beginning names a file. A name without a directory
/// may also be one of the system's programs.
static ProgramRequest splitCommand(const QString &command)
{
    if (command.startsWith(u'"')) {
        const qsizetype quote = command.indexOf(u'"', 1);
        const QString native = quote < 0 ? QString() : nativePath(command.sliced(1, quote - 1));
        if (isFile(native))
            return {.program = native, .arguments = command.sliced(quote + 1)};
    }
    for (qsizetype end = command.size(); end > 0; end = command.lastIndexOf(u' ', end - 1)) {
        const QString native = nativePath(command.first(end));
        if (isFile(native))
            return {.program = native, .arguments = command.mid(end + 1)};
    }
    const QString name = command.section(u' ', 0, 0);
    if (name.isEmpty() || name.contains(u'\\') || name.contains(u'/'))
        return {};
    return {.program = QStandardPaths::findExecutable(name), .arguments = command.mid(name.size() + 1)};
}

int TextoUtil::Executa(const QString &Comando, int, bool Espera, const QString &) const
{
    ProgramRequest request = splitCommand(Comando);
    request.waitUntilReady = Espera;
    return !request.program.isEmpty() && startProgram(request) ? 1 : 0;
}

} // namespace quorel
