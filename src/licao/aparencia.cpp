#include "licao/aparencia.h"

#include "licao/typesize.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>

using namespace Qt::StringLiterals;

namespace quorel {

void vesteAplicacao(QApplication &app)
{
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    QPalette palette(QColor::fromRgb(cores::kFundo));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, QColor::fromRgb(cores::kTexto));
    for (const auto role : {QPalette::Base, QPalette::ToolTipBase, QPalette::AlternateBase})
        palette.setColor(role, QColor::fromRgb(cores::kPapel));
    palette.setColor(QPalette::Window, QColor::fromRgb(cores::kFundo));
    palette.setColor(QPalette::PlaceholderText, QColor::fromRgb(cores::kTextoFraco));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(cores::kBorda));
    QApplication::setPalette(palette);
    QFont font = QApplication::font();
    font.setPixelSize(kLetraBotao);
    QApplication::setFont(font);
    app.setQuitOnLastWindowClosed(false);
}

/// The sheet, with %1 the program's colour, %2 paper, %3 text, %4 border, %5 focus, %6 size of a button's type, %7 of
/// an answer's.
static constexpr char16_t kFolha[] = uR"(
QPushButton { background: %2; color: %1; border: 2px solid %1; border-radius: 10px; padding: 8px 18px;
              font-size: %6px; font-weight: 600; min-height: 28px; }
QPushButton:hover { background: #E8EEF7; }
QPushButton[principal="true"] { background: %1; color: white; }
QPushButton:focus { border: 3px solid %5; padding: 7px 17px; }
QPushButton[principal="true"]:focus { border: 3px solid %5; }
QPushButton:disabled { background: #E5E9EE; color: #5B6673; border: 2px solid #B5BDC7; }
QPushButton[ferramenta="true"] { padding: 0; min-height: 0; border-radius: 8px; font-size: 18px; }
QLineEdit { background: %2; color: %3; border: 2px solid %4; border-radius: 8px; padding: 8px; font-size: %7px; }
QLineEdit:focus { border: 3px solid %5; padding: 7px; }
QScrollArea { background: transparent; border: none; }
)";

QString folhaDeEstilo(Programa programa)
{
    const auto name = [](QRgb color) { return QColor::fromRgb(color).name(); };
    return QString::fromUtf16(kFolha)
        .arg(name(carater(programa).cor), name(cores::kPapel), name(cores::kTexto), name(cores::kBorda),
            name(cores::kFoco))
        .arg(typePixels(kLetraBotao))
        .arg(typePixels(kLetraResposta));
}

QString quebravel(const QString &texto)
{
    constexpr int kLongaDemais = 24; // characters of a word that fit the narrowest place at the largest type
    constexpr QChar kQuebra(0x200B); // a break without width
    QString breakable;
    breakable.reserve(texto.size());
    int run = 0;
    for (const QChar c : texto) {
        run = c.isSpace() ? 0 : run + 1;
        if (run > kLongaDemais) {
            breakable += kQuebra;
            run = 1;
        }
        breakable += c;
    }
    return breakable;
}

} // namespace quorel
