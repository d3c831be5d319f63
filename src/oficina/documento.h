#pragma once

#include "autoria/source.h"

#include <QString>

#include <optional>

namespace quorel {

/// Larger files are not opened: what has to be read anew at each pause in typing.
inline constexpr qint64 kMaxFonte = 2 << 20; // bytes

/// The file that is being written: a source with the block file that is made of it, or a block file alone.
class Documento final
{
public:
    /// @param fault  a sentence for a file that is missing, can't be read, is too large or has a line without end
    static std::optional<Documento> abre(const QString &native, QString &fault);

    const QString &caminho() const { return mPath; } ///< native
    bool ehBloco() const { return mIsBlock; } ///< the file itself is the block file
    QString texto() const { return mText; } ///< of the source, lines ended by "\n"

    /// The block file; empty where the source's name does not tell it.
    const QString &destino() const { return mDestination; }
    void setDestino(const QString &native) { mDestination = native; }

    /// Reads the file again. @return whether the text differs from the one known; nothing while it can't be read, as in
    /// the middle of another program's saving
    std::optional<bool> mudouNoDisco();

    struct Gravacao
    {
        QString falha; ///< a sentence; empty when all was written
        bool feito = false; ///< the block file was made
    };
    /// Writes the source, and makes the block file of it unless an error leaves nothing to write.
    Gravacao grava(const QString &texto);

private:
    static std::optional<QString> read(const QString &path, bool isBlock);

    QString mPath;
    QString mDestination;
    QString mText;
    bool mIsBlock = false;
};

/// The block file of a source by their names: 0226MA.txt in a level's directory F1 gives 0226MAF1.EDB beside it, and so
/// does 0226MAF1.txt anywhere. Empty for other names.
QString blocoDaFonte(const QString &native);

} // namespace quorel
