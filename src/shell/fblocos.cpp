#include "shell/fblocos.h"

#include "catalogue/catalogo.h"
#include "catalogue/estado.h"
#include "catalogue/lista_selecionada.h"
#include "catalogue/roteiros.h"
#include "lessons/andamento.h"
#include "lessons/copia_midia.h"
#include "lessons/executa_aula.h"
#include "lessons/gancho.h"
#include "platform/caminho.h"
#include "platform/costuras.h"
#include "platform/erro.h"
#include "shell/comandos.h"
#include "shell/dica.h"
#include "shell/estado.h"
#include "shell/faux.h"
#include "shell/fprincip.h"
#include "shell/geometria_dica.h"
#include "shell/imagem.h"
#include "shell/janelas.h"
#include "shell/tique.h"
#include "startup/estado.h"
#include "startup/valor.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>

#include <algorithm>
#include <chrono>
#include <optional>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr std::chrono::milliseconds kIntervalo{1000};
static constexpr quint8 kPrimeiroRaio = 80; // pixels
static constexpr quint8 kRaioDica = 40; // pixels

fBlocos::fBlocos(Janelas &outras)
    : JanelaBase(outras.ativa(), u"fBlocos"_s, kCliente), mJanelas(outras), mTmrRot(new QTimer(this))
{
    buildLayout();
    connectEvents();
}

void fBlocos::connectEvents()
{
    for (int i = 1; i <= kNumBotoes; ++i) {
        connect(&botao(i), &Imagem::clicked, this, [this, i] { botaoClick(i); });
        connect(&botao(i), &Imagem::apontada, this, [i] { gImgApontada = qint16(i); });
        connect(&botao(i), &Imagem::deixada, this, &fBlocos::hideTip);
    }
    connect(mDica, &Dica::tocada, mDica, &QWidget::hide);
    mTmrRot->setObjectName(u"TmrRot"_s);
    mTmrRot->setInterval(kIntervalo);
    connect(mTmrRot, &QTimer::timeout, this, &fBlocos::tickTmrRot);
    for (int k = 0; k <= kNumJogos; ++k) {
        QPushButton *jogo = mJogos[std::size_t(k)];
        connect(jogo, &QPushButton::clicked, this, [jogo] { abreJogo(jogo->property("Tag").toString()); });
    }
    connect(mCmdManual, &QPushButton::clicked, this, &abreAjuda);
    connect(mCmdVoltar, &QPushButton::clicked, this, [this] {
        setTmrRot(false);
        descarrega();
    });
}

void fBlocos::load()
{
    vaiPara(0, 0);
    InstalaGancho(janelaBlocos());
    mJanelas.painel().mostra();
    setWindowTitle(u"Série: "_s + gNomeNivel);
}

void fBlocos::activate()
{
    if (!gEmRoteiro) {
        setTmrRot(true);
        if (botao(1).isHidden())
            LeRoteiros();
        gImgApontada = -1;
    }
    update();
}

// Unloading only hides: the window stays to the end of the program.
void fBlocos::unload()
{
    mJanelas.painel().setVisivel(true);
    for (Imagem *imagem : mBotoes) {
        imagem->setPicture(QPixmap());
        imagem->hide();
    }
    mJanelas.principal().setVisivel(true);
    mJanelas.painel().garanteMes();
    hide();
    mJanelas.apontaNaDeCima();
}

// The pictures stand elsewhere under the mouse than they did without the frame.
void fBlocos::placeTold()
{
    if (isVisible())
        mJanelas.apontaNaDeCima();
}

void fBlocos::setTmrRot(bool enabled)
{
    if (!enabled)
        mTmrRot->stop();
    else if (!mTmrRot->isActive())
        mTmrRot->start();
}

Imagem &fBlocos::botao(int indice) const
{
    if (indice < 1 || indice > kNumBotoes)
        throw ErroExecucao(kFalhaControle);
    return *mBotoes[std::size_t(indice - 1)];
}

void fBlocos::hideAll()
{
    for (int n = 1; n <= kNumJogos; ++n)
        hideOne(n);
}

void fBlocos::loadPicture(int n, const QString &caminho)
{
    botao(n).loadPicture(caminho);
}

void fBlocos::setTag(int n, const QString &titulo)
{
    botao(n).setTag(titulo);
    botao(n).setAccessibleName(titulo.isEmpty() ? u"Roteiro %1"_s.arg(n) : titulo);
}

void fBlocos::showButton(int n)
{
    const bool first = std::ranges::all_of(mBotoes, &Imagem::isHidden);
    botao(n).show();
    if (first) // or the focus would stay where it fled to while there was no picture
        botao(n).setFocus(Qt::OtherFocusReason);
}

