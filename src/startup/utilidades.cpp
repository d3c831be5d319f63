#include "platform/caminho.h"
#include "platform/costuras.h"
#include "platform/sistema.h"
#include "startup/arquivo_util.h"
#include "startup/lugares.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"
#include "startup/unidade_util.h"

#include <QFileInfo>
#include <QSaveFile>

#include <cmath>

namespace quorel {

using namespace Qt::StringLiterals;

Janela SistemaUtil::ProcuraJanela(const QString &Titulo, int, bool Parcial) const
{
    return findWindow(Titulo, Parcial);
}

QString SistemaUtil::DirWindows() const
{
    return windowsDirectory();
}

void SistemaUtil::Pausa(float Milissegundos) const
{
    pausa(static_cast<int>(std::lround(Milissegundos)));
}

QString UnidadeUtil::ListaUnidades(int Tipo) const
{
    QString list;
    for (const QString &root : driveRoots(Tipo))
        list += root + QChar(QChar::Null);
    return list;
}

void ArquivoUtil::Abre(const QString &Caminho)
{
    mCaminho = Caminho;
}

bool ArquivoUtil::SomenteLeitura() const
{
    return isReadOnly(mCaminho);
}

static bool copyBytes(QFile &from, QSaveFile &to)
{
    constexpr qint64 kPiece = 1 << 20; // bytes read at once
    while (!from.atEnd()) {
        const QByteArray piece = from.read(kPiece);
        if (piece.isEmpty() || to.write(piece) != piece.size())
            return false;
    }
    return true;
}

bool ArquivoUtil::Copia(const QString &Origem, const QString &Destino) const
{
    const QString source = nativePath(Origem);
    const QString target = nativePath(Destino);
    if (source.isEmpty() || target.isEmpty() || !QFileInfo(source).isFile())
        return false;
    QFile from(source);
    QSaveFile to(target);
    if (!from.open(QIODevice::ReadOnly) || !to.open(QIODevice::WriteOnly) || !copyBytes(from, to))
        return false;
    // Without the bits of the present user: an administrator may write everything, and the copy would become writable.
    const auto permissions = from.permissions() & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
    return to.setPermissions(permissions) && to.commit();
}

bool ArquivoUtil::TiraSomenteLeitura(const QString &Caminho) const
{
    return clearReadOnly(Caminho);
}

QString opticalRoot()
{
    return gTexto.TextoAntes(gUnidades.ListaUnidades(kOpticalDrive), QString(QChar(QChar::Null)), true);
}

QString installationDirectory()
{
    return gSistema.DirWindows() + u"\\QUOREL2001"_s;
}

QString makerAddress()
{
    return QStringLiteral(QUOREL_PAGINA);
}

} // namespace quorel
