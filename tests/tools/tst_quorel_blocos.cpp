#include "programa.h"
#include "support/table.h"
#include "tools/blocos_comando.h"
#include "tools/blocos_lista.h"

#include <QJsonDocument>

using namespace quorel;
using namespace quorel::blocos;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstQuorelBlocos final : public TesteDePrograma
{
    Q_OBJECT
public:
    TstQuorelBlocos() : TesteDePrograma(u"quorel-blocos"_s) { }

private slots:
    void listsABlock();
    void listsADirectory();
    void findsWhatIsToMend_data();
    void findsWhatIsToMend();
    void exitCodes_data();
    void exitCodes();
    void looksForMedia();
    void hostileFiles_data();
    void hostileFiles();
    void makesAndUnmakes();
    void makesNothingOfAFault();
    void refusesPlaces_data();
    void refusesPlaces();
    void hugeSources_data();
    void hugeSources();
};

static const QByteArray kAula = "[<1>1]\r\nNome =a\r\nLinha =(1,1)11<SP\xC7>1\r\n\tTipo = Zeto\t1\r\nJogo = j#\r\n";
static const QByteArray kRot1 = "[ROT<1>]\r\nNomeRot =A\r\nCODROT:5\r\nFIG:MA1\r\n<DESC>d</DESC>\r\n";
static const QByteArray kRot2 = "[ROT<2>]\r\nNomeRot =B\r\nCODROT:6\r\n";
static const QByteArray kCerto = "<OBJ>o \xE9</OBJ><TM>t</TM>\r\n" + kRot1 + kAula;

/// The block without a fault, but for one piece.
static QByteArray with(const char *piece, const char *other)
{
    return QByteArray(kCerto).replace(piece, other);
}

void TstQuorelBlocos::listsABlock()
{
    const QString caminho = file(u"F1/0205MAF1.edb"_s, kCerto + "[ROT<3>]\r\n");
    QCOMPARE(run({u"lista"_s, caminho, u"--json"_s}), 0);
    const QJsonObject bloco = QJsonDocument::fromJson(mSaida).object();
    QCOMPARE(bloco[u"objetivo"_s].toString(), u"o é"_s);
    QCOMPARE(bloco[u"tema"_s].toString(), u"t"_s);
    const QJsonArray roteiros = bloco[u"roteiros"_s].toArray();
    QCOMPARE(roteiros.size(), 2);
    QCOMPARE(roteiros[0].toObject().keys().join(u' '), u"aulas cod desc disc fig nivel nome som titulo"_s);
    QCOMPARE(roteiros[0][u"cod"_s], QJsonValue(5));
    QCOMPARE(roteiros[0][u"titulo"_s], QJsonValue(u"A - d"_s));
    QCOMPARE(roteiros[1][u"aulas"_s].toArray(), QJsonArray());
    const QJsonObject aula{{u"cod"_s, u"11"_s}, {u"nome"_s, u"a"_s}, {u"linha"_s, u"(1,1)11<SPÇ>1"_s},
        {u"tipo"_s, u"Zeto"_s}, {u"jogo"_s, u"j"_s}};
    QCOMPARE(roteiros[0][u"aulas"_s].toArray(), QJsonArray{aula});

    QCOMPARE(run({u"lista"_s, caminho}), 0);
    QVERIFY2(QString::fromUtf8(mSaida).contains(u"1. [5] A - d (figura: MA1, som: )\n   1.1 [11] Zeto: a\n"_s), mSaida);

    QCOMPARE(run({u"lista"_s, file(u"F1/0305MAF1.edb"_s, with(":5", ":9999999999"))}), 1);
    QVERIFY2(errors().contains(u"A leitura acaba no Roteiro 1;"_s), mErros);
}

