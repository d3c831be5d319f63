#include "app/mensagens_no_terminal.h"

#include "lessons/espia.h"
#include "platform/costuras.h"
#include "platform/preparo.h"

#include <QRegularExpression>
#include <QTextStream>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace quorel {

bool takeMensagens(QString &linhaDeComando)
{
    static const QRegularExpression word(u"(^|\\s+)--mensagens(?=\\s|$)"_s);
    const qsizetype before = linhaDeComando.size();
    linhaDeComando.remove(word);
    return linhaDeComando.size() < before;
}

void mensagensNoTerminal()
{
    prepareTerminal();
    setEspia([](const Passagem &passagem) {
        QTextStream(stdout) << agora().toString(u"HH:mm:ss.zzz "_s) << textoDaPassagem(passagem) << Qt::endl;
    });
}

} // namespace quorel
