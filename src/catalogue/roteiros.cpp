#include "catalogue/roteiros.h"

#include "catalogue/estado.h"
#include "catalogue/interno.h"
#include "catalogue/leitor_blocos.h"
#include "platform/costuras.h"
#include "platform/eventos.h"
#include "platform/fim.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"

namespace quorel {

using namespace Qt::StringLiterals;

void LeBancoBlocos(QString &caminho)
{
    if (caminho.isEmpty()) {
        const QString mdb = gConfig.Config(u"zeto_mdb"_s);
        caminho = (mdb.isEmpty() ? gSistema.DirWindows() + u"\\QUOREL2001"_s : mdb) + u"\\zetodb.ini"_s;
    }
    if (!gTexto.ArquivoExiste(caminho)) {
        caixa({u"Arquivo não encontrado!"_s});
        encerraPrograma();
    }
    gTextoDB = gTexto.LeBytes(caminho);
}

namespace {

/// Failures after which the reading goes on with the next statement.
bool isPassedOver(const ErroExecucao &falha)
{
    return falha.numero() == kFalhaObjeto || falha.numero() == kFalhaControle;
}

template <typename Statement>
void resumeNext(Statement &&statement)
{
    try {
        statement();
    } catch (const ErroExecucao &falha) {
        if (!isPassedOver(falha))
            throw;
    }
}

/// Puts the picture on the button, the window painting before and after.
/// @return false when a newer reading took place meanwhile
bool loadPicture(int i, const QString &figura, quint64 leitura)
{
    eventTurn();
    if (leitura != numeroDaLeitura())
        return false;
    resumeNext([&] { vistaRoteiros().loadPicture(i, figura); });
    eventTurn();
    return leitura == numeroDaLeitura();
}

/// Brings one Roteiro into gRoteiros and onto its button, field after field: a turn of events sees what is there.
/// @return false when a newer reading took place meanwhile
bool applyRoteiro(int i, RoteiroRec &&lido, quint64 leitura)
{
    const bool hasButton = lido.Nome != "CALC"_L1;
    if (hasButton) {
        RoteiroRec comeco;
        comeco.Cod = lido.Cod;
        comeco.Nome = lido.Nome;
        comeco.Fig = lido.Fig;
        gRoteiros.edit(i) = std::move(comeco);
        QString figura = gConfig.N_Fig(lido.Fig);
        if (figura.isEmpty())
            figura = gConfig.N_Fig(lido.Fig); // a second look: slow media answer only then
        // A figure that was not found clears the button, and that is no failure.
        if (!lido.Fig.isEmpty() && !loadPicture(i, figura, leitura))
            return false;
    }
    Vetor<AulaRec> aulas = std::exchange(lido.Aulas, {});
    gRoteiros.edit(i) = lido; // its lessons last
    if (hasButton) {
        resumeNext([&] { vistaRoteiros().setTag(i, lido.Titulo); });
        resumeNext([&] { vistaRoteiros().showButton(i); });
    }
    gRoteiros.edit(i).Aulas = std::move(aulas);
    return true;
}

void readInto(quint64 leitura)
{
    resumeNext([] { vistaRoteiros().hideAll(); });
    Bloco bloco = leBloco(gTextoDB);
    const int numRoteiros = bloco.roteiros.upperBound();
    gRoteiros.dimension(numRoteiros);
    for (int i = 1; i <= bloco.lidos; ++i) {
        // A section that is missing or empty was never touched: no button, no lessons.
        if (!bloco.roteiros[i].Aulas.isDimensioned())
            continue;
        if (!applyRoteiro(i, std::move(bloco.roteiros.edit(i)), leitura))
            return;
    }
    if (bloco.lidos < numRoteiros && bloco.roteiros[bloco.lidos + 1] != RoteiroRec())
        gRoteiros.edit(bloco.lidos + 1) = bloco.roteiros[bloco.lidos + 1];
}

} // namespace

void LeRoteiros()
{
    try {
        readInto(comecaLeitura());
    } catch (const ErroExecucao &) { // what was read so far stays
    }
}

} // namespace quorel
