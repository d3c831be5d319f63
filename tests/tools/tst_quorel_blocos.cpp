#include "support/suporte.h"
#include "tools/blocos_comando.h"
#include "tools/blocos_lista.h"
#include "tools/blocos_verifica.h"

#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>

using namespace quorel;
using namespace quorel::blocos;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstQuorelBlocos : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void listsABlock();
    void listsADirectory();
    void findsWhatIsToMend_data();
    void findsWhatIsToMend();
    void findsACodeUsedInTwoFiles();
    void looksForMedia();
    void exitCodes_data();
    void exitCodes();
    void hostileFiles_data();
    void hostileFiles();

private:
    /// Runs the real program. @return its exit code
    int run(const QStringList &argumentos);
    QString file(const QString &nome, const QByteArray &bytes)
    {
        escreve(mDir->filePath(nome), bytes);
        return mDir->filePath(nome);
    }

    std::unique_ptr<QTemporaryDir> mDir;
    QByteArray mSaida;
    QByteArray mErros;
};

static const QByteArray kAula = "[<1>1]\r\nNome =a\r\nLinha =(1,1)11<SP\xC7>1\r\n\tTipo = Zeto\t1\r\nJogo = j#\r\n";
static const QByteArray kCabeca = "NomeRot =A\r\nCODROT:5\r\nFIG:MA1\r\n<DESC>d</DESC>\r\n";
static const QByteArray kCerto = "<OBJ>o \xE9</OBJ><TM>t</TM>\r\n[ROT<1>]\r\n" + kCabeca + kAula;

void TstQuorelBlocos::init()
{
    failOnWarnings();
    mDir = std::make_unique<QTemporaryDir>();
}

int TstQuorelBlocos::run(const QStringList &argumentos)
{
    QProcess process;
    process.setWorkingDirectory(mDir->path());
    process.start(QStringLiteral(QUOREL_BIN "/quorel-blocos"), argumentos);
    if (!process.waitForFinished())
        return -1;
    mSaida = linhas(process.readAllStandardOutput());
    mErros = linhas(process.readAllStandardError());
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
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
    QCOMPARE(roteiros[0].toObject().keys(), QString(u"aulas cod desc disc fig nivel nome som titulo"_s).split(u' '));
    QCOMPARE(roteiros[0][u"cod"_s], QJsonValue(5));
    QCOMPARE(roteiros[0][u"titulo"_s], QJsonValue(u"A - d"_s));
    QCOMPARE(roteiros[1][u"aulas"_s].toArray(), QJsonArray());
    const QJsonObject aula{{u"cod"_s, u"11"_s}, {u"nome"_s, u"a"_s}, {u"linha"_s, u"(1,1)11<SPÇ>1"_s},
        {u"tipo"_s, u"Zeto"_s}, {u"jogo"_s, u"j"_s}};
    QCOMPARE(roteiros[0][u"aulas"_s].toArray(), QJsonArray{aula});

    QCOMPARE(run({u"lista"_s, caminho}), 0);
    QVERIFY2(QString::fromUtf8(mSaida).contains(u"1. [5] A - d (figura: MA1, som: )\n   1.1 [11] Zeto: a\n"_s), mSaida);
}

void TstQuorelBlocos::listsADirectory()
{
    file(u"F1/0205MAF1.edb"_s, kCerto);
    file(u"F1/0206CIF1.EDB"_s, "<TM>segundo</TM>");
    file(u"F1/abril.edb"_s, kCerto);
    file(u"F1/0405POF1.edb"_s, "");
    QCOMPARE(run({u"lista"_s, u"F1"_s, u"--json"_s}), 0);
    const QJsonArray lista = QJsonDocument::fromJson(mSaida).array();
    QCOMPARE(lista.size(), 3); // the name that can't be read is skipped
    const QJsonObject first{{u"mes"_s, 1}, {u"ano"_s, 2005}, {u"disciplina"_s, u"Matemática"_s},
        {u"arquivo"_s, u"F1/0205MAF1.edb"_s}, {u"objetivo"_s, u"o é"_s}, {u"tema"_s, u"segundo"_s}};
    QCOMPARE(lista[0].toObject(), first);
    QCOMPARE(lista[2][u"mes"_s], QJsonValue(2));
    QCOMPARE(lista[2][u"tema"_s], QJsonValue(u""_s));
}

