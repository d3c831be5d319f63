#include "lessons/programas_filhos.h"

#include "lessons/andamento.h"
#include "lessons/espia.h"
#include "lessons/mensagens.h"
#include "lessons/vista_andamento.h"
#include "lessons/vista_blocos.h"
#include "platform/eventos.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

constexpr unsigned kKeepBoth = kKeepSize | kKeepPosition;
constexpr char16_t kTituloCalc[] = u"Calculadora - Quorel";

void sendAula(Janela filho, const QString &aula)
{
    EnviaTexto(filho, vistaBlocos().handlePrincip(), MSG_AULA, aula);
}

QString asCommanded(const QString &aula)
{
    return gExecExterno ? aula + "CMDEXEC"_L1 : aula;
}

void childThenSend(Janela filho, const QString &aula)
{
    gJanelaFilha = filho;
    sendAula(filho, aula);
}

void sendToDesenho(Janela filho, const QString &aula)
{
    sendAula(filho, aula);
    // Kept: set after the send, over what a lesson nested in it has set; the drawing tool gets the game replies then.
    gJanelaFilha = gJanelaDesenho;
}

void sendToLivros(Janela filho, const QString &aula)
{
    gJanelaFilha = filho;
    sendAula(filho, asCommanded(aula));
    gExecExterno = false;
}

void sendToCalc(Janela filho, const QString &aula)
{
    // Kept: gExecExterno stays set for the next lesson of Livros or Calc; only Livros clears it.
    if (!gExecExterno)
        gJanelaFilha = filho;
    sendAula(filho, asCommanded(aula));
}

struct ProgramaFilho
{
    const char16_t *tipo;
    const char16_t *titulo;
    Janela *janela;
    unsigned flags;
    const char16_t *interna; ///< inner window to be placed too; null for none
    Ordem ordemInterna;
    unsigned flagsInterna;
    void (*envia)(Janela filho, const QString &aula);
};

constexpr std::array<ProgramaFilho, 5> kProgramas{{
    {u"Zeto", u"Zeto - Quorel", &gJanelaZeto, kKeepPosition, u"ZETO", Ordem::Top, kKeepPosition, childThenSend},
    {u"Desenho", u"Editor de Desenhos - Quorel", &gJanelaDesenho, kKeepSize, nullptr, Ordem::Top, 0, sendToDesenho},
    {u"Vrel", u"Histórias - Quorel", &gJanelaVrel, kKeepSize, nullptr, Ordem::Top, 0, childThenSend},
    {u"Livros", u"Livros - Quorel", &gJanelaLivros, kKeepSize, u"Livros", Ordem::Topmost, kKeepBoth, sendToLivros},
    {u"Calc", kTituloCalc, &gJanelaCalc, kKeepSize, nullptr, Ordem::Top, 0, sendToCalc},
}};

/// Handle of the program, started once if need be; 0 when it does not come up.
Janela findOrStart(const QString &titulo, const QString &comando)
{
    if (const Janela filho = procuraFilho(titulo))
        return filho;
    vistaAndamento().programAwaited(titulo);
    gTexto.Executa(comando, 1, true, QString());
    vistaAndamento().programAwaited(QString());
    const Janela filho = procuraFilho(titulo);
    if (filho == 0)
        tellAusente(titulo, comando);
    return filho;
}

} // namespace

Janela procuraFilho(const QString &titulo)
{
    return gSistema.ProcuraJanela(titulo, kModoBusca, true);
}

bool enviaAoFilho(const QString &tipo, const QString &comando, const QString &aula)
{
    const auto *programa = std::ranges::find_if(kProgramas, [&](const auto &p) { return tipo == QStringView(p.tipo); });
    if (programa == kProgramas.end())
        return false;
    const Janela filho = findOrStart(QString::fromUtf16(programa->titulo), comando);
    placeWindow(filho, Ordem::Top, programa->flags);
    if (programa->interna)
        placeWindow(
            procuraFilho(QString::fromUtf16(programa->interna)), programa->ordemInterna, programa->flagsInterna);
    *programa->janela = filho;
    programa->envia(filho, aula);
    return true;
}

void baixaFilhos()
{
    for (const Janela filho : {gJanelaZeto, gJanelaCalc, gJanelaVrel, gJanelaDesenho, gJanelaLivros})
        placeWindow(filho, Ordem::NoTopmost, kKeepBoth);
}

void localizaCalc()
{
    const QString titulo = QString::fromUtf16(kTituloCalc);
    gJanelaCalc = procuraFilho(titulo);
    if (gJanelaCalc != 0)
        return;
    QString programa = gSistema.DirWindows() + u"\\QUOREL2001\\exe\\calc.exe"_s;
    if (!gTexto.ArquivoExiste(programa))
        programa = gConfig.Config(u"ZETO_EXE"_s) + u"\\calc.exe"_s;
    gTexto.Executa(programa, 1, true, QString());
    gJanelaCalc = procuraFilho(titulo);
    eventTurn();
}

} // namespace quorel
