#pragma once

#include "platform/endereco.h"

#include <array>
#include <optional>

/// The frames of the bus as bytes: a length of 32 bits that does not count itself, a kind of 32 bits, then the fields
/// of the kind without gaps; all numbers little-endian. docs/protocolo.md gives them byte by byte.
namespace quorel::bus {

enum FrameKind : quint32 { kSend = 1, kReply = 2, kPlace = 3 };

inline constexpr std::size_t kLengthBytes = 4;
inline constexpr std::size_t kSendHeadBytes = 40; ///< with the length; the message's bytes follow
inline constexpr std::size_t kReplyBytes = 20;
inline constexpr std::size_t kPlaceBytes = 28;
inline constexpr std::size_t kLargestFrame = kSendHeadBytes + kMaxCopyData;
/// A send up to this size is passed over whole and answered with 0; what claims more is no frame.
inline constexpr std::size_t kLargestClaim = std::size_t{1} << 24;

struct SendHead
{
    quint32 number = 0; ///< of the send, counted by the sender
    quint32 code = 0;
    quint64 target = 0;
    quint64 sender = 0;
    qint32 size = 0; ///< as the sender's caller gave it; when above 0 as many bytes follow, else none
};

struct Reply
{
    quint32 number = 0; ///< of the send that it answers
    qint64 result = 0;
};

struct Place
{
    quint64 target = 0;
    quint32 order = 0; ///< an Ordem
    quint32 flags = 0; ///< kKeepSize, kKeepPosition
};

std::array<char, kSendHeadBytes> encode(const SendHead &head);
std::array<char, kReplyBytes> encode(const Reply &reply);
std::array<char, kPlaceBytes> encode(const Place &place);

/// Length and kind of the frame that begins at `bytes`; the length with its own four bytes.
struct FrameStart
{
    std::size_t length = 0;
    quint32 kind = 0;
};

/// @return nothing while fewer than eight bytes are there
std::optional<FrameStart> frameStart(QByteArrayView bytes);

/// Whether a frame of that kind may have that length.
bool plausible(const FrameStart &start);

// Each reads a whole frame (the send one at least its head) whose start was plausible().
SendHead decodeSend(QByteArrayView frame);
Reply decodeReply(QByteArrayView frame);
Place decodePlace(QByteArrayView frame);

} // namespace quorel::bus
