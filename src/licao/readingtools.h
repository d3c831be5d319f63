#pragma once

#include <QIcon>
#include <QWidget>

class QPushButton;

namespace quorel {

/// A loudspeaker as a button's face. @param side  pixels
QIcon loudspeaker(QRgb cor, int side);

/// The buttons for eyes and ears, for the band of the window: read aloud, smaller and larger letters.
class ReadingTools final : public QWidget
{
    Q_OBJECT
public:
    ReadingTools(QRgb cor, QWidget *parent);

    void setReadable(bool readable); ///< without a voice and a recording there is no loudspeaker

signals:
    void read();
    void zoom(int steps); ///< -1 or 1

private:
    QPushButton *button(const QString &name, const QString &face, const QString &tip);

    QPushButton *mRead; ///< children
    QPushButton *mSmaller;
    QPushButton *mLarger;
};

} // namespace quorel
