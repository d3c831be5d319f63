#pragma once

#include <QByteArrayView>

#include <memory>
#include <vector>

namespace quorel {

/// What a cell holds.
enum class Celula : quint8 { Nulo, Inteiro, Real, Texto, Bytes };

/// The rows of a query, kept compactly: 9 bytes a cell and the UTF-8 bytes of the texts. Cells come in row by row and
/// never move again, so a large set costs no second copy while it grows.
class Linhas final
{
public:
    explicit Linhas(int columns = 0) : mColumns(columns) { }

    int columnCount() const { return mColumns; }
    qsizetype rowCount() const { return mColumns > 0 ? mCells / mColumns : 0; }

    /// The next cell; the row ends with its last column.
    void addNull() { add(Celula::Nulo, 0); }
    void addInteger(qint64 value) { add(Celula::Inteiro, static_cast<quint64>(value)); }
    void addReal(double value);
    void addText(QByteArrayView utf8) { add(Celula::Texto, store(utf8)); }
    void addBytes(QByteArrayView bytes) { add(Celula::Bytes, store(bytes)); }

    /// Row and column from 0. The value is asked for by its kind.
    Celula kind(qsizetype row, int column) const;
    qint64 integer(qsizetype row, int column) const;
    double real(qsizetype row, int column) const;
    QByteArrayView bytes(qsizetype row, int column) const; ///< of a text or of bytes; valid as long as these rows

private:
    static constexpr int kCellBits = 12; ///< cells of a full chunk: 4096
    struct Cells
    {
        std::unique_ptr<quint64[]> values;
        std::unique_ptr<Celula[]> kinds;
    };
    struct Block
    {
        std::unique_ptr<char[]> bytes;
        qsizetype size = 0;
    };

    void add(Celula kind, quint64 value);
    quint64 store(QByteArrayView bytes);
    quint64 value(qsizetype row, int column) const;

    int mColumns;
    qsizetype mCells = 0;
    std::vector<Cells> mChunks;
    std::vector<Block> mBlocks;
    qsizetype mBlock = -1; ///< block that short texts go into
    qsizetype mUsed = 0; ///< bytes used of it
};

} // namespace quorel
