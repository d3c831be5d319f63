#pragma once

#include "visual/janela_base.h"

#include <QTimer>

#include <vector>

class QPushButton;

namespace quorel {

class Janelas;
class Dica;
class Imagem;

/// The first window: a picture block for each discipline that has roteiros in the selected month.
class fPrincip final : public JanelaBase
{
    Q_OBJECT
public:
    static constexpr Lugar kCliente{0, 0, 7920, 8265}; ///< client area; twips

    explicit fPrincip(Janelas &janelas);

    void mostra() override; ///< the panel, if it was shown before, appears right after this window

    bool foiMostrada() const { return mShown; } ///< at any time before

    /// Refreshes which blocks are visible for the selected month. Never fails.
    void acertaBotao();

    /// A block. @throws ErroExecucao 340 for an index other than 1 to 12
    Imagem &bloco(int indice) const;

    qint16 figuraSobOMouse() const; ///< index of the block under the mouse, or -1

protected:
    void load() override;
    void activate() override;
    void unload() override;
    void placeTold() override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    void buildLayout();
    void buildBlocos();
    void buildBotoes();
    void connectEvents();
    void blocoClick(int indice);
    void hideTip();
    void tickTmrDisc();
    void showTip();

    Janelas &mJanelas;
    std::vector<Imagem *> mBlocos; ///< from 0: block 1 first
    QPushButton *mCmdDesenho = nullptr;
    QPushButton *mCmdHelp = nullptr;
    QPushButton *mCmdArquivos = nullptr;
    QPushButton *mCommand1 = nullptr;
    Dica *mDica = nullptr;
    QTimer mTmrDisc;
    bool mShown = false;
};

} // namespace quorel
