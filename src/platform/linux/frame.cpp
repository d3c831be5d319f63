#include "platform/linux/frame.h"

#include <QtEndian>

namespace quorel::bus {

// Offsets from the start of the frame, the length field included.
static constexpr std::size_t kKindAt = 4;
static constexpr std::size_t kNumberAt = 8;
static constexpr std::size_t kCodeAt = 12;
static constexpr std::size_t kSizeAt = 16;
static constexpr std::size_t kReservedAt = 20;
static constexpr std::size_t kTargetAt = 24;
static constexpr std::size_t kSenderAt = 32;
static constexpr std::size_t kResultAt = 12;
static constexpr std::size_t kPlaceOrderAt = 12;
static constexpr std::size_t kPlaceFlagsAt = 16;
static constexpr std::size_t kPlaceTargetAt = 20;

template <typename T>
static T get(QByteArrayView bytes, std::size_t at)
{
    return qFromLittleEndian<T>(bytes.data() + at);
}

template <std::size_t N>
static std::array<char, N> begun(FrameKind kind, quint32 number)
{
    std::array<char, N> bytes{};
    qToLittleEndian(quint32(N - kLengthBytes), bytes.data());
    qToLittleEndian(quint32(kind), bytes.data() + kKindAt);
    qToLittleEndian(number, bytes.data() + kNumberAt);
    return bytes;
}

std::array<char, kSendHeadBytes> encode(const SendHead &head)
{
    auto bytes = begun<kSendHeadBytes>(kSend, head.number);
    const quint32 following = head.size > 0 ? quint32(head.size) : 0;
    qToLittleEndian(quint32(kSendHeadBytes - kLengthBytes) + following, bytes.data());
    qToLittleEndian(head.code, bytes.data() + kCodeAt);
    qToLittleEndian(head.size, bytes.data() + kSizeAt);
    qToLittleEndian(quint32(0), bytes.data() + kReservedAt);
    qToLittleEndian(head.target, bytes.data() + kTargetAt);
    qToLittleEndian(head.sender, bytes.data() + kSenderAt);
    return bytes;
}

std::array<char, kReplyBytes> encode(const Reply &reply)
{
    auto bytes = begun<kReplyBytes>(kReply, reply.number);
    qToLittleEndian(reply.result, bytes.data() + kResultAt);
    return bytes;
}

std::array<char, kPlaceBytes> encode(const Place &place)
{
    auto bytes = begun<kPlaceBytes>(kPlace, 0);
    qToLittleEndian(place.order, bytes.data() + kPlaceOrderAt);
    qToLittleEndian(place.flags, bytes.data() + kPlaceFlagsAt);
    qToLittleEndian(place.target, bytes.data() + kPlaceTargetAt);
    return bytes;
}

std::optional<FrameStart> frameStart(QByteArrayView bytes)
{
    if (bytes.size() < qsizetype(kNumberAt))
        return std::nullopt;
    return FrameStart{std::size_t{get<quint32>(bytes, 0)} + kLengthBytes, get<quint32>(bytes, kKindAt)};
}

bool plausible(const FrameStart &start)
{
    switch (start.kind) {
    case kSend:
        return start.length >= kSendHeadBytes && start.length <= kLargestClaim;
    case kReply:
        return start.length == kReplyBytes;
    case kPlace:
        return start.length == kPlaceBytes;
    default:
        return false;
    }
}

SendHead decodeSend(QByteArrayView frame)
{
    return {.number = get<quint32>(frame, kNumberAt),
        .code = get<quint32>(frame, kCodeAt),
        .target = get<quint64>(frame, kTargetAt),
        .sender = get<quint64>(frame, kSenderAt),
        .size = get<qint32>(frame, kSizeAt)};
}

Reply decodeReply(QByteArrayView frame)
{
    return {.number = get<quint32>(frame, kNumberAt), .result = get<qint64>(frame, kResultAt)};
}

Place decodePlace(QByteArrayView frame)
{
    return {.target = get<quint64>(frame, kPlaceTargetAt),
        .order = get<quint32>(frame, kPlaceOrderAt),
        .flags = get<quint32>(frame, kPlaceFlagsAt)};
}

} // namespace quorel::bus
