#include "autoria/bncc.h"
#include "autoria/checker.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"
#include "support/table.h"

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstVerifica final : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void findsInABlock_data();
    void findsInABlock();
    void findsAcrossFiles();
    void findsAtTheLinesOfTheSource_data();
    void findsAtTheLinesOfTheSource();
    void knowsTheFormOfSkills_data();
    void knowsTheFormOfSkills();
};

/// Findings as "line:column severity code", in their order.
static QString told(const Findings &findings)
{
    QStringList all;
    for (const Finding &f : findings)
        all += gnuLine(f).section(u':', 1, 2) + gnuLine(f).section(u':', 3, 3) + u' ' + f.code;
    return all.join(u"; "_s);
}

static const QByteArray kLinha =
    "(1,1)11<SP\xC7>2<SP\xC7>1<SP\xC7>0<SP\xC7>0<SP\xC7>0<SP\xC7>0<SP\xC7>t<SP\xC7>x<SP\xC7>"
    "<SP\xC7>FIGU<SP\xC7>SO<SP\xC7><P\xC7><VAA>(1)11\t1\t1\t1\t0\t0\t\tbem\tdica<VOA>(2)1\ta\t1"
    "\t\t\t\t\t\t<OP>2\tb\t0\t\t\t\t\t\tFIGO<VCM><CM>";
static const QByteArray kPage = "\tNome =fim\r\n\tLinha =(1,1)12<SP\xC7>1\r\n\tTipo = Zeto\t1\r\n";
static const QByteArray kBlock =
    "<OBJ>o</OBJ>\r\n<TM>t</TM>\r\n[ROT<1>]\r\nNomeRot =A\r\nCODROT:5\r\n<DESC>d</DESC>\r\n"
    "NIVEL:F1\r\nDISC:Matem\xE1tica\r\nBNCC:EF02MA06\r\n[<1>1]\r\n\tNome =a\r\n\tLinha ="
    + kLinha + "\r\n\tTipo = Zeto\t1\r\n\r\n[<1>2]\r\n" + kPage;

/// The block without a fault, but for one piece.
static QByteArray with(const QByteArray &piece, const QByteArray &other)
{
    return QByteArray(kBlock).replace(piece, other);
}

/// A finding, and what stands where it is.
using Expected = QList<std::pair<QString, QByteArray>>;

