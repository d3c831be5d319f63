#include "shell/faux.h"

#include "catalogue/catalogo.h"
#include "catalogue/estado.h"
#include "catalogue/lista_selecionada.h"
#include "data/bd.h"
#include "lessons/gancho.h"
#include "lessons/mensagens.h"
#include "platform/codec.h"
#include "platform/erro.h"
#include "platform/protocolo.h"
#include "shell/cconecta.h"
#include "shell/comandos.h"
#include "shell/fblocos.h"
#include "shell/fprincip.h"
#include "shell/janelas.h"
#include "shell/opcao_mes.h"
#include "shell/rolagem.h"
#include "startup/estado.h"
#include "startup/sistema_util.h"
#include "startup/valor.h"

#include <QApplication>
#include <QCheckBox>
#include <QFrame>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScrollBar>
#include <QWheelEvent>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr double kSobreposicao = 10; // twips that the panel overlaps fPrincip

fAux::fAux(Janelas &outras)
    : JanelaBase(outras.ativa(), u"fAux"_s, kCliente), mJanelas(outras), mAnterior(kRolagemInicial)
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    buildLayout();
    connectEvents();
}

void fAux::connectEvents()
{
    connectMonth(0);
    connect(mScrVertical, &QScrollBar::valueChanged, this, &fAux::scrollChange);
    connect(mChkSelec, &QCheckBox::toggled, this, &fAux::selecChange);
    connect(mCmdAluno, &QPushButton::clicked, this, [this] {
        const auto &mostraAlunos = mJanelas.aberturas().mostraAlunos;
        if (!mostraAlunos)
            return; // the register brings the panel back; without it the panel stays
        mostraAlunos();
        hide();
    });
    connect(mCmdDesemp, &QPushButton::clicked, this, [this] {
        if (const auto &mostraDesempenho = mJanelas.aberturas().mostraDesempenho)
            mostraDesempenho();
    });
    connect(mLstAlunos, &QListView::clicked, this, &fAux::alunoClick);
    connect(mLstAlunos, &QListView::activated, this, &fAux::alunoClick);
    connect(mCmdInternet, &QPushButton::clicked, this, [this] { acessaPagina(mJanelas, gConecta.ConexaoAtiva()); });
}

void fAux::connectMonth(int indice)
{
    connect(&opcao(indice), &QRadioButton::clicked, this, [this, indice] { monthClick(indice); });
    connect(&opcao(indice), &OpcaoMes::focada, this, [this, indice] { CorrigeScroll(opcao(indice)); });
}

void fAux::load()
{
    mJanelas.principal().carrega();
    acompanhaPrincipal();
    setCliente({0, 0, cliente().Width, mJanelas.principal().cliente().Height});
    if (gEscolas) {
        mCmdAluno->show();
        mChkSelec->show();
    } else {
        mCmdDesemp->show();
        reportGeneric();
    }
    mFrmMeses->show();
    mFrmMeses->raise();
}

// A single user works as the generic pupil; the shell's own hook is told so, which opens the log.
void fAux::reportGeneric()
{
    gAluno = kGenerico;
    gClasse = kGenerico;
    const Janela gerenciador = gSistema.ProcuraJanela(QString::fromUtf16(kTituloGerenciador), kModoBusca, true);
    // The register's window is not loaded yet; the shell's address stands in for its handle.
    EnviaTexto(gerenciador, janelaBlocos(), MSG_ALUNO, QString::number(gAluno));
    EnviaTexto(gerenciador, janelaBlocos(), MSG_CLASSE, QString::number(gClasse));
}