void TstQuorelBlocos::listsADirectory()
{
    file(u"F1/0205MAF1.edb"_s, kCerto);
    file(u"F1/0206CIF1.EDB"_s, "<TM>segundo</TM>");
    file(u"F1/abril.edb"_s, kCerto);
    file(u"F1/0405POF1.edb"_s, "");
    QCOMPARE(run({u"lista"_s, u"F1"_s, u"--json"_s}), 1);
    QVERIFY(errors().contains(u"F1/abril.edb"_s));
    const QJsonArray lista = QJsonDocument::fromJson(mSaida).array();
    QCOMPARE(lista.size(), 3); // without the name that can't be read
    const QJsonObject first{{u"mes"_s, 1}, {u"ano"_s, 2005}, {u"disciplina"_s, u"Matemática"_s},
        {u"arquivo"_s, u"F1/0205MAF1.edb"_s}, {u"objetivo"_s, u"o é"_s}, {u"tema"_s, u"segundo"_s}};
    QCOMPARE(lista[0].toObject(), first);
    QCOMPARE(lista[2][u"mes"_s], QJsonValue(2));
    QCOMPARE(lista[2][u"tema"_s], QJsonValue(u""_s));
}

/// Files by their names.
using Arquivos = QList<std::pair<QString, QByteArray>>;

void TstQuorelBlocos::findsWhatIsToMend_data()
{
    const auto aula = [](const char *ij) { return QByteArray(kAula).replace("1>1]", QByteArray(ij) + ']'); };
    const auto block = [](const QByteArray &texto) {
        return Arquivos{{"0205MAF1.edb", texto.startsWith("<OBJ>") ? texto : "<OBJ>o</OBJ><TM>t</TM>" + texto}};
    };
    QByteArray many;
    for (int i = 1; i <= 17; ++i)
        many += "[ROT<" + QByteArray::number(i) + ">]\r\nNomeRot =A\r\nCODROT:" + QByteArray::number(i) + "\r\n";
    rows<Arquivos, QStringList>({
        {"nothing", block(kCerto), {}},
        {"name", {{"abril.edb", kCerto}}, {"1:nome do arquivo"}},
        {"discipline", {{"0205XXF1.edb", kCerto}}, {"1:código de disciplina"}},
        {"gap in the Roteiros", block(kRot1 + "[ROT<3>]\r\n"),
            {"1:falta o Roteiro 2", "1:contém a de outro", "6:Roteiro 3: o programa nunca"}},
        {"Roteiro twice", block(kRot1 + "[ROT<1>]\r\n"), {"1:falta o Roteiro 2", "1:contém a de outro", "6:outra vez"}},
        {"Roteiro without a number", block(kRot1 + "[ROT<x>]\r\n"),
            {"1:falta o Roteiro 2", "1:contém", "6:sem número"}},
        {"gap in the Aulas", block(kRot1 + aula("1>1") + aula("1>3")),
            {"1:falta a Aula 2", "11:Aula 3 do Roteiro 1: o programa nunca"}},
        {"Aula twice", block(kRot1 + aula("1>1") + aula("1>1")), {"1:falta a Aula 2", "11:outra vez"}},
        {"Aula of another Roteiro", block(kRot1 + aula("2>1") + kRot2), {"6:Aula 1 do Roteiro 2: o programa nunca"}},
        {"Tipo without tab", block(with("\t1\r\n", "\r\n")), {"10:sem tabulação"}},
        {"unknown type", block(with("= Zeto", "= zeto")), {"10:tipo desconhecido: zeto"}},
        {"Linha that never ends", block(with("\r\n\tTipo", "\r\nTipo")), {"9:nunca acaba"}},
        {"code missing", block(with("CODROT:5", "CODROT:")), {"4:ausente ou 0"}},
        {"no name", block(with("NomeRot =A", "NomeRot =")), {"2:sem nome"}},
        {"code twice", block(kRot1 + QByteArray(kRot2).replace(":6", ":5")), {"8:código 5 já usado em"}},
        {"code too large", block(with(":5", ":9999999999")), {"4:leitura acaba no Roteiro 1"}},
        {"Aula without code", block(with("(1,1)11", "(1,1)")), {"9:código ausente"}},
        {"HTML without a Linha", block(with("(1,1)11<SP\xC7>1", "").replace("Zeto", "HTML")), {"9:está vazia"}},
        {"a level of three letters", {{"EJA/0205MAEJA.edb", kCerto}}, {}},
        {"a name with a semicolon", {{"F1/0205MA;0205MAF1.edb", kCerto}}, {"1:dois nomes"}},
        {"a path with a place holder", {{"F1/0205MAF1.edb", kCerto}, {"%1/F1/0305MAF1.edb", kCerto}},
            {"4:código 5 já usado em"}},
        {"CALC not last", block(QByteArray(kRot1).replace("=A", "=CALC") + kRot2), {"1:não é o último"}},
        {"CALC with a blank", block(QByteArray(kRot1).replace("=A", "= CALC")), {"1:com branco"}},
        {"LF alone", block(kCerto + "\r\na\nb\nc\n"), {"13:só com LF"}},
        {"a 17th Roteiro", block(many), {"49:Roteiro 17 não tem botão"}},
        {"a code used in two files", {{"F1/0205MAF1.edb", kCerto}, {"F1/0305MAF1.edb", kCerto}},
            {"4:F1/0205MAF1.edb:4"}},
    });
}

