#include "pacote/manifesto.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace quorel::pacote {

namespace {

QStringList textsOf(const QJsonValue &value)
{
    QStringList all;
    for (const QJsonArray array = value.toArray(); const auto &each : array) {
        const QString text = each.isObject() ? each[u"name"_s].toString() : each.toString();
        if (!text.trimmed().isEmpty())
            all += text.trimmed();
    }
    return all;
}

QJsonArray arrayOf(const QStringList &texts)
{
    return QJsonArray::fromStringList(texts);
}

void examine(const ManifestoRec &m, QStringList &problemas)
{
    static const QRegularExpression spdx(u"^[A-Za-z0-9][A-Za-z0-9.+-]*$"_s);
    static const QRegularExpression language(u"^[a-z]{2,3}(-[A-Za-z0-9]+)*$"_s);
    if (!language.match(m.language).hasMatch())
        problemas += u"manifesto.json: \"language\" deve ser o código da língua, como \"pt-BR\""_s;
    if (!spdx.match(m.license).hasMatch())
        problemas += u"manifesto.json: \"license\" deve ser o código SPDX da licença, como \"CC-BY-4.0\""_s;
    if (m.authors.isEmpty())
        problemas += u"manifesto.json: falta \"authors\", uma lista de {\"name\": \"…\", \"role\": \"Author\"}"_s;
}

} // namespace

std::optional<ManifestoRec> leManifesto(const QByteArray &bytes, QStringList &problemas)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (!document.isObject()) {
        problemas += u"manifesto.json não é um objeto JSON (byte %1)"_s.arg(error.offset);
        return std::nullopt;
    }
    const QJsonObject object = document.object();
    ManifestoRec m{.title = object[u"title"_s].toString().trimmed(),
        .language = object[u"language"_s].toString(),
        .license = object[u"license"_s].toString(),
        .authors = textsOf(object[u"authors"_s]),
        .version = object[u"version"_s].toString(),
        .formatVersion = object[u"formatVersion"_s].toInt(0),
        .level = textsOf(object[u"level"_s]),
        .months = textsOf(object[u"months"_s]),
        .bncc = textsOf(object[u"bncc"_s])};
    examine(m, problemas);
    if (m.title.isEmpty())
        problemas += u"manifesto.json: falta \"title\", o nome do pacote"_s;
    if (m.formatVersion < 1 || m.formatVersion > kFormato)
        problemas += u"manifesto.json: \"formatVersion\" deve ser 1; um pacote de forma mais nova pede um programa "
                     "mais novo"_s;
    if (m.title.isEmpty() || m.formatVersion < 1 || m.formatVersion > kFormato)
        return std::nullopt;
    return m;
}

QByteArray textoDoManifesto(const ManifestoRec &manifesto)
{
    QJsonArray authors;
    for (const QString &name : manifesto.authors)
        authors += QJsonObject{{u"name"_s, name}, {u"role"_s, u"Author"_s}};
    return QJsonDocument(
        QJsonObject{{u"title"_s, manifesto.title}, {u"language"_s, manifesto.language},
            {u"license"_s, manifesto.license}, {u"authors"_s, authors}, {u"version"_s, manifesto.version},
            {u"formatVersion"_s, manifesto.formatVersion}, {u"level"_s, arrayOf(manifesto.level)},
            {u"months"_s, arrayOf(manifesto.months)}, {u"bncc"_s, arrayOf(manifesto.bncc)}})
        .toJson();
}

QByteArray manifestoDeExemplo()
{
    return QByteArray(R"({
  "title": "Nome do pacote",
  "language": "pt-BR",
  "license": "CC-BY-4.0",
  "authors": [{"name": "Seu nome", "role": "Author"}],
  "version": "1.0",
  "formatVersion": 1
}
)");
}

} // namespace quorel::pacote
