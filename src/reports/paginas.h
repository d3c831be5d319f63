#pragma once

#include "reports/planilha.h"

namespace quorel {

/// What the heading of a page tells.
struct CabecalhoPagina
{
    QString figura; ///< path of the logo; empty when there is none
    QString aluno; ///< name; may be empty
    QString classe; ///< likewise
    QString dataInicial; ///< text of the box
    QString dataFinal; ///< likewise
};

/// The heading for gAluno and gClasse, their names looked up in the register; a name that is not there is empty.
CabecalhoPagina leCabecalho(const QString &dataInicial, const QString &dataFinal);

/// The page with the chart. @param arqGrafico  path of its picture
QString paginaGrafico(const CabecalhoPagina &cabecalho, const QString &arqGrafico);

/// The page with the sheet. @param linhas  header first, as in the grid
QString paginaDesempenho(const CabecalhoPagina &cabecalho, const std::vector<LinhaPlanilha> &linhas);

/// Writes a page to a new temporary file. Kept: the empty file ".TMP" whose name the page's is made from stays.
/// @return its path, which ends in ".HTML"; empty when there is no place for it
QString gravaPagina(const QString &pagina);

} // namespace quorel
