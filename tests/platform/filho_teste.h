#pragma once

#include <QtGlobal>

namespace quorel::teste {

/// What a message of that code makes the test's child do.
enum TestCode : quint32 {
    kSizePlus1000 = 1, ///< answers the size, with its sign, plus 1000
    kSendBack, ///< sends the same to the sender and answers what that answered, plus 1
    kBounce, ///< the same with no bytes, for chains
    kDie, ///< ends inside the handler
    kHang, ///< never answers
    kWithdrawAndHang,
    kSetTitle, ///< to the text
    kSendFlood, ///< answers the number of sends written
    kFloodDrop, ///< one of those
    kGeometry, ///< x, y, width, height of the body, 16 bits each
    kIsTopmost, ///< 2 when it is, else 1
    kOpenDocument, ///< whose path is the text; answers 2 when it could, else 1
};

} // namespace quorel::teste
