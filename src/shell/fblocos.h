#pragma once

#include "catalogue/vistas.h"
#include "lessons/vista_blocos.h"
#include "visual/janela_base.h"

#include <QTimer>

#include <vector>

class QLabel;
class QPushButton;

namespace quorel {

class Janelas;
class Dica;
class Imagem;

/// The roteiros of one discipline in one month, as picture buttons. Takes the place of fPrincip; closing it hides it.
class fBlocos final : public JanelaBase, public VistaRoteiros, public VistaPalco, public VistaBlocos
{
    Q_OBJECT
public:
    static constexpr Lugar kCliente{0, 0, 7920, 8280}; ///< client area; twips

    explicit fBlocos(Janelas &janelas);

    void setTmrRot(bool enabled); ///< the timer of the tips; one that runs keeps its beat

    /// A picture button. @throws ErroExecucao 340 for an index other than 1 to 16
    Imagem &botao(int indice) const;

    qint16 figuraSobOMouse() const; ///< number of the picture under the mouse, or -1

    void hideAll() override;
    void loadPicture(int n, const QString &caminho) override;
    void setTag(int n, const QString &titulo) override;
    void showButton(int n) override;

    void hidePrincip() override;
    void showBlocos() override;
    void keepBlocosVisible() override;
    void setTitulo(const QString &texto) override;
    void setManualTag(const QString &tag) override;
    void hideOne(int n) override;

    void focusBlocos() override;
    void unloadBlocos() override;
    Janela handlePrincip() override;
    Janela handleActive() override;

protected:
    void load() override;
    void activate() override;
    void unload() override;
    void placeTold() override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    void buildLayout();
    void buildBotoes();
    void buildJogos();
    void connectEvents();
    void botaoClick(int indice);
    void copyMedia();
    void hideTip();
    void tickTmrRot();
    void showTip();

    Janelas &mJanelas;
    std::vector<Imagem *> mBotoes; ///< from 0: picture 1 first
    std::vector<QPushButton *> mJogos; ///< from 0
    QLabel *mLblTitulo = nullptr;
    QPushButton *mCmdManual = nullptr;
    QPushButton *mCmdVoltar = nullptr;
    Dica *mDica = nullptr;
    QTimer *mTmrRot;
};

} // namespace quorel
