#include "pacote/montagem.h"

#include "autoria/bncc.h"
#include "autoria/source.h"
#include "platform/codec.h"

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>
#include <QSaveFile>

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace quorel::pacote {

namespace {

/// Reads the folder of one pack.
class Leitura final
{
public:
    explicit Leitura(const QString &pasta) : mPasta(pasta) { }
    MontagemRec run();

private:
    void manifesto();
    void blocks();
    void block(const QFileInfo &file, const QString &nivel);
    void media();
    void pages();
    void summary();
    void add(const QString &nome, const QString &caminho);
    void add(const QString &nome, const QByteArray &bytes);

    QString mPasta;
    MontagemRec mRead;
    std::map<QString, QByteArray> mFiles;
};

MontagemRec Leitura::run()
{
    manifesto();
    blocks();
    media();
    pages();
    if (mFiles.empty())
        mRead.problemas +=
            u"não há nada para empacotar em %1: faltam as pastas blocos, figuras, sons, videos ou arqs"_s.arg(
                QDir::toNativeSeparators(mPasta));
    if (qint64(mFiles.size()) + 2 > kMaxArquivos)
        mRead.problemas += u"são %1 arquivos; um pacote leva no máximo %2"_s.arg(mFiles.size()).arg(kMaxArquivos - 2);
    summary();
    for (auto &[name, bytes] : mFiles)
        mRead.arquivos.emplace_back(name, std::move(bytes));
    return std::move(mRead);
}

void Leitura::manifesto()
{
    const std::optional<QByteArray> text = readWhole(mPasta + u"/manifesto.json"_s);
    if (!text) {
        mRead.problemas += u"falta %1; comece por este:\n%2"_s.arg(
            QDir::toNativeSeparators(mPasta + u"/manifesto.json"_s), QString::fromUtf8(manifestoDeExemplo()));
        return;
    }
    mRead.manifesto = leManifesto(*text, mRead.problemas).value_or(ManifestoRec());
}

void Leitura::add(const QString &nome, const QByteArray &bytes)
{
    const auto same = [&](const auto &each) { return each.first.compare(nome, Qt::CaseInsensitive) == 0; };
    if (bytes.size() > kMaxArquivo)
        mRead.problemas += u"%1 passa de %2 MB"_s.arg(nome).arg(kMaxArquivo >> 20);
    else if (std::ranges::any_of(mFiles, same))
        mRead.problemas += u"dois arquivos teriam o nome %1 no pacote"_s.arg(nome);
    else
        mFiles[nome] = bytes;
}

void Leitura::add(const QString &nome, const QString &caminho)
{
    const std::optional<QByteArray> bytes =
        QFileInfo(caminho).size() > kMaxArquivo ? QByteArray(qsizetype(kMaxArquivo) + 1, '\0') : readWhole(caminho);
    if (bytes)
        add(nome, *bytes);
    else
        mRead.problemas += u"não foi possível ler %1"_s.arg(QDir::toNativeSeparators(caminho));
}

void Leitura::blocks()
{
    for (const QFileInfoList levels = QDir(mPasta + u"/blocos"_s).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot);
         const QFileInfo &level : levels) {
        for (const QFileInfoList files = QDir(level.filePath()).entryInfoList(QDir::Files);
             const QFileInfo &file : files)
            block(file, level.fileName().toUpper());
    }
}

void Leitura::block(const QFileInfo &file, const QString &nivel)
{
    const QString native = QDir::toNativeSeparators(file.filePath());
    const bool source = file.suffix().compare("txt"_L1, Qt::CaseInsensitive) == 0;
    // The source of 0226MAF1.EDB is called 0226MA.txt or 0226MAF1.txt.
    constexpr qsizetype kSemNivel = 6;
    const QString stem = file.completeBaseName().toUpper();
    const QString wanted = source ? (stem.size() == kSemNivel ? stem + nivel : stem) + u".EDB"_s : file.fileName();
    const QString name = nomeDeBloco(wanted, nivel);
    if (name.isEmpty()) {
        mRead.notas += u"%1 fica de fora: não tem o nome de um bloco de %2"_s.arg(native, nivel);
        return;
    }
    const std::optional<QByteArray> text = readWhole(file.filePath());
    if (!text) {
        mRead.problemas += u"não foi possível ler %1"_s.arg(native);
        return;
    }
    if (!source)
        return add(name, *text);
    const MadeBlock made = makeBlock(*text, native, blockFile(name));
    for (const Finding &finding : made.findings) {
        if (finding.severity == Severity::Error)
            mRead.problemas += gnuLine(finding);
    }
    if (made.understood)
        add(name, made.edb);
}

void Leitura::media()
{
    for (const QStringView folder : {u"figuras", u"sons", u"videos", u"Fig", u"Som", u"Video"}) {
        QDirIterator walk(mPasta + u'/' + folder.toString(), QDir::Files, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QFileInfo file(walk.next());
            const QString name = nomeDeMidia(file.fileName());
            if (!name.isEmpty())
                add(name, file.filePath());
            else
                mRead.notas += u"%1 fica de fora: não é GIF, BMP, WAV ou AVI com um nome de até 8 letras"_s.arg(
                    QDir::toNativeSeparators(file.filePath()));
        }
    }
}

void Leitura::pages()
{
    const QDir root(QFileInfo(mPasta + u"/arqs"_s).absoluteFilePath());
    QDirIterator walk(root.path(), QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        const QString name = u"html/"_s + root.relativeFilePath(path);
        if (generoDe(name) == Genero::Html)
            add(name, path);
        else
            mRead.notas +=
                u"%1 fica de fora: não é uma página nem o que uma página mostra"_s.arg(QDir::toNativeSeparators(path));
    }
}

/// What the blocks tell of themselves.
void Leitura::summary()
{
    static const QRegularExpression desc(u"<DESC>(.*?)</DESC>"_s, QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression line(u"BNCC:([^\\r\\n]*)"_s);
    QStringList levels, months, skills;
    for (const auto &[name, bytes] : mFiles) {
        if (generoDe(name) != Genero::Bloco)
            continue;
        const QString file = name.section(u'/', 2);
        levels += name.section(u'/', 1, 1);
        months += u"20%1-%2"_s.arg(file.sliced(2, 2), file.first(2));
        const QString text = decode1252(bytes);
        for (auto it = desc.globalMatch(text); it.hasNext();)
            skills += bnccCodes({}, it.next().capturedView(1));
        for (auto it = line.globalMatch(text); it.hasNext();)
            skills += bnccCodes(it.next().capturedView(1), {});
    }
    for (QStringList *each : {&levels, &months, &skills}) {
        each->sort();
        each->removeDuplicates();
    }
    mRead.manifesto.level = levels;
    mRead.manifesto.months = months;
    mRead.manifesto.bncc = skills;
}

} // namespace

MontagemRec leiaPasta(const QString &pasta)
{
    return Leitura(pasta).run();
}

QString gravaPacote(const MontagemRec &montagem, const QString &native)
{
    QString failed = u"Não foi possível escrever %1."_s.arg(QDir::toNativeSeparators(native));
    QSaveFile file(native);
    if (!file.open(QIODevice::WriteOnly))
        return failed;
    EscritorZip zip(file);
    bool good = zip.poe(QString::fromUtf16(kNomeTipo), kTipo, true)
        && zip.poe(QString::fromUtf16(kNomeManifesto), textoDoManifesto(montagem.manifesto));
    for (const auto &[name, bytes] : montagem.arquivos)
        good = good && zip.poe(name, bytes);
    return zip.fecha() && good && file.commit() ? QString() : failed;
}

} // namespace quorel::pacote
