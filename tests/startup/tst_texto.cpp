#include "platform/costuras.h"
#include "platform/sistema.h"
#include "startup/arquivo_util.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"
#include "startup/unidade_util.h"
#include "support/suporte.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstTexto : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { reiniciaCosturas(); }
    void beforeAndBehind_data();
    void beforeAndBehind();
    void fields_data();
    void fields();
    void counts();
    void directories();
    void sorts();
    void keys_data();
    void keys();
    void keysAreReplaced();
    void filesAreReadWhole();
    void existence();
    void filesAreWrittenWhollyOrNotAtAll();
    void temporaryFiles();
    void commands_data();
    void commands();
    void attributesAndCopies();
    void desktop();

private:
    QString at(const QString &rest) const { return barras(mDir->path()) + rest; }
    QString native(const QString &rest) const { return mDir->path() + rest; }
    std::unique_ptr<QTemporaryDir> mDir;
};

void TstTexto::init()
{
    failOnWarnings();
    mDir = std::make_unique<QTemporaryDir>();
}

void TstTexto::beforeAndBehind_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("delimiter");
    QTest::addColumn<QString>("strict");
    QTest::addColumn<QString>("loose");
    QTest::addColumn<QString>("behind");
    QTest::newRow("first occurrence") << u"a,b,c"_s << u","_s << u"a"_s << u"a"_s << u"b,c"_s;
    QTest::newRow("none") << u"abc"_s << u","_s << u""_s << u"abc"_s << u""_s;
    QTest::newRow("begins with it") << u",b"_s << u","_s << u""_s << u""_s << u"b"_s;
    QTest::newRow("several characters") << u"x[ROT<1"_s << u"[ROT<"_s << u"x"_s << u"x"_s << u"1"_s;
    QTest::newRow("NUL") << u"d:\\\0e:\\"_s << u"\0"_s << u"d:\\"_s << u"d:\\"_s << u"e:\\"_s;
    QTest::newRow("empty delimiter") << u"abc"_s << u""_s << u""_s << u"abc"_s << u""_s;
    QTest::newRow("case counts") << u"aEXECb"_s << u"exec"_s << u""_s << u"aEXECb"_s << u""_s;
}

void TstTexto::beforeAndBehind()
{
    QFETCH(QString, text);
    QFETCH(QString, delimiter);
    QTEST(gTexto.TextoAntes(text, delimiter, true), "strict");
    QTEST(gTexto.TextoAntes(text, delimiter, false), "loose");
    QTEST(gTexto.TextoDepois(text, delimiter), "behind");
}

void TstTexto::fields_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("n");
    QTest::addColumn<QString>("delimiter");
    QTest::addColumn<QString>("field");
    QTest::newRow("first") << u"a;b"_s << 1 << u";"_s << u"a"_s;
    QTest::newRow("last, blanks cut") << u"a;  b c "_s << 2 << u";"_s << u"b c"_s;
    QTest::newRow("only blanks are cut") << u"a;\tb\r\n"_s << 2 << u";"_s << u"\tb\r\n"_s;
    QTest::newRow("0") << u"a;b"_s << 0 << u";"_s << u""_s;
    QTest::newRow("negative") << u"a;b"_s << -1 << u";"_s << u""_s;
    QTest::newRow("beyond") << u"a;b"_s << 3 << u";"_s << u""_s;
    QTest::newRow("behind a final delimiter") << u"a;"_s << 2 << u";"_s << u""_s;
    QTest::newRow("no delimiter in it") << u"abc"_s << 1 << u"<VETPECA>"_s << u"abc"_s;
    QTest::newRow("NUL") << u"a\0b"_s << 2 << u"\0"_s << u"b"_s;
    QTest::newRow("tab") << u"a\tb"_s << 2 << u"\t"_s << u"b"_s;
    QTest::newRow("empty text") << u""_s << 1 << u";"_s << u""_s;
    QTest::newRow("empty delimiter") << u" ab "_s << 1 << u""_s << u"ab"_s;
}

void TstTexto::fields()
{
    QFETCH(QString, text);
    QFETCH(int, n);
    QFETCH(QString, delimiter);
    QTEST(gTexto.Campo(text, n, delimiter, 1), "field");
}

