#include "data/errobd.h"

using namespace Qt::StringLiterals;

namespace quorel {

static QString descriptionOf(NumeroErroBD numero)
{
    switch (numero) {
    case kErroCriterio:
        return u"O critério não pôde ser entendido."_s;
    case kErroSemRegistro:
        return u"Não há registro atual: BOF ou EOF é verdadeiro, ou o registro atual foi excluído."_s;
    case kErroContexto:
        return u"A operação não é permitida neste contexto."_s;
    case kErroNome:
        return u"O item não foi encontrado na coleção com o nome ou número pedido."_s;
    case kErroFechado:
        return u"A operação não é permitida quando o objeto está fechado."_s;
    case kErroSemConexao:
        return u"Não há conexão aberta com o banco de dados."_s;
    case kErroValor:
        return u"O valor não é adequado para o campo."_s;
    case kErroSql:
        return u"A instrução SQL não pôde ser entendida."_s;
    case kErroTabela:
        return u"A tabela ou consulta não existe no banco de dados."_s;
    case kErroArmazem:
        break;
    }
    return u"Falha no banco de dados."_s;
}

ErroBD::ErroBD(NumeroErroBD numero) : ErroBD(numero, descriptionOf(numero)) { }

ErroBD::ErroBD(NumeroErroBD numero, const QString &descricao, const QString &origem)
    : ErroExecucao(numero, descricao), mOrigem(origem)
{ }

ErroBD::ErroBD(NumeroErroBD numero, EspecieFalha especie, const QString &descricao)
    : ErroExecucao(numero, descricao), mEspecie(especie)
{ }

} // namespace quorel
