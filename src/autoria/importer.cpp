#include "autoria/importer.h"

#include "autoria/importdraft.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr int kMaxPorRoteiro = 90; // the code of an Aula is the Roteiro's and two digits

static SourceText said(const QString &text)
{
    QString lines = text.trimmed();
    return SourceText(lines.replace(u'\n', u"\r\n"_s));
}

ImportBuilder::ImportBuilder(const ImportRequest &request, Imported &into) : mRequest(request), mInto(into)
{
    mInto.source.head.tema = SourceText(u"Mês: tema do mês"_s);
    mInto.source.head.objetivo = SourceText(u"o que se aprende neste bloco."_s);
}

void ImportBuilder::setName(const QString &name)
{
    close();
    if (!name.trimmed().isEmpty())
        mRequest.name = name.trimmed();
}

void ImportBuilder::begin()
{
    RoteiroSource roteiro;
    const bool same = mRoteiros > 0 && mInto.questions > 0;
    roteiro.cod = SourceText(QString::number(mRequest.code.toInt() + mRoteiros));
    roteiro.nome = SourceText(same ? u"%1 (%2)"_s.arg(mRequest.name).arg(mRoteiros + 1) : mRequest.name);
    roteiro.desc = SourceText(u"Responda e confira."_s);
    mInto.source.items.emplace_back(roteiro);
    ++mRoteiros;
}

void ImportBuilder::close()
{
    if (mInRoteiro == 0)
        return;
    AulaSource end;
    end.programa = u"Zeto"_s;
    end.kind = Kind::Leia;
    end.nome = SourceText(u"Fim"_s);
    end.paginas.front().texto = SourceText(u"Você chegou ao fim."_s);
    mInto.source.items.emplace_back(end);
    mInRoteiro = 0;
}

void ImportBuilder::examine(const DraftQuestion &question)
{
    const bool right = std::ranges::any_of(question.options, &DraftQuestion::Option::right);
    if (!question.options.empty() && !right)
        tell(question.line, u"nenhuma opção está marcada como certa"_s, u"sem-certa"_s);
    if (question.options.size() == 1)
        tell(question.line, u"há só uma opção"_s, u"uma-opcao"_s);
    if (question.options.empty() && question.answers.isEmpty() && !question.onlyPage)
        tell(question.line, u"sem opções e sem resposta: ficou como página para ler"_s, u"sem-resposta"_s);
}

void ImportBuilder::add(const DraftQuestion &question)
{
    if (question.line == 0)
        return;
    if (mInRoteiro == kMaxPorRoteiro)
        close();
    if (mInRoteiro == 0)
        begin();
    ++mInRoteiro;
    ++mInto.questions;
    examine(question);
    const auto rights = std::ranges::count_if(question.options, &DraftQuestion::Option::right);
    AulaSource aula;
    aula.programa = u"Zeto"_s;
    aula.nome =
        SourceText(question.title.isEmpty() ? u"Questão %1"_s.arg(mInto.questions) : question.title.simplified());
    aula.paginas.front().texto = said(question.text);
    aula.kind = Kind::Leia;
    if (!question.options.empty())
        aula.kind = rights > 1 ? Kind::Marque : Kind::Escolha;
    else if (!question.answers.isEmpty())
        aula.kind = Kind::Escreva;
    for (const DraftQuestion::Option &each : question.options) {
        OptionSource option;
        option.texto = said(each.text);
        option.certa = each.right;
        aula.opcoes.push_back(option);
    }
    if (aula.kind == Kind::Escreva)
        aula.resposta = SourceText(question.answers.join(u'|'));
    if (!question.praise.isEmpty())
        aula.elogio = said(question.praise);
    if (!question.hint.isEmpty())
        aula.dica = said(question.hint);
    mInto.source.items.emplace_back(aula);
}

void ImportBuilder::finish()
{
    close();
    if (mInto.questions == 0)
        tell(1, u"não há nenhuma pergunta que se entenda"_s, u"vazio"_s, Severity::Error);
}

void ImportBuilder::tell(int line, const QString &text, const QString &code, Severity severity)
{
    mInto.findings.push_back({mRequest.path, {line, 1}, severity, code, text});
}

void ImportBuilder::notUnderstood(int line, const QString &text)
{
    constexpr qsizetype kShown = 60;
    const QString quoted = text.size() > kShown ? text.first(kShown) + u'…' : text;
    tell(line, u"não entendi, e ficou de fora: "_s + quoted.simplified(), u"nao-entendido"_s);
}

QStringList importLines(const QString &text)
{
    static const QRegularExpression unseen(u"[\\x{00AD}\\x{200B}-\\x{200F}\\x{2060}\\x{FEFF}\\x{0000}]"_s);
    static const QRegularExpression blank(u"[\\x{00A0}\\x{2000}-\\x{200A}\\x{202F}\\t]"_s);
    static const QRegularExpression ends(u"\\r\\n|[\\r\\n\\x{000B}\\x{2028}\\x{2029}]"_s);
    QString clean = text;
    clean.remove(unseen);
    return clean.replace(blank, u" "_s).split(ends);
}

ImportForm importFormOf(const QString &text)
{
    using Option = QRegularExpression::PatternOption;
    static const QRegularExpression aiken(u"^\\s*ANSWER:\\s*[A-Z]\\s*$"_s, Option::MultilineOption);
    static const QRegularExpression gift(
        u"(^\\s*::|(?<!\\\\)\\{\\s*(\\}|[=~#]|T(RUE)?\\s*[}#]|F(ALSE)?\\s*[}#]))"_s, Option::MultilineOption);
    if (text.contains(aiken))
        return ImportForm::Aiken;
    return text.contains(gift) ? ImportForm::Gift : ImportForm::Sheet;
}

Imported importQuestions(ImportForm form, const QString &text, const ImportRequest &request)
{
    Imported imported;
    ImportBuilder builder(request, imported);
    const QStringList lines = importLines(text);
    switch (form) {
    case ImportForm::Aiken:
        readAiken(lines, builder);
        break;
    case ImportForm::Gift:
        readGift(lines, builder);
        break;
    case ImportForm::Sheet:
        readSheet(lines, builder);
        break;
    }
    builder.finish();
    sortByPlace(imported.findings);
    return imported;
}

} // namespace quorel
