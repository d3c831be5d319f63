#pragma once

#include "reports/planilha.h"

#include <QAbstractTableModel>
#include <QTableView>

namespace quorel {

/// The rows of the sheet as a table view reads them; the first one is the header.
class ModeloPlanilha final : public QAbstractTableModel
{
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    void setLinhas(std::vector<LinhaPlanilha> linhas);
    const std::vector<LinhaPlanilha> &linhas() const { return mLinhas; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<LinhaPlanilha> mLinhas{1}; // the fixed row stands from the start, and prints
};

/// The grid of the sheet: four columns of fixed widths under a header.
class GrdRot final : public QTableView
{
    Q_OBJECT
public:
    explicit GrdRot(QWidget *parent);

    void setLinhas(std::vector<LinhaPlanilha> linhas); ///< header first; empty leaves nothing
    const std::vector<LinhaPlanilha> &linhas() const { return mModelo.linhas(); } ///< header first

private:
    ModeloPlanilha mModelo;
};

} // namespace quorel
