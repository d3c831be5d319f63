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
    QTest::addColumn<QString>("programa");
    QTest::newRow("the lesson player") << QStringLiteral(QUOREL_BIN "/licao");
    QTest::newRow("the documented child") << QStringLiteral(QUOREL_SOURCE "/docs/filho_exemplo.py");
}

void TstSemGerenciador::endsWithItsShellWhenOutOfSight()
{
    QFETCH(QString, programa);
    QTemporaryDir dir;
    QVERIFY(QFile::link(programa, dir.filePath(u"Zeto.exe"_s)));
    const QString gerenciador = QString::fromUtf16(kTituloGerenciador);
    QProcess shell, child;
    shell.start(QStringLiteral(QUOREL_BIN "/filho_teste"), {gerenciador});
    child.start(dir.filePath(u"Zeto.exe"_s), {u"/Hook:"_s});
    QTRY_VERIFY(findWindow(gerenciador, false) != 0 && findWindow(u"Zeto - Quorel"_s, false) != 0);
    const QByteArray esconde("ESCONDE\0", 8);
    QCOMPARE(sendCopyData(findWindow(u"Zeto - Quorel"_s, false), findWindow(gerenciador, false), MSG_CONTROLE,
                 qint32(esconde.size()), esconde),
        1);
    QCOMPARE(sendCopyData(findWindow(u"Zeto - Quorel"_s, false), findWindow(gerenciador, false), 4711, 0, {}), 1);
    shell.kill();
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 0);
    shell.waitForFinished();
}

QTEST_MAIN(TstSemGerenciador)
#include "tst_sem_gerenciador.moc"
