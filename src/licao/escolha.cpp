#include "licao/escolha.h"

#include "licao/cartao.h"
#include "licao/correcao.h"

#include <QGridLayout>
#include <QKeyEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr int kTextoCurto = 26; // characters that fit half the width
static constexpr int kMaxColunas = 4;

/// Pictures stand side by side, short texts in two columns, long ones below one another.
static int columnsFor(const std::vector<OpcaoRec> &opcoes, bool figuras)
{
    const int count = int(opcoes.size());
    if (figuras)
        return std::min(count, count == 6 || count == 5 ? 3 : kMaxColunas);
    const bool curtas = std::ranges::all_of(opcoes, [](const OpcaoRec &o) { return o.Texto.size() <= kTextoCurto; });
    return curtas && count > 3 ? 2 : 1;
}

Escolha::Escolha(const LicaoRec &licao, const Midia &midia, QRgb cor, QWidget *parent)
    : Exercicio(parent), mLicao(licao)
{
    setObjectName(u"Escolha"_s);
    buildCards(midia, cor);
}

void Escolha::buildCards(const Midia &midia, QRgb cor)
{
    std::vector<QPixmap> figuras;
    for (const OpcaoRec &opcao : mLicao.Opcoes)
        figuras.emplace_back(opcao.Fig.isEmpty() ? QPixmap() : QPixmap(midia.figura(opcao.Fig)));
    const bool some = std::ranges::any_of(figuras, [](const QPixmap &f) { return !f.isNull(); });
    const int columns = columnsFor(mLicao.Opcoes, some);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(8);
    for (int n = 0; n < int(figuras.size()); ++n) {
        const OpcaoRec &opcao = mLicao.Opcoes[size_t(n)];
        const bool nameless = opcao.Texto.isEmpty() && figuras[size_t(n)].isNull();
        auto *card = new Cartao(n + 1, nameless ? opcao.Fig : opcao.Texto, figuras[size_t(n)], cor, this);
        connect(card, &Cartao::clicked, this, [this, n] { choose(n); });
        grid->addWidget(card, n / columns, n % columns);
        mCartoes.push_back(card);
    }
}

void Escolha::choose(int n)
{
    if (!mFechada) {
        const auto at = std::ranges::find(mEscolhidas, n);
        const bool single = mLicao.Tipo == TipoExercicio::Uma || mLicao.Tipo == TipoExercicio::Historia;
        if (single)
            mEscolhidas = {n};
        else if (at == mEscolhidas.end())
            mEscolhidas.push_back(n);
        else
            mEscolhidas.erase(at);
    }
    showChoice();
    if (!mFechada)
        emit mudou();
}

void Escolha::showChoice()
{
    for (int n = 0; n < int(mCartoes.size()); ++n) {
        const auto at = std::ranges::find(mEscolhidas, n);
        Cartao &card = *mCartoes[size_t(n)];
        card.setChecked(at != mEscolhidas.end());
        if (mFechada)
            continue;
        card.setMarca(Cartao::Marca::Nenhuma);
        if (mLicao.Tipo == TipoExercicio::Ordem)
            card.setLugar(at == mEscolhidas.end() ? 0 : int(at - mEscolhidas.begin()) + 1);
    }
}

bool Escolha::respondido() const
{
    return mLicao.Tipo == TipoExercicio::Ordem ? mEscolhidas.size() == mCartoes.size() : !mEscolhidas.empty();
}

bool Escolha::certo() const
{
    return escolhaCerta(mLicao, mEscolhidas);
}

void Escolha::mostraCorrecao(bool acertou)
{
    mFechada = acertou;
    if (mLicao.Tipo == TipoExercicio::Ordem && !acertou)
        return; // which of them stands wrong is for the pupil to find
    for (const int n : mEscolhidas) {
        const bool certa = acertou || mLicao.Opcoes[size_t(n)].Certa;
        mCartoes[size_t(n)]->setMarca(certa ? Cartao::Marca::Certa : Cartao::Marca::Errada);
    }
}

void Escolha::foca()
{
    mCartoes.front()->setFocus();
}

bool Escolha::tecla(int numero)
{
    if (numero > int(mCartoes.size()))
        return false;
    mCartoes[size_t(numero - 1)]->setFocus();
    choose(numero - 1);
    return true;
}

QString Escolha::pedido() const
{
    switch (mLicao.Tipo) {
    case TipoExercicio::Todas:
        return u"Escolha todas as respostas certas."_s;
    case TipoExercicio::Ordem:
        return u"Clique nas opções na ordem certa."_s;
    default:
        return u"Escolha a resposta certa."_s;
    }
}

void Escolha::keyPressEvent(QKeyEvent *event)
{
    const bool forward = event->key() == Qt::Key_Right || event->key() == Qt::Key_Down;
    const bool back = event->key() == Qt::Key_Left || event->key() == Qt::Key_Up;
    if (forward || back)
        focusNextPrevChild(forward);
    else
        Exercicio::keyPressEvent(event);
}

} // namespace quorel
