#include "data/ligacoes.h"

#include "data/campos.h"
#include "data/recordset.h"
#include "platform/codec.h"
#include "platform/erro.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QSignalBlocker>

#include <algorithm>

namespace quorel {

static QVariant noBookmark()
{
    return QVariant(QMetaType::fromType<int>());
}

void ModeloRecordSet::setRecordSet(std::shared_ptr<RecordSet> set, const QString &campo)
{
    const int column = campo.isEmpty() ? -1 : set->fieldNumber(campo);
    if (mSet)
        mSet->disconnect(this);
    mSet = std::move(set);
    mColuna = column;
    connect(mSet.get(), &RecordSet::rowsChanged, this, &ModeloRecordSet::stale);
    refill();
}

void ModeloRecordSet::clear()
{
    if (mSet)
        mSet->disconnect(this);
    mSet.reset();
    refill();
}

void ModeloRecordSet::refill()
{
    beginResetModel();
    mMarcas = mSet ? mSet->visibleBookmarks() : std::vector<qint32>();
    endResetModel();
}

QVariant ModeloRecordSet::bookmark(int row) const
{
    if (row < 0 || row >= std::ssize(mMarcas))
        return noBookmark();
    return mMarcas[static_cast<size_t>(row)];
}

int ModeloRecordSet::rowOf(const QVariant &marca) const
{
    const auto found = std::ranges::find(mMarcas, marca.toInt());
    return marca.isNull() || found == mMarcas.end() ? -1 : static_cast<int>(found - mMarcas.begin());
}

QVariant ModeloRecordSet::bookmarkOf(const QString &texto) const
{
    if (!mSet || texto.isEmpty())
        return noBookmark();
    const int column = std::max(mColuna, 0);
    const auto equals = [&](qint32 mark) { return equalNoCase(variantText(mSet->valueAt(mark, column)), texto); };
    qint32 current = 0;
    ignora([&] { current = mSet->Bookmark(); }); // off the records there is none
    const bool listed = std::ranges::find(mMarcas, current) != mMarcas.end();
    if (listed && equals(current))
        return current;
    const auto found = std::ranges::find_if(mMarcas, equals);
    return found == mMarcas.end() ? noBookmark() : QVariant(*found);
}

int ModeloRecordSet::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(mMarcas.size());
}

int ModeloRecordSet::columnCount(const QModelIndex &parent) const
{
    if (parent.isValid() || !mSet)
        return 0;
    return mColuna >= 0 ? 1 : mSet->fieldCount();
}

QVariant ModeloRecordSet::data(const QModelIndex &index, int role) const
{
    if (!mSet || !index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    const int column = mColuna >= 0 ? mColuna : index.column();
    return variantText(mSet->valueAt(bookmark(index.row()).toInt(), column));
}

QVariant ModeloRecordSet::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    return mSet->field(mColuna >= 0 ? mColuna : section).nome;
}

/// The binding that belongs to a control, made at first use.
template <typename Ligacao, typename Control>
static Ligacao *existing(Control &control)
{
    return control.template findChild<Ligacao *>(QString(), Qt::FindDirectChildrenOnly);
}

LigacaoCombo &LigacaoCombo::of(QComboBox &combo)
{
    if (auto *found = existing<LigacaoCombo>(combo))
        return *found;
    return *new LigacaoCombo(combo);
}

LigacaoCombo::LigacaoCombo(QComboBox &combo) : QObject(&combo), mCombo(combo), mModelo(new ModeloRecordSet(this))
{
    combo.setEditable(true);
    combo.setInsertPolicy(QComboBox::NoInsert);
    // A combo that loses the focus takes the first row of its text, whatever row was chosen before.
    QObject::disconnect(combo.lineEdit(), &QLineEdit::editingFinished, &combo, nullptr);
    combo.completer()->setCaseSensitivity(Qt::CaseInsensitive);
    combo.completer()->setCompletionMode(QCompleter::PopupCompletion);
    const QString text = combo.currentText();
    const QSignalBlocker quiet(&combo);
    combo.setModel(mModelo);
    combo.setEditText(text);
    mTexto = text;
    connect(mModelo, &ModeloRecordSet::stale, this,
        [this](bool renumeradas) { renew(renumeradas, [this] { mModelo->refill(); }); });
    connect(combo.lineEdit(), &QLineEdit::textChanged, this, &LigacaoCombo::resolve);
    connect(&combo, &QComboBox::activated, this, &LigacaoCombo::userChose);
}

