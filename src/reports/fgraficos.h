#pragma once

#include "reports/planilha.h"
#include "visual/janela_base.h"

#include <array>

class QCheckBox;
class QGroupBox;
class QLabel;
class QPushButton;

namespace quorel {

class CrtGrafico;
class GrdRot;
class ListaDisciplinas;
class MaskEdBox;
class WebBrowser;

/// How the current pupil did in the current class over a period: as a chart, as a sheet, and as a page to be printed.
/// It stays loaded while it is only hidden: caption, period, choice and result are then those of the pupil it was
/// opened for first, until a discipline is chosen again.
class FGraficos final : public JanelaBase
{
    Q_OBJECT
public:
    explicit FGraficos(JanelaAtiva &ativa);

    /// Shows the window above all others and returns when it is hidden again; events run meanwhile.
    void mostraModal();

    /// Whether the user closed the window by its frame: what is shown next time is a new one.
    bool foiDescarregada() const { return mDescarregada; }

    /// Applies the period and the choice of discipline. An incomplete date ends it in silence, a bad one with a box.
    void Processar();

    /// Opens the catalogue of finished roteiros under the alias "RSTudo" on gBD2. Kept: nothing calls it.
    /// @param Classe  class code, or with "Manu" in Tipo a text whose part behind "=" is an exercise code
    /// @throws ErroBD when gBD2 has no connection
    void AbreRSTUDO(const QString &Classe, const QString &Tipo);

    void MontaPlanilha(); ///< sheet and marks of the open log rows; ends in MontaGraf unless a failure stops it
    void MontaGraf(); ///< draws the marks, shows the chart and forgets them
    QString CriaHtmlGrafico(); ///< writes the chart's page; @return its path
    QString CriaDesemp_html(); ///< writes the sheet's page; @return its path
    void OcultaControl(); ///< turns the window over between its normal form and the preview

protected:
    void load() override;
    void unload() override;
    void hideEvent(QHideEvent *event) override;

signals:
    void escondida();

private:
    void buildLayout();
    void buildBotoes();
    void buildPeriodo();
    void buildDisciplinas();
    void buildVistas();
    void connectEvents();

    void centraliza(); ///< on the screen
    void openName(); ///< puts the pupil's name into the caption
    EscolhaDisciplinas escolha() const;
    void listClick();
    void todasChange();
    void showChart(bool grafico);
    void setVista(QWidget &vista, bool visivel);
    void imprimeClick();
    void beginPreview();
    void endPreview();

    std::array<QLabel *, 2> mLblData{};
    MaskEdBox *mMskDataInicial = nullptr;
    MaskEdBox *mMskDataFinal = nullptr;
    QGroupBox *mFrmDesempenho = nullptr;
    ListaDisciplinas *mLstDisciplinas = nullptr;
    QCheckBox *mChkDisciplinas = nullptr;
    std::array<QPushButton *, 2> mCmdGrafPlan{}; ///< 0 chart, 1 sheet
    std::array<QLabel *, 2> mLblGrafPla{}; ///< 0 of the sheet's button, 1 of the chart's
    GrdRot *mGrdRot = nullptr;
    CrtGrafico *mCrtGrafico = nullptr;
    WebBrowser *mWWW = nullptr;
    QPushButton *mCmdImprime = nullptr;
    QPushButton *mCmdFecha = nullptr;

    bool mTodas = false; ///< all disciplines, else the selected one
    Resumo mResumo;
    QString mArqGrafico; ///< picture of the last chart page; empty before the first
    QString mArqHtml; ///< the last chart page; likewise
    bool mDescarregada = false;
};

} // namespace quorel
