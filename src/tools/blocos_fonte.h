#pragma once

#include "autoria/finding.h"

#include <QStringList>
#include <QTextStream>

namespace quorel::blocos {

/// What the commands that make and unmake block files are told. Paths are native.
struct PedidoDeFonte
{
    QStringList paths;
    bool json = false; ///< findings as JSON
    bool overwrite = false; ///< desfaz and novo: over what is there
    bool withMedia = false; ///< faz: look for figures, sounds and HTML lessons
};

/// One a line, or as an array of what editors read.
void printFindings(const Findings &findings, bool json, QTextStream &saida);

/// Makes a block file of a source, or a level's of a directory of sources (*.txt). What a source says that can't be
/// understood leaves its block file as it was.
/// @return the exit code
int faz(const PedidoDeFonte &pedido, QTextStream &saida, QTextStream &erros);

/// Turns a block file back into a source.
int desfaz(const PedidoDeFonte &pedido, QTextStream &saida, QTextStream &erros);

/// Writes an example. Paths: the file, and the kind where it is to be that one alone.
int novo(const PedidoDeFonte &pedido, QTextStream &saida, QTextStream &erros);

} // namespace quorel::blocos
