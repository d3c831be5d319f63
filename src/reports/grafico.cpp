#include "reports/grafico.h"

#include <QAccessibleWidget>
#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace quorel {

using namespace Qt::StringLiterals;

static QAccessibleInterface *chartInterface(const QString &className, QObject *object)
{
    auto *chart = className == "quorel::CrtGrafico"_L1 ? qobject_cast<QWidget *>(object) : nullptr;
    return chart ? new QAccessibleWidget(chart, QAccessible::Chart) : nullptr; // owned by Qt's own register of them
}

CrtGrafico::CrtGrafico(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent); // the sheet that lies behind is not painted
    QAccessible::installFactory(chartInterface); // once more does no harm
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(u"Gráfico de acertos e erros"_s);
}

SerieGrafico *CrtGrafico::serie(int numero)
{
    return numero >= 1 && std::size_t(numero) <= mFigura.series.size() ? &mFigura.series[std::size_t(numero - 1)]
                                                                       : nullptr;
}

void CrtGrafico::ChartData(const std::vector<std::vector<qint16>> &valores)
{
    mFigura.valores = valores;
    mFigura.grupos.resize(valores.size());
    mFigura.series.resize(valores.empty() ? 0 : valores.front().size());
    tellFigures();
    update();
}

void CrtGrafico::setBrushSolid(int numero)
{
    if (SerieGrafico *s = serie(numero))
        s->solida = true;
}

void CrtGrafico::setFillColor(int numero, const QColor &cor)
{
    if (SerieGrafico *s = serie(numero))
        s->cor = cor;
    update();
}

void CrtGrafico::setColumnLabel(int numero, const QString &nome)
{
    if (SerieGrafico *s = serie(numero))
        s->nome = nome;
    tellFigures();
    update();
}

void CrtGrafico::setRowLabel(int grupo, const QString &nome)
{
    if (grupo >= 1 && std::size_t(grupo) <= mFigura.grupos.size())
        mFigura.grupos[std::size_t(grupo - 1)] = nome;
    tellFigures();
    update();
}

void CrtGrafico::Refresh()
{
    repaint();
}

void CrtGrafico::setChartType(int tipo)
{
    mChartType = tipo;
    update();
}

QSize CrtGrafico::sizeHint() const
{
    return {400, 280};
}

void CrtGrafico::tellFigures()
{
    setAccessibleDescription(chartText(mFigura));
}

static AparenciaGrafico look(int chartType)
{
    return chartType == kBidimensional ? kBidimensional : kTridimensional;
}

void CrtGrafico::EditCopy() const
{
    QGuiApplication::clipboard()->setImage(chartImage(size(), mFigura, look(mChartType)));
}

void CrtGrafico::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintChart(painter, size(), mFigura, look(mChartType));
    painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 2) : QPen(QColor(0x80, 0x80, 0x80)));
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

void CrtGrafico::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        emit virado();
}

void CrtGrafico::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit virado();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace quorel
