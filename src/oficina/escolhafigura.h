#pragma once

#include <QDialog>

class QLineEdit;
class QListView;
class QSortFilterProxyModel;

namespace quorel {

/// All figures of the media place as thumbnails, which are read as they come into sight. Typing narrows them.
class EscolhaFigura final : public QDialog
{
    Q_OBJECT
public:
    /// @param raiz  native directory of the figures, searched with its folders
    EscolhaFigura(const QString &raiz, QWidget *parent);

    QString nome() const; ///< of the chosen figure, as a lesson names it; empty for none

signals:
    void novaFoto(); ///< a photo is to be brought in

private:
    QLineEdit *mBusca = nullptr; // children, from the constructor on
    QListView *mLista = nullptr;
    QSortFilterProxyModel *mVistas = nullptr;
};

} // namespace quorel
