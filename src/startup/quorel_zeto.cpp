#include "startup/quorel_zeto.h"

#include "platform/caminho.h"
#include "platform/codec.h"
#include "platform/costuras.h"
#include "platform/eventos.h"
#include "platform/sistema.h"
#include "startup/arquivo_util.h"
#include "startup/lugares.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"

#include <QCoreApplication>

namespace quorel {

using namespace Qt::StringLiterals;

static void tellFailure(const QString &texto)
{
    caixa({.texto = texto, .icone = Icone::Critico});
}

/// The configuration file that a path of any kind means.
static QString configurationFile(const QString &path)
{
    const QString name = u"ZETO_CNF.TXT"_s;
    if (upper1252(path).contains(name))
        return path;
    if (path.isEmpty())
        return backslashPath(QCoreApplication::applicationDirPath()) + u'\\' + name;
    constexpr qsizetype kDriveRoot = 3; // "c:\"
    if ((path.size() == kDriveRoot && path.contains(u":\\"_s)) || driveRoots(kOpticalDrive).contains(path))
        return path + name;
    const bool isFile = !path.endsWith(u'\\') && gTexto.ArquivoExiste(path);
    return isFile ? path : path + u'\\' + name;
}

void Quorel_Zeto::Init(const QString &Caminho, const QString &NomeCadastro)
{
    ArquivoCnf = configurationFile(Caminho);
    QString directory = gTexto.DiretorioDe(ArquivoCnf);
    if (directory.endsWith(u'\\'))
        directory.chop(1);
    QString text = gTexto.LeArquivo(ArquivoCnf);
    if (text.isEmpty()) {
        tellFailure(u"Arquivo de configuração vazio ou Unidade não respondendo !"_s);
        return;
    }
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\n', u"\r\n"_s); // other editors end lines by LF alone
    expandeMacros(text, directory);
    preparaCadastro(NomeCadastro);
}

void Quorel_Zeto::expandeMacros(const QString &texto, const QString &diretorio)
{
    QString text = texto;
    const QString optical = opticalRoot();
    const bool hasDollar = text.contains(u'$');
    if (text.contains(u'@') || hasDollar || gTexto.ArquivoExiste(optical + QString::fromUtf16(kArquivoCnf))) {
        const QString drive = optical.left(optical.size() - 1);
        // Kept: without a "$" it is the "@" that means the optical drive, wherever the configuration lies; discs rely
        // on it.
        text.replace(hasDollar ? u'$' : u'@', drive);
    }
    const bool network = diretorio.startsWith(u"\\\\"_s);
    text.replace(u'@', network ? diretorio : volumeOf(diretorio));
    TextoCnf = text.replace(u'#', gSistema.DirWindows() + u"\\Quorel2001"_s);
}

void Quorel_Zeto::preparaCadastro(const QString &nomeCadastro)
{
    const QString key = u"ZETO_CAD"_s;
    const QString windows = gSistema.DirWindows();
    const QString local = windows + nomeCadastro;
    QString configured = Config(key) + nomeCadastro;
    if (!gTexto.ArquivoExiste(local)) {
        if (gTexto.ArquivoExiste(configured))
            gArquivo.Abre(configured);
        return;
    }
    gArquivo.Abre(local);
    if (!gArquivo.SomenteLeitura())
        return;
    // Kept: the register is now looked for where the read-only file itself lies, so the copy below is not reached as
    // long as that file stays.
    TextoCnf = gTexto.GravaChave(TextoCnf, key, windows, u"="_s, u"\r\n"_s);
    configured = Config(key) + nomeCadastro;
    if (gTexto.ArquivoExiste(configured))
        return;
    if (!gArquivo.Copia(local, configured)) {
        tellFailure(u"Erro ao copiar o arquivo de Cadastro para "_s + windows);
        return;
    }
    eventTurn();
    if (!gArquivo.TiraSomenteLeitura(configured))
        tellFailure(u"Erro ao modificar o atributo de leitura do arquivo de Cadastro"_s);
}

QString Quorel_Zeto::Config(const QString &Chave, QString &Texto) const
{
    if (Texto.isEmpty())
        Texto = TextoCnf;
    return gTexto.LeChave(Texto, Chave, u"="_s, u"\r\n"_s);
}

QString Quorel_Zeto::Config(const QString &Chave) const
{
    QString text;
    return Config(Chave, text);
}

QString Quorel_Zeto::Programa(const QString &Texto) const
{
    QString expanded;
    qsizetype start = 0;
    for (;;) {
        const qsizetype open = Texto.indexOf(u'{', start);
        const qsizetype close = open < 0 ? -1 : Texto.indexOf(u'}', open);
        if (close < 0)
            return expanded.append(QStringView(Texto).sliced(start));
        expanded += QStringView(Texto).sliced(start, open - start);
        expanded += Config(Texto.sliced(open + 1, close - open - 1));
        start = close + 1;
    }
}

void Quorel_Zeto::SetaCFG(const QString &Texto)
{
    TextoCnf = Texto;
}

} // namespace quorel
