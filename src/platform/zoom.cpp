#include "platform/zoom.h"

#include <QByteArray>

#include <array>

namespace quorel {

static constexpr const char *kInherited = "QUOREL_ZOOM";
static constexpr const char *kFactor = "QT_SCALE_FACTOR";

struct Setting
{
    const char *name;
    const char *value;
};

/// One factor, ours: the desktop's own would come on top of it, and points would follow the desktop's dots an inch.
static constexpr std::array<Setting, 3> kSettings{
    {{"QT_ENABLE_HIGHDPI_SCALING", "0"}, {"QT_FONT_DPI", "96"}, {"QT_SCALE_FACTOR_ROUNDING_POLICY", "PassThrough"}}};

int inheritedZoom()
{
    const int zoom = qEnvironmentVariableIntValue(kInherited);
    return zoom >= kSmallestZoom && zoom <= kLargestZoom ? zoom : 0;
}

ZoomedStart::ZoomedStart(int zoom) : mActive(zoom != 0 && !qEnvironmentVariableIsSet(kFactor))
{
    if (!mActive)
        return;
    qputenv(kInherited, QByteArray::number(zoom));
    qputenv(kFactor, QByteArray::number(double(zoom) / kFullSize));
    for (const Setting &setting : kSettings)
        qputenv(setting.name, setting.value);
}

ZoomedStart::~ZoomedStart()
{
    if (!mActive)
        return;
    qunsetenv(kFactor);
    for (const Setting &setting : kSettings)
        qunsetenv(setting.name);
}

} // namespace quorel
