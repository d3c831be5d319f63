#include "disco_falho.h"

#include <sqlite3.h>

#include <chrono>
#include <thread>

namespace quorel::teste {

namespace {

/// What SQLite's callbacks see of the one DiscoFalho.
struct Estado
{
    sqlite3_vfs *real = nullptr;
    sqlite3_vfs vfs{};
    int calls = 0;
    int syncs = 0;
    int failCall = 0; ///< 0: none
    bool forEver = false;
    bool full = false;
    bool failed = false;
    bool made = false; ///< a call that fails is made nevertheless
    int late = 0; ///< microseconds before a page is read
    bool reallySync = false;
};

Estado gEstado;

/// A file of ours: the real one lies right behind it.
struct Arquivo
{
    sqlite3_file base;
    sqlite3_file *real() { return reinterpret_cast<sqlite3_file *>(this + 1); }
};

sqlite3_file *realOf(sqlite3_file *file)
{
    return reinterpret_cast<Arquivo *>(file)->real();
}

/// Counts a call. @param failure  what it fails with @return that, or SQLITE_OK when it is to be made
int count(int failure)
{
    if (gEstado.full && failure != SQLITE_IOERR_WRITE)
        return SQLITE_OK;
    ++gEstado.calls;
    const bool fails = gEstado.failCall > 0
        && (gEstado.forEver ? gEstado.calls >= gEstado.failCall : gEstado.calls == gEstado.failCall);
    if (!fails)
        return SQLITE_OK;
    gEstado.failed = true;
    return gEstado.full ? SQLITE_FULL : failure;
}

template <typename Call>
int counted(int failure, Call &&call)
{
    const int code = count(failure);
    if (code == SQLITE_OK)
        return call();
    if (gEstado.made)
        call();
    return code;
}

using Metodos = sqlite3_io_methods;

/// A file's method as it is.
template <auto Metodo, typename... Args>
int pass(sqlite3_file *file, Args... args)
{
    return (realOf(file)->pMethods->*Metodo)(realOf(file), args...);
}

/// A file's method, counted.
template <auto Metodo, int failure, typename... Args>
int passCounted(sqlite3_file *file, Args... args)
{
    return counted(failure, [&] { return pass<Metodo>(file, args...); });
}

int fileClose(sqlite3_file *file)
{
    return realOf(file)->pMethods ? pass<&Metodos::xClose>(file) : SQLITE_OK;
}

int fileSync(sqlite3_file *file, int flags)
{
    ++gEstado.syncs;
    return counted(
        SQLITE_IOERR_FSYNC, [&] { return gEstado.reallySync ? pass<&Metodos::xSync>(file, flags) : SQLITE_OK; });
}

int fileRead(sqlite3_file *file, void *buffer, int amount, sqlite3_int64 offset)
{
    if (gEstado.late > 0)
        std::this_thread::sleep_for(std::chrono::microseconds(gEstado.late));
    return passCounted<&Metodos::xRead, SQLITE_IOERR_READ>(file, buffer, amount, offset);
}

const Metodos kMetodos{1, fileClose, fileRead, passCounted<&Metodos::xWrite, SQLITE_IOERR_WRITE>,
    passCounted<&Metodos::xTruncate, SQLITE_IOERR_TRUNCATE>, fileSync,
    passCounted<&Metodos::xFileSize, SQLITE_IOERR_FSTAT>, passCounted<&Metodos::xLock, SQLITE_IOERR_LOCK>,
    pass<&Metodos::xUnlock>, passCounted<&Metodos::xCheckReservedLock, SQLITE_IOERR_LOCK>, pass<&Metodos::xFileControl>,
    pass<&Metodos::xSectorSize>, pass<&Metodos::xDeviceCharacteristics>, nullptr, nullptr, nullptr, nullptr, nullptr,
    nullptr};

int diskOpen(sqlite3_vfs *, sqlite3_filename name, sqlite3_file *file, int flags, int *outFlags)
{
    file->pMethods = nullptr;
    realOf(file)->pMethods = nullptr;
    return counted(SQLITE_CANTOPEN, [&] {
        const int code = gEstado.real->xOpen(gEstado.real, name, realOf(file), flags, outFlags);
        if (realOf(file)->pMethods)
            file->pMethods = &kMetodos;
        return code;
    });
}

int diskDelete(sqlite3_vfs *, const char *name, int syncDirectory)
{
    if (syncDirectory)
        ++gEstado.syncs;
    const int sync = gEstado.reallySync ? syncDirectory : 0;
    return counted(SQLITE_IOERR_DELETE, [&] { return gEstado.real->xDelete(gEstado.real, name, sync); });
}

int diskAccess(sqlite3_vfs *, const char *name, int flags, int *result)
{
    return counted(SQLITE_IOERR_ACCESS, [&] { return gEstado.real->xAccess(gEstado.real, name, flags, result); });
}

} // namespace

DiscoFalho::DiscoFalho()
{
    gEstado = Estado{};
    gEstado.real = sqlite3_vfs_find(nullptr);
    gEstado.vfs = *gEstado.real;
    gEstado.vfs.zName = "falho";
    gEstado.vfs.szOsFile = static_cast<int>(sizeof(Arquivo)) + gEstado.real->szOsFile;
    gEstado.vfs.xOpen = diskOpen;
    gEstado.vfs.xDelete = diskDelete;
    gEstado.vfs.xAccess = diskAccess;
    sqlite3_vfs_register(&gEstado.vfs, 1);
}

DiscoFalho::~DiscoFalho()
{
    sqlite3_vfs_unregister(&gEstado.vfs);
    sqlite3_vfs_register(gEstado.real, 1);
}

void DiscoFalho::failAt(int call, bool forEver, bool full)
{
    gEstado.calls = 0;
    gEstado.syncs = 0;
    gEstado.failCall = call;
    gEstado.forEver = forEver;
    gEstado.full = full;
    gEstado.made = false;
    gEstado.failed = false;
}

void DiscoFalho::loseAnswerAt(int call)
{
    failAt(call, false);
    gEstado.made = true;
}

void DiscoFalho::readLate(int microseconds)
{
    gEstado.late = microseconds;
}

void DiscoFalho::reset()
{
    failAt(0, false);
}

int DiscoFalho::syncs() const
{
    return gEstado.syncs;
}

bool DiscoFalho::failed() const
{
    return gEstado.failed;
}

void DiscoFalho::syncForReal()
{
    gEstado.reallySync = true;
}

} // namespace quorel::teste
