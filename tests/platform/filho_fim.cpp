// A program that ends itself, for the tests of the end: tells on its output what ran, in order.
#include "platform/endereco.h"
#include "platform/fim.h"
#include "platform/janela.h"

#include <QApplication>
#include <QTimer>

#include <cstdio>
#include <stdexcept>

using namespace quorel;
using namespace Qt::StringLiterals;

static constexpr int kExitCode = 7;

int main(int argc, char **argv)
{
    const QApplication app(argc, argv);
    Endereco endereco;
    endereco.publish(u"Acaba"_s);
    const auto tell = [](const char *what) { std::fputs(what, stdout); };
    beforeEnd([&] { tell(findWindow(u"Acaba", false) == endereco.handle() ? "reachable," : "gone,"); });
    beforeEnd([] { throw std::runtime_error("passed over"); });
    beforeEnd([&] { tell("second,"); });
    std::atexit([] { std::fputs("handlers of the end,", stdout); });
    std::getchar();
    QTimer::singleShot(0, [&] {
        encerraPrograma(kExitCode);
        tell("returned,");
    });
    QApplication::exec();
    tell("left the loop,");
    return 0;
}
