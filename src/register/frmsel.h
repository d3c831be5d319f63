#pragma once

#include "register/arredores.h"
#include "register/quadro.h"

class QComboBox;
class QPushButton;

namespace quorel {

/// The frame in which a teacher chooses class and pupil.
class FrmSel final : public Quadro
{
    Q_OBJECT
public:
    /// @param arredores  outlives the frame
    FrmSel(const Arredores &arredores, QWidget *parent);

    void prepara(); ///< shows the current class, and lists its pupils
    void limpaClasse(); ///< empties the class box; nothing is chosen by that
    void esvazia(); ///< as at first

protected:
    bool eventFilter(QObject *alvo, QEvent *event) override;

private:
    void buildLayout();
    void connectEvents();
    void classeChange();
    void holdPainting(bool hold);
    void classeClick();
    void seleciona();
    void chooseAluno();
    void report();

    const Arredores &mArredores;
    QComboBox *mCmbClasse = nullptr;
    QComboBox *mCmbAluno = nullptr;
    QPushButton *mCmdSelecionar = nullptr;
};

} // namespace quorel
