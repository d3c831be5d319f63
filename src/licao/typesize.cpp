#include "licao/typesize.h"

#include <QFont>
#include <QSettings>
#include <QVariant>
#include <QWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr int kStep = 25, kWhole = 100; // per cent
static constexpr const char *kBase = "typePixels"; ///< property of a widget: its type's pixels at 100 %

static int within(int size)
{
    return std::clamp(size / kStep * kStep, kSmallestType, kLargestType);
}

static QSettings settings()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, u"quorel"_s, u"licao"_s);
}

static const QString kKey = u"letra"_s;

static int &current()
{
    static int size = within(settings().value(kKey, kWhole).toInt());
    return size;
}

int typeSize()
{
    return current();
}

void setTypeSize(int size)
{
    current() = within(size);
    settings().setValue(kKey, current());
}

int typePixels(int pixels)
{
    return pixels * current() / kWhole;
}

static void applyTo(QWidget &widget)
{
    QFont font = widget.font();
    font.setPixelSize(typePixels(widget.property(kBase).toInt()));
    widget.setFont(font);
    widget.updateGeometry();
}

void setType(QWidget &widget, int pixels, bool bold)
{
    QFont font = widget.font();
    font.setBold(bold);
    widget.setFont(font);
    widget.setProperty(kBase, pixels);
    applyTo(widget);
}

void applyTypeSize(QWidget &window)
{
    for (QWidget *each : window.findChildren<QWidget *>()) {
        if (each->property(kBase).isValid())
            applyTo(*each);
    }
}

} // namespace quorel
