#include "autoria/checker.h"
#include "support/suporte.h"
#include "support/table.h"
#include "textos_de_bloco.h"

#include <QDir>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstFonte final : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void samplesComeBack();
    void exampleComesBack();
    void documentsAreTrue_data();
    void documentsAreTrue();
    void anyFileComesBack_data();
    void anyFileComesBack();
    void tellsWhatIsNotUnderstood_data();
    void tellsWhatIsNotUnderstood();
};

static MadeBlock made(const QByteArray &source, const QString &destination = u"F1/0226MAF1.edb"_s)
{
    return makeBlock(source, u"f.txt"_s, blockFile(destination));
}

/// Back into a source and made again, under another name.
static QByteArray roundTrip(const QByteArray &edb)
{
    const MadeBlock again = made(sourceOfBlock(edb), u"x.edb"_s);
    return again.understood ? again.edb : "not understood: " + sourceOfBlock(edb);
}

static void comesBackReadable(const QByteArray &source)
{
    const MadeBlock first = made(source);
    QVERIFY2(first.understood, qPrintable(first.understood ? QString() : gnuLine(first.findings.front())));
    const QByteArray back = sourceOfBlock(first.edb);
    QVERIFY2(!back.contains("CRU\n") && !back.contains("\nlinha"), back);
    QCOMPARE(made(back, u"x.edb"_s).edb, first.edb);
}

void TstFonte::samplesComeBack()
{
    const QDir samples(QStringLiteral(QUOREL_SOURCE "/exemplo/blocos/F1"));
    for (const QString &name : samples.entryList({u"*.txt"_s}))
        comesBackReadable(*readWhole(samples.filePath(name)));
}

void TstFonte::exampleComesBack()
{
    comesBackReadable(exampleSource());
    for (int kind = int(Kind::Leia); kind <= int(Kind::Historia); ++kind)
        comesBackReadable(exampleSource(Kind(kind)));
}

void TstFonte::documentsAreTrue_data()
{
    const Table<QByteArray> row("source");
    const QDir documents(QStringLiteral(QUOREL_SOURCE "/docs/autoria"));
    for (const QString &name : documents.entryList({u"*.md"_s})) {
        const QList<QString> parts = QString::fromUtf8(*readWhole(documents.filePath(name))).split(u"```"_s);
        for (qsizetype n = 1; n < parts.size(); n += 2) {
            const QString block = parts[n].section(u'\n', 1);
            const QString head =
                u"tema: t\nobjetivo: o\n"_s + (block.startsWith(u"AULA") ? u"ROTEIRO 1 r\n"_s : QString());
            const QString end = parts[n].startsWith(u"bloco") ? QString() : u"\nAULA Zeto: fim\n"_s;
            row(qPrintable(name + QString::number(n)),
                (block.startsWith(u"tema") ? block : head + block + end).toUtf8());
        }
    }
}

void TstFonte::documentsAreTrue()
{
    QFETCH(QByteArray, source);
    const BlockFile file = blockFile(u"F1/0226MAF1.edb"_s);
    const Findings findings = Checker(false).check(made(source), file, u"f.txt"_s);
    QVERIFY2(findings.empty(), qPrintable(findings.empty() ? QString() : gnuLine(findings.front())));
    comesBackReadable(source);
}

/// A well-formed file of another hand: what the form can say of it is not raw.
static const QByteArray kElsewhere = "<OBJ>o\r\n\r\n .</OBJ>\r\n<TM></TM>\r\n[ROT<1>]\r\nNomeRot = A\r\nCODROT:\r\n"
                                     "FIG:\r\nSOM:x \r\n<DESC> d\xA0</DESC>\r\nNIVEL:F1\r\nDISC:M\r\nBNCC:EF01MA01\r\n"
                                     "[<1>1]\r\nNome =\r\nLinha =(1,1)1<SP\xC7>2\r\n\tTipo = Zeto\tx\r\nJogo = j#\r\n"
                                     "[<1>2]\r\nNome =b\r\nLinha =\x81\\ @\r\n\tTipo = zeto\t1\r\n";

