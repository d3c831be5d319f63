#include "apoio.h"
#include "gravacoes.h"

#include "data/bd.h"
#include "data/pendentes.h"
#include "lessons/andamento.h"
#include "platform/costuras.h"
#include "startup/estado.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTest>

#include <chrono>
#include <thread>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

namespace {

constexpr int kPatience = 60'000; ///< ms, for a child's line or end
constexpr int kKills = 200;
constexpr int kMostSaves = 3; ///< of a child before it is killed
constexpr int kLongestMoment = 4'000; ///< microseconds until the kill, a little more than a save takes

/// filho_cadastro on a register; killed at the end of the scope.
class Filho final
{
public:
    Filho(const Registro &registro, const QStringList &words)
        : mProcess(QStringLiteral(QUOREL_BIN "/filho_cadastro"), QStringList(registro.native()) + words)
    { }

    QProcess &process() { return mProcess; }
    /// Waits for its end; it may have come together with the last line.
    bool ends() { return mProcess.state() == QProcess::NotRunning || mProcess.waitForFinished(kPatience); }
    /// Waits for its next line. @return empty when it ended
    QString line()
    {
        while (!mProcess.canReadLine()) {
            if (!mProcess.waitForReadyRead(kPatience))
                return {};
        }
        return QString::fromUtf8(mProcess.readLine()).trimmed();
    }

private:
    ChildProcess mProcess;
};

} // namespace

class TstProcessos final : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { reiniciaData(); }
    void killedAtAnyMomentOfASave();
    void twoProgramsWriteAtOnce();
    void manyStartOnAFreshRegisterAtOnce();
    void anotherProgramHoldsTheLock_data();
    void anotherProgramHoldsTheLock();
};

void TstProcessos::init()
{
    failOnWarnings();
    reiniciaCosturas();
    reiniciaStartup();
    reiniciaLessons();
    reiniciaData();
}

void TstProcessos::killedAtAnyMomentOfASave()
{
    const Registro registro;
    registro.sql(u"INSERT INTO CL_Classes VALUES (1, '0', '0', '0')"_s);
    int announced = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        {
            Filho writer(registro, {u"salva"_s});
            const int saves = QRandomGenerator::global()->bounded(1, kMostSaves + 1);
            for (int i = 0; i < saves; ++i) {
                const QString line = writer.line();
                QVERIFY2(line.toInt() > announced, qPrintable(line));
                announced = line.toInt();
            }
            std::this_thread::sleep_for(std::chrono::microseconds(QRandomGenerator::global()->bounded(kLongestMoment)));
            writer.process().kill();
            writer.process().waitForFinished(kPatience);
            QVERIFY(writer.process().exitStatus() == QProcess::CrashExit);
            for (const QByteArray &line : writer.process().readAll().split('\n'))
                announced = std::max(announced, line.toInt());
        }
        QCOMPARE(registro.sql(u"PRAGMA integrity_check"_s), QStringList(u"ok"_s));
        const int logged = registro.sql(u"SELECT max(RO_Cod) FROM LG_LogAulas"_s).first().toInt();
        QVERIFY(logged == announced || logged == announced + 1);
        const int saved =
            registro.sql(u"SELECT CL_Nome FROM CL_Classes WHERE CL_Prof = CL_Nome AND CL_Senha = CL_Nome"_s)
                .value(0)
                .toInt();
        QVERIFY(saved == logged || saved == logged + 1);
    }
    const QString all = QString::number(registro.sql(u"SELECT max(RO_Cod) FROM LG_LogAulas"_s).first().toInt());
    const QString answers = u"<disc>Rota<rot>A:E:"_s;
    QCOMPARE(registro.sql(u"SELECT count(*), count(DISTINCT RO_Cod), max(LG_Resp), min(LG_Resp) FROM LG_LogAulas"_s),
        QStringList(QStringList{all, all, answers, answers}.join(u'|')));
}

void TstProcessos::twoProgramsWriteAtOnce()
{
    const Registro registro;
    const QStringList job{u"grava"_s, u"1000"_s};
    Filho one(registro, job);
    Filho other(registro, job);
    for (Filho *each : {&one, &other}) {
        QCOMPARE(each->line(), u"fim"_s);
        QVERIFY(each->ends());
        QCOMPARE(each->process().exitCode(), 0);
    }
    QCOMPARE(registro.sql(u"SELECT count(*), count(DISTINCT LG_Id), count(DISTINCT RO_Cod) FROM LG_LogAulas"_s),
        QStringList(u"2000|2000|1000"_s));
}

void TstProcessos::manyStartOnAFreshRegisterAtOnce()
{
    const Registro registro;
    for (const QString &table : {u"CL_Classes"_s, u"AL_Alunos"_s, u"CLxAL"_s})
        registro.sql(u"DELETE FROM "_s + table);
    std::vector<std::unique_ptr<Filho>> machines;
    for (int i = 0; i < 6; ++i)
        machines.push_back(std::make_unique<Filho>(registro, QStringList{u"abre"_s}));
    for (const auto &each : machines)
        QCOMPARE(each->line(), u"pronto"_s);
    for (const auto &each : machines)
        each->process().write("\n");
    for (const auto &each : machines) {
        QCOMPARE(each->line(), u"fim"_s); // without a box
        QVERIFY(each->ends());
    }
    for (const QString &table : {u"CL_Classes"_s, u"AL_Alunos"_s, u"CLxAL"_s})
        QCOMPARE(registro.sql(u"SELECT count(*) FROM "_s + table), QStringList(u"1"_s));
}

void TstProcessos::anotherProgramHoldsTheLock_data()
{
    texts({"SHARED", "IMMEDIATE", "EXCLUSIVE"});
}

/// The row waits, and comes in before the next one; nobody is asked to click.
void TstProcessos::anotherProgramHoldsTheLock()
{
    const Registro registro;
    registro.open();
    logRow(1);
    Filho holder(registro, {u"trava"_s, rowName()});
    QCOMPARE(holder.line(), u"travado"_s);
    const BoxScript none;
    logRow(2);
    QCOMPARE(gBD->waitingRows().count(), 1);
    holder.process().closeWriteChannel();
    QVERIFY(holder.ends());
    logRow(3);
    QCOMPARE(gBD->waitingRows().count(), 0);
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"RSLog"_s), 3);
    QCOMPARE(registro.sql(u"SELECT RO_Cod FROM LG_LogAulas ORDER BY LG_Id"_s), (QStringList{u"1"_s, u"2"_s, u"3"_s}));
}

QTEST_MAIN(TstProcessos)
#include "tst_processos.moc"
