#include "shell/roteiro_progress.h"

#include <algorithm>

namespace quorel {

using namespace Qt::StringLiterals;

void beginAula(RoteiroProgress &progress, int aula, int count)
{
    const bool another = progress.ended || int(progress.aulas.size()) != count;
    if (another || progress.current == 0)
        progress = {.aulas = std::vector<AulaState>(std::size_t(std::max(count, 0))),
            .current = 0,
            .ended = false,
            .awaited = {}};
    progress.current = std::clamp(aula, 0, count);
}

void noteAnswer(RoteiroProgress &progress, const QString &answer)
{
    if (progress.current == 0)
        return;
    AulaState &state = progress.aulas[std::size_t(progress.current - 1)];
    if (state != AulaState::Open)
        return;
    if (answer.contains(u'E'))
        state = AulaState::Wrong;
    else
        state = answer.contains(u'A') ? AulaState::Right : AulaState::Answered;
}

/// The Aulas of a state as one reads them out, "2, 3 e 5".
static QString placesOf(const RoteiroProgress &progress, AulaState state)
{
    QStringList places;
    for (std::size_t i = 0; i < progress.aulas.size(); ++i) {
        if (progress.aulas[i] == state)
            places << QString::number(i + 1);
    }
    const QString last = places.isEmpty() ? QString() : places.takeLast();
    return places.isEmpty() ? last : places.join(u", "_s) + u" e "_s + last;
}

QString progressText(const RoteiroProgress &progress)
{
    if (!progress.ended) {
        const QString place = u"%1 de %2"_s.arg(progress.current).arg(progress.aulas.size());
        return progress.awaited.isEmpty() ? place : place + u" – abrindo "_s + progress.awaited + u'…';
    }
    const auto right = std::ranges::count(progress.aulas, AulaState::Right);
    const auto wrong = std::ranges::count(progress.aulas, AulaState::Wrong);
    if (right + wrong == 0)
        return u"Fim do roteiro."_s;
    if (wrong == 0)
        return u"Fim do roteiro: tudo certo!"_s;
    const QString again = placesOf(progress, AulaState::Wrong);
    return u"Fim do roteiro: %1 de %2 certas. Para tentar de novo: %3."_s.arg(right).arg(right + wrong).arg(again);
}

} // namespace quorel
