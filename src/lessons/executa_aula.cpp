#include "lessons/executa_aula.h"

#include "catalogue/estado.h"
#include "lessons/andamento.h"
#include "lessons/mensagens.h"
#include "lessons/posicao.h"
#include "lessons/programas_filhos.h"
#include "lessons/quadrinhos.h"
#include "lessons/vista_andamento.h"
#include "lessons/vista_blocos.h"
#include "platform/codec.h"
#include "platform/costuras.h"
#include "platform/eventos.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"
#include "startup/valor.h"

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

constexpr qsizetype kMinLicao = 6; // characters; what is shorter is a code

QString defaultLesson()
{
    return u"(1,1)2610<SPÇ>1<SPÇ>1<SPÇ>0<SPÇ>0<SPÇ>0<SPÇ>0<SPÇ><SPÇ><SPÇ><SPÇ><SPÇ><SPÇ><PÇ><VAA>(1)2610"
           "\t1\t1\t1\t0\t0\t0 <MD><VOA>(1)<VCM>22 CHAMA AULA  20<CM>"_s;
}

/// The rules of the calculator: a code becomes its lesson, and a lesson may name another type behind "<TIPO>".
void resolveCalc(QString &aula, QString &tipo)
{
    if (aula.size() < kMinLicao)
        aula = BuscaAulaCalc(aula);
    if (aula.contains("<TIPO>"_L1)) {
        tipo = gTexto.TextoDepois(aula, u"<TIPO>"_s);
        aula = gTexto.TextoAntes(aula, u"<TIPO>"_s, true);
        if (tipo == "Calculadora"_L1)
            tipo = u"Calc"_s;
    }
    if (aula.isEmpty())
        aula = defaultLesson();
}

/// Command line that starts the child program of a type; /Hook: tells it that a shell drives it.
QString commandOf(const QString &tipo)
{
    const QString name = u'\\' + tipo + ".exe"_L1;
    QString program = gConfig.Config(u"ZETO_EXE"_s) + name;
    if (!gTexto.ArquivoExiste(program))
        program = gSistema.DirWindows() + "\\QUOREL2001\\exe"_L1 + name;
    const auto option = tipo == "Zeto"_L1 ? " /cnf:"_L1 : " /cfg:"_L1; // this one program takes the other switch
    return program + option + gConfig.ArquivoCnf + " /Hook:"_L1;
}

void sendControl(const QString &palavra)
{
    localizaCalc();
    EnviaTexto(gJanelaCalc, vistaBlocos().handlePrincip(), MSG_CONTROLE, palavra);
}

/// Tells the calculator that the lesson to come is the last, or the first, of its Roteiro.
void markEdges()
{
    const int upper = roteiroAtual().Aulas.upperBound();
    if (gAulaAtual + 1 > upper)
        sendControl(u"ULTIMA"_s);
    if (gAulaAtual - 1 < 1 || gAulaAtual - 1 > upper)
        sendControl(u"PRIMEIRA"_s);
}

void run(const QString &aula, const QString &tipo)
{
    const QString command = commandOf(tipo);
    eventTurn();
    const QString upper = upper1252(tipo);
    if (upper == "CALC"_L1 || upper == "CALCULADORA"_L1)
        markEdges();
    if (tipo == "HTML"_L1)
        mostraQuadrinhos(aula);
    else if (!enviaAoFilho(tipo, command, aula))
        caixa({.texto = u"Tipo de execução de aula desconhecido!"_s});
}

} // namespace

QString BuscaAulaCalc(const QString &codigo)
{
    const Vetor<AulaRec> &aulas = gRoteiros[gRoteiros.upperBound()].Aulas;
    const double wanted = valorNumerico(codigo);
    for (int i = 1; i <= aulas.upperBound(); ++i) {
        if (valorNumerico(aulas[i].Cod) == wanted)
            return aulas[i].Linha + "<TIPO>"_L1 + aulas[i].Tipo;
    }
    return {};
}

void ExecutaAula(QString &aula, QString &tipo)
{
    if (aula.isEmpty() || tipo.isEmpty())
        return;
    if (tipo == "Calc"_L1)
        resolveCalc(aula, tipo);
    if (tipo == "Dicionario"_L1)
        tipo = u"Livros"_s;
    if (tipo == "Calculadora"_L1)
        tipo = u"Calc"_s;
    const QString ownAula = aula;
    const QString ownTipo = tipo;
    run(ownAula, ownTipo);
}

void iniciaRoteiro(int indice)
{
    gEmRoteiro = true;
    gRotAtual = qint16(indice);
    gAulaAtual = 1;
    ignora(tomaRoteiro);
    ignora([] {
        vistaAndamento().roteiroLeft(); // the one before may not have come to its end
        vistaAndamento().aulaBegan(1, roteiroAtual().Aulas.upperBound());
        AulaRec &primeira = gRoteiros.edit(gRotAtual).Aulas.edit(1);
        ExecutaAula(primeira.Linha, primeira.Tipo);
    });
}

} // namespace quorel
