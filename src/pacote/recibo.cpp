#include "pacote/recibo.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace quorel::pacote {

QString nomeDoRecibo(const QString &title)
{
    QString name;
    for (const QChar c : title.normalized(QString::NormalizationForm_D)) {
        if (c.unicode() < 0x80 && c.isLetterOrNumber()) // NOLINT: the letters without accents
            name += c.toLower();
        else if (!c.isMark() && !name.isEmpty() && !name.endsWith(u'-'))
            name += u'-';
    }
    constexpr qsizetype kMax = 60;
    name.truncate(kMax);
    while (name.endsWith(u'-'))
        name.chop(1);
    return name.isEmpty() ? u"pacote"_s : name;
}

static QString fileOf(const QString &pasta, const QString &nome)
{
    return pasta + u'/' + nome + u".json"_s;
}

QString pastaDasCopias(const QString &pasta, const QString &nome)
{
    return pasta + u'/' + nome;
}

std::optional<ReciboRec> leRecibo(const QString &pasta, const QString &nome)
{
    QFile file(fileOf(pasta, nome));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    ReciboRec recibo{nome, object[u"title"_s].toString(), object[u"version"_s].toString(), {}, {}};
    if (recibo.title.isEmpty())
        return std::nullopt;
    for (const QJsonArray roots = object[u"raizes"_s].toArray(); const auto &each : roots)
        recibo.raizes += each.toString();
    for (const QJsonArray files = object[u"arquivos"_s].toArray(); const auto &each : files)
        recibo.arquivos.push_back({each[u"caminho"_s].toString(), each[u"soma"_s].toString(), each[u"nosso"_s].toBool(),
            each[u"antes"_s].toString()});
    return recibo;
}

std::vector<ReciboRec> leRecibos(const QString &pasta)
{
    std::vector<ReciboRec> all;
    for (const QStringList names = QDir(pasta).entryList({u"*.json"_s}, QDir::Files, QDir::Name);
         const QString &each : names) {
        if (auto recibo = leRecibo(pasta, each.chopped(5))) // NOLINT: ".json"
            all.push_back(*std::move(recibo));
    }
    return all;
}

bool gravaRecibo(const QString &pasta, const ReciboRec &recibo)
{
    QJsonArray files;
    for (const PostoRec &each : recibo.arquivos)
        files += QJsonObject{
            {u"caminho"_s, each.caminho}, {u"soma"_s, each.soma}, {u"nosso"_s, each.nosso}, {u"antes"_s, each.antes}};
    const QJsonObject object{{u"title"_s, recibo.title}, {u"version"_s, recibo.version},
        {u"raizes"_s, QJsonArray::fromStringList(recibo.raizes)}, {u"arquivos"_s, files}};
    QSaveFile file(fileOf(pasta, recibo.nome));
    return QDir().mkpath(pasta) && file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(object).toJson()) >= 0
        && file.commit();
}

void apagaRecibo(const QString &pasta, const QString &nome)
{
    QFile::remove(fileOf(pasta, nome));
    QDir(pastaDasCopias(pasta, nome)).removeRecursively();
}

QString somaDoArquivo(const QString &native)
{
    QFile file(native);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? QString::fromLatin1(hash.result().toHex())
                                                                 : QString();
}

} // namespace quorel::pacote
