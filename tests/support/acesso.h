#pragma once

#include <QList>
#include <QStringList>
#include <QWidget>

namespace quorel::teste {

// What every window owes to those who use the keyboard, hear it, or have it enlarged.

/// The controls that have a name; parts of Qt's own are left out.
QList<QWidget *> controles(const QWidget &janela);

/// Fails the test at a control that a screen reader has no name for, or when there is no control.
void todosTemNome(const QWidget &janela);

/// Brings a window to the front and goes round by the Tab key, and by the arrows inside a group of option buttons.
/// @return the names met, in order, each once
QStringList voltaDoTab(QWidget &janela);

/// Fails the test at a label, button or box whose text is larger than its place. @param margem  of buttons, pixels
void textosCabem(const QWidget &janela, int margem = 0);

/// Fails the test unless a text of one line fits into a control, so many pixels of its width left out.
void cabe(const QWidget &controle, const QString &texto, int margem);

} // namespace quorel::teste
