#include "licao/programa.h"
#include "platform/codec.h"
#include "platform/endereco.h"
#include "platform/protocolo.h"
#include "support/suporte.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace quorel;

/// The real program under each of its names, driven as the shell does it.
class TstProcesso : public QObject
{
    Q_OBJECT
private slots:
    void init() { teste::failOnWarnings(); }
    void runsUnderItsName_data();
    void runsUnderItsName();
};

void TstProcesso::runsUnderItsName_data()
{
    QTest::addColumn<QString>("arquivo");
    QTest::addColumn<QString>("titulo");
    QTest::addColumn<QString>("interna");
    QTest::newRow("Zeto") << u"Zeto.exe"_s << u"Zeto - Quorel"_s << u"ZETO"_s;
    QTest::newRow("Desenho") << u"Desenho.exe"_s << u"Editor de Desenhos - Quorel"_s << QString();
    QTest::newRow("Desenhos") << u"desenhos.exe"_s << u"Editor de Desenhos - Quorel"_s << QString();
    QTest::newRow("Vrel") << u"Vrel.exe"_s << u"Histórias - Quorel"_s << QString();
    QTest::newRow("Livros") << u"Livros.exe"_s << u"Livros - Quorel"_s << u"Livros"_s;
    QTest::newRow("Calc, as the system may write it") << u"calc.exe"_s << u"Calculadora - Quorel"_s << QString();
}

void TstProcesso::runsUnderItsName()
{
    QFETCH(QString, arquivo);
    QFETCH(QString, titulo);
    QFETCH(QString, interna);
    QTemporaryDir dir;
    QVERIFY(QFile::copy(QStringLiteral(QUOREL_BIN "/licao" QUOREL_SUFFIX), dir.filePath(arquivo)));
    Endereco shell;
    shell.publish(QString::fromUtf16(kTituloGerenciador));
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedChannels);
    child.start(dir.filePath(arquivo), {u"/cfg:\\não há\\zeto_cnf.txt"_s, u"/Hook:"_s});
    QTRY_VERIFY(findWindow(titulo, false) != 0);
    const Janela janela = findWindow(titulo, false);
    if (!interna.isEmpty()) {
        QTRY_VERIFY(findWindow(interna, false) != 0);
        const Janela inner = findWindow(interna, true);
        QVERIFY(inner != janela); // "Livros" is not the beginning of "Livros - Quorel"
        placeWindow(inner, Ordem::Topmost, kKeepPosition);
    }
    placeWindow(janela, Ordem::Top, 0);
    const QByteArray linha =
        encode1252(u"(1,1)7<SPÇ>1<SPÇ>1<SPÇ><SPÇ><SPÇ><SPÇ><SPÇ>T<SPÇ>x<PÇ><VAA><VOA><VCM><CM>") + '\0';
    for (int n = 0; n < 3; ++n)
        QCOMPARE(sendCopyData(janela, shell.handle(), MSG_AULA, qint32(linha.size()), linha), 1);
    QCOMPARE(sendCopyData(janela, shell.handle(), MSG_SAI, 0, {}), 1);
    const auto ended = [&child] { return child.state() == QProcess::NotRunning; };
    QVERIFY2(QTest::qWaitFor(ended, 30000), findWindow(titulo, false) ? "with its window" : "without its window");
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 0);
    QCOMPARE(findWindow(titulo, false), Janela(0));
}

QTEST_MAIN(TstProcesso)
#include "tst_processo.moc"