void TstQuorelBlocos::findsWhatIsToMend_data()
{
    QTest::addColumn<QString>("nome");
    QTest::addColumn<QByteArray>("texto");
    QTest::addColumn<QStringList>("achados"); // line, colon, part of the text
    const QByteArray rot1 = "[ROT<1>]\r\n" + kCabeca;
    const QByteArray rot2 = "[ROT<2>]\r\nNomeRot =B\r\nCODROT:6\r\n";
    const QString certo = u"0205MAF1.edb"_s;
    const auto add = [](const char *row, const QString &nome, const QByteArray &texto, const QStringList &achados) {
        QTest::newRow(row) << nome << texto << achados;
    };
    const auto aula = [](const QByteArray &ij) { return QByteArray(kAula).replace("1>1]", ij + ']'); };
    add("nothing", certo, kCerto, {});
    add("name", u"abril.edb"_s, kCerto, {u"1:nome do arquivo"_s});
    add("discipline", u"0205XXF1.edb"_s, kCerto, {u"1:código de disciplina"_s});
    add("gap in the Roteiros", certo, rot1 + "[ROT<3>]\r\n",
        {u"1:falta o Roteiro 2"_s, u"1:contém a de outro"_s, u"6:Roteiro 3: o programa nunca"_s});
    add("Roteiro twice", certo, rot1 + "[ROT<1>]\r\n",
        {u"1:falta o Roteiro 2"_s, u"1:contém a de outro"_s, u"6:outra vez"_s});
    add("Roteiro without a number", certo, rot1 + "[ROT<x>]\r\n",
        {u"1:falta o Roteiro 2"_s, u"1:contém"_s, u"6:sem número"_s});
    add("gap in the Aulas", certo, rot1 + aula("1>1") + aula("1>3"),
        {u"1:falta a Aula 2"_s, u"11:Aula 3 do Roteiro 1: o programa nunca"_s});
    add("Aula twice", certo, rot1 + aula("1>1") + aula("1>1"), {u"1:falta a Aula 2"_s, u"11:outra vez"_s});
    add("Aula of another Roteiro", certo, rot1 + aula("2>1") + rot2, {u"6:Aula 1 do Roteiro 2: o programa nunca"_s});
    add("Tipo without tab", certo, QByteArray(kCerto).replace("\t1\r\n", "\r\n"), {u"10:sem tabulação"_s});
    add("unknown type", certo, QByteArray(kCerto).replace("= Zeto", "= zeto"), {u"10:tipo desconhecido: zeto"_s});
    add("Linha that never ends", certo, QByteArray(kCerto).replace("\r\n\tTipo", "\r\nTipo"), {u"9:nunca acaba"_s});
    add("code missing", certo, QByteArray(kCerto).replace("CODROT:5", "CODROT:"), {u"4:ausente ou 0"_s});
    add("no name", certo, QByteArray(kCerto).replace("NomeRot =A", "NomeRot ="), {u"2:sem nome"_s});
    add("code twice", certo, rot1 + QByteArray(rot2).replace(":6", ":5"), {u"8:código 5 já usado em"_s});
    add("code too large", certo, QByteArray(kCerto).replace(":5", ":9999999999"), {u"4:leitura acaba no Roteiro 1"_s});
    add("Aula without code", certo, QByteArray(kCerto).replace("(1,1)11", "(1,1)"), {u"9:código ausente"_s});
    add("CALC not last", certo, QByteArray(rot1).replace("=A", "=CALC") + rot2, {u"1:não é o último"_s});
    add("CALC with a blank", certo, QByteArray(rot1).replace("=A", "= CALC"), {u"1:com branco"_s});
    add("LF alone", certo, kCerto + "\r\na\nb\nc\n", {u"13:só com LF"_s});
    QByteArray many;
    for (int i = 1; i <= 17; ++i)
        many += "[ROT<" + QByteArray::number(i) + ">]\r\nNomeRot =A\r\nCODROT:" + QByteArray::number(i) + "\r\n";
    add("a 17th Roteiro", certo, many, {u"49:Roteiro 17 não tem botão"_s});
}

void TstQuorelBlocos::findsWhatIsToMend()
{
    QFETCH(QString, nome);
    QFETCH(QByteArray, texto);
    QFETCH(QStringList, achados);
    const QString caminho = file(u"F1/"_s + nome, texto);
    QCOMPARE(run({u"verifica"_s, caminho}), achados.isEmpty() ? 0 : 1);
    const QStringList lines = QString::fromUtf8(mSaida).split(u'\n', Qt::SkipEmptyParts);
    QVERIFY2(lines.size() == achados.size(), mSaida);
    for (qsizetype n = 0; n < lines.size(); ++n) {
        const QString place = caminho + u':' + achados[n].section(u':', 0, 0) + u": "_s;
        QVERIFY2(lines[n].startsWith(place) && lines[n].contains(achados[n].section(u':', 1)), qPrintable(lines[n]));
    }
}

void TstQuorelBlocos::findsACodeUsedInTwoFiles()
{
    file(u"F1/0205MAF1.edb"_s, kCerto);
    file(u"F1/0305MAF1.edb"_s, kCerto);
    QCOMPARE(run({u"verifica"_s, u"F1/"_s}), 1);
    QCOMPARE(QString::fromUtf8(mSaida), u"F1/0305MAF1.edb:4: código 5 já usado em F1/0205MAF1.edb:4\n"_s);
}

