#include "catalogue/estado.h"
#include "lessons/andamento.h"
#include "lessons/dismissal.h"
#include "lessons/executa_aula.h"
#include "lessons/log_aulas.h"
#include "lessons/mensagens.h"
#include "lessons/posicao.h"
#include "lessons/programas_filhos.h"
#include "lessons/vista_andamento.h"
#include "lessons/vista_blocos.h"
#include "platform/codec.h"
#include "platform/erro.h"
#include "platform/eventos.h"
#include "startup/estado.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"
#include "startup/valor.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

/// A condition between statements that are passed over when they fail: nothing when it fails itself.
template <typename Condition>
std::optional<bool> holds(Condition &&condition)
{
    std::optional<bool> result;
    ignora([&] { result = condition(); });
    return result;
}

void readMessage(qintptr lParam)
{
    // The address comes as a number: that is what a window procedure is given.
    const auto &dados = *reinterpret_cast<const CopyData *>(lParam); // NOLINT(performance-no-int-to-ptr)
    gMensagem.Codigo = qint32(quint32(dados.code));
    gMensagem.Tamanho = qint32(dados.size);
    gMensagem.Endereco = dados.bytes;
    // Kept: without a text of its own a message finds that of the one before, so that its answer is repeated.
    if (gMensagem.Tamanho <= 0 || !dados.bytes)
        return;
    const std::size_t size = std::min(std::size_t(gMensagem.Tamanho), gMensagem.Dados.size());
    std::memcpy(gMensagem.Dados.data(), dados.bytes, size);
    const auto *end = static_cast<const char *>(std::memchr(gMensagem.Dados.data(), 0, size));
    const std::size_t length = end ? std::size_t(end - gMensagem.Dados.data()) : size;
    gMensagem.Texto = decode1252(QByteArrayView(gMensagem.Dados.data(), qsizetype(length)));
}

void recordAnswer()
{
    if (gMensagem.Texto.isEmpty() || gAluno <= 0)
        return;
    gRespostas += gMensagem.Texto + u':';
    vistaAndamento().answerTaken(gMensagem.Texto);
}

void writeLog()
{
    ignora([] { GravaLog(gRespostas); });
}

void endRoteiro()
{
    gEmRoteiro = false;
    // Kept: the answer that comes with the last "next" is not recorded; rows of the log are compared with older ones.
    if (!gRespostas.isEmpty())
        writeLog();
    ignora([] {
        if (gJanelaZeto != 0)
            EnviaTexto(gJanelaZeto, vistaBlocos().handlePrincip(), MSG_CONTROLE, u"ESCONDE"_s);
    });
    vistaAndamento().roteiroEnded();
    eventTurn();
}

void runAula()
{
    recordAnswer();
    ignora(tomaRoteiro);
    if (!childrenDismissed())
        ignora(executaAulaAtual);
}

void proxima()
{
    // Kept: past the end it goes on moving, and "ESCONDE" is sent again each time; a child that was told to hide may
    // have come up again.
    ignora([] { moveAula(1); });
    const auto inside = holds(aulaExiste);
    if (!inside)
        return;
    if (*inside)
        runAula();
    else
        endRoteiro();
}

void anterior()
{
    ignora([] { moveAula(-1); });
    const auto inside = holds([] { return aulaExiste() && gAulaAtual > 0; });
    if (!inside)
        return;
    if (*inside)
        runAula();
    else if (!gRespostas.isEmpty())
        writeLog();
}

void execCalc()
{
    if (childrenDismissed()) // the answers still to come belong to the Roteiro
        return;
    gCodRoteiro = 0;
    gNomeRoteiro.clear();
    if (gMensagem.Texto.contains("EXEC"_L1)) {
        gMensagem.Texto = gTexto.TextoAntes(gMensagem.Texto, u"EXEC"_s, true);
        gExecExterno = true;
    }
    ignora([] {
        QString tipo = u"Calc"_s;
        ExecutaAula(gMensagem.Texto, tipo);
    });
}

void sai()
{
    gEmRoteiro = false;
    ignora([] { vistaBlocos().focusBlocos(); });
    recordAnswer();
    writeLog();
    vistaAndamento().roteiroLeft();
}

void aluno()
{
    ignora([] { gAluno = parteInteira(valorNumerico(gMensagem.Texto)); });
    ignora(AbreLog);
}

void classe()
{
    // Kept: RSLog is not opened again; it shows the former class until the pupil changes.
    ignora([] { gClasse = parteInteira(valorNumerico(gMensagem.Texto)); });
}

void fechaBlocos()
{
    ignora([] { vistaBlocos().unloadBlocos(); });
}

void resposta()
{
    recordAnswer();
    writeLog();
}

void sendJogo(const QString &texto)
{
    ignora([&] { EnviaTexto(gJanelaFilha, vistaBlocos().handlePrincip(), MSG_JOGO, texto); });
}

void jogo()
{
    const auto hasJogo = holds([] { return !roteiroAtual().Aulas[gAulaAtual].Jogo.isEmpty(); });
    if (!hasJogo)
        return;
    if (!*hasJogo) {
        sendJogo(QString());
        return;
    }
    // Kept: a direct lookup of the exact title, unlike all others; only a running exercise program asks for games.
    if (gJanelaFilha == 0)
        gJanelaFilha = gSistema.ProcuraJanela(kTituloZeto, 0, false);
    sendJogo(QString::number(gRotAtual) + u'#' + roteiroAtual().Aulas[gAulaAtual].Jogo);
}

struct Acao
{
    qint32 codigo;
    void (*acao)();
};

constexpr std::array<Acao, 9> kAcoes{{
    {MSG_EXEC_CALC, execCalc},
    {MSG_FECHA_BLOCOS, fechaBlocos},
    {MSG_PROXIMA, proxima},
    {MSG_ANTERIOR, anterior},
    {MSG_SAI, sai},
    {MSG_ALUNO, aluno},
    {MSG_CLASSE, classe},
    {MSG_RESPOSTA, resposta},
    {MSG_JOGO, jogo},
}};

} // namespace

void RecebeMensagem(qintptr lParam)
{
    if (lParam == 0)
        return;
    readMessage(lParam);
    const auto *acao = std::ranges::find(kAcoes, gMensagem.Codigo, &Acao::codigo);
    if (acao != kAcoes.end())
        acao->acao();
}

} // namespace quorel
