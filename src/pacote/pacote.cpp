#include "pacote/pacote.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace quorel::pacote {

static constexpr qint64 kMaxManifesto = 1 << 20; // bytes

std::unique_ptr<Pacote> Pacote::abre(const QString &native, QStringList &problemas)
{
    std::unique_ptr<Pacote> made(new Pacote(native));
    if (!made->mZip.aberto()) {
        problemas += u"não é um pacote: o arquivo não existe, não pode ser lido ou não é um zip"_s;
        return nullptr;
    }
    return made->examine(problemas) ? std::move(made) : nullptr;
}

bool Pacote::examine(QStringList &problemas)
{
    if (mZip.quantas() > kMaxArquivos) {
        problemas += u"o pacote diz ter %1 arquivos; o máximo é %2"_s.arg(mZip.quantas()).arg(kMaxArquivos);
        return false;
    }
    const auto &entries = mZip.entradas();
    if (qint64(entries.size()) != mZip.quantas() || entries.empty() || entries[0].nome != QStringView(kNomeTipo)
        || !entries[0].guardada || mZip.le(0, sizeof kTipo) != QByteArray(kTipo)) {
        problemas +=
            u"não é um pacote de lições: o primeiro arquivo não é \"mimetype\" com %1"_s.arg(QLatin1StringView(kTipo));
        return false;
    }
    if (!examineEntries(problemas))
        return false;
    std::size_t at = 1;
    while (at < entries.size() && entries[at].nome != QStringView(kNomeManifesto))
        ++at;
    const std::optional<QByteArray> text = at < entries.size() ? mZip.le(at, kMaxManifesto) : std::nullopt;
    if (!text) {
        problemas += u"falta o manifesto.json, ou não pode ser lido"_s;
        return false;
    }
    const std::optional<ManifestoRec> manifesto = leManifesto(*text, problemas);
    mManifesto = manifesto.value_or(ManifestoRec());
    return manifesto.has_value();
}

bool Pacote::examineEntries(QStringList &problemas)
{
    const qsizetype before = problemas.size();
    QSet<QString> seen; // systems that know no case would write one over the other
    qint64 total = 0;
    for (std::size_t i = 0; i < mZip.entradas().size(); ++i) {
        const EntradaZip &entry = mZip.entradas()[i];
        if (seen.contains(entry.nome.toCaseFolded()))
            problemas += u"o nome aparece duas vezes: "_s + entry.nome;
        seen += entry.nome.toCaseFolded();
        total += qMin(entry.tamanho, kMaxTotal + 1); // claims may be of any size
        if (!take(entry, i, problemas) || total > kMaxTotal) {
            if (total > kMaxTotal)
                problemas += u"desempacotado passa de %1 MB"_s.arg(kMaxTotal >> 20);
            return false;
        }
    }
    return problemas.size() == before;
}

/// @return false where it makes no sense to look further
bool Pacote::take(const EntradaZip &entrada, std::size_t indice, QStringList &problemas)
{
    constexpr qsizetype kEnough = 20; // sentences
    const Genero genero = generoDe(entrada.nome);
    if (entrada.atalho)
        problemas += u"é um atalho (link), que um pacote não pode conter: "_s + entrada.nome;
    else if (entrada.nome.endsWith(u'/') && entrada.tamanho == 0 && generoDe(entrada.nome + u"a.txt"_s) == Genero::Html)
        return true; // a folder, as other programs write it
    else if (genero == Genero::Nenhum)
        problemas += u"nome que um pacote não pode conter: \"%1\""_s.arg(entrada.nome);
    else if (!entrada.legivel)
        problemas += u"está cifrado, ou comprimido de um modo que não é lido: "_s + entrada.nome;
    else if (entrada.tamanho > kMaxArquivo)
        problemas += u"passa de %1 MB: %2"_s.arg(kMaxArquivo >> 20).arg(entrada.nome);
    else if (genero != Genero::Tipo && genero != Genero::Manifesto)
        mArquivos.push_back({entrada.nome, genero, entrada.tamanho, indice});
    return problemas.size() < kEnough;
}

qint64 Pacote::total() const
{
    qint64 sum = 0;
    for (const ArquivoRec &each : mArquivos)
        sum += each.tamanho;
    return sum;
}

bool Pacote::copia(const ArquivoRec &arquivo, QIODevice &destino) const
{
    return mZip.copia(arquivo.indice, destino, kMaxArquivo);
}

std::optional<QByteArray> Pacote::le(const ArquivoRec &arquivo) const
{
    return mZip.le(arquivo.indice, kMaxArquivo);
}

} // namespace quorel::pacote
