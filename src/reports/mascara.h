#pragma once

#include <QLineEdit>

namespace quorel {

/// A masked box of a date: two digits each for day, month and year. What is not typed shows as "_".
class MaskEdBox final : public QLineEdit
{
    Q_OBJECT
public:
    explicit MaskEdBox(QWidget *parent);

    QString Text() const { return displayText(); } ///< as it shows, the slashes and "_" included

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
};

} // namespace quorel
