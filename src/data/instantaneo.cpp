#include "data/instantaneo.h"

#include "platform/caminho.h"

#include <sqlite3.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr int kBusyMs = 10'000; ///< for others' locks
static constexpr int kStepPages = 64; ///< read at a time; well below the second that a writer waits
static constexpr int kPauseMs = 2; ///< between two steps, so that a writer comes in
static constexpr int kMostRestarts = 5; ///< of a reading that others wrote into
static constexpr int kAllPages = -1;

BancoSqlite openForCare(const QString &caminho)
{
    BancoSqlite db = openDatabase(nativePath(caminho), SQLITE_OPEN_READWRITE);
    checkRegisterFile(db.get());
    sqlite3_busy_timeout(db.get(), kBusyMs);
    execute(db.get(), u"PRAGMA trusted_schema=OFF"_s);
    return db;
}

namespace {

struct FechaCopia
{
    void operator()(sqlite3_backup *work) const noexcept { sqlite3_backup_finish(work); }
};
using Copia = std::unique_ptr<sqlite3_backup, FechaCopia>;

Copia beginCopy(sqlite3 *from, sqlite3 *to)
{
    Copia work(sqlite3_backup_init(to, "main", from, "main"));
    if (!work)
        throw sqliteError(to, sqlite3_extended_errcode(to));
    return work;
}

/// One step; the lock of a writer is waited for. @return whether it was the last one
bool stepped(sqlite3_backup *work, sqlite3 *to, int pages)
{
    for (int waited = 0;; waited += kPauseMs) {
        const int code = sqlite3_backup_step(work, pages);
        if (code == SQLITE_DONE || code == SQLITE_OK)
            return code == SQLITE_DONE;
        const int primary = code & 0xff;
        if ((primary != SQLITE_BUSY && primary != SQLITE_LOCKED) || waited >= kBusyMs)
            throw sqliteError(to, code);
        sqlite3_sleep(kPauseMs);
    }
}

void endCopy(Copia work, sqlite3 *to)
{
    if (const int end = sqlite3_backup_finish(work.release()); end != SQLITE_OK)
        throw sqliteError(to, end);
}

} // namespace

void copyWhole(sqlite3 *from, sqlite3 *to)
{
    Copia work = beginCopy(from, to);
    stepped(work.get(), to, kAllPages);
    endCopy(std::move(work), to);
}

BancoSqlite oneMoment(sqlite3 *cadastro)
{
    BancoSqlite moment = openDatabase(QString(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    Copia work = beginCopy(cadastro, moment.get());
    int restarts = 0;
    int left = 0; // pages, after the step before
    while (!stepped(work.get(), moment.get(), restarts < kMostRestarts ? kStepPages : kAllPages)) {
        const int now = sqlite3_backup_remaining(work.get());
        if (left != 0 && now >= left) // somebody wrote, and it began again
            ++restarts;
        left = now;
        sqlite3_sleep(kPauseMs);
    }
    endCopy(std::move(work), moment.get());
    return moment;
}

} // namespace quorel
