#include "platform/costuras.h"
#include "platform/sistema.h"
#include "startup/arquivo_util.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"
#include "startup/unidade_util.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QDir>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals; // for texts with a NUL in them

class TstTexto : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { reiniciaCosturas(); }
    void pieces_data();
    void pieces();
    void keysAndLists_data();
    void keysAndLists();
    void counts();
    void filesAreReadWhole();
    void existence();
    void filesAreWrittenWhollyOrNotAtAll();
    void temporaryFiles();
    void commands_data();
    void commands();
    void attributesAndCopies();
    void desktop();

private:
    QString at(const QString &rest) const { return mDir->at(rest); }
    std::unique_ptr<ScratchDir> mDir;
};

void TstTexto::init()
{
    failOnWarnings();
    mDir = std::make_unique<ScratchDir>();
}

void TstTexto::pieces_data()
{
    const Table<QString, QString> row("piece", "expected");
    row("before the first", gTexto.TextoAntes("a,b,c", ",", true), "a");
    row("before one that is not there, strictly", gTexto.TextoAntes("abc", ",", true), "");
    row("before one that is not there", gTexto.TextoAntes("abc", ",", false), "abc");
    row("before the beginning, strictly", gTexto.TextoAntes(",b", ",", true), "");
    row("before the beginning", gTexto.TextoAntes(",b", ",", false), "");
    row("before several characters", gTexto.TextoAntes("x[ROT<1", "[ROT<", true), "x");
    row("before a NUL", gTexto.TextoAntes(u"d:\\\0e:\\"_s, u"\0"_s, true), "d:\\");
    row("before nothing, strictly", gTexto.TextoAntes("abc", "", true), "");
    row("before nothing", gTexto.TextoAntes("abc", "", false), "abc");
    row("before: case counts", gTexto.TextoAntes("aEXECb", "exec", true), "");
    row("behind the first", gTexto.TextoDepois("a,b,c", ","), "b,c");
    row("behind one that is not there", gTexto.TextoDepois("abc", ","), "");
    row("behind several characters", gTexto.TextoDepois("x[ROT<1", "[ROT<"), "1");
    row("behind a NUL", gTexto.TextoDepois(u"d:\\\0e:\\"_s, u"\0"_s), "e:\\");
    row("behind nothing", gTexto.TextoDepois("abc", ""), "");
    row("behind: case counts", gTexto.TextoDepois("aEXECb", "exec"), "");
    row("field 1", gTexto.Campo("a;b", 1, ";"), "a");
    row("the last field, blanks cut", gTexto.Campo("a;  b c ", 2, ";"), "b c");
    row("only blanks are cut", gTexto.Campo("a;\tb\r\n", 2, ";"), "\tb\r\n");
    row("field 0", gTexto.Campo("a;b", 0, ";"), "");
    row("field -1", gTexto.Campo("a;b", -1, ";"), "");
    row("a field beyond the last", gTexto.Campo("a;b", 3, ";"), "");
    row("the field behind a final delimiter", gTexto.Campo("a;", 2, ";"), "");
    row("field 1 without a delimiter", gTexto.Campo("abc", 1, "<VETPECA>"), "abc");
    row("a field between NULs", gTexto.Campo(u"a\0b"_s, 2, u"\0"_s), "b");
    row("a field between tabs", gTexto.Campo("a\tb", 2, "\t"), "b");
    row("a field of nothing", gTexto.Campo("", 1, ";"), "");
    row("a field cut at nothing", gTexto.Campo(" ab ", 1, ""), "ab");
    row("directory", gTexto.DiretorioDe("c:\\a\\b.txt"), "c:\\a\\");
    row("root directory", gTexto.DiretorioDe("c:\\b.txt"), "c:\\");
    row("no directory", gTexto.DiretorioDe("b.txt"), "");
}

void TstTexto::pieces()
{
    QFETCH(QString, piece);
    QTEST(piece, "expected");
}

