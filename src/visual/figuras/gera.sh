#!/bin/sh
# Draws the pictures of the windows from their SVG sources, at 100 % and 200 %. Run it after changing a source.
set -e
cd "$(dirname "$0")"
desenha() { # source, width, name of the picture
    rsvg-convert -w "$2" -o "png/$3.png" "$1.svg"
    rsvg-convert -w $(($2 * 2)) -o "png/$3@2x.png" "$1.svg"
}
# A background has few colours; 256 of them are told from all of them by nobody, and read four times as fast.
fundo() { # name of source and picture, width
    desenha "$1" "$2" "$1"
    for f in "png/$1.png" "png/$1@2x.png"; do convert "$f" +dither -treedepth 7 -colors 256 -strip "PNG8:$f"; done
}
mkdir -p png
for n in 01 02 03 04 05 06 07 08 09 10; do desenha "bloco_$n" 81 "bloco_$n"; done
for f in fundo_principal fundo_blocos; do fundo $f 530; done
fundo fundo_painel 220
fundo fundo_atencao 260
fundo fundo_cadastro 484
for f in ajuda desenho revista quorel; do desenha $f 28 $f; done
for f in primeiro anterior proximo ultimo; do desenha $f 22 $f; done
for f in salvar novo excluir cancelar; do desenha $f 28 $f; done
for f in manual voltar; do desenha $f 26 $f; done
for f in cadastro desempenho internet selecionar cadeado; do desenha $f 40 $f; done
for f in planilha grafico imprime fecha; do desenha $f 40 $f; done
for lado in 16 32 48 128; do desenha icone $lado "icone_$lado"; done
{
    echo '<RCC>'
    echo '  <qresource prefix="/quorel">'
    for f in png/*.png; do echo "    <file alias=\"${f#png/}\">$f</file>"; done
    echo '  </qresource>'
    echo '</RCC>'
} > figuras.qrc
