#pragma once

#include "tools/blocos_arquivos.h"

#include <QByteArray>
#include <QHash>

#include <vector>

namespace quorel::blocos {

/// Something to mend.
struct Achado
{
    QString arquivo; ///< native path
    int linha = 1; ///< 1-based
    QString texto;
    bool operator==(const Achado &) const = default;
};

/// Looks for what the shell would pass over in silence. One object for all files of a run: a code used twice is found
/// across them.
class Verificador final
{
public:
    /// @param comArquivos  also look for figures, sounds and HTML lessons through gConfig
    explicit Verificador(bool comArquivos) : mComArquivos(comArquivos) { }

    /// @param texto  the whole file, bytes of code page 1252
    /// @return in the order of the lines
    std::vector<Achado> verifica(const ArquivoDeBloco &arquivo, const QByteArray &texto);

private:
    bool mComArquivos;
    QHash<int, QString> mCodigos; ///< where each Roteiro's code was met first
};

} // namespace quorel::blocos