void TstTexto::counts()
{
    QCOMPARE(gTexto.ContaDelimitador(u"aaaa"_s, u"aa"_s, 0), 2); // without overlaps
    QCOMPARE(gTexto.ContaDelimitador(u"12610\r\n"_s, u"261"_s, 0), 1);
    QCOMPARE(gTexto.ContaDelimitador(QString(), u"a"_s, 0), 0);
    QCOMPARE(gTexto.ContaDelimitador(u"abc"_s, QString(), 0), 0);
    QCOMPARE(gTexto.ContaDelimitador(QString(5000000, u';'), u";"_s, 0), 5000000);
}

void TstTexto::directories()
{
    QCOMPARE(gTexto.DiretorioDe(u"c:\\a\\b.txt"_s), u"c:\\a\\"_s);
    QCOMPARE(gTexto.DiretorioDe(u"c:\\b.txt"_s), u"c:\\"_s);
    QCOMPARE(gTexto.DiretorioDe(u"b.txt"_s), QString());
}

void TstTexto::sorts()
{
    QCOMPARE(gTexto.OrdenaLista(u"b;a;É;Z;10;9"_s, u";"_s, u"|"_s, 1, 0, -1), u"10|9|Z|a|b|É"_s); // by code
    QCOMPARE(gTexto.OrdenaLista(u"b;;a"_s, u";"_s, u";"_s, 1, 0, -1), u";a;b"_s);
    QCOMPARE(gTexto.OrdenaLista(QString(), u";"_s, u";"_s, 1, 0, -1), QString());
}

void TstTexto::keys_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    const QString text = u"[zeto]\r\nXZETO_MM=no\r\nzeto_mm=c:\\a=b \r\nZETO_MM=second\r\nEmpty=\r\nLast=é"_s;
    QTest::newRow("any case, first line counts") << text << u"ZETO_MM"_s << u"c:\\a=b "_s;
    QTest::newRow("to the end of the text") << text << u"LAST"_s << u"é"_s;
    QTest::newRow("empty value") << text << u"EMPTY"_s << u""_s;
    QTest::newRow("missing") << text << u"MM_ALT"_s << u""_s;
    QTest::newRow("only the beginning of a key") << text << u"ZETO"_s << u""_s;
    QTest::newRow("at the start of the text") << u"A=1\r\nB=2"_s << u"a"_s << u"1"_s;
    QTest::newRow("a line feed alone ends no line") << u"A=1\nB=2"_s << u"A"_s << u"1\nB=2"_s;
    QTest::newRow("a NUL in the value") << u"A=x\0y\r\n"_s << u"A"_s << u"x\0y"_s;
    QTest::newRow("empty text") << u""_s << u"A"_s << u""_s;
    QTest::newRow("huge text without line ends") << QString(3000000, u'=') << u"A"_s << u""_s;
}

void TstTexto::keys()
{
    QFETCH(QString, text);
    QFETCH(QString, key);
    QTEST(gTexto.LeChave(text, key, u"="_s, u"\r\n"_s), "value");
}

void TstTexto::keysAreReplaced()
{
    const auto put = [](const QString &text) {
        return gTexto.GravaChave(text, u"ZETO_CAD"_s, u"W"_s, u"="_s, u"\r\n"_s);
    };
    QCOMPARE(put(u"A=1\r\nzeto_cad=c:\\x\r\nB=2"_s), u"A=1\r\nzeto_cad=W\r\nB=2"_s);
    QCOMPARE(put(u"ZETO_CAD="_s), u"ZETO_CAD=W"_s);
    QCOMPARE(put(u"A=1"_s), u"A=1\r\nZETO_CAD=W"_s);
    QCOMPARE(put(u"A=1\r\n"_s), u"A=1\r\nZETO_CAD=W"_s);
    QCOMPARE(put(QString()), u"ZETO_CAD=W"_s);
}

