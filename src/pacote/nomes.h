#pragma once

#include <QString>

namespace quorel::pacote {

/// First entry of every pack, stored, so that its kind is to be seen in the first bytes of the file.
inline constexpr char16_t kNomeTipo[] = u"mimetype";
inline constexpr char kTipo[] = "application/x-quorel+zip";
inline constexpr char16_t kNomeManifesto[] = u"manifesto.json";

/// What a file of a pack is, which decides where it goes.
enum class Genero {
    Nenhum, ///< nothing that a pack may hold
    Tipo,
    Manifesto,
    Bloco, ///< blocos/F1/0226MAF1.EDB
    Midia, ///< midia/Fig/G/_/GATO.GIF, midia/Som/S/SINO.WAV, midia/Video/C/CHUVA.AVI: where the lookup finds it
    Html, ///< html/… : pages and what they show
};

/// By its name alone. Nenhum for "..", absolute names, backslashes, colons, device names, endings that a program could
/// have, and for media that no lookup would find under that name.
Genero generoDe(const QString &nome);

/// Name in a pack, of a media file that lies anywhere: "gato.gif" gives "midia/Fig/g/_/gato.gif". Empty for a file
/// that no lookup finds: another ending, a "." in the name, for a figure more than 8 characters or a "-".
QString nomeDeMidia(const QString &arquivo);

/// Name in a pack, of a block file by its name and level; empty when the catalogue would not read the name.
QString nomeDeBloco(const QString &arquivo, const QString &nivel);

/// The file's place below the directory of its genus, with backslashes.
QString lugarNoDestino(const QString &nome, Genero genero);

} // namespace quorel::pacote
