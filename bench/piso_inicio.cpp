// The floor of the start: a window with 12 picture buttons of 81 by 81 and nothing else.
#include <QApplication>
#include <QIcon>
#include <QPixmap>
#include <QPushButton>
#include <QWidget>

int main(int argc, char **argv)
{
    constexpr int kButtons = 12;
    constexpr int kColumns = 4;
    constexpr int kSide = 81; // pixels
    const QApplication app(argc, argv);
    QWidget window;
    window.setFixedSize(530, 591);
    for (int i = 0; i < kButtons; ++i) {
        const QPixmap picture(QStringLiteral(QUOREL_SOURCE "/src/visual/figuras/png/bloco_%1.png")
                                  .arg(i % 10 + 1, 2, 10, QLatin1Char('0')));
        auto *button = new QPushButton(QIcon(picture), QString(), &window);
        button->setIconSize({kSide, kSide});
        button->setGeometry(20 + (i % kColumns) * 120, 20 + (i / kColumns) * 120, kSide, kSide);
    }
    window.show();
    return QApplication::exec();
}
