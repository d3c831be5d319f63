#include "catalogue/leitor_blocos.h"

#include "leitura_literal.h"
#include "support/suporte.h"
#include "support/table.h"
#include "textos_de_bloco.h"

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstLeitorBlocos : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void readsEveryField();
    void reads_data();
    void reads();
    void aCodeBeyond32BitsEndsTheReading();
    void damagedTextsReadAsTheLiteralSearchesDo();
    void damagedSizes_data();
    void damagedSizes();
    void overlappingTextsAreLimited();
    void textBetweenMarkers();
};

void TstLeitorBlocos::readsEveryField()
{
    const Bloco bloco = leBloco(blocoCerto(2, 11, 32));
    QCOMPARE(bloco.roteiros.upperBound(), 2);
    QCOMPARE(bloco.lidos, 2);
    QCOMPARE(bloco.roteiros[0], RoteiroRec());
    const RoteiroRec &r = bloco.roteiros[2];
    QCOMPARE(r.Cod, 1002);
    QCOMPARE((QStringList{r.Nome, r.Fig, r.Som, r.Desc, r.Nivel, r.Disc, r.Titulo}).join(u'|'),
        u"Roteiro 2|MA2|SO2|A água 2|F1|MA|Roteiro 2 - A água 2"_s);
    QCOMPARE(r.Aulas.upperBound(), 11);
    const QString linha = u"(1,1)211<SPÇ>1<SPÇ>As cores do céu (azul) e do mar."_s;
    QCOMPARE(r.Aulas[11], (AulaRec{u"211"_s, u"Aula 211"_s, linha, u"Zeto"_s, u"J211"_s}));
    QVERIFY_EXCEPTION_THROWN(bloco.roteiros[3], ErroExecucao);
    QVERIFY_EXCEPTION_THROWN(r.Aulas[-1], ErroExecucao);
}

/// "nome|cod|fig|titulo" of the Roteiros from 1, each followed by "cod|nome|linha|tipo|jogo" of its Aulas in brackets.
static QString outline(const Bloco &bloco)
{
    QStringList all;
    for (int i = 1; i <= bloco.roteiros.upperBound(); ++i) {
        const RoteiroRec &r = bloco.roteiros[i];
        all += QStringList{r.Nome, QString::number(r.Cod), r.Fig, r.Titulo}.join(u'|');
        for (int j = 1; r.Aulas.isDimensioned() && j <= r.Aulas.upperBound(); ++j) {
            const AulaRec &a = r.Aulas[j];
            all += u'[' + QStringList{a.Cod, a.Nome, a.Linha, a.Tipo, a.Jogo}.join(u'|') + u']';
        }
    }
    return all.join(u' ');
}

static QByteArray rot(const char *i, const char *nome)
{
    return QByteArray("[ROT<") + i + ">]\r\nNomeRot =" + nome + "\r\n";
}

static QByteArray aula(const char *ij, const char *nome)
{
    return QByteArray("\r\n[<") + ij + "]\r\nNome =" + nome + "\r\n";
}

