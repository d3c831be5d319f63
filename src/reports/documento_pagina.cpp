#include "reports/documento_pagina.h"

#include "platform/caminho.h"
#include "visual/aparencia.h"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocumentFragment>
#include <QTextTable>
#include <QUrl>

#include <algorithm>
#include <array>

namespace quorel {

static constexpr int kColunaDosNomes = 1;
static constexpr double kPontos = 12; // of text without a size of its own, as in browsers

FiguraDePagina leFigura(const QString &caminho)
{
    constexpr double kPontosPorMetro = 96 / 0.0254; // of a screen at 100 %
    const QString native = nativePath(caminho);
    if (native.isEmpty())
        return {};
    QImage image(native);
    const int ratio = qRound(image.dotsPerMeterX() / kPontosPorMetro);
    if (ratio > 1)
        image.setDevicePixelRatio(ratio);
    return {caminho, image};
}

DocumentoPagina::DocumentoPagina(const std::vector<FiguraDePagina> &figuras)
{
    setUndoRedoEnabled(false);
    setDefaultFont(fonte(Tipo::Arial, kPontos));
    for (const FiguraDePagina &figura : figuras) {
        if (figura.imagem.isNull())
            continue;
        addResource(ImageResource, QUrl(figura.src), figura.imagem);
        addResource(ImageResource, QUrl::fromEncoded(figura.src.toUtf8()), figura.imagem); // as the layout may ask
    }
}

void DocumentoPagina::setTexto(const QString &texto)
{
    const QSizeF size = pageSize();
    setPageSize({0, 0}); // nothing is laid out on such a page
    setHtml(texto);
    freeColumns();
    setPageSize(size);
}

// A picture of no resource would be looked for as a file by the layout itself: there is always one, with nothing on it.
QVariant DocumentoPagina::loadResource(int type, const QUrl &)
{
    if (type != ImageResource)
        return QByteArray("/**/"); // an empty one would count as missing
    QImage nothing(1, 1, QImage::Format_ARGB32);
    nothing.fill(Qt::transparent);
    return nothing;
}

static constexpr double kMaiorDistancia = 20; // pixels; above all of the page's own, and the text stays on the paper

/// Limits distances of a format. @return whether one was beyond the limit
template <std::size_t N>
static bool limit(QTextFormat &format, const std::array<QTextFormat::Property, N> &distances)
{
    bool changed = false;
    for (const QTextFormat::Property distance : distances) {
        const double asked = format.doubleProperty(distance); // 0 when it is not set
        const double given = std::clamp(asked, 0.0, kMaiorDistancia);
        if (asked == given)
            continue;
        format.setProperty(distance, given);
        changed = true;
    }
    return changed;
}

// A name may be the tag of a table with distances so large that the layout, whose numbers they do not fit, never ends.
static void limitFrame(QTextFrame &frame)
{
    static constexpr std::array kDistancias{QTextFormat::FrameMargin, QTextFormat::FrameTopMargin,
        QTextFormat::FrameBottomMargin, QTextFormat::FrameLeftMargin, QTextFormat::FrameRightMargin,
        QTextFormat::FramePadding, QTextFormat::TableCellPadding, QTextFormat::TableCellSpacing};
    QTextFrameFormat format = frame.frameFormat();
    if (limit(format, kDistancias))
        frame.setFrameFormat(format);
}

static void limitCell(QTextTableCell cell)
{
    static constexpr std::array kDistancias{QTextFormat::TableCellTopPadding, QTextFormat::TableCellBottomPadding,
        QTextFormat::TableCellLeftPadding, QTextFormat::TableCellRightPadding};
    QTextCharFormat format = cell.format();
    if (limit(format, kDistancias))
        cell.setFormat(format);
}

static constexpr int kMaisFundo = 4; // tables in tables; the page's own are the first

static int depthOf(const QTextFrame &frame)
{
    int depth = 0;
    for (const QTextFrame *outer = frame.parentFrame(); outer; outer = outer->parentFrame())
        ++depth;
    return depth;
}

// The layout measures each table more than once, and so what is in it over and over: a name of twenty tables, one in
// the other, would never be laid out. Its text takes the place of those that are too deep.
static void flatten(const QTextFrame &frame)
{
    QTextCursor cursor(frame.document());
    cursor.setPosition(frame.firstPosition() - 1);
    cursor.setPosition(frame.lastPosition() + 1, QTextCursor::KeepAnchor);
    cursor.insertText(cursor.selection().toPlainText());
}

static void keepOnOneLine(const QTextTableCell &cell)
{
    QTextBlockFormat format;
    format.setNonBreakableLines(true);
    QTextCursor cursor = cell.firstCursorPosition();
    cursor.setPosition(cell.lastPosition(), QTextCursor::KeepAnchor);
    cursor.mergeBlockFormat(format);
}

// The widths of the page are for a browser that stretches columns; here they would break "24/11/26" in two.
void DocumentoPagina::freeColumns()
{
    QTextCursor edit(this);
    edit.beginEditBlock();
    QList<QTextFrame *> frames = rootFrame()->childFrames();
    while (!frames.isEmpty()) {
        QTextFrame *frame = frames.takeLast();
        if (depthOf(*frame) > kMaisFundo) {
            flatten(*frame);
            continue;
        }
        frames << frame->childFrames();
        limitFrame(*frame);
        auto *table = qobject_cast<QTextTable *>(frame);
        if (!table)
            continue;
        QTextTableFormat format = table->format();
        format.clearColumnWidthConstraints();
        table->setFormat(format);
        for (int row = 0; row < table->rows(); ++row) {
            for (int column = 0; column < table->columns(); ++column) {
                const QTextTableCell cell = table->cellAt(row, column);
                limitCell(cell);
                if (column != kColunaDosNomes)
                    keepOnOneLine(cell);
            }
        }
    }
    edit.endEditBlock();
}

/// A stretch of the page that stays in one piece.
struct Trecho
{
    double top;
    double bottom;
};

static void addLines(std::vector<Trecho> &pieces, const QTextBlock &block, const QAbstractTextDocumentLayout &layout)
{
    const double top = layout.blockBoundingRect(block).top();
    for (int i = 0; i < block.layout()->lineCount(); ++i) {
        const QRectF line = block.layout()->lineAt(i).rect();
        pieces.push_back({top + line.top(), top + line.bottom()});
    }
}

/// From the highest to the lowest text of a row; upside down where it has none.
static Trecho rowPiece(const QTextTable &table, int row, const QAbstractTextDocumentLayout &layout)
{
    Trecho piece{0, -1};
    for (int column = 0; column < table.columns(); ++column) {
        const QTextTableCell cell = table.cellAt(row, column);
        if (!cell.isValid() || cell.row() != row)
            continue;
        const double top = layout.blockBoundingRect(cell.firstCursorPosition().block()).top();
        const double bottom = layout.blockBoundingRect(cell.lastCursorPosition().block()).bottom();
        piece = piece.bottom < piece.top ? Trecho{top, bottom}
                                         : Trecho{std::min(piece.top, top), std::max(piece.bottom, bottom)};
    }
    return piece;
}

static void addRows(std::vector<Trecho> &pieces, const QTextTable &table, const QAbstractTextDocumentLayout &layout)
{
    for (int row = 0; row < table.rows(); ++row) {
        if (const Trecho piece = rowPiece(table, row, layout); piece.bottom > piece.top)
            pieces.push_back(piece);
    }
}

static void addFrame(std::vector<Trecho> &pieces, const QTextFrame &frame, const QAbstractTextDocumentLayout &layout)
{
    for (auto it = frame.begin(); it != frame.end(); ++it) {
        if (const auto *table = qobject_cast<const QTextTable *>(it.currentFrame()))
            addRows(pieces, *table, layout);
        else if (it.currentFrame())
            addFrame(pieces, *it.currentFrame(), layout);
        else if (it.currentBlock().isValid())
            addLines(pieces, it.currentBlock(), layout);
    }
}

std::vector<double> DocumentoPagina::cortes() const
{
    const QAbstractTextDocumentLayout &layout = *documentLayout();
    const double end = layout.documentSize().height();
    std::vector<Trecho> pieces;
    addFrame(pieces, *rootFrame(), layout);
    std::sort(pieces.begin(), pieces.end(), [](const Trecho &a, const Trecho &b) { return a.top < b.top; });
    std::vector<double> cuts;
    double bottom = 0;
    for (const Trecho &piece : pieces) {
        if (piece.top >= bottom && bottom > 0)
            cuts.push_back((bottom + piece.top) / 2);
        bottom = std::max(bottom, piece.bottom);
    }
    cuts.push_back(end);
    return cuts;
}

static bool isFull(const QTextTable &table, int row)
{
    for (int column = 0; column < table.columns(); ++column) {
        const QTextTableCell cell = table.cellAt(row, column);
        if (cell.columnSpan() != 1 || cell.firstPosition() == cell.lastPosition())
            return false;
    }
    return true;
}

CabecaDePagina DocumentoPagina::cabeca(const std::vector<double> &cortes) const
{
    QTextTable *longest = nullptr;
    for (QTextFrame *frame : rootFrame()->childFrames()) {
        auto *table = qobject_cast<QTextTable *>(frame);
        if (table && (!longest || table->rows() > longest->rows()))
            longest = table;
    }
    int row = 0;
    while (longest && row < longest->rows() && !isFull(*longest, row))
        ++row;
    if (!longest || row + 1 >= longest->rows())
        return {};
    const Trecho piece = rowPiece(*longest, row, *documentLayout());
    const auto after = std::ranges::lower_bound(cortes, piece.bottom);
    if (after == cortes.end() || after == cortes.begin())
        return {};
    return {*std::prev(after), *after, documentLayout()->frameBoundingRect(longest).bottom()};
}

} // namespace quorel
