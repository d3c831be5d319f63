#pragma once

#include <QWidget>

namespace quorel {

/// A place inside a window, in twips.
struct Lugar
{
    double Left = 0;
    double Top = 0;
    double Width = 0;
    double Height = 0;
    bool operator==(const Lugar &) const = default;
};

/// A row of a window's layout table: a control's objectName and its place.
struct LinhaLayout
{
    const char16_t *nome;
    Lugar lugar;
};

/// Gives a control the pixels of a place. They are rounded from the twips and never read back.
void coloca(QWidget &controle, const Lugar &lugar);

/// Rounds a control's corners. @param raio  diameter of the ellipse at the corners, in pixels, 0 to 255
void ArredondaJanela(QWidget &janela, const Lugar &lugar, quint8 raio);

} // namespace quorel
