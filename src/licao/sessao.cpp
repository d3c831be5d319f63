#include "licao/sessao.h"

#include <QWindow>

#include <utility>

using namespace Qt::StringLiterals;

namespace quorel {

Sessao::Sessao(Filho &filho, JanelaLicao &janela) : mFilho(filho), mJanela(janela)
{
    connect(&filho, &Filho::aula, this, &Sessao::aula);
    connect(&filho, &Filho::controle, this, &Sessao::controle);
    connect(&filho, &Filho::encerra, this, &Sessao::encerra);
    connect(&filho, &Filho::semGerenciador, this, &Sessao::perdeGerenciador);
    connect(&janela, &JanelaLicao::proxima, this, &Sessao::proxima);
    connect(&janela, &JanelaLicao::anterior, this, &Sessao::anterior);
    connect(&janela, &JanelaLicao::sai, this, &Sessao::sai);
}

void Sessao::espera()
{
    const QString why = whyUnreachable();
    mComGerenciador = why.isEmpty();
    if (!mComGerenciador)
        mJanela.mostraAviso(u"A lição não pode vir"_s, why, false);
    else if (findWindow(kTituloGerenciador, false) == 0) // it died while this program started
        semGerenciador();
    else
        mJanela.mostraAviso(u"Um momento…"_s, u"A lição já vem."_s, false);
}

void Sessao::aula(const QString &linha)
{
    const LicaoRec licao = leLicao(linha);
    mAvulsa = licao.Avulsa;
    mEmLicao = !mAvulsa;
    mComGerenciador = true;
    mOrfa = false;
    mJanela.mostraLicao(licao, std::exchange(mProximoLugar, {}));
    mJanela.show();
    mJanela.raise();
    mJanela.activateWindow();
}

void Sessao::controle(const QString &palavra)
{
    if (palavra == "PRIMEIRA"_L1)
        mProximoLugar.Primeira = true;
    else if (palavra == "ULTIMA"_L1)
        mProximoLugar.Ultima = true;
    else if (palavra == "ESCONDE"_L1)
        hide();
}

/// In a lesson also without an answer of its own: the shell writes down those of the lessons before.
void Sessao::encerra()
{
    const bool inLesson = mEmLicao;
    if (const QString resposta = takeAnswer(); inLesson)
        mFilho.sai(resposta);
    emit fim();
}

/// Whether the shell began to close while it dealt with our step: it brings no lesson, and the Roteiro is not over.
bool Sessao::closedMeanwhile()
{
    if (!mFilho.encerraPendente() || mFilho.aulaPendente())
        return false;
    mFilho.sai(QString());
    return true;
}

QString Sessao::takeAnswer()
{
    mJanela.stopReading();
    const bool mine = std::exchange(mEmLicao, false);
    return mine ? mJanela.resposta() : QString();
}

void Sessao::hide()
{
    mEmLicao = false;
    mJanela.stopReading();
    const QPoint place = mJanela.pos();
    mJanela.hide();
    // Or a window manager looks for another place at each lesson. A move() to where the widget is would not tell it.
    QWindow *const window = mJanela.windowHandle();
    if (window && mJanela.windowState() == Qt::WindowNoState)
        window->setFramePosition(place);
}

/// What the pupil sees stays: the next step says that there is no going on. Out of sight nobody would end the program.
void Sessao::perdeGerenciador()
{
    mOrfa = true;
    if (mJanela.isHidden())
        emit fim();
    else if (!mEmLicao && !mAvulsa)
        semGerenciador();
}

void Sessao::semGerenciador()
{
    mOrfa = true;
    mJanela.mostraAviso(
        u"O Quorel foi fechado"_s, u"Para continuar, feche esta janela e abra o Quorel de novo."_s, false);
}

/// Nothing new for this program means that the Roteiro is over or goes on in another one.
void Sessao::proxima()
{
    if (!mFilho.proxima(takeAnswer()))
        semGerenciador();
    else if (!closedMeanwhile() && !mFilho.aulaPendente())
        hide();
}

void Sessao::anterior()
{
    if (!mFilho.anterior(takeAnswer()))
        semGerenciador();
    else if (!closedMeanwhile() && !mFilho.aulaPendente())
        mJanela.mostraAviso(u"Não há lição anterior aqui"_s,
            u"Se a lição anterior abriu em outra janela, continue nela.\n\nSe o roteiro começa aqui, clique em Próxima."_s,
            true);
}

void Sessao::sai()
{
    if (mOrfa || !mComGerenciador) {
        emit fim();
        return;
    }
    const QString resposta = takeAnswer();
    hide();
    if (!mAvulsa && !mFilho.sai(resposta) && !mFilho.temGerenciador())
        emit fim();
}

} // namespace quorel
