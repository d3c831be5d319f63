#pragma once

#include <QListWidget>

namespace quorel {

/// The list of the disciplines. A line is a name, tabs and a number; only the name shows.
class ListaDisciplinas final : public QListWidget
{
    Q_OBJECT
public:
    explicit ListaDisciplinas(QWidget *parent);

    void AddItem(const QString &linha);
    QString linhaEscolhida() const; ///< the selected line, tabs and number included; empty when there is none
    void desfazEscolha(); ///< no line is selected; no click

signals:
    void clicada(); ///< a line was chosen by mouse or key, the one that is chosen already too

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(
        const QModelIndex &index, const QEvent *event = nullptr) const override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString mAntes; ///< chosen line before the mouse button went down
};

} // namespace quorel
