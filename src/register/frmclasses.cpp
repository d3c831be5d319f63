#include "register/frmclasses.h"

#include "data/bd.h"
#include "data/campos.h"
#include "platform/costuras.h"
#include "register/frmcadaluno.h"
#include "register/registros.h"
#include "startup/estado.h"
#include "startup/valor.h"

#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>

namespace quorel {

using namespace Qt::StringLiterals;

static const QString kClasses = u"RsClasses"_s;

void FrmClasses::connectEvents()
{
    const auto clicked = [this](QPushButton *botao, void (FrmClasses::*evento)()) {
        connect(botao, &QPushButton::clicked, this, evento);
    };
    clicked(mBarra.primeiro, &FrmClasses::prim);
    clicked(mBarra.anterior, &FrmClasses::ant);
    clicked(mBarra.proximo, &FrmClasses::prox);
    clicked(mBarra.ultimo, &FrmClasses::ult);
    clicked(mBarra.grava, &FrmClasses::salvar);
    clicked(mBarra.novo, &FrmClasses::novo);
    clicked(mBarra.apaga, &FrmClasses::excluir);
    clicked(mBarra.cancela, &FrmClasses::cancela);
}

void FrmClasses::Atualiza_Classe()
{
    showText(*mTxtNomeClasse, variantText(gBD->Campo(u"CL_Nome"_s, kClasses)));
    showText(*mTxtNomeProf, variantText(gBD->Campo(u"CL_Prof"_s, kClasses)));
    showText(*mTxtProfSenh, variantText(gBD->Campo(u"CL_Senha"_s, kClasses)));
    mBarra.posicao->setText(textoPosicao());
    mMostrada = variantText(gBD->Campo(u"CL_Cod"_s, kClasses));
    mBarra.setAdicionando(isAdding(kClasses));
}

void FrmClasses::abreOuFecha()
{
    gBD->MoveParaComecoDeArquivo(u"rsClasses"_s);
    Atualiza_Classe();
    setVisible(isHidden());
    raise();
}

void FrmClasses::esvazia()
{
    for (QLineEdit *campo : {mTxtNomeClasse, mTxtNomeProf, mTxtProfSenh, mBarra.posicao})
        campo->clear();
    mMostrada.clear();
    hide();
}

void FrmClasses::prim()
{
    gBD->MoveParaComecoDeArquivo(kClasses);
    Atualiza_Classe();
}

void FrmClasses::ult()
{
    gBD->MoveParaFimDeArquivo(kClasses);
    Atualiza_Classe();
}

void FrmClasses::prox()
{
    avanca(kClasses);
    Atualiza_Classe();
}

void FrmClasses::ant()
{
    recua(kClasses);
    Atualiza_Classe();
}

void FrmClasses::novo()
{
    gBD->RegistroAdiciona(kClasses);
    mMostrada.clear();
    mTxtNomeClasse->clear();
    mTxtNomeClasse->setFocus();
    mTxtNomeProf->clear();
    mTxtProfSenh->clear();
    mBarra.posicao->setText(u"Novo"_s);
    mBarra.setAdicionando(true);
}

void FrmClasses::cancela()
{
    mTxtNomeClasse->setFocus(); // the button that has it goes
    gBD->CancelaAdicao(kClasses);
    Atualiza_Classe();
}

void FrmClasses::salvar()
{
    if (mTxtNomeClasse->text().isEmpty()) {
        caixa({.texto = u"Digite o nome da classe!"_s, .titulo = u"Cadastro de Classes"_s, .icone = Icone::Informacao});
        return;
    }
    emit aboutToWrite();
    mBarra.setAdicionando(false);
    const QString gravada = gravaClasse();
    mAlunos.ligaClasses();
    // Kept: the class just saved is found by its teacher, so a teacher of two classes lands on the first; a name with
    // an apostrophe is no criterion, which the search reports.
    const bool found = !procura(u"CL_Prof='"_s + mTxtNomeProf->text() + u'\'', kClasses, 0).isEmpty();
    if (!found && !goTo(u"CL_Cod"_s, gravada, kClasses))
        goTo(u"CL_Cod"_s, QString::number(gClasse), kClasses); // nothing could be saved
    mAlunos.ligaClasses();
    Atualiza_Classe();
    tornaCorrente();
    emit written();
}

QString FrmClasses::gravaClasse()
{
    if (!isAdding(kClasses) && !goTo(u"CL_Cod"_s, mMostrada, kClasses) && mMostrada.isEmpty())
        gBD->RegistroAdiciona(kClasses);
    const bool nova = isAdding(kClasses);
    const qint32 total = gBD->NumeroTotalDeRegistros(kClasses);
    gBD->TransacaoInicio();
    gBD->RegistroTroca(u"CL_Prof"_s, mTxtNomeProf->text(), kClasses, kTrocaTexto);
    gBD->RegistroTroca(u"CL_Nome"_s, mTxtNomeClasse->text(), kClasses, kTrocaTexto);
    gBD->RegistroTroca(u"CL_Senha"_s, mTxtProfSenh->text(), kClasses, kTrocaTexto);
    gBD->RegistroAtualiza(kClasses);
    QString gravada = mMostrada;
    if (nova) {
        gBD->MoveParaFimDeArquivo(kClasses); // where a class just added stands; one that failed counts no more
        const bool added = gBD->NumeroTotalDeRegistros(kClasses) == total;
        gravada = added ? variantText(gBD->Campo(u"CL_Cod"_s, kClasses)) : QString();
    }
    gBD->TransacaoFim();
    gBD->ReAtualizaRecordSet(kClasses);
    return gravada;
}

void FrmClasses::tornaCorrente()
{
    const QString ligacoes = u"RSCLxAL"_s;
    gBD->Filtro(QString(), ligacoes);
    gClasse = codigo(gBD->Campo(u"CL_COD"_s, kClasses));
    gBD->Filtro(u"CL_Cod = "_s + QString::number(gClasse), ligacoes);
    mAlunos.Atualiza_Aluno(); // Kept: for a class without pupils this leaves the first class current
}

// Kept: what goes is the first class of the teacher on display. With no class on display there is nobody to find, and
// the deletion tells so; a name that no search takes means the class on display.
QString FrmClasses::findDoomed(QString &professor)
{
    if (mMostrada.isEmpty()) {
        goTo(u"CL_Cod"_s, {}, kClasses);
        return {};
    }
    const QString classe = procura(u"CL_Prof= '"_s + professor + u'\'', kClasses, 0);
    const bool refused = classe.isEmpty() && !gBD->FimDeArquivo(kClasses);
    if (!refused || !goTo(u"CL_Cod"_s, mMostrada, kClasses))
        return classe;
    professor = variantText(gBD->Campo(u"CL_Prof"_s, kClasses));
    return mMostrada;
}

// Kept: only pupils that the filter lets through hold the class.
void FrmClasses::excluir()
{
    emit aboutToWrite();
    const auto done = qScopeGuard([this] { emit written(); });
    QString professor = mTxtNomeProf->text();
    const qint32 numero = parteInteira(valorNumerico(findDoomed(professor)));
    if (!procura(u"CL_Cod= "_s + QString::number(numero), u"RSCLXAL"_s, 0).isEmpty()) {
        caixa({.texto = u"Exclua primeiro os alunos relacionados a esse professor."_s, .icone = Icone::Informacao});
        return;
    }
    const Caixa pergunta{
        .texto = u"Deseja Apagar o Professor(a) "_s + professor + u" ?"_s, .botoes = Botoes::OkCancela};
    if (caixa(pergunta) != Resposta::Ok)
        return;
    gBD->RegistroApaga(kClasses, kAfetaAtual, false);
    gBD->ReAtualizaRecordSet(kClasses);
    Atualiza_Classe();
}

} // namespace quorel
