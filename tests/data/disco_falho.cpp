#include "disco_falho.h"

#include <sqlite3.h>

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

int failureOf(Acesso acesso)
{
    switch (acesso) {
    case Acesso::Abre:
        return SQLITE_CANTOPEN;
    case Acesso::Apaga:
        return SQLITE_IOERR_DELETE;
    case Acesso::Existe:
        return SQLITE_IOERR_ACCESS;
    case Acesso::Le:
        return SQLITE_IOERR_READ;
    case Acesso::Grava:
        return gEstado.full ? SQLITE_FULL : SQLITE_IOERR_WRITE;
    case Acesso::Trunca:
        return SQLITE_IOERR_TRUNCATE;
    case Acesso::Sincroniza:
        return SQLITE_IOERR_FSYNC;
    case Acesso::Tamanho:
        return SQLITE_IOERR_FSTAT;
    case Acesso::Trava:
        return SQLITE_IOERR_LOCK;
    }
    return SQLITE_IOERR;
}

/// Counts a call. @return what it fails with, or SQLITE_OK when it is to be made
int count(Acesso acesso)
{
    if (acesso == Acesso::Sincroniza)
        ++gEstado.syncs;
    if (gEstado.full && acesso != Acesso::Grava)
        return SQLITE_OK;
    ++gEstado.calls;
    const bool fails = gEstado.failCall > 0
        && (gEstado.forEver ? gEstado.calls >= gEstado.failCall : gEstado.calls == gEstado.failCall);
    if (!fails)
        return SQLITE_OK;
    gEstado.failed = true;
    return failureOf(acesso);
}

template <typename Call>
int counted(Acesso acesso, Call &&call)
{
    const int code = count(acesso);
    return code == SQLITE_OK ? call() : code;
}

int fileClose(sqlite3_file *file)
{
    sqlite3_file *real = realOf(file);
    return real->pMethods ? real->pMethods->xClose(real) : SQLITE_OK;
}

int fileRead(sqlite3_file *file, void *to, int size, sqlite3_int64 from)
{
    return counted(Acesso::Le, [&] { return realOf(file)->pMethods->xRead(realOf(file), to, size, from); });
}

int fileWrite(sqlite3_file *file, const void *from, int size, sqlite3_int64 to)
{
    return counted(Acesso::Grava, [&] { return realOf(file)->pMethods->xWrite(realOf(file), from, size, to); });
}

int fileTruncate(sqlite3_file *file, sqlite3_int64 size)
{
    return counted(Acesso::Trunca, [&] { return realOf(file)->pMethods->xTruncate(realOf(file), size); });
}

int fileSync(sqlite3_file *file, int flags)
{
    return counted(Acesso::Sincroniza,
        [&] { return gEstado.reallySync ? realOf(file)->pMethods->xSync(realOf(file), flags) : SQLITE_OK; });
}

int fileSize(sqlite3_file *file, sqlite3_int64 *size)
{
    return counted(Acesso::Tamanho, [&] { return realOf(file)->pMethods->xFileSize(realOf(file), size); });
}

int fileLock(sqlite3_file *file, int kind)
{
    return counted(Acesso::Trava, [&] { return realOf(file)->pMethods->xLock(realOf(file), kind); });
}

int fileUnlock(sqlite3_file *file, int kind)
{
    return realOf(file)->pMethods->xUnlock(realOf(file), kind);
}

int fileReserved(sqlite3_file *file, int *held)
{
    return counted(Acesso::Trava, [&] { return realOf(file)->pMethods->xCheckReservedLock(realOf(file), held); });
}

int fileControl(sqlite3_file *file, int operation, void *argument)
{
    return realOf(file)->pMethods->xFileControl(realOf(file), operation, argument);
}

int fileSector(sqlite3_file *file)
{
    return realOf(file)->pMethods->xSectorSize(realOf(file));
}

int fileDevice(sqlite3_file *file)
{
    return realOf(file)->pMethods->xDeviceCharacteristics(realOf(file));
}

const sqlite3_io_methods kMethods{1, fileClose, fileRead, fileWrite, fileTruncate, fileSync, fileSize, fileLock,
    fileUnlock, fileReserved, fileControl, fileSector, fileDevice, nullptr, nullptr, nullptr, nullptr, nullptr,
    nullptr};

int diskOpen(sqlite3_vfs *, sqlite3_filename name, sqlite3_file *file, int flags, int *outFlags)
{
    file->pMethods = nullptr;
    realOf(file)->pMethods = nullptr;
    return counted(Acesso::Abre, [&] {
        const int code = gEstado.real->xOpen(gEstado.real, name, realOf(file), flags, outFlags);
        if (realOf(file)->pMethods)
            file->pMethods = &kMethods;
        return code;
    });
}

int diskDelete(sqlite3_vfs *, const char *name, int syncDirectory)
{
    if (syncDirectory)
        ++gEstado.syncs;
    const int sync = gEstado.reallySync ? syncDirectory : 0;
    return counted(Acesso::Apaga, [&] { return gEstado.real->xDelete(gEstado.real, name, sync); });
}

int diskAccess(sqlite3_vfs *, const char *name, int flags, int *result)
{
    return counted(Acesso::Existe, [&] { return gEstado.real->xAccess(gEstado.real, name, flags, result); });
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

void DiscoFalho::reset()
{
    gEstado.calls = 0;
    gEstado.syncs = 0;
    gEstado.failCall = 0;
    gEstado.full = false;
    gEstado.failed = false;
}

void DiscoFalho::failAt(int call, bool forEver, bool full)
{
    reset();
    gEstado.failCall = call;
    gEstado.forEver = forEver;
    gEstado.full = full;
}

int DiscoFalho::calls() const
{
    return gEstado.calls;
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
