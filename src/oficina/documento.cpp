#include "oficina/documento.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace quorel {

QString blocoDaFonte(const QString &native)
{
    static const QRegularExpression form(u"^(\\d{4}[A-Za-z]{2})([A-Za-z][0-9])?$"_s);
    const QFileInfo file(native);
    const auto match = form.match(file.completeBaseName());
    if (!match.hasMatch())
        return {};
    static const QRegularExpression level(u"^[A-Za-z][0-9]$"_s);
    QString nivel = match.captured(2);
    if (nivel.isEmpty() && level.match(file.absoluteDir().dirName()).hasMatch())
        nivel = file.absoluteDir().dirName();
    return nivel.isEmpty() ? QString() : file.absoluteDir().filePath((match.captured(1) + nivel).toUpper() + u".EDB"_s);
}

std::optional<QString> Documento::read(const QString &path, bool isBlock)
{
    if (QFileInfo(path).size() > kMaxFonte)
        return std::nullopt;
    const std::optional<QByteArray> bytes = readWhole(path);
    if (!bytes)
        return std::nullopt;
    QString text = QString::fromUtf8(isBlock ? sourceOfBlock(*bytes) : *bytes);
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    constexpr qsizetype kMaxLinha = 20000; // characters; an editor takes minutes to lay out a line without end
    for (const QStringView line : QStringView(text).tokenize(u'\n')) {
        if (line.size() > kMaxLinha)
            return std::nullopt;
    }
    return text;
}

std::optional<Documento> Documento::abre(const QString &native, QString &fault)
{
    Documento made;
    made.mPath = QFileInfo(native).absoluteFilePath();
    made.mIsBlock = native.endsWith(u".edb"_s, Qt::CaseInsensitive);
    made.mDestination = made.mIsBlock ? made.mPath : blocoDaFonte(made.mPath);
    const std::optional<QString> text = read(made.mPath, made.mIsBlock);
    if (!text) {
        fault = u"Não foi possível abrir %1: não existe, não pode ser lido, passa de 2 MB, ou tem uma "
                "linha de mais de 20000 letras."_s.arg(QDir::toNativeSeparators(native));
        return std::nullopt;
    }
    made.mText = *text;
    return made;
}

std::optional<bool> Documento::mudouNoDisco()
{
    std::optional<QString> text = read(mPath, mIsBlock);
    if (!text)
        return std::nullopt;
    const bool changed = *text != mText;
    mText = *std::move(text);
    return changed;
}

static bool writeFile(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

Documento::Gravacao Documento::grava(const QString &texto)
{
    const auto failed = [](const QString &path) {
        return Gravacao{u"Não foi possível gravar %1. Veja se a pasta pode ser mudada por você."_s.arg(
                            QDir::toNativeSeparators(path)),
            false};
    };
    const QByteArray utf8 = texto.toUtf8();
    if (!mIsBlock && !writeFile(mPath, utf8))
        return failed(mPath);
    mText = texto;
    if (mDestination.isEmpty())
        return {};
    const MadeBlock made = makeBlock(utf8, mPath, blockFile(mDestination));
    if (!made.understood)
        return {};
    if (!writeFile(mDestination, made.edb))
        return failed(mDestination);
    return {{}, true};
}

} // namespace quorel
