#include "autoria/exacttext.h"
#include "autoria/lessontable.h"
#include "autoria/source.h"
#include "autoria/sourcelines.h"
#include "platform/codec.h"

#include <algorithm>
#include <array>

namespace quorel {

using namespace Qt::StringLiterals;

namespace {

struct Key
{
    QStringView word;
    SourceText HeadSource::*head = nullptr;
    SourceText RoteiroSource::*roteiro = nullptr;
    SourceText PageSource::*page = nullptr;
    SourceText AulaSource::*aula = nullptr;
};

constexpr std::array<Key, 21> kKeys{{
    {u"tema", &HeadSource::tema}, {u"objetivo", &HeadSource::objetivo},
    {u"nivel", &HeadSource::nivel, &RoteiroSource::nivel}, {u"disc", &HeadSource::disc, &RoteiroSource::disc},
    {u"fig", nullptr, &RoteiroSource::fig, &PageSource::fig}, {u"som", nullptr, &RoteiroSource::som, &PageSource::som},
    {u"desc", nullptr, &RoteiroSource::desc}, {u"bncc", nullptr, &RoteiroSource::bncc},
    {u"titulo", nullptr, nullptr, &PageSource::titulo}, {u"texto", nullptr, nullptr, &PageSource::texto},
    {u"nome", nullptr, &RoteiroSource::nome, nullptr, &AulaSource::nome},
    {u"cod", nullptr, &RoteiroSource::cod, nullptr, &AulaSource::cod},
    {u"resposta", nullptr, nullptr, nullptr, &AulaSource::resposta},
    {u"elogio", nullptr, nullptr, nullptr, &AulaSource::elogio},
    {u"dica", nullptr, nullptr, nullptr, &AulaSource::dica}, {u"jogo", nullptr, nullptr, nullptr, &AulaSource::jogo},
    {u"chama", nullptr, nullptr, nullptr, &AulaSource::chama},
    {u"arquivo", nullptr, nullptr, nullptr, &AulaSource::arquivo},
    {u"linha", nullptr, nullptr, nullptr, &AulaSource::linha}, {u"tipo", nullptr, nullptr, nullptr, &AulaSource::tipo},
    {u"pagina"}, // opens a page
}};

/// Reads entry by entry; what it meets goes to the Roteiro and the Aula opened last.
class SourceReader final
{
public:
    SourceReader(QByteArrayView utf8, const QString &path, Findings &findings)
        : mLines(utf8, path, findings), mPath(path), mFindings(findings)
    { }

    BlockSource read();

private:
    void entry();
    void roteiro();
    void aula();
    void raw();
    void rawLine();
    void option();
    void key();
    void store(const Key &key, const SourceText &value);
    void put(SourceText &into, const SourceText &value);
    void style(const SourceText &value);
    SourceText value(qsizetype from, bool exact);
    QString lineOf(const SourceLine &line, bool exact);
    void add(const Place &place, const QString &code, const QString &text)
    {
        mFindings.push_back({mPath, place, Severity::Error, code, text});
    }
    /// The first line of the present entry, from a character on.
    SourceLine rest(qsizetype from) const
    {
        const SourceLine &first = mEntry.front();
        const QStringView text = withoutBlanks(first.text.sliced(qMin(from, first.text.size())));
        const qsizetype skipped = text.isEmpty() ? 0 : text.data() - first.text.data();
        return {text, {first.place.line, first.place.column + int(skipped)}};
    }
    template <typename Item>
    Item *last()
    {
        return mBlock.items.empty() ? nullptr : std::get_if<Item>(&mBlock.items.back());
    }

