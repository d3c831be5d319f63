#include "visual/aparencia.h"

#include <QApplication>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>
#include <QTranslator>

#include <algorithm>

// A static library's pictures are only linked where somebody asks for them; the macro wants the global namespace.
static void carregaFiguras()
{
    Q_INIT_RESOURCE(figuras);
}

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr double kPixelsPorPonto = 96.0 / 72.0;

static QStringList familias(Tipo tipo)
{
    switch (tipo) {
    case Tipo::Arial:
        return {u"Arial"_s, u"Liberation Sans"_s, u"DejaVu Sans"_s};
    case Tipo::Verdana:
        return {u"Verdana"_s, u"DejaVu Sans"_s};
    case Tipo::CourierNew:
        return {u"Courier New"_s, u"Liberation Mono"_s, u"DejaVu Sans Mono"_s};
    case Tipo::TimesNewRoman:
        return {u"Times New Roman"_s, u"Liberation Serif"_s, u"DejaVu Serif"_s};
    case Tipo::Sistema:
        break;
    }
    return {u"MS Sans Serif"_s, u"Microsoft Sans Serif"_s, u"Arial"_s, u"Liberation Sans"_s, u"DejaVu Sans"_s};
}

/// The first typeface that is there. Qt finds it too, but only after it has asked the system what else comes near the
/// missing ones, for each size anew, which would be a tenth of the whole start.
static QString familia(Tipo tipo)
{
    static const QStringList installed = QFontDatabase::families();
    const QStringList wanted = familias(tipo);
    const auto found =
        std::ranges::find_if(wanted, [](const QString &name) { return installed.contains(name, Qt::CaseInsensitive); });
    return found == wanted.end() ? wanted.front() : *found;
}

QFont fonte(Tipo tipo, double pontos, bool negrito)
{
    QFont font(familia(tipo));
    font.setPixelSize(qRound(pontos * kPixelsPorPonto));
    font.setBold(negrito);
    return font;
}

QPalette paletaPropria()
{
    const QColor janela(0xf0, 0xf0, 0xf0);
    const QColor texto(0x1f, 0x1f, 0x1f);
    const QColor apagado(0x6b, 0x6b, 0x6b);
    QPalette paleta(texto, janela, Qt::white, QColor(0x80, 0x80, 0x80), QColor(0xa0, 0xa0, 0xa0), texto, Qt::white,
        Qt::white, janela);
    paleta.setColor(QPalette::Button, QColor(0xe8, 0xec, 0xf0));
    paleta.setColor(QPalette::AlternateBase, QColor(0xf5, 0xf8, 0xfb));
    paleta.setColor(QPalette::Highlight, QColor(0x1c, 0x5f, 0xb8));
    paleta.setColor(QPalette::HighlightedText, Qt::white);
    paleta.setColor(QPalette::Link, QColor(0x0b, 0x4f, 0x9e));
    paleta.setColor(QPalette::ToolTipBase, QColor::fromRgb(kFundoDica));
    paleta.setColor(QPalette::ToolTipText, texto);
    paleta.setColor(QPalette::PlaceholderText, apagado);
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        paleta.setColor(QPalette::Disabled, papel, apagado);
    return paleta;
}

void pintaFoco(QPainter &painter, const QRectF &area, double raio)
{
    constexpr double kLargura = 2; // pixels
    constexpr double kMeia = kLargura / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor::fromRgb(kCorFoco), kLargura));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(area.adjusted(kMeia, kMeia, -kMeia, -kMeia), raio, raio);
}

namespace {

/// Qt's own style with the windows' ring of focus in the place of its own.
class Estilo final : public QProxyStyle
{
public:
    Estilo() : QProxyStyle(u"Fusion"_s) { }

    void drawPrimitive(
        PrimitiveElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const override
    {
        if (element != PE_FrameFocusRect) {
            QProxyStyle::drawPrimitive(element, option, painter, widget);
            return;
        }
        painter->save();
        pintaFoco(*painter, option->rect);
        painter->restore();
    }
};

} // namespace

// Qt's own texts (the print dialogue, the menus of text boxes) come from its own translations.
static void translateQt()
{
    auto *translator = new QTranslator(qApp);
    if (translator->load(u"qtbase_pt_BR"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
}

void vesteAplicacao()
{
    translateQt();
    QApplication::setStyle(new Estilo); // the application owns it
    QApplication::setPalette(paletaPropria());
    QApplication::setWindowIcon(iconeDoPrograma());
}

QPixmap figura(const QString &nome)
{
    carregaFiguras();
    return QPixmap(u":/quorel/%1.png"_s.arg(nome));
}

QImage imagem(const QString &nome)
{
    carregaFiguras();
    return QImage(u":/quorel/%1.png"_s.arg(nome));
}

QIcon face(const QString &nome)
{
    carregaFiguras();
    return QIcon(u":/quorel/%1.png"_s.arg(nome));
}

QIcon iconeDoPrograma()
{
    carregaFiguras();
    QIcon icone;
    for (const auto &lado : {u"16"_s, u"32"_s, u"48"_s})
        icone.addFile(u":/quorel/icone_%1.png"_s.arg(lado));
    return icone;
}

} // namespace quorel