void TstLeitorBlocos::reads_data()
{
    const QByteArray um = "rubbish [ROT<1>]", lesson = "[ROT<1>]\r\n[<1>1]\r\n";
    rows<QByteArray, QString>({
        {"a blank behind the = is part of the name", um + "NomeRot = A\r\n", " A|0|| A - "},
        {"CALC has no figure", um + "NomeRot =CALC\r\nCODROT:5\r\nFIG:X\r\n", "CALC|5||"},
        {"CALC with a blank before it is an ordinary Roteiro", um + "NomeRot = CALC\r\nFIG:X\r\n",
            " CALC|0|X| CALC - "},
        {"without a name the code is read all the same", um + "CODROT:7\r\nFIG:X\r\n", "|7|X| - "},
        {"the code stops at the first character that is no digit", um + "NomeRot =A\r\nCODROT: 12a\r\n", "A|12||A - "},
        {"largest code", um + "NomeRot =A\r\nCODROT:2147483647\r\n", "A|2147483647||A - "},
        {"a value without a line end is empty", um + "NomeRot =A\r\nFIG:X", "A|0||A - "},
        {"LF alone ends no value", um + "NomeRot =A\nFIG:X\n\r\n", "A\nFIG:X\n|0|X\n|A\nFIG:X\n - "},
        {"first occurrence counts, in any order", um + "FIG:X\r\nFIG:Y\r\nNomeRot =A\r\nNomeRot =B\r\n", "A|0|X|A - "},
        {"description trimmed of blanks, not of line ends", um + "NomeRot =A\r\n<DESC>  \r\nd  </DESC>",
            "A|0||A - \r\nd"},
        {"description without its end", um + "NomeRot =A\r\n<DESC>d", "A|0||A - "},

        {"Linha over several lines", lesson + "Linha =(1)5<SP\xC7>\r\nb\r\n\tTipo = Zeto\t\r\n",
            "|0|| -  [5||(1)5<SPÇ>\r\nb|Zeto|]"},
        {"Linha that never ends", lesson + "Linha =(1)5<SP\xC7>\r\nTipo = Zeto\t\r\n", "|0|| -  [0|||Zeto|]"},
        {"Tipo without a tab is empty", lesson + "Linha =(1)5<SP\xC7>\r\n\tTipo = Zeto\r\n",
            "|0|| -  [5||(1)5<SPÇ>||]"},
        {"Tipo with its tab on a later line is cut at the line", lesson + "Tipo = Calc\r\nx\t", "|0|| -  [0|||Calc|]"},
        {"a Linha without separator has code 0", lesson + "Linha =(1)5\r\n\tTipo = Zeto\t", "|0|| -  [0||(1)5|Zeto|]"},
        {"code without parenthesis is 0", lesson + "Linha =5<SP\xC7>\r\n\tTipo = Zeto\t", "|0|| -  [0||5<SPÇ>|Zeto|]"},
        {"code with leading zeros and letters", lesson + "Linha =(1) 007x<SP\xC7>\r\n\tTipo = \t",
            "|0|| -  [7||(1) 007x<SPÇ>||]"},
        {"Jogo ends at #", lesson + "Jogo = a\r\nb#c", "|0|| -  [0||||a\r\nb]"},
        {"Jogo without # is empty", lesson + "Jogo = a", "|0|| -  [0||||]"},
        {"NUL and bytes without a character are kept", lesson + QByteArray("Jogo = \0\x81\xff#", 11),
            QString(u"|0|| -  [0||||\0\u0081ÿ]"_s)},

        {"empty", "", ""},
        {"no section", "NomeRot =A\r\n", ""},
        {"1 and 3: 1 runs to the end, 2 is empty", rot("1", "A") + rot("3", "C") + aula("1>1", "a"),
            "A|0||A -  [0|a|||] |0||"},
        {"descending: each runs to the end", rot("2", "B") + rot("1", "A") + aula("2>1", "b"),
            "A|0||A -  B|0||B -  [0|b|||]"},
        {"the same number twice: the first counts", rot("1", "A") + rot("1", "X"), "A|0||A -  |0||"},
        {"leading zero is another number", rot("01", "A"), "|0||"},
        {"kept: the next section follows at once and its fields are read", "[ROT<1>]" + rot("2", "B"),
            "B|0||B -  B|0||B - "},
        {"marker at the very end", rot("1", "A") + "[ROT<2>]", "A|0||A -  |0||"},
        {"an Aula stands before its Roteiro", aula("1>1", "a") + rot("1", "A"), "A|0||A - "},
        {"kept: Aula 1 ends before Aula 20", rot("1", "A") + "[<1>1]\r\nx" + aula("1>20", "b") + "Nome =c\r\n",
            "A|0||A -  [0||||] [||||]"},
        {"kept: the next Aula follows at once and its fields are read", rot("1", "A") + "[<1>1]\r\n" + aula("1>2", "b"),
            "A|0||A -  [0|b|||] [0|b|||]"},
        {"a gap among the Aulas: the ones behind it are beyond the count",
            rot("1", "A") + aula("1>1", "a") + aula("1>3", "c"), "A|0||A -  [0|a|||] [||||]"},
        {"a mention of another Aula counts, so the last record is empty", rot("1", "A") + aula("1>1", "a") + "see [<1>",
            "A|0||A -  [0|a|||] [||||]"},
        {"Aula without a line end behind its bracket", rot("1", "A") + "[<1>1] Nome =a\r\n", "A|0||A -  [||||]"},
    });
}

void TstLeitorBlocos::reads()
{
    const auto [texto, read] = row<QByteArray, QString>();
    const Bloco bloco = leBloco(texto);
    QCOMPARE(outline(bloco), read);
    QCOMPARE(bloco.roteiros, leituraLiteral(texto));
}

