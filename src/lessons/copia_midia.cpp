#include "lessons/copia_midia.h"

#include "lessons/destino_midia.h"
#include "platform/caminho.h"
#include "platform/costuras.h"
#include "platform/eventos.h"
#include "platform/sistema.h"
#include "startup/estado.h"
#include "startup/lugares.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

constexpr qsizetype kMaxEmpty = 2; // characters of a piece or an option that holds nothing
constexpr int kPecaFigura = 11; // fields of a piece and of an option, from 1
constexpr int kPecaSom = 12;
constexpr int kOpcaoFigura = 9;

/// Asks for a directory; shown and typed in the system's own form. Empty when the box was cancelled.
QString askDirectory(const QString &texto, const QString &proposta)
{
    return backslashPath(perguntaTexto({.texto = texto, .titulo = u"Diretório"_s, .proposta = nativePath(proposta)}));
}

/// Asks for the destination the first time; for the origin only later, so never in the call that asked for the other.
void askDirectories()
{
    if (gDirFiguras.isEmpty()) {
        gDirFiguras = askDirectory(u"Digite o Diretório Destino das Figuras"_s, proposedCopies());
        if (gDirFiguras.isEmpty())
            gDirFiguras = gSistema.DirWindows() + "\\Temp\\"_L1;
    } else if (gDirMM.isEmpty()) {
        gDirMM = askDirectory(u"Digite o Diretório Origem do Zeto_MM"_s, proposedMedia());
    }
}

/// Copies the medium that a field of a piece or an option names, if it does.
void copyField(const QString &element, const QString &delimiter, int campo, void (*copia)(const QString &nome))
{
    if (element.size() <= kMaxEmpty)
        return;
    const QString nome = gTexto.Campo(element, campo, delimiter, 1);
    if (!nome.isEmpty())
        copia(nome);
}

} // namespace

void CopiaMidiaAula(QString &texto)
{
    QString pecas = gTexto.Campo(texto, 1, u"<VETPECA>"_s, 1);
    pecas = gTexto.TextoAntes(gTexto.TextoDepois(pecas, u")"_s), u"<VAA>"_s, true);
    for (const QString &peca : pecas.split(u"<PÇ>"_s)) {
        copyField(peca, u"<SPÇ>"_s, kPecaFigura, CopiaFigura);
        copyField(peca, u"<SPÇ>"_s, kPecaSom, CopiaSom);
    }
    texto = gTexto.TextoDepois(texto, u"<VAA>"_s);
    QString opcoes = gTexto.TextoAntes(gTexto.TextoDepois(texto, u"<VOA>"_s), u"<VCM>"_s, true);
    opcoes = gTexto.TextoDepois(opcoes, u")"_s);
    for (const QString &opcao : opcoes.split(u"<OP>"_s))
        copyField(opcao, u"\t"_s, kOpcaoFigura, CopiaFigura);
}

void CopiaFigura(const QString &nome)
{
    gDirMM = gConfig.Config(u"ZETO_MM"_s);
    if (!isDirectory(gDirMM))
        gDirMM = opticalRoot() + "ZETO_MM"_L1;
    askDirectories();
    makeDirectory(gDirFiguras);
    QString base = gDirMM + "\\Fig\\"_L1;
    const QString origem = gConfig.Nome_Fig(nome, base, QString());
    if (origem.isEmpty())
        return;
    const QString destino = gDirFiguras + u'\\' + nome + ".GIF"_L1;
    if (!isSafeDestination(destino, gDirFiguras) || copyFile(origem, destino) || gTexto.ArquivoExiste(destino))
        return;
    const QString directory = parentOf(destino);
    makeDirectory(parentOf(directory)); // two levels and no more
    makeDirectory(directory);
    copyFile(origem, destino);
}

void CopiaSom(const QString &nome)
{
    gDirMM = gConfig.Config(u"ZETO_MM"_s);
    askDirectories();
    QString base = gDirMM + "\\Som\\"_L1;
    const QString origem = gConfig.Nome_Som(nome, base, QString());
    if (origem.isEmpty())
        return;
    QString destino = origem;
    if (!gDirMM.isEmpty())
        destino.replace(gDirMM, gDirFiguras);
    if (!isSafeDestination(destino, gDirFiguras))
        return;
    eventTurn();
    if (copyFile(origem, destino) || gTexto.ArquivoExiste(destino))
        return;
    makePath(parentOf(destino)); // "\Som\" and the letter: both are missing in a new destination
    copyFile(origem, destino);
}

} // namespace quorel
