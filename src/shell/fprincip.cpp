#include "shell/fprincip.h"

#include "catalogue/catalogo.h"
#include "catalogue/estado.h"
#include "platform/erro.h"
#include "shell/blocos_do_mes.h"
#include "shell/comandos.h"
#include "shell/dica.h"
#include "shell/estado.h"
#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/geometria_dica.h"
#include "shell/imagem.h"
#include "shell/janelas.h"
#include "shell/tique.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "startup/texto_util.h"
#include "startup/valor.h"
#include "visual/aparencia.h"

#include <QMouseEvent>
#include <QPushButton>

#include <chrono>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr std::chrono::milliseconds kIntervalo{900};
static constexpr quint8 kRaioDica = 50; // pixels

fPrincip::fPrincip(Janelas &outras) : JanelaBase(outras.ativa(), u"fPrincip"_s, kCliente), mJanelas(outras)
{
    buildLayout();
    connectEvents();
}

void fPrincip::connectEvents()
{
    for (int i = 1; i <= kNumBlocos; ++i) {
        connect(&bloco(i), &Imagem::clicked, this, [this, i] { blocoClick(i); });
        connect(&bloco(i), &Imagem::apontada, this, [i] { gImgApontada = qint16(i); });
        connect(&bloco(i), &Imagem::deixada, this, &fPrincip::hideTip);
    }
    connect(mCmdHelp, &QPushButton::clicked, this, &abreAjuda);
    connect(mCmdDesenho, &QPushButton::clicked, this, &abreDesenho);
    connect(mCmdArquivos, &QPushButton::clicked, this, &abreMaterialDidatico);
    connect(mCommand1, &QPushButton::clicked, this, [this] { chamaQuorel(mJanelas); });
    // Kept: over the tip only the tip goes; the picture stays pointed at, and the next tick shows it again.
    connect(mDica, &Dica::tocada, mDica, &QWidget::hide);
    mTmrDisc.setInterval(kIntervalo);
    connect(&mTmrDisc, &QTimer::timeout, this, &fPrincip::tickTmrDisc);
}

void fPrincip::load()
{
    vaiPara(0, 0);
    mJanelas.painel().garanteMes();
    const QString dir = gConfig.Config(u"DIRQUOREL"_s);
    if (!dir.isEmpty() && gTexto.ArquivoExiste(dir + u"\\exe\\Desenhos.exe"_s))
        mCmdDesenho->show();
    setWindowTitle(u"Série: "_s + gNomeNivel);
}

void fPrincip::activate()
{
    ignora([&] {
        vaiPara(0, 0);
        if (!mTmrDisc.isActive()) // one that runs keeps its beat
            mTmrDisc.start();
        mDica->hide();
        mJanelas.blocos().setTmrRot(false);
    });
}

void fPrincip::unload()
{
    mJanelas.encerra();
}

void fPrincip::mostra()
{
    mShown = true;
    JanelaBase::mostra();
    mJanelas.painel().mostraPedida();
}

void fPrincip::acertaBotao()
{
    const BlocosDoMes visiveis = blocosDoMes(gArquivos, valorNumerico(mJanelas.painel().selectedMonth()));
    for (int i = 1; i <= kNumBlocos; ++i) {
        const int arquivo = visiveis[std::size_t(i)];
        if (arquivo >= 0)
            bloco(i).setTag(QString::number(arquivo));
        bloco(i).setVisible(arquivo >= 0);
    }
}

Imagem &fPrincip::bloco(int indice) const
{
    if (indice < 1 || indice > kNumBlocos)
        throw ErroExecucao(kFalhaControle);
    return *mBlocos[std::size_t(indice - 1)];
}

void fPrincip::blocoClick(int indice)
{
    gDisciplina = qint16(indice);
    gNomeDisciplina = NomeDisciplina(QString::number(indice));
    mJanelas.abreDisciplina();
    mTmrDisc.stop();
}

qint16 fPrincip::figuraSobOMouse() const
{
    return quorel::figuraSobOMouse(mBlocos);
}

void fPrincip::placeTold()
{
    mJanelas.painel().acompanhaPrincipal();
}

void fPrincip::mouseMoveEvent(QMouseEvent *event)
{
    if (isBare(event->position().toPoint()))
        hideTip();
}

void fPrincip::hideTip()
{
    mDica->hide();
    gImgApontada = -1;
}

void fPrincip::tickTmrDisc()
{
    if (mJanelas.blocos().isVisible())
        return;
    if (gImgApontada > 0)
        showTip();
    else if (mDica->texto().isEmpty())
        mDica->hide();
}

// Sizes and rounds the tip for its text; twips.
static void AjustaDicaDisciplina(Dica &dica, double alturaLinha)
{
    if (dica.texto().isEmpty())
        dica.hide();
    dica.setAlturaTexto(alturaDicaDisciplina(dica.texto(), TextHeight(dica.texto(), alturaLinha)));
    dica.arredonda(kRaioDica);
    dica.raise();
}

void fPrincip::showTip()
{
    mDica->setTexto(QString());
    mDica->setCor(kAzulClaro);
    gImgDica = gImgApontada;
    tenta([&] { mDica->setTexto(ObjetivoDisciplina(ImgDisc(gImgApontada))); });
    if (mDica->texto().isEmpty()) {
        mDica->setCor(kVermelhoClaro);
        mDica->setTexto(u"ROTEIROS NÃO DISPONÍVEIS. ESCOLHA OUTRO MÊS."_s);
    }
    AjustaDicaDisciplina(*mDica, alturaDaLinha());
    // A number without a block fails here, and the red tip shows where the last one stood.
    tenta(
        [&] { mDica->setLugar(lugarDaDica(bloco(gImgApontada).lugar(), mDica->lugar(), cliente(), kRecuoPrincipal)); });
    mDica->mostra();
}

} // namespace quorel
