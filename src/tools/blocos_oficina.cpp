#include "tools/blocos_oficina.h"

#include "autoria/figurefile.h"
#include "autoria/importer.h"
#include "autoria/mediaplace.h"
#include "autoria/soundfile.h"
#include "autoria/source.h"
#include "autoria/voicemaker.h"
#include "catalogue/leitor_blocos.h"
#include "platform/codec.h"
#include "startup/quorel_zeto.h"
#include "tools/blocos_pacote.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>

#include <algorithm>
#include <array>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace quorel::blocos {

namespace {

int fail(const QString &texto, Fluxos fluxos)
{
    fluxos.erros << texto << Qt::endl;
    return kNaoExecutou;
}

std::optional<ImportForm> formOf(const QString &word, const QString &text)
{
    if (word.isEmpty())
        return importFormOf(text);
    if (word == "aiken"_L1)
        return ImportForm::Aiken;
    if (word == "gift"_L1)
        return ImportForm::Gift;
    return word == "folha"_L1 ? std::optional(ImportForm::Sheet) : std::nullopt;
}

int importa(const PedidoDaOficina &pedido, Fluxos fluxos)
{
    constexpr qint64 kMax = 4 << 20; // bytes; a school year of questions
    const QString &origem = pedido.palavras[0], &destino = pedido.palavras[1];
    const auto bytes = QFileInfo(origem).size() > kMax ? std::nullopt : readWhole(origem);
    if (!bytes)
        return fail(u"Não foi possível ler %1, ou passa de 4 MB"_s.arg(origem), fluxos);
    if (QFileInfo::exists(destino) && !pedido.tem(u"--sobrescreve"_s))
        return fail(u"%1 já existe; dê outro nome, ou --sobrescreve"_s.arg(destino), fluxos);
    const QString text = decodeForeign(*bytes);
    const auto form = formOf(pedido.opcoes.value(u"--forma"_s), text);
    const QString code = pedido.opcoes.value(u"--codigo"_s, u"1"_s);
    bool isNumber = false;
    if (!form || code.toInt(&isNumber) < 1 || !isNumber)
        return fail(u"--forma é aiken, gift ou folha; --codigo é um número"_s, fluxos);
    const QString name = pedido.opcoes.value(u"--nome"_s, QFileInfo(origem).completeBaseName());
    const Imported imported = importQuestions(*form, text, {origem, name, code});
    for (const Finding &each : imported.findings)
        fluxos.saida << gnuLine(each) << u'\n';
    if (imported.questions == 0)
        return kHaOQueConsertar;
    QSaveFile file(destino);
    if (!file.open(QIODevice::WriteOnly) || file.write(writeSource(imported.source)) < 0 || !file.commit())
        return fail(u"Não foi possível escrever %1"_s.arg(destino), fluxos);
    fluxos.saida << destino << u": "_s << imported.questions
                 << u" perguntas. Confira tema, objetivo e o código do roteiro "
                    "(agora %1), e veja com: quorel-blocos ve %2"_s.arg(code, destino)
                 << u'\n';
    return needMending(imported.findings) ? kHaOQueConsertar : kTudoEmOrdem;
}

int figura(const PedidoDaOficina &pedido, Fluxos fluxos)
{
    if (!carregaConfiguracao(pedido, fluxos))
        return kNaoExecutou;
    QString fault;
    const FigureUse use = pedido.tem(u"--botao"_s) ? FigureUse::Button : FigureUse::Page;
    const QImage image = figureFrom(pedido.palavras[0], use, fault);
    const QString &name = pedido.palavras[1];
    const QString path = image.isNull() ? QString() : putFigure(image, name, pedido.tem(u"--sobrescreve"_s), fault);
    if (path.isEmpty())
        return fail(fault, fluxos);
    fluxos.saida << u"%1: %2 por %3 pontos. Na fonte: fig: %4"_s.arg(QDir::toNativeSeparators(path))
                        .arg(image.width())
                        .arg(image.height())
                        .arg(name)
                 << u'\n';
    return kTudoEmOrdem;
}

int som(const PedidoDaOficina &pedido, Fluxos fluxos)
{
    constexpr qint64 kMax = 512 << 20; // bytes; ten minutes of the largest form
    if (!carregaConfiguracao(pedido, fluxos))
        return kNaoExecutou;
    const QString &origem = pedido.palavras[0], &name = pedido.palavras[1];
    const auto bytes = QFileInfo(origem).size() > kMax ? std::nullopt : readWhole(origem);
    if (!bytes)
        return fail(u"Não foi possível ler %1, ou passa de 512 MB"_s.arg(origem), fluxos);
    QString fault;
    const Recording recording = recordingFrom(*bytes, fault);
    const QString path =
        recording.wav.isEmpty() ? QString() : putSound(recording.wav, name, pedido.tem(u"--sobrescreve"_s), fault);
    if (path.isEmpty())
        return fail(fault, fluxos);
    fluxos.saida << u"%1: %2 segundos%3. Na fonte: som: %4"_s.arg(QDir::toNativeSeparators(path))
                        .arg(recording.seconds, 0, 'f', 1)
                        .arg(recording.changes.isEmpty() ? QString() : u", convertido de "_s + recording.changes, name)
                 << u'\n';
    return kTudoEmOrdem;
}

/// The block that a path names: a block file as it stands, a source made.
std::optional<QByteArray> blockOf(const QString &path, Fluxos fluxos)
{
    const std::optional<QByteArray> bytes = readWhole(path);
    if (!bytes || path.endsWith(u".edb"_s, Qt::CaseInsensitive))
        return bytes;
    const MadeBlock made = makeBlock(*bytes, path, blockFile(path));
    for (const Finding &each : made.findings) {
        if (each.severity == Severity::Error)
            fluxos.saida << gnuLine(each) << u'\n';
    }
    return made.understood ? std::optional(made.edb) : std::nullopt;
}

int voz(const PedidoDaOficina &pedido, Fluxos fluxos)
{
    const QString program = voiceProgram();
    if (program.isEmpty())
        return fail(u"Não há voz instalada que faça arquivos de som: instale o pacote espeak-ng"_s, fluxos);
    const auto edb = carregaConfiguracao(pedido, fluxos) ? blockOf(pedido.palavras[0], fluxos) : std::nullopt;
    if (!edb)
        return fail(u"Não foi possível ler o bloco "_s + pedido.palavras[0], fluxos);
    const Bloco bloco = leBloco(*edb);
    int made = 0, kept = 0, unnamed = 0;
    std::vector<SpokenText> texts;
    for (int i = 1; i <= bloco.roteiros.upperBound(); ++i) {
        const Vetor<AulaRec> &aulas = bloco.roteiros[i].Aulas;
        for (int j = 1; aulas.isDimensioned() && j <= aulas.upperBound(); ++j)
            std::ranges::copy(spokenTexts(aulas[j].Linha, unnamed), std::back_inserter(texts));
    }
    for (const SpokenText &each : texts) {
        if (!pedido.tem(u"--sobrescreve"_s) && !gConfig.N_Som(each.name).isEmpty()) {
            ++kept;
            continue;
        }
        QString fault;
        const Recording recording = recordingFrom(spoken(program, each.text, fault), fault);
        if (recording.wav.isEmpty() || putSound(recording.wav, each.name, true, fault).isEmpty())
            return fail(fault, fluxos);
        fluxos.saida << each.name << u"  "_s << each.text.simplified() << Qt::endl; // each takes its time
        ++made;
    }
    fluxos.saida << u"%1 sons feitos, %2 já havia"_s.arg(made).arg(kept)
                 << (unnamed > 0 ? u"; %1 páginas não têm nome para o seu som"_s.arg(unnamed) : QString()) << u'\n';
    return kTudoEmOrdem;
}

/// Starts the window, which lives on.
int ve(const PedidoDaOficina &pedido, Fluxos fluxos)
{
    const QDir here(QCoreApplication::applicationDirPath());
    QStringList words = pedido.palavras;
    if (pedido.tem(u"--cfg"_s))
        words = QStringList{u"--cfg"_s, pedido.opcoes[u"--cfg"_s]} + words;
    for (const QString &name : {u"quorel-oficina"_s, u"quorel-oficina.exe"_s}) {
        if (here.exists(name) && QProcess::startDetached(here.filePath(name), words))
            return kTudoEmOrdem;
    }
    return fail(u"Não foi possível abrir a janela: falta o programa quorel-oficina em "_s
            + QDir::toNativeSeparators(here.path()),
        fluxos);
}

struct Comando
{
    QStringView nome;
    qsizetype menos, mais; ///< words that it takes
    QStringList opcoes; ///< "=" behind those with a value
    int (*executa)(const PedidoDaOficina &, Fluxos);
};

const std::vector<Comando> &commands()
{
    static const QString cfg = u"--cfg="_s, sim = u"--sim"_s, sobrescreve = u"--sobrescreve"_s;
    static const std::vector<Comando> all{
        {u"importa", 2, 2, {u"--forma="_s, u"--codigo="_s, u"--nome="_s, sobrescreve}, importa},
        {u"figura", 2, 2, {cfg, sobrescreve, u"--botao"_s}, figura},
        {u"som", 2, 2, {cfg, sobrescreve}, som},
        {u"voz", 1, 1, {cfg, sobrescreve}, voz},
        {u"pacote", 1, 2, {}, comandoPacote},
        {u"instala", 1, 1, {cfg, sim, sobrescreve}, comandoInstala},
        {u"retira", 0, 1, {cfg, sim}, comandoRetira},
        {u"verifica", 1, 1, {}, comandoVerificaPacote},
        {u"ve", 1, 2, {cfg}, ve},
    };
    return all;
}

/// @return nothing for words that make no sense
std::optional<PedidoDaOficina> parse(const Comando &comando, const QStringList &argumentos)
{
    PedidoDaOficina pedido{comando.nome.toString(), {}, {}};
    for (qsizetype n = 1; n < argumentos.size(); ++n) {
        const QString &word = argumentos[n];
        if (!word.startsWith(u"--"_s))
            pedido.palavras += word;
        else if (comando.opcoes.contains(word))
            pedido.opcoes[word] = QString();
        else if (comando.opcoes.contains(word + u'=') && n + 1 < argumentos.size())
            pedido.opcoes[word] = argumentos[++n];
        else
            return std::nullopt;
    }
    const qsizetype words = pedido.palavras.size();
    return words >= comando.menos && words <= comando.mais ? std::optional(pedido) : std::nullopt;
}

} // namespace