// The combo clears its text and takes the first row when its list changes; a data combo does not, and nobody hears.
void LigacaoCombo::renew(bool porTexto, const std::function<void()> &fill)
{
    const QSignalBlocker quietCombo(&mCombo);
    const QSignalBlocker quietEdit(mCombo.lineEdit());
    const QVariant chosen = porTexto ? noBookmark() : selectedItem();
    mTexto = mCombo.currentText();
    const int place = mCombo.lineEdit()->cursorPosition();
    fill();
    mEscolhido = mModelo->rowOf(chosen) >= 0 ? chosen : mModelo->bookmarkOf(mTexto);
    mCombo.setCurrentIndex(mModelo->rowOf(mEscolhido));
    mCombo.setEditText(mTexto);
    mCombo.lineEdit()->setCursorPosition(place);
    mIndice = mCombo.currentIndex();
}

void LigacaoCombo::setList(std::shared_ptr<RecordSet> set, const QString &campo)
{
    renew(true, [&] { mModelo->setRecordSet(std::move(set), campo); });
}

void LigacaoCombo::clearList()
{
    renew(true, [this] { mModelo->clear(); });
    mCombo.clearEditText();
    resolve();
}

void LigacaoCombo::resolve()
{
    const QString text = mCombo.currentText();
    const int index = mCombo.currentIndex();
    const bool picked = index >= 0 && index != mIndice && mCombo.itemText(index) == text;
    mEscolhido = picked ? mModelo->bookmark(index) : mModelo->bookmarkOf(text);
    mTexto = text;
    follow();
    mIndice = mCombo.currentIndex();
}

/// Lets the arrow keys and the opened list begin at the chosen row. What the user types stays as typed.
void LigacaoCombo::follow()
{
    const int row = mModelo->rowOf(mEscolhido);
    if (row == mCombo.currentIndex() || (mCombo.lineEdit()->isModified() && mCombo.itemText(row) != mTexto))
        return;
    const QSignalBlocker quietCombo(&mCombo);
    const QSignalBlocker quietEdit(mCombo.lineEdit());
    mCombo.setCurrentIndex(row);
    if (mCombo.currentText() != mTexto)
        mCombo.setEditText(mTexto);
}

void LigacaoCombo::userChose(int row)
{
    mEscolhido = mModelo->bookmark(row);
    mTexto = mCombo.currentText();
    mIndice = mCombo.currentIndex();
}

QVariant LigacaoCombo::selectedItem()
{
    if (mCombo.currentText() != mTexto || mCombo.currentIndex() != mIndice)
        resolve(); // asked by a handler that hears of the change before this does
    return mEscolhido;
}

LigacaoLista &LigacaoLista::of(QAbstractItemView &view)
{
    if (auto *found = existing<LigacaoLista>(view))
        return *found;
    return *new LigacaoLista(view);
}

LigacaoLista::LigacaoLista(QAbstractItemView &view) : QObject(&view), mView(view), mModelo(new ModeloRecordSet(this))
{
    view.setModel(mModelo);
    connect(view.selectionModel(), &QItemSelectionModel::currentChanged, this,
        [this](const QModelIndex &current) { mTexto = current.siblingAtColumn(0).data().toString(); });
    connect(mModelo, &ModeloRecordSet::stale, this, &LigacaoLista::renew);
}

void LigacaoLista::renew(bool renumeradas)
{
    const QVariant chosen = renumeradas ? noBookmark() : selectedItem();
    mModelo->refill();
    choose(renumeradas ? mModelo->bookmarkOf(mTexto) : chosen);
}

void LigacaoLista::choose(const QVariant &marca)
{
    const int row = mModelo->rowOf(marca);
    if (row >= 0)
        mView.setCurrentIndex(mModelo->index(row, 0));
    else
        mTexto.clear();
}

void LigacaoLista::setList(std::shared_ptr<RecordSet> set, const QString &campo)
{
    mModelo->setRecordSet(std::move(set), campo);
    choose(mModelo->bookmarkOf(mTexto));
}

void LigacaoLista::clearList()
{
    mModelo->clear();
    mTexto.clear();
}

QVariant LigacaoLista::selectedItem() const
{
    return mModelo->bookmark(mView.currentIndex().isValid() ? mView.currentIndex().row() : -1);
}

LigacaoCampo &LigacaoCampo::of(QWidget &control)
{
    if (auto *found = existing<LigacaoCampo>(control))
        return *found;
    return *new LigacaoCampo(control);
}

LigacaoCampo::LigacaoCampo(QWidget &control) : QObject(&control), mControl(control) { }

void LigacaoCampo::setField(std::shared_ptr<RecordSet> set, const QString &campo)
{
    set->fieldNumber(campo);
    if (mSet)
        mSet->disconnect(this);
    mSet = std::move(set);
    mCampo = campo;
    connect(mSet.get(), &RecordSet::currentChanged, this, &LigacaoCampo::show);
    connect(mSet.get(), &RecordSet::rowsChanged, this, &LigacaoCampo::show);
    show();
}

void LigacaoCampo::show()
{
    QString text;
    ignora([&] { text = variantText(mSet->value(mCampo)); }); // off the records nothing shows
    mControl.setProperty("text", text);
}

} // namespace quorel
