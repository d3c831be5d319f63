// A program that is not on the bus, for the tests of windows seen through the X server.
//   janela_x11 TITLE
#include <QApplication>
#include <QWidget>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QWidget janela;
    janela.setWindowTitle(QApplication::arguments().value(1));
    janela.setMinimumSize(160, 90);
    janela.setGeometry(150, 120, 400, 300);
    janela.show();
    return QApplication::exec();
}
