#include "apoio.h"
#include "gravacoes.h"

#include "data/bd.h"
#include "data/cadastros.h"
#include "data/pendentes.h"
#include "lessons/andamento.h"
#include "platform/costuras.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QTest>

#include <chrono>
#include <memory>
#include <set>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

namespace {

constexpr int kPatience = 600'000; ///< ms, for a program's end

/// How much is done: a little in every run, all of it when scripts/longos.sh asks for it.
struct Medida
{
    int kills = 15;
    int programs = 3;
    int rows = 10; ///< a program
    int oldRows = 2'000; ///< of the generic pupil
    int lateUs = 50; ///< microseconds before a page is read
};

Medida measure()
{
    if (qEnvironmentVariableIsEmpty("QUOREL_CARGA_LONGA"))
        return {};
    return {.kills = 1'000, .programs = 6, .rows = 200, .oldRows = 40'000, .lateUs = 500};
}

} // namespace

/// Many programs, killed or slowed, against one register: each row that was acknowledged is there, once.
class TstCarga final : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { reiniciaData(); }
    void killedWhileItLogsKeepsAndDelivers();
    void manyProgramsWhileTheRegisterIsCopied();
    void busyAtTheStart();
};

void TstCarga::init()
{
    failOnWarnings();
    reiniciaCosturas();
    reiniciaStartup();
    reiniciaLessons();
    reiniciaData();
}

static std::unique_ptr<ChildProcess> program(const Registro &registro, const QStringList &words)
{
    return std::make_unique<ChildProcess>(
        QStringLiteral(QUOREL_BIN "/filho_cadastro"), QStringList(registro.native()) + words);
}

/// The numbers that a program announced.
static void take(QProcess &process, std::set<int> &announced)
{
    for (const QByteArray &line : process.readAll().split('\n')) {
        if (!line.isEmpty())
            announced.insert(line.toInt()); // a box would be a 0
    }
}

void TstCarga::killedWhileItLogsKeepsAndDelivers()
{
    const Registro registro;
    const int kills = measure().kills;
    const QString refuses = u"CREATE TRIGGER t BEFORE INSERT ON LG_LogAulas WHEN NEW.RO_Cod % 3 = 0 BEGIN "
                            "SELECT RAISE(ABORT, 'x'); END"_s;
    std::set<int> announced;
    for (int kill = 0; kill < kills; ++kill) {
        registro.sql(kill % 2 == 0 ? refuses : u"DROP TRIGGER t"_s); // rows wait, and come in the next time
        const int next = announced.empty() ? 1 : *announced.rbegin() + 2; // one may have come in unannounced
        const auto writer = program(registro, {u"registra"_s, QString::number(next)});
        QVERIFY(writer->waitForReadyRead(kPatience));
        std::this_thread::sleep_for(std::chrono::microseconds(QRandomGenerator::global()->bounded(12'000)));
        writer->kill();
        QVERIFY(writer->waitForFinished(kPatience));
        take(*writer, announced);
    }
    registro.sql(u"DROP TRIGGER IF EXISTS t"_s);
    registro.open();
    gBD->deliverWaitingRows();
    QCOMPARE(gBD->waitingRows().count(), 0);
    QCOMPARE(
        registro.sql(u"PRAGMA integrity_check; SELECT RO_Cod FROM LG_LogAulas GROUP BY RO_Cod HAVING count(*) > 1"_s),
        QStringList(u"ok"_s));
    QVERIFY(!announced.contains(0) && std::ssize(announced) >= kills);
    std::set<int> logged;
    for (const QString &each : registro.sql(u"SELECT RO_Cod FROM LG_LogAulas"_s))
        logged.insert(each.toInt());
    QVERIFY(std::ranges::includes(logged, announced));
    qInfo("%d kills, %d rows announced, %d in the register", kills, int(announced.size()), int(logged.size()));
}

void TstCarga::manyProgramsWhileTheRegisterIsCopied()
{
    const Medida much = measure();
    const Registro registro(
        u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
        "INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, LG_Resp) SELECT 9999, 9999, "
        "datetime('2020-01-01', i || ' minutes'), 0, 'Matemática<disc>Formas<rot>A:E:A:' FROM n"_s.arg(much.oldRows));
    qputenv("QUOREL_LENTO", QByteArray::number(much.lateUs));
    const auto carer = program(registro, {u"cuida"_s});
    std::vector<std::unique_ptr<ChildProcess>> writers;
    for (int i = 0; i < much.programs; ++i)
        writers.push_back(program(registro, {u"grava"_s, QString::number(much.rows)}));
    for (const auto &each : writers) {
        QVERIFY(each->state() == QProcess::NotRunning || each->waitForFinished(kPatience));
        QCOMPARE(each->exitCode(), 0);
        QCOMPARE(linhas(each->readAll()), "fim\n"); // no box
    }
    qunsetenv("QUOREL_LENTO");
    QVERIFY(carer->bytesAvailable() > 0 || carer->waitForReadyRead(kPatience)); // it came to its end meanwhile
    carer->kill();
    QVERIFY(carer->waitForFinished(kPatience));
    const QByteArray cared = carer->readAll();
    QVERIFY2(!cared.contains("falhou"), cared);
    registro.open();
    const qint64 left = gBD->waitingRows().count();
    gBD->deliverWaitingRows();
    QCOMPARE(gBD->waitingRows().count(), 0);
    QCOMPARE(registro.sql(u"SELECT count(*), count(DISTINCT RO_Cod) FROM LG_LogAulas WHERE RO_Cod > 0"_s),
        QStringList(u"%1|%2"_s.arg(much.programs * much.rows).arg(much.rows)));
    qInfo("%d programs of %d rows, %d had to wait to the end; copied and checked %d times", much.programs, much.rows,
        int(left), int(cared.count('\n')));
}

/// The lock outlasts the opening. The register is opened as a whole when it is needed next.
void TstCarga::busyAtTheStart()
{
    const Registro registro;
    const auto holder = program(registro, {u"trava"_s, u"EXCLUSIVE"_s});
    QVERIFY(holder->waitForReadyRead(kPatience));
    gConfig.SetaCFG(u"ZETO_CAD="_s + barras(QFileInfo(registro.native()).path()) + u"\r\n"_s);
    {
        const BoxScript told{Resposta::Ok};
        AbreBDAlunos();
        QVERIFY(told.last().texto.contains(u"e o abre assim que puder"_s));
    }
    const BoxScript none;
    logRow(1);
    QCOMPARE(gBD->waitingRows().count(), 1);
    holder->closeWriteChannel();
    QVERIFY(holder->state() == QProcess::NotRunning || holder->waitForFinished(kPatience));
    logRow(2);
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"RsClasses"_s), 1); // with its tables
    QCOMPARE(registro.sql(u"SELECT RO_Cod FROM LG_LogAulas ORDER BY LG_Id"_s), (QStringList{u"1"_s, u"2"_s}));
}

QTEST_MAIN(TstCarga)
#include "tst_carga.moc"
