#pragma once

#include <QString>

namespace quorel {

/// Plays a wave file in the background, in the place of the one that still sounds. On Linux through the first of
/// pw-play, paplay and aplay that the machine has.
/// @return false when the file does not exist or the machine has nothing to play it with
bool playSound(const QString &native);

/// Stops what playSound() started; nothing when nothing sounds.
void stopSound();

} // namespace quorel
