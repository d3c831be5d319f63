#include "register/frmcadaluno.h"

#include "data/bd.h"
#include "data/campos.h"
#include "platform/costuras.h"
#include "register/registros.h"
#include "startup/valor.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace quorel {

using namespace Qt::StringLiterals;

static const QString kLigacoes = u"RSCLxAL"_s;

void FrmCadAluno::connectEvents()
{
    const auto clicked = [this](QPushButton *botao, void (FrmCadAluno::*evento)()) {
        connect(botao, &QPushButton::clicked, this, evento);
    };
    clicked(mBarra.primeiro, &FrmCadAluno::inicio);
    clicked(mBarra.anterior, &FrmCadAluno::volta);
    clicked(mBarra.proximo, &FrmCadAluno::frente);
    clicked(mBarra.ultimo, &FrmCadAluno::ultimo);
    clicked(mBarra.grava, &FrmCadAluno::grava);
    clicked(mBarra.novo, &FrmCadAluno::nova);
    clicked(mBarra.apaga, &FrmCadAluno::apaga);
    clicked(mBarra.cancela, &FrmCadAluno::cancela);
    clicked(mCmdCadClasses, &FrmCadAluno::pedeClasses);
}

// Kept: without a row to show, both searches have no value and leave the first pupil and the first class current.
// What is on display is remembered for the writes, which must not go there.
void FrmCadAluno::Atualiza_Aluno()
{
    mLigacao = variantText(gBD->Campo(u"CLxAL_Id"_s, kLigacoes));
    const QString aluno = variantText(gBD->Campo(u"AL_Cod"_s, kLigacoes));
    const QString nome = procura(u"AL_Cod= "_s + aluno, u"RsAlunos"_s, u"AL_Nome"_s);
    mAluno = gBD->FimDeArquivo(u"RsAlunos"_s) ? QString() : aluno;
    const QString classe = variantText(gBD->Campo(u"CL_Cod"_s, kLigacoes));
    escolhe(*mCmbAluClasses, procura(u"CL_Cod= "_s + classe, u"rsClasses"_s, u"CL_Nome"_s));
    showText(*mTxtAluno, nome);
    mBarra.posicao->setText(textoPosicao(kLigacoes));
    mBarra.setAdicionando(isAdding(u"rsAlunos"_s));
}

void FrmCadAluno::abre()
{
    mBarra.setAdicionando(isAdding(u"rsAlunos"_s));
    show();
}

void FrmCadAluno::ligaClasses()
{
    quorel::ligaClasses(*mCmbAluClasses, u"rsClasses"_s);
}

void FrmCadAluno::esvazia()
{
    gBD->Combo_Zera(*mCmbAluClasses);
    mTxtAluno->clear();
    mBarra.posicao->clear();
    mAluno.clear();
    mLigacao.clear();
    hide();
}

// Kept: browsing while a new pupil is pending shows others, and the pupil stays pending; a save then writes the name
// on display into the new record.
void FrmCadAluno::inicio()
{
    gBD->MoveParaComecoDeArquivo(kLigacoes);
    Atualiza_Aluno();
}

void FrmCadAluno::ultimo()
{
    gBD->MoveParaFimDeArquivo(kLigacoes);
    Atualiza_Aluno();
}

void FrmCadAluno::frente()
{
    avanca(kLigacoes);
    Atualiza_Aluno();
}

void FrmCadAluno::volta()
{
    recua(kLigacoes);
    Atualiza_Aluno();
}

void FrmCadAluno::nova()
{
    gBD->RegistroAdiciona(u"rsAlunos"_s);
    mTxtAluno->setFocus();
    mBarra.setAdicionando(true);
    mAluno.clear();
    mLigacao.clear();
    mTxtAluno->clear();
    emit alunoNovo(); // this frame's own class box keeps the class last shown: the new pupil goes there
    mBarra.posicao->setText(u"Novo"_s);
    mTxtAluno->setFocus();
}

void FrmCadAluno::cancela()
{
    mTxtAluno->setFocus(); // the button that has it goes
    gBD->CancelaAdicao(u"RsAlunos"_s);
    Atualiza_Aluno();
}

