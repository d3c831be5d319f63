#pragma once

#include <QDialog>

namespace quorel {

/// The warning that there is no connection; shown modally, closed by its one button.
class fAtencao final : public QDialog
{
    Q_OBJECT
public:
    explicit fAtencao(QWidget *parent);
};

} // namespace quorel
