#include "register/falunos.h"

#include "data/bd.h"
#include "data/consultas.h"
#include "data/pendentes.h"
#include "platform/costuras.h"
#include "platform/erro.h"
#include "register/estado.h"
#include "register/frmcadaluno.h"
#include "register/frmclasses.h"
#include "register/frmsel.h"
#include "register/login.h"
#include "register/registros.h"
#include "startup/estado.h"

#include <QLabel>
#include <QPushButton>

namespace quorel {

using namespace Qt::StringLiterals;

/// Indexes of the large buttons.
enum Opcao : qint16 { kHistorico = 1, kSelecao = 2, kCadastro = 3, kDesempenho = 4, kCurso = 5, kBlocos = 6 };

fAlunos::fAlunos(JanelaAtiva &ativa, Arredores arredores)
    : JanelaBase(ativa, u"fAlunos"_s, kCliente), mArredores(std::move(arredores)),
      mLogin(std::make_unique<Login>(ativa, [this](qint16 indice) { CmdAluno_Click(indice); }))
{
    buildLayout();
    connectEvents();
}

fAlunos::~fAlunos() = default;

void fAlunos::connectEvents()
{
    for (qint16 i = 1; QPushButton * botao : mCmdAluno) {
        connect(botao, &QPushButton::clicked, this, [this, i] { CmdAluno_Click(i); });
        ++i;
    }
    connect(mCmdFecha, &QPushButton::clicked, this, &fAlunos::descarrega);
    connect(mFrmCadAluno, &FrmCadAluno::pedeClasses, mFrmClasses, &FrmClasses::abreOuFecha);
    connect(mFrmCadAluno, &FrmCadAluno::alunoNovo, mFrmSel, &FrmSel::limpaClasse);
    connect(mFrmClasses, &FrmClasses::aboutToWrite, this, &fAlunos::classWriteBegins);
    connect(mFrmClasses, &FrmClasses::written, this, &fAlunos::classWriteEnds);
}

void fAlunos::load()
{
    const Lugar painel = mArredores.lugarDoPainel();
    vaiPara(painel.Left, painel.Top);
    showWaitingRows();
}

void fAlunos::showWaitingRows()
{
    qint64 rows = 0;
    QStringList aside;
    ignora([&] {
        rows = gBD->waitingRows().count();
        aside = gBD->waitingRows().setAside();
    });
    QStringList lines;
    if (rows > 0)
        lines << (rows == 1 ? u"1 aula espera nesta máquina."_s : u"%1 aulas esperam nesta máquina."_s.arg(rows));
    if (!aside.isEmpty())
        lines << u"Um arquivo de aulas que esperavam estava danificado e foi posto de lado."_s;
    mLblEspera->setText(lines.join(u'\n'));
    mLblEspera->setToolTip(aside.join(u'\n'));
    mLblEspera->setVisible(!lines.isEmpty());
}

void fAlunos::unload()
{
    hide();
    mArredores.mostraPainel();
    mFrmSel->esvazia();
    mFrmCadAluno->esvazia();
    mFrmClasses->esvazia();
    setDescarregada();
}

void fAlunos::CmdAluno_Click(qint16 Index)
{
    carrega(); // the password may come after the window was closed
    const qint32 classes = gBD->NumeroTotalDeRegistros(u"rsClasses"_s);
    const bool protegida = Index == kCadastro || Index == kCurso || Index == kBlocos;
    if (classes >= 1 && protegida && !gSenhaOK)
        pedeSenha(Index);
    else if (Index == kSelecao)
        selecao();
    else if (Index == kCadastro)
        cadastro();
    else if (Index == kDesempenho)
        desempenho();
}

void fAlunos::pedeSenha(qint16 indice)
{
    if (gClasse == 0) {
        caixa({.texto = u"Escolha uma classe e clique novamente em \"Cadastrar Alunos\" "_s,
            .titulo = u"Histórico"_s,
            .icone = Icone::Informacao});
        return;
    }
    const QString nome; // Kept: the teacher's name never stands in the prompt
    mLogin->setPergunta(u"Professor(a) "_s + nome + u", digite sua senha."_s);
    mLogin->setTag(QString::number(indice));
    mLogin->centraEm(lugarDaJanela());
    mLogin->mostra();
}

void fAlunos::selecao()
{
    gSenhaOK = false;
    if (!mFrmSel->prepara())
        return; // another mode, chosen meanwhile
    mFrmCadAluno->hide();
    mFrmSel->show();
}

void fAlunos::cadastro()
{
    mFrmSel->hide();
    mFrmCadAluno->abre();
    if (!opensLigacoes())
        return;
    mFrmCadAluno->ligaClasses();
    if (gBD->NumeroTotalDeRegistros(u"rsClasses"_s) < 1) {
        mFrmClasses->abreOuFecha();
        return;
    }
    if (gAluno != kGenerico)
        procura(u"AL_Cod="_s + QString::number(gAluno), u"RSALUNOS"_s, 0);
    else
        gBD->MoveParaComecoDeArquivo(u"RSAlunos"_s);
    gBD->MoveParaComecoDeArquivo(u"RsClasses"_s);
    gBD->MoveParaComecoDeArquivo(u"RsCLxAL"_s);
    mFrmClasses->Atualiza_Classe();
    Atualiza_Aluno();
}

bool fAlunos::opensLigacoes()
{
    return mAbertura.abre([] {
        gBD->Records_Set(consultas::ligacoes(), u"RSCLxAL"_s); // the selection's rows have no class
        if (gClasse != 0 && gClasse != kGenerico)
            gBD->Filtro(u"CL_Cod = "_s + QString::number(gClasse), u"RSCLxAL"_s);
    });
}

// The classes' frame may lie over the selection, whose rows have no class.
void fAlunos::classWriteBegins()
{
    while (!mFrmSel->isHidden() && !opensLigacoes()) { }
}

void fAlunos::classWriteEnds()
{
    if (!mFrmSel->isHidden())
        mFrmSel->mostraClasse();
}

void fAlunos::desempenho()
{
    gSenhaOK = false;
    mArredores.mostraDesempenho();
}

void fAlunos::Atualiza_Aluno()
{
    mFrmCadAluno->Atualiza_Aluno();
}

} // namespace quorel
