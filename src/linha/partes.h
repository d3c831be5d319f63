#pragma once

#include <QStringView>

#include <vector>

namespace quorel {

/// Fields of a piece, of an option and of the answer block, counted from 0.
enum CampoPeca {
    PecaCod = 0,
    PecaTipo = 1,
    PecaMostrada = 2,
    PecaTitulo = 7,
    PecaTexto = 8,
    PecaFig = 10,
    PecaSom = 11
};
enum CampoOpcao { OpcaoTexto = 1, OpcaoCerta = 2, OpcaoFig = 8 };
enum CampoResposta { RespostaEsperada = 6, RespostaElogio = 7, RespostaDica = 8 };

/// Pieces and options up to this many characters say nothing.
inline constexpr qsizetype kVazio = 2;

/// The blocks of a lesson's text, views of it: what is missing is empty.
struct PartesDaLinha
{
    QStringView linha; ///< without the mark of a lesson outside a Roteiro
    bool avulsa = false; ///< had that mark
    bool comCampos = false; ///< false: the pieces are one text without fields
    bool comRespostas = false; ///< there is an answer block
    bool comOpcoes = false; ///< there is an option block
    QStringView cabecaPecas, pecas; ///< head: the bracket that a block begins with, "(1,2)"
    QStringView cabecaRespostas, respostas; ///< fields between tabs
    QStringView cabecaOpcoes, opcoes;
};
PartesDaLinha parteLinha(QStringView linha);

/// Whether a text begins with a mark. Most differ in one of their first letters, so no call is worth it.
inline bool beginsWith(QStringView text, QStringView mark)
{
    if (text.size() < mark.size())
        return false;
    for (qsizetype n = 0; n < mark.size(); ++n) {
        if (text[n] != mark[n])
            return false;
    }
    return true;
}

/// What stands between the marks of a block: "<PÇ>" and "<SPÇ>" in pieces, "<OP>" in options. One pass.
/// @param into  emptied first; an empty text has one empty part
void splitAtMark(QStringView text, QStringView mark, std::vector<QStringView> &into);
void splitAtTab(QStringView text, std::vector<QStringView> &into);

/// A field; empty when there is none of that number.
inline QStringView fieldOf(const std::vector<QStringView> &fields, int n)
{
    return std::size_t(n) < fields.size() ? fields[std::size_t(n)] : QStringView();
}

inline constexpr QStringView kMarcaCampo = u"<SPÇ>";
inline constexpr QStringView kMarcaPeca = u"<PÇ>";
inline constexpr QStringView kMarcaOpcao = u"<OP>";

} // namespace quorel
