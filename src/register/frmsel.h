#pragma once

#include "register/abertura.h"
#include "register/arredores.h"
#include "register/quadro.h"

class QComboBox;
class QMouseEvent;
class QPushButton;

namespace quorel {

/// The frame in which a teacher chooses class and pupil.
class FrmSel final : public Quadro
{
    Q_OBJECT
public:
    /// @param arredores,abertura  outlive the frame
    FrmSel(const Arredores &arredores, Abertura &abertura, QWidget *parent);

    bool prepara(); ///< shows the current class, and lists its pupils; see Abertura::abre
    bool mostraClasse(); ///< the same, the pupil's name aside
    void limpaClasse(); ///< empties the class box; nothing is chosen by that
    void esvazia(); ///< as at first

protected:
    bool eventFilter(QObject *alvo, QEvent *event) override;

private:
    void buildLayout();
    void connectEvents();
    bool classeChange();
    void holdPainting(bool hold);
    void classeClick();
    void watchAluno();
    void alunoLeft(Qt::FocusReason reason);
    bool pressBesideList(QWidget &lista, const QMouseEvent &event); ///< whether the press was taken
    /// Keeps no text in the pupils' box that is no row. @return false when it was emptied, which has been told
    bool settleAluno();
    void seleciona();
    void chooseAluno();
    void report();

    const Arredores &mArredores;
    Abertura &mAbertura;
    QComboBox *mCmbClasse = nullptr;
    QComboBox *mCmbAluno = nullptr;
    QPushButton *mCmdSelecionar = nullptr;
    bool mWaitsRelease = false; ///< a press left the pupils' box, and its button is still down
};

} // namespace quorel
