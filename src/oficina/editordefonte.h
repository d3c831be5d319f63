#pragma once

#include "autoria/model.h"

#include <QPlainTextEdit>

namespace quorel {

/// The source, in a fixed-width type, with its findings' lines coloured. What is inserted goes where it makes sense, as
/// one step that can be undone.
class EditorDeFonte final : public QPlainTextEdit
{
    Q_OBJECT
public:
    explicit EditorDeFonte(QWidget *parent);

    int linha() const; ///< of the cursor, from 1
    void vaiPara(const Place &lugar); ///< beyond the end it is the last line

    /// Puts the lines of a new Aula behind the one in which the cursor stands, and the cursor on its first line.
    void insereAula(const QString &linhas);
    /// Names a figure: behind "@" on an option's line, else as the "fig" line of the page where the cursor stands.
    void insereFigura(const QString &nome);
    /// Another text in the place of the whole, the cursor on the same line.
    void troca(const QString &texto);

    void mostraAchados(const Findings &achados);

signals:
    void fotoSolta(const QString &native); ///< a picture file was dropped here

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
};

} // namespace quorel
