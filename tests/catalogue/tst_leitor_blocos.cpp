#include "catalogue/leitor_blocos.h"

#include "leitura_literal.h"
#include "support/suporte.h"
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
    void readsRoteiro_data();
    void readsRoteiro();
    void readsAula_data();
    void readsAula();
    void numbering_data();
    void numbering();
    void aCodeBeyond32BitsEndsTheReading();
    void damagedTextsReadAsTheLiteralSearchesDo();
    void damagedSizes_data();
    void damagedSizes();
    void overlappingTextsAreLimited();
    void textBetweenMarkers();
};

void TstLeitorBlocos::readsEveryField()
{
    const Bloco bloco = leBloco(blocoCerto(2, 11, 40));
    QCOMPARE(bloco.roteiros.upperBound(), 2);
    QCOMPARE(bloco.lidos, 2);
    QCOMPARE(bloco.roteiros[0], RoteiroRec());
    const RoteiroRec &r = bloco.roteiros[2];
    QCOMPARE(r.Cod, 1002);
    QCOMPARE((QStringList{r.Nome, r.Fig, r.Som, r.Desc, r.Nivel, r.Disc, r.Titulo}),
        (QStringList{u"Roteiro 2"_s, u"MA2"_s, u"SO2"_s, u"A água 2"_s, u"F1"_s, u"MA"_s, u"Roteiro 2 - A água 2"_s}));
    QCOMPARE(r.Aulas.upperBound(), 11);
    const AulaRec expected{u"211"_s, u"Aula 211"_s, u"(1,1)211<SPÇ>1<SPÇ>As cores do céu (azul) e do mar. As cores"_s,
        u"Zeto"_s, u"J211"_s};
    QCOMPARE(r.Aulas[11].Linha.left(30), expected.Linha.left(30));
    QCOMPARE(r.Aulas[11].Cod, expected.Cod);
    QCOMPARE(r.Aulas[11].Jogo, expected.Jogo);
    QVERIFY_EXCEPTION_THROWN(bloco.roteiros[3], ErroExecucao);
    QVERIFY_EXCEPTION_THROWN(r.Aulas[-1], ErroExecucao);
}

void TstLeitorBlocos::readsRoteiro_data()
{
    QTest::addColumn<QByteArray>("secao");
    QTest::addColumn<QString>("nome");
    QTest::addColumn<int>("cod");
    QTest::addColumn<QString>("fig");
    QTest::addColumn<QString>("titulo");
    QTest::newRow("a blank behind the = is part of the name") << QByteArray("NomeRot = A\r\n") << " A" << 0 << ""
                                                              << " A - ";
    QTest::newRow("CALC has no figure") << QByteArray("NomeRot =CALC\r\nCODROT:5\r\nFIG:X\r\n") << "CALC" << 5 << ""
                                        << "";
    QTest::newRow("CALC with a blank before it is an ordinary Roteiro")
        << QByteArray("NomeRot = CALC\r\nFIG:X\r\n") << " CALC" << 0 << "X"
        << " CALC - ";
    QTest::newRow("without a name the code is read all the same")
        << QByteArray("CODROT:7\r\nFIG:X\r\n") << "" << 7 << "X"
        << " - ";
    QTest::newRow("the code stops at the first character that is no digit")
        << QByteArray("NomeRot =A\r\nCODROT: 12a\r\n") << "A" << 12 << ""
        << "A - ";
    QTest::newRow("largest code") << QByteArray("NomeRot =A\r\nCODROT:2147483647\r\n") << "A" << 2147483647 << ""
                                  << "A - ";
    QTest::newRow("a value without a line end is empty") << QByteArray("NomeRot =A\r\nFIG:X") << "A" << 0 << ""
                                                         << "A - ";
    QTest::newRow("LF alone ends no value") << QByteArray("NomeRot =A\nFIG:X\n\r\n") << "A\nFIG:X\n"
                                            << 0 << "X\n"
                                            << "A\nFIG:X\n - ";
    QTest::newRow("first occurrence counts, in any order")
        << QByteArray("FIG:X\r\nFIG:Y\r\nNomeRot =A\r\nNomeRot =B\r\n") << "A" << 0 << "X"
        << "A - ";
    QTest::newRow("description trimmed of blanks, not of line ends")
        << QByteArray("NomeRot =A\r\n<DESC>  \r\nd  </DESC>") << "A" << 0 << ""
        << "A - \r\nd";
    QTest::newRow("description without its end") << QByteArray("NomeRot =A\r\n<DESC>d") << "A" << 0 << ""
                                                 << "A - ";
}

void TstLeitorBlocos::readsRoteiro()
{
    QFETCH(QByteArray, secao);
    const Bloco bloco = leBloco("rubbish [ROT<1>]" + secao);
    QTEST(bloco.roteiros[1].Nome, "nome");
    QTEST(bloco.roteiros[1].Cod, "cod");
    QTEST(bloco.roteiros[1].Fig, "fig");
    QTEST(bloco.roteiros[1].Titulo, "titulo");
}

