// The floor of the start: a window with 12 picture buttons of 81 by 81 and nothing else, laid out by Qt. With the
// argument "vazia" an empty window, to see what the buttons add: two fifths, for a layout asks the font for sizes.
#include <QApplication>
#include <QGridLayout>
#include <QIcon>
#include <QPixmap>
#include <QPushButton>
#include <QWidget>

static void addButtons(QWidget &window)
{
    constexpr int kButtons = 12;
    constexpr int kColumns = 4;
    constexpr int kSide = 81; // pixels
    auto *grid = new QGridLayout(&window);
    for (int i = 0; i < kButtons; ++i) {
        const QPixmap picture(QStringLiteral(QUOREL_SOURCE "/src/visual/figuras/png/bloco_%1.png")
                                  .arg(i % 10 + 1, 2, 10, QLatin1Char('0')));
        auto *button = new QPushButton(QIcon(picture), QString());
        button->setIconSize({kSide, kSide});
        grid->addWidget(button, i / kColumns, i % kColumns);
    }
}

int main(int argc, char **argv)
{
    const QApplication app(argc, argv);
    QWidget window;
    window.setFixedSize(530, 591);
    if (argc < 2)
        addButtons(window);
    window.show();
    return QApplication::exec();
}
