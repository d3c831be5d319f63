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
    void gravaClasse();
    void tornaCorrente(); ///< the current record of rsClasses becomes the current class
    void excluir();

    FrmCadAluno &mAlunos;
    QLineEdit *mTxtNomeClasse = nullptr;
    QLineEdit *mTxtNomeProf = nullptr;
    QLineEdit *mTxtProfSenh = nullptr;
    Barra mBarra;
};

} // namespace quorel
