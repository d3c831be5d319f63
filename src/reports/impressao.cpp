#include "reports/impressao.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>

#include <algorithm>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr double kPontosPorPolegada = 96; // of the layout
static constexpr std::size_t kMaisFolhas = 10000; // a name that is a tag can make a page as tall as it likes

/// What a sheet that begins at a height has the table's head again for: the room that it takes; 0 without one.
static double roomForHead(double top, double folha, const CabecaDePagina &cabeca)
{
    const double height = cabeca.bottom - cabeca.top;
    return top >= cabeca.bottom && top < cabeca.fim && height < folha / 2 ? height : 0;
}

std::vector<double> folhas(const std::vector<double> &cortes, double folha, const CabecaDePagina &cabeca)
{
    std::vector<double> edges{0};
    auto next = cortes.begin();
    while (next != cortes.end() && edges.size() <= kMaisFolhas) {
        const double limit = edges.back() + folha - roomForHead(edges.back(), folha, cabeca);
        const auto beyond = std::upper_bound(next, cortes.end(), limit);
        if (beyond == next) {
            edges.push_back(limit); // what is taller than a sheet is cut where the sheet ends
            continue;
        }
        edges.push_back(*std::prev(beyond));
        next = beyond;
    }
    return edges;
}

/// Paints a stretch of the page.
static void paintPart(const DocumentoPagina &pagina, const QRectF &part, QPainter &painter)
{
    painter.save();
    painter.translate(0, -part.top());
    painter.setClipRect(part);
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = part;
    context.palette.setColor(QPalette::Text, Qt::black);
    pagina.documentLayout()->draw(&painter, context);
    painter.restore();
}

static void paintSheets(const DocumentoPagina &pagina, const QSizeF &folha, QPainter &painter, QPrinter &printer)
{
    const std::vector<double> cuts = pagina.cortes();
    const CabecaDePagina head = pagina.cabeca(cuts);
    const std::vector<double> edges = folhas(cuts, folha.height(), head);
    const int first = std::max(printer.fromPage(), 1);
    const int last = printer.toPage() > 0 ? printer.toPage() : int(edges.size()) - 1;
    bool begun = false;
    for (int sheet = first; sheet <= last && sheet < int(edges.size()); ++sheet) {
        if (begun && !printer.newPage())
            return;
        begun = true;
        const double top = edges[std::size_t(sheet - 1)];
        const double room = roomForHead(top, folha.height(), head);
        painter.save();
        if (room > 0) {
            paintPart(pagina, {0, head.top, folha.width(), room}, painter);
            painter.translate(0, room);
        }
        paintPart(pagina, {0, top, folha.width(), edges[std::size_t(sheet)] - top}, painter);
        painter.restore();
    }
}

void pintaPagina(const QString &texto, const std::vector<FiguraDePagina> &figuras, QPrinter &printer)
{
    const double scale = printer.logicalDpiX() / kPontosPorPolegada;
    QPainter painter;
    if (scale <= 0 || !painter.begin(&printer))
        return;
    const QRectF paper = printer.pageLayout().paintRectPixels(printer.resolution());
    const QSizeF sheet = paper.size() / scale;
    if (sheet.isEmpty())
        return;
    DocumentoPagina pagina(figuras);
    pagina.setDocumentMargin(0);
    pagina.setUseDesignMetrics(true);
    pagina.setTextWidth(sheet.width());
    pagina.setTexto(texto);
    painter.scale(scale, scale);
    paintSheets(pagina, sheet, painter, printer);
}

void imprimePagina(const QString &texto, const std::vector<FiguraDePagina> &figuras, QWidget *janela)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(u"Desempenho"_s);
    QPrintDialog dialog(&printer, janela);
    dialog.setWindowTitle(u"Imprimir"_s);
    if (dialog.exec() == QDialog::Accepted)
        pintaPagina(texto, figuras, printer);
}

} // namespace quorel
