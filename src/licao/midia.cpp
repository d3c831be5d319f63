#include "licao/midia.h"

#include "platform/caminho.h"
#include "platform/codec.h"
#include "platform/sistema.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace quorel {

/// The media root of a configuration, in backslash form; that of the Windows directory when it names none.
static QString mediaRoot(const QString &cfg)
{
    const QString installation = windowsDirectory() + u"\\QUOREL2001"_s;
    QFile file(nativePath(cfg));
    const QString text = !cfg.isEmpty() && file.open(QIODevice::ReadOnly) ? decode1252(file.readAll()) : QString();
    for (const QStringView line : QStringView(text).tokenize(u"\r\n")) {
        constexpr QStringView kChave = u"ZETO_MM=";
        if (!line.startsWith(kChave, Qt::CaseInsensitive) || line.size() == kChave.size())
            continue;
        QString value = line.sliced(kChave.size()).toString();
        return value.replace(u'@', volumeOf(cfg)).replace(u'#', installation);
    }
    return installation + u"\\zeto_mm"_s;
}

/// @param caminho  backslash form, without the ending
static QString firstFile(const QString &caminho, std::initializer_list<QStringView> endings)
{
    for (const QStringView ending : endings) {
        const QString native = nativePath(caminho + ending.toString());
        if (QFileInfo(native).isFile())
            return native;
    }
    return {};
}

Midia midiaDaConfiguracao(const QString &cfg)
{
    const QString root = mediaRoot(cfg);
    Midia midia;
    midia.figura = [root](const QString &nome) {
        const QString stem = nome.section(u'-', 0, 0).section(u'.', 0, 0);
        if (stem.isEmpty())
            return QString();
        const QChar shard = stem.size() > 4 ? stem[4] : QChar(u'_'); // the fifth character, or none
        return firstFile(root + u"\\Fig\\"_s + stem[0] + u'\\' + shard + u'\\' + stem, {u".GIF", u".BMP"});
    };
    midia.som = [root](const QString &nome) {
        const QString stem = nome.section(u'.', 0, 0);
        return stem.isEmpty() ? QString() : firstFile(root + u"\\Som\\"_s + stem[0] + u'\\' + stem, {u".WAV"});
    };
    return midia;
}

} // namespace quorel
