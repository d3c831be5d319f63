#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

class QWindow;

namespace quorel {

/// Which of our own windows is the active one, those of other folders included, boxes not: so that coming back from a
/// box or from another program is no activation.
class JanelaAtiva final : public QObject
{
    Q_OBJECT
public:
    JanelaAtiva();

    /// A window is being shown and activated by the program. Until the desktop follows, what it activates meanwhile (a
    /// neighbour of the window just hidden) does not count.
    void pede(QWidget &janela);

    /// The desktop has activated a window. @return whether another of ours was the active one
    bool muda(QWidget &janela);

private:
    void observa(QWindow *window);

    QPointer<QWidget> mAtiva;
    bool mPedida = false;
};

} // namespace quorel
