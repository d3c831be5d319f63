#pragma once

#include "register/barra.h"
#include "register/quadro.h"

class QLineEdit;

namespace quorel {

class FrmCadAluno;

/// The register of classes, each with its teacher and the teacher's password, which is shown in clear.
class FrmClasses final : public Quadro
{
    Q_OBJECT
public:
    /// @param alunos  the pupils' frame, which shows the class that is saved; outlives this one
    FrmClasses(FrmCadAluno &alunos, QWidget *parent);

    void Atualiza_Classe(); ///< shows the current record of rsClasses
    void abreOuFecha(); ///< at the first class
    void esvazia(); ///< as at first

signals:
    void aboutToWrite(); ///< RSCLxAL is to have all its columns, filtered to the current class
    void written(); ///< the current class, or the list of them, may be another

private:
    void buildLayout();
    void connectEvents();
    void prim();
    void ult();
    void prox();
    void ant();
    void novo();
    void cancela();
    void salvar();
    /// Into the class that was begun, else the one on display, else a new one. @return its code; empty when a new one
    /// could not be saved
    QString gravaClasse();
    void tornaCorrente(); ///< the current record of rsClasses becomes the current class
    void excluir();
    QString findDoomed(QString &professor); ///< makes the class to be deleted current @return its code

    FrmCadAluno &mAlunos;
    QLineEdit *mTxtNomeClasse = nullptr;
    QLineEdit *mTxtNomeProf = nullptr;
    QLineEdit *mTxtProfSenh = nullptr;
    Barra mBarra;
    QString mMostrada; ///< CL_Cod of the class on display; empty when there is none, as for a new one
};

} // namespace quorel
