#include "pacote/instalacao.h"

#include "platform/caminho.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStorageInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorel::pacote {

namespace {

constexpr int kMega = 20; // bits

Estado stateOf(const QString &caminho, const ArquivoRec &arquivo, const QString &soma)
{
    const QFileInfo there(caminho);
    if (!there.exists())
        return Estado::Novo;
    if (!there.isFile())
        return Estado::Impedido;
    return there.size() == arquivo.tamanho && somaDoArquivo(caminho) == soma ? Estado::Igual : Estado::Outro;
}

void addSteps(std::vector<Passo> &steps, const ArquivoRec &arquivo, const Destinos &destinos, const QString &soma)
{
    const QString place = lugarNoDestino(arquivo.nome, arquivo.genero);
    for (const QStringList bases = basesDe(destinos, arquivo.genero); const QString &base : bases) {
        const QString path = caminhoSeguro(base, place);
        if (path.isEmpty())
            steps.push_back({&arquivo, caminhoNativo(base + u'\\' + place), Estado::Impedido, soma});
        else
            steps.push_back({&arquivo, path, stateOf(path, arquivo, soma), soma});
    }
}

/// Whether a step is done, where `substitui` decides on files of others.
bool isDone(const Passo &passo, bool substitui)
{
    return passo.estado == Estado::Novo || (passo.estado == Estado::Outro && substitui);
}

PostoRec *entryOf(ReciboRec &recibo, const QString &caminho)
{
    const auto found = std::ranges::find(recibo.arquivos, caminho, &PostoRec::caminho);
    return found == recibo.arquivos.end() ? nullptr : &*found;
}

/// The receipt of this pack with what the plan adds; an earlier version's entries stay.
ReciboRec receiptFor(const Pacote &pacote, const std::vector<Passo> &passos, const Destinos &destinos, bool substitui)
{
    const QString folder = caminhoNativo(destinos.recibos), name = nomeDoRecibo(pacote.manifesto().title);
    ReciboRec recibo = leRecibo(folder, name).value_or(ReciboRec());
    recibo.nome = name;
    recibo.title = pacote.manifesto().title;
    recibo.version = pacote.manifesto().version;
    for (const QStringList roots = QStringList{destinos.blocos, destinos.midia} + destinos.html;
         const QString &root : roots) {
        if (!recibo.raizes.contains(caminhoNativo(root)))
            recibo.raizes += caminhoNativo(root);
    }
    for (const Passo &passo : passos) {
        PostoRec *known = entryOf(recibo, passo.caminho);
        if (isDone(passo, substitui) && known) // its earlier version's copy of what was there stays
            *known = {passo.caminho, passo.soma, true, known->antes};
        else if (!known && (isDone(passo, substitui) || passo.estado == Estado::Igual))
            recibo.arquivos.push_back({passo.caminho, passo.soma, passo.estado != Estado::Igual, {}});
    }
    return recibo;
}

/// Keeps a copy of the file that is about to be replaced, unless it is the pack's own earlier one.
bool keepFormer(ReciboRec &recibo, const Passo &passo, const QString &pasta, bool ours)
{
    PostoRec *entry = entryOf(recibo, passo.caminho);
    if (passo.estado != Estado::Outro || ours || !entry->antes.isEmpty())
        return true;
    const QString copies = pastaDasCopias(pasta, recibo.nome);
    const QString copy = copies + u'/' + QString::number(entry - recibo.arquivos.data());
    entry->antes = copy;
    QFile::remove(copy);
    return QDir().mkpath(copies) && QFile::copy(passo.caminho, copy) && gravaRecibo(pasta, recibo);
}

bool put(const Pacote &pacote, const Passo &passo)
{
    QSaveFile file(passo.caminho);
    return QDir().mkpath(QFileInfo(passo.caminho).path()) && file.open(QIODevice::WriteOnly)
        && pacote.copia(*passo.arquivo, file) && file.commit();
}

/// Removes folders that have become empty, up to those that stay.
void removeEmpty(QString folder, const QStringList &roots)
{
    const auto below = [&](const QString &root) { return folder.startsWith(root + u'/'); };
    while (std::ranges::any_of(roots, below) && QDir().rmdir(folder))
        folder = QFileInfo(folder).path();
}

/// Whether another pack brings the file too; it is that one's from now on.
bool handOver(const PostoRec &posto, const QString &nome, const QString &pasta)
{
    for (ReciboRec &other : leRecibos(pasta)) {
        PostoRec *same = other.nome == nome ? nullptr : entryOf(other, posto.caminho);
        if (!same)
            continue;
        same->nosso = true;
        return gravaRecibo(pasta, other);
    }
    return false;
}

} // namespace

std::optional<std::vector<Passo>> planeja(
    const Pacote &pacote, const Destinos &destinos, QStringList &problemas, const Progresso &progresso)
{
    std::vector<Passo> steps;
    qsizetype done = 0;
    for (const ArquivoRec &arquivo : pacote.arquivos()) {
        const std::optional<QByteArray> bytes = pacote.le(arquivo);
        if (!bytes) {
            problemas += u"está danificado, ou é maior do que diz: "_s + arquivo.nome;
            return std::nullopt;
        }
        const QByteArray sum = QCryptographicHash::hash(*bytes, QCryptographicHash::Sha256).toHex();
        addSteps(steps, arquivo, destinos, QString::fromLatin1(sum));
        if (progresso && !progresso(++done, qsizetype(pacote.arquivos().size())))
            return std::nullopt;
    }
    return steps;
}

