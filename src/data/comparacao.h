#pragma once

#include <QByteArray>
#include <QString>

namespace quorel {

/// Order of two texts without regard to case, accented letters beside their plain ones: "Ana", "Átila", "Bia".
/// 0 exactly when they are equal but for case, character by character ("Ç" and "ç" are, "c" and "ç" are not).
int compareNoCase(QStringView a, QStringView b);

/// As above with ties broken by code point, so that the order is total; what ORDER BY of a text column uses.
int compareForOrder(QStringView a, QStringView b);

/// compareForOrder on UTF-8, without making texts of what is plain ASCII.
int compareForOrder(QByteArrayView a, QByteArrayView b);

/// Whether two names differ in case, accents and blanks alone.
bool sameName(QStringView a, QStringView b);

/// A text to look for, case ignored, in many UTF-8 texts.
class Procurado final
{
public:
    explicit Procurado(QStringView texto);

    bool equals(QByteArrayView utf8) const; ///< without regard to case
    bool startsWith(QByteArrayView utf8) const; ///< whether utf8 begins with it
    bool endsWith(QByteArrayView utf8) const;
    bool isWithin(QByteArrayView utf8) const;

private:
    bool foldedAscii(QByteArrayView utf8, qsizetype from) const;

    QString mFolded;
    QByteArray mBytes; ///< of mFolded
    bool mAscii; ///< mBytes is plain ASCII
};

} // namespace quorel
