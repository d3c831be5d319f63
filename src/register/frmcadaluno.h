#pragma once

#include "register/barra.h"
#include "register/quadro.h"

class QComboBox;
class QLineEdit;
class QPushButton;

namespace quorel {

/// The register of pupils: browses the membership rows of the current class, one pupil at a time. The current records
/// of RSCLxAL and rsAlunos are its state.
class FrmCadAluno final : public Quadro
{
    Q_OBJECT
public:
    explicit FrmCadAluno(QWidget *parent);

    void Atualiza_Aluno(); ///< shows the pupil of the current row; moves rsAlunos and rsClasses to what it shows
    void ligaClasses(); ///< offers the classes as they are now
    void abre(); ///< shows the frame
    void esvazia(); ///< as at first

signals:
    void pedeClasses(); ///< the frame of the classes is to open or close
    void alunoNovo(); ///< a new pupil has been begun

private:
    void buildLayout();
    void connectEvents();
    void inicio();
    void ultimo();
    void frente();
    void volta();
    void nova();
    void cancela();
    void grava();
    void gravaNome();
    void gravaClasse(const QString &aluno, bool novo); ///< membership of the pupil with that code
    bool findLigacao(const QString &aluno, bool novo); ///< makes the pupil's row current
    void juntaAClasse(double aluno);
    void tiraDaClasse();
    void gravaLigacao(); ///< class and date of the current membership row
    void apaga();

    QLineEdit *mTxtAluno = nullptr;
    QComboBox *mCmbAluClasses = nullptr;
    QPushButton *mCmdCadClasses = nullptr;
    Barra mBarra;
    QString mAluno; ///< AL_Cod of the pupil on display; empty when there is none, as for a new one
    QString mLigacao; ///< CLxAL_Id of the row on display; likewise
};

} // namespace quorel
