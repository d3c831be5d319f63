#include "licao/preferences.h"

#include "platform/codec.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"

using namespace Qt::StringLiterals;

namespace quorel {

static bool isOn(const QString &key)
{
    return gConfig.Config(key).trimmed() == u"1"_s;
}

Preferences preferencesOfConfiguration()
{
    return {.capitals = isOn(u"MAIUSCULAS"_s), .fullScreen = isOn(u"TELA_CHEIA"_s)};
}

QString shownText(const QString &text, bool capitals)
{
    return capitals ? upper1252(text) : text;
}

} // namespace quorel
