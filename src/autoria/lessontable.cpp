#include "autoria/lessontable.h"

#include "autoria/exacttext.h"

#include <algorithm>

namespace quorel {

using namespace Qt::StringLiterals;

constexpr std::array<QStringView, 8> kWords{
    u"", u"leia", u"escolha", u"marque", u"escreva", u"ordene", u"desenhe", u"historia"};
constexpr std::array<QStringView, 6> kElogios{
    u"Muito bem!", u"Isso mesmo!", u"Você acertou!", u"Parabéns!", u"Que beleza!", u"Ótimo!"};

QString kindWord(Kind kind)
{
    return kWords[std::size_t(kind)].toString();
}

Kind kindOf(QStringView word)
{
    const auto *at = std::ranges::find(kWords, folded(word));
    return at == kWords.end() ? Kind::None : Kind(at - kWords.begin());
}

QString defaultPraise(int aula)
{
    return kElogios[std::size_t(aula) % kElogios.size()].toString();
}

QString defaultCode(const QString &roteiro, int aula)
{
    return roteiro + QString::number(aula).rightJustified(2, u'0');
}

qsizetype turnOf(const QString &codigo, qsizetype options)
{
    constexpr qsizetype kTen = 10;
    const qsizetype steps = qMax<qsizetype>(1, options - 1);
    qsizetype rest = 0;
    for (const QChar digit : codigo)
        rest = (rest * kTen + qMax(0, digit.digitValue())) % steps;
    return qMin(options, 1 + rest);
}

} // namespace quorel
