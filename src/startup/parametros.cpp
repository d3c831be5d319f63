#include "startup/parametros.h"

#include "platform/codec.h"
#include "platform/costuras.h"
#include "platform/sistema.h"
#include "platform/zoom.h"
#include "startup/estado.h"
#include "startup/lugares.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"
#include "startup/valor.h"

namespace quorel {

using namespace Qt::StringLiterals;

static void showHelp()
{
    const QStringList lines{
        u"/NIVEL:<Identificação do nível do programa> Ex. F1..F4, I1,I2, "_s,
        u"  Corresponde ao diretório que está em <windir>\\Quorel2001\\DBBlocos"_s,
        u"/ESCOLA: ou /ESC: quando o sistema é multiusuário"_s,
        u"/NOMECLASSE:<Nome da classe que está cadastrada no sistema \"Tobi e Nina seus colegas na escola  \">"_s,
        u"  Utilizado para selecionar somente os alunos desta classe para o registro do desempenho (sistema multiusuário)"_s,
    };
    caixa({.texto = lines.join(u'\n'), .titulo = u"PARÂMETROS DA LINHA DE COMANDO"_s, .icone = Icone::Informacao});
}

/// The name of a level, empty for a code that has none.
static QString levelName(const QString &code)
{
    struct Level
    {
        QStringView code;
        QStringView name;
    };
    static constexpr Level kLevels[] = {
        {u"F1", u"Fundamental I"},
        {u"F2", u"Fundamental II"},
        {u"F3", u"Fundamental III"},
        {u"F4", u"Fundamental IV"},
        {u"I1", u"Infantil I"},
        {u"I2", u"Infantil II"},
    };
    for (const Level &level : kLevels) {
        if (equalNoCase(level.code, code))
            return level.name.toString();
    }
    return {};
}

static void loadConfiguration(const QString &path)
{
    gConfig.Init(path, QString::fromUtf16(kNomeCadastro));
    gArquivoCfg = path;
}

/// @return whether the switch brought a configuration
static bool applySwitch(const QString &key, const QString &value)
{
    if (key == u"CFG"_s && gTexto.ArquivoExiste(value)) {
        loadConfiguration(value);
        return true;
    }
    if (key == u"NIVEL"_s) {
        gNivel = value;
        const QString name = levelName(value);
        if (!name.isEmpty())
            gNomeNivel = name;
    } else if (key == u"ESCOLAS"_s || key == u"ESC"_s || key == u"ESCOLA"_s) {
        gEscolas = true;
    } else if (key == u"CLASSE"_s) {
        gClasse = parteInteira(valorNumerico(value));
    } else if (key == u"NOMECLASSE"_s) {
        gNomeClasse = value;
    }
    return false;
}

/// The last value that a line gives to a switch; empty when there is none.
static QString switchValue(const QString &line, const QString &key)
{
    QString value;
    for (const QString &field : line.split(u'/')) {
        if (upper1252(gTexto.TextoAntes(field, u":"_s, false)).trimmed() == key)
            value = gTexto.TextoDepois(field, u":"_s).trimmed();
    }
    return value;
}

int askedZoom(const QString &linhaComando)
{
    const QString key = u"ZOOM"_s;
    QString value = switchValue(linhaComando, key);
    if (value.isEmpty())
        value = gTexto.LeChave(gTexto.LeArquivo(switchValue(linhaComando, u"CFG"_s), 0, 0), key, u"="_s, u"\n"_s);
    const int zoom = value.trimmed().toInt();
    return zoom >= kSmallestZoom && zoom <= kLargestZoom ? zoom : 0;
}

static bool namesConfiguration(const QString &line)
{
    return upper1252(line).contains(u"/CFG:"_s);
}

/// @return whether some switch brought a configuration
static bool applySwitches(const QString &line)
{
    bool configured = false;
    const qsizetype words = gTexto.ContaDelimitador(line, u" "_s, 0) + 1;
    const QStringList fields = line.split(u'/'); // values may hold blanks, so the cuts are at slashes
    // Kept: there are as many rounds as words, so switches glued together without blanks may be left unread.
    for (qsizetype i = 1; i <= words && i < fields.size(); ++i) {
        const QString field = gTexto.Campo(fields[i], 1, u"/"_s, 1);
        const QString key = upper1252(gTexto.TextoAntes(field, u":"_s, false));
        if (applySwitch(key, gTexto.TextoDepois(field, u":"_s)))
            configured = true;
    }
    return configured;
}

void LeParametros(const QString &linhaComando)
{
    gLinhaComando = linhaComando;
    if (linhaComando.contains(u"/?"_s))
        showHelp();
    gConfig = {};
    const QString onDisc = opticalRoot() + QString::fromUtf16(kArquivoCnf);
    const QString line = namesConfiguration(linhaComando) ? linhaComando : linhaComando + u" /CFG:"_s + onDisc;
    const bool configured = applySwitches(line);
    // Kept: a file on the disc counts here even when an explicit /CFG: kept it from being read; the configuration then
    // stays empty and no default is written.
    if (!configured && !gTexto.ArquivoExiste(onDisc)) {
        GravaCnfPadrao();
        loadConfiguration(installationDirectory() + u'\\' + QString::fromUtf16(kArquivoCnf));
    }
    if (gNivel.isEmpty())
        gNivel = u"F1"_s; // its name is not set: a start without a level shows none
}

static QString defaultConfiguration()
{
    const QString windows = gSistema.DirWindows();
    const QString installation = installationDirectory();
    const QString disc = opticalRoot();
    const bool discHasCfg = gTexto.ArquivoExiste(disc + u"cfg\\Zeto.cfg"_s);
    const bool discHasMedia = gTexto.ArquivoExiste(disc + u"zeto_mm\\"_s);
    const QStringList lines{
        u"[zeto]"_s,
        u"ZETO=c:\\ZETO"_s,
        u"ZETO_CFG="_s + (discHasCfg ? disc + u"cfg"_s : installation + u"\\cfg"_s),
        u"ZETO_EXE="_s + installation + u"\\exe"_s,
        u"ZETO_MM="_s + (discHasMedia ? disc + u"zeto_mm"_s : installation + u"\\zeto_mm"_s),
        u"ZETO_MDB="_s + installation,
        u"ZETO_CAD="_s + (namesConfiguration(gLinhaComando) ? gConfig.Config(u"ZETO_CAD"_s) : windows),
        u"ZETO_ALUNOS="_s + windows,
        u"DirWin="_s + windows,
        u"DIRQUOREL="_s + installation,
        u"DBBLOCOS="_s + installation + u"\\DBBLOCOS"_s,
    };
    return lines.join(u"\r\n"_s);
}

void GravaCnfPadrao()
{
    constexpr int kModoPadrao = -1;
    const QString text = defaultConfiguration();
    const QString path = installationDirectory() + u'\\' + QString::fromUtf16(kArquivoCnf);
    if (gTexto.ArquivoExiste(path) && isReadOnly(path))
        clearReadOnly(path);
    gTexto.ApagaArquivo(path);
    gTexto.GravaArquivo(path, text, kModoPadrao, 0);
}

} // namespace quorel
