#include "platform/erro.h"

namespace quorel {

using namespace Qt::StringLiterals;

static QString describe(int numero)
{
    switch (numero) {
    case kFalhaFoco:
        return u"O foco não pode ir para esta janela"_s;
    case kFalhaEstouro:
        return u"Estouro: número grande demais"_s;
    case kFalhaIndice:
        return u"Índice fora dos limites"_s;
    case kFalhaTipo:
        return u"Tipo incompatível"_s;
    case kFalhaObjeto:
        return u"Objeto não definido"_s;
    case kFalhaControle:
        return u"Elemento inexistente no conjunto de controles"_s;
    case kFalhaFigura:
        return u"Figura inválida"_s;
    default:
        return u"Falha de execução"_s;
    }
}

ErroExecucao::ErroExecucao(int numero) : ErroExecucao(numero, describe(numero)) { }

ErroExecucao::ErroExecucao(int numero, const QString &descricao)
    : mNumero(numero), mDescricao(descricao), mTexto((QString::number(numero) + u' ' + descricao).toUtf8())
{ }

ErroExecucao::~ErroExecucao() = default;

const char *ErroExecucao::what() const noexcept
{
    return mTexto.constData();
}

} // namespace quorel