void TstQuorelBlocos::looksForMedia()
{
    const QString cfg = file(u"zeto_cnf.txt"_s,
        "[zeto]\r\nZETO_MM=" + barras(mDir->path()).toUtf8() + "\\mm\r\nDIRQUOREL=" + barras(mDir->path()).toUtf8()
            + "\r\n");
    QByteArray texto = QByteArray(kCerto).replace("FIG:MA1", "FIG:MA1\r\nSOM:SO1");
    texto.replace("(1,1)11<SP\xC7>1", "(1,1)11" + QByteArray("<SP\xC7>").repeated(8) + "gibi.htm")
        .replace("Zeto", "HTML");
    const QString caminho = file(u"F1/0205MAF1.edb"_s, texto);
    QCOMPARE(run({u"verifica"_s, caminho, u"--cfg"_s, cfg}), 1);
    const QString saida = QString::fromUtf8(mSaida);
    QVERIFY2(saida.contains(u":5: figura não encontrada: MA1\n"_s), mSaida);
    QVERIFY2(saida.contains(u":6: som não encontrado: SO1\n"_s), mSaida);
    QVERIFY2(saida.contains(u":10: Aula 1 do Roteiro 1: arquivo da aula HTML não encontrado: "_s), mSaida);
    QVERIFY2(mErros.isEmpty(), mErros);

    file(u"mm/Fig/M/_/MA1.GIF"_s, "GIF");
    file(u"mm/Som/S/SO1.WAV"_s, "RIFF");
    file(u"Arqs/gibi.htm"_s, "<html>");
    escreve(qEnvironmentVariable("QUOREL_WINDIR") + u"/QUOREL2001/Arqs/gibi.htm"_s, "<html>");
    QCOMPARE(run({u"verifica"_s, caminho, u"--cfg"_s, cfg}), 0);
    QCOMPARE(mSaida, QByteArray());
}

void TstQuorelBlocos::exitCodes_data()
{
    QTest::addColumn<QStringList>("argumentos");
    QTest::addColumn<int>("codigo");
    QTest::newRow("help") << QStringList{u"--help"_s} << 0;
    QTest::newRow("nothing") << QStringList{} << 2;
    QTest::newRow("unknown option") << QStringList{u"lista"_s, u"F1"_s, u"--xml"_s} << 2;
    QTest::newRow("list of two") << QStringList{u"lista"_s, u"F1"_s, u"F1"_s} << 2;
    QTest::newRow("no such file") << QStringList{u"lista"_s, u"nada.edb"_s} << 2;
    QTest::newRow("empty directory") << QStringList{u"lista"_s, u"."_s} << 2;
    QTest::newRow("one of two is missing") << QStringList{u"verifica"_s, u"nada"_s, u"F1"_s} << 2;
    QTest::newRow("no such configuration") << QStringList{u"verifica"_s, u"F1"_s, u"--cfg"_s, u"nada.txt"_s} << 2;
    QTest::newRow("two that are well") << QStringList{u"verifica"_s, u"F1"_s, u"I1/0205POI1.edb"_s} << 0;
}

void TstQuorelBlocos::exitCodes()
{
    QFETCH(QStringList, argumentos);
    file(u"F1/0205MAF1.edb"_s, kCerto);
    file(u"I1/0205POI1.edb"_s, QByteArray(kCerto).replace(":5", ":6"));
    const int codigo = run(argumentos);
    QTEST(codigo, "codigo");
    QVERIFY(codigo != 2 || !mErros.isEmpty());
}

void TstQuorelBlocos::hostileFiles_data()
{
    QTest::addColumn<QByteArray>("texto");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut in a marker") << kCerto.left(kCerto.indexOf("[<1>1]") + 5);
    QTest::newRow("NULs") << QByteArray(1 << 20, '\0');
    QTest::newRow("openings without end") << QByteArray("[ROT<1>][<1>1]\r\n").repeated(20000);
    constexpr int kMany = 60000; // a search for each of them through the rest of the text would not come to its end
    QByteArray backwards = "[ROT<1>]\r\n" + kCabeca;
    QByteArray codes = "[ROT<1>]\r\n" + kCabeca;
    QByteArray calc = "[ROT<2>]\r\nNomeRot =CALC\r\n";
    for (int j = 1; j <= kMany; ++j) {
        const QByteArray n = QByteArray::number(j);
        backwards += "[<1>" + QByteArray::number(kMany + 1 - j) + "]\r\nNome =a\r\nLinha =x\r\n";
        codes += "[<1>" + n + "]\r\nLinha =7\r\n\tTipo = Calc\t\r\n";
        calc += "[<2>" + n + "]\r\nLinha =(1)1" + n + "<SP\xC7>\r\n\tTipo = Zeto\t\r\n";
    }
    QTest::newRow("sections in each other, none with a Tipo") << backwards;
    QTest::newRow("as many codes of the calculator as lessons") << codes + calc;
}

void TstQuorelBlocos::hostileFiles()
{
    QFETCH(QByteArray, texto);
    const QString caminho = file(u"F1/0205MAF1.edb"_s, texto);
    const int codigo = run({u"verifica"_s, caminho});
    QVERIFY2(codigo == 0 || codigo == 1, mErros);
    QCOMPARE(run({u"lista"_s, caminho, u"--json"_s}), 0);
    QVERIFY(QJsonDocument::fromJson(mSaida).isObject());
}

QTEST_GUILESS_MAIN(TstQuorelBlocos)
#include "tst_quorel_blocos.moc"
