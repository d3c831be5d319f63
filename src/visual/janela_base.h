#pragma once

#include "visual/fundo.h"
#include "visual/lugar.h"

#include <QWidget>

namespace quorel {

class JanelaAtiva;

/// What the windows have in common: a client area of fixed size, a Load that runs once at first use, an
/// Activate, and an unload in the place of Qt's closing.
class JanelaBase : public QWidget
{
    Q_OBJECT
public:
    /// Runs the Load handler the first time; what every use of a window by another begins with.
    void carrega();

    /// Loads, shows, raises and activates the window and runs its Activate handler before it returns. Does nothing
    /// while the window is loading: who began that shows it.
    virtual void mostra();

    /// Visible or not. Making a visible one visible does nothing.
    void setVisivel(bool visivel);

    /// Runs the Unload handler, as the system box does.
    void descarrega();

    /// The window on the screen, frame included where it is known, in twips; the place asked for until the desktop has
    /// told of the true one.
    Lugar lugarDaJanela() const;

    const Lugar &cliente() const { return mCliente; } ///< client area; Left and Top are 0; twips

    /// Height in twips of a line of text in the window's font.
    double alturaDaLinha() const;

protected:
    /// @param ativa  shared by all windows of the program; outlives this one
    JanelaBase(JanelaAtiva &ativa, const QString &nome, const Lugar &cliente);

    virtual void load() = 0;
    virtual void activate() { }
    virtual void unload() = 0;
    virtual void placeTold() { } ///< until the window stands, framed, where it was asked to: the desktop told of more

    void restaura(); ///< to be shown is to be seen: a minimised window comes back
    void vaiPara(double left, double top); ///< moves the window, frame included; twips
    void setDescarregada() { mLoaded = false; } ///< unloaded: the next use runs the Load handler anew
    void setCliente(const Lugar &cliente);
    /// The picture behind the controls; read when the window is first painted. @param nome  see figura()
    void setFundo(const QString &nome) { mFundo = Fundo(nome); }
    bool isBare(const QPoint &pos) const; ///< whether no control of the window lies there

    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QPoint corner() const; ///< the frame's corner, as far as it is known
    void settle(bool moved);

    JanelaAtiva &mAtiva;
    Lugar mCliente;
    Fundo mFundo;
    bool mLoaded = false;
    bool mLoading = false;
    QMargins mFrame; ///< frame, as far as it is known
    QPoint mAsked; ///< place asked for, the frame's corner
    bool mMoved = false; ///< the desktop has told of a place
    bool mSettled = false; ///< the window stands where it was asked to
};

} // namespace quorel
