#pragma once

#include <QSize>

namespace quorel {

/// How large everything is drawn, in per cent of the size at 96 dots an inch.
inline constexpr int kSmallestZoom = 75;
inline constexpr int kFullSize = 100;
inline constexpr int kLargestZoom = 200;

/// What no dock covers of the screen that holds the corner 0,0, in the screen's own pixels, asked before Qt starts.
/// Empty where no screen can be asked: without an X server, and where windows have no places of their own.
QSize freeScreenArea();

/// The zoom that the program which started this one hands over (QUOREL_ZOOM), in per cent; 0 for none.
int inheritedZoom();

/// Makes Qt draw at a zoom, whatever the desktop's own scale is: a guard around the making of the QApplication, which
/// reads it from the environment. Afterwards only QUOREL_ZOOM stays there, so that programs of others keep their size.
/// @param zoom  in per cent; 0 changes nothing, nor does any where QT_SCALE_FACTOR is set by hand
class ZoomedStart final
{
    Q_DISABLE_COPY_MOVE(ZoomedStart)
public:
    explicit ZoomedStart(int zoom);
    ~ZoomedStart();

private:
    bool mActive;
};

} // namespace quorel
