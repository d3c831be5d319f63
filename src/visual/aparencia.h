#pragma once

#include <QFont>
#include <QIcon>
#include <QImage>
#include <QPalette>
#include <QPixmap>
#include <QRectF>

class QPainter;

namespace quorel {

// Of the 16 classic colours, those that the windows name.
inline constexpr QRgb kAzulClaro = 0xff0000ff; ///< colour 9
inline constexpr QRgb kVermelhoClaro = 0xffff0000; ///< colour 12
inline constexpr QRgb kAzul = 0xff0000ff; ///< titles and months
inline constexpr QRgb kVermelho = 0xffc00000; ///< heading of the months
inline constexpr QRgb kLaranjaPalido = 0xffffe0c0; ///< panel
inline constexpr QRgb kFundoDica = 0xffffffe1; ///< tool tips

inline constexpr QRgb kCorFoco = 0xff103a8c;

/// The typefaces of the windows. Where one is missing, a free one of the same measures takes its place.
enum class Tipo { Sistema, Arial, Verdana, CourierNew, TimesNewRoman };

/// A font by its size in points; it is set in pixels (96 to the inch), so no screen setting moves the layout.
QFont fonte(Tipo tipo, double pontos, bool negrito = false);

/// The windows' own colours: the same on a dark desktop.
QPalette paletaPropria();

inline constexpr double kRaioFoco = 2; ///< pixels

/// The ring of the control that has the focus, the same in all windows. @param area  what it runs round, in pixels; the
/// line lies inside. @param raio  of its corners, pixels
void pintaFoco(QPainter &painter, const QRectF &area, double raio = kRaioFoco);

/// Gives the whole application those colours, a style that honours them, and Qt's own texts in Portuguese where its
/// translations are installed.
void vesteAplicacao();

/// A picture of the set, sharp on dense screens too. @param nome  without extension, "bloco_01"
QPixmap figura(const QString &nome);

/// The same as it is stored, for screens of usual density.
QImage imagem(const QString &nome);

/// A button face of the set. @param nome  as above
QIcon face(const QString &nome);

/// The application's icon, in the sizes that desktops show a window's in.
QIcon iconeDoPrograma();

} // namespace quorel