void TstQuorelBlocos::findsWhatIsToMend()
{
    const auto [arquivos, findings] = row<Arquivos, QStringList>();
    QStringList names;
    for (const auto &[name, bytes] : arquivos)
        names << file(name, bytes);
    QCOMPARE(run(QStringList(u"verifica"_s) + names), findings.isEmpty() ? 0 : 1);
    QVERIFY2(lines().size() == findings.size(), mSaida);
    for (qsizetype n = 0; n < lines().size(); ++n) { // all in the last file
        const QString line = lines()[n], place = names.last() + u':' + findings[n].section(u':', 0, 0) + u':';
        QVERIFY2(line.startsWith(place) && line.contains(findings[n].section(u':', 1)), qPrintable(line));
    }
}

void TstQuorelBlocos::exitCodes_data()
{
    rows<int>({
        {"--help", 0},
        {"", 2},
        {"lista F1 --xml", 2},
        {"lista F1 F1", 2},
        {"lista nada.edb", 2},
        {"lista .", 2}, // no block file in it
        {"verifica nada F1", 2},
        {"verifica F1 --cfg nada.txt", 2},
        {"verifica F1/ I1/0205POI1.edb", 0},
    });
}

void TstQuorelBlocos::exitCodes()
{
    const auto [code] = row<int>();
    file(u"F1/0205MAF1.edb"_s, kCerto);
    file(u"I1/0205POI1.edb"_s, with(":5", ":6"));
    QCOMPARE(run(rowName().split(u' ', Qt::SkipEmptyParts)), code);
    QVERIFY(code != 2 || !mErros.isEmpty());
}

