#pragma once

#include <QAbstractTableModel>

#include <functional>
#include <memory>
#include <vector>

class QAbstractItemView;
class QComboBox;
class QWidget;

namespace quorel {

class RecordSet;

/// The visible rows of a record set as a model: one column for lists, all of them for grids. An added record that is
/// pending is not shown. Holds its record set; set to another one it is filled anew, and by who uses it when the rows
/// change.
class ModeloRecordSet final : public QAbstractTableModel
{
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// @param campo  the column to show; empty for all @throws ErroBD for a column that is not there
    void setRecordSet(std::shared_ptr<RecordSet> set, const QString &campo);
    void clear();
    void refill(); ///< answers stale()

    QVariant bookmark(int row) const; ///< of a shown row, from 0; a null variant for none
    int rowOf(const QVariant &marca) const; ///< -1 when it is not shown
    /// The current record if its shown column equals the text (case ignored), else the first row that does.
    QVariant bookmarkOf(const QString &texto) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    void stale(bool renumeradas); ///< the rows changed; what it shows is still what it was filled with

private:
    std::shared_ptr<RecordSet> mSet;
    int mColuna = -1;
    std::vector<qint32> mMarcas;
};

/// What makes a combo a data combo: editable, inserts nothing, completes from its list. Its chosen record is the one
/// that the user picked, or that its text names. A window that handles the combo's changes calls of() before it
/// connects them.
class LigacaoCombo final : public QObject
{
    Q_OBJECT
public:
    static LigacaoCombo &of(QComboBox &combo); ///< the combo's own, made at the first call

    void setList(std::shared_ptr<RecordSet> set, const QString &campo); ///< the text stays
    void clearList();
    QVariant selectedItem(); ///< bookmark of the chosen record, or a null variant

private:
    explicit LigacaoCombo(QComboBox &combo);
    /// Fills the model while nobody hears; the text stays. @param porTexto  what is chosen is found by the text alone
    void renew(bool porTexto, const std::function<void()> &fill);
    void resolve();
    void follow();
    void userChose(int row);

    QComboBox &mCombo;
    ModeloRecordSet *mModelo;
    QVariant mEscolhido;
    QString mTexto; ///< that mEscolhido was found for
    int mIndice = -1; ///< the combo's index then
};

/// A list or grid on a record set. What is chosen stays so when the rows change; when they were read again, by its
/// text, which is that of the first column.
class LigacaoLista final : public QObject
{
    Q_OBJECT
public:
    static LigacaoLista &of(QAbstractItemView &view);

    void setList(std::shared_ptr<RecordSet> set, const QString &campo); ///< empty: all columns
    void clearList();
    QVariant selectedItem() const; ///< bookmark of the chosen row, or a null variant

private:
    explicit LigacaoLista(QAbstractItemView &view);
    void renew(bool renumeradas);
    void choose(const QVariant &marca);

    QAbstractItemView &mView;
    ModeloRecordSet *mModelo;
    QString mTexto; ///< of what is chosen
};

/// Lets a control show a field of the current record in its text.
class LigacaoCampo final : public QObject
{
    Q_OBJECT
public:
    static LigacaoCampo &of(QWidget &control);
    void setField(std::shared_ptr<RecordSet> set, const QString &campo);

private:
    explicit LigacaoCampo(QWidget &control);
    void show();

    QWidget &mControl;
    std::shared_ptr<RecordSet> mSet;
    QString mCampo;
};

} // namespace quorel
