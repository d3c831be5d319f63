#pragma once

#include <QImage>
#include <QString>

namespace quorel {

/// What a figure is for, which decides its size.
enum class FigureUse {
    Page, ///< on a page or an option: at most 400 by 300 pixels, proportions kept
    Button, ///< of a Roteiro: 85 by 85, the middle of the picture
};

/// Why a name can't be that of a figure; empty for a good one. The lookup takes up to 8 characters without ".", "-" and
/// blanks.
QString faultOfFigureName(const QString &name);

/// The picture as a lesson shows it: upright, no larger than its use needs, on white where it was transparent. Nothing
/// but pixels is taken over, so place, date and camera of a photo stay behind.
/// @return null, and a sentence, for a file that is no picture or larger than 100 million pixels
QImage figureFrom(const QString &photo, FigureUse use, QString &fault);

/// Writes a figure where the lookup finds it below the media root that gConfig names.
/// @param replace  also over a figure that is there @return native path; empty, and a sentence, on failure
QString putFigure(const QImage &figure, const QString &name, bool replace, QString &fault);

} // namespace quorel
