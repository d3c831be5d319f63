#pragma once

#include <QByteArray>
#include <QString>

namespace quorel {

/// A text without the blanks at its ends; tabs and line ends are no blanks. A view of it, as long as it lives.
QStringView semBrancos(QStringView texto);

/// Work on texts and files for every other folder. Positions and counts are characters. No operation shows a message
/// or fails: what can't be done gives an empty text, a false or a 0. Paths have backslashes.
class TextoUtil final
{
public:
    /// The text before the first occurrence of a delimiter. Without one: empty when `Estrito`, else the whole text.
    /// An empty delimiter never occurs.
    QString TextoAntes(const QString &Texto, const QString &Delimitador, bool Estrito) const;

    /// The text behind the first occurrence of a delimiter; empty when there is none.
    QString TextoDepois(const QString &Texto, const QString &Delimitador) const;

    /// How often a delimiter occurs, without overlaps. One pass.
    int ContaDelimitador(const QString &Texto, const QString &Delimitador, int = 0) const;

    /// The directory of a path, up to and with its last backslash; empty when the path holds none.
    QString DiretorioDe(const QString &Caminho) const;

    /// Field `N`, from 1, of a text cut at a delimiter, without blanks around it. Empty for a field that is not there.
    QString Campo(const QString &Texto, int N, const QString &Delimitador, int = 1) const;

    /// A whole file of code page 1252, line ends kept; empty when it is missing, empty or can't be read.
    QString LeArquivo(const QString &Caminho, int = 0, int = 0) const;

    /// The bytes of a whole file, likewise: for readers that search in bytes and decode only what they keep.
    QByteArray LeBytes(const QString &Caminho) const;

    /// Whether a path names a file; with a trailing backslash, a directory.
    bool ArquivoExiste(const QString &Caminho) const;

    /// Makes a new empty file in the temporary directory. @param Prefixo  the name's beginning @return its path, which
    /// ends in ".TMP"; empty when it can't be made
    QString ArquivoTemporario(const QString &Prefixo) const;

    /// Writes a text in code page 1252 over whatever the file held: wholly or, when the disc is full or the file
    /// can't be written, not at all. `Modo` changes nothing.
    void GravaArquivo(const QString &Caminho, const QString &Texto, int Modo, int = 0) const;

    /// Starts the program of a command line: the longest beginning that ends at a blank or at the end and names a file
    /// (quotes around it allowed), else the system's program of that bare name; the rest goes to it as it stands.
    /// @param Espera  return only when it can take messages; the rest is passed over @return not 0 when it was started
    int Executa(const QString &Comando, int EstiloJanela, bool Espera, const QString &Diretorio) const;

    /// The fields of a list in ascending order of their character codes, joined by another separator.
    QString OrdenaLista(
        const QString &Texto, const QString &Separador, const QString &NovoSeparador, int = 1, int = 0, int = -1) const;

    /// Deletes a file; a missing one is passed over.
    void ApagaArquivo(const QString &Caminho) const;

    /// What stands in a line "Chave Igual value" behind `Igual`. A line begins at the text's start or behind
    /// `FimLinha`; the key is compared without regard to case; the first such line counts. Empty when there is none.
    QString LeChave(const QString &Texto, const QString &Chave, const QString &Igual, const QString &FimLinha) const;

    /// The text with another value in that line; a text without the line gets one at its end.
    QString GravaChave(const QString &Texto, const QString &Chave, const QString &Valor, const QString &Igual,
        const QString &FimLinha) const;
};

extern const TextoUtil gTexto;

} // namespace quorel
