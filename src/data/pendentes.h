#pragma once

#include "data/linha_log.h"

#include <QStringList>

#include <memory>
#include <vector>

struct sqlite3;

namespace quorel {

/// A row of the log that waits on this machine.
struct LinhaEspera
{
    qint64 ordem = 0; ///< in which they were kept; names the row in this file
    LinhaLog linha; ///< esperou is true
    QString caminho; ///< where its register was looked for; native
    QDateTime guardada;
    QString motivo; ///< why the register did not take it when it was offered; empty: it was not, or there was none
};

/// Where an account's waiting rows lie.
struct LugarPendentes
{
    QString arquivo; ///< native; it comes into being with the first row that waits
    bool daMaquina = false; ///< a folder that outlives the account's own files
};

/// QUOREL_PENDENTES of the environment names the folder, else the key PENDENTES of the configuration, else it is the
/// machine's, where an installation made one, else the account's own data directory.
LugarPendentes waitingPlace();

/// The rows of the log that their register did not take, in a file of ours on this machine: one file an account, which
/// several programs may use at once. A file that is found damaged is set aside under a name that tells so, never
/// removed, and a new one is begun. Where there is no file there are no rows. All else that fails is an ErroBD.
class Pendentes final
{
    Q_DISABLE_COPY_MOVE(Pendentes)
public:
    explicit Pendentes(const QString &native); ///< its file; nothing is opened yet
    ~Pendentes();

    /// Keeps a row, through a power cut too. One whose uuid is there already stays as it is.
    void keep(const LinhaLog &linha, const QString &caminho);

    qint64 count(); ///< of rows
    bool anyFresh(); ///< whether one waits that no register has refused
    /// Rows in the order in which they were kept. @param depoisDe  ordem, exclusive @param presas  refused ones too
    std::vector<LinhaEspera> rows(qint64 depoisDe, int maximo, bool presas);

    void forget(const std::vector<qint64> &ordens);
    /// Notes that a commit with these was begun, in a register that does not tell its rows apart.
    void setDoubtful(const std::vector<qint64> &ordens);
    void setReason(qint64 ordem, const QString &motivo);
    bool accept(qint64 ordem); ///< a person has said that its codes are right @return whether there is such a row

    QStringList setAside() const; ///< names of the damaged files beside this one
    void exportTo(const QString &native); ///< a copy of the file; the rows stay

private:
    struct Aberto;

    sqlite3 *opened(); ///< makes the file where it is missing
    bool exists() const;
    void moveAside();
    /// Runs a piece of work on the file; when that is found damaged, once more on a new one.
    template <typename Work>
    auto onFile(Work &&work);
    void each(const QString &sql, const std::vector<qint64> &ordens); ///< in one transaction

    QString mNative;
    std::unique_ptr<Aberto> mAberto;
};

} // namespace quorel
