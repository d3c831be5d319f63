#pragma once

#include "pacote/manifesto.h"
#include "pacote/nomes.h"
#include "pacote/zip.h"

#include <functional>

namespace quorel::pacote {

// Limits of a pack. A whole year of a level with its pictures stays far below them.
inline constexpr qint64 kMaxArquivos = 4000;
inline constexpr qint64 kMaxArquivo = 64LL << 20; ///< bytes of one file, unpacked
inline constexpr qint64 kMaxTotal = 1LL << 30; ///< of all

/// One file of a pack that goes somewhere.
struct ArquivoRec
{
    QString nome;
    Genero genero = Genero::Nenhum;
    qint64 tamanho = 0; ///< bytes
    std::size_t indice = 0; ///< in the zip
};

/// A pack whose every name was looked at. What can be told without unpacking has been told.
class Pacote final
{
    Q_DISABLE_COPY_MOVE(Pacote)
public:
    /// @param problemas  gets a sentence for each fault
    /// @return null when one of them makes the pack unfit to be installed; nothing was written anywhere
    static std::unique_ptr<Pacote> abre(const QString &native, QStringList &problemas);

    const ManifestoRec &manifesto() const { return mManifesto; }
    const std::vector<ArquivoRec> &arquivos() const { return mArquivos; } ///< in the pack's order
    qint64 total() const; ///< bytes, unpacked

    /// @return false when the file is damaged or not what it claimed
    bool copia(const ArquivoRec &arquivo, QIODevice &destino) const;
    std::optional<QByteArray> le(const ArquivoRec &arquivo) const;

private:
    explicit Pacote(const QString &native) : mZip(native, kMaxArquivos) { }
    bool examine(QStringList &problemas);
    bool examineEntries(QStringList &problemas);
    bool take(const EntradaZip &entrada, std::size_t indice, QStringList &problemas);

    mutable LeitorZip mZip;
    ManifestoRec mManifesto;
    std::vector<ArquivoRec> mArquivos;
};

/// Told after each file of a long work; false ends it.
using Progresso = std::function<bool(qsizetype feitos, qsizetype todos)>;

} // namespace quorel::pacote
