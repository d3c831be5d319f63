#pragma once

#include <QImage>
#include <QTextDocument>

#include <vector>

namespace quorel {

/// A picture that a page may show.
struct FiguraDePagina
{
    QString src; ///< the very text of its SRC
    QImage imagem;
};

/// The picture of a file, null when it holds none; its resolution becomes its pixel ratio, so that it keeps its natural
/// size. @param caminho  with backslashes; it is also the SRC
FiguraDePagina leFigura(const QString &caminho);

/// The row of a table that stands again on each further sheet; heights in the units of the layout.
struct CabecaDePagina
{
    double top = 0;
    double bottom = 0; ///< equal to top: there is none
    double fim = 0; ///< of the table
};

/// A report page: columns as wide as their texts, only the names in more than one line.
/// Names in the page pass unescaped and may be tags, so the pictures given are all that it shows; it loads nothing.
class DocumentoPagina final : public QTextDocument
{
    Q_OBJECT
public:
    explicit DocumentoPagina(const std::vector<FiguraDePagina> &figuras);

    /// Reads the page. Where the width is known by now, a long page is laid out once: most of the time goes there.
    /// @param texto  the page, decoded; empty is an empty page
    void setTexto(const QString &texto);

    /// Heights at which the page may be cut without cutting a line, a picture or a row of a table, ascending; the last
    /// one is the page's end. In the units of the layout, whose width must be set before.
    std::vector<double> cortes() const;

    /// The head of the page's longest table: its first row with a text in each column. One without rows behind it has
    /// none. @param cortes  as cortes() gave them; the row reaches from one to the next
    CabecaDePagina cabeca(const std::vector<double> &cortes) const;

protected:
    QVariant loadResource(int type, const QUrl &name) override;

private:
    void freeColumns();
};

} // namespace quorel
