#include "indice_literal.h"

#include "platform/erro.h"
#include "startup/texto_util.h"
#include "startup/valor.h"

namespace quorel::teste {

using namespace Qt::StringLiterals;

static const QString kLineEnd = u"\r\n"_s;

LeituraLiteral leituraLiteral(const QString &texto)
{
    LeituraLiteral leitura;
    const int roteiros = gTexto.ContaDelimitador(texto, u"[ROT<"_s, 0);
    try {
        for (int j = 1; j <= roteiros; ++j) {
            const QString n = QString::number(j);
            const QString head = gTexto.TextoAntes(texto, u"[<"_s + n + u">1]"_s, true);
            const QString section = gTexto.TextoDepois(head, u"[ROT<"_s + n + u">]"_s);
            const QString code = gTexto.TextoAntes(gTexto.TextoDepois(section, u"CODROT:"_s), kLineEnd, true);
            if (code.isEmpty() || code == u"0"_s)
                continue;
            leitura.roteiros.resize(std::size_t(j) + 1);
            const QString name = gTexto.TextoAntes(gTexto.TextoDepois(section, u"NomeRot ="_s), kLineEnd, true);
            const qint32 number = textoInteiro32(code);
            if (number != valorNumerico(code))
                throw ErroExecucao(kFalhaTipo); // a fraction
            leitura.roteiros[std::size_t(j)] = {number, name};
            leitura.linhas += code + u'\t' + name + kLineEnd;
        }
    } catch (const ErroExecucao &erro) {
        leitura.falha = erro.numero();
    }
    return leitura;
}

} // namespace quorel::teste
