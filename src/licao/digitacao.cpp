#include "licao/digitacao.h"

#include "licao/correcao.h"

#include <QHBoxLayout>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr int kMaxDigitada = 200; // characters of an answer
static constexpr int kLargura = 520; // pixels at most

Digitacao::Digitacao(const LicaoRec &licao, QWidget *parent)
    : Exercicio(parent), mLicao(licao), mTexto(new QLineEdit(this))
{
    setObjectName(u"Digitacao"_s);
    mTexto->setObjectName(u"TxtResposta"_s);
    mTexto->setAccessibleName(u"Sua resposta"_s);
    mTexto->setPlaceholderText(u"Sua resposta"_s);
    mTexto->setMaxLength(kMaxDigitada);
    mTexto->setMaximumWidth(kLargura);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(mTexto, 1);
    row->addStretch();
    connect(mTexto, &QLineEdit::textChanged, this, &Exercicio::mudou);
}

void Digitacao::preenche(const QString &texto)
{
    if (!mTexto->isReadOnly())
        mTexto->setText(texto);
    foca();
}

bool Digitacao::respondido() const
{
    return !mTexto->text().trimmed().isEmpty();
}

bool Digitacao::certo() const
{
    return digitadaCerta(mLicao, mTexto->text());
}

void Digitacao::mostraCorrecao(bool acertou)
{
    mTexto->setReadOnly(acertou);
    if (!acertou)
        mTexto->selectAll();
}

void Digitacao::foca()
{
    mTexto->setFocus();
}

bool Digitacao::tecla(int)
{
    return false;
}

QString Digitacao::pedido() const
{
    return u"Digite a resposta."_s;
}

} // namespace quorel
