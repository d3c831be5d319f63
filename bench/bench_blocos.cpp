// Reading a block file into Roteiros and Aulas, beside its floor: one memchr pass over the bytes and decoding them into
// one new text. Argument: size of the file in MB.

#include "catalogue/leitor_blocos.h"
#include "platform/codec.h"

#include <benchmark/benchmark.h>

#include <QByteArray>

#include <cstring>

using namespace quorel;

namespace {

constexpr qsizetype kMega = 1 << 20;
constexpr int kRoteiros = 16;
constexpr qsizetype kSmall = 400; // bytes of a Linha: an exercise of a few options
constexpr qsizetype kLarge = kMega;

/// A well-formed file of about that size, Roteiros of equal length.
QByteArray blockFile(qsizetype size, qsizetype linha)
{
    const QByteArray filling = QByteArray("As cores do c\xE9u e do mar<SP\xC7>").repeated(linha / 28 + 1).left(linha);
    QByteArray text = "<OBJ>Ler</OBJ>\r\n<TM>Fevereiro</TM>\r\n";
    text.reserve(size + linha + kMega);
    for (int i = 1; i <= kRoteiros; ++i) {
        const QByteArray n = QByteArray::number(i);
        text += "[ROT<" + n + ">]\r\nNomeRot =Roteiro " + n + "\r\nCODROT:" + n
            + "\r\nFIG:MA1\r\nSOM:SO1\r\n<DESC>Cores</DESC>\r\nNIVEL:F1\r\nDISC:MA\r\n";
        for (int j = 1; text.size() < size / kRoteiros * i; ++j) {
            text += "[<" + n + ">" + QByteArray::number(j) + "]\r\nNome =Aula\r\nLinha =(1,1)2610<SP\xC7>";
            text += filling;
            text += "\r\n\tTipo = Zeto\t1\r\n";
        }
    }
    return text;
}

void floorOf(benchmark::State &state, qsizetype linha)
{
    const QByteArray text = blockFile(state.range(0) * kMega, linha);
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::memchr(text.constData(), 1, std::size_t(text.size())));
        const QString decoded = decode1252(text);
        benchmark::DoNotOptimize(decoded.constData());
    }
    state.SetBytesProcessed(state.iterations() * text.size());
}

void reading(benchmark::State &state, qsizetype linha)
{
    const QByteArray text = blockFile(state.range(0) * kMega, linha);
    for (auto _ : state) {
        const Bloco bloco = leBloco(text);
        benchmark::DoNotOptimize(bloco.lidos);
    }
    state.SetBytesProcessed(state.iterations() * text.size());
}

/// Sections in descending order, so that each runs to the end of the file.
void overlapping(benchmark::State &state)
{
    QByteArray text;
    for (int i = int(state.range(0) * kMega / 26); i > 0; --i)
        text += "[ROT<" + QByteArray::number(i) + ">]FIG:SOM:DISC:";
    for (auto _ : state) {
        const Bloco bloco = leBloco(text);
        benchmark::DoNotOptimize(bloco.lidos);
    }
    state.SetBytesProcessed(state.iterations() * text.size());
}

void sizes(benchmark::internal::Benchmark *bench)
{
    bench->Arg(1)->Arg(4)->Arg(16)->Arg(64)->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK_CAPTURE(floorOf, manySmall, kSmall)->Apply(sizes);
BENCHMARK_CAPTURE(reading, manySmall, kSmall)->Apply(sizes);
BENCHMARK_CAPTURE(floorOf, fewLarge, kLarge)->Apply(sizes);
BENCHMARK_CAPTURE(reading, fewLarge, kLarge)->Apply(sizes);
BENCHMARK(overlapping)->Apply(sizes);

BENCHMARK_MAIN();
