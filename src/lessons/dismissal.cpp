#include "lessons/dismissal.h"

#include "lessons/andamento.h"
#include "lessons/gancho.h"
#include "lessons/mensagens.h"
#include "platform/endereco.h"
#include "platform/erro.h"
#include "platform/eventos.h"

#include <algorithm>
#include <chrono>
#include <vector>

namespace quorel {

namespace {

constexpr std::chrono::seconds kLimit{2}; // for all of them together
/// Looks, a few milliseconds apart, for which a child has to be out of sight: some hide before they send their answer.
constexpr int kLooks = 20;

struct Dismissed
{
    Janela janela = 0;
    bool wasSeen = false; ///< on the screen, when it was dismissed
    bool hasLeft = false; ///< sent MSG_SAI since
    int looks = 0; ///< in a row at which it was hidden or closed
};

struct Dismissal
{
    bool started = false;
    std::vector<Dismissed> children;
};

Dismissal &dismissal()
{
    static Dismissal current;
    return current;
}

bool isSettled(Dismissed &filho)
{
    if (filho.hasLeft)
        return true;
    const Presence presence = presenceOf(filho.janela);
    const bool away = presence == Presence::Withdrawn || (presence == Presence::Unseen && filho.wasSeen);
    filho.looks = away ? filho.looks + 1 : 0;
    return presence == Presence::Ended || filho.looks >= kLooks;
}

} // namespace

void despedeFilhos()
{
    dismissal().started = true;
    for (const Janela *filho : {&gJanelaZeto, &gJanelaLivros, &gJanelaCalc, &gJanelaVrel, &gJanelaDesenho}) {
        if (*filho != 0)
            dismissal().children.push_back({*filho, presenceOf(*filho) == Presence::Seen});
        ignora([&] { EnviaTexto(*filho, janelaBlocos(), MSG_SAI, QString()); });
    }
}

void waitForChildren()
{
    const HeldUserInput meanwhile; // a handler may run a turn of events
    releaseSenders();
    serveSendsUntil(
        [] {
            // No short cut: each look counts for every one of them.
            return std::ranges::count_if(dismissal().children, [](Dismissed &each) { return !isSettled(each); }) == 0;
        },
        kLimit);
}

bool childrenDismissed()
{
    return dismissal().started;
}

void noteDeparture(Janela remetente, quint32 codigo)
{
    for (Dismissed &each : dismissal().children)
        each.hasLeft = each.hasLeft || (codigo == MSG_SAI && sameProcess(each.janela, remetente));
}

void resetDismissal()
{
    dismissal() = {};
}

} // namespace quorel
