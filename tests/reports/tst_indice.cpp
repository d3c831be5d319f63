#include "reports/indice.h"

#include "../catalogue/textos_de_bloco.h"
#include "platform/caminho.h"
#include "platform/codec.h"
#include "platform/sistema.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "startup/texto_util.h"
#include "startup/valor.h"
#include "support/suporte.h"

#include <QDir>
#include <QTemporaryDir>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstIndice : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void fileNames_data();
    void fileNames();
    void gapsStayGaps();
    void aCodeThatIsNoIntegerEndsTheFile_data();
    void aCodeThatIsNoIntegerEndsTheFile();
    void damagedTextsAreReadAsTheLiteralSearchesDo();
    void overlappingHeadsAreLimited();
    void aDirectoryWithBrokenFiles();
    void theFallbackDirectory();
    void looksUp_data();
    void looksUp();
    void aSecondIndexingBringsTheFirstLine();

private:
    void write(const QString &nome, const QByteArray &bytes) { escreve(mDir->filePath(u"DB/"_s + nome), bytes); }
    std::unique_ptr<QTemporaryDir> mDir;
};

void TstIndice::init()
{
    failOnWarnings();
    reiniciaReports();
    mDir = std::make_unique<QTemporaryDir>();
    gConfig = Quorel_Zeto();
    gConfig.SetaCFG(u"[zeto]\r\nDBBLOCOS="_s + barras(mDir->path()) + u"\\DB"_s);
}

static QByteArray roteiro(int j, const QByteArray &codigo, const QByteArray &nome)
{
    const QByteArray n = QByteArray::number(j);
    return "[ROT<" + n + ">]\r\nNomeRot =" + nome + "\r\nCODROT:" + codigo + "\r\n[<" + n + ">1]\r\nNome =Aula\r\n";
}

/// Indexes one file. @return the number of the failure, 0 for none
static int indexed(QByteArrayView texto, const QString &arquivo)
{
    return failureOf([&] { InsereVet(texto, arquivo); });
}

void TstIndice::fileNames_data()
{
    QTest::addColumn<QString>("arquivo");
    QTest::addColumn<BlocoArqRec>("expected");
    QTest::addColumn<int>("falha"); // after the name's fields that stand there
    const auto add = [](const char *name, const QString &arquivo, const BlocoArqRec &expected, int falha = 0) {
        QTest::newRow(name) << arquivo << expected << falha;
    };
    const QString desenv = u"Desenvolvimento Sensório Motor"_s;
    add("as the catalogue names it", "0302CIF1.edb", {2, "Ciências", "F1", 3, {}});
    add("the level stays as written, the code in any case", "1299def4.EDB", {99, desenv, "f4", 12, {}});
    add("the rest counts from the last point", "07.b.01MAI2.edb", {1, "Matemática", "I2", 7, {}});
    add("a discipline by its number", "010210F1.edb", {2, "Português", "F1", 1, {}});
    add("a discipline without a string of its own", "0102HIF1.edb", {2, "História", "F1", 1, {}});
    add("unknown discipline", "0102XXF1.edb", {2, {}, "F1", 1, {}});
    add("without a point", "0102CIF1", {2, "Ciências", "F1", 1, {}});
    add("no month", "abCDEFGH.edb", {}, kFalhaTipo);
    add("no year", "01xxCIF1.edb", {0, "Ciências", "F1", 1, {}}, kFalhaTipo);
    add("too short for a year", "01F1.edb", {0, {}, "F1", 1, {}}, kFalhaTipo);
    add("nothing but the ending", ".edb", {}, kFalhaTipo);
}

void TstIndice::fileNames()
{
    QFETCH(QString, arquivo);
    QFETCH(BlocoArqRec, expected);
    QFETCH(int, falha);
    QCOMPARE(indexed(roteiro(1, "5", " \xC1gua"), arquivo), falha);
    if (falha == 0)
        expected.Roteiros = {{}, {5, u" Água"_s}};
    QCOMPARE(gBlocosArq, (std::vector<BlocoArqRec>{{}, expected}));
    const QStringList nomes{u"Ciências"_s, u"Matemática"_s, u"Português"_s, u"Desenvolvimento Sensório Motor"_s};
    QStringList linhas(4);
    if (const qsizetype place = nomes.indexOf(expected.Disciplina); place >= 0 && falha == 0)
        linhas[place] = u"5\t Água\r\n"_s;
    QCOMPARE((QStringList{gRotCiencias, gRotMatematica, gRotPortugues, gRotDesenv}), linhas);
}

