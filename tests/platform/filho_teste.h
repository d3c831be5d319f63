#pragma once

#include <QRect>

namespace quorel::teste {

/// What a message of that code makes the test's child do.
enum TestCode : quint32 {
    kSizePlus1000 = 1, ///< answers the size, with its sign, plus 1000
    kSendBack, ///< sends the same to the sender and answers what that answered, plus 1
    kBounce, ///< the same with no bytes, for chains
    kDie, ///< ends inside the handler
    kHang, ///< never answers
    kWithdrawAndHang,
    kEnd, ///< ends in order, with kExitCode, telling on its output what ran
    kSetTitle, ///< to the text
    kGeometry, ///< the body's, packed()
    kIsTopmost, ///< 2 when it is, else 1
    kHide, ///< the body
    kOpenDocument, ///< whose path is the text; answers 2 when it could, else 1
};
inline constexpr int kExitCode = 7;

inline constexpr QRect kPlace{150, 120, 400, 300}; ///< where its window stands at first
inline constexpr QSize kLeast{160, 90}; ///< as small as it goes

/// x, y, width, height, 16 bits each.
inline qintptr packed(const QRect &place)
{
    return qintptr(place.x()) << 48 | qintptr(place.y()) << 32 | qintptr(place.width()) << 16 | qintptr(place.height());
}

} // namespace quorel::teste