/// One installation on its way.
class Obra final
{
public:
    Obra(const Pacote &pacote, const std::vector<Passo> &passos, const Destinos &destinos, bool substitui)
        : mPacote(pacote), mFolder(caminhoNativo(destinos.recibos)),
          mBefore(leRecibo(mFolder, nomeDoRecibo(pacote.manifesto().title)).value_or(ReciboRec())),
          mRecibo(receiptFor(pacote, passos, destinos, substitui)), mSubstitui(substitui)
    { }

    /// @return a sentence; empty when the work may begin
    QString begin() const;
    /// @return false when it can't be written
    bool doStep(const Passo &passo, ResultadoRec &result);
    QString wayBack() const { return u"O que já foi posto pode ser retirado com \"retira %1\"."_s.arg(mRecibo.nome); }

private:
    bool isOwnEarlier(const Passo &passo) const;

    const Pacote &mPacote;
    QString mFolder;
    ReciboRec mBefore;
    ReciboRec mRecibo;
    bool mSubstitui;
};

QString Obra::begin() const
{
    if (!QDir().mkpath(mFolder))
        return u"Não foi possível escrever em %1. Nada foi instalado; peça a quem administra a máquina."_s.arg(
            QDir::toNativeSeparators(mFolder));
    if (QStorageInfo(mFolder).bytesAvailable() < mPacote.total())
        return u"Não há espaço para %1 MB. Nada foi instalado."_s.arg((mPacote.total() >> kMega) + 1);
    if (!gravaRecibo(mFolder, mRecibo))
        return u"Não foi possível escrever em %1. Nada foi instalado; peça a quem administra a máquina."_s.arg(
            QDir::toNativeSeparators(mFolder));
    return {};
}

/// Whether what is there is what an earlier version of this pack has put: no copy of it is kept.
bool Obra::isOwnEarlier(const Passo &passo) const
{
    return std::ranges::any_of(mBefore.arquivos, [&](const PostoRec &each) {
        return each.caminho == passo.caminho && each.nosso && somaDoArquivo(passo.caminho) == each.soma;
    });
}

bool Obra::doStep(const Passo &passo, ResultadoRec &result)
{
    if (passo.estado == Estado::Igual) {
        ++result.iguais;
    } else if (!isDone(passo, mSubstitui)) {
        ++result.deixados;
    } else {
        ++result.postos;
        return keepFormer(mRecibo, passo, mFolder, isOwnEarlier(passo)) && put(mPacote, passo);
    }
    return true;
}

ResultadoRec instala(const Pacote &pacote, const std::vector<Passo> &passos, const Destinos &destinos, bool substitui,
    const Progresso &progresso)
{
    Obra obra(pacote, passos, destinos, substitui);
    ResultadoRec result{.falha = obra.begin()};
    qsizetype done = 0;
    for (const Passo &passo : passos) {
        if (!result.falha.isEmpty())
            break;
        if (!obra.doStep(passo, result)) {
            --result.postos;
            result.falha =
                u"Não foi possível escrever %1. "_s.arg(QDir::toNativeSeparators(passo.caminho)) + obra.wayBack();
        } else if (progresso && !progresso(++done, qsizetype(passos.size()))) {
            result.falha = u"Interrompido. "_s + obra.wayBack();
        }
    }
    return result;
}

/// Takes one file away, or gives back what it took the place of. @return false to stop there
bool takeAway(const PostoRec &posto, const ReciboRec &recibo, RetiradaRec &result)
{
    if (!QFile::remove(posto.caminho)) {
        result.falha = u"Não foi possível apagar %1."_s.arg(QDir::toNativeSeparators(posto.caminho));
        return false; // the receipt stays for another try
    }
    if (posto.antes.isEmpty()) {
        ++result.retirados;
        removeEmpty(QFileInfo(posto.caminho).path(), recibo.raizes);
        return true;
    }
    ++result.devolvidos;
    if (QFile::copy(posto.antes, posto.caminho))
        return true;
    result.falha = u"Não foi possível devolver %1; a cópia dele está em %2."_s.arg(
        QDir::toNativeSeparators(posto.caminho), QDir::toNativeSeparators(posto.antes));
    return false;
}

RetiradaRec retira(const ReciboRec &recibo, const Destinos &destinos)
{
    RetiradaRec result;
    const QString folder = caminhoNativo(destinos.recibos);
    // A receipt is a file that anybody may edit: nothing outside the directories of lessons is touched.
    const QStringList roots = QStringList{destinos.blocos, destinos.midia} + destinos.html;
    const auto isOurs = [&](const QString &path) {
        return std::ranges::any_of(roots, [&](const QString &root) {
            const QString native = caminhoNativo(root);
            return path.startsWith(native + u'/') && path == QDir::cleanPath(path)
                && !caminhoSeguro(root, backslashPath(path.sliced(native.size() + 1))).isEmpty();
        });
    };
    for (const PostoRec &posto : recibo.arquivos) {
        if (!posto.nosso || !QFileInfo::exists(posto.caminho))
            continue;
        if (!isOurs(posto.caminho) || somaDoArquivo(posto.caminho) != posto.soma
            || handOver(posto, recibo.nome, folder))
            result.deixados += posto.caminho;
        else if (!takeAway(posto, recibo, result))
            return result;
    }
    apagaRecibo(folder, recibo.nome);
    return result;
}

} // namespace quorel::pacote