void TstIndice::gapsStayGaps()
{
    const QByteArray texto = roteiro(1, "0", "zero") + roteiro(2, "", "none")
        + "[ROT<3>]\r\nNomeRot =no lesson\r\nCODROT:3\r\n" + roteiro(4, "7", "four")
        + "[ROT<5>]\r\nCODROT:8\r\n[<5>1]"
          "[<6>1][ROT<6>]NomeRot =lesson before the head\r\nCODROT:9\r\n"
          "[ROT<7>]NomeRot =no line end\r\nCODROT:9[<7>1]\r\n";
    InsereVet(texto, u"0102CIF1.edb"_s);
    QCOMPARE(gBlocosArq[1].Roteiros, (std::vector<RoteiroArqRec>{{}, {}, {}, {}, {7, u"four"_s}, {8, QString()}}));
    QCOMPARE(gRotCiencias, u"7\tfour\r\n8\t\r\n"_s);
}

void TstIndice::aCodeThatIsNoIntegerEndsTheFile_data()
{
    QTest::addColumn<QByteArray>("codigo");
    QTest::addColumn<int>("falha"); // 0: none
    QTest::newRow("a word") << QByteArray("x") << int(kFalhaTipo);
    QTest::newRow("a word behind the number") << QByteArray("12a") << int(kFalhaTipo);
    QTest::newRow("a fraction") << QByteArray("12.5") << int(kFalhaTipo);
    QTest::newRow("a blank alone") << QByteArray(" ") << int(kFalhaTipo);
    QTest::newRow("beyond 32 bits") << QByteArray("2147483648") << int(kFalhaEstouro);
    QTest::newRow("blanks around it, as text of the line") << QByteArray(" 12 ") << 0;
    QTest::newRow("a zero before it") << QByteArray("00") << 0;
    QTest::newRow("below 0") << QByteArray("-2147483648") << 0;
}

void TstIndice::aCodeThatIsNoIntegerEndsTheFile()
{
    QFETCH(QByteArray, codigo);
    QFETCH(int, falha);
    const QByteArray texto = roteiro(1, "1", "A") + roteiro(2, codigo, "B") + roteiro(3, "3", "C");
    QCOMPARE(indexed(texto, u"0102POF1.edb"_s), falha);
    const QString rest = QString::fromLatin1(codigo) + u"\tB\r\n3\tC\r\n"_s;
    QCOMPARE(gRotPortugues, u"1\tA\r\n"_s + (falha == 0 ? rest : QString()));
    QCOMPARE(gBlocosArq[1].Roteiros.size(), std::size_t(falha == 0 ? 4 : 3));
    if (falha != 0)
        QCOMPARE(gBlocosArq[1].Roteiros[2], RoteiroArqRec());
}

/// One block file read as it is told: one search of the text after the other. Slow, and short enough to be checked by
/// eye; the index must come out the same.
struct LeituraLiteral
{
    explicit LeituraLiteral(const QString &texto)
    {
        const QString lineEnd = u"\r\n"_s;
        const int heads = gTexto.ContaDelimitador(texto, u"[ROT<"_s, 0);
        for (int j = 1; j <= heads && falha == 0; ++j) {
            const QString n = QString::number(j);
            const QString head = gTexto.TextoAntes(texto, u"[<"_s + n + u">1]"_s, true);
            const QString section = gTexto.TextoDepois(head, u"[ROT<"_s + n + u">]"_s);
            const QString code = gTexto.TextoAntes(gTexto.TextoDepois(section, u"CODROT:"_s), lineEnd, true);
            if (code.isEmpty() || code == u"0"_s)
                continue;
            roteiros.resize(std::size_t(j) + 1);
            const QString name = gTexto.TextoAntes(gTexto.TextoDepois(section, u"NomeRot ="_s), lineEnd, true);
            qint32 number = 0;
            falha = failureOf([&] { number = textoInteiro32(code); });
            if (falha == 0 && number != valorNumerico(code))
                falha = kFalhaTipo; // a fraction
            if (falha != 0)
                continue;
            roteiros.back() = {number, name};
            linhas += code + u'\t' + name + lineEnd;
        }
    }

