// Opening a discipline with 16 pictures in a media folder of 2,000 names, beside loading the same pictures from their
// paths.
#include "catalogue/catalogo.h"
#include "catalogue/estado.h"
#include "catalogue/vistas.h"
#include "lessons/vista_blocos.h"
#include "platform/caminho.h"
#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/fprincip.h"
#include "shell/janelas.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPixmap>
#include <QPixmapCache>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace quorel;
using namespace Qt::StringLiterals;

static constexpr int kPictures = 16;
static constexpr int kNames = 2000;
static constexpr int kSide = 200; // pixels
static constexpr qint16 kMatematica = 9;

static QString name(int n)
{
    return u"figu%1"_s.arg(n, 4, 10, QLatin1Char('0'));
}

static QString pathOf(const QString &root, int n)
{
    return root + "/zeto_mm/Fig/f/"_L1 + name(n).at(4) + u'/' + name(n) + ".GIF"_L1;
}

static void write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(path.section(u'/', 0, -2));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s", qPrintable(path));
}

static void layOut(const QString &root)
{
    for (int n = 0; n < kNames; ++n)
        write(pathOf(root, n), "x");
    QByteArray block = "<TM>Tema</TM>\r\n<OBJ>Objetivo</OBJ>\r\n";
    for (int n = 0; n < kPictures; ++n) {
        QImage image(kSide, kSide, QImage::Format_RGB32);
        for (int y = 0; y < kSide; ++y)
            for (int x = 0; x < kSide; ++x)
                image.setPixel(x, y, qRgb(x * n, y + n, x * y));
        image.save(pathOf(root, n), "PNG");
        block += u"[ROT<%1>]\r\nNomeRot =Roteiro\r\nCODROT:%1\r\nFIG:%2\r\nSOM:\r\n<DESC></DESC>\r\nNIVEL:F1\r\n"
                 "DISC:MA\r\n[<%1>1]\r\nNome =Aula\r\nLinha =(1,1)\r\n\tTipo = Zeto\t\r\n"_s.arg(n + 1)
                     .arg(name(n))
                     .toLatin1();
    }
    write(root + "/DBBLOCOS/F1/0124MAF1.EDB"_L1, block);
}

static QString gRoot;

static void floorLoading(benchmark::State &state)
{
    for (auto _ : state) {
        QPixmapCache::clear();
        for (int n = 0; n < kPictures; ++n) {
            const QPixmap picture(pathOf(gRoot, n));
            if (picture.isNull())
                qFatal("no picture");
            benchmark::DoNotOptimize(picture.width());
        }
    }
}

static void opening(benchmark::State &state)
{
    for (auto _ : state) {
        QPixmapCache::clear();
        AbreDisciplina(1, kMatematica);
    }
    if (gRoteiros[kPictures].Nome.isEmpty())
        qFatal("not read");
}

BENCHMARK(floorLoading)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(opening)->Unit(benchmark::kMillisecond)->Repetitions(5);

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    QApplication app(argc, argv);
    const QTemporaryDir dir;
    gRoot = dir.path();
    layOut(gRoot);
    const QString root = backslashPath(gRoot);
    gConfig.SetaCFG("ZETO_MM=%1\\zeto_mm\r\nDBBLOCOS=%1\\DBBLOCOS\r\n"_L1.arg(root));
    gNivel = u"F1"_s;
    Janelas janelas;
    usaVistas({&janelas.blocos(), &janelas.blocos(), &janelas.painel()});
    setVistaBlocos(&janelas.blocos());
    MontaCatalogo();
    janelas.blocos().carrega();
    janelas.principal().mostra();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
