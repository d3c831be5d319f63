#include "autoria/mediaplace.h"

#include "platform/caminho.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace quorel {

QString mediaRoot()
{
    const QString configured = gConfig.Config(u"ZETO_MM"_s);
    return configured.isEmpty() ? gSistema.DirWindows() + u"\\Quorel2001\\Zeto_MM"_s : configured;
}

QString figurePlace(const QString &name)
{
    constexpr qsizetype kFifth = 4;
    const QChar second = name.size() > kFifth ? name[kFifth] : u'_';
    return mediaRoot() + u"\\Fig\\"_s + name.first(1) + u'\\' + second + u'\\' + name + u".BMP"_s;
}

QString soundPlace(const QString &name)
{
    return mediaRoot() + u"\\Som\\"_s + name.first(1) + u'\\' + name + u".WAV"_s;
}

QString putMedia(const QString &place, const QByteArray &bytes, QString &fault)
{
    const QString native = nativePath(place);
    QSaveFile file(native);
    if (QDir().mkpath(QFileInfo(native).path()) && file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()
        && file.commit())
        return native;
    fault = u"não foi possível escrever %1; veja se a pasta das figuras e sons pode ser mudada por você"_s.arg(
        QDir::toNativeSeparators(native));
    return {};
}

bool loadConfiguration(const QString &cfg)
{
    const QString own = gSistema.DirWindows() + u"\\QUOREL2001"_s;
    const QString path = cfg.isEmpty() ? own + u"\\zeto_cnf.txt"_s : backslashPath(cfg);
    gConfig = Quorel_Zeto();
    if (!gTexto.ArquivoExiste(path))
        return cfg.isEmpty() && QFileInfo(nativePath(own)).isDir();
    gConfig.Init(path, u"\\*"_s); // a name that no register bears
    return true;
}

} // namespace quorel
