#pragma once

#include "shell/roteiro_progress.h"

#include <QWidget>

namespace quorel {

/// A strip at the lower edge of the screen, beside the lesson: where in the Roteiro the pupil is, and a dot for each
/// Aula. It never takes the focus.
class ProgressStrip final : public QWidget
{
    Q_OBJECT
public:
    ProgressStrip();

    void tell(const RoteiroProgress &progress); ///< shows it, in front of the lesson, and says it to screen readers
    void hideAtNextPress(); ///< of a key or a button in any window of this program, unless something is told before

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int textWidth() const;
    void paintDot(QPainter &painter, const QRectF &area, int aula) const;

    RoteiroProgress mProgress;
};

} // namespace quorel
