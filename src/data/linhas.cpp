#include "data/linhas.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace quorel {

// A text is kept as block number, place in the block and length, packed into one value.
static constexpr int kPlaceBits = 16;
static constexpr int kLengthBits = 24;
static constexpr qsizetype kBlockSize = qsizetype(1) << kPlaceBits;
static constexpr qsizetype kFirstBlock = 1024; ///< bytes; a small set takes little
static constexpr qsizetype kOwnBlock = kBlockSize / 16; ///< a text of that size gets a block of its own
static constexpr quint64 kLongText = (quint64(1) << kLengthBits) - 1; ///< length is that of its own block

static quint64 packed(qsizetype block, qsizetype place, quint64 length)
{
    return (static_cast<quint64>(block) << (kPlaceBits + kLengthBits)) | (static_cast<quint64>(place) << kLengthBits)
        | length;
}

void Linhas::addReal(double value)
{
    add(Celula::Real, std::bit_cast<quint64>(value));
}

void Linhas::add(Celula kind, quint64 value)
{
    const auto chunk = static_cast<size_t>(mCells >> kCellBits);
    if (chunk == mChunks.size()) {
        constexpr size_t size = size_t(1) << kCellBits;
        mChunks.push_back(
            {std::make_unique_for_overwrite<quint64[]>(size), std::make_unique_for_overwrite<Celula[]>(size)});
    }
    const auto place = static_cast<size_t>(mCells & ((1 << kCellBits) - 1));
    mChunks[chunk].values[place] = value;
    mChunks[chunk].kinds[place] = kind;
    ++mCells;
}

quint64 Linhas::store(QByteArrayView bytes)
{
    const qsizetype size = bytes.size();
    if (size == 0)
        return 0;
    if (size >= kOwnBlock) {
        mBlocks.push_back({std::make_unique_for_overwrite<char[]>(static_cast<size_t>(size)), size});
        std::memcpy(mBlocks.back().bytes.get(), bytes.data(), static_cast<size_t>(size));
        return packed(std::ssize(mBlocks) - 1, 0, std::min(static_cast<quint64>(size), kLongText));
    }
    if (mBlock < 0 || mBlocks[static_cast<size_t>(mBlock)].size - mUsed < size) {
        const qsizetype last = mBlock < 0 ? 0 : mBlocks[static_cast<size_t>(mBlock)].size;
        const qsizetype room = std::clamp(last * 2, std::max(kFirstBlock, size), kBlockSize);
        mBlocks.push_back({std::make_unique_for_overwrite<char[]>(static_cast<size_t>(room)), room});
        mBlock = std::ssize(mBlocks) - 1;
        mUsed = 0;
    }
    std::memcpy(mBlocks[static_cast<size_t>(mBlock)].bytes.get() + mUsed, bytes.data(), static_cast<size_t>(size));
    const quint64 where = packed(mBlock, mUsed, static_cast<quint64>(size));
    mUsed += size;
    return where;
}

Celula Linhas::kind(qsizetype row, int column) const
{
    const qsizetype cell = row * mColumns + column;
    return mChunks[static_cast<size_t>(cell >> kCellBits)].kinds[static_cast<size_t>(cell & ((1 << kCellBits) - 1))];
}

quint64 Linhas::value(qsizetype row, int column) const
{
    const qsizetype cell = row * mColumns + column;
    return mChunks[static_cast<size_t>(cell >> kCellBits)].values[static_cast<size_t>(cell & ((1 << kCellBits) - 1))];
}

qint64 Linhas::integer(qsizetype row, int column) const
{
    return static_cast<qint64>(value(row, column));
}

double Linhas::real(qsizetype row, int column) const
{
    return std::bit_cast<double>(value(row, column));
}

QByteArrayView Linhas::bytes(qsizetype row, int column) const
{
    const quint64 where = value(row, column);
    const quint64 length = where & kLongText;
    if (length == 0)
        return QByteArrayView("", 0);
    const Block &block = mBlocks[static_cast<size_t>(where >> (kPlaceBits + kLengthBits))];
    const auto place = static_cast<qsizetype>((where >> kLengthBits) & ((1 << kPlaceBits) - 1));
    return {block.bytes.get() + place, length == kLongText ? block.size : static_cast<qsizetype>(length)};
}

} // namespace quorel
