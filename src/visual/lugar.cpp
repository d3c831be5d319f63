#include "visual/lugar.h"

#include "platform/janela.h"
#include "platform/twips.h"

namespace quorel {

void coloca(QWidget &controle, const Lugar &lugar)
{
    controle.setGeometry(pixels(lugar.Left), pixels(lugar.Top), pixels(lugar.Width), pixels(lugar.Height));
}

void ArredondaJanela(QWidget &janela, const Lugar &lugar, quint8 raio)
{
    setRoundRegion(&janela, pixels(lugar.Width), pixels(lugar.Height), raio);
}

} // namespace quorel
