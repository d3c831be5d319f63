#pragma once

#include "licao/programa.h"

class QApplication;

namespace quorel {

/// Colours of the player; each text colour reads well on the ground that it is used on, in a dark desktop too.
namespace cores {
inline constexpr QRgb kFundo = 0xFFF3F6FA;
inline constexpr QRgb kPapel = 0xFFFFFFFF;
inline constexpr QRgb kTexto = 0xFF1B2430;
inline constexpr QRgb kTextoFraco = 0xFF4A5565;
inline constexpr QRgb kBorda = 0xFF7B8794;
inline constexpr QRgb kFoco = 0xFF111827;
inline constexpr QRgb kCerto = 0xFF14532D;
inline constexpr QRgb kFundoCerto = 0xFFDFF3E4;
inline constexpr QRgb kErrado = 0xFF7C2D12;
inline constexpr QRgb kFundoErrado = 0xFFFDE9D9;
} // namespace cores

/// Sizes of type in pixels.
inline constexpr int kLetraBotao = 18;
inline constexpr int kLetraTexto = 22;
inline constexpr int kLetraResposta = 26;
inline constexpr int kLetraTitulo = 27;

/// Gives the application the player's own palette, style and type, whatever the desktop has.
void vesteAplicacao(QApplication &app);

/// Style sheet of a player's window, in the colours of its program.
QString folhaDeEstilo(Programa programa);

/// The text with places to break in words that no line could hold.
QString quebravel(const QString &texto);

} // namespace quorel
