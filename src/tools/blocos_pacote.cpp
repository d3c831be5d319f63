#include "tools/blocos_pacote.h"

#include "autoria/checker.h"
#include "pacote/instalacao.h"
#include "pacote/montagem.h"
#include "platform/caminho.h"
#include "startup/quorel_zeto.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorel::blocos {

namespace {

void tell(QTextStream &to, const QString &arquivo, const QStringList &problemas, const QString &how)
{
    for (const QString &each : problemas)
        to << arquivo << u": "_s << how << u": "_s << each << Qt::endl;
}

QString nativeName(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

QString wordOf(pacote::Estado estado)
{
    switch (estado) {
    case pacote::Estado::Novo:
        return u"novo"_s;
    case pacote::Estado::Igual:
        return u"já está"_s;
    case pacote::Estado::Outro:
        return u"OUTRO lá"_s;
    case pacote::Estado::Impedido:
        break;
    }
    return u"IMPEDIDO"_s;
}

void showPlan(const pacote::Pacote &pacote, const std::vector<pacote::Passo> &passos, QTextStream &saida)
{
    const pacote::ManifestoRec &m = pacote.manifesto();
    saida << m.title << (m.version.isEmpty() ? QString() : u", versão "_s + m.version) << u", de "_s
          << m.authors.join(u", "_s) << u", licença "_s << m.license << u'\n';
    for (const pacote::Passo &passo : passos)
        saida << u"  "_s << wordOf(passo.estado).leftJustified(9) << nativeName(passo.caminho) << u'\n';
}

qsizetype countOf(const std::vector<pacote::Passo> &passos, pacote::Estado estado)
{
    return std::ranges::count(passos, estado, &pacote::Passo::estado);
}

/// Whether files of others may be replaced: by the option, or by an answer.
bool mayReplace(const PedidoDaOficina &pedido, const std::vector<pacote::Passo> &passos, Fluxos fluxos)
{
    const qsizetype others = countOf(passos, pacote::Estado::Outro);
    if (others == 0 || pedido.tem(u"--sobrescreve"_s))
        return others > 0;
    return !pedido.tem(u"--sim"_s)
        && pergunta(u"%1 arquivos já existem com outro conteúdo. Substituir (guardando cópia)?"_s.arg(others), fluxos);
}

/// The receipt that a name, or a pack, means.
std::optional<pacote::ReciboRec> receiptOf(const QString &palavra, const QString &pasta)
{
    if (QFileInfo(palavra).isFile()) {
        QStringList problemas;
        const auto pack = pacote::Pacote::abre(palavra, problemas);
        return pack ? pacote::leRecibo(pasta, pacote::nomeDoRecibo(pack->manifesto().title)) : std::nullopt;
    }
    return pacote::leRecibo(pasta, pacote::nomeDoRecibo(palavra));
}

/// The findings of the blocks of a pack that was laid out in a directory, at the names in the pack.
Findings findingsIn(const pacote::Pacote &pack, const pacote::Destinos &destinos, const QString &arquivo)
{
    Findings all;
    Checker checker(true);
    for (const pacote::ArquivoRec &each : pack.arquivos()) {
        if (each.genero != pacote::Genero::Bloco)
            continue;
        const QString path = pacote::caminhoSeguro(destinos.blocos, pacote::lugarNoDestino(each.nome, each.genero));
        for (Finding &finding : checker.check(blockFile(path), readWhole(path).value_or(QByteArray()))) {
            finding.file = arquivo + u'!' + each.nome;
            all.push_back(finding);
        }
    }
    return all;
}

} // namespace

int comandoPacote(const PedidoDaOficina &pedido, Fluxos fluxos)
{
    const QString pasta = QDir::cleanPath(pedido.palavras.first());
    const pacote::MontagemRec montagem = pacote::leiaPasta(pasta);
    for (const QString &each : montagem.notas)
        fluxos.erros << u"nota: "_s << each << Qt::endl;
    for (const QString &each : montagem.problemas)
        fluxos.erros << each << Qt::endl;
    if (!montagem.problemas.isEmpty())
        return kHaOQueConsertar;
    const QString destino = pedido.palavras.value(1, QFileInfo(pasta).absoluteFilePath() + u".quorel"_s);
    if (const QString falha = pacote::gravaPacote(montagem, destino); !falha.isEmpty()) {
        fluxos.erros << falha << Qt::endl;
        return kNaoExecutou;
    }
    fluxos.saida << nativeName(destino) << u": "_s << montagem.arquivos.size() << u" arquivos, níveis "_s
                 << montagem.manifesto.level.join(u", "_s) << u'\n';
    return kTudoEmOrdem;
}

int comandoInstala(const PedidoDaOficina &pedido, Fluxos fluxos)
{
    if (!carregaConfiguracao(pedido, fluxos))
        return kNaoExecutou;
    const QString &arquivo = pedido.palavras.first();
    QStringList problemas;
    const auto pack = pacote::Pacote::abre(arquivo, problemas);
    const pacote::Destinos destinos = pacote::destinosDaConfiguracao();
    const auto passos = pack ? pacote::planeja(*pack, destinos, problemas) : std::nullopt;
    tell(fluxos.erros, arquivo, problemas, passos ? u"aviso"_s : u"erro"_s);
    if (!passos)
        return kHaOQueConsertar;
    showPlan(*pack, *passos, fluxos.saida);
    fluxos.saida.flush();
    if (!pedido.tem(u"--sim"_s) && !pergunta(u"Instalar?"_s, fluxos))
        return kNaoExecutou;
    const pacote::ResultadoRec feito = pacote::instala(*pack, *passos, destinos, mayReplace(pedido, *passos, fluxos));
    fluxos.saida << u"%1 postos, %2 já estavam, %3 deixados como estão. Para desfazer: quorel-blocos retira %4"_s
                        .arg(feito.postos)
                        .arg(feito.iguais)
                        .arg(feito.deixados)
                        .arg(pacote::nomeDoRecibo(pack->manifesto().title))
                 << u'\n';
    if (!feito.falha.isEmpty())
        fluxos.erros << feito.falha << Qt::endl;
    return !feito.falha.isEmpty() ? kNaoExecutou : feito.deixados > 0 ? kHaOQueConsertar : kTudoEmOrdem;
}

int comandoRetira(const PedidoDaOficina &pedido, Fluxos fluxos)
{
    if (!carregaConfiguracao(pedido, fluxos))
        return kNaoExecutou;
    const pacote::Destinos destinos = pacote::destinosDaConfiguracao();
    const QString pasta = nativePath(destinos.recibos);
    if (pedido.palavras.isEmpty()) {
        for (const pacote::ReciboRec &each : pacote::leRecibos(pasta))
            fluxos.saida << each.nome << u"  "_s << each.title << u"  "_s << each.version << u'\n';
        return kTudoEmOrdem;
    }
    const auto recibo = receiptOf(pedido.palavras.first(), pasta);
    if (!recibo) {
        fluxos.erros << u"Não há pacote instalado com esse nome: "_s << pedido.palavras.first()
                     << u". \"quorel-blocos retira\" mostra os que há."_s << Qt::endl;
        return kNaoExecutou;
    }
    if (!pedido.tem(u"--sim"_s) && !pergunta(u"Retirar \"%1\"?"_s.arg(recibo->title), fluxos))
        return kNaoExecutou;
    const pacote::RetiradaRec feito = pacote::retira(*recibo, destinos);
    for (const QString &each : feito.deixados)
        fluxos.saida << u"  fica "_s << nativeName(each) << u'\n';
    fluxos.saida << u"%1 retirados, %2 devolvidos, %3 ficam: mudaram desde então, ou são de outro pacote"_s
                        .arg(feito.retirados)
                        .arg(feito.devolvidos)
                        .arg(feito.deixados.size())
                 << u'\n';
    if (!feito.falha.isEmpty())
        fluxos.erros << feito.falha << Qt::endl;
    return feito.falha.isEmpty() ? kTudoEmOrdem : kNaoExecutou;
}

int comandoVerificaPacote(const PedidoDaOficina &pedido, Fluxos fluxos)
{
    const QString &arquivo = pedido.palavras.first();
    QStringList problemas;
    const auto pack = pacote::Pacote::abre(arquivo, problemas);
    const QTemporaryDir pasta;
    // Laid out apart from what is installed, so that only what the pack brings is found.
    qputenv("QUOREL_WINDIR", pasta.path().toUtf8());
    const QString root = backslashPath(pasta.path()) + u"\\QUOREL2001"_s;
    const pacote::Destinos destinos = pacote::destinosEm(root);
    gConfig = Quorel_Zeto();
    gConfig.SetaCFG(u"ZETO_MM=%1\\zeto_mm\r\nDIRQUOREL=%1\r\nDBBLOCOS=%1\\DBBLOCOS\r\n"_s.arg(root));
    const auto passos = pack ? pacote::planeja(*pack, destinos, problemas) : std::nullopt;
    tell(fluxos.saida, arquivo, problemas, u"erro"_s);
    if (!passos)
        return kHaOQueConsertar;
    const pacote::ResultadoRec feito = pacote::instala(*pack, *passos, destinos, false);
    if (!feito.falha.isEmpty()) {
        fluxos.erros << feito.falha << Qt::endl;
        return kNaoExecutou;
    }
    const Findings findings = findingsIn(*pack, destinos, arquivo);
    for (const Finding &each : findings)
        fluxos.saida << gnuLine(each) << u'\n';
    return problemas.isEmpty() && !needMending(findings) ? kTudoEmOrdem : kHaOQueConsertar;
}

} // namespace quorel::blocos