qint16 fBlocos::figuraSobOMouse() const
{
    return quorel::figuraSobOMouse(mBotoes);
}

void fBlocos::hidePrincip()
{
    mJanelas.principal().setVisivel(false);
}

void fBlocos::showBlocos()
{
    mostra();
}

void fBlocos::keepBlocosVisible()
{
    setVisivel(true);
}

void fBlocos::setTitulo(const QString &texto)
{
    mLblTitulo->setText(texto);
}

void fBlocos::setManualTag(const QString &tag)
{
    mCmdManual->setProperty("Tag", tag);
}

void fBlocos::hideOne(int n)
{
    if (n < 1 || n > kNumJogos)
        throw ErroExecucao(kFalhaControle);
    mJogos[std::size_t(n)]->hide();
    if (n <= kNumBotoes)
        botao(n).hide();
}

void fBlocos::focusBlocos()
{
    if (!isVisible())
        throw ErroExecucao(kFalhaFoco);
    activateWindow();
    raise();
}

void fBlocos::unloadBlocos()
{
    descarrega();
}

Janela fBlocos::handlePrincip()
{
    return handleOf(&mJanelas.principal());
}

Janela fBlocos::handleActive()
{
    return handleOf(QApplication::activeWindow());
}

void fBlocos::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_F5) {
        JanelaBase::keyPressEvent(event);
        return;
    }
    event->accept();
    mJanelas.abreDisciplina();
}

void fBlocos::mouseMoveEvent(QMouseEvent *event)
{
    if (isBare(event->position().toPoint()))
        hideTip();
}

void fBlocos::hideTip()
{
    mDica->hide();
    gImgApontada = -1;
}

// Run-time failures are passed over, statement by statement.
void fBlocos::botaoClick(int indice)
{
    if (botao(indice).segundaPressao() && !gSelecionando)
        return; // a double click starts a roteiro once; in a selection it lists it twice
    // Kept: set also by a selection, a refusal or a copy, so Activate leaves the window alone until a lesson ends.
    gEmRoteiro = true;
    std::optional<qint32> cod;
    ignora([&] { cod = gRoteiros[indice].Cod; });
    if (gSelecionando) {
        ignora([&] { incluiRoteiro(cod); });
        return;
    }
    gRotAtual = qint16(indice);
    gAulaAtual = 1;
    if (mJanelas.painel().copiaFiguras()) {
        copyMedia();
        return;
    }
    bool autorizado = false;
    ignora([&] { autorizado = autorizaRoteiro(cod); });
    if (autorizado)
        ignora([&] { iniciaRoteiro(indice); });
}

void fBlocos::copyMedia()
{
    const Caixa pergunta{u"Deseja Copiar as Figuras deste Roteiro ?"_s, u"Tobi e Nina seus colegas na escola"_s,
        Icone::Nenhum, Botoes::SimNao};
    if (caixa(pergunta) != Resposta::Sim)
        return;
    int ultima = 0;
    ignora([&] { ultima = gRoteiros[gRotAtual].Aulas.upperBound(); });
    for (int i = 1; i <= ultima; ++i) {
        ignora([&] {
            QString linha = gRoteiros[gRotAtual].Aulas[i].Linha; // a copy: the call takes it apart
            if (!linha.isEmpty())
                CopiaMidiaAula(linha);
        });
    }
    caixa({u"Fim da cópia das figuras\r\nForam copiadas no diretório: "_s + nativePath(gDirFiguras)});
    mJanelas.painel().desmarcaCopia();
}

void fBlocos::tickTmrRot()
{
    if (gImgApontada > 0)
        showTip();
    else if (mDica->texto().isEmpty())
        mDica->hide();
}

// Sizes and rounds the tip for its text; twips.
static void AjustaDicaRoteiro(Dica &dica, double alturaLinha)
{
    if (dica.texto().isEmpty())
        dica.hide();
    dica.setAlturaTexto(alturaDicaRoteiro(dica.texto(), TextHeight(dica.texto(), alturaLinha)));
    // Kept: rounded twice; the second shape is the one that stays.
    dica.arredonda(kPrimeiroRaio);
    dica.arredonda(kRaioDica);
    dica.raise();
}

void fBlocos::showTip()
{
    tenta([&] { mDica->setTexto(botao(gImgApontada).tag()); });
    if (mDica->texto().isEmpty())
        return;
    AjustaDicaRoteiro(*mDica, alturaDaLinha());
    tenta([&] { mDica->setLugar(lugarDaDica(botao(gImgApontada).lugar(), mDica->lugar(), cliente(), kRecuoBlocos)); });
    mDica->mostra();
}

} // namespace quorel
