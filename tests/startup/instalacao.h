#pragma once

#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QDir>

namespace quorel::teste {

/// The folder's variables as they are before the start of the program, on a Windows directory of the test's own.
/// The media lie in "mm" and "alt" beside it.
struct Instalacao : ScratchDir
{
    Instalacao()
    {
        failOnWarnings();
        reiniciaStartup();
        QDir().mkpath(native("/win/QUOREL2001"));
        qputenv("QUOREL_WINDIR", native("/win").toUtf8());
        gConfig.SetaCFG("ZETO_MM=" + at("\\mm") + "\r\nMM_ALT=" + at("\\alt"));
    }
    static void load(const QString &path) { gConfig.Init(path, QString::fromUtf16(kNomeCadastro)); }
};

} // namespace quorel::teste
