#include "lessons/andamento.h"
#include "lessons/executa_aula.h"
#include "lessons/gancho.h"
#include "lessons/mensagens.h"
#include "lessons/programas_filhos.h"
#include "platform/costuras.h"
#include "platform/endereco.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/sistema.h"
#include "support/suporte.h"

#include "vista_gravada.h"

#include <QDir>
#include <QTemporaryDir>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

static constexpr int kPatience = 30000; ///< ms

class TstExecutaAula final : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<QTemporaryDir> mDir;
    std::unique_ptr<VistaGravada> mVista;

    QString diary() const { return mDir->filePath(u"diario"_s); }
    QStringList lines() const { return QString::fromUtf8(le(diary())).split(u'\n', Qt::SkipEmptyParts); }
    QString places() const { return QString::fromUtf8(le(diary() + ".lugar"_L1)); }
    QString pidFirst() const { return lines().first().section(u' ', 0, 1); }
    void endChildren()
    {
        despedeFilhos();
        for (const Janela janela : {gJanelaZeto, gJanelaLivros, gJanelaVrel, gJanelaCalc, gJanelaDesenho})
            QTRY_VERIFY_WITH_TIMEOUT(janela == 0 || !EnviaTexto(janela, janelaBlocos(), 4711, QString()), kPatience);
    }

private slots:
    void init();
    void cleanup();
    void childLeadsThroughARoteiro_data();
    void childLeadsThroughARoteiro();
    void eachTypeHasItsProgram_data();
    void eachTypeHasItsProgram();
    void aMessageInsideTheTurnOfAHandler();
    void badChildren_data();
    void badChildren();
    void unknownTypeSaysSo();
    void comicsAdvanceWhenTheirViewerCloses();
};

void TstExecutaAula::init()
{
    failOnWarnings();
    reiniciaLessons();
    reiniciaStartup();
    mDir = std::make_unique<QTemporaryDir>();
    mVista = std::make_unique<VistaGravada>();
    QDir(mDir->path()).mkdir(u"exe"_s);
    for (const char *name : {"Zeto", "Desenho", "Vrel", "Livros", "Calc", "calc"})
        QFile::copy(
            QStringLiteral(QUOREL_BIN "/filho_licao" QUOREL_SUFFIX), mDir->filePath("exe/"_L1 + name + ".exe"_L1));
    qputenv("FILHO_DIARIO", diary().toUtf8());
    gConfig.ArquivoCnf = u"\\cnf\\zeto_cnf.txt"_s;
    gConfig.SetaCFG("ZETO_EXE="_L1 + barras(mDir->filePath(u"exe"_s)) + "\r\n"_L1);
    InstalaGancho(janelaBlocos());
    gAluno = 9999;
    gClasse = 9999;
}

void TstExecutaAula::cleanup()
{
    endChildren();
    RemoveGancho();
    mVista.reset();
    reiniciaLessons();
    reiniciaCatalogue();
    reiniciaCosturas();
    setSendLimit(5000);
    // Some systems keep a program's file for as long as it takes to end.
    QTRY_VERIFY_WITH_TIMEOUT(QDir(mDir->path()).removeRecursively(), kPatience);
}

void TstExecutaAula::childLeadsThroughARoteiro_data()
{
    QTest::addColumn<QStringList>("linhas");
    QTest::addColumn<QString>("respostas");
    QTest::newRow("from its event loop") << QStringList{u"FORA:A"_s, u"FORA:E"_s, u"FORA:last"_s} << u"A:E:"_s;
    QTest::newRow("a lesson of 100 KB") << QStringList{"FORA:"_L1 + QString(100000, u'x'), u"FORA:"_s}
                                        << QString(100000, u'x') + u':';
    QTest::newRow("flood, unknown codes, an oversized text: the answer still counts")
        << QStringList{u"ENXURRADA:A"_s, u"FORA:"_s} << u"A:"_s;
    QTest::newRow("a text without NUL") << QStringList{u"SEMNUL"_s, u"FORA:"_s} << u"abc:"_s;
    QStringList chain;
    QString all;
    for (int i = 1; i <= kCorrente; ++i) {
        chain << u"DENTRO:A"_s;
        all += i < kCorrente ? u"A:"_s : QString();
    }
    QTest::newRow("a long chain of lessons, each from inside the handler of the one before") << chain << all;
}

