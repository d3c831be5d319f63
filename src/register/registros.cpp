#include "register/registros.h"

#include "data/bd.h"
#include "data/campos.h"
#include "data/recordset.h"
#include "startup/valor.h"

#include <QComboBox>
#include <QLineEdit>

namespace quorel {

using namespace Qt::StringLiterals;

QString procura(QString criterio, const QString &alias, const QVariant &campo)
{
    return gBD->Pesquisa(criterio, alias, campo);
}

bool goTo(const QString &coluna, const QString &chave, const QString &alias)
{
    if (!chave.isEmpty() && !procura(coluna + u"= "_s + chave, alias, coluna).isEmpty())
        return true;
    gBD->MoveParaFimDeArquivo(alias);
    gBD->MoveProximoRegistro(alias);
    return false;
}

bool isAdding(const QString &alias)
{
    const auto set = gBD->GetRecordSet(alias);
    return set && set->isOpen() && set->EditMode() == kEdicaoInclusao;
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
    combo.lineEdit()->setCursorPosition(0);
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