void TstVerifica::findsInABlock_data()
{
    const QByteArray order = with("11<SP\xC7>2<SP\xC7>", "11<SP\xC7>5<SP\xC7>");
    const QByteArray exercise =
        "\tNome =f\r\n\tLinha =" + QByteArray(kLinha).replace("11", "12") + "\r\n\tTipo = Zeto\t1\r\n";
    const QString name = u"0226MA"_s;
    rows<QString, QByteArray, Expected>({
        {"nothing", name, kBlock, {}},
        {"empty", name, "", {{u"1:1 erro vazio"_s, ""}}},
        {"a mark of UTF-8", name, "\xEF\xBB\xBF" + kBlock, {{u"1:1 aviso bom"_s, ""}}},
        {"UTF-8", name, QString::fromLatin1(kBlock).toUtf8(), {{u"8:11 erro utf8"_s, "\xC3\xA1tica"}}},
        {"LF everywhere", name, with("\r\n", "\n"), {{u"1:13 erro lf"_s, "\n"}}},
        {"month 13", u"1326MA"_s, kBlock, {{u"1:1 nota mes"_s, ""}}},
        {"another discipline", u"0226PO"_s, kBlock, {{u"8:6 nota disc"_s, "Matem"}}},
        {"another level", name, with("L:F1", "L:F2"), {{u"7:7 nota nivel"_s, "F2"}}},
        {"no objective", name, with("<OBJ>o", "<OBJ> "), {{u"1:1 aviso sem-objetivo"_s, "<OBJ>"}}},
        {"no theme", name, with("<TM>t</TM>", ""), {{u"1:1 aviso sem-tema"_s, ""}}},
        {"description without end", name, with("</DESC>", ""), {{u"6:1 erro desc"_s, "<DESC>"}}},
        {"a skill of another form", name, with("MA06", "MA6"), {{u"9:6 aviso bncc"_s, "EF02"}}},
        {"a skill in brackets", name, with("<DESC>d", "<DESC>d [EF2MA06]"), {{u"6:9 aviso bncc"_s, "[EF2"}}},
        {"figures and sound", u"midia"_s, kBlock,
            {{u"12:74 aviso figura"_s, "FIGU"}, {u"12:83 aviso som"_s, "SO<"}, {u"12:158 aviso figura"_s, "FIGO"}}},
        {"no right option", name, with("a\t1", "a\t0"), {{u"12:129 erro sem-certa"_s, "(2)"}}},
        {"two right options", name, with("b\t0", "b\t1"), {{u"12:129 nota varias-certas"_s, "(2)"}}},
        {"number of options", name, with("(2)", "(3)"), {{u"12:129 aviso contagem"_s, "(3)"}}},
        {"number of pages", name, with("(1,1)11", "(1,2)11"), {{u"12:9 aviso contagem"_s, "(1,2)"}}},
        {"unknown kind", name, with("11<SP\xC7>2", "11<SP\xC7>9"), {{u"12:21 nota tipo"_s, "9"}}},
        {"a mark without its letter", name, with("t<SP\xC7>x", "t<SPC>x"), {{u"12:58 erro marca"_s, "<SPC>"}}},
        {"blanks for tabs in options", name, with("1\ta\t1\t\t\t\t\t\t", "1   a   1"),
            {{u"12:132 erro tabulacao"_s, "1   a"}}},
        {"blanks for tabs in answers", name, with("11\t1\t1\t1\t0\t0\t\tbem\tdica", "11  1  1  1"),
            {{u"12:102 erro tabulacao"_s, "11  1"}}},
        {"no expected answer", name, with("11<SP\xC7>2", "11<SP\xC7>4"), {{u"12:115 erro sem-resposta"_s, "\tbem"}}},
        {"no options", name, with("<VOA>", ""), {{u"12:102 erro sem-voa"_s, "11\t1"}}},
        {"no answers", name, with("<VAA>", ""), {{u"12:166 erro sem-vaa"_s, "\r\n\tTipo"}}},
        {"places", name, order, {{u"12:129 erro ordem"_s, "(2)"}}},
        {"places in their order", name, QByteArray(order).replace("b\t0", "b\t2"),
            {{u"12:129 aviso ja-em-ordem"_s, "(2)"}}},
        {"a last exercise", name, with(kPage, exercise), {{u"15:1 aviso ultima"_s, "[<1>2]"}}},
        {"an Aula's code twice", name, with(")12<", ")11<"), {{u"17:14 aviso codigo-repetido"_s, "11<SP\xC7>1\r"}}},
        {"an unknown program", name, with("= Zeto\t1\r\n\r\n", "= zeto\t1\r\n\r\n"),
            {{u"13:9 erro programa"_s, "zeto"}}},
    });
}

void TstVerifica::findsInABlock()
{
    const auto [name, edb, expected] = row<QString, QByteArray, Expected>();
    const bool media = name == u"midia"_s;
    gConfig = Quorel_Zeto();
    Checker checker(media);
    const BlockFile file = blockFile(u"F1/"_s + (media ? u"0226MA"_s : name) + u"F1.edb"_s);
    const Findings findings = checker.check(file, edb);
    QStringList codes;
    for (const auto &[code, where] : expected)
        codes += code;
    QCOMPARE(told(findings), codes.join(u"; "_s));
    for (qsizetype n = 0; n < expected.size(); ++n) {
        const Place place = findings[std::size_t(n)].place;
        qsizetype at = place.column - 1;
        for (int line = 1; line < place.line; ++line)
            at += edb.indexOf('\n', at - place.column + 1) + 1 - (at - place.column + 1);
        QVERIFY2(edb.sliced(at).startsWith(expected[n].second), edb.sliced(at));
    }
}