void TstExecutaAula::childLeadsThroughARoteiro()
{
    QFETCH(QStringList, linhas);
    QFETCH(QString, respostas);
    umRoteiro(linhas, u"Zeto"_s);
    iniciaRoteiro(1);
    QVERIFY(gJanelaZeto != 0);
    QTRY_VERIFY_WITH_TIMEOUT(!gEmRoteiro, kPatience);
    QCOMPARE(gAulaAtual, linhas.size() + 1);
    QVERIFY(gRespostas.isEmpty());
    QCOMPARE(mVista->largest, respostas);
    QTRY_VERIFY_WITH_TIMEOUT(lines().contains(u"2122 ESCONDE"_s), kPatience);
    QVERIFY(lines().contains(u"2060 "_s + linhas.last()));
    QCOMPARE(lines().first(), pidFirst() + u" Zeto /cnf:\\cnf\\zeto_cnf.txt /Hook:"_s);
    QCOMPARE(lines().filter(QRegularExpression(u"^inicio"_s)).size(), 1);
    QCOMPARE(lines().filter(QRegularExpression(u"^2060"_s)).size(), linhas.size());
    endChildren();
    QVERIFY(lines().contains(u"2071 "_s));
}

void TstExecutaAula::eachTypeHasItsProgram_data()
{
    QTest::addColumn<QString>("tipo");
    QTest::addColumn<QString>("comando");
    QTest::addColumn<bool>("externo");
    QTest::addColumn<QString>("linha");
    QTest::addColumn<QString>("lugar"); // of the window and its inner one, when the lesson comes
    const QString lesson = u"2060 licao1"_s;
    const QString corner = u"0,0 400x300 / 10,20 200x100"_s;
    QTest::newRow("Zeto: its size is taken, and the inner window's")
        << u"Zeto"_s << u"Zeto /cnf:"_s << false << lesson << u"300,200 120x80 / 10,20 50x40 na frente"_s;
    QTest::newRow("Desenho") << u"Desenho"_s << u"Desenho /cfg:"_s << false << lesson << corner;
    QTest::newRow("Vrel") << u"Vrel"_s << u"Vrel /cfg:"_s << false << lesson << corner;
    QTest::newRow("Dicionario: the inner window comes in front")
        << u"Dicionario"_s << u"Livros /cfg:"_s << false << lesson << corner + u" na frente"_s;
    QTest::newRow("Livros, commanded") << u"Livros"_s << u"Livros /cfg:"_s << true << lesson + u"CMDEXEC"_s
                                       << corner + u" na frente"_s;
    QTest::newRow("Calculadora") << u"Calculadora"_s << u"Calc /cfg:"_s << false << lesson << corner;
}

void TstExecutaAula::eachTypeHasItsProgram()
{
    QFETCH(QString, tipo);
    QFETCH(QString, comando);
    QFETCH(bool, externo);
    QFETCH(QString, linha);
    umRoteiro({u"a"_s, u"b"_s, u"c"_s}, tipo);
    gAulaAtual = 2;
    for (int i = 0; i < 2; ++i) { // the second time the program that runs is found
        gExecExterno = externo;
        QString aula = u"licao1"_s;
        QString ownTipo = tipo;
        ExecutaAula(aula, ownTipo);
        QCOMPARE(ownTipo, comando.section(u' ', 0, 0));
        QVERIFY(!gExecExterno); // cleared by Livros
    }
    QCOMPARE(lines(), (QStringList{pidFirst() + u' ' + comando + "\\cnf\\zeto_cnf.txt /Hook:"_L1, linha, linha}));
    QTEST(places(), "lugar");
    QVERIFY(gJanelaFilha != 0);
}

/// While the answer of one program is handled, in the turn of events before its next lesson, another program's comes.
void TstExecutaAula::aMessageInsideTheTurnOfAHandler()
{
    umRoteiro({u"um"_s, u"dois"_s, u"três"_s, u"quatro"_s}, u"Zeto"_s);
    iniciaRoteiro(1);
    QString outra = u"MUDA"_s;
    QString vrel = u"Vrel"_s;
    ExecutaAula(outra, vrel);
    QMetaObject::invokeMethod(
        this,
        [&] {
            QCOMPARE(gRespostas, u"A:"_s);
            EnviaTexto(gJanelaVrel, janelaBlocos(), MSG_AULA, u"FORA:E"_s);
            QTRY_COMPARE_WITH_TIMEOUT(gRespostas, u"A:E:"_s, kPatience);
            QCOMPARE(gAulaAtual, 3);
            umRoteiro({u"novo"_s}, u"Desenho"_s); // as another reading of blocks would
        },
        Qt::QueuedConnection);
    QCOMPARE(sendCopyData(janelaBlocos(), janelaBlocos(), MSG_PROXIMA, 2, QByteArrayView("A\0", 2)), 1);
    QCOMPARE(gRespostas, u"A:E:"_s);
    QCOMPARE(gMensagem.Texto, u"E"_s);
    QCOMPARE(
        lines().filter(QRegularExpression(u"^2060"_s)), // the inner message's lesson first; the outer keeps its own
        (QStringList{u"2060 um"_s, u"2060 MUDA"_s, u"2060 FORA:E"_s, u"2060 três"_s, u"2060 dois"_s}));
    QCOMPARE(gJanelaFilha, gJanelaZeto);
}

