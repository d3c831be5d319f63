#include "tools/blocos_arquivos.h"

#include "platform/caminho.h"
#include "platform/codec.h"
#include "startup/texto_util.h"

#include <QFile>
#include <QFileInfo>

namespace quorel::blocos {

using namespace Qt::StringLiterals;

static ArquivoDeBloco describe(const QString &caminho)
{
    constexpr qsizetype kNivel = 2; // letters of a level
    const QFileInfo info(caminho);
    QString nivel = QFileInfo(info.absolutePath()).fileName();
    if (nivel.size() != kNivel)
        nivel = info.completeBaseName().right(kNivel);
    return {caminho, info.fileName(), upper1252(nivel)};
}

std::optional<QList<ArquivoDeBloco>> arquivosDe(const QString &caminho)
{
    const QFileInfo info(caminho);
    if (!info.exists())
        return std::nullopt;
    if (!info.isDir())
        return QList<ArquivoDeBloco>{describe(caminho)};
    const QStringList nomes = fileNames(backslashPath(info.absoluteFilePath()), u".edb"_s);
    if (nomes.isEmpty())
        return std::nullopt;
    QList<ArquivoDeBloco> arquivos;
    const QString base = caminho.endsWith(u'/') ? caminho : caminho + u'/';
    for (const QString &nome : gTexto.OrdenaLista(nomes.join(u';'), u";"_s, u";"_s, 1, 0, -1).split(u';'))
        arquivos += describe(base + nome);
    return arquivos;
}

std::optional<QByteArray> leArquivo(const QString &caminho)
{
    QFile file(caminho);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

} // namespace quorel::blocos