    std::vector<RoteiroArqRec> roteiros;
    QString linhas; ///< that the file adds to the index string of its discipline
    int falha = 0; ///< number of the failure that ended it; 0 for none
};

/// Markers of heads, numbers and rubbish in no order.
static QByteArray confusedHeads(Acaso &acaso)
{
    static const std::vector<QByteArray> pieces{"[ROT<", "[ROT<1>]", "[ROT<2>]", "[ROT<3>]\r\n", "[ROT<4>]",
        "[ROT<02>]", "[<1>1]", "[<1>10]", "[<1>2]", "[<2>1]", "[<3>1]\r\n", "[<4>1]", "[<02>1]", "[[<2>1]",
        "CODROT:", "CODROT:0\r\n", "CODROT:17\r\n", "CODROT: 8\r\n", "CODROT:5\r", "NomeRot =", "NomeRot = Ler\r\n",
        "\r\n", "\r", "\n", "\t", "9", "0", "."};
    QByteArray texto;
    for (int n = 1 + sorteia(acaso, 60); n > 0; --n)
        texto += pieces[std::size_t(sorteia(acaso, int(pieces.size())))];
    return texto;
}

void TstIndice::damagedTextsAreReadAsTheLiteralSearchesDo()
{
    const auto seed = std::random_device()();
    qInfo("seed %u", seed);
    Acaso acaso(seed);
    int lines = 0;
    int failures = 0;
    constexpr int kTexts = 6000;
    for (int i = 0; i < kTexts; ++i) {
        QByteArray texto =
            i % 2 == 0 ? confusedHeads(acaso) : estraga(acaso, blocoCerto(1 + sorteia(acaso, 12), 2, 40));
        if (i % 3 == 0)
            texto = estraga(acaso, texto);
        reiniciaReports();
        const LeituraLiteral expected(decode1252(texto));
        const int falha = indexed(texto, u"0102CIF1.edb"_s);
        if (falha != expected.falha || gRotCiencias != expected.linhas || gBlocosArq[1].Roteiros != expected.roteiros)
            QFAIL(qPrintable(u"differs for: "_s + QString::fromLatin1(texto.toPercentEncoding(" []<>:="))));
        lines += int(expected.linhas.count(u"\r\n"_s));
        failures += falha != 0;
    }
    qInfo("%d lines, %d failures", lines, failures);
    QVERIFY(lines > kTexts);
    QVERIFY(failures > kTexts / 100);
}

void TstIndice::overlappingHeadsAreLimited()
{
    constexpr int kHeads = 20000;
    QByteArray texto;
    for (int j = 1; j <= kHeads; ++j)
        texto += "[ROT<" + QByteArray::number(j) + ">]";
    texto += "CODROT:5\r\nNomeRot =" + QByteArray(200000, 'x') + "\r\n";
    for (int j = 1; j <= kHeads; ++j)
        texto += "[<" + QByteArray::number(j) + ">1]";
    QCOMPARE(indexed(texto, u"0102CIF1.edb"_s), int(kFalhaEstouro));
    QVERIFY(gRotCiencias.size() < 10 * texto.size());
    QVERIFY(gRotCiencias.startsWith(u"5\txxx"_s));
}

void TstIndice::aDirectoryWithBrokenFiles()
{
    write(u"I1/0102MAI1.edb"_s, roteiro(1, "60", "in I1"));
    write(u"F2/0102MAF2.edb"_s, roteiro(1, "50", "in F2"));
    write(u"F1/0202maf1.EDB"_s, roteiro(1, "20", "second name"));
    write(u"F1/0102MAF1.edb"_s, roteiro(1, "10", "first name"));
    write(u"F1/0302MAF1.edb"_s, QByteArray());
    write(u"F1/0402MAF1.edb"_s, QByteArray(5000, '\0') + "[ROT<[ROT<1>][<1>1]");
    write(u"F1/0502MAF1.txt"_s, roteiro(1, "99", "no block"));
    write(u"F5/0102MAF5.edb"_s, roteiro(1, "99", "no level of the reports"));
    QDir().mkpath(mDir->filePath(u"DB/F1/0602MAF1.edb"_s)); // a directory of that name
    indexaBlocos();
    QCOMPARE(gRotMatematica, u"10\tfirst name\r\n20\tsecond name\r\n50\tin F2\r\n60\tin I1\r\n"_s);
    QCOMPARE(gBlocosArq.size(), std::size_t(7)); // the empty element and six files
    QCOMPARE(gBlocosArq[2].Mes, qint16(2));
    QCOMPARE(gBlocosArq[3].Roteiros, std::vector<RoteiroArqRec>());
}

