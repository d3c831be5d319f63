#pragma once

#include <QString>

namespace quorel {

/// What the configuration asks of the player.
struct Preferences
{
    bool capitals = false; ///< MAIUSCULAS=1: headings and texts in capitals; never options, nor what is compared
    bool fullScreen = false; ///< TELA_CHEIA=1: lessons take the whole screen
    bool operator==(const Preferences &) const = default;
};

/// Of the configuration that midiaDaConfiguracao() has read. What is neither 0 nor 1 counts as 0.
Preferences preferencesOfConfiguration();

/// A text as it is shown. @param capitals  see Preferences
QString shownText(const QString &text, bool capitals);

} // namespace quorel
