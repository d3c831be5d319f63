#!/bin/sh
# Draws the pictures of the windows from their SVG sources, at 100 % and 200 %. Run it after changing a source.
set -e
cd "$(dirname "$0")"
desenha() { # source, width, name of the picture
    rsvg-convert -w "$2" -o "png/$3.png" "$1.svg"
    rsvg-convert -w $(($2 * 2)) -o "png/$3@2x.png" "$1.svg"
}
mkdir -p png
for n in 01 02 03 04 05 06 07 08 09 10; do desenha "bloco_$n" 81 "bloco_$n"; done
for f in fundo_principal fundo_blocos; do desenha $f 530 $f; done
desenha fundo_painel 220 fundo_painel
desenha fundo_atencao 260 fundo_atencao
desenha fundo_cadastro 484 fundo_cadastro
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
