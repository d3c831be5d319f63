#include "autoria/blockcheck.h"

#include "autoria/bncc.h"
#include "catalogue/catalogo.h"
#include "catalogue/vistas.h"
#include "platform/codec.h"
#include "platform/erro.h"
#include "startup/quorel_zeto.h"
#include "startup/texto_util.h"

#include <QFileInfo>

#include <algorithm>

namespace quorel {

using namespace Qt::StringLiterals;

static QString nameOf(const LugarBloco &place)
{
    return place.aula == 0 ? u"Roteiro %1"_s.arg(place.roteiro)
                           : u"Aula %1 do Roteiro %2"_s.arg(place.aula).arg(place.roteiro);
}

BlockCheck::BlockCheck(const BlockFile &file, const QByteArray &edb, bool withMedia, CheckMemory &memory,
    std::function<Place(qsizetype)> place, const QString &where)
    : mFile(file), mEdb(edb), mWithMedia(withMedia), mMemory(memory), mPlace(std::move(place)), mWhere(where),
      mView(edb.constData(), std::size_t(edb.size()))
{
    if (withMedia) {
        mFigSearch = [this](const QString &name) { return hasFig(name); };
        mSoundSearch = [this](const QString &name) { return hasSound(name); };
    }
}

void BlockCheck::add(qsizetype at, Severity severity, const QString &code, const QString &text)
{
    mFindings.push_back({mWhere, mPlace(qMax<qsizetype>(0, at)), severity, code, text});
}

qsizetype BlockCheck::placeOf(const LugarBloco &section, ProximaMarca &mark) const
{
    const Posicao at = mark.find(Posicao(section.begin));
    return at == kNenhum || qint64(at) + mark.size() > section.end ? -1 : qsizetype(at);
}

qsizetype BlockCheck::behind(const LugarBloco &section, ProximaMarca &mark) const
{
    const qsizetype at = placeOf(section, mark);
    return at < 0 ? section.begin : at + qsizetype(mark.size());
}

bool BlockCheck::hasFig(const QString &name)
{
    const auto known = mMemory.figs.constFind(name);
    return known != mMemory.figs.constEnd() ? *known : *mMemory.figs.insert(name, !gConfig.N_Fig(name).isEmpty());
}

bool BlockCheck::hasSound(const QString &name)
{
    const auto known = mMemory.sounds.constFind(name);
    return known != mMemory.sounds.constEnd() ? *known : *mMemory.sounds.insert(name, !gConfig.N_Som(name).isEmpty());
}

/// The first byte beyond ASCII behind a byte order mark; -1 when there is none.
static qsizetype firstAccent(const QByteArray &bytes)
{
    constexpr qsizetype kMark = 3;
    const auto from = bytes.begin() + (bytes.startsWith("\xEF\xBB\xBF") ? kMark : 0);
    const auto at = std::find_if(from, bytes.end(), [](char byte) { return (uchar(byte) & 0x80U) != 0; });
    return at == bytes.end() ? -1 : at - bytes.begin();
}

/// One cause that would show as a hundred.
bool BlockCheck::isNoBlock()
{
    if (mEdb.isEmpty()) {
        add(0, Severity::Error, u"vazio"_s, u"o arquivo está vazio"_s);
    } else if (mEdb.startsWith("\xFF\xFE") || mEdb.startsWith("\xFE\xFF")) {
        add(0, Severity::Error, u"utf16"_s, u"gravado em UTF-16: o arquivo tem de estar na página de código 1252"_s);
    } else if (const qsizetype accent = firstAccent(mEdb); accent >= 0 && mEdb.isValidUtf8()) {
        add(accent, Severity::Error, u"utf8"_s, u"gravado em UTF-8: o arquivo tem de estar na página de código 1252"_s);
    } else if (mEdb.contains('\n') && !mEdb.contains("\r\n")) {
        add(mEdb.indexOf('\n'), Severity::Error, u"lf"_s, u"as linhas terminam só com LF: têm de terminar com CR LF"_s);
    } else {
        return false;
    }
    return true;
}

void BlockCheck::name()
{
    constexpr int kMonths = 12;
    try {
        // The head is read from the bytes, not from a file: a name that no file bears.
        const CabecaBloco cabeca = leCabeca(mFile.name, mFile.nivel, u"\\*"_s);
        if (cabeca.disciplina.isEmpty())
            add(0, Severity::Error, u"disciplina"_s,
                u"o nome do arquivo não traz um código de disciplina conhecido antes do nível "_s + mFile.nivel);
        if (cabeca.grupo > kMonths || cabeca.grupo == 0)
            add(0, Severity::Note, u"mes"_s,
                u"o mês %1 do nome não é o de um ano; só a ordem conta"_s.arg(cabeca.grupo));
        if (mFile.name.contains(u';'))
            add(0, Severity::Error, u"nome"_s, u"o nome do arquivo tem \";\", que o catálogo toma por dois nomes"_s);
    } catch (const ErroExecucao &) {
        add(0, Severity::Error, u"nome"_s,
            u"o catálogo não lê o nome do arquivo: tem de começar com dois algarismos do mês e dois do ano"_s);
    }
}

void BlockCheck::lineEnds()
{
    if (mEdb.startsWith("\xEF\xBB\xBF"))
        add(0, Severity::Warning, u"bom"_s, u"o arquivo começa com a marca de UTF-8 (BOM): grave-o sem ela"_s);
    for (qsizetype at = mEdb.indexOf('\n'); at >= 0; at = mEdb.indexOf('\n', at + 1)) {
        if (at == 0 || mEdb[at - 1] != '\r') {
            add(at, Severity::Error, u"lf"_s, u"linha que termina só com LF, sem CR"_s);
            return;
        }
    }
}

void BlockCheck::head()
{
    const qsizetype first = mPlan.marcas.empty() ? mEdb.size() : qsizetype(mPlan.marcas.front().begin);
    const QByteArray begin = QByteArray::fromRawData(mEdb.constData(), first);
    if (textoEntre(begin, "<OBJ>", "</OBJ>").trimmed().isEmpty())
        add(qMax<qsizetype>(0, begin.indexOf("<OBJ>")), Severity::Warning, u"sem-objetivo"_s,
            u"o bloco não tem objetivo (<OBJ>…</OBJ>)"_s);
    const qsizetype at = qMax<qsizetype>(0, begin.indexOf("<TM>"));
    const QString theme = textoEntre(begin, "<TM>", "</TM>");
    if (theme.trimmed().isEmpty()) {
        add(at, Severity::Warning, u"sem-tema"_s, u"o bloco não tem tema (<TM>…</TM>), o nome do mês no painel"_s);
        return;
    }
    const QString month = QFileInfo(mFile.path).path() + u'/' + mFile.name.left(2);
    const Place place = mPlace(at);
    const auto known = mMemory.themes.constFind(month);
    if (known == mMemory.themes.constEnd())
        mMemory.themes.insert(month, {theme, mWhere + u':' + QString::number(place.line)});
    else if (known->text != theme)
        add(at, Severity::Warning, u"tema"_s,
            u"o tema não é o de "_s + known->where + u": \""_s + known->text
                + u"\"; no painel aparece o do último arquivo do mês"_s);
}

/// Markers that open nothing: without a number, a second time, outside their section or beyond the count.
void BlockCheck::openings()
{
    QSet<std::pair<int, int>> read;
    for (const LugarBloco &section : mPlan.secoes)
        read.insert({section.roteiro, section.aula});
    for (const LugarBloco &mark : mPlan.marcas) {
        const QString which = nameOf(mark);
        if (mark.roteiro == 0)
            add(mark.begin, Severity::Error, u"abertura"_s, u"marca [ROT< sem número, ou sem >] atrás dele"_s);
        else if (mark.aula < 0)
            add(mark.begin, Severity::Error, u"abertura"_s,
                u"marca [<%1> sem número de Aula, ou sem ] e fim de linha atrás dele"_s.arg(mark.roteiro));
        else if (mOpened.contains({mark.roteiro, mark.aula}))
            add(mark.begin, Severity::Error, u"secao-repetida"_s, which + u" aparece outra vez: só vale a primeira"_s);
        else if (!read.contains({mark.roteiro, mark.aula}) && !isBehindStop(mark.roteiro))
            add(mark.begin, Severity::Error, u"secao-perdida"_s, which + u": o programa nunca lê esta seção"_s);
        mOpened.insert({mark.roteiro, mark.aula});
    }
}

void BlockCheck::missingNumbers()
{
    for (int i = 1; i <= mBloco.roteiros.upperBound(); ++i) {
        if (!mOpened.contains({i, 0}))
            add(0, Severity::Error, u"numeracao"_s, u"falta o Roteiro %1 na numeração"_s.arg(i));
    }
    for (const LugarBloco &section : mPlan.secoes) {
        const Vetor<AulaRec> &aulas = mBloco.roteiros[section.roteiro].Aulas;
        if (section.aula != 0 || !aulas.isDimensioned())
            continue;
        for (int j = 1; j <= aulas.upperBound(); ++j) {
            if (!mOpened.contains({section.roteiro, j}))
                add(section.begin, Severity::Error, u"numeracao"_s,
                    u"falta a Aula %1 na numeração do Roteiro %2"_s.arg(j).arg(section.roteiro));
        }
    }
}

/// A section that holds the opening of another one: the next number does not follow it.
void BlockCheck::order()
{
    std::vector<qint64> roteiros;
    for (const LugarBloco &mark : mPlan.marcas) {
        if (mark.aula == 0)
            roteiros.push_back(mark.begin);
    }
    for (const LugarBloco &section : mPlan.secoes) {
        if (section.aula != 0)
            continue;
        const auto next = std::ranges::lower_bound(roteiros, section.begin);
        if (next != roteiros.end() && *next < section.end)
            add(section.begin, Severity::Error, u"secao-contida"_s,
                u"a seção do Roteiro %1 contém a de outro: o número seguinte não vem logo depois"_s.arg(
                    section.roteiro));
    }
}

qsizetype BlockCheck::placeOfStop()
{
    if (mPlan.secoes.empty())
        return 0;
    const LugarBloco &last = mPlan.secoes.back();
    return qMax<qsizetype>(last.begin, last.aula == 0 ? placeOf(last, mCodRot) : -1);
}

Findings BlockCheck::run()
{
    name();
    if (isNoBlock())
        return std::move(mFindings);
    mBloco = leBloco(mEdb, &mPlan);
    lineEnds();
    head();
    openings();
    missingNumbers();
    order();
    for (const LugarBloco &section : mPlan.secoes) {
        if (isBehindStop(section.roteiro))
            continue;
        if (section.aula == 0)
            roteiro(section.roteiro, section);
        else
            aula(section);
    }
    if (isBehindStop(mBloco.lidos + 1))
        add(placeOfStop(), Severity::Error, u"fim-da-leitura"_s,
            u"a leitura acaba no Roteiro %1: código que não cabe em 32 bits, ou seções que se sobrepõem demais"_s.arg(
                mBloco.lidos + 1));
    sortByPlace(mFindings);
    return std::move(mFindings);
}

void BlockCheck::roteiro(int i, const LugarBloco &section)
{
    const RoteiroRec &r = mBloco.roteiros[i];
    if (r.Nome == "CALC"_L1) {
        if (i != mBloco.roteiros.upperBound())
            add(section.begin, Severity::Error, u"calc"_s,
                u"CALC não é o último Roteiro: a calculadora não acha as suas Aulas"_s);
        return;
    }
    if (r.Nome.trimmed() == "CALC"_L1)
        add(section.begin, Severity::Warning, u"calc"_s, u"CALC com branco antes ou depois é um Roteiro comum"_s);
    if (r.Nome.isEmpty())
        add(section.begin, Severity::Warning, u"sem-nome"_s, u"Roteiro %1 sem nome (NomeRot =)"_s.arg(i));
    roteiroCode(i, section);
    if (i > kNumBotoes)
        add(section.begin, Severity::Warning, u"sem-botao"_s,
            u"Roteiro %1 não tem botão: a janela mostra %2"_s.arg(i).arg(kNumBotoes));
    roteiroFields(r, section);
    skills(r, section);
}

void BlockCheck::roteiroCode(int i, const LugarBloco &section)
{
    const int cod = mBloco.roteiros[i].Cod;
    const qsizetype at = behind(section, mCodRot);
    if (cod == 0) {
        add(at, Severity::Error, u"codigo"_s, u"Roteiro %1 com código (CODROT:) ausente ou 0"_s.arg(i));
        return;
    }
    const auto known = mMemory.roteiroCodes.constFind(cod);
    if (known != mMemory.roteiroCodes.constEnd())
        add(at, Severity::Error, u"codigo-repetido"_s, u"código %1 já usado em "_s.arg(cod) + *known);
    else
        mMemory.roteiroCodes[cod] = mWhere + u':' + QString::number(mPlace(at).line);
}

void BlockCheck::roteiroFields(const RoteiroRec &r, const LugarBloco &section)
{
    if (mWithMedia && !r.Fig.isEmpty() && !hasFig(r.Fig))
        add(behind(section, mFig), Severity::Warning, u"figura"_s, u"figura não encontrada: "_s + r.Fig);
    if (mWithMedia && !r.Som.isEmpty() && !hasSound(r.Som))
        add(behind(section, mSom), Severity::Warning, u"som"_s, u"som não encontrado: "_s + r.Som);
    const qsizetype desc = placeOf(section, mDesc);
    if (desc >= 0 && placeOf({0, 0, desc, section.end}, mEndDesc) < 0)
        add(desc, Severity::Error, u"desc"_s, u"falta </DESC>: a descrição é lida vazia"_s);
    // What the shell keeps and never looks at.
    if (!r.Nivel.isEmpty() && !mFile.nivel.isEmpty() && !equalNoCase(semBrancos(r.Nivel), mFile.nivel))
        add(behind(section, mNivel), Severity::Note, u"nivel"_s,
            u"o nível "_s + r.Nivel + u" não é o do nome do arquivo, "_s + mFile.nivel);
    const QString named = NomeDisciplina(mFile.disciplina());
    const QString said = semBrancos(r.Disc).toString();
    if (!said.isEmpty() && !named.isEmpty() && !equalNoCase(said, named) && NomeDisciplina(said) != named)
        add(behind(section, mDisc), Severity::Note, u"disc"_s,
            u"a disciplina "_s + said + u" não é a do nome do arquivo, "_s + named);
}

/// A line "BNCC:" in front of the first Aula, and what stands in brackets at the end of the description.
void BlockCheck::skills(const RoteiroRec &r, const LugarBloco &section)
{
    const auto firstAula = std::ranges::upper_bound(mPlan.marcas, section.begin, {}, &LugarBloco::begin);
    const LugarBloco head{
        0, 0, section.begin, firstAula == mPlan.marcas.end() ? section.end : qMin(section.end, firstAula->begin)};
    if (const qsizetype at = placeOf(head, mBncc); at >= 0) {
        const qsizetype begin = at + qsizetype(mBncc.size());
        const qsizetype end = mEdb.indexOf("\r\n", begin);
        const QString list = decode1252(QByteArrayView(mEdb).sliced(begin, (end < 0 ? mEdb.size() : end) - begin));
        for (const QString &word : wordsOfNoBnccCode(list))
            add(begin, Severity::Warning, u"bncc"_s, u"não tem a forma de um código da BNCC (EF02MA06): "_s + word);
    }
    const qsizetype open = r.Desc.lastIndexOf(u'[');
    if (open < 0 || !r.Desc.endsWith(u']') || !r.Desc.sliced(open + 1).startsWith(u'E'))
        return;
    for (const QString &word : wordsOfNoBnccCode(QStringView(r.Desc).sliced(open + 1).chopped(1)))
        add(behind(section, mDesc) + open, Severity::Warning, u"bncc"_s,
            u"não tem a forma de um código da BNCC (EF02MA06): "_s + word);
}

} // namespace quorel
