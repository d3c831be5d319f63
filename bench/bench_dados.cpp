// Record sets, searches and the log of lessons on a register with 100,000 rows, each beside its floor: the same work
// through SQLite's C API, or through QSqlQuery. "--memoria" prints what an open record set holds, in a fresh process.
#include "data/bd.h"
#include "data/conexao.h"
#include "data/pendentes.h"
#include "data/schema.h"
#include "disco_falho.h"
#include "lessons/andamento.h"
#include "lessons/log_aulas.h"
#include "platform/caminho.h"
#include "startup/estado.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUuid>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

using namespace quorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int kRows = 100'000;
constexpr int kColumns = 6;
constexpr qsizetype kValuesSize = qsizetype(kRows) * (3 * 8 + 3 * 20); ///< bytes: 8 a number, UTF-8 of a text
constexpr int kPupilOfMany = 1; ///< has kRows rows in the log
constexpr int kPupilOfFew = 2;
constexpr int kFew = 200;
constexpr int kWaiting = 1000;

const QString kQuery = u"SELECT * FROM Medida"_s;

QString gFile; ///< native path of the register

struct CloseDatabase
{
    void operator()(sqlite3 *db) const { sqlite3_close(db); }
};
struct EndStatement
{
    void operator()(sqlite3_stmt *stmt) const { sqlite3_finalize(stmt); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;
using Statement = std::unique_ptr<sqlite3_stmt, EndStatement>;

Database openPlain(const QString &file)
{
    sqlite3 *db = nullptr;
    if (sqlite3_open(file.toUtf8().constData(), &db) != SQLITE_OK)
        qFatal("cannot open %s", qPrintable(file));
    return Database(db);
}

void run(sqlite3 *db, const std::string &sql)
{
    if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        qFatal("%s: %s", sqlite3_errmsg(db), sql.c_str());
}

Statement prepared(sqlite3 *db, const QString &sql)
{
    sqlite3_stmt *stmt = nullptr;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &stmt, nullptr) != SQLITE_OK)
        qFatal("%s", sqlite3_errmsg(db));
    return Statement(stmt);
}

std::string rowsOf(int count)
{
    return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + std::to_string(count) + ") ";
}

/// Six columns a row: three numbers, three texts of 20 characters; and the log of two pupils.
void fill(const QString &file)
{
    const Database db = openPlain(file);
    run(db.get(), (registerSchema() + ownSchema()).toStdString());
    run(db.get(), "INSERT INTO QR_Registro VALUES ('identidade', 'medida')");
    run(db.get(),
        "CREATE TABLE Medida (ME_Cod INTEGER PRIMARY KEY AUTOINCREMENT, ME_A INTEGER, ME_B INTEGER, ME_X VARCHAR, "
        "ME_Y VARCHAR, ME_Z VARCHAR)");
    run(db.get(),
        "BEGIN; INSERT INTO Medida " + rowsOf(kRows)
            + "SELECT i, i * 7919, i % 12, printf('Maria de Souza%06d', i), printf('Turma da tarde%06d', i), "
              "printf('Rua das Flores%06d', i) FROM n; COMMIT");
    for (const auto &[pupil, count] : {std::pair{kPupilOfMany, kRows}, {kPupilOfFew, kFew}})
        run(db.get(),
            "INSERT INTO LG_LogAulas " + rowsOf(count) + "SELECT " + std::to_string(pupil)
                + ", 1, datetime('2020-01-01', i || ' minutes'), i % 500, NULL, 'Matemática<disc>Formas<rot>A:E:A:', "
                  "NULL FROM n");
}

struct SixTexts
{
    std::array<QString, kColumns> cells;
};

/// A bare loop that keeps every column as a QString.
std::vector<SixTexts> readPlain(sqlite3 *db, const QString &sql)
{
    const Statement stmt = prepared(db, sql);
    std::vector<SixTexts> rows;
    while (sqlite3_step(stmt.get()) == SQLITE_ROW) {
        SixTexts &row = rows.emplace_back();
        for (int i = 0; i < kColumns; ++i)
            row.cells[static_cast<size_t>(i)] =
                QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(stmt.get(), i)),
                    sqlite3_column_bytes(stmt.get(), i));
    }
    return rows;
}

void connectBD()
{
    reiniciaData();
    gBD->Source(backslashPath(gFile));
}