void TstVerifica::findsAcrossFiles()
{
    Checker checker(false);
    QCOMPARE(told(checker.check(blockFile(u"F1/0226MAF1.edb"_s), kBlock)), QString());
    const QByteArray other = with("<TM>t", "<TM>u").replace("DISC:Matem\xE1tica", "DISC:");
    const Findings findings = checker.check(blockFile(u"F1/0226POF1.edb"_s), other);
    QCOMPARE(told(findings), u"2:1 aviso tema; 5:8 erro codigo-repetido"_s);
    QVERIFY(findings[0].text.contains(u"F1/0226MAF1.edb:2"_s) && findings[1].text.contains(u"F1/0226MAF1.edb:5"_s));
    // Another level's month, and another month.
    QCOMPARE(told(checker.check(
                 blockFile(u"I1/0226MAI1.edb"_s), QByteArray(other).replace("T:5", "T:6").replace("L:F1", "L:I1"))),
        QString());
    QCOMPARE(told(checker.check(blockFile(u"F1/0326POF1.edb"_s), QByteArray(other).replace("T:5", "T:7"))), QString());
}

void TstVerifica::findsAtTheLinesOfTheSource_data()
{
    const QByteArray end = "AULA Zeto leia: fim\n";
    rows<QByteArray, QString>({
        {"no right option", "AULA Zeto escolha: a\n- b\n" + end, u"5:1 erro sem-certa"_s},
        {"no expected answer", "AULA Zeto escreva: a\ntexto: b\n" + end, u"5:1 erro sem-resposta"_s},
        {"an empty option", "AULA Zeto escolha: a\n* b\n-\n" + end, u"5:1 aviso opcao-vazia"_s},
        {"a figure and a sound", "AULA Zeto leia: a\n# nada\n fig: nunca\nfig:  FIGU\nsom: SO\n" + end,
            u"5:18 erro quebra; 8:7 aviso figura; 9:6 aviso som"_s},
        {"figures", "AULA Zeto escolha: a\nfig:  FIGU\n* b @FIGO\n" + end, u"6:7 aviso figura; 7:6 aviso figura"_s},
        {"a last exercise", "AULA Zeto escolha: a\n* b\n", u"5:1 aviso ultima"_s},
        {"a skill", "bncc: EF2\n" + end, u"5:7 aviso bncc"_s},
        {"a code twice", end + "cod: 9\n" + end + "cod: 9\n", u"8:6 aviso codigo-repetido"_s},
        {"in a raw block, whose columns count what its escapes mean",
            "CRU\n|[<1>1]\n|\\tNome =a\n|\\tLinha =(1,1)x<SPÇ>1\n|\\tTipo = Zeto\\t1\n" + end, u"8:15 erro codigo"_s},
        {"called Aula", "AULA Calc: a\nchama: 77\n" + end, u"6:8 erro chama"_s},
    });
}

void TstVerifica::findsAtTheLinesOfTheSource()
{
    const auto [lines, expected] = row<QByteArray, QString>();
    const QByteArray source = "tema: t\nobjetivo: o\n\nROTEIRO 3 r\n" + lines;
    const BlockFile file = blockFile(u"F1/0226MAF1.edb"_s);
    gConfig = Quorel_Zeto();
    Checker checker(true);
    QCOMPARE(told(checker.check(makeBlock(source, u"f.txt"_s, file), file, u"f.txt"_s)), expected);
}

void TstVerifica::knowsTheFormOfSkills_data()
{
    rows<QString, QString, QString>({
        {"list", u"EF02MA06, ef15lp01;EI03EO01 EM13MAT101 EM13LP01"_s, {},
            u"EF02MA06 EF15LP01 EI03EO01 EM13MAT101 EM13LP01"_s},
        {"brackets at the end", u"EF02MA06"_s, u"Conte. [EF02MA06, EF02MA07] "_s, u"EF02MA06 EF02MA07"_s},
        {"brackets elsewhere", {}, u"[EF02MA06] conte"_s, {}},
        {"other forms", u"EF2MA06 EF02MA6 EI04EO01 XX02MA06 EF02MA06a"_s, {}, {}},
    });
}

void TstVerifica::knowsTheFormOfSkills()
{
    const auto [list, desc, expected] = row<QString, QString, QString>();
    QCOMPARE(bnccCodes(list, desc).join(u' '), expected);
}

QTEST_GUILESS_MAIN(TstVerifica)
#include "tst_verifica.moc"
