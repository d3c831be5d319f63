#pragma once

#include "autoria/finding.h"

#include <QByteArray>

#include <variant>

namespace quorel {

/// A text of a source.
struct SourceText
{
    QString text; ///< lines ended by CR LF, none behind the last
    bool given = false; ///< a key with nothing behind it is given and empty
    std::vector<Place> places; ///< of each of its lines; empty where no source was read

    SourceText() = default;
    explicit SourceText(const QString &said) : text(said), given(true) { }
};

/// What the pupil does. The numbers stand in the lesson's text.
enum class Kind : int { None, Leia, Escolha, Marque, Escreva, Ordene, Desenhe, Historia };

/// Its word in a source: "escolha"; empty for None. @param word  in any case, with or without accents
QString kindWord(Kind kind);
Kind kindOf(QStringView word);

struct PageSource
{
    SourceText titulo; ///< of the first page: where it is not given, the Aula's name
    SourceText texto;
    SourceText fig;
    SourceText som;
};

struct OptionSource
{
    SourceText texto;
    SourceText fig;
    bool certa = false; ///< in an exercise of order it means nothing
    int lugar = 0; ///< place in the order, from 1; 0 where the lines' order is it
    bool ordered = false; ///< written with "="
};

/// One lesson. Where `linha` is given it is the whole lesson text, and pages, options and answers mean nothing.
struct AulaSource
{
    Place place;
    QString programa; ///< "Zeto", …; empty where `tipo` is given
    Kind kind = Kind::None; ///< None reads as Leia
    SourceText nome;
    SourceText cod; ///< where it is not given, the Roteiro's followed by two digits
    std::vector<PageSource> paginas{1};
    std::vector<OptionSource> opcoes; ///< in the right order where they are ordered
    SourceText resposta, elogio, dica, jogo;
    SourceText chama; ///< code of an Aula of the CALC section: the lesson text is that code alone
    SourceText arquivo; ///< of an HTML lesson
    SourceText linha;
    SourceText tipo; ///< all behind "Tipo = ", where it is not programa, tab and 1
};

struct RoteiroSource
{
    Place place;
    SourceText cod, nome; ///< the name CALC opens the calculator's section, which has none of what follows
    SourceText fig, som, desc, bncc;
    SourceText nivel, disc; ///< where they are not given, those of the head
};

/// Bytes that go into the block file as they stand.
struct RawSource
{
    Place place;
    QByteArray bytes;
    std::vector<std::pair<qsizetype, Place>> places; ///< where each line of the source begins in the bytes
};

struct HeadSource
{
    SourceText tema, objetivo;
    SourceText nivel, disc; ///< where they are not given, those of the block file's name
    bool blankLines = true; ///< an empty line between sections
    bool tabs = true; ///< a tab before Nome, Linha and Jogo
    bool written = true; ///< false: the block file has no head, or one that stands in a raw block
};

using ItemSource = std::variant<RoteiroSource, AulaSource, RawSource>;

/// The source of a block file, read.
struct BlockSource
{
    HeadSource head;
    std::vector<ItemSource> items; ///< Aulas behind their Roteiro
};

} // namespace quorel
