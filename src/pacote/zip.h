#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace quorel::pacote {

/// What a zip says of one of its files; nothing of it is true before the file is read.
struct EntradaZip
{
    QString nome; ///< as it stands, with "/"; empty when it is no text or longer than 255 bytes
    qint64 tamanho = 0; ///< bytes when unpacked, as claimed
    bool guardada = false; ///< stored, not compressed
    bool legivel = false; ///< stored or deflated, not encrypted
    bool atalho = false; ///< a link, or some other thing that is no plain file
    bool operator==(const EntradaZip &) const = default;
};

/// A zip that somebody else made. Damage never leads further than to an empty result.
class LeitorZip final
{
    Q_DISABLE_COPY_MOVE(LeitorZip)
public:
    /// @param maxEntradas  a zip that says it has more is not looked into: quantas() tells how many
    LeitorZip(const QString &native, qint64 maxEntradas);
    ~LeitorZip();

    bool aberto() const; ///< false for a file that is missing or no zip
    qint64 quantas() const; ///< files that it says it has
    const std::vector<EntradaZip> &entradas() const; ///< in their order

    /// Unpacks one file by pieces. @param limite  bytes
    /// @return false when it is damaged, larger than it claimed or than the limit, or can't be written; what was
    ///         written by then is of no worth
    bool copia(std::size_t indice, QIODevice &destino, qint64 limite);
    std::optional<QByteArray> le(std::size_t indice, qint64 limite); ///< the same into memory

private:
    struct Dados;
    std::unique_ptr<Dados> d;
};

/// Writes a zip; the same files in the same order give the same bytes on every day and system.
class EscritorZip final
{
    Q_DISABLE_COPY_MOVE(EscritorZip)
public:
    explicit EscritorZip(QIODevice &destino); ///< open for writing, with seeking; outlives this object
    ~EscritorZip();

    /// @param guardado  stored instead of deflated @return false when it can't be written; all later calls too
    bool poe(const QString &nome, const QByteArray &bytes, bool guardado = false);
    bool fecha(); ///< writes the directory; without it there is no zip

private:
    struct Dados;
    std::unique_ptr<Dados> d;
};

} // namespace quorel::pacote
