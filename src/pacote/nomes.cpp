#include "pacote/nomes.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace quorel::pacote {

namespace {

constexpr qsizetype kMaxProfundidade = 6;
constexpr qsizetype kMaxFigura = 8; // characters
constexpr qsizetype kMaxMidia = 40;
constexpr qsizetype kQuinta = 4; // 0-based place of the letter that names a figure's second folder

struct TipoDeMidia
{
    QStringView pasta;
    QStringList finais;
};

const std::array<TipoDeMidia, 3> &kinds()
{
    static const std::array<TipoDeMidia, 3> all{
        {{u"Fig", {u"gif"_s, u"bmp"_s}}, {u"Som", {u"wav"_s}}, {u"Video", {u"avi"_s}}}};
    return all;
}

/// Whether a component names a plain file or folder on every system.
bool isPlain(const QString &part)
{
    static const QRegularExpression device(u"^(con|prn|aux|nul|conin\\$|conout\\$|(com|lpt)[0-9¹²³])\\s*(\\.|$)"_s,
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression odd(u"[\\x{00}-\\x{1f}\\x{7f}<>:\"/\\\\|?*]"_s);
    return !part.isEmpty() && !part.startsWith(u'.') && !part.endsWith(u'.') && !part.startsWith(u' ')
        && !part.endsWith(u' ') && !part.contains(odd) && !device.match(part).hasMatch();
}

bool isMedia(const QStringList &parts)
{
    const QString name = nomeDeMidia(parts.last());
    return !name.isEmpty() && name.compare(parts.join(u'/'), Qt::CaseInsensitive) == 0;
}

bool isBlock(const QStringList &parts)
{
    return parts.size() == 3 && nomeDeBloco(parts[2], parts[1]).compare(parts.join(u'/'), Qt::CaseInsensitive) == 0;
}

/// Pages and what they show; nothing that a system would run.
bool isPage(const QStringList &parts)
{
    static const QStringList endings{u"htm"_s, u"html"_s, u"css"_s, u"js"_s, u"txt"_s, u"gif"_s, u"png"_s, u"jpg"_s,
        u"jpeg"_s, u"bmp"_s, u"svg"_s, u"wav"_s, u"mp3"_s, u"ogg"_s, u"mp4"_s, u"webm"_s, u"pdf"_s};
    return parts.size() >= 2 && endings.contains(parts.last().section(u'.', -1).toLower());
}

} // namespace

Genero generoDe(const QString &nome)
{
    if (nome == QStringView(kNomeTipo))
        return Genero::Tipo;
    if (nome == QStringView(kNomeManifesto))
        return Genero::Manifesto;
    const QStringList parts = nome.split(u'/');
    if (parts.size() > kMaxProfundidade || !std::ranges::all_of(parts, isPlain))
        return Genero::Nenhum;
    if (parts.first() == "blocos"_L1 && isBlock(parts))
        return Genero::Bloco;
    if (parts.first() == "midia"_L1 && isMedia(parts))
        return Genero::Midia;
    return parts.first() == "html"_L1 && isPage(parts) ? Genero::Html : Genero::Nenhum;
}

QString nomeDeMidia(const QString &arquivo)
{
    const qsizetype dot = arquivo.lastIndexOf(u'.');
    const QString name = arquivo.first(qMax<qsizetype>(dot, 0)), ending = arquivo.sliced(dot + 1).toLower();
    const auto kind = std::ranges::find_if(kinds(), [&](const TipoDeMidia &k) { return k.finais.contains(ending); });
    if (kind == kinds().end() || name.isEmpty() || !isPlain(name) || name.contains(u'.'))
        return {};
    // A longer figure has no folder of its own in the lookup, and a "-" ends its name there.
    const bool isFigure = kind == kinds().begin();
    if (name.size() > (isFigure ? kMaxFigura : kMaxMidia) || (isFigure && name.contains(u'-')))
        return {};
    QString path = u"midia/"_s + kind->pasta.toString() + u'/' + name.front() + u'/';
    if (isFigure)
        path += (name.size() > kQuinta ? name[kQuinta] : u'_') + u"/"_s;
    return path + arquivo;
}

QString nomeDeBloco(const QString &arquivo, const QString &nivel)
{
    static const QRegularExpression form(
        u"^\\d{4}[A-Z]{2}([A-Z0-9]{2})\\.EDB$"_s, QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = form.match(arquivo);
    const bool same = match.hasMatch() && match.captured(1).compare(nivel, Qt::CaseInsensitive) == 0;
    return same ? u"blocos/"_s + nivel.toUpper() + u'/' + arquivo : QString();
}

QString lugarNoDestino(const QString &nome, Genero genero)
{
    QString path = genero == Genero::Tipo || genero == Genero::Manifesto ? nome : nome.section(u'/', 1);
    return path.replace(u'/', u'\\');
}

} // namespace quorel::pacote
