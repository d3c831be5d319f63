#include "platform/sistema.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"

#include <initializer_list>

namespace quorel {

using namespace Qt::StringLiterals;

/// The two levels of a picture's directory: first character and fifth, or "_" where the name is shorter.
static QString shardOf(const QString &name)
{
    constexpr qsizetype kFifth = 4;
    return name.left(1) + u'\\' + (name.size() > kFifth ? QString(name[kFifth]) : u"_"_s) + u'\\';
}

static QString firstExisting(std::initializer_list<QString> paths)
{
    for (const QString &path : paths) {
        if (gTexto.ArquivoExiste(path))
            return path;
    }
    return {};
}

/// How many rounds a list of subdirectories takes, from field 0 on.
static int lastRound(const QString &list)
{
    // Field 1 of an empty list is the same try as field 0.
    return list.isEmpty() ? 0 : gTexto.ContaDelimitador(list, u";"_s) + 1;
}

static QString pictureDirectory(const QString &field, const QString &name, const QString &base)
{
    constexpr qsizetype kLongestSharded = 8;
    QString directory;
    if (!field.isEmpty())
        directory = field + u'\\';
    else if (!name.contains(u'\\') && name.size() <= kLongestSharded)
        directory = shardOf(name);
    const bool complete = directory.startsWith(u'\\') || (directory.size() > 1 && directory[1] == u':');
    return complete ? directory : base + directory;
}

QString Quorel_Zeto::Nome_Fig(const QString &Nome, QString &Base, const QString &Lista) const
{
    const QString name = gTexto.TextoAntes(Nome, u"-"_s, false);
    if (Nome.isEmpty())
        return {};
    if (!name.contains(u'.')) {
        QString root = Config(u"ZETO_MM"_s);
        if (root.isEmpty())
            root = gSistema.DirWindows() + u"\\Quorel2001\\Zeto_MM"_s;
        const QString sharded = root + u"\\Fig\\"_s + shardOf(name) + name + u".GIF"_s;
        for (int i = 0; i <= lastRound(Lista); ++i) {
            const QString file = pictureDirectory(gTexto.Campo(Lista, i, u";"_s), name, Base) + name;
            QString found = firstExisting({sharded, file + u".GIF"_s, file + u".BMP"_s});
            if (!found.isEmpty())
                return found;
        }
    }
    return firstExisting({name});
}

/// The search that sounds and videos share. @param first  tried before all others in each round, or empty
static QString findFile(
    const QString &name, const QString &base, const QString &list, const QString &ending, const QString &first)
{
    if (!name.contains(u'.')) {
        for (int i = 0; i <= lastRound(list); ++i) {
            QString field = gTexto.Campo(list, i, u";"_s);
            // Kept: no backslash follows the subdirectory; lists that name one carry it themselves.
            if (!field.isEmpty())
                field.prepend(u'\\');
            QString found = firstExisting({first, base + field + name.left(1) + u'\\' + name + ending});
            if (!found.isEmpty())
                return found;
        }
    }
    return firstExisting({name});
}

static void endWithBackslash(QString &base)
{
    if (!base.endsWith(u'\\'))
        base += u'\\';
}

QString Quorel_Zeto::Nome_Video(const QString &Nome, QString &Base, const QString &Lista) const
{
    endWithBackslash(Base);
    return Nome.isEmpty() ? QString() : findFile(Nome, Base, Lista, u".AVI"_s, QString());
}

QString Quorel_Zeto::Nome_Som(const QString &Nome, QString &Base, const QString &Lista) const
{
    endWithBackslash(Base);
    if (Nome.isEmpty())
        return {};
    const QString own =
        gSistema.DirWindows() + u"\\Quorel2001\\Zeto_MM\\Som\\"_s + Nome.left(1) + u'\\' + Nome + u".WAV"_s;
    return findFile(Nome, Base, Lista, u".WAV"_s, own);
}

QString Quorel_Zeto::N_Fig(const QString &Nome) const
{
    // Kept: no backslash behind the Windows directory in the third place; installations beside it are found so.
    for (QString base : {Config(u"ZETO_MM"_s) + u"\\Fig\\"_s, Config(u"MM_ALT"_s) + u"\\Fig\\"_s,
             gSistema.DirWindows() + u"Quorel2001\\Zeto_MM\\fig\\"_s}) {
        QString found = Nome_Fig(Nome, base, QString());
        if (!found.isEmpty())
            return found;
    }
    return {};
}

QString Quorel_Zeto::N_Som(const QString &Nome) const
{
    QString base = Config(u"ZETO_MM"_s) + u"\\Som\\"_s;
    return Nome_Som(Nome, base, QString());
}

QString Quorel_Zeto::N_Video(const QString &Nome) const
{
    QString base = Config(u"ZETO_MM"_s) + u"\\Video\\"_s;
    return Nome_Video(Nome, base, QString());
}

bool Quorel_Zeto::VerificarPlacaSom() const
{
    return waveOutputCount() > 0;
}

} // namespace quorel
