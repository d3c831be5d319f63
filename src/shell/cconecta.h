#pragma once

#include <QString>

namespace quorel {

/// The connection to the internet.
class cConecta final
{
public:
    bool ConexaoAtiva(); ///< whether a connection is active
    /// Starts dialling a connection. Nothing in the system calls it; without the dialler nothing happens.
    void AtivarDialUp(const QString &Nome);

private:
    qint32 mResultado = 0; ///< of the last question, 0 for an active connection
};

inline cConecta gConecta;

} // namespace quorel