bool carregaConfiguracao(const PedidoDaOficina &pedido, Fluxos fluxos)
{
    if (loadConfiguration(pedido.opcoes.value(u"--cfg"_s)))
        return true;
    fluxos.erros << u"Não há configuração (zeto_cnf.txt): dê --cfg ARQUIVO"_s << Qt::endl;
    return false;
}

bool pergunta(const QString &texto, Fluxos fluxos)
{
    fluxos.saida << texto << u" (s/n) "_s << Qt::flush;
    const QString answer = QTextStream(stdin).readLine().trimmed().toLower();
    return answer == "s"_L1 || answer == "sim"_L1;
}

std::optional<int> executaOficina(const QStringList &argumentos, QTextStream &saida, QTextStream &erros)
{
    const QString word = argumentos.value(0);
    const auto found = std::ranges::find_if(commands(), [&](const Comando &each) { return each.nome == word; });
    const bool pack = argumentos.value(1).endsWith(u".quorel"_s, Qt::CaseInsensitive);
    if (found == commands().end() || (word == "verifica"_L1 && !pack))
        return std::nullopt;
    if (const auto pedido = parse(*found, argumentos))
        return found->executa(*pedido, {saida, erros});
    erros << ajudaDaOficina();
    return kNaoExecutou;
}