// Nothing fills the list or brings it forward; the register's window is where pupils are chosen.
void fAux::alunoClick()
{
    const QString alias = u"RSAluno"_s;
    const QString nome = mLstAlunos->currentIndex().data().toString();
    gAluno = nome.isEmpty() ? 0 : inteiro32(valorNumerico(gBD->List_Cod(*mLstAlunos, alias).toString()));
    setWindowTitle(u"ALUNO: "_s + upper1252(nome));
    if (gClasse == 0) {
        QString criterio = u"AL_Cod = "_s + QString::number(gAluno);
        gClasse = inteiro32(valorNumerico(gBD->Pesquisa(criterio, alias, u"CL_Cod"_s)));
    }
    const Janela gerenciador = gSistema.ProcuraJanela(QString::fromUtf16(kTituloGerenciador), kModoBusca, true);
    const Janela remetente = handleOf(&mJanelas.principal());
    EnviaTexto(gerenciador, remetente, MSG_CLASSE, QString::number(gClasse));
    EnviaTexto(gerenciador, remetente, MSG_ALUNO, QString::number(gAluno));
    mFrmSelecAluno->hide();
    mFrmMeses->show();
}

void fAux::unload()
{
    mJanelas.principal().descarrega();
}

void fAux::mostra()
{
    carrega();
    if (!mJanelas.principal().foiMostrada()) {
        mPedida = true;
        return;
    }
    restaura();
    show();
    raise();
}

void fAux::mostraPedida()
{
    if (std::exchange(mPedida, false))
        mostra();
}

void fAux::acompanhaPrincipal()
{
    const Lugar principal = mJanelas.principal().lugarDaJanela();
    vaiPara(principal.Left + principal.Width - kSobreposicao, principal.Top);
}

void fAux::addMonth(int n, int left, int top)
{
    if (n != int(mOptMeses.size()))
        throw ErroExecucao(kFalhaControle);
    const Lugar &modelo = mOptMeses.front()->lugar();
    mOptMeses.push_back(new OpcaoMes(n, {double(left), double(top), modelo.Width, modelo.Height}, mFrmMeses));
    connectMonth(n);
    mOptMeses.back()->raise();
    mTxtSelecMes->raise();
    setTabOrder(mOptMeses[mOptMeses.size() - 2], mOptMeses.back());
    setTabOrder(mOptMeses.back(), mScrVertical);
    mOptMeses.back()->setChecked(QString::number(n) == selectedMonth());
}

void fAux::setCaption(int n, const QString &texto)
{
    opcao(n).setCaption(texto);
}

void fAux::showMonth(int n)
{
    opcao(n).show();
}

void fAux::setScrollMaximum(int twips)
{
    mScrVertical->setMaximum(inteiro16(twips));
    mScrVertical->show();
    mScrVertical->raise();
}

QString fAux::selectedMonth() const
{
    return mTag.isEmpty() ? u"1"_s : mTag;
}

void fAux::garanteMes()
{
    mTag = selectedMonth();
}

bool fAux::copiaFiguras() const
{
    return mChkFig->isChecked();
}

void fAux::desmarcaCopia()
{
    mChkFig->setChecked(false);
}

void fAux::desmarcaSelecao()
{
    mChkSelec->setChecked(false);
}

OpcaoMes &fAux::opcao(int indice) const
{
    if (indice < 0 || std::size_t(indice) >= mOptMeses.size())
        throw ErroExecucao(kFalhaControle);
    return *mOptMeses[std::size_t(indice)];
}

void fAux::monthClick(int indice)
{
    mTag = QString::number(indice);
    mJanelas.principal().acertaBotao();
    if (mJanelas.principal().isVisible())
        return;
    mJanelas.blocos().setVisivel(false);
    mJanelas.abreDisciplina();
}

void fAux::CorrigeScroll(const OpcaoMes &focada)
{
    if (!mScrVertical->isEnabled())
        return;
    const auto valor =
        corrigeRolagem(focada.lugar(), mAnterior, qint16(mScrVertical->minimum()), qint16(mScrVertical->maximum()));
    if (valor)
        mScrVertical->setValue(*valor);
}

void fAux::scrollChange(int value)
{
    for (OpcaoMes *opcao : mOptMeses)
        opcao->setTop(topoRolado(opcao->lugar().Top, mAnterior, value));
    mAnterior = value;
}

void fAux::selecChange()
{
    if (mChkSelec->isChecked())
        iniciaSelecao();
    else
        terminaSelecao();
}

void fAux::wheelEvent(QWheelEvent *event)
{
    if (mScrVertical->isVisible() && mFrmMeses->geometry().contains(event->position().toPoint()))
        QApplication::sendEvent(mScrVertical, event);
}

} // namespace quorel
