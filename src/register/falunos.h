#pragma once

#include "register/abertura.h"
#include "register/arredores.h"
#include "visual/janela_base.h"

#include <memory>
#include <vector>

class QLabel;
class QPushButton;

namespace quorel {

class FrmCadAluno;
class FrmClasses;
class FrmSel;
class Login;
class Quadro;

/// The window in which a teacher chooses who is working, and keeps the register of pupils, classes and teachers. It
/// takes the place of the panel while it is open; closing it forgets what its frames showed.
class fAlunos final : public JanelaBase
{
    Q_OBJECT
public:
    static constexpr Lugar kCliente{0, 0, 7260, 8160}; ///< client area; twips

    fAlunos(JanelaAtiva &ativa, Arredores arredores);
    ~fAlunos() override;

    /// A large button. Protected modes ask for the password first, which calls this again.
    /// @param Index  1 to 6; others do nothing
    void CmdAluno_Click(qint16 Index);

    void Atualiza_Aluno(); ///< shows the current pupil

    Login &login() { return *mLogin; }

protected:
    void load() override;
    void unload() override;

private:
    void buildLayout();
    void buildOpcoes();
    void connectEvents();
    void pedeSenha(qint16 indice);
    void selecao();
    void cadastro();
    bool opensLigacoes(); ///< see Abertura::abre
    void classWriteBegins();
    void classWriteEnds();
    void desempenho();
    void showWaitingRows(); ///< how many answers have not reached the register yet

    const Arredores mArredores;
    Abertura mAbertura;
    std::vector<QPushButton *> mCmdAluno; ///< from 0: button 1 first
    QPushButton *mCmdFecha = nullptr;
    QLabel *mLblEspera = nullptr;
    FrmSel *mFrmSel = nullptr;
    FrmCadAluno *mFrmCadAluno = nullptr;
    FrmClasses *mFrmClasses = nullptr;
    std::unique_ptr<Login> mLogin;
};

} // namespace quorel
