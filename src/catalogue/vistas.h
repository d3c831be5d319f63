#pragma once

#include <QString>

namespace quorel {

/// Number of picture buttons ImgBotao, and of small buttons CmdJogos, in fBlocos; both 1-based.
inline constexpr int kNumBotoes = 16;
inline constexpr int kNumJogos = 48;

/// What the reading of a block file needs of fBlocos. Button numbers are 1-based; one that does not exist (a 17th
/// Roteiro) is failure 340.
struct VistaRoteiros
{
    virtual ~VistaRoteiros() = default;
    /// Hides CmdJogos 1 to 48 and ImgBotao 1 to 16, before anything is read.
    virtual void hideAll() = 0;
    /// Puts a picture into ImgBotao(n). @param caminho  with backslashes; empty clears the picture
    /// @throws ErroExecucao 340 no such button, 481 the file is no picture
    virtual void loadPicture(int n, const QString &caminho) = 0;
    /// The text of the tip. @throws ErroExecucao 340
    virtual void setTag(int n, const QString &titulo) = 0;
    virtual void showButton(int n) = 0; ///< @throws ErroExecucao 340
};

/// What the opening of a discipline needs of the two windows that take turns.
struct VistaPalco
{
    virtual ~VistaPalco() = default;
    virtual void hidePrincip() = 0; ///< hides fPrincip
    virtual void showBlocos() = 0; ///< shows and activates fBlocos; its Activate handler runs before this returns
    virtual void keepBlocosVisible() = 0; ///< shows fBlocos where a turn of events has hidden it; else does nothing
    virtual void setTitulo(const QString &texto) = 0; ///< LblTitulo of fBlocos
    virtual void setManualTag(const QString &tag) = 0; ///< CmdManual of fBlocos
    /// Hides CmdJogos(n) and, where there is one of that number, ImgBotao(n). @param n  1 to 48
    virtual void hideOne(int n) = 0;
};

/// What the catalogue needs of the month options in fAux. Positions are in twips inside FrmMeses. It is used before any
/// window is loaded and must load none.
struct VistaMeses
{
    virtual ~VistaMeses() = default;
    /// Makes OptMeses(n), in front of the others, the heading txtSelecMes in front of it; hidden until showMonth().
    virtual void addMonth(int n, int left, int top) = 0;
    /// The caption of OptMeses(n), as plain text. @param n  0 is the template, for a month group of number 00
    virtual void setCaption(int n, const QString &texto) = 0;
    virtual void showMonth(int n) = 0; ///< makes OptMeses(n) visible; 0 as above
    virtual void setScrollMaximum(int twips) = 0; ///< the maximum of scrVertical, which becomes visible
    virtual QString selectedMonth() const = 0; ///< the tag of FrmMeses: decimal text, "1" unless another was chosen
};

/// The three views; none is owned, each outlives its use.
struct Vistas
{
    VistaRoteiros *roteiros = nullptr;
    VistaPalco *palco = nullptr;
    VistaMeses *meses = nullptr;
};

/// Hands in the windows' sides, once, before MontaCatalogo(); tests hand in recording ones. What needs a view that is
/// not there is failure 91.
void usaVistas(const Vistas &vistas);

} // namespace quorel