void TstExecutaAula::badChildren_data()
{
    QTest::addColumn<QString>("linha");
    QTest::addColumn<QString>("respostas");
    QTest::newRow("dies inside the message") << u"MORRE"_s << u"A:"_s;
    QTest::newRow("dies with an answer sent and half of another") << u"METADE:segunda"_s << u"A:segunda:"_s;
    QTest::newRow("never answers") << u"MUDO"_s << u"A:"_s;
    QTest::newRow("can't be started") << QString() << u"A:"_s;
}

void TstExecutaAula::badChildren()
{
    QFETCH(QString, linha);
    QFETCH(QString, respostas);
    setSendLimit(500);
    if (linha.isEmpty())
        gConfig.SetaCFG(QString());
    umRoteiro({linha.isEmpty() ? u"x"_s : linha, u"next"_s}, u"Zeto"_s);
    gRespostas = u"A:"_s;
    iniciaRoteiro(1);
    QVERIFY(gEmRoteiro);
    QTRY_COMPARE_WITH_TIMEOUT(gRespostas, respostas, kPatience);
    EnviaTexto(janelaBlocos(), janelaBlocos(), MSG_CLASSE, u"7"_s); // the shell goes on
    QCOMPARE(gClasse, 7);
    if (linha == "MUDO"_L1)
        mataProcesso(lines().first().section(u' ', 1, 1).toInt());
}

void TstExecutaAula::unknownTypeSaysSo()
{
    BoxScript boxes{Resposta::Ok};
    umRoteiro({u"x"_s}, u"Fita"_s);
    iniciaRoteiro(1);
    QCOMPARE(boxes.last(), Caixa{.texto = u"Tipo de execução de aula desconhecido!"_s});
    QVERIFY(gEmRoteiro);
}

void TstExecutaAula::comicsAdvanceWhenTheirViewerCloses()
{
    const QString windows = qEnvironmentVariable("QUOREL_WINDIR");
    escreve(windows + "/QUOREL2001/Arqs/tira.htm"_L1, "<html>");
    umRoteiro({u"a<SPÇ><SPÇ><SPÇ><SPÇ><SPÇ><SPÇ><SPÇ><SPÇ> tira.htm <SPÇ>"_s, u"FORA:"_s}, u"HTML"_s);
    gRoteiros.edit(1).Aulas.edit(2).Tipo = u"Zeto"_s;
    QString aula = u"x"_s;
    QString vrel = u"Vrel"_s;
    ExecutaAula(aula, vrel);
    placeWindow(gJanelaVrel, Ordem::Topmost, kKeepSize | kKeepPosition);
    ExecutaAula(aula, vrel);
    QCOMPARE(places(), u"0,0 400x300 sempre na frente / 10,20 200x100"_s);
    QWidget page;
    page.setGeometry(50, 60, 300, 200);
    Endereco viewer(&page);
    std::vector<int> pauses;
    DocumentRequest opened;
    costuras().openDocument = [&](const DocumentRequest &request) {
        opened = request;
        viewer.publish(u"Quadrinhos - A tira"_s);
        return true;
    };
    costuras().pause = [&](int milliseconds) {
        pauses.push_back(milliseconds);
        if (pauses.size() == 4)
            viewer.withdraw();
    };
    iniciaRoteiro(1);
    QCOMPARE(pauses, (std::vector<int>{1000, 5000, 1000, 1000}));
    QCOMPARE(opened.document, barras(windows) + "\\Quorel2001\\Arqs\\tira.htm"_L1);
    QCOMPARE(opened.directory, u"tira.htm"_s); // the file's name as working directory
    QCOMPARE(opened.show, ShowMode::Maximized);
    QCOMPARE(QRect(cantoDe(page), page.size()), QRect(0, 0, 300, 200));
    QVERIFY(sempreNaFrente(page));
    QTRY_VERIFY_WITH_TIMEOUT(!gEmRoteiro, kPatience);
    QCOMPARE(gAulaAtual, 3);
    QVERIFY(lines().contains(u"2060 FORA:"_s));
    ExecutaAula(aula, vrel);
    QCOMPARE(places(), u"0,0 400x300 / 10,20 200x100"_s); // the viewer was to be above the programs
}

QTEST_MAIN(TstExecutaAula)
#include "tst_executa_aula.moc"