void TstIndice::theFallbackDirectory()
{
    gConfig.SetaCFG(QString());
    const QString blocks = nativePath(windowsDirectory()) + u"/QUOREL2001/DBBLOCOS/F3"_s;
    escreve(blocks + u"/0102CIF3.edb"_s, roteiro(1, "10", "A"));
    indexaBlocos();
    QDir(blocks).removeRecursively();
    QCOMPARE(gRotCiencias, u"10\tA\r\n"_s);
}

void TstIndice::looksUp_data()
{
    QTest::addColumn<qint32>("codigo");
    QTest::addColumn<QString>("expected"); // "-" for none
    QTest::newRow("the first line of a string is not found") << 1 << "-";
    QTest::newRow("the second is") << 2 << "0 dois";
    QTest::newRow("first lines are not found in any string") << 31 << "-";
    QTest::newRow("in two strings: the first in the order of search, Português before Matemática") << 5 << "2 cinco P";
    QTest::newRow("twice in one string: its first line") << 6 << "1 seis";
    QTest::newRow("a first line in one string, a later one in another") << 21 << "1 vinte e um";
    QTest::newRow("Desenv comes last") << 7 << "3 \tsete";
    QTest::newRow("a zero before the number") << 8 << "-";
    QTest::newRow("a blank, a plus before the number, a letter behind it") << 9 << "-";
    QTest::newRow("a lone CR or LF begins no line, and ends no name") << 11 << "1 onze\n12\tx\r13\ty";
    QTest::newRow("no tab behind the number") << 14 << "-";
    QTest::newRow("a number beyond 32 bits, of which it is the low ones") << 16 << "-";
    QTest::newRow("the end of the string ends no line") << 15 << "1 ";
    QTest::newRow("0") << 0 << "-";
    QTest::newRow("below 0") << -4 << "-";
    QTest::newRow("the largest") << 2147483647 << "3 ";
}

void TstIndice::looksUp()
{
    QFETCH(qint32, codigo);
    QFETCH(QString, expected);
    gRotCiencias = u"1\tum\r\n2\tdois\r\n"_s;
    gRotMatematica =
        u"31\tx\r\n5\tcinco M\r\n6\tseis\r\n6\tseis outra vez\r\n21\tvinte e um\r\n08\toito\r\n"
        "+9\tx\r\n 9\tx\r\n9a\tx\r\n11\tonze\n12\tx\r13\ty\r\n14\r\n4294967312\tx\r\n42949672976\tx\r\n15\tsem fim"_s;
    gRotPortugues = u"21\ty\r\n5\tcinco P\r\n-4\tmenos\r\n0\tzero\r\n"_s;
    gRotDesenv = u"41\tz\r\n6\tseis D\r\n7\t\tsete\r\n2147483647\t\r\n"_s;
    const IndiceRoteiros indice;
    const auto achado = indice.procura(codigo);
    QCOMPARE(achado ? QString::number(int(achado->disciplina)) + u' ' + achado->nome.toString() : u"-"_s, expected);
}

void TstIndice::aSecondIndexingBringsTheFirstLine()
{
    write(u"F1/0102CIF1.edb"_s, roteiro(1, "10", "A") + roteiro(2, "11", "B"));
    indexaBlocos();
    QVERIFY(!IndiceRoteiros().procura(10));
    gBlocosArq.assign(1, {}); // as the window's next load does
    indexaBlocos();
    QCOMPARE(gRotCiencias, u"10\tA\r\n11\tB\r\n10\tA\r\n11\tB\r\n"_s);
    QVERIFY(IndiceRoteiros().procura(10));
    QCOMPARE(gBlocosArq.size(), std::size_t(2));
}

QTEST_GUILESS_MAIN(TstIndice)
#include "tst_indice.moc"
