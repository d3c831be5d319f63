#!/bin/sh
# Draws all figures anew beside this script. Needs rsvg-convert and ImageMagick's convert; only who changes a drawing
# has to run it, the pictures are kept in the repository.
set -eu
aqui=$(cd "$(dirname "$0")" && pwd)
obra=$(mktemp -d)
trap 'rm -rf "$obra"' EXIT
PYTHONDONTWRITEBYTECODE=1 python3 "$aqui/desenha.py" "$obra"
# The reports' logo is the emblem of the button that calls the suite.
rsvg-convert -w 72 -f svg -o "$obra/QUOREL.svg" "$aqui/../../src/visual/figuras/quorel.svg"
for svg in "$obra"/*.svg; do
    nome=$(basename "$svg" .svg)
    rsvg-convert -o "$obra/$nome.png" "$svg"
    case $nome in
    QUADRA | RETANG) # the lookup also takes BMP
        convert "$obra/$nome.png" -background white -flatten -colors 16 -type Palette "BMP3:$aqui/$nome.BMP" ;;
    *)
        convert "$obra/$nome.png" -background white -flatten -dither None -colors 48 "$aqui/$nome.GIF" ;;
    esac
done
