#include "platform/aplicacao.h"

#include "platform/costuras.h"
#include "platform/erro.h"
#include "platform/fim.h"
#include "platform/preparo.h"
#include "platform/pressfilter.h"
#include "platform/zoom.h"

#include <QScopedValueRollback>

#include <exception>
#include <new>

namespace quorel {

using namespace Qt::StringLiterals;

static ErroExecucao asRunTimeFailure(const std::exception &falha)
{
    constexpr int kOutOfMemory = 7;
    constexpr int kInternal = 51;
    if (const auto *own = dynamic_cast<const ErroExecucao *>(&falha))
        return {own->numero(), own->descricao()};
    if (dynamic_cast<const std::bad_alloc *>(&falha))
        return {kOutOfMemory, u"Memória insuficiente"_s};
    return {kInternal, u"Erro interno: "_s + QString::fromUtf8(falha.what())};
}

void encerraPorFalha(const std::exception &falha)
{
    static bool shown = false; // the box serves events, and one of them may fail again
    const bool again = shown;
    const QScopedValueRollback keep(shown, true);
    if (!again) {
        const ErroExecucao known = asRunTimeFailure(falha);
        caixa({.texto = QString::number(known.numero()) + u' ' + known.descricao()
                + u"\nO programa será fechado. Abra-o de novo."_s,
            .icone = Icone::Critico});
    }
    encerraPrograma(1);
}

/// Before Qt starts; gives the argument back so that it can stand in the base's initialiser.
static int &prepared(int &argc, const ZoomedStart &)
{
    preparePlatform();
    return argc;
}

Aplicacao::Aplicacao(int &argc, char **argv, int zoom)
    : QApplication(prepared(argc, ZoomedStart(zoom)), argv), mPresses(std::make_unique<PressFilter>())
{
    setQuitOnLastWindowClosed(false); // the end of the program has an order of its own
}

Aplicacao::~Aplicacao() = default;

bool Aplicacao::notify(QObject *receiver, QEvent *event)
{
    if (mPresses->drops(*receiver, *event))
        return true;
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception &falha) {
        encerraPorFalha(falha);
    }
}

} // namespace quorel
