#include "autoria/voicemaker.h"

#include "linha/partes.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStringList>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

QString spokenPage(QStringView piece)
{
    std::vector<QStringView> fields;
    splitAtMark(piece, kMarcaCampo, fields);
    const QString titulo = fieldOf(fields, PecaTitulo).trimmed().toString();
    const QString texto = fieldOf(fields, PecaTexto).trimmed().toString();
    return titulo.isEmpty() || texto.isEmpty() ? titulo + texto : titulo + u".\n"_s + texto;
}

QStringList optionsOf(const PartesDaLinha &partes)
{
    std::vector<QStringView> options, fields;
    if (partes.opcoes.size() > kVazio)
        splitAtMark(partes.opcoes, kMarcaOpcao, options);
    QStringList texts;
    for (const QStringView option : options) {
        splitAtTab(option, fields);
        texts += fieldOf(fields, OpcaoTexto).trimmed().toString();
    }
    return texts;
}

} // namespace

std::vector<SpokenText> spokenTexts(const QString &linha, int &unnamed)
{
    static const QRegularExpression head(u"^\\s*\\([^)]*\\)\\s*(\\d+)"_s);
    const QString code = head.match(linha).captured(1);
    const PartesDaLinha partes = parteLinha(linha);
    if (code.isEmpty() || !partes.comCampos)
        return {};
    const QString name = u'V' + code;
    std::vector<QStringView> pieces;
    splitAtMark(partes.pecas, kMarcaPeca, pieces);
    const QStringList options = optionsOf(partes);
    std::vector<SpokenText> all;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const QString text = spokenPage(pieces[i]);
        if (text.isEmpty())
            continue;
        if (i > 0 && !options.isEmpty())
            ++unnamed;
        else
            all.push_back({i == 0 ? name : name + u'_' + QString::number(i + 1), text});
    }
    for (qsizetype i = 0; i < options.size(); ++i) {
        if (!options[i].isEmpty())
            all.push_back({name + u'_' + QString::number(i + 1), options[i]});
    }
    return all;
}

QString voiceProgram()
{
    return QStandardPaths::findExecutable(u"espeak-ng"_s);
}

QByteArray spoken(const QString &program, const QString &text, QString &fault)
{
    constexpr int kLimit = 60000; // ms
    const QTemporaryDir folder;
    const QString wav = folder.filePath(u"voz.wav"_s);
    QProcess voice;
    voice.start(program, {u"-v"_s, u"pt-br"_s, u"-s"_s, u"140"_s, u"-b"_s, u"1"_s, u"-w"_s, wav, u"--stdin"_s});
    voice.write(text.toUtf8());
    voice.closeWriteChannel();
    const bool ended = voice.waitForFinished(kLimit) && voice.exitStatus() == QProcess::NormalExit;
    QFile file(wav);
    if (ended && voice.exitCode() == 0 && file.open(QIODevice::ReadOnly))
        return file.readAll();
    fault = u"a voz (%1) não fez o som; veja se há uma voz \"pt-br\" instalada"_s.arg(program);
    return {};
}

} // namespace quorel