void TstTexto::filesAreReadWhole()
{
    QByteArray binary;
    for (int i = 0; i < 1000000; ++i)
        binary.append(static_cast<char>(i * 7));
    escreve(native(u"/Any.bin"_s), binary);
    QCOMPARE(gTexto.LeBytes(at(u"\\ANY.BIN"_s)), binary);
    QCOMPARE(gTexto.LeArquivo(at(u"\\any.bin"_s), 0, 0).size(), binary.size());
    escreve(native(u"/t.txt"_s), "<SP\xC7>\r\n\n");
    QCOMPARE(gTexto.LeArquivo(at(u"\\t.txt"_s), 0, 0), u"<SPÇ>\r\n\n"_s);
    escreve(native(u"/empty"_s), QByteArray());
    for (const QString &none : {u"\\empty"_s, u"\\missing"_s, QString(), u"\\a\0b"_s})
        QCOMPARE(gTexto.LeArquivo(at(none), 0, 0), QString());
    QCOMPARE(gTexto.LeBytes(QString()), QByteArray());
}

void TstTexto::existence()
{
    escreve(native(u"/Fig/a.GIF"_s), "x");
    QVERIFY(gTexto.ArquivoExiste(at(u"\\fig\\A.gif"_s)));
    QVERIFY(gTexto.ArquivoExiste(at(u"\\fig\\"_s)));
    QVERIFY(!gTexto.ArquivoExiste(at(u"\\fig"_s))); // a directory is no file
    QVERIFY(!gTexto.ArquivoExiste(at(u"\\fig\\a.gif\\"_s)));
    QVERIFY(!gTexto.ArquivoExiste(at(u"\\none"_s)));
    QVERIFY(!gTexto.ArquivoExiste(QString()));
    QVERIFY(!gTexto.ArquivoExiste(at(u"\\fig\\a.gif\0"_s)));
}

void TstTexto::filesAreWrittenWhollyOrNotAtAll()
{
    const QString file = at(u"\\RotSelec.cfg"_s);
    gTexto.GravaArquivo(file, u"261\r\nação ж"_s, 0, 0);
    QCOMPARE(le(native(u"/RotSelec.cfg"_s)), QByteArray("261\r\na\xE7\xE3o ?"));
    gTexto.GravaArquivo(at(u"\\ROTSELEC.CFG"_s), QString(), -1, 0); // the same file, now empty
    QCOMPARE(QDir(mDir->path()).entryList(QDir::Files), QStringList{u"RotSelec.cfg"_s});
    QCOMPARE(QFileInfo(native(u"/RotSelec.cfg"_s)).size(), 0);

    QVERIFY(QDir(mDir->path()).mkdir(u"dir"_s));
    for (const QString &impossible : {u"\\dir"_s, u"\\none\\x"_s, u"\\RotSelec.cfg\\x"_s, u"\\a\0"_s})
        gTexto.GravaArquivo(at(impossible), u"x"_s, 0, 0);
    gTexto.GravaArquivo(u"\\dev\\full\\x"_s, u"x"_s, 0, 0);
    QCOMPARE(QDir(mDir->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 2);

    gTexto.ApagaArquivo(file);
    QVERIFY(!QFile::exists(native(u"/RotSelec.cfg"_s)));
    gTexto.ApagaArquivo(file);
    gTexto.ApagaArquivo(QString());
    gTexto.ApagaArquivo(at(u"\\dir"_s));
    QVERIFY(QFileInfo(native(u"/dir"_s)).isDir());
}

void TstTexto::temporaryFiles()
{
    const QString one = gTexto.ArquivoTemporario(u"TMP"_s);
    const QString two = gTexto.ArquivoTemporario(u"TMP"_s);
    QVERIFY(one != two);
    QVERIFY(one.endsWith(u".TMP"_s) && one.count(u".TMP"_s) == 1);
    QVERIFY(one.sliced(one.lastIndexOf(u'\\')).startsWith(u"\\TMP"_s));
    QVERIFY(gTexto.ArquivoExiste(one) && gTexto.ArquivoExiste(two));
    QCOMPARE(gTexto.ArquivoTemporario(u"no\\such\\"_s), QString());
    QCOMPARE(gTexto.ArquivoTemporario(u"\0"_s), QString());
    escreve(QDir::tempPath() + u"/quorel"_s, "spelled in lower case");
    const QString prefixed = gTexto.ArquivoTemporario(u"QUOREL"_s);
    QVERIFY(prefixed.sliced(prefixed.lastIndexOf(u'\\')).startsWith(u"\\QUOREL"_s));
}

void TstTexto::commands_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("arguments");
    QTest::newRow("alone") << u"\\exe\\Zeto.exe"_s << u"/exe/Zeto.exe"_s << u""_s;
    QTest::newRow("the rest as it is") << u"\\EXE\\zeto.exe /cfg:\\a b\\c.txt  /Hook:"_s << u"/exe/Zeto.exe"_s
                                       << u"/cfg:\\a b\\c.txt  /Hook:"_s;
    QTest::newRow("longest beginning") << u"\\exe\\My Game.exe one"_s << u"/exe/My Game.exe"_s << u"one"_s;
    QTest::newRow("shorter one") << u"\\exe\\My other"_s << u"/exe/My"_s << u"other"_s;
    QTest::newRow("ends at a blank or at the end only") << u"\\exe\\Zeto.exe/x"_s << u""_s << u""_s;
    QTest::newRow("a directory is no program") << u"\\exe one"_s << u""_s << u""_s;
    QTest::newRow("empty") << u" "_s << u""_s << u""_s;
}

