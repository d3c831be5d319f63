#include "lessons/andamento.h"
#include "lessons/executa_aula.h"
#include "lessons/gancho.h"
#include "lessons/mensagens.h"
#include "lessons/programas_filhos.h"
#include "platform/costuras.h"
#include "platform/endereco.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include "vista_gravada.h"

#include <QDir>
#include <QTemporaryDir>

#include <csignal>

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
    void theChildOfThePageLeadsThroughARoteiro();
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
        QFile::link(QStringLiteral(QUOREL_BIN "/filho_licao"), mDir->filePath("exe/"_L1 + name + ".exe"_L1));
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
    for (int i = 1; i <= 300; ++i) {
        chain << u"DENTRO:A"_s;
        all += i < 300 ? u"A:"_s : QString();
    }
    QTest::newRow("300 lessons, each from inside the handler of the one before") << chain << all;
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
    QTest::addColumn<QString>("programa");
    QTest::addColumn<bool>("externo");
    QTest::addColumn<QString>("linha");
    QTest::newRow("Desenho") << u"Desenho"_s << u"Desenho"_s << false << u"2060 licao1"_s;
    QTest::newRow("Vrel") << u"Vrel"_s << u"Vrel"_s << false << u"2060 licao1"_s;
    QTest::newRow("Dicionario") << u"Dicionario"_s << u"Livros"_s << false << u"2060 licao1"_s;
    QTest::newRow("Livros, commanded") << u"Livros"_s << u"Livros"_s << true << u"2060 licao1CMDEXEC"_s;
    QTest::newRow("Calculadora") << u"Calculadora"_s << u"Calc"_s << false << u"2060 licao1"_s;
}

void TstExecutaAula::eachTypeHasItsProgram()
{
    QFETCH(QString, tipo);
    QFETCH(QString, programa);
    QFETCH(bool, externo);
    QFETCH(QString, linha);
    umRoteiro({u"a"_s, u"b"_s, u"c"_s}, tipo);
    gAulaAtual = 2;
    gExecExterno = externo;
    for (int i = 0; i < 2; ++i) {
        QString aula = u"licao1"_s;
        QString ownTipo = tipo;
        ExecutaAula(aula, ownTipo);
        QCOMPARE(ownTipo, programa);
        QVERIFY(!gExecExterno); // cleared by Livros
        gExecExterno = externo;
    }
    QCOMPARE(
        lines(), (QStringList{pidFirst() + u' ' + programa + " /cfg:\\cnf\\zeto_cnf.txt /Hook:"_L1, linha, linha}));
    QVERIFY(gJanelaFilha != 0);
}

void TstExecutaAula::theChildOfThePageLeadsThroughARoteiro()
{
    const QString zeto = mDir->filePath(u"exe/Zeto.exe"_s);
    QVERIFY(QFile::remove(zeto));
    QVERIFY(QFile::copy(QStringLiteral(QUOREL_SOURCE "/docs/filho_exemplo.py"), zeto));
    QVERIFY(QFile::setPermissions(zeto, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    umRoteiro({u"um"_s, u"dois"_s, u"três"_s}, u"Zeto"_s);
    iniciaRoteiro(1);
    QVERIFY(gJanelaZeto != 0);
    QTRY_VERIFY_WITH_TIMEOUT(!gEmRoteiro, kPatience);
    QCOMPARE(gAulaAtual, qint16(4));
    QCOMPARE(mVista->largest, u"A:A:"_s);
}

void TstExecutaAula::badChildren_data()
{
    QTest::addColumn<QString>("linha");
    QTest::newRow("dies inside the message") << u"MORRE"_s;
    QTest::newRow("never answers") << u"MUDO"_s;
    QTest::newRow("can't be started") << QString();
}

void TstExecutaAula::badChildren()
{
    QFETCH(QString, linha);
    setSendLimit(500);
    if (linha.isEmpty())
        gConfig.SetaCFG(QString());
    umRoteiro({linha.isEmpty() ? u"x"_s : linha, u"next"_s}, u"Zeto"_s);
    gRespostas = u"A:"_s;
    iniciaRoteiro(1);
    QVERIFY(gEmRoteiro);
    QCOMPARE(gRespostas, u"A:"_s);
    EnviaTexto(janelaBlocos(), janelaBlocos(), MSG_CLASSE, u"7"_s); // the shell goes on
    QCOMPARE(gClasse, 7);
    if (linha == "MUDO"_L1)
        ::kill(pid_t(lines().first().section(u' ', 1, 1).toInt()), SIGKILL);
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
    Endereco viewer;
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
    QTRY_VERIFY_WITH_TIMEOUT(!gEmRoteiro, kPatience);
    QCOMPARE(gAulaAtual, 3);
    QVERIFY(lines().contains(u"2060 FORA:"_s));
}

QTEST_MAIN(TstExecutaAula)
#include "tst_executa_aula.moc"
