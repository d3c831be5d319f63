#pragma once

#include "catalogue/vistas.h"
#include "visual/janela_base.h"

#include <vector>

class QCheckBox;
class QFrame;
class QLineEdit;
class QListView;
class QPushButton;
class QScrollBar;

namespace quorel {

class Janelas;
class OpcaoMes;

/// The panel at the right of fPrincip and fBlocos: months, mode boxes, and the pupil list that lies behind the months.
class fAux final : public JanelaBase, public VistaMeses
{
    Q_OBJECT
public:
    static constexpr Lugar kCliente{0, 0, 3270, 8160}; ///< client area; twips

    explicit fAux(Janelas &janelas);

    /// Shows the panel, without taking the activation from another window. Before fPrincip was shown for the first
    /// time it is only loaded; it then appears right after fPrincip.
    void mostra() override;
    void mostraPedida(); ///< fPrincip is up: a panel that was shown before appears
    void acompanhaPrincipal(); ///< goes to the right edge of fPrincip

    void addMonth(int n, int left, int top) override;
    void setCaption(int n, const QString &texto) override;
    void showMonth(int n) override;
    void setScrollMaximum(int twips) override;
    QString selectedMonth() const override;

    void garanteMes(); ///< an empty tag of FrmMeses becomes "1"

    bool copiaFiguras() const; ///< ChkFig is ticked
    void desmarcaCopia(); ///< unticks ChkFig
    void desmarcaSelecao(); ///< unticks chkSelec where it is ticked, with the questions that brings

    /// A month option, the template 0 included. @throws ErroExecucao 340 when there is none of that index
    OpcaoMes &opcao(int indice) const;

protected:
    void load() override;
    void unload() override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void buildLayout();
    void buildMeses();
    void buildAlunos();
    void buildBotoes();
    void connectEvents();
    void connectMonth(int indice);
    void monthClick(int indice);
    void CorrigeScroll(const OpcaoMes &focada); ///< keeps the month that has received the focus in view
    void scrollChange(int value);
    void selecChange();
    void alunoClick();
    void reportGeneric();

    Janelas &mJanelas;
    QFrame *mFrmMeses = nullptr;
    QLineEdit *mTxtSelecMes = nullptr;
    QScrollBar *mScrVertical = nullptr;
    QFrame *mFrmSelecAluno = nullptr;
    QListView *mLstAlunos = nullptr;
    QPushButton *mCmdAluno = nullptr;
    QPushButton *mCmdDesemp = nullptr;
    QPushButton *mCmdInternet = nullptr;
    QCheckBox *mChkSelec = nullptr;
    QCheckBox *mChkFig = nullptr;
    std::vector<OpcaoMes *> mOptMeses; ///< from 0, the template
    QString mTag; ///< of FrmMeses: number of the selected month, decimal; empty until fPrincip loads
    double mAnterior; ///< the scroll bar's previous value, twips
    bool mPedida = false; ///< to appear after fPrincip
};

} // namespace quorel
