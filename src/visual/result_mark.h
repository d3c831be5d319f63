#pragma once

class QPainter;
class QRectF;

namespace quorel {

/// Draws what says right (a green disc with a tick) or wrong (a brown square with a cross): told apart by their shapes,
/// in grey too.
void paintResultMark(QPainter &painter, bool right, const QRectF &area);

} // namespace quorel