    SourceLines mLines;
    QString mPath;
    Findings &mFindings;
    SourceEntry mEntry;
    BlockSource mBlock;
};

/// The text of one line, its escapes read.
QString SourceReader::lineOf(const SourceLine &line, bool exact)
{
    if (!exact)
        return line.text.toString();
    const Unescaped read = unescaped(line.text);
    if (read.bad >= 0 || read.open)
        add({line.place.line, line.place.column + int(read.open ? line.text.size() - 1 : read.bad)}, u"escape"_s,
            u"\\ só vale antes de \\, t, r, n, @ ou x e dois algarismos"_s);
    return read.text;
}

/// What the entry says from a character of its first line on.
SourceText SourceReader::value(qsizetype from, bool exact)
{
    SourceText value;
    value.given = true;
    const SourceLine first = rest(from);
    const bool begins = !first.text.isEmpty() || mEntry.size() == 1;
    if (begins) {
        value.text = exact && first.text == u"." ? QString() : lineOf(first, exact);
        value.places.push_back(first.place);
    }
    for (std::size_t n = 1; n < mEntry.size(); ++n) {
        if (!value.places.empty())
            value.text += u"\r\n";
        if (mEntry[n].text != u".")
            value.text += lineOf(mEntry[n], exact);
        value.places.push_back(mEntry[n].place);
    }
    return value;
}

void SourceReader::roteiro()
{
    RoteiroSource item;
    item.place = mEntry.front().place;
    const SourceLine words = rest(QStringView(u"ROTEIRO").size());
    const qsizetype blank = words.text.indexOf(u' ');
    const QStringView cod = blank < 0 ? words.text : words.text.first(blank);
    if (!words.text.isEmpty()) {
        item.cod = SourceText(cod.toString());
        item.cod.places.push_back(words.place);
        if (!std::ranges::all_of(cod, [](QChar c) { return c >= u'0' && c <= u'9'; }))
            add(words.place, u"codigo"_s,
                u"depois de ROTEIRO vem o código, só de algarismos, e depois dele o nome: \""_s + cod.toString()
                    + u"\" não serve"_s);
    }
    if (blank >= 0)
        item.nome = value(words.text.data() - mEntry.front().text.data() + blank, false);
    mBlock.items.emplace_back(std::move(item));
}

void SourceReader::aula()
{
    AulaSource item;
    item.place = mEntry.front().place;
    const QStringView text = mEntry.front().text;
    const qsizetype colon = text.indexOf(u':');
    const SourceLine words = rest(QStringView(u"AULA").size());
    const qsizetype size = colon < 0 ? words.text.size() : colon - (words.text.data() - text.data());
    const QStringView head = withoutBlanks(words.text.first(qMax<qsizetype>(0, size)));
    const QStringView program = head.first(head.indexOf(u' ') < 0 ? head.size() : head.indexOf(u' '));
    const QStringView kind = withoutBlanks(head.sliced(program.size()));
    item.programa = program == kOutroPrograma ? QString() : program.toString();
    item.kind = kindOf(kind);
    if (colon < 0 || program.isEmpty())
        add(item.place, u"aula"_s, u"uma aula começa com \"AULA programa tipo: nome\""_s);
    else if (!kind.isEmpty() && item.kind == Kind::None)
        add({words.place.line, words.place.column + int(kind.data() - words.text.data())}, u"tipo"_s,
            u"tipo de exercício desconhecido: "_s + kind.toString()
                + u". Há leia, escolha, marque, escreva, ordene, desenhe e historia"_s);
    if (colon >= 0 && !rest(colon + 1).text.isEmpty())
        item.nome = value(colon + 1, false);
    if (mBlock.items.empty())
        add(item.place, u"fora-de-lugar"_s, u"AULA antes do primeiro ROTEIRO"_s);
    mBlock.items.emplace_back(std::move(item));
}

void SourceReader::raw()
{
    mBlock.items.emplace_back(RawSource{mEntry.front().place, {}, {}});
    // What comes first of all takes the head's place.
    if (mBlock.items.size() == 1 && !mBlock.head.tema.given && !mBlock.head.objetivo.given)
        mBlock.head.written = false;
    if (mEntry.size() > 1 || mEntry.front().text.size() > QStringView(u"CRU").size())
        add(mEntry.back().place, u"cru"_s, u"CRU fica sozinho na linha; as dele começam com |"_s);
}

void SourceReader::rawLine()
{
    auto *item = last<RawSource>();
    if (!item) {
        add(mEntry.front().place, u"cru"_s, u"uma linha que começa com | vem depois de CRU"_s);
        return;
    }
    const Unescaped read = unescaped(mEntry.front().text.sliced(1));
    if (read.bad >= 0 || mEntry.size() > 1)
        add(mEntry.back().place, u"escape"_s,
            u"\\ só vale antes de \\, t, r, n, @ ou x e dois algarismos, e cada linha começa com |"_s);
    item->places.emplace_back(item->bytes.size(), mEntry.front().place);
    encode1252(read.text, item->bytes);
    if (!read.open)
        item->bytes += "\r\n";
}

void SourceReader::option()
{
    auto *aula = last<AulaSource>();
    const QStringView text = mEntry.front().text;
    if (!aula) {
        add(mEntry.front().place, u"fora-de-lugar"_s, u"uma opção vem dentro de uma AULA"_s);
        return;
    }
    OptionSource option;
    option.certa = text[0] == u'*';
    option.ordered = text[0] == u'=';
    qsizetype at = 1;
    while (option.ordered && at < text.size() && text[at] >= u'0' && text[at] <= u'9')
        ++at;
    option.lugar = text.sliced(1, at - 1).toInt();
    const bool exact = at < text.size() && text[at] == u'|';
    if (at < text.size() && text[at] != u' ' && !exact)
        add(mEntry.front().place, u"opcao"_s, u"falta um espaço depois de "_s + text.first(at).toString());
    // The figure stands behind the last line's "@"; in an exact text only a bare one counts.
    SourceLine &lastLine = mEntry.back();
    qsizetype sign = lastLine.text.indexOf(u'@');
    while (exact && sign > 0 && lastLine.text[sign - 1] == u'\\')
        sign = lastLine.text.indexOf(u'@', sign + 1);
    if (sign >= 0) {
        const QStringView fig = withoutBlanks(lastLine.text.sliced(sign + 1));
        const Place place{lastLine.place.line, lastLine.place.column + int(fig.data() - lastLine.text.data())};
        option.fig.text = lineOf({fig, place}, exact);
        option.fig.given = true;
        option.fig.places.push_back(place);
        lastLine.text = withoutBlanks(lastLine.text.first(sign));
    }
    option.texto = value(exact ? at + 1 : at, exact);
    aula->opcoes.push_back(std::move(option));
}

void SourceReader::style(const SourceText &value)
{
    for (const QString &word : folded(value.text).split(u',')) {
        const QStringView bare = withoutBlanks(word);
        if (bare == u"junto")
            mBlock.head.blankLines = false;
        else if (bare == u"rente")
            mBlock.head.tabs = false;
        else
            add(value.places.front(), u"estilo"_s, u"o estilo é \"junto\", \"rente\" ou os dois"_s);
    }
}

void SourceReader::put(SourceText &into, const SourceText &value)
{
    if (into.given)
        add(mEntry.front().place, u"repetida"_s, u"esta chave já apareceu acima"_s);
    into = value;
}

void SourceReader::store(const Key &key, const SourceText &value)
{
    if (mBlock.items.empty() && key.head)
        return put(mBlock.head.*key.head, value);
    if (auto *roteiro = last<RoteiroSource>(); roteiro && key.roteiro)
        return put(roteiro->*key.roteiro, value);
    if (auto *aula = last<AulaSource>()) {
        if (key.page)
            return put(aula->paginas.back().*key.page, value);
        if (key.aula)
            return put(aula->*key.aula, value);
        if (key.word == u"pagina") {
            aula->paginas.emplace_back().texto = value;
            return;
        }
    }
    add(mEntry.front().place, u"fora-de-lugar"_s, u"a chave "_s + key.word.toString() + u" não vale aqui"_s);
}

void SourceReader::key()
{
    const QStringView text = mEntry.front().text;
    const auto sign = std::ranges::find_if(text, [](QChar c) { return c == u':' || c == u'|'; });
    if (sign == text.end()) {
        add(mEntry.front().place, u"solta"_s,
            u"esta linha não é chave, opção, ROTEIRO ou AULA; se continua o texto de cima, comece-a com um espaço"_s);
        return;
    }
    const qsizetype at = sign - text.begin();
    const QString word = folded(withoutBlanks(text.first(at)));
    if (word == u"estilo"_s && mBlock.items.empty()) {
        style(value(at + 1, false));
        return;
    }
    const auto *known = std::ranges::find(kKeys, QStringView(word), &Key::word);
    if (known == kKeys.end())
        add(mEntry.front().place, u"chave"_s,
            u"chave desconhecida: "_s + withoutBlanks(text.first(at)).toString()
                + u"; se continua o texto de cima, comece a linha com um espaço"_s);
    else
        store(*known, value(at + 1, *sign == u'|'));
}

void SourceReader::entry()
{
    const QStringView text = mEntry.front().text;
    const auto begins = [&text](QStringView word) {
        return text.startsWith(word) && (text.size() == word.size() || text[word.size()] == u' ');
    };
    if (begins(u"ROTEIRO"))
        roteiro();
    else if (begins(u"AULA"))
        aula();
    else if (begins(u"CRU"))
        raw();
    else if (text[0] == u'|')
        rawLine();
    else if (text[0] == u'*' || text[0] == u'-' || text[0] == u'=')
        option();
    else
        key();
}

BlockSource SourceReader::read()
{
    constexpr std::size_t kMost = 1000;
    while (mFindings.size() < kMost && mLines.next(mEntry))
        entry();
    if (mFindings.empty() && mBlock.items.empty() && !mBlock.head.tema.given && !mBlock.head.objetivo.given)
        add({}, u"vazio"_s, u"a fonte está vazia"_s);
    return std::move(mBlock);
}

} // namespace

BlockSource readSource(QByteArrayView utf8, const QString &path, Findings &findings)
{
    return SourceReader(utf8, path, findings).read();
}

} // namespace quorel
