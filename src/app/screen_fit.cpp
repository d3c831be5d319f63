#include "app/screen_fit.h"

#include "platform/twips.h"
#include "platform/zoom.h"
#include "register/falunos.h"
#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/fprincip.h"

#include <algorithm>

namespace quorel {

// Frames are the desktop's and keep their size; two windows stand beside each other.
static constexpr int kFrameSide = 3, kTitleBar = 30; // pixels of the screen

static QSize clientsTogether()
{
    const Lugar &main = fPrincip::kCliente, &blocks = fBlocos::kCliente;
    const Lugar &panel = fAux::kCliente, &cadastro = fAlunos::kCliente;
    return {pixels(std::max(main.Width, blocks.Width)) + pixels(std::max(panel.Width, cadastro.Width)),
        pixels(std::max({main.Height, blocks.Height, panel.Height, cadastro.Height}))};
}

int fittingZoom(QSize freeArea)
{
    static constexpr int kSteps[] = {kLargestZoom, 175, 150, 125, kFullSize};
    if (freeArea.isEmpty())
        return 0;
    const QSize room = freeArea - QSize(4 * kFrameSide, kTitleBar + kFrameSide);
    const QSize wanted = clientsTogether();
    for (const int zoom : kSteps) {
        if (wanted.width() * zoom <= room.width() * kFullSize && wanted.height() * zoom <= room.height() * kFullSize)
            return zoom;
    }
    return kSmallestZoom;
}

} // namespace quorel
