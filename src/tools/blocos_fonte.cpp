#include "tools/blocos_fonte.h"

#include "autoria/checker.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

#include <algorithm>
#include <iterator>

namespace quorel::blocos {

using namespace Qt::StringLiterals;

namespace {

enum ExitCode : int { kWell = 0, kToMend = 1, kDidNotRun = 2 };

/// A source and the block file that becomes of it.
struct Pair
{
    QString source;
    QString block;
};

bool isSameFile(const QString &a, const QString &b)
{
    const QString real = QFileInfo(a).canonicalFilePath();
    return !real.isEmpty() && real == QFileInfo(b).canonicalFilePath();
}

/// Writes a file wholly or not at all; one that holds these bytes already keeps its time.
bool writeFile(const QString &path, const QByteArray &bytes, QTextStream &erros)
{
    if (readWhole(path) == bytes)
        return true;
    QSaveFile file(path);
    file.setDirectWriteFallback(true); // a directory that may not be written to, with a file that may
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    erros << u"Não foi possível gravar: "_s << path << Qt::endl;
    return false;
}

/// The block file's name in a level's directory.
QString blockIn(const QString &directory, const QString &source)
{
    const QString nivel = QFileInfo(QFileInfo(directory).absoluteFilePath()).fileName().toUpper();
    const QString base = QFileInfo(source).completeBaseName().toUpper();
    return QDir(directory).filePath((base.endsWith(nivel) ? base : base + nivel) + u".edb"_s);
}

/// What is to be made. @return nothing, and it is told why, where the paths don't fit
QList<Pair> pairsOf(const QString &from, const QString &into, QTextStream &erros)
{
    const bool intoDirectory = QFileInfo(into).isDir();
    if (QFileInfo(from).isDir()) {
        QList<Pair> pairs;
        for (const QString &name : QDir(from).entryList({u"*.txt"_s}, QDir::Files, QDir::Name)) {
            const QString source = QDir(from).filePath(name);
            pairs.push_back({source, blockIn(into, source)});
        }
        if (!intoDirectory || pairs.isEmpty())
            erros << (pairs.isEmpty() ? u"Não há fontes (*.txt) em "_s + from : u"Não é um diretório: "_s + into)
                  << Qt::endl;
        return intoDirectory ? pairs : QList<Pair>();
    }
    if (intoDirectory)
        return {{from, blockIn(into, from)}};
    if (!into.endsWith(".edb"_L1, Qt::CaseInsensitive) || isSameFile(from, into)) {
        erros << u"O destino é um arquivo .edb ou o diretório de um nível: "_s << into << Qt::endl;
        return {};
    }
    return {{from, into}};
}

/// Writes a source that was not there, or may be written over.
int writeSourceFile(const QString &path, const QByteArray &text, bool overwrite, QTextStream &erros)
{
    if (QFileInfo::exists(path) && !overwrite) {
        erros << u"Já existe: "_s << path << u" (com --sobrescreve, é gravado por cima)"_s << Qt::endl;
        return kDidNotRun;
    }
    return writeFile(path, text, erros) ? kWell : kDidNotRun;
}

} // namespace

void printFindings(const Findings &findings, bool json, QTextStream &saida)
{
    QJsonArray list;
    for (const Finding &finding : findings) {
        if (json)
            list += diagnostic(finding);
        else
            saida << gnuLine(finding) << u'\n';
    }
    if (json)
        saida << QString::fromUtf8(QJsonDocument(list).toJson());
}

int faz(const PedidoDeFonte &pedido, QTextStream &saida, QTextStream &erros)
{
    const QList<Pair> pairs = pairsOf(pedido.paths[0], pedido.paths[1], erros);
    int code = pairs.isEmpty() ? kDidNotRun : kWell;
    Checker checker(pedido.withMedia);
    Findings all;
    for (const Pair &pair : pairs) {
        const std::optional<QByteArray> text = readWhole(pair.source);
        if (!text) {
            erros << u"Não foi possível ler: "_s << pair.source << Qt::endl;
            code = kDidNotRun;
            continue;
        }
        const BlockFile block = blockFile(pair.block);
        const MadeBlock made = makeBlock(*text, pair.source, block);
        Findings found = checker.check(made, block, pair.source);
        if (!pedido.json)
            printFindings(found, false, saida);
        std::ranges::move(found, std::back_inserter(all));
        if (made.understood && !writeFile(pair.block, made.edb, erros))
            code = kDidNotRun;
    }
    if (pedido.json)
        printFindings(all, true, saida);
    return needMending(all) ? qMax(code, int(kToMend)) : code;
}

int desfaz(const PedidoDeFonte &pedido, QTextStream &, QTextStream &erros)
{
    const std::optional<QByteArray> edb = readWhole(pedido.paths[0]);
    if (!edb || isSameFile(pedido.paths[0], pedido.paths[1])) {
        erros << (edb ? u"Origem e destino são o mesmo arquivo: "_s : u"Não foi possível ler: "_s) << pedido.paths[0]
              << Qt::endl;
        return kDidNotRun;
    }
    return writeSourceFile(pedido.paths[1], sourceOfBlock(*edb), pedido.overwrite, erros);
}

int novo(const PedidoDeFonte &pedido, QTextStream &, QTextStream &erros)
{
    const Kind kind = pedido.paths.size() > 1 ? kindOf(pedido.paths[1]) : Kind::None;
    if (pedido.paths.size() > 1 && kind == Kind::None) {
        erros << u"Tipo de exercício desconhecido: "_s << pedido.paths[1]
              << u". Há leia, escolha, marque, escreva, ordene, desenhe e historia"_s << Qt::endl;
        return kDidNotRun;
    }
    return writeSourceFile(pedido.paths[0], exampleSource(kind), pedido.overwrite, erros);
}

} // namespace quorel::blocos
