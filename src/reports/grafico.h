#pragma once

#include "reports/figura_grafico.h"

#include <QWidget>

namespace quorel {

/// The chart control. A double click, the space bar or Enter turns it over between its two looks.
/// Series and groups are numbered from 1; an unknown number is passed over.
class CrtGrafico final : public QWidget
{
    Q_OBJECT
public:
    explicit CrtGrafico(QWidget *parent);

    /// @param valores  a row for each group, in it a value for each series. Labels and brushes that were set stay.
    void ChartData(const std::vector<std::vector<qint16>> &valores);
    void setBrushSolid(int serie); ///< without one, lines lie over the colour of each series but the first
    void setFillColor(int serie, const QColor &cor);
    void setColumnLabel(int serie, const QString &nome);
    void setRowLabel(int grupo, const QString &nome);
    void Refresh();

    int chartType() const { return mChartType; }
    void setChartType(int tipo); ///< 1 is two-dimensional bars, anything else three-dimensional

    /// Puts the chart's picture on the clipboard, sharp enough for a printer: its resolution tells its natural size.
    void EditCopy() const;

    const FiguraGrafico &figura() const { return mFigura; }
    QSize sizeHint() const override;

signals:
    void virado(); ///< the user asked for the other look

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    SerieGrafico *serie(int numero);
    void tellFigures(); ///< to screen readers

    FiguraGrafico mFigura;
    int mChartType = kBidimensional;
};

} // namespace quorel
