#pragma once

#include <QString>

namespace quorel {

/// The register's file, as Init() takes it.
inline constexpr char16_t kNomeCadastro[] = u"\\CADASTROS.MDB";

/// The configuration text that the whole suite shares, and the search for media files by their short names.
class Quorel_Zeto final
{
public:
    QString ArquivoCnf; ///< full path of the configuration file
    QString TextoCnf; ///< its text with the macros expanded; changed in memory only, never saved

    /// Loads a configuration. An empty or unreadable one is told in a box and leaves TextoCnf as it was.
    /// @param Caminho  the file, its directory, a drive's root, or empty for the program's own directory
    /// @param NomeCadastro  the register's file name with a backslash before it
    void Init(const QString &Caminho, const QString &NomeCadastro);

    /// Value of a key; empty when absent. @param Texto  the text to search; an empty one is first set to TextoCnf
    QString Config(const QString &Chave, QString &Texto) const;
    QString Config(const QString &Chave) const; ///< in TextoCnf

    /// A file by its short name: a picture, a sound, a video. Empty when there is none in the media roots.
    QString N_Fig(const QString &Nome) const;
    QString N_Som(const QString &Nome) const;
    QString N_Video(const QString &Nome) const;

    /// A text with every {KEY} replaced by its value. An opening brace that is never closed ends the expansion: the
    /// rest is copied as it stands.
    QString Programa(const QString &Texto) const;

    /// The same for one directory. @param Base  of the media kind, "…\Fig\"; Nome_Video and Nome_Som append a missing
    /// backslash to the caller's text @param Lista  subdirectories, separated by ";"; normally empty
    QString Nome_Fig(const QString &Nome, QString &Base, const QString &Lista) const;
    QString Nome_Video(const QString &Nome, QString &Base, const QString &Lista) const;
    QString Nome_Som(const QString &Nome, QString &Base, const QString &Lista) const;

    bool VerificarPlacaSom() const; ///< whether some device plays sound

    void SetaCFG(const QString &Texto); ///< replaces TextoCnf as it stands

private:
    void expandeMacros(const QString &texto, const QString &diretorio);
    void preparaCadastro(const QString &nomeCadastro);
};

/// The one instance; LeParametros() makes it anew.
extern Quorel_Zeto gConfig;

} // namespace quorel
