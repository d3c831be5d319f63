#pragma once

#include "licao/midia.h"
#include "linha/textolicao.h"

#include <QWidget>

#include <span>

class QBoxLayout;

namespace quorel {

/// Pieces of a lesson below one another, to read and listen to: heading, figure, text as it stands, sound button.
/// What is empty or not found leaves no gap.
class Pagina final : public QWidget
{
    Q_OBJECT
public:
    /// @param semTitulo  the first heading stands elsewhere
    /// @param estreita   there is no room for a figure beside its text
    Pagina(std::span<const PecaRec> pecas, const Midia &midia, bool semTitulo, bool estreita, QWidget *parent);

    bool vazia() const { return mVazia; } ///< nothing is shown
    void toca() const; ///< plays the first sound, if there is one

private:
    void addPiece(const PecaRec &peca, const Midia &midia, bool comTitulo, bool estreita);
    void addSound(const QString &path, QBoxLayout &column);

    QString mSom; // native path of the first sound
    bool mVazia = true;
};

} // namespace quorel
