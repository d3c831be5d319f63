#pragma once

#include "visual/lugar.h"

#include <QStringView>

namespace quorel {

/// What TextHeight gives: lines times the height of one, in twips. CR LF separates lines, a final one counts a line, so
/// an empty text has one. @param alturaLinha  of the window's font, in twips
double TextHeight(QStringView texto, double alturaLinha);

/// Height in twips of the text box of a tip in fPrincip.
/// @param alturaTexto  TextHeight of the text in the window's font, twips
double alturaDicaDisciplina(QStringView texto, double alturaTexto);

/// The same in fBlocos: 100 more when the text has line breaks.
double alturaDicaRoteiro(QStringView texto, double alturaTexto);

/// Where the tip of a picture goes.
/// @param figura   place of the picture; @param dica  of the tip, whose size counts
/// @param janela   the window's client area; its size counts
/// @param recuo    how far the tip moves up over the picture's edge: 105 in fPrincip, 0 in fBlocos
/// @return the tip's place, its size unchanged
Lugar lugarDaDica(const Lugar &figura, const Lugar &dica, const Lugar &janela, double recuo);

inline constexpr double kRecuoPrincipal = 105; ///< twips
inline constexpr double kRecuoBlocos = 0; ///< twips
inline constexpr double kMargemDica = 200; ///< twips that FrmTip is higher than TxtInf

} // namespace quorel