void openFloor(benchmark::State &state)
{
    const Database db = openPlain(gFile);
    for (auto _ : state)
        benchmark::DoNotOptimize(readPlain(db.get(), kQuery).size());
}

void openSqlQuery(benchmark::State &state)
{
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s);
        db.setDatabaseName(gFile);
        if (!db.open())
            state.SkipWithError("no driver QSQLITE");
        while (state.KeepRunning()) {
            QSqlQuery query(db);
            query.setForwardOnly(true);
            query.exec(kQuery);
            std::vector<SixTexts> rows;
            while (query.next()) {
                SixTexts &row = rows.emplace_back();
                for (int i = 0; i < kColumns; ++i)
                    row.cells[static_cast<size_t>(i)] = query.value(i).toString();
            }
            benchmark::DoNotOptimize(rows.size());
        }
    }
    QSqlDatabase::removeDatabase(QString::fromLatin1(QSqlDatabase::defaultConnection));
}

void openOurs(benchmark::State &state)
{
    connectBD();
    for (auto _ : state)
        gBD->Records_Set(kQuery, u"Medida"_s);
    reiniciaData();
}

void searchFloor(benchmark::State &state)
{
    std::vector<QString> values;
    const Database db = openPlain(gFile);
    for (const SixTexts &row : readPlain(db.get(), kQuery))
        values.push_back(row.cells[3]);
    const QString sought = values.back().toUpper();
    for (auto _ : state) {
        const auto found = std::ranges::find_if(
            values, [&](const QString &value) { return value.compare(sought, Qt::CaseInsensitive) == 0; });
        benchmark::DoNotOptimize(found);
    }
}

void searchOurs(benchmark::State &state)
{
    connectBD();
    gBD->Records_Set(kQuery, u"Medida"_s);
    for (auto _ : state) {
        QString criterion = u"ME_X = 'Maria de Souza100000'"_s;
        if (gBD->Pesquisa(criterion, u"Medida"_s, 0) != u"100000"_s)
            state.SkipWithError("not found");
    }
    reiniciaData();
}

/// One row and its id in a transaction of their own.
void logByHand(sqlite3 *db, int pupil)
{
    static int number = 0;
    run(db, "BEGIN IMMEDIATE");
    run(db,
        "INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, LG_Resp) VALUES (" + std::to_string(pupil)
            + ", 1, '2026-11-25 10:00:00', 7, 'Matemática<disc>Formas<rot>A:E:A:')");
    run(db,
        "INSERT INTO LG_Entregas VALUES (lower(hex(randomblob(16))), last_insert_rowid(), 'maquina/conta "
            + std::to_string(++number) + "', '2026-11-25 10:00:00')");
    run(db, "COMMIT");
}

/// Times of one kind of work, the disk's syncs of the last one.
struct Medida
{
    std::vector<double> seconds;
    int syncs = 0;

    template <typename Work>
    void take(quorel::teste::DiscoFalho &disk, Work &&work)
    {
        disk.reset();
        const auto start = std::chrono::steady_clock::now();
        work();
        seconds.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        syncs = disk.syncs();
    }
    double median()
    {
        const auto middle = seconds.begin() + std::ssize(seconds) / 2;
        std::ranges::nth_element(seconds, middle);
        return *middle;
    }
};

void tell(benchmark::State &state, Medida &floor, Medida &ours)
{
    state.counters["floor_ms"] = floor.median() * 1000;
    state.counters["ours_ms"] = ours.median() * 1000;
    state.counters["ratio"] = ours.median() / floor.median();
    state.counters["floor_syncs"] = floor.syncs;
    state.counters["ours_syncs"] = ours.syncs;
}

/// GravaLog and the same by hand in turn, since the time of a sync drifts with all that the machine does.
void logRow(benchmark::State &state)
{
    quorel::teste::DiscoFalho disk;
    disk.syncForReal();
    connectBD();
    gAluno = static_cast<qint32>(state.range(0));
    gClasse = 1;
    gCodRoteiro = 7;
    AbreLog();
    Medida floor;
    Medida ours;
    {
        const Database db = openPlain(gFile);
        run(db.get(), "PRAGMA synchronous=EXTRA");
        for (auto _ : state) {
            floor.take(disk, [&] { logByHand(db.get(), gAluno); });
            ours.take(disk, [] {
                QString answers = u"A:E:A:"_s;
                GravaLog(answers);
            });
        }
    }
    reiniciaData();
    tell(state, floor, ours);
}

