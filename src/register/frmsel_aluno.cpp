#include "data/ligacoes.h"
#include "platform/costuras.h"
#include "register/frmsel.h"
#include "register/registros.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>

#include <algorithm>
#include <array>

namespace quorel {

using namespace Qt::StringLiterals;

/// The two lists that can be open over the frame.
static std::array<QWidget *, 2> listsOf(const QComboBox &combo)
{
    return {combo.completer()->popup(), combo.view()->window()};
}

void FrmSel::watchAluno()
{
    mCmbAluno->installEventFilter(this); // has the focus of its line
    for (QWidget *lista : listsOf(*mCmbAluno))
        lista->installEventFilter(this);
}

bool FrmSel::eventFilter(QObject *alvo, QEvent *event)
{
    const bool press = event->type() == QEvent::MouseButtonPress;
    const auto *mouse = press ? static_cast<QMouseEvent *>(event) : nullptr;
    const bool onClasse = alvo == mCmbClasse || alvo == mCmbClasse->lineEdit();
    // A click on the box comes before the choice that it may lead to; a class without pupils then shuts the pupils'
    // box.
    if (press && onClasse && mouse->button() == Qt::LeftButton)
        classeClick();
    if (alvo == mCmbAluno && event->type() == QEvent::FocusOut)
        alunoLeft(static_cast<QFocusEvent *>(event)->reason());
    if (mWaitsRelease && event->type() == QEvent::MouseButtonRelease) {
        mWaitsRelease = false;
        qApp->removeEventFilter(this);
        alunoLeft(Qt::OtherFocusReason); // after the click
    }
    if (press && !onClasse) {
        const auto lists = listsOf(*mCmbAluno);
        const auto lista = std::ranges::find(lists, alvo);
        if (lista != lists.end() && pressBesideList(**lista, *mouse))
            return true;
    }
    return Quadro::eventFilter(alvo, event);
}

/// A press that takes the focus away has its click first: the button must not lose it to a box.
void FrmSel::alunoLeft(Qt::FocusReason reason)
{
    if (reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason || reason == Qt::MenuBarFocusReason)
        return; // a list, a menu or another window: the box is come back to
    if (reason == Qt::MouseFocusReason) {
        mWaitsRelease = true;
        qApp->installEventFilter(this);
        return;
    }
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (isVisible() && !mCmbAluno->hasFocus())
                settleAluno();
        },
        Qt::QueuedConnection);
}

// An open list takes the press that closes it; the button under it is to have it as well.
bool FrmSel::pressBesideList(QWidget &lista, const QMouseEvent &event)
{
    const QPointF place = mCmdSelecionar->mapFromGlobal(event.globalPosition());
    if (!lista.isVisible() || !mCmdSelecionar->rect().contains(place.toPoint()))
        return false;
    mCmbAluno->hidePopup();
    lista.hide();
    QMouseEvent press(event.type(), place, event.globalPosition(), event.button(), event.buttons(), event.modifiers());
    QCoreApplication::sendEvent(mCmdSelecionar, &press);
    return true;
}

bool FrmSel::settleAluno()
{
    const QString texto = mCmbAluno->currentText();
    if (texto.isEmpty() || !LigacaoCombo::of(*mCmbAluno).selectedItem().isNull())
        return true;
    QStringList begunSo;
    for (int i = 0; i < mCmbAluno->count(); ++i) {
        if (mCmbAluno->itemText(i).startsWith(texto, Qt::CaseInsensitive))
            begunSo << mCmbAluno->itemText(i);
    }
    if (begunSo.size() == 1) {
        escolhe(*mCmbAluno, begunSo.first());
        return true;
    }
    mCmbAluno->clearEditText();
    caixa({.texto = u"Escolha o aluno na lista."_s});
    return false;
}

} // namespace quorel
