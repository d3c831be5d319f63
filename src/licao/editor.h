#pragma once

#include "licao/tela.h"

class QBoxLayout;
class QPushButton;

namespace quorel {

/// The drawing tool: the sheet with its pencils, colours and commands.
class Editor final : public QWidget
{
    Q_OBJECT
public:
    explicit Editor(QWidget *parent);

    /// Writes the sheet as a PNG picture. A failure is told in a box.
    /// @param native  path; ".png" is appended where it is missing
    bool salva(const QString &native);

    void folhaNova() { mTela->limpa(); } ///< for another drawing; the old one can be had back
    void foca() { mTela->setFocus(); }

private:
    QWidget *buildTools();
    QBoxLayout *buildActions();
    void askAndSave();

    Tela *mTela; // children
    QPushButton *mDesfaz = nullptr;
};

} // namespace quorel
