#pragma once

#include "oficina/documento.h"
#include "oficina/leitura.h"

#include <QFileSystemWatcher>
#include <QTimer>
#include <QWidget>

class QLabel;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace quorel {

class EditorDeFonte;
class Previa;

/// The author's window: the source at the left, the lesson of the line where the cursor stands at the right, below what
/// there is to mend. It knows no shell and keeps nothing but what Salvar writes.
class JanelaOficina final : public QWidget
{
    Q_OBJECT
public:
    /// @param comMidia  figures and sounds are looked for through gConfig
    JanelaOficina(Documento documento, bool comMidia);

    /// @param roteiro  its number from 1, or its code; another one leaves the cursor at the beginning
    void mostraRoteiro(int roteiro);

protected:
    void closeEvent(QCloseEvent *event) override; ///< asks where something is not saved

private:
    void buildLayout();
    QWidget *buildButtons();
    QWidget *buildNotice();
    void connectEvents();
    void addKeys();

    void read(); ///< the text was changed: findings and lesson anew
    void showFindings();
    void showAula(); ///< of the cursor's line
    void showState();
    void goToAula(int step);
    void goToFinding(const QListWidgetItem &item);
    void nextFinding();
    void insertAula(Kind kind);
    void insertRoteiro();
    void chooseFigure();
    void bringPhoto(const QString &native);
    void fileChanged();
    void watch();
    bool save();
    bool isChanged() const;

    Documento mDocumento;
    bool mComMidia;
    LeituraDaFonte mLeitura;
    QTimer mPausa; ///< until the typing rests
    QTimer mCalma; ///< until another program's saving rests
    QFileSystemWatcher mVigia;
    QString mEstado; ///< what the last saving came to
    EditorDeFonte *mEditor = nullptr; // children, from buildLayout() on
    Previa *mPrevia = nullptr;
    QListWidget *mAchados = nullptr;
    QLabel *mRodape = nullptr;
    QWidget *mAviso = nullptr; ///< the file was changed by another program while ours is not saved
    QPushButton *mRecarrega = nullptr;
    QPushButton *mFica = nullptr;
    QPushButton *mSalva = nullptr;
};

} // namespace quorel