void TstFonte::anyFileComesBack_data()
{
    Acaso chance(20261125);
    const QByteArray right = blocoCerto(3, 3, 40);
    const QByteArray sample = made(exampleSource()).edb;
    const Table<QByteArray> row("edb");
    row("of another hand", kElsewhere);
    row("empty", "");
    row("no line end", QByteArray("[ROT<1>]x").repeated(100));
    row("LF alone", QByteArray(sample).replace("\r\n", "\n"));
    row("a mark of UTF-8", "\xEF\xBB\xBF" + sample);
    row("every byte", [] {
        QByteArray bytes;
        for (int n = 0; n < 256; ++n)
            bytes += char(n);
        return bytes + "\r\n" + bytes;
    }());
    constexpr int kRounds = 60;
    for (int n = 0; n < kRounds; ++n) {
        row(qPrintable(u"confused %1"_s.arg(n)), blocoConfuso(chance));
        row(qPrintable(u"spoilt %1"_s.arg(n)), estraga(chance, n % 2 == 0 ? right : kElsewhere));
        row(qPrintable(u"spoilt sample %1"_s.arg(n)), estraga(chance, sample));
    }
}

void TstFonte::anyFileComesBack()
{
    QFETCH(QByteArray, edb);
    QCOMPARE(roundTrip(edb), edb);
    if (edb == kElsewhere)
        QVERIFY2(!sourceOfBlock(edb).contains("CRU\n"), sourceOfBlock(edb));
}

void TstFonte::tellsWhatIsNotUnderstood_data()
{
    const QByteArray begin = "tema: t\nobjetivo: o\nROTEIRO 1 r\nAULA Zeto: a\n";
    rows<QByteArray, QString>({
        {"empty", "\n# nada\n \n", u"1:1 vazio"_s},
        {"key", begin + "cor: azul\n", u"5:1 chave"_s},
        {"line of no kind", begin + "texto: a\nb\n", u"6:1 solta"_s},
        {"key out of place", begin + "tema: t\n", u"5:1 fora-de-lugar"_s},
        {"key twice", begin + "dica: a\ndica: b\n", u"6:1 repetida"_s},
        {"AULA first", "AULA Zeto: a\n", u"1:1 fora-de-lugar"_s},
        {"AULA without a name's colon", "ROTEIRO 1 r\nAULA Zeto leia\n", u"2:1 aula"_s},
        {"kind", "ROTEIRO 1 r\nAULA Zeto  colha: a\n", u"2:12 tipo"_s},
        {"code", "ROTEIRO um r\n", u"1:9 codigo"_s},
        {"option without a blank", begin + "*5\n", u"5:1 opcao"_s},
        {"option out of place", "* a\n", u"1:1 fora-de-lugar"_s},
        {"mark", begin + "texto: ol\xC3\xA1\n  <SP\xC3\x87>\n", u"6:3 marca"_s},
        {"tab", begin + "texto: a\tb\n", u"5:9 tabulacao"_s},
        {"a name in two lines", "ROTEIRO 1 r\n s\n", u"1:12 quebra"_s},
        {"escape", begin + "texto| \\q\n", u"5:8 escape"_s},
        {"raw line without CRU", begin + "|a\n", u"5:1 cru"_s},
        {"CR alone ends a line", "tema: t\rcor: a\r", u"2:1 chave"_s},
        {"latin 1", "tema: t\nobjetivo: \xE9\n", u"2:11 utf8"_s},
        {"UTF-16", QByteArray("\xFF\xFEt\0", 4), u"1:1 utf8"_s},
        {"binary", QByteArray("GIF\0\0", 5), u"1:1 binario"_s},
        {"a letter and its accent apart", begin + "texto: e\xCC\x81\n", {}},
        {"an arrow", begin + "texto: a \xE2\x86\x92 b\n", u"5:10 fora-da-pagina"_s},
    });
}

void TstFonte::tellsWhatIsNotUnderstood()
{
    const auto [source, expected] = row<QByteArray, QString>();
    QStringList told;
    for (const Finding &finding : made(source).findings)
        told +=
            u"%1:%2 %3"_s.arg(QString::number(finding.place.line), QString::number(finding.place.column), finding.code);
    QCOMPARE(told.join(u' '), expected);
    QCOMPARE(made(source).understood, expected.isNull());
}

QTEST_GUILESS_MAIN(TstFonte)
#include "tst_fonte.moc"
