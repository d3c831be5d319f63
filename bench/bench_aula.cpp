// ExecutaAula to a child program that is already running, beside the round trip of an empty message to the same child.
#include "catalogue/estado.h"
#include "lessons/andamento.h"
#include "lessons/executa_aula.h"
#include "lessons/gancho.h"
#include "lessons/vista_blocos.h"
#include "platform/caminho.h"
#include "platform/endereco.h"
#include "platform/preparo.h"
#include "platform/protocolo.h"
#include "startup/quorel_zeto.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace quorel;
using namespace Qt::StringLiterals;

struct Vista final : VistaBlocos
{
    void focusBlocos() override { }
    void unloadBlocos() override { }
    Janela handlePrincip() override { return janelaBlocos(); }
    Janela handleActive() override { return 0; }
};

static void runLesson()
{
    QString aula = u"NADA"_s;
    QString tipo = u"Zeto"_s;
    ExecutaAula(aula, tipo);
}

static void floorRoundTrip(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(sendCopyData(gJanelaZeto, janelaBlocos(), 4711, 1, QByteArrayView("", 1)));
}

static void lesson(benchmark::State &state)
{
    for (auto _ : state)
        runLesson();
}

BENCHMARK(floorRoundTrip)->Iterations(1000)->UseRealTime()->Repetitions(3);
BENCHMARK(lesson)->Iterations(1000)->UseRealTime()->Repetitions(3);

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    preparePlatform();
    QApplication app(argc, argv);
    QTemporaryDir dir;
    QFile::link(QStringLiteral(QUOREL_BIN "/filho_licao"), dir.filePath(u"Zeto.exe"_s));
    gConfig.SetaCFG("ZETO_EXE="_L1 + backslashPath(dir.path()) + "\r\n"_L1);
    Vista vista;
    setVistaBlocos(&vista);
    InstalaGancho(janelaBlocos());
    gRoteiros.dimension(1);
    gRotAtual = 1;
    runLesson();
    if (gJanelaZeto == 0)
        qFatal("the child program does not start");
    benchmark::RunSpecifiedBenchmarks();
    sendCopyData(gJanelaZeto, janelaBlocos(), MSG_SAI, 1, QByteArrayView("", 1));
    RemoveGancho();
    reiniciaLessons();
}
