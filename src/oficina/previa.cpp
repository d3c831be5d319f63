#include "oficina/previa.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr QSize kMenor(420, 380); // pixels; beside the editor on a screen of 1024 by 600

Previa::Previa(Midia midia, QWidget *parent) : QWidget(parent), mMidia(std::move(midia))
{
    setObjectName(u"Previa"_s);
    const auto button = [this](const QString &name, const QString &face, const QString &said) {
        auto *made = new QPushButton(face, this);
        made->setObjectName(name);
        made->setAccessibleName(said);
        made->setToolTip(said);
        return made;
    };
    QPushButton *before = button(u"CmdAulaAnterior"_s, u"◀"_s, u"Aula anterior (Ctrl+PgUp)"_s);
    QPushButton *next = button(u"CmdProximaAula"_s, u"▶"_s, u"Próxima aula (Ctrl+PgDn)"_s);
    mTitulo = new QLabel(this);
    mTitulo->setObjectName(u"LblAula"_s);
    mTitulo->setTextFormat(Qt::PlainText);
    mTitulo->setAlignment(Qt::AlignCenter);
    auto *row = new QHBoxLayout;
    row->addWidget(before);
    row->addWidget(mTitulo, 1);
    row->addWidget(next);
    mColuna = new QVBoxLayout(this);
    mColuna->setContentsMargins(0, 0, 0, 0);
    mColuna->addLayout(row);
    connect(before, &QPushButton::clicked, this, &Previa::anterior);
    connect(next, &QPushButton::clicked, this, &Previa::proxima);
    mostraNada(u"Escreva um roteiro com uma aula: ela aparece aqui."_s);
}

JanelaLicao &Previa::playerFor(Programa programa)
{
    if (mPlayer && mPrograma == programa)
        return *mPlayer;
    if (mPlayer) {
        mColuna->removeWidget(mPlayer);
        mPlayer->hide();
        mPlayer->deleteLater(); // one of its buttons may have led here
    }
    mPrograma = programa;
    mPlayer = new JanelaLicao(programa, mMidia);
    mPlayer->setParent(this);
    mPlayer->setMinimumSize(kMenor);
    mPlayer->setSomSozinho(false);
    mColuna->addWidget(mPlayer, 1);
    connect(mPlayer, &JanelaLicao::proxima, this, &Previa::proxima);
    connect(mPlayer, &JanelaLicao::anterior, this, &Previa::anterior);
    mPlayer->setEnabled(false);
    mPlayer->show();
    return *mPlayer;
}

void Previa::mostra(const AulaVista &aula, const QString &titulo)
{
    mTitulo->setText(titulo);
    if (mShown == aula)
        return;
    mShown = aula;
    JanelaLicao &player = playerFor(aula.programa);
    player.setEnabled(false); // a lesson takes the focus where it can, and the editor has it
    if (aula.pagina.isEmpty())
        player.mostraLicao(aula.licao, {aula.primeira, aula.ultima});
    else
        player.mostraAviso(u"Página da internet"_s,
            u"Esta aula abre a página %1 no navegador e espera até que a janela se feche."_s.arg(aula.pagina), true);
    player.setEnabled(true);
}

void Previa::mostraNada(const QString &porque)
{
    mShown.reset();
    mTitulo->clear();
    JanelaLicao &player = playerFor(mPrograma);
    player.setEnabled(false);
    player.mostraAviso({}, porque, false);
    player.setEnabled(true);
}

} // namespace quorel
