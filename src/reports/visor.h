#pragma once

#include "reports/documento_pagina.h"

#include <QTextBrowser>

#include <memory>

namespace quorel {

/// The browser control: shows a page of ours before it is printed. It follows no link and loads nothing (see
/// DocumentoPagina). Above the page it keeps a strip free, on which the window's buttons lie.
class WebBrowser final : public QTextBrowser
{
    Q_OBJECT
public:
    /// @param faixa  height of the free strip, pixels
    WebBrowser(int faixa, QWidget *parent);
    ~WebBrowser() override;

    /// Shows a page file; one that is missing gives an empty page. Quickest when the control is on view by then.
    /// @param caminho  with backslashes
    /// @param figuras  paths of the pictures that it may show; a missing one is left out
    void Navigate(const QString &caminho, const QStringList &figuras);

    /// Prints the page that is shown: offers the system's print dialogue, and waits for it.
    void ExecWB();

private:
    QString mTexto;
    std::vector<FiguraDePagina> mFiguras;
    std::unique_ptr<DocumentoPagina> mPagina; ///< shown; the control does not own it
};

} // namespace quorel
