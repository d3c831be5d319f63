#pragma once

#include <QColor>
#include <QString>

#include <span>

class QPainter;
class QRectF;

namespace quorel {

/// The five programs that the player is installed as.
enum class Programa { Zeto, Desenho, Vrel, Livros, Calc };

/// What tells one from another.
struct CaraterRec
{
    Programa programa;
    QStringView arquivo; ///< file name without its ending
    QStringView titulo; ///< of the window, by which the shell finds it
    QStringView interna; ///< title of the inner window; empty when it has none
    QStringView nome; ///< said to the pupil
    QStringView convite; ///< what it does, for who starts it alone
    QRgb cor; ///< of the band and the buttons; white on it and it on white read well
};

const CaraterRec &carater(Programa programa);
std::span<const CaraterRec> carateres(); ///< all five

/// @param arquivo  name or path that the program was started under, of either system
/// @return the program by the name without directory and ".exe", case apart; "Desenhos" is Desenho too, and a name of
///         none of them is Zeto
Programa programaDe(QStringView arquivo);

/// What the command line says. A slash starts a switch, whose value ends at the next one.
struct ParametrosRec
{
    QString Cfg; ///< path of the configuration with backslashes; empty when there is none
    bool Gancho = false; ///< a shell drives this program
    bool operator==(const ParametrosRec &) const = default;
};

/// @param linha  the raw command line; switches are known in either case, unknown ones are passed over
ParametrosRec leParametros(const QString &linha);

/// Draws the program's sign.
void pintaSinal(QPainter &painter, Programa programa, const QRectF &area);

} // namespace quorel
