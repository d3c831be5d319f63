#include "pacote/destinos.h"

#include "platform/caminho.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace quorel::pacote {

QString caminhoNativo(const QString &caminho)
{
    return QDir::fromNativeSeparators(nativePath(caminho));
}

static QString configured(const QString &key, const QString &fallback)
{
    const QString value = gConfig.Config(key);
    return value.isEmpty() ? fallback : value;
}

Destinos destinosDaConfiguracao()
{
    const QString own = gSistema.DirWindows() + u"\\QUOREL2001"_s;
    QStringList html{own + u"\\Arqs"_s};
    const QString opened = configured(u"DIRQUOREL"_s, own) + u"\\Arqs"_s;
    if (caminhoNativo(opened) != caminhoNativo(html.first()))
        html += opened;
    return {configured(u"DBBLOCOS"_s, own + u"\\DBBLOCOS"_s), configured(u"ZETO_MM"_s, own + u"\\zeto_mm"_s), html,
        own + u"\\pacotes"_s};
}

Destinos destinosEm(const QString &diretorio)
{
    return {
        diretorio + u"\\DBBLOCOS"_s, diretorio + u"\\zeto_mm"_s, {diretorio + u"\\Arqs"_s}, diretorio + u"\\pacotes"_s};
}

QStringList basesDe(const Destinos &destinos, Genero genero)
{
    switch (genero) {
    case Genero::Bloco:
        return {destinos.blocos};
    case Genero::Midia:
        return {destinos.midia};
    case Genero::Html:
        return destinos.html;
    case Genero::Nenhum:
    case Genero::Tipo:
    case Genero::Manifesto:
        break;
    }
    return {};
}

/// The directory itself, or the nearest one above it that exists, without links.
static QString realDirectory(QString native)
{
    while (!QFileInfo::exists(native) && !QFileInfo(native).isSymLink()) {
        const QString above = QFileInfo(native).path();
        if (above == native)
            return {};
        native = above;
    }
    return QFileInfo(native).canonicalFilePath();
}

QString caminhoSeguro(const QString &base, const QString &lugar)
{
    const QString root = caminhoNativo(base), path = caminhoNativo(base + u'\\' + lugar);
    if (QFileInfo(path).isSymLink())
        return {};
    const QString realRoot = realDirectory(root), realFolder = realDirectory(QFileInfo(path).path());
    const bool rootExists = QFileInfo::exists(root);
    const QString inside = realRoot.endsWith(u'/') ? realRoot : realRoot + u'/';
    const bool below = realFolder == realRoot || realFolder.startsWith(inside);
    // Where the root itself is yet to be made nothing below it exists that could lead elsewhere.
    return !realRoot.isEmpty() && (rootExists ? below : realFolder == realRoot) ? path : QString();
}

} // namespace quorel::pacote
