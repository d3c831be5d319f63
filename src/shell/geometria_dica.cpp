#include "shell/geometria_dica.h"

namespace quorel {

static constexpr QStringView kFimLinha = u"\r\n";
static constexpr double kLetrasPorLinha = 25; // the tip's box is taken to be that wide
static constexpr double kLinhaAMenos = 229; // twips less for each line break
static constexpr double kSobraRoteiro = 100; // twips
static constexpr double kAvanco = 55; // twips between picture and tip, sideways

double TextHeight(QStringView texto, double alturaLinha)
{
    return double(texto.count(kFimLinha) + 1) * alturaLinha;
}

// The division is not a whole one: 30 letters are 2.2 lines.
static double linhas(QStringView texto)
{
    return double(texto.size()) / kLetrasPorLinha + 1;
}

double alturaDicaDisciplina(QStringView texto, double alturaTexto)
{
    const auto quebras = texto.count(kFimLinha);
    if (quebras < 1)
        return linhas(texto) * alturaTexto;
    return linhas(texto) * (alturaTexto - kLinhaAMenos * double(quebras));
}

double alturaDicaRoteiro(QStringView texto, double alturaTexto)
{
    const double altura = alturaDicaDisciplina(texto, alturaTexto);
    return texto.contains(kFimLinha) ? altura + kSobraRoteiro : altura;
}

Lugar lugarDaDica(const Lugar &figura, const Lugar &dica, const Lugar &janela, double recuo)
{
    Lugar lugar = dica;
    const double acima = figura.Top - dica.Height - recuo;
    const double abaixo = figura.Top + figura.Height - recuo;
    if (janela.Width / 2 <= figura.Left) {
        lugar.Left = figura.Left - dica.Width + kAvanco;
        lugar.Top = janela.Height / 2 >= figura.Top ? abaixo : acima;
        return lugar;
    }
    lugar.Left = figura.Left + figura.Width + kAvanco;
    // Kept: at exactly half the height a picture on the left counts as lower, one on the right as upper.
    lugar.Top = janela.Height / 2 <= figura.Top ? acima : abaixo;
    return lugar;
}

} // namespace quorel
