#pragma once

#include <QColor>
#include <QImage>
#include <QSizeF>
#include <QString>

#include <vector>

class QPainter;

namespace quorel {

/// The two looks of the chart, under the numbers that chartType has for them.
enum AparenciaGrafico : int { kTridimensional = 0, kBidimensional = 1 };

/// A series: one bar in each group.
struct SerieGrafico
{
    QString nome; ///< in the legend
    QColor cor = Qt::white;
    bool solida = false; ///< else lines over the colour tell it from its neighbours in grey too
    bool operator==(const SerieGrafico &) const = default;
};

/// What a chart of bars shows: groups side by side, in each a bar for every series.
struct FiguraGrafico
{
    std::vector<QString> grupos; ///< below the axis
    std::vector<SerieGrafico> series;
    std::vector<std::vector<qint16>> valores; ///< [group][series], not below 0
    qint16 valor(std::size_t grupo, std::size_t serie) const; ///< 0 for one that is not there
    bool operator==(const FiguraGrafico &) const = default;
};

/// The axis of values, from 0.
struct EixoGrafico
{
    int passo = 1; ///< 1, 2 or 5 times a power of ten
    int maximo = 1; ///< a multiple of the step, not below the largest value
    bool operator==(const EixoGrafico &) const = default;
};

/// @param maior  largest value; 0 and less give an axis with steps all the same
/// @param passos  most steps that there is room for; below 1 counts as 1
EixoGrafico axisScale(int maior, int passos);

/// Draws the chart on white, at any size; nothing where there is no room at all.
void paintChart(QPainter &painter, const QSizeF &size, const FiguraGrafico &figura, AparenciaGrafico aparencia);

/// The same as a picture for the printer: three times as many pixels as the screen has for that size, and a resolution
/// (dots per meter) that says so.
QImage chartImage(const QSize &size, const FiguraGrafico &figura, AparenciaGrafico aparencia);

/// Every figure in words, for screen readers: "Acertos: Ciências 3, Matemática 0. Erros: …"
QString chartText(const FiguraGrafico &figura);

} // namespace quorel
