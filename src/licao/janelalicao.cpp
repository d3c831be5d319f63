#include "licao/janelalicao.h"

#include "licao/calculadora.h"
#include "licao/digitacao.h"
#include "licao/editor.h"
#include "licao/faixa.h"
#include "licao/pagina.h"
#include "licao/reading.h"
#include "platform/som.h"
#include "platform/speech.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorel {

/// The filled button is the one that comes next.
static void setPrincipal(QPushButton &button, bool principal)
{
    if (button.property("principal").toBool() == principal)
        return;
    button.setProperty("principal", principal);
    button.style()->unpolish(&button);
    button.style()->polish(&button);
}

static LicaoRec textOnly(const QString &titulo, const QString &texto)
{
    LicaoRec licao;
    licao.Pecas.push_back({titulo, texto, {}, {}});
    return licao;
}

JanelaLicao::JanelaLicao(Programa programa, Midia midia, Preferences preferences)
    : mPrograma(programa), mMidia(std::move(midia)), mPreferences(preferences),
      mReading(new Reading(mMidia, Speech::instance(), this))
{
    buildLayout();
    connectEvents();
    connectTools();
    mostraAviso({}, {}, false);
}

void JanelaLicao::mostraLicao(const LicaoRec &licao, LugarRec lugar)
{
    begin(Modo::Licao, licao, lugar);
    if (mPreferences.fullScreen)
        switchFullScreen(true);
    Speech::instance().prepare(); // the loudspeaker shows when a voice is found
}

void JanelaLicao::mostraAviso(const QString &titulo, const QString &texto, bool comProxima)
{
    mAvisoProxima = comProxima;
    begin(Modo::Aviso, textOnly(titulo, texto), {});
}

void JanelaLicao::mostraSozinho()
{
    const QString convite = u"Este programa mostra %1 do Quorel.\n\nPara começar uma lição, abra o Quorel, escolha um "
                            u"bloco e clique em uma figura: a lição vem para cá."_s;
    const bool useful = hasEditor() || mCalculadora;
    begin(Modo::Sozinho, textOnly({}, useful ? QString() : convite.arg(carater(mPrograma).convite)), {});
}

void JanelaLicao::begin(Modo modo, LicaoRec licao, LugarRec lugar)
{
    mModo = modo;
    mLicao = std::move(licao);
    mLugar = lugar;
    mPagina = 0;
    mOuvida = -1;
    mResposta.clear();
    showSide();
    showPage();
}

bool JanelaLicao::hasEditor() const
{
    return mModo != Modo::Aviso && (mPrograma == Programa::Desenho || mLicao.Tipo == TipoExercicio::Desenho);
}

void JanelaLicao::showSide()
{
    if (hasEditor())
        mEditor->folhaNova();
    mEditor->setVisible(hasEditor());
    if (mCalculadora) {
        mCalculadora->setVisible(mModo != Modo::Aviso);
        mCalculadora->setUsavel(mLicao.Tipo == TipoExercicio::Digitada);
    }
}

/// Books and stories have a piece on each page, and so has what is only read; an exercise has all its pieces on one.
bool JanelaLicao::paged() const
{
    return mPrograma == Programa::Vrel || mPrograma == Programa::Livros || mLicao.Tipo == TipoExercicio::Pagina
        || mLicao.Tipo == TipoExercicio::Historia;
}

bool JanelaLicao::lastPage() const
{
    return !paged() || mPagina + 1 >= int(mLicao.Pecas.size());
}

std::span<const PecaRec> JanelaLicao::piecesOfPage() const
{
    const std::span all(mLicao.Pecas);
    return paged() ? all.subspan(size_t(mPagina), 1) : all;
}

std::vector<PecaRec> JanelaLicao::shownPieces() const
{
    const auto pieces = piecesOfPage();
    std::vector<PecaRec> shown(pieces.begin(), pieces.end());
    for (PecaRec &each : shown) {
        each.Titulo = shownText(each.Titulo, mPreferences.capitals);
        each.Texto = shownText(each.Texto, mPreferences.capitals);
    }
    return shown;
}

/// Whether a picture and the options written beside it share the width: below it they would be out of sight.
bool JanelaLicao::sideBySide() const
{
    const auto pieces = piecesOfPage();
    return pieces.size() == 1 && !pieces.front().Fig.isEmpty() && !mLicao.Opcoes.empty()
        && std::ranges::all_of(mLicao.Opcoes, [](const OpcaoRec &each) { return each.Fig.isEmpty(); });
}

QWidget *JanelaLicao::buildContent(bool estreita)
{
    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, estreita ? 0 : 8, 8);
    column->setSpacing(18);
    mExercicio =
        lastPage() && temResposta(mLicao) ? criaExercicio(mLicao, mMidia, carater(mPrograma).cor, content) : nullptr;
    const bool beside = mExercicio && !estreita && sideBySide();
    mFolha = new Pagina(shownPieces(), mMidia, true, estreita || beside, content);
    auto *parts = new QBoxLayout(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    parts->setSpacing(18);
    parts->addWidget(mFolha, beside ? 1 : 0);
    column->addLayout(parts);
    if (mExercicio) {
        parts->addWidget(mExercicio, beside ? 1 : 0, beside ? Qt::AlignTop : Qt::Alignment());
        connect(mExercicio, &Exercicio::mudou, this, &JanelaLicao::answerChanged);
    }
    column->addStretch(1); // all the room that is left
    return content;
}