void TstQuorelBlocos::looksForMedia()
{
    const QByteArray home = barras(path({})).toUtf8();
    const QString cfg = file(u"zeto_cnf.txt"_s, "[zeto]\r\nZETO_MM=" + home + "\\mm\r\nDIRQUOREL=" + home + "\r\n");
    QByteArray texto = with("FIG:MA1", "FIG:MA1\r\nSOM:SO1");
    texto.replace("(1,1)11<SP\xC7>1", "(1,1)11<SP\xC7>1" + QByteArray("<SP\xC7>").repeated(7) + "gibi.htm")
        .replace("Zeto", "HTML");
    const QString caminho = file(u"F1/0205MAF1.edb"_s, texto);
    QCOMPARE(run({u"verifica"_s, caminho, u"--cfg"_s, cfg}), 1);
    QVERIFY2(lines().filter(u":5:5: aviso: figura não encontrada: MA1 [figura]"_s).size() == 1, mSaida);
    QVERIFY2(lines().filter(u":6:5: aviso: som não encontrado: SO1 [som]"_s).size() == 1, mSaida);
    QVERIFY2(lines().filter(u":10:8: erro: Aula 1 do Roteiro 1: arquivo da aula HTML não encontrado: "_s).size() == 1,
        mSaida);
    QCOMPARE(mErros, QByteArray());

    file(u"mm/Fig/M/_/MA1.GIF"_s, "GIF");
    file(u"mm/Som/S/SO1.WAV"_s, "RIFF");
    file(u"Arqs/gibi.htm"_s, "<html>");
    escreve(qEnvironmentVariable("QUOREL_WINDIR") + u"/QUOREL2001/Arqs/gibi.htm"_s, "<html>");
    QCOMPARE(run({u"verifica"_s, caminho, u"--cfg"_s, cfg}), 0);
    QCOMPARE(mSaida, QByteArray());
}

void TstQuorelBlocos::hostileFiles_data()
{
    constexpr int kMany = 60000; // a search for each of them through the rest of the text would not come to its end
    QByteArray backwards = kRot1;
    QByteArray codes = kRot1;
    QByteArray calc = "[ROT<2>]\r\nNomeRot =CALC\r\n";
    for (int j = 1; j <= kMany; ++j) {
        const QByteArray n = QByteArray::number(j);
        backwards += "[<1>" + QByteArray::number(kMany + 1 - j) + "]\r\nNome =a\r\nLinha =x\r\n";
        codes += "[<1>" + n + "]\r\nLinha =7\r\n\tTipo = Calc\t\r\n";
        calc += "[<2>" + n + "]\r\nLinha =(1)1" + n + "<SP\xC7>\r\n\tTipo = Zeto\t\r\n";
    }
    rows<QByteArray>({
        {"empty", ""},
        {"cut in a marker", kCerto.left(kCerto.indexOf("[<1>1]") + 5)},
        {"NULs", QByteArray(1 << 20, '\0')},
        {"openings without end", QByteArray("[ROT<1>][<1>1]\r\n").repeated(20000)},
        {"sections in each other, none with a Tipo", backwards},
        {"as many codes of the calculator as lessons", codes + calc},
    });
}

void TstQuorelBlocos::hostileFiles()
{
    const auto [texto] = row<QByteArray>();
    const QString caminho = file(u"F1/0205MAF1.edb"_s, texto);
    const int code = run({u"verifica"_s, caminho});
    QVERIFY2(code == 0 || code == 1, mErros);
    const int listed = run({u"lista"_s, caminho, u"--json"_s});
    QVERIFY2(listed == 0 || listed == 1, mErros);
    QVERIFY(QJsonDocument::fromJson(mSaida).isObject());
}

void TstQuorelBlocos::makesAndUnmakes()
{
    file(u"F1/da_professora.edb"_s, "dela");
    QCOMPARE(run({u"novo"_s, u"0226MA.txt"_s}), 0);
    QCOMPARE(run({u"faz"_s, u"0226MA.txt"_s, u"F1"_s}), 0);
    QCOMPARE(mSaida + mErros, QByteArray());
    const QByteArray edb = le(path(u"F1/0226MAF1.edb"_s));
    QVERIFY(edb.contains("NIVEL:F1\r\nDISC:Matem\xE1tica\r\n"));
    QCOMPARE(run({u"verifica"_s, u"F1/0226MAF1.edb"_s}), 0);
    QCOMPARE(run({u"desfaz"_s, u"F1/0226MAF1.edb"_s, u"volta.txt"_s}), 0);
    QCOMPARE(run({u"faz"_s, u"volta.txt"_s, u"outro.edb"_s, u"--json"_s}), 1); // of that name
    QCOMPARE(le(path(u"outro.edb"_s)), edb);
    QCOMPARE(le(path(u"F1/da_professora.edb"_s)), QByteArray("dela"));
    QCOMPARE(files(), QStringList({u"0226MA.txt"_s, u"outro.edb"_s, u"volta.txt"_s}));
}