void TstTexto::keysAndLists_data()
{
    const Table<QString, QString> row("text", "expected");
    const QString text = "[zeto]\r\nXZETO_MM=no\r\nzeto_mm=c:\\a=b \r\nZETO_MM=second\r\nEmpty=\r\nLast=é";
    const auto get = [](const QString &from, const QString &key) { return gTexto.LeChave(from, key, "=", "\r\n"); };
    row("any case, first line counts", get(text, "ZETO_MM"), "c:\\a=b ");
    row("to the end of the text", get(text, "LAST"), "é");
    row("an empty value", get(text, "EMPTY"), "");
    row("a missing key", get(text, "MM_ALT"), "");
    row("only the beginning of a key", get(text, "ZETO"), "");
    row("at the start of the text", get("A=1\r\nB=2", "a"), "1");
    row("a line feed alone ends no line", get("A=1\nB=2", "A"), "1\nB=2");
    row("a NUL in the value", get(u"A=x\0y\r\n"_s, "A"), u"x\0y"_s);
    row("in an empty text", get("", "A"), "");
    row("in a huge text without line ends", get(QString(3000000, u'='), "A"), "");
    const auto put = [](const QString &into) { return gTexto.GravaChave(into, "ZETO_CAD", "W", "=", "\r\n"); };
    row("replaced where it stands", put("A=1\r\nzeto_cad=c:\\x\r\nB=2"), "A=1\r\nzeto_cad=W\r\nB=2");
    row("an empty value is replaced", put("ZETO_CAD="), "ZETO_CAD=W");
    row("a missing key gets a line at the end", put("A=1"), "A=1\r\nZETO_CAD=W");
    row("a missing key, behind a line end", put("A=1\r\n"), "A=1\r\nZETO_CAD=W");
    row("a missing key in an empty text", put(""), "ZETO_CAD=W");
    row("sorted by code", gTexto.OrdenaLista("b;a;É;Z;10;9", ";", "|"), "10|9|Z|a|b|É");
    row("sorted with an empty field", gTexto.OrdenaLista("b;;a", ";", ";"), ";a;b");
    row("sorted nothing", gTexto.OrdenaLista("", ";", ";"), "");
}

void TstTexto::keysAndLists()
{
    QFETCH(QString, text);
    QTEST(text, "expected");
}

void TstTexto::counts()
{
    QCOMPARE(gTexto.ContaDelimitador("aaaa", "aa"), 2); // without overlaps
    QCOMPARE(gTexto.ContaDelimitador("12610\r\n", "261"), 1);
    QCOMPARE(gTexto.ContaDelimitador("", "a"), 0);
    QCOMPARE(gTexto.ContaDelimitador("abc", ""), 0);
    QCOMPARE(gTexto.ContaDelimitador(QString(5000000, u';'), ";"), 5000000);
}

void TstTexto::filesAreReadWhole()
{
    QByteArray binary;
    for (int i = 0; i < 1000000; ++i)
        binary.append(static_cast<char>(i * 7));
    mDir->put("/Any.bin", binary);
    QCOMPARE(gTexto.LeBytes(at("\\ANY.BIN")), binary);
    QCOMPARE(gTexto.LeArquivo(at("\\any.bin")).size(), binary.size());
    mDir->put("/t.txt", "<SP\xC7>\r\n\n");
    QCOMPARE(gTexto.LeArquivo(at("\\t.txt")), "<SPÇ>\r\n\n");
    mDir->put("/empty", "");
    for (const QString &none : {at("\\empty"), at("\\missing"), at(""), at(u"\\a\0b"_s), QString()})
        QCOMPARE(gTexto.LeArquivo(none), "");
}

void TstTexto::existence()
{
    mDir->put("/Fig/a.GIF");
    QVERIFY(gTexto.ArquivoExiste(at("\\fig\\A.gif")));
    QVERIFY(gTexto.ArquivoExiste(at("\\fig\\")));
    QVERIFY(!gTexto.ArquivoExiste(at("\\fig"))); // a directory is no file
    QVERIFY(!gTexto.ArquivoExiste(at("\\fig\\a.gif\\")));
    QVERIFY(!gTexto.ArquivoExiste(at("\\none")));
    QVERIFY(!gTexto.ArquivoExiste(""));
    QVERIFY(!gTexto.ArquivoExiste(at(u"\\fig\\a.gif\0"_s)));
}

