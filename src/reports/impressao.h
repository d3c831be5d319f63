#pragma once

#include "reports/documento_pagina.h"

class QPrinter;
class QWidget;

namespace quorel {

/// Offers the system's print dialogue, which also saves a PDF, and prints the page unless it is cancelled.
void imprimePagina(const QString &texto, const std::vector<FiguraDePagina> &figuras, QWidget *janela);

/// Where each sheet of paper begins and the last one ends. No row, line or picture is cut that fits on a sheet;
/// 10,000 sheets at most.
/// @param cortes  as DocumentoPagina::cortes() gives them @param folha  height of a sheet, above 0
/// @param cabeca  what sheets that begin behind it in its table leave room for, if half a sheet holds it
std::vector<double> folhas(const std::vector<double> &cortes, double folha, const CabecaDePagina &cabeca = {});

/// Prints a page on a printer that is set up, sheet after sheet. A printer that can't be used prints nothing.
void pintaPagina(const QString &texto, const std::vector<FiguraDePagina> &figuras, QPrinter &printer);

} // namespace quorel
