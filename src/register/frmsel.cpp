#include "register/frmsel.h"

#include "data/bd.h"
#include "data/consultas.h"
#include "lessons/log_aulas.h"
#include "lessons/mensagens.h"
#include "platform/janela.h"
#include "platform/protocolo.h"
#include "register/estado.h"
#include "register/registros.h"
#include "startup/estado.h"
#include "startup/sistema_util.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalBlocker>

namespace quorel {

using namespace Qt::StringLiterals;

void FrmSel::connectEvents()
{
    connect(mCmbClasse, &QComboBox::editTextChanged, this, &FrmSel::classeChange);
    mCmbClasse->installEventFilter(this);
    mCmbClasse->lineEdit()->installEventFilter(this);
    connect(mCmdSelecionar, &QPushButton::clicked, this, &FrmSel::seleciona);
    watchAluno();
}

bool FrmSel::prepara()
{
    const QString aluno = procura(u"AL_Cod="_s + QString::number(gAluno), u"RsAlunos"_s, u"AL_Nome"_s);
    mCmbAluno->setEditText(aluno); // Kept: the change of the class below empties it again
    mCmbClasse->setEnabled(true);
    return mostraClasse();
}

bool FrmSel::mostraClasse()
{
    {
        const QSignalBlocker quiet(mCmbClasse);
        ligaClasses(*mCmbClasse, u"RsClasses"_s);
        escolhe(*mCmbClasse, procura(u"CL_Cod="_s + QString::number(gClasse), u"RsClasses"_s, u"CL_Nome"_s));
    }
    return classeChange(); // also for the same text as before: the pupils' rows may be another frame's by now
}

void FrmSel::limpaClasse()
{
    const QSignalBlocker quiet(mCmbClasse); // the rows that the register works on stay
    mCmbClasse->clearEditText();
}

void FrmSel::esvazia()
{
    {
        const QSignalBlocker quiet(mCmbClasse);
        gBD->Combo_Zera(*mCmbClasse);
    }
    gBD->Combo_Zera(*mCmbAluno);
    mCmbAluno->setEnabled(true);
    hide();
}

void FrmSel::holdPainting(bool hold)
{
    mCmbClasse->setUpdatesEnabled(!hold);
    mCmbAluno->setUpdatesEnabled(!hold);
}

// Kept: merely choosing a class, or typing in its box, makes it the current one.
bool FrmSel::classeChange()
{
    holdPainting(true); // reading the rows lets events through: the boxes are painted once, with the list that is read
    const auto paint = qScopeGuard([this] { holdPainting(false); });
    mCmbAluno->clearEditText();
    gBD->Combo_Zera(*mCmbAluno);
    gClasse = codigo(gBD->Combo_Cod(*mCmbClasse, u"RSClasses"_s));
    if (!mAbertura.abre(
            [] { gBD->Records_Set(consultas::alunosDaClasse(gClasse), u"RSCLxAL"_s, QString(), kCursorKeyset); }))
        return false;
    QString campo = u"AL_Nome"_s;
    gBD->Combo_Set(*mCmbAluno, u"RSCLxAL"_s, campo);
    const qint32 alunos = gBD->NumeroTotalDeRegistros();
    mCmbAluno->setEnabled(alunos >= 1);
    return true;
}

void FrmSel::classeClick()
{
    if (mCmbClasse->currentText().isEmpty())
        return;
    mCmbAluno->setEnabled(true);
    mCmbAluno->clearEditText();
}

void FrmSel::seleciona()
{
    if (!settleAluno())
        return;
    // Kept: a text that names no class gives the one that is current in the register.
    gClasse = codigo(gBD->Combo_Cod(*mCmbClasse, u"RsClasses"_s));
    if (!mCmbClasse->currentText().isEmpty() && gClasse >= 1) {
        chooseAluno();
        AbreLog();
    } else {
        gAluno = kGenerico;
        gClasse = kGenerico;
    }
    gSenhaOK = false;
    report();
}

void FrmSel::chooseAluno()
{
    const QString nome = mCmbAluno->currentText();
    if (nome.isEmpty()) {
        gAluno = kGenerico; // Kept: the caption goes on naming the pupil before
        return;
    }
    gAluno = codigo(gBD->Combo_Cod(*mCmbAluno, u"RSCLxAL"_s));
    mArredores.setTituloPrincipal(u"Série: "_s + gNomeNivel + u" | "_s + nome);
}

// The shell's own hook hears of both; the pupil's message opens the log once more.
void FrmSel::report()
{
    const Janela remetente = handleOf(window());
    const QString titulo = QString::fromUtf16(kTituloGerenciador);
    EnviaTexto(gSistema.ProcuraJanela(titulo, kModoBusca, true), remetente, MSG_ALUNO, QString::number(gAluno));
    EnviaTexto(gSistema.ProcuraJanela(titulo, kModoBusca, true), remetente, MSG_CLASSE, QString::number(gClasse));
}

} // namespace quorel
