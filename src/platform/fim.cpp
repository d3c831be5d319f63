#include "platform/fim.h"

#include "platform/costuras.h"
#include "platform/endereco.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <utility>
#include <vector>

namespace quorel {

static std::vector<std::function<void()>> &work()
{
    static std::vector<std::function<void()>> all;
    return all;
}

void encerraPrograma(int exitCode)
{
    for (const auto all = std::exchange(work(), {}); const auto &each : all) {
        try {
            each();
        } catch (const std::exception &) { // the end goes on, whatever fails in it
        }
    }
    leaveBus();
    std::fflush(nullptr);
    costuras().endProcess(exitCode);
    std::_Exit(exitCode);
}

void beforeEnd(std::function<void()> each)
{
    work().push_back(std::move(each));
}

void reiniciaFim()
{
    work().clear();
}

} // namespace quorel
