#pragma once

#include <QString>

namespace quorel {

/// Attributes and copies of files. Failures come back as false, never as a message.
class ArquivoUtil final
{
public:
    void Abre(const QString &Caminho); ///< selects the file that SomenteLeitura() speaks of
    bool SomenteLeitura() const; ///< whether that file, or the medium that holds it, is read-only
    /// Copies a file over whatever the destination held; a copy of a read-only file is read-only.
    bool Copia(const QString &Origem, const QString &Destino) const;
    bool TiraSomenteLeitura(const QString &Caminho) const; ///< clears the read-only attribute

private:
    QString mCaminho;
};

extern ArquivoUtil gArquivo;

} // namespace quorel
