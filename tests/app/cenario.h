#pragma once

#include "support/suporte.h"

#include <QDir>
#include <QDirIterator>
#include <QStandardPaths>
#include <QStringList>

namespace quorel::teste {

using namespace Qt::StringLiterals;

/// Native path of what lies below the Windows directory of the test.
inline QString windows(const QString &resto)
{
    return qEnvironmentVariable("QUOREL_WINDIR") + resto;
}

/// A block file of one Roteiro with one lesson.
inline void escreveBloco(const QString &nome)
{
    escreve(windows(u"/QUOREL2001/DBBLOCOS/"_s + nome),
        "<OBJ>Contar at\xe9 dez</OBJ>\r\n<TM>Minha escola</TM>\r\n[ROT<1>]\r\nNomeRot =Contar\r\nCODROT:12\r\n"
        "FIG:figura\r\n[<1>1]\r\nNome =Um\r\nLinha =(1,1)7\r\n\tTipo = Zeto\t\r\n");
}

/// What "/?" shows.
inline const QString kAjuda =
    u"/NIVEL:<Identificação do nível do programa> Ex. F1..F4, I1,I2, \n"
    "  Corresponde ao diretório que está em <windir>\\Quorel2001\\DBBlocos\n"
    "/ESCOLA: ou /ESC: quando o sistema é multiusuário\n"
    "/NOMECLASSE:<Nome da classe que está cadastrada no sistema \"Tobi e Nina seus colegas na escola  \">\n"
    "  Utilizado para selecionar somente os alunos desta classe para o registro do desempenho (sistema multiusuário)"_s;

/// Every file that the program has written but the register itself, as text of either kind.
inline QStringList filesThatHold(const QString &segredo)
{
    QStringList found;
    for (const QString &raiz : {windows({}), QDir::tempPath(), QDir::homePath(),
             QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)}) {
        QDirIterator files(raiz, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = files.next();
            const QByteArray bytes = le(file).toLower();
            const QByteArray wide(reinterpret_cast<const char *>(segredo.utf16()), segredo.size() * 2);
            if (!file.endsWith(u"/Cadastros.mdb"_s) && (bytes.contains(segredo.toLatin1()) || bytes.contains(wide)))
                found << file;
        }
    }
    return found;
}

} // namespace quorel::teste