void TstTexto::commands()
{
    QFETCH(QString, command);
    QFETCH(QString, program);
    QFETCH(QString, arguments);
    for (const char *name : {"/exe/Zeto.exe", "/exe/My", "/exe/My Game.exe"})
        escreve(native(QString::fromUtf8(name)), "x");
    std::vector<ProgramRequest> started;
    costuras().startProgram = [&](const ProgramRequest &request) {
        started.push_back(request);
        return request.arguments != u"one"_s; // that one fails
    };
    const int result = gTexto.Executa(at(command), 1, true, QString());
    QCOMPARE(started.size(), size_t(program.isEmpty() ? 0 : 1));
    QCOMPARE(result != 0, !program.isEmpty() && arguments != u"one"_s);
    if (program.isEmpty())
        return;
    QVERIFY2(QFileInfo(started[0].program) == QFileInfo(native(program)), qPrintable(started[0].program));
    QCOMPARE(started[0].arguments, arguments);
    QVERIFY(started[0].waitUntilReady);
}

void TstTexto::attributesAndCopies()
{
    const QString from = at(u"\\CADASTROS.MDB"_s), to = at(u"\\copy.mdb"_s);
    escreve(native(u"/Cadastros.mdb"_s), QByteArray(3000000, 'q'));
    gArquivo.Abre(from);
    QVERIFY(!gArquivo.SomenteLeitura());
    QVERIFY(QFile::setPermissions(native(u"/Cadastros.mdb"_s), QFile::ReadOwner));
    QVERIFY(gArquivo.SomenteLeitura());
    escreve(native(u"/copy.mdb"_s), "old and longer or not");
    QVERIFY(gArquivo.Copia(from, to));
    QCOMPARE(le(native(u"/copy.mdb"_s)).size(), 3000000);
    gArquivo.Abre(to);
    QVERIFY(gArquivo.SomenteLeitura()); // as its original
    QVERIFY(gArquivo.TiraSomenteLeitura(to));
    QVERIFY(!gArquivo.SomenteLeitura());
    QVERIFY(!gArquivo.Copia(at(u"\\none"_s), to));
    QVERIFY(!gArquivo.Copia(from, at(u"\\none\\x"_s)));
    QVERIFY(!gArquivo.Copia(QString(), QString()));
    QVERIFY(!gArquivo.TiraSomenteLeitura(at(u"\\none"_s)));
}

void TstTexto::desktop()
{
    QLabel window;
    window.setWindowTitle(u"Quadrinhos - O cão"_s);
    window.show();
    const Janela handle = handleOf(&window);
    QVERIFY(handle != 0);
    QCOMPARE(gSistema.ProcuraJanela(u"Quadrinhos -"_s, 2, true), handle);
    QCOMPARE(gSistema.ProcuraJanela(u"Quadrinhos -"_s, 2, false), Janela(0));
    QCOMPARE(gSistema.ProcuraJanela(u"Quadrinhos - O cão"_s, 0, false), handle);
    int waited = 0;
    costuras().pause = [&](int milliseconds) { waited = milliseconds; };
    gSistema.Pausa(999.6F);
    QCOMPARE(waited, 1000);
    QCOMPARE(gSistema.DirWindows(), barras(qEnvironmentVariable("QUOREL_WINDIR")));
    QCOMPARE(gUnidades.ListaUnidades(kOpticalDrive), QString());
}

QTEST_MAIN(TstTexto)
#include "tst_texto.moc"
