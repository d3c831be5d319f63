#include "platform/endereco.h"
#include "platform/protocolo.h"
#include "support/suporte.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace quorel;

/// What becomes of a program without a shell, the child of the documents too.
class TstSemGerenciador : public QObject
{
    Q_OBJECT
private slots:
    void init() { teste::failOnWarnings(); }
    void endsWithItsShellWhenOutOfSight_data();
    void endsWithItsShellWhenOutOfSight();
};

void TstSemGerenciador::endsWithItsShellWhenOutOfSight_data()
{
    const QString exemplo = QStringLiteral(QUOREL_SOURCE "/docs/filho_exemplo.py");
    QTest::addColumn<QString>("programa");
    QTest::addColumn<bool>("falou");
    QTest::newRow("the lesson player") << QStringLiteral(QUOREL_BIN "/licao") << true;
    QTest::newRow("the documented child") << exemplo << true;
    QTest::newRow("the documented child, before any message") << exemplo << false;
}

void TstSemGerenciador::endsWithItsShellWhenOutOfSight()
{
    QFETCH(QString, programa);
    QFETCH(bool, falou);
    QTemporaryDir dir;
    QVERIFY(QFile::link(programa, dir.filePath(u"Zeto.exe"_s)));
    const QString gerenciador = QString::fromUtf16(kTituloGerenciador);
    QProcess shell, child;
    shell.start(QStringLiteral(QUOREL_BIN "/filho_teste"), {gerenciador});
    child.start(dir.filePath(u"Zeto.exe"_s), {u"/Hook:"_s});
    QTRY_VERIFY(findWindow(gerenciador, false) != 0 && findWindow(u"Zeto - Quorel"_s, false) != 0);
    const QByteArray esconde("ESCONDE\0", 8);
    for (const quint32 code : {quint32(MSG_CONTROLE), 4711U}) {
        if (falou)
            QCOMPARE(sendCopyData(findWindow(u"Zeto - Quorel"_s, false), findWindow(gerenciador, false), code,
                         qint32(esconde.size()), esconde),
                1);
    }
    shell.kill();
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 0);
    shell.waitForFinished();
}

QTEST_MAIN(TstSemGerenciador)
#include "tst_sem_gerenciador.moc"
