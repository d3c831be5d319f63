// Checking a level's block files with their figures and sounds, beside its floor: reading the files and decoding them.
// 720 files of 100 KB: six years of twelve months in ten disciplines. The ratio of the two is what counts: at most 3.

#include "autoria/checker.h"
#include "catalogue/leitor_blocos.h"
#include "platform/caminho.h"
#include "platform/codec.h"
#include "startup/quorel_zeto.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QTemporaryDir>

#include <array>

using namespace quorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int kYears = 6;
constexpr int kMonths = 12;
constexpr qsizetype kSize = 100 << 10;
constexpr int kRoteiros = 12;
constexpr std::array kDisciplinas{"AV", "CI", "DE", "DI", "ED", "ES", "GE", "HI", "MA", "PO"};
constexpr int kFigures = 200;

void write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("can't write");
}

QByteArray figure(int n)
{
    return "F" + QByteArray::number(n % kFigures).rightJustified(5, '0'); // NOLINT(readability-magic-numbers)
}

/// A source of about that size, of the kinds that schools write most.
QByteArray source(int number)
{
    QByteArray text = "tema: Os bichos\nobjetivo: observar e contar.\n";
    int n = number;
    for (int i = 1; i <= kRoteiros; ++i) {
        text += "ROTEIRO " + QByteArray::number(number * kRoteiros + i) + " Animais\nfig: " + figure(++n) + "\n";
        while (text.size() < kSize / kRoteiros * i * 2 / 3) { // NOLINT(readability-magic-numbers): it grows by half
            n += 3; // NOLINT(readability-magic-numbers): figures
            text += "AULA Zeto escolha: Quem vive na água?\nfig: " + figure(n)
                + "\ntexto: Observe a figura com atenção e diga qual destes animais vive na água e respira nela.\n"
                  "- o cachorro @"
                + figure(n + 1) + "\n* o peixe-boi do rio @" + figure(n + 2)
                + "\n- a galinha\ndica: Ele tem nadadeiras, e a mãe leva o filhote ao lado.\n";
        }
        text += "AULA Zeto leia: Fim\ntexto: Muito bem!\n";
    }
    return text;
}

struct Level
{
    QTemporaryDir directory;
    QList<BlockFile> files;

    Level()
    {
        for (int n = 0; n < kFigures; ++n)
            write(directory.path() + u"/mm/Fig/F/"_s + QString::fromLatin1(figure(n)).at(4) + u'/'
                    + QString::fromLatin1(figure(n)) + u".GIF"_s,
                "GIF89a");
        int number = 0;
        for (int year = 0; year < kYears; ++year) {
            for (int month = 1; month <= kMonths; ++month) {
                for (const char *disciplina : kDisciplinas) {
                    const QString name = QString::asprintf("%02d%02d%sF1.edb", month, year, disciplina);
                    const QString path = directory.path() + u"/F1/"_s + name;
                    write(path, makeBlock(source(number++), {}, blockFile(path)).edb);
                }
            }
        }
        files = blockFilesOf(directory.path() + u"/F1"_s).value();
        gConfig.SetaCFG(u"ZETO_MM="_s + backslashPath(directory.path()) + u"\\mm\r\n"_s);
    }
};

const Level &level()
{
    static const Level one;
    return one;
}

void floorRead(benchmark::State &state)
{
    const Level &files = level();
    for (auto _ : state) {
        for (const BlockFile &file : files.files) {
            const QString decoded = decode1252(readWhole(file.path).value());
            benchmark::DoNotOptimize(decoded.constData());
        }
    }
}

/// As the shell does when a discipline is opened.
void parsing(benchmark::State &state)
{
    const Level &files = level();
    for (auto _ : state) {
        for (const BlockFile &file : files.files) {
            const Bloco bloco = leBloco(readWhole(file.path).value());
            benchmark::DoNotOptimize(bloco.lidos);
        }
    }
}

void checking(benchmark::State &state)
{
    const Level &files = level();
    std::size_t found = 0;
    for (auto _ : state) {
        Checker checker(true);
        found = 0;
        for (const BlockFile &file : files.files)
            found += checker.check(file, readWhole(file.path).value()).size();
    }
    state.counters["findings"] = double(found);
    qint64 bytes = 0;
    for (const BlockFile &file : files.files)
        bytes += QFileInfo(file.path).size();
    state.counters["MB"] = double(bytes >> 20); // NOLINT(readability-magic-numbers)
}

} // namespace

BENCHMARK(floorRead)->Unit(benchmark::kMillisecond);
BENCHMARK(parsing)->Unit(benchmark::kMillisecond);
BENCHMARK(checking)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
