#include "register/barra.h"

#include "register/quadro.h"
#include "visual/controles.h"

#include <QLineEdit>
#include <QPushButton>

namespace quorel {

using namespace Qt::StringLiterals;

// Twips.
static constexpr double kLadoMove = 510;
static constexpr double kLadoEdita = 600;
static constexpr double kEntreLinhas = 630; // from the upper row to the lower one

void Barra::setAdicionando(bool adicionando) const
{
    cancela->setVisible(adicionando);
    apaga->setEnabled(!adicionando);
}

Barra novaBarra(const NomesBarra &nomes, double topo, QWidget *quadro)
{
    const auto move = [&](const char16_t *nome, double left, const QString &face, const QString &tip) {
        return novoBotao({nome, {left, topo, kLadoMove, kLadoMove}}, face, tip, quadro);
    };
    const auto edita = [&](const char16_t *nome, double left, const QString &face, const QString &tip) {
        return novoBotao({nome, {left, topo + kEntreLinhas, kLadoEdita, kLadoEdita}}, face, tip, quadro);
    };
    Barra barra;
    barra.primeiro = move(nomes.primeiro, 180, u"primeiro"_s, u"Primeiro Registro"_s);
    barra.anterior = move(nomes.anterior, 750, u"anterior"_s, u"Registro Anterior"_s);
    barra.posicao = novoCampo({nomes.posicao, {1350, topo + 60, 1950, 390}}, u"Posição"_s, quadro);
    barra.posicao->setReadOnly(true);
    barra.posicao->setFocusPolicy(Qt::NoFocus);
    barra.posicao->setAlignment(Qt::AlignCenter);
    barra.proximo = move(nomes.proximo, 3390, u"proximo"_s, u"Próximo Registro"_s);
    barra.ultimo = move(nomes.ultimo, 3960, u"ultimo"_s, u"Último Registro"_s);
    barra.grava = edita(nomes.grava, 180, u"salvar"_s, u"Salva os Dados Atuais"_s);
    barra.novo = edita(nomes.novo, 960, u"novo"_s, u"Cria um Novo Registro"_s);
    barra.apaga = edita(nomes.apaga, 1740, u"excluir"_s, u"Exclui o Registro Atual"_s);
    barra.cancela = edita(nomes.cancela, 3870, u"cancelar"_s, u"Cancela a Adição"_s);
    barra.setAdicionando(false);
    return barra;
}

} // namespace quorel
