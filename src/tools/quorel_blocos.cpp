#include "platform/preparo.h"
#include "tools/blocos_comando.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    quorel::prepareConsole();
    QCoreApplication app(argc, argv);
    QTextStream saida(stdout);
    QTextStream erros(stderr);
    return quorel::blocos::executa(QCoreApplication::arguments().sliced(1), saida, erros);
}
