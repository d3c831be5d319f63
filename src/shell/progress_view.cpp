#include "shell/progress_view.h"

#include "shell/progress_strip.h"

namespace quorel {

using namespace Qt::StringLiterals;

ProgressView::ProgressView() = default;
ProgressView::~ProgressView() = default;

ProgressStrip &ProgressView::strip()
{
    if (!mStrip)
        mStrip = std::make_unique<ProgressStrip>();
    return *mStrip;
}

void ProgressView::aulaBegan(int aula, int count)
{
    beginAula(mProgress, aula, count);
    strip().tell(mProgress);
}

void ProgressView::programAwaited(const QString &title)
{
    mProgress.awaited = title.section(u" - "_s, 0, 0);
    if (mProgress.current > 0)
        strip().tell(mProgress);
}

void ProgressView::answerTaken(const QString &answer)
{
    noteAnswer(mProgress, answer);
    if (mProgress.current > 0)
        strip().tell(mProgress);
}

void ProgressView::roteiroEnded()
{
    if (mProgress.current == 0)
        return;
    mProgress.ended = true;
    strip().tell(mProgress);
    strip().hideAtNextPress();
}

void ProgressView::roteiroLeft()
{
    mProgress = {};
    if (mStrip)
        mStrip->hide();
}

} // namespace quorel
