#pragma once

#include <QtGlobal>

#include <array>

namespace quorel {

/// Title under which the shell is found by everybody; the captions of its windows are another thing.
inline constexpr char16_t kTituloGerenciador[] = u"Gerenciador de Roteiros do Quorel";

/// Titles of the five lesson programs and of their inner windows.
inline constexpr std::array<const char16_t *, 7> kTitulosDosFilhos{u"Zeto - Quorel", u"ZETO",
    u"Editor de Desenhos - Quorel", u"Histórias - Quorel", u"Livros - Quorel", u"Livros", u"Calculadora - Quorel"};

/// Message codes between shell and child programs; docs/protocolo.md tells what each does. 2071 and 2123 go both ways.
enum CodigoMensagem : qint32 {
    MSG_EXEC_CALC = 2059, ///< child: run a lesson outside a Roteiro
    MSG_AULA = 2060, ///< shell: run this lesson
    MSG_FECHA_BLOCOS = 2062, ///< to the shell: unload fBlocos
    MSG_PROXIMA = 2069, ///< child: answer, next lesson
    MSG_ANTERIOR = 2070, ///< child: answer, previous lesson
    MSG_SAI = 2071, ///< child: answer, leave the Roteiro; shell: exit
    MSG_ALUNO = 2109, ///< pupil code as decimal text
    MSG_CLASSE = 2110, ///< class code as decimal text
    MSG_RESPOSTA = 2111, ///< child: answer, write it now
    MSG_CONTROLE = 2122, ///< shell: "ULTIMA", "PRIMEIRA" or "ESCONDE"
    MSG_JOGO = 2123, ///< child: asks for the game of this lesson; shell: the game
};

} // namespace quorel
