#pragma once

#include "tools/blocos_arquivos.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>

namespace quorel::blocos {

/// What the shell reads from a block file: `objetivo`, `tema`, and `roteiros` with one element for each number from 1
/// on, empty ones included, each with its `aulas` likewise.
/// @param texto  bytes of code page 1252
QJsonObject jsonDoBloco(const QByteArray &texto);

/// What the catalogue makes of a level's files: `mes`, `ano`, `disciplina`, `arquivo`, `objetivo`, and `tema` of the
/// month group. A name that the catalogue can't read is skipped.
QJsonArray jsonDoDiretorio(const QList<ArquivoDeBloco> &arquivos);

/// The same for people, lines ended by LF.
QString textoDoBloco(const QJsonObject &bloco);
QString textoDoDiretorio(const QJsonArray &arquivos);

} // namespace quorel::blocos