void TstQuorelBlocos::makesNothingOfAFault()
{
    file(u"fontes/0226MA.txt"_s, "tema: t\r\nobjetivo: o\r\nROTEIRO 1 r\r\ncor: azul\r\n");
    file(u"fontes/0226PO.txt"_s, "tema: t\nobjetivo: o\nROTEIRO 2 r\nAULA Zeto escolha: a\n- um\n");
    const QString old = file(u"F1/0226MAF1.edb"_s, "antigo");
    QCOMPARE(run({u"faz"_s, u"fontes"_s, u"F1"_s}), 1);
    QCOMPARE(le(old), QByteArray("antigo"));
    QCOMPARE(lines().value(0),
        u"fontes/0226MA.txt:4:1: erro: chave desconhecida: cor; se continua o texto de cima, comece "
        "a linha com um espaço [chave]"_s);
    QCOMPARE(lines().value(1),
        u"fontes/0226PO.txt:4:1: erro: Aula 1 do Roteiro 1: nenhuma opção está marcada como certa "
        "[sem-certa]"_s);
    QVERIFY(!le(path(u"F1/0226POF1.edb"_s)).isEmpty());

    QCOMPARE(run({u"faz"_s, u"fontes/0226MA.txt"_s, u"F1"_s, u"--json"_s}), 1);
    const QJsonObject told = QJsonDocument::fromJson(mSaida).array().at(0).toObject();
    QCOMPARE(told[u"range"_s][u"start"_s], QJsonValue(QJsonObject{{u"line"_s, 3}, {u"character"_s, 0}}));
    QCOMPARE(told[u"severity"_s], QJsonValue(1));
    QCOMPARE(told[u"code"_s], QJsonValue(u"chave"_s));
}

void TstQuorelBlocos::refusesPlaces_data()
{
    texts({"faz f.txt f.txt", "faz f.txt nada/x.edb", "faz nada.txt x.edb", "faz . x.edb", "faz vazio F1",
        "desfaz f.txt f.txt", "desfaz x.edb f.txt", "novo f.txt", "novo g.txt nada", "faz f.txt x.edb --cfg nada"});
}

void TstQuorelBlocos::refusesPlaces()
{
    file(u"f.txt"_s, "tema: t\nobjetivo: o\n");
    file(u"vazio/x"_s, "");
    file(u"F1/x"_s, "");
    QCOMPARE(run(rowName().split(u' ')), 2);
    QVERIFY(!mErros.isEmpty());
    QCOMPARE(files(), QStringList(u"f.txt"_s));
    QCOMPARE(le(path(u"f.txt"_s)), QByteArray("tema: t\nobjetivo: o\n"));
}

void TstQuorelBlocos::hugeSources_data()
{
    constexpr qsizetype kHuge = 100 << 20;
    const QByteArray begin = "tema: t\nobjetivo: o\nROTEIRO 1 r\nAULA Zeto: a\n";
    rows<QByteArray, int>({
        {"100 MB in one line", begin + "texto: " + QByteArray(kHuge, 'a'), 0},
        {"100 MB of lines that say nothing", begin + QByteArray("ab\n").repeated(kHuge / 3), 1},
        {"100 MB of zeros", QByteArray(kHuge, '\0'), 1},
    });
}

void TstQuorelBlocos::hugeSources()
{
    const auto [source, code] = row<QByteArray, int>();
    file(u"f.txt"_s, source);
    QCOMPARE(run({u"faz"_s, u"f.txt"_s, u"0226MAF1.edb"_s}), code);
    QVERIFY(lines().size() <= 1000);
}

QTEST_GUILESS_MAIN(TstQuorelBlocos)
#include "tst_quorel_blocos.moc"
