#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace quorel::pacote {

inline constexpr int kFormato = 1; ///< newest form of a pack that this program reads

/// What a pack says of itself: manifesto.json, UTF-8, with H5P's names where H5P has one.
struct ManifestoRec
{
    QString title; ///< never empty
    QString language; ///< "pt-BR"
    QString license; ///< SPDX id, such as "CC-BY-4.0"
    QStringList authors; ///< names; in the file objects of name and role
    QString version; ///< of the pack; may be empty
    int formatVersion = kFormato;
    QStringList level; ///< "F1"; by the blocks
    QStringList months; ///< "2026-02"; likewise
    QStringList bncc; ///< skills that the blocks name
    bool operator==(const ManifestoRec &) const = default;
};

/// @param problemas  gets one sentence for each fault
/// @return nothing when it is no JSON object, has no title or is of a newer form
std::optional<ManifestoRec> leManifesto(const QByteArray &bytes, QStringList &problemas);

QByteArray textoDoManifesto(const ManifestoRec &manifesto);

/// A manifesto to fill in, for an author who has none yet.
QByteArray manifestoDeExemplo();

} // namespace quorel::pacote
