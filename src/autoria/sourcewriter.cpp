#include "autoria/exacttext.h"
#include "autoria/lessontable.h"
#include "autoria/source.h"
#include "platform/codec.h"

#include <algorithm>

namespace quorel {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView kLineEnd = u"\r\n";

bool isDigits(QStringView text)
{
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar c) { return c >= u'0' && c <= u'9'; });
}

/// Whether a text can stand behind a word on its line.
bool isPlainLine(const QString &text)
{
    return !text.isEmpty() && isPlain(text);
}

bool isPlainText(const QString &text, bool atSign)
{
    const QList<QStringView> lines = QStringView(text).split(kLineEnd);
    if (lines.size() > 1 && lines.front().isEmpty())
        return false;
    bool first = true;
    for (const QStringView line : lines) {
        if (!isPlain(line) || (!first && line == u".") || (atSign && line.contains(u'@')))
            return false;
        first = false;
    }
    return true;
}

class SourceWriter final
{
public:
    QByteArray write(const BlockSource &source);

private:
    void head(const HeadSource &head);
    void item(const RoteiroSource &roteiro);
    void item(const AulaSource &aula);
    void item(const RawSource &raw);
    void page(const PageSource &page, bool first);
    void option(const OptionSource &option);
    void key(QStringView word, const SourceText &value);
    void text(QStringView before, const QString &value, bool atSign);
    void line(const QString &said) { mOut += (said + u'\n').toUtf8(); }

    QByteArray mOut;
};

/// A text behind its key or mark, plain where it can be.
void SourceWriter::text(QStringView before, const QString &value, bool atSign)
{
    const bool plain = isPlainText(value, atSign);
    const bool isKey = before.back().isLetter();
    QString said = before.toString() + (plain ? (isKey ? u":"_s : QString()) : u"|"_s);
    const QList<QStringView> lines = QStringView(value).split(kLineEnd);
    bool first = true;
    for (const QStringView each : lines) {
        const QString shown = plain ? each.toString() : escaped(each, atSign);
        if (!first)
            said += u"\n "_s;
        else if (plain && !shown.isEmpty())
            said += u' ';
        const bool needsDot = shown.isEmpty() && (!first || lines.size() > 1);
        said += needsDot ? u"."_s : shown;
        first = false;
    }
    mOut += said.toUtf8();
}

void SourceWriter::key(QStringView word, const SourceText &value)
{
    if (!value.given)
        return;
    text(word, value.text, false);
    mOut += '\n';
}

void SourceWriter::head(const HeadSource &head)
{
    key(u"tema", head.tema);
    key(u"objetivo", head.objetivo);
    key(u"nivel", head.nivel);
    key(u"disc", head.disc);
    if (!head.blankLines || !head.tabs)
        line(u"estilo: "_s + (head.blankLines ? u""_s : u"junto"_s) + (!head.blankLines && !head.tabs ? u", "_s : u""_s)
            + (head.tabs ? u""_s : u"rente"_s));
}

void SourceWriter::item(const RoteiroSource &roteiro)
{
    const bool inLine = isDigits(roteiro.cod.text);
    const bool nameInLine = inLine && (roteiro.nome.text.isEmpty() || isPlainLine(roteiro.nome.text));
    line(u"\nROTEIRO"_s + (inLine ? u' ' + roteiro.cod.text : QString())
        + (nameInLine && !roteiro.nome.text.isEmpty() ? u' ' + roteiro.nome.text : QString()));
    if (!inLine)
        key(u"cod", roteiro.cod);
    if (!nameInLine)
        key(u"nome", roteiro.nome);
    key(u"fig", roteiro.fig);
    key(u"som", roteiro.som);
    key(u"desc", roteiro.desc);
    key(u"nivel", roteiro.nivel);
    key(u"disc", roteiro.disc);
    key(u"bncc", roteiro.bncc);
}

void SourceWriter::page(const PageSource &page, bool first)
{
    if (!first) {
        text(u"pagina", page.texto.text, false);
        mOut += '\n';
    }
    key(u"titulo", page.titulo);
    key(u"fig", page.fig);
    key(u"som", page.som);
    if (first)
        key(u"texto", page.texto);
}

void SourceWriter::option(const OptionSource &option)
{
    const QString mark = option.ordered ? u"="_s + (option.lugar > 0 ? QString::number(option.lugar) : QString())
                                        : QString(option.certa ? u'*' : u'-');
    // Figure and text are plain or exact together.
    if (option.fig.text.isEmpty() && !option.fig.given) {
        text(mark, option.texto.text, true);
    } else if (isPlainText(option.texto.text, true) && isPlain(option.fig.text)) {
        text(mark, option.texto.text, true);
        mOut += " @" + option.fig.text.toUtf8();
    } else {
        QString said = mark + u'|';
        bool first = true;
        for (const QStringView each : QStringView(option.texto.text).split(kLineEnd)) {
            said += (first ? QString() : u"\n "_s) + (each.isEmpty() ? u"."_s : escaped(each, true));
            first = false;
        }
        mOut += (said + u" @"_s + escaped(option.fig.text, true)).toUtf8();
    }
    mOut += '\n';
}

void SourceWriter::item(const AulaSource &aula)
{
    const QString word = kindWord(aula.kind);
    const bool nameInLine = isPlainLine(aula.nome.text);
    line(u"\nAULA "_s + (aula.tipo.given ? kOutroPrograma.toString() : aula.programa)
        + (word.isEmpty() ? QString() : u' ' + word) + u':' + (nameInLine ? u' ' + aula.nome.text : QString()));
    key(u"tipo", aula.tipo);
    if (!nameInLine)
        key(u"nome", aula.nome);
    key(u"cod", aula.cod);
    key(u"chama", aula.chama);
    key(u"arquivo", aula.arquivo);
    key(u"linha", aula.linha);
    bool first = true;
    for (const PageSource &each : aula.paginas) {
        page(each, first);
        first = false;
    }
    for (const OptionSource &each : aula.opcoes)
        option(each);
    key(u"resposta", aula.resposta);
    key(u"elogio", aula.elogio);
    key(u"dica", aula.dica);
    key(u"jogo", aula.jogo);
}

void SourceWriter::item(const RawSource &raw)
{
    line(u"\nCRU"_s);
    const QString bytes = decode1252(raw.bytes);
    const QStringView all(bytes);
    for (qsizetype at = 0; at < all.size();) {
        const qsizetype end = all.indexOf(kLineEnd, at);
        line(u'|' + escaped(all.sliced(at, (end < 0 ? all.size() : end) - at)) + (end < 0 ? u"\\"_s : QString()));
        at = end < 0 ? all.size() : end + kLineEnd.size();
    }
}

QByteArray SourceWriter::write(const BlockSource &source)
{
    head(source.head);
    for (const ItemSource &each : source.items)
        std::visit([this](const auto &one) { item(one); }, each);
    return std::move(mOut);
}

} // namespace

QByteArray writeSource(const BlockSource &source)
{
    return SourceWriter().write(source);
}

} // namespace quorel