void FrmCadAluno::grava()
{
    if (mTxtAluno->text().isEmpty()) {
        caixa({.texto = u"Digite o nome do aluno"_s});
        return;
    }
    mBarra.setAdicionando(false);
    // A pupil who was begun comes first, then the one on display; with nobody there a new one is meant.
    if (!isAdding(u"rsAlunos"_s) && !goTo(u"AL_Cod"_s, mAluno, u"rsAlunos"_s) && mAluno.isEmpty())
        gBD->RegistroAdiciona(u"rsAlunos"_s);
    const bool novo = isAdding(u"rsAlunos"_s);
    gravaNome();
    // Kept: a pupil is found by name, so of two of one name the first gets the membership.
    const QString aluno = procura(u"AL_Nome='"_s + mTxtAluno->text() + u'\'', u"rsAlunos"_s, u"AL_Cod"_s);
    if (!aluno.isEmpty()) // the name may not have been written
        gravaClasse(aluno, novo);
    Atualiza_Aluno();
}

void FrmCadAluno::gravaClasse(const QString &aluno, bool novo)
{
    const bool naClasse = findLigacao(aluno, novo);
    const bool comClasse = !mCmbAluClasses->currentText().isEmpty();
    if (naClasse && comClasse)
        gravaLigacao();
    else if (naClasse)
        tiraDaClasse();
    else if (comClasse)
        juntaAClasse(valorNumerico(aluno));
}

// Kept: only the rows that the filter lets through are looked at; a pupil of another class gets a second row.
bool FrmCadAluno::findLigacao(const QString &aluno, bool novo)
{
    const bool onDisplay = !novo && aluno == mAluno;
    if (onDisplay && goTo(u"CLxAL_Id"_s, mLigacao, kLigacoes)) // of a pupil's rows the one that shows
        return true;
    return !procura(u"AL_Cod= "_s + aluno, kLigacoes, 0).isEmpty();
}

void FrmCadAluno::gravaNome()
{
    if (mTxtAluno->text().contains(u'\'')) // the name is put between apostrophes in criteria
        mTxtAluno->setText(QString(mTxtAluno->text()).remove(u'\''));
    gBD->RegistroTroca(u"AL_Nome"_s, mTxtAluno->text(), u"RSALunos"_s, kTrocaTexto);
    gBD->RegistroAtualiza(u"rsAlunos"_s);
    gBD->ReAtualizaRecordSet(u"rsAlunos"_s);
}

void FrmCadAluno::juntaAClasse(double aluno)
{
    gBD->RegistroAdiciona(kLigacoes);
    gBD->RegistroTroca(u"AL_Cod"_s, aluno, kLigacoes, kTrocaNumero);
    gBD->RegistroTroca(u"CL_Cod"_s, 0, kLigacoes, kTrocaNumero);
    gravaLigacao();
}

// Kept: the date of entry is renewed at every save, also when the class stays.
void FrmCadAluno::gravaLigacao()
{
    const QVariant classe = gBD->Combo_Cod(*mCmbAluClasses, u"rsClasses"_s);
    gBD->RegistroTroca(u"CL_Cod"_s, classe, kLigacoes, kTrocaNumero);
    gBD->RegistroTroca(u"CLxAL_DataIngr"_s, agora(), kLigacoes, kTrocaTexto);
    gBD->RegistroAtualiza(kLigacoes);
    gBD->ReAtualizaRecordSet(kLigacoes);
}

void FrmCadAluno::tiraDaClasse()
{
    gBD->RegistroApaga(kLigacoes, kAfetaAtual, false);
    gBD->ReAtualizaRecordSet(kLigacoes);
}

// Kept: the pupil's record goes by name, the first of that name, and outside the transaction; log rows and links in
// other classes stay.
void FrmCadAluno::apaga()
{
    if (caixa({.texto = u"Deseja Apagar o Aluno ? "_s, .botoes = Botoes::SimNao}) == Resposta::Nao)
        return;
    gBD->TransacaoInicio();
    const bool onDisplay = goTo(u"CLxAL_Id"_s, mLigacao, kLigacoes); // else the deletion tells that there is no row
    gBD->RegistroApaga(kLigacoes, kAfetaAtual, false);
    gBD->ReAtualizaRecordSet(kLigacoes);
    gBD->TransacaoFim();
    if (onDisplay && !procura(u"AL_Nome= '"_s + mTxtAluno->text() + u'\'', u"RSAlunos"_s, 0).isEmpty())
        gBD->RegistroApaga(u"RsAlunos"_s, kAfetaAtual, false);
    gBD->ReAtualizaRecordSet(u"RsAlunos"_s);
    Atualiza_Aluno();
}

} // namespace quorel
