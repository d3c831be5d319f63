#include "platform/aplicacao.h"

#include "platform/costuras.h"
#include "platform/erro.h"
#include "platform/fim.h"
#include "platform/preparo.h"

#include <QScopedValueRollback>

#include <exception>

namespace quorel {

using namespace Qt::StringLiterals;

void encerraPorFalha(const ErroExecucao &falha)
{
    static bool shown = false; // the box serves events, and one of them may fail again
    const bool again = shown;
    const QScopedValueRollback keep(shown, true);
    if (!again)
        caixa({.texto = QString::number(falha.numero()) + u' ' + falha.descricao(), .icone = Icone::Critico});
    encerraPrograma(1);
}

/// Before Qt starts; gives the argument back so that it can stand in the base's initialiser.
static int &prepared(int &argc)
{
    preparePlatform();
    return argc;
}

Aplicacao::Aplicacao(int &argc, char **argv) : QApplication(prepared(argc), argv)
{
    setQuitOnLastWindowClosed(false); // the end of the program has an order of its own
}

bool Aplicacao::notify(QObject *receiver, QEvent *event)
{
    constexpr int kOutOfMemory = 7;
    constexpr int kInternal = 51;
    try {
        return QApplication::notify(receiver, event);
    } catch (const ErroExecucao &falha) {
        encerraPorFalha(falha);
    } catch (const std::bad_alloc &) {
        encerraPorFalha(ErroExecucao(kOutOfMemory, u"Memória insuficiente"_s));
    } catch (const std::exception &failure) {
        encerraPorFalha(ErroExecucao(kInternal, u"Erro interno: "_s + QString::fromUtf8(failure.what())));
    }
}

} // namespace quorel