void TstLeitorBlocos::readsAula_data()
{
    QTest::addColumn<QByteArray>("secao");
    QTest::addColumn<QString>("cod");
    QTest::addColumn<QString>("linha");
    QTest::addColumn<QString>("tipo");
    QTest::addColumn<QString>("jogo");
    QTest::newRow("Linha over several lines") << QByteArray("Linha =(1)5<SP\xC7>\r\nb\r\n\tTipo = Zeto\t\r\n") << "5"
                                              << "(1)5<SPÇ>\r\nb"
                                              << "Zeto"
                                              << "";
    QTest::newRow("Linha that never ends") << QByteArray("Linha =(1)5<SP\xC7>\r\nTipo = Zeto\t\r\n") << "0"
                                           << ""
                                           << "Zeto"
                                           << "";
    QTest::newRow("Tipo without a tab is empty") << QByteArray("Linha =(1)5<SP\xC7>\r\n\tTipo = Zeto\r\n") << "5"
                                                 << "(1)5<SPÇ>"
                                                 << ""
                                                 << "";
    QTest::newRow("Tipo with its tab on a later line is cut at the line") << QByteArray("Tipo = Calc\r\nx\t") << "0"
                                                                          << ""
                                                                          << "Calc"
                                                                          << "";
    QTest::newRow("a Linha without separator has code 0") << QByteArray("Linha =(1)5\r\n\tTipo = Zeto\t") << "0"
                                                          << "(1)5"
                                                          << "Zeto"
                                                          << "";
    QTest::newRow("code without parenthesis is 0") << QByteArray("Linha =5<SP\xC7>\r\n\tTipo = Zeto\t") << "0"
                                                   << "5<SPÇ>"
                                                   << "Zeto"
                                                   << "";
    QTest::newRow("code with leading zeros and letters") << QByteArray("Linha =(1) 007x<SP\xC7>\r\n\tTipo = \t") << "7"
                                                         << "(1) 007x<SPÇ>"
                                                         << ""
                                                         << "";
    QTest::newRow("Jogo ends at #") << QByteArray("Jogo = a\r\nb#c") << "0"
                                    << ""
                                    << ""
                                    << "a\r\nb";
    QTest::newRow("Jogo without # is empty") << QByteArray("Jogo = a") << "0"
                                             << ""
                                             << ""
                                             << "";
    QTest::newRow("NUL and bytes without a character are kept") << QByteArray("Jogo = \0\x81\xff#", 11) << "0"
                                                                << ""
                                                                << "" << QString(u"\0\u0081ÿ"_s);
}

void TstLeitorBlocos::readsAula()
{
    QFETCH(QByteArray, secao);
    const Bloco bloco = leBloco("[ROT<1>]\r\n[<1>1]\r\n" + secao);
    QCOMPARE(bloco.roteiros[1].Aulas.upperBound(), 1);
    QTEST(bloco.roteiros[1].Aulas[1].Cod, "cod");
    QTEST(bloco.roteiros[1].Aulas[1].Linha, "linha");
    QTEST(bloco.roteiros[1].Aulas[1].Tipo, "tipo");
    QTEST(bloco.roteiros[1].Aulas[1].Jogo, "jogo");
}

/// Names of the Roteiros from 1, "-" for one that has none, each followed by the names of its Aulas in parentheses.
static QString outline(const Bloco &bloco)
{
    QStringList nomes;
    for (int i = 1; i <= bloco.roteiros.upperBound(); ++i) {
        const RoteiroRec &r = bloco.roteiros[i];
        QStringList aulas;
        for (int j = 1; r.Aulas.isDimensioned() && j <= r.Aulas.upperBound(); ++j)
            aulas += r.Aulas[j].Nome.isEmpty() ? u"-"_s : r.Aulas[j].Nome;
        nomes += (r.Nome.isEmpty() ? u"-"_s : r.Nome) + u'(' + aulas.join(u' ') + u')';
    }
    return nomes.join(u' ');
}