/// The same inserts as a delivery, in one transaction.
void manyByHand(sqlite3 *db)
{
    run(db, "BEGIN IMMEDIATE");
    const Statement log = prepared(db,
        u"INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, LG_Resp) VALUES (9999, 9999, "
        "'2026-11-25 10:00:00', 7, 'Matemática<disc>Formas<rot>A:E:A:')"_s);
    const Statement id = prepared(db,
        u"INSERT INTO LG_Entregas VALUES (lower(hex(randomblob(16))), last_insert_rowid(), 'maquina/conta', "
        "'2026-11-25 10:00:00')"_s);
    for (int i = 0; i < kWaiting; ++i) {
        for (sqlite3_stmt *each : {log.get(), id.get()}) {
            sqlite3_step(each);
            sqlite3_reset(each);
        }
    }
    run(db, "COMMIT");
}

void keepMany()
{
    for (int i = 0; i < kWaiting; ++i)
        gBD->waitingRows().keep({.uuid = QUuid::createUuid().toString(QUuid::WithoutBraces),
                                    .aluno = kGenerico,
                                    .classe = kGenerico,
                                    .data = QDateTime(QDate(2026, 11, 25), QTime(10, 0)),
                                    .roteiro = 7,
                                    .respostas = u"Matemática<disc>Formas<rot>A:E:A:"_s,
                                    .origem = u"maquina/conta"_s,
                                    .esperou = true,
                                    .cadastro = gBD->Source()->identity().identidade},
            gFile);
}

/// A delivery of rows that waited, and one transaction of the same inserts.
void deliver(benchmark::State &state)
{
    quorel::teste::DiscoFalho disk;
    connectBD();
    Medida floor;
    Medida ours;
    {
        const Database db = openPlain(gFile);
        run(db.get(), "PRAGMA synchronous=EXTRA");
        for (auto _ : state) {
            keepMany();
            disk.syncForReal();
            floor.take(disk, [&] { manyByHand(db.get()); });
            ours.take(disk, [] { gBD->deliverWaitingRows(); });
            if (gBD->waitingRows().count() != 0)
                state.SkipWithError("not delivered");
        }
    }
    reiniciaData();
    tell(state, floor, ours);
}

/// A line of /proc/self/status, in bytes.
qsizetype statusBytes(const QByteArray &name)
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).trimmed().split(' ').first().toLongLong() * 1024;
    }
    return 0;
}

/// In a process of its own: opens the record set and prints what came to the process by it.
int printMemory()
{
    connectBD();
    gBD->Records_Set(u"SELECT * FROM Medida WHERE ME_Cod = 1"_s, u"Um"_s); // what the first query needs anyway
    const qsizetype before = statusBytes("VmRSS");
    gBD->Records_Set(kQuery, u"Medida"_s);
    const qsizetype after = statusBytes("VmRSS") - before;
    const qsizetype peak = statusBytes("VmHWM") - before;
    std::printf("memoria: depois de abrir %.2f, no pico %.2f vezes o tamanho dos valores (%.1f MB)\n",
        double(after) / double(kValuesSize), double(peak) / double(kValuesSize), double(kValuesSize) / 1e6);
    return 0;
}

} // namespace

BENCHMARK(openFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(openSqlQuery)->Unit(benchmark::kMillisecond);
BENCHMARK(openOurs)->Unit(benchmark::kMillisecond);
BENCHMARK(searchFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(searchOurs)->Unit(benchmark::kMillisecond);
BENCHMARK(logRow)->Arg(kPupilOfFew)->Iterations(60)->UseRealTime();
BENCHMARK(logRow)->Arg(kPupilOfMany)->Iterations(60)->UseRealTime();
BENCHMARK(deliver)->Iterations(8)->UseRealTime();

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const bool memory = argc > 2 && std::string_view(argv[1]) == "--memoria";
    benchmark::Initialize(&argc, argv);
    QApplication app(argc, argv);
    if (memory) {
        gFile = QString::fromLocal8Bit(argv[2]);
        return printMemory();
    }
    const QTemporaryDir dir;
    qputenv("QUOREL_PENDENTES", dir.path().toUtf8());
    gFile = dir.filePath(u"Cadastros.mdb"_s);
    fill(gFile);
    QProcess::execute(QApplication::applicationFilePath(), {u"--memoria"_s, gFile});
    benchmark::RunSpecifiedBenchmarks();
}