void JanelaLicao::showPage()
{
    stopReading();
    if (QWidget *old = mRolagem->takeWidget()) {
        old->hide();
        old->deleteLater(); // a key pressed in it may have led here
    }
    mSuja = false;
    QWidget *content = buildContent(hasEditor() || mCalculadora);
    mRolagem->setWidget(content);
    mRolagem->setVisible(!mFolha->vazia() || mExercicio || (!mCalculadora && !hasEditor()));
    const int pages = paged() ? int(mLicao.Pecas.size()) : 1;
    mFaixa->mostra(shownText(piecesOfPage().front().Titulo, mPreferences.capitals),
        pages > 1 ? u"Página %1 de %2"_s.arg(mPagina + 1).arg(pages) : QString());
    if (mExercicio)
        mRetorno->pede(mExercicio->pedido());
    else
        mRetorno->cala();
    mRetorno->setVisible(temResposta(mLicao));
    mReading->setPage(mModo == Modo::Licao ? mLicao : LicaoRec{},
        mModo == Modo::Licao ? piecesOfPage() : std::span<const PecaRec>{}, mPagina, mExercicio != nullptr);
    updateButtons();
    focusFirst();
    if (mPagina > mOuvida) {
        mOuvida = mPagina;
        if (mSomSozinho)
            mFolha->toca();
    }
}

void JanelaLicao::updateButtons()
{
    const bool emRoteiro = mModo == Modo::Licao && !mLicao.Avulsa;
    const bool turning = mModo == Modo::Licao && paged() && mLicao.Pecas.size() > 1;
    mSai->setText(emRoteiro || mAvisoProxima ? u"&Sair"_s : u"&Fechar"_s);
    mAnterior->setVisible(emRoteiro || turning);
    mAnterior->setEnabled(mPagina > 0 || (emRoteiro && !mLugar.Primeira));
    mConfere->setVisible(mExercicio != nullptr);
    mConfere->setEnabled(unchecked());
    mProxima->setVisible(emRoteiro || turning || (mModo == Modo::Aviso && mAvisoProxima));
    mProxima->setEnabled(mModo == Modo::Aviso || emRoteiro || !lastPage());
    mProxima->setText(lastPage() && mLugar.Ultima ? u"&Terminar"_s : u"&Próxima"_s);
    setPrincipal(*mConfere, unchecked());
    setPrincipal(*mProxima, !unchecked() && (!mExercicio || !mResposta.isEmpty()));
}

void JanelaLicao::focusFirst()
{
    if (mExercicio)
        mExercicio->foca();
    else if (hasEditor())
        mEditor->foca();
    else if (!mProxima->isHidden() && mProxima->isEnabled())
        mProxima->setFocus();
    else if (mCalculadora)
        mCalculadora->setFocus();
    else
        mSai->setFocus();
}

bool JanelaLicao::unchecked() const
{
    return mExercicio && mSuja && mExercicio->respondido();
}

void JanelaLicao::answerChanged()
{
    mSuja = true;
    mRetorno->pede(mExercicio->pedido());
    updateButtons();
}

void JanelaLicao::check()
{
    if (!mExercicio->respondido()) {
        mRetorno->pede(mExercicio->pedido());
        return;
    }
    const bool certa = mExercicio->certo();
    if (mResposta.isEmpty()) // the first answer counts; trying again is for learning
        mResposta = certa ? u"A"_s : u"E"_s;
    mSuja = false;
    mExercicio->mostraCorrecao(certa);
    const QString elogio = mLicao.Elogio.isEmpty() ? u"Muito bem! Está certo."_s : mLicao.Elogio;
    const QString dica = mLicao.Dica.isEmpty() ? u"Pense mais um pouco e tente de novo."_s : mLicao.Dica;
    mRetorno->diz(certa, certa ? elogio : u"Ainda não. "_s + dica);
    updateButtons();
    if (certa && mProxima->isVisible())
        mProxima->setFocus();
}

void JanelaLicao::goOn()
{
    if (unchecked()) {
        check();
    } else if (!lastPage()) {
        ++mPagina;
        showPage();
    } else {
        emit proxima();
    }
}

void JanelaLicao::goBack()
{
    if (mPagina > 0) {
        --mPagina;
        showPage();
    } else {
        emit anterior();
    }
}

void JanelaLicao::closeEvent(QCloseEvent *event)
{
    event->ignore();
    emit sai();
}

void JanelaLicao::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const int number = event->key() - Qt::Key_0;
    if (enter && mExercicio && (mSuja || mResposta.isEmpty()))
        check();
    else if (enter && !mProxima->isHidden() && mProxima->isEnabled())
        goOn();
    else if (number < 1 || number > 9 || event->isAutoRepeat() || !mExercicio || !mExercicio->tecla(number))
        QWidget::keyPressEvent(event);
}

} // namespace quorel