void TstLeitorBlocos::numbering_data()
{
    QTest::addColumn<QByteArray>("texto");
    QTest::addColumn<QString>("expected");
    const auto rot = [](const char *i, const char *nome) {
        return QByteArray("[ROT<") + i + ">]\r\nNomeRot =" + nome + "\r\n";
    };
    const auto aula = [](const char *ij, const char *nome) {
        return QByteArray("\r\n[<") + ij + "]\r\nNome =" + nome + "\r\n";
    };
    QTest::newRow("empty") << QByteArray() << "";
    QTest::newRow("no section") << QByteArray("NomeRot =A\r\n") << "";
    QTest::newRow("1 and 3: 1 runs to the end, 2 is empty")
        << rot("1", "A") + rot("3", "C") + aula("1>1", "a") << "A(a) -()";
    QTest::newRow("descending: each runs to the end") << rot("2", "B") + rot("1", "A") + aula("2>1", "b") << "A() B(b)";
    QTest::newRow("the same number twice: the first counts") << rot("1", "A") + rot("1", "X") << "A() -()";
    QTest::newRow("leading zero is another number") << rot("01", "A") << "-()";
    QTest::newRow("kept: the next section follows at once and its fields are read")
        << QByteArray("[ROT<1>]") + rot("2", "B") << "B() B()";
    QTest::newRow("marker at the very end") << rot("1", "A") + "[ROT<2>]"
                                            << "A() -()";
    QTest::newRow("an Aula stands before its Roteiro") << aula("1>1", "a") + rot("1", "A") << "A()";
    QTest::newRow("kept: Aula 1 ends before Aula 20")
        << rot("1", "A") + "[<1>1]\r\nx" + aula("1>20", "b") + "Nome =c\r\n"
        << "A(- -)";
    QTest::newRow("kept: the next Aula follows at once and its fields are read")
        << rot("1", "A") + "[<1>1]\r\n" + aula("1>2", "b") << "A(b b)";
    QTest::newRow("a gap among the Aulas: the ones behind it are beyond the count")
        << rot("1", "A") + aula("1>1", "a") + aula("1>3", "c") << "A(a -)";
    QTest::newRow("a mention of another Aula counts, so the last record is empty")
        << rot("1", "A") + aula("1>1", "a") + "see [<1>"
        << "A(a -)";
    QTest::newRow("Aula without a line end behind its bracket") << rot("1", "A") + "[<1>1] Nome =a\r\n"
                                                                << "A(-)";
}

void TstLeitorBlocos::numbering()
{
    QFETCH(QByteArray, texto);
    const Bloco bloco = leBloco(texto);
    QTEST(outline(bloco), "expected");
    QCOMPARE(bloco.roteiros, leituraLiteral(texto));
}

void TstLeitorBlocos::aCodeBeyond32BitsEndsTheReading()
{
    const Bloco bloco = leBloco("[ROT<1>]\r\nNomeRot =A\r\n[ROT<2>]\r\nNomeRot =B\r\nCODROT:2147483648\r\nFIG:X\r\n"
                                "[<2>1]\r\nNome =b\r\n[ROT<3>]\r\nNomeRot =C\r\n");
    QCOMPARE(bloco.lidos, 1);
    QCOMPARE(bloco.roteiros.upperBound(), 3);
    QCOMPARE(bloco.roteiros[2].Nome, u"B"_s);
    QCOMPARE(bloco.roteiros[2].Fig, QString());
    QVERIFY(!bloco.roteiros[2].Aulas.isDimensioned());
    QCOMPARE(bloco.roteiros[3], RoteiroRec());
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
    QTest::addColumn<QByteArray>("texto");
    QTest::addColumn<int>("roteiros");
    const int many = 400000;
    QTest::newRow("the opening alone") << QByteArray("[ROT<").repeated(many) << many;
    QTest::newRow("the first section over and over") << QByteArray("[ROT<1>]NomeRot =").repeated(many) << many;
    QByteArray down, fields, aulas = "[ROT<1>]\r\n", same = aulas;
    for (int i = many; i > 0; --i) {
        const QByteArray n = QByteArray::number(i);
        down += "[ROT<" + n + ">]";
        fields += "[ROT<" + n + ">]FIG:SOM:DISC:";
        aulas += "\r\n[<1>" + n + "]\r\n";
        same += "[<1>1]\r\nLinha =Tipo = Jogo = ";
    }
    QTest::newRow("numbers in descending order") << down << many;
    QTest::newRow("descending, values that never end") << fields << many;
    QTest::newRow("one name at the end for all") << down + "NomeRot =A\r\n" << many;
    QTest::newRow("Aulas in descending order") << aulas << 1;
    QTest::newRow("one Aula over and over") << same << 1;
    QTest::newRow("brackets") << QByteArray(8 << 20, '[') << 0;
    QTest::newRow("line ends in a value") << "[ROT<1>]NomeRot =" + QByteArray("\r\r").repeated(4 << 20) << 1;
    QByteArray binary(8 << 20, '\0');
    Acaso acaso(1);
    for (char &c : binary)
        c = char(acaso() & 0xff);
    QTest::newRow("binary") << binary << int(binary.count("[ROT<"));
    const QByteArray certo = blocoCerto(16, 20, 2000);
    QTest::newRow("cut in the middle") << certo.left(certo.size() / 2)
                                       << int(certo.left(certo.size() / 2).count("[ROT<"));
}

void TstLeitorBlocos::damagedSizes()
{
    QFETCH(QByteArray, texto);
    QTEST(leBloco(texto).roteiros.upperBound(), "roteiros");
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
