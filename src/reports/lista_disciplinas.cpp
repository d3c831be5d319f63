#include "reports/lista_disciplinas.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyledItemDelegate>

namespace quorel {

static QString nameOf(const QString &linha)
{
    return linha.section(u'\t', 0, 0);
}

namespace {

class SoNome final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QString displayText(const QVariant &value, const QLocale &) const override { return nameOf(value.toString()); }
};

} // namespace

ListaDisciplinas::ListaDisciplinas(QWidget *parent) : QListWidget(parent)
{
    setItemDelegate(new SoNome(this));
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void ListaDisciplinas::AddItem(const QString &linha)
{
    auto *item = new QListWidgetItem(linha, this);
    item->setData(Qt::AccessibleTextRole, nameOf(linha));
}

QString ListaDisciplinas::linhaEscolhida() const
{
    const QList<QListWidgetItem *> chosen = selectedItems();
    return chosen.isEmpty() ? QString() : chosen.front()->text();
}

void ListaDisciplinas::desfazEscolha()
{
    clearSelection();
    setCurrentItem(nullptr);
}

// Whatever keys are held, a line is chosen and never let go; Qt's own list would drop it under Ctrl.
QItemSelectionModel::SelectionFlags ListaDisciplinas::selectionCommand(const QModelIndex &index, const QEvent *) const
{
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

void ListaDisciplinas::mousePressEvent(QMouseEvent *event)
{
    mAntes = linhaEscolhida();
    QListWidget::mousePressEvent(event);
}

// The button chooses a line when it goes down and may come up beside the list: that line was chosen all the same.
void ListaDisciplinas::mouseReleaseEvent(QMouseEvent *event)
{
    QListWidget::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton)
        return;
    const QString now = linhaEscolhida();
    if (!now.isEmpty() && (itemAt(event->position().toPoint()) || now != mAntes))
        emit clicada();
}

void ListaDisciplinas::keyPressEvent(QKeyEvent *event)
{
    const QString before = linhaEscolhida();
    const bool moves = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    if (before.isEmpty() && moves && currentItem())
        setCurrentItem(currentItem(), QItemSelectionModel::ClearAndSelect); // where the focus stands; none is skipped
    else
        QListWidget::keyPressEvent(event);
    const bool presses =
        event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const QString now = linhaEscolhida();
    if (!now.isEmpty() && (presses || now != before))
        emit clicada();
}

} // namespace quorel
