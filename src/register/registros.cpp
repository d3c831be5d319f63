#include "register/registros.h"

#include "data/bd.h"
#include "data/campos.h"
#include "startup/valor.h"

#include <QComboBox>

namespace quorel {

using namespace Qt::StringLiterals;

QString procura(QString criterio, const QString &alias, const QVariant &campo)
{
    return gBD->Pesquisa(criterio, alias, campo);
}

qint32 codigo(const QVariant &valor)
{
    return inteiro32(valorNumerico(variantText(valor)));
}

void ligaClasses(QComboBox &combo, const QString &alias)
{
    QString campo = u"CL_Nome"_s;
    gBD->Combo_Set(combo, alias, campo);
}

void escolhe(QComboBox &combo, const QString &texto)
{
    combo.clearEditText();
    combo.setEditText(texto);
}

void avanca(const QString &alias)
{
    gBD->MoveProximoRegistro(alias);
    if (gBD->PosicaoRegistroAtual() < 1)
        gBD->MoveParaFimDeArquivo(alias);
}

void recua(const QString &alias)
{
    gBD->MoveRegistroAnterior(alias);
    if (gBD->PosicaoRegistroAtual() < 1)
        gBD->MoveParaComecoDeArquivo(alias);
}

QString textoPosicao(const QString &alias)
{
    const qint32 posicao = gBD->PosicaoRegistroAtual(alias);
    const qint32 total = gBD->NumeroTotalDeRegistros();
    return u"%1 / %2"_s.arg(posicao).arg(total);
}

} // namespace quorel
