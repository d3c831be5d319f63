#include "visual/janela_ativa.h"

#include <QApplication>
#include <QFileDialog>
#include <QGuiApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QWindow>

namespace quorel {

JanelaAtiva::JanelaAtiva()
{
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &JanelaAtiva::observa);
}

void JanelaAtiva::pede(QWidget &janela)
{
    mPedida = mAtiva != &janela || !janela.isActiveWindow();
    mAtiva = &janela;
}

bool JanelaAtiva::muda(QWidget &janela)
{
    if (mAtiva == &janela) {
        mPedida = false;
        return false;
    }
    if (mPedida)
        return false;
    mAtiva = &janela;
    return true;
}

static bool isBox(const QWidget &widget)
{
    return qobject_cast<const QMessageBox *>(&widget) || qobject_cast<const QInputDialog *>(&widget)
        || qobject_cast<const QFileDialog *>(&widget);
}

static QWidget *widgetOf(const QWindow *window)
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (window && widget->windowHandle() == window)
            return widget;
    }
    return nullptr;
}

// Only windows of other folders matter here; those of the shell call muda() themselves.
void JanelaAtiva::observa(QWindow *window)
{
    QWidget *widget = widgetOf(window);
    const bool plain = widget && (widget->windowType() == Qt::Window || widget->windowType() == Qt::Dialog);
    if (plain && !isBox(*widget) && !widget->inherits("quorel::JanelaBase"))
        muda(*widget);
}

} // namespace quorel
