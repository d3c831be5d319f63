#pragma once

#include "autoria/blockfile.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>

namespace quorel::blocos {

/// What the shell reads from a block file: `objetivo`, `tema`, and `roteiros` with one element for each number from 1
/// on, empty ones included, each with its `aulas` likewise.
/// @param texto  bytes of code page 1252 @param end  becomes the Roteiro at which a failure ended the reading, 0 when
/// none did
QJsonObject jsonDoBloco(const QByteArray &texto, int &end);

/// What the catalogue makes of a level's files: `mes`, `ano`, `disciplina`, `arquivo`, `objetivo`, and `tema` of the
/// month group. @param unread  gets the files whose names the catalogue can't read: they are left out
QJsonArray jsonDoDiretorio(const QList<BlockFile> &arquivos, QStringList &unread);

/// The same for people, lines ended by LF.
QString textoDoBloco(const QJsonObject &bloco);
QString textoDoDiretorio(const QJsonArray &arquivos);

} // namespace quorel::blocos