QString ajudaDaOficina()
{
    return uR"(  quorel-blocos ve FONTE|ARQUIVO [ROTEIRO] [--cfg ARQUIVO]
      abre a oficina: a fonte, a lição como a criança a vê, e o que há para consertar
  quorel-blocos importa PERGUNTAS FONTE [--forma aiken|gift|folha] [--codigo N] [--nome NOME] [--sobrescreve]
      faz uma fonte de perguntas que já existem; diz linha por linha o que não entendeu
  quorel-blocos figura FOTO NOME [--botao] [--sobrescreve] [--cfg ARQUIVO]
      reduz uma foto e a põe entre as figuras, sem os dados que a câmera guardou nela
  quorel-blocos som GRAVAÇÃO NOME [--sobrescreve] [--cfg ARQUIVO]
      confere e converte um WAV e o põe entre os sons
  quorel-blocos voz FONTE|ARQUIVO [--sobrescreve] [--cfg ARQUIVO]
      faz o som de cada página e opção com uma voz instalada
  quorel-blocos pacote PASTA [PACOTE]
      faz um pacote .quorel de blocos, figuras, sons e páginas
  quorel-blocos verifica PACOTE
      mostra o que falta num pacote, ou por que não pode ser instalado
  quorel-blocos instala PACOTE [--sim] [--sobrescreve] [--cfg ARQUIVO]
      mostra o que vai pôr, pergunta, e põe onde a configuração manda
  quorel-blocos retira [NOME|PACOTE] [--sim] [--cfg ARQUIVO]
      tira o que um pacote pôs; sem nome mostra os pacotes instalados
)"_s;
}

} // namespace quorel::blocos
