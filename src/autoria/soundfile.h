#pragma once

#include <QByteArray>
#include <QString>

namespace quorel {

/// A recording as every player takes it: WAV, PCM, 16 bits, one or two channels, at most 48,000 samples a second, with
/// nothing but the sound in it (programs write names, dates and places beside it).
struct Recording
{
    QByteArray wav; ///< empty on failure
    double seconds = 0;
    QString changes; ///< what was converted, in words; empty when it was right already
};

/// Reads a recording and converts what it can: 8, 24 and 32 bits, numbers with a point, more channels, more samples.
/// @param fault  a sentence, for what is no WAV, is compressed, damaged, empty or longer than 10 minutes
Recording recordingFrom(const QByteArray &bytes, QString &fault);

/// Why a name can't be that of a sound; empty for a good one.
QString faultOfSoundName(const QString &name);

/// Writes a recording where the lookup finds it. @param replace  also over one that is there
/// @return native path; empty, and a sentence, on failure
QString putSound(const QByteArray &wav, const QString &name, bool replace, QString &fault);

} // namespace quorel
