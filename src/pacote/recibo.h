#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace quorel::pacote {

/// One file that a pack has put, or found there as it brings it.
struct PostoRec
{
    QString caminho; ///< native
    QString soma; ///< SHA-256 of what the pack brings, in hexadecimal
    bool nosso = true; ///< put by the pack; false: it was there already, with the same bytes
    QString antes; ///< native path of the copy of what it took the place of; empty for none
    bool operator==(const PostoRec &) const = default;
};

/// What an installation leaves, so that it can be taken away: a JSON file in the folder of receipts.
struct ReciboRec
{
    QString nome; ///< letters, digits and "-", made of the title; names the file
    QString title;
    QString version;
    QStringList raizes; ///< native directories that stay when they become empty
    std::vector<PostoRec> arquivos;
    bool operator==(const ReciboRec &) const = default;
};

/// "Letras e números 2" gives "letras-e-numeros-2"; never empty.
QString nomeDoRecibo(const QString &title);

/// @param pasta  native directory @return nothing when there is none, or it is damaged
std::optional<ReciboRec> leRecibo(const QString &pasta, const QString &nome);
std::vector<ReciboRec> leRecibos(const QString &pasta); ///< all that can be read, by name

/// Whole or not at all. @return false when it can't be written
bool gravaRecibo(const QString &pasta, const ReciboRec &recibo);
void apagaRecibo(const QString &pasta, const QString &nome); ///< with the copies that it kept

/// Folder of the copies of what was replaced.
QString pastaDasCopias(const QString &pasta, const QString &nome);

/// Of a file's bytes, in hexadecimal; empty when it can't be read.
QString somaDoArquivo(const QString &native);

} // namespace quorel::pacote
