#include "autoria/voicemaker.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStringList>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

constexpr qsizetype kCampoTitulo = 7, kCampoTexto = 8; // 0-based, of a piece

QString fieldOf(const QStringList &fields, qsizetype at)
{
    return fields.value(at).trimmed();
}

QString spokenPage(const QString &piece)
{
    const QStringList fields = piece.split(u"<SPÇ>"_s);
    const QString titulo = fieldOf(fields, kCampoTitulo), texto = fieldOf(fields, kCampoTexto);
    return titulo.isEmpty() || texto.isEmpty() ? titulo + texto : titulo + u".\n"_s + texto;
}

QStringList optionsOf(const QString &linha)
{
    const QString behind = linha.section(u"<VOA>"_s, 1).section(u"<VCM>"_s, 0, 0).section(u')', 1);
    QStringList texts;
    for (const QStringList options = behind.split(u"<OP>"_s); const QString &option : options)
        texts += option.section(u'\t', 1, 1).trimmed();
    if (texts.size() == 1 && texts.first().isEmpty())
        texts.clear();
    return texts;
}

} // namespace

std::vector<SpokenText> spokenTexts(const QString &linha, int &unnamed)
{
    static const QRegularExpression head(u"^\\s*\\([^)]*\\)\\s*(\\d+)"_s);
    const QString code = head.match(linha).captured(1);
    if (code.isEmpty())
        return {};
    const QString name = u'V' + code;
    QStringList pieces = linha.section(u"<VAA>"_s, 0, 0).split(u"<PÇ>"_s);
    const QStringList options = optionsOf(linha);
    std::vector<SpokenText> all;
    for (qsizetype i = 0; i < pieces.size(); ++i) {
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
