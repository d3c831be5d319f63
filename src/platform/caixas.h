#pragma once

#include <QString>

namespace quorel {

/// Title of every box that has none of its own.
inline constexpr char16_t kTituloPadrao[] = u"Blocos de Roteiros do Sistema Quorel";

enum class Icone { Nenhum, Informacao, Pergunta, Aviso, Critico };
enum class Botoes { Ok, SimNao, OkCancela };
enum class Resposta { Ok, Sim, Nao, Cancela };

/// A message box; its text is shown as plain text, "\n" or CR LF break the line.
struct Caixa
{
    QString texto;
    QString titulo = QString::fromUtf16(kTituloPadrao);
    Icone icone = Icone::Nenhum;
    Botoes botoes = Botoes::Ok;
    bool operator==(const Caixa &) const = default;
};

/// An input box: one line of text.
struct CaixaTexto
{
    QString texto;
    QString titulo = QString::fromUtf16(kTituloPadrao);
    QString proposta;
};

/// Shows a real box (the seam's first one; callers go through caixa() in costuras.h) and waits for its answer; messages
/// are served meanwhile. Closing it by key or system box answers Ok, or Nao or Cancela where there is a choice.
Resposta mostraCaixa(const Caixa &caixa);

/// Asks with a real box, likewise behind perguntaTexto(). @return what was typed; empty when the box was cancelled
QString pedeTexto(const CaixaTexto &caixa);

} // namespace quorel
