#include "licao/midia.h"

#include "platform/caminho.h"
#include "startup/quorel_zeto.h"

#include <QFileInfo>

namespace quorel {

Midia midiaDaConfiguracao(const QString &cfg)
{
    if (const QFileInfo file(nativePath(cfg)); !cfg.isEmpty() && file.isFile() && file.size() > 0)
        gConfig.Init(cfg, QString::fromUtf16(kNomeCadastro));
    return {[](const QString &nome) { return nativePath(gConfig.N_Fig(nome)); },
        [](const QString &nome) { return nativePath(gConfig.N_Som(nome)); }};
}

} // namespace quorel