void TstTexto::filesAreWrittenWhollyOrNotAtAll()
{
    const QString file = at("\\RotSelec.cfg");
    gTexto.GravaArquivo(file, "261\r\nação ж", 0);
    QCOMPARE(mDir->get("/RotSelec.cfg"), "261\r\na\xE7\xE3o ?");
    gTexto.GravaArquivo(at("\\ROTSELEC.CFG"), "", -1); // the same file, now empty
    QCOMPARE(QDir(mDir->native()).entryList(QDir::Files), QStringList{"RotSelec.cfg"});
    QCOMPARE(mDir->get("/RotSelec.cfg"), "");

    const QString alone = '/' + QString(250, u'a'); // no name of a file beside it fits
    mDir->put(alone, "a longer list");
    gTexto.GravaArquivo(barras(mDir->native(alone)), "list", 0);
    QCOMPARE(mDir->get(alone), "list");
    QVERIFY(QFile::remove(mDir->native(alone)));

    QVERIFY(QDir(mDir->native()).mkdir("dir"));
    for (const QString &impossible : {u"\\dir"_s, u"\\none\\x"_s, u"\\RotSelec.cfg\\x"_s, u"\\a\0"_s})
        gTexto.GravaArquivo(at(impossible), "x", 0);
    gTexto.GravaArquivo("\\dev\\full\\x", "x", 0);
    for (const QString &each : {file, file, QString(), at("\\dir")}) // there, gone, none, a directory
        gTexto.ApagaArquivo(each);
    QCOMPARE(QDir(mDir->native()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{"dir"});
}

void TstTexto::temporaryFiles()
{
    const auto name = [](const QString &path) { return path.section('\\', -1); };
    const QString one = gTexto.ArquivoTemporario("TMP"), two = gTexto.ArquivoTemporario("TMP");
    QVERIFY(one != two && gTexto.ArquivoExiste(one) && gTexto.ArquivoExiste(two));
    QVERIFY(name(one).startsWith("TMP") && one.endsWith(".TMP") && one.count(".TMP") == 1);
    QCOMPARE(gTexto.ArquivoTemporario("no\\such\\"), "");
    QCOMPARE(gTexto.ArquivoTemporario(u"\0"_s), "");
    escreve(QDir::tempPath() + "/quorel", "spelled in lower case");
    QVERIFY(name(gTexto.ArquivoTemporario("QUOREL")).startsWith("QUOREL"));
}

void TstTexto::commands_data()
{
    const Table<QString, QString, QString> row("command", "program", "arguments"); // D: the directory
    row("alone", "D\\exe\\Zeto.exe", "/exe/Zeto.exe", "");
    row("the rest as it is", "D\\EXE\\zeto.exe /cfg:\\a b\\c.txt  /Hook:", "/exe/Zeto.exe",
        "/cfg:\\a b\\c.txt  /Hook:");
    row("longest beginning", "D\\exe\\My Game.exe one", "/exe/My Game.exe", "one");
    row("shorter one", "D\\exe\\My other", "/exe/My", "other");
    row("in quotes", "\"D\\exe\\My\" Game.exe", "/exe/My", " Game.exe");
    row("ends at a blank or at the end only", "D\\exe\\Zeto.exe/x", "", "");
    row("a directory is no program", "D\\exe one", "", "");
    row("a blank", "D\\ ", "", "");
    row("empty", "", "", "");
}

void TstTexto::commands()
{
    QFETCH(QString, command);
    QFETCH(QString, program);
    QFETCH(QString, arguments);
    for (const char *name : {"/exe/Zeto.exe", "/exe/My", "/exe/My Game.exe"})
        mDir->put(name);
    ProgramRequest started;
    costuras().startProgram = [&](const ProgramRequest &request) {
        started = request;
        return request.arguments != "one"; // that one fails
    };
    const int result = gTexto.Executa(command.replace("D\\", at("\\")), 1, true, "");
    QCOMPARE(result != 0, !program.isEmpty() && arguments != "one");
    QVERIFY2(
        program.isEmpty() ? started.program.isEmpty() : QFileInfo(started.program) == QFileInfo(mDir->native(program)),
        qPrintable(started.program));
    QCOMPARE(started.arguments, arguments);
    QCOMPARE(started.waitUntilReady, !program.isEmpty());
}

void TstTexto::attributesAndCopies()
{
    const QString from = at("\\CADASTROS.MDB"), to = at("\\copy.mdb");
    mDir->put("/Cadastros.mdb", QByteArray(3000000, 'q'));
    gArquivo.Abre(from);
    QVERIFY(!gArquivo.SomenteLeitura());
    QVERIFY(QFile::setPermissions(mDir->native("/Cadastros.mdb"), QFile::ReadOwner));
    QVERIFY(gArquivo.SomenteLeitura());
    mDir->put("/copy.mdb", "old and longer or not");
    QVERIFY(gArquivo.Copia(from, to));
    QCOMPARE(mDir->get("/copy.mdb").size(), 3000000);
    gArquivo.Abre(to);
    QVERIFY(gArquivo.SomenteLeitura()); // as its original
    QVERIFY(gArquivo.TiraSomenteLeitura(to));
    QVERIFY(!gArquivo.SomenteLeitura());
    QVERIFY(!gArquivo.Copia(at("\\none"), to));
    QVERIFY(!gArquivo.Copia(from, at("\\none\\x")));
    QVERIFY(!gArquivo.Copia("", ""));
    QVERIFY(!gArquivo.TiraSomenteLeitura(at("\\none")));
}

void TstTexto::desktop()
{
    QWidget window;
    window.setWindowTitle("Quadrinhos - O cão");
    window.show();
    const Janela handle = handleOf(&window);
    QVERIFY(handle != 0);
    QCOMPARE(gSistema.ProcuraJanela("Quadrinhos -", 2, true), handle);
    QCOMPARE(gSistema.ProcuraJanela("Quadrinhos -", 2, false), Janela(0));
    QCOMPARE(gSistema.ProcuraJanela("Quadrinhos - O cão", 0, false), handle);
    int waited = 0;
    costuras().pause = [&](int milliseconds) { waited = milliseconds; };
    gSistema.Pausa(999.6F);
    QCOMPARE(waited, 1000);
    QCOMPARE(gSistema.DirWindows(), barras(qEnvironmentVariable("QUOREL_WINDIR")));
    QCOMPARE(gUnidades.ListaUnidades(kOpticalDrive), "");
}

QTEST_MAIN(TstTexto)
#include "tst_texto.moc"