void TstLeitorBlocos::aCodeBeyond32BitsEndsTheReading()
{
    const Bloco bloco =
        leBloco(rot("1", "A") + rot("2", "B") + "CODROT:2147483648\r\nFIG:X\r\n[<2>1]\r\nNome =b\r\n" + rot("3", "C"));
    QCOMPARE(bloco.lidos, 1);
    QCOMPARE(outline(bloco), u"A|0||A -  B|0|| |0||"_s);
}

void TstLeitorBlocos::damagedTextsReadAsTheLiteralSearchesDo()
{
    bool given = false;
    const int chosen = qEnvironmentVariableIntValue("QUOREL_SEED", &given);
    const unsigned seed = given ? unsigned(chosen) : std::random_device()();
    qInfo("QUOREL_SEED=%d", int(seed));
    Acaso acaso(seed);
    for (int n = 0; n < 6000; ++n) {
        const QByteArray texto = n % 2 == 0
            ? blocoConfuso(acaso)
            : estraga(acaso, blocoCerto(sorteia(acaso, 5), sorteia(acaso, 14), sorteia(acaso, 60)));
        const Bloco bloco = leBloco(texto);
        if (bloco.roteiros != leituraLiteral(texto))
            QFAIL(QByteArray(
                "text " + QByteArray::number(n) + " reads otherwise: " + texto.toPercentEncoding(" \r\n<>[]="))
                      .constData());
    }
}

// Sizes at which anything but one look at each byte would not come to an end within the test's time.
void TstLeitorBlocos::damagedSizes_data()
{
    const int many = 400000;
    QByteArray down, fields, aulas = "[ROT<1>]\r\n", same = aulas;
    for (int i = many; i > 0; --i) {
        const QByteArray n = QByteArray::number(i);
        down += "[ROT<" + n + ">]";
        fields += "[ROT<" + n + ">]FIG:SOM:DISC:";
        aulas += "\r\n[<1>" + n + "]\r\n";
        same += "[<1>1]\r\nLinha =Tipo = Jogo = ";
    }
    QByteArray binary(8 << 20, '\0');
    Acaso acaso(1);
    for (char &c : binary)
        c = char(acaso() & 0xff);
    const QByteArray whole = blocoCerto(16, 20, 2000);
    const QByteArray half = whole.left(whole.size() / 2);
    rows<QByteArray, qsizetype>({
        {"the opening alone", QByteArray("[ROT<").repeated(many), many},
        {"the first section over and over", QByteArray("[ROT<1>]NomeRot =").repeated(many), many},
        {"numbers in descending order", down, many},
        {"descending, values that never end", fields, many},
        {"one name at the end for all", down + "NomeRot =A\r\n", many},
        {"Aulas in descending order", aulas, 1},
        {"one Aula over and over", same, 1},
        {"brackets", QByteArray(8 << 20, '['), 0},
        {"line ends in a value", "[ROT<1>]NomeRot =" + QByteArray("\r\r").repeated(4 << 20), 1},
        {"binary", binary, binary.count("[ROT<")},
        {"cut in the middle", half, half.count("[ROT<")},
    });
}

void TstLeitorBlocos::damagedSizes()
{
    const auto [texto, roteiros] = row<QByteArray, qsizetype>();
    QCOMPARE(leBloco(texto).roteiros.upperBound(), roteiros);
}

void TstLeitorBlocos::overlappingTextsAreLimited()
{
    QByteArray texto;
    for (int i = 20000; i > 0; --i)
        texto += "[ROT<" + QByteArray::number(i) + ">]NomeRot =";
    texto += "\r\n";
    const Bloco bloco = leBloco(texto); // whole, the names would be several thousand times the text
    QCOMPARE(bloco.roteiros.upperBound(), 20000);
    QVERIFY(bloco.lidos > 1 && bloco.lidos < 2000);
    QCOMPARE(bloco.roteiros[2].Nome, u"[ROT<1>]NomeRot ="_s);
}

void TstLeitorBlocos::textBetweenMarkers()
{
    QCOMPARE(textoEntre("</OBJ><OBJ>\xE9</OBJ></OBJ>", "<OBJ>", "</OBJ>"), u"é"_s);
    QCOMPARE(textoEntre("<OBJ>a", "<OBJ>", "</OBJ>"), QString());
    QCOMPARE(textoEntre("a</OBJ>", "<OBJ>", "</OBJ>"), QString());
}

QTEST_GUILESS_MAIN(TstLeitorBlocos)
#include "tst_leitor_blocos.moc"
