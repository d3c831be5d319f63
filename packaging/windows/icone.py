#!/usr/bin/env python3
"""Packs pictures into an icon as Windows knows it: icone.py DESTINO.ico PICTURE.png…"""

import struct
import sys

CABECA = struct.Struct("<HHH")  # reserved, type 1, how many
ENTRADA = struct.Struct("<BBBBHHII")  # width, height, colours, reserved, planes, bits, bytes, where


def main(destino, nomes):
    figuras = [open(nome, "rb").read() for nome in nomes]
    lugar = CABECA.size + ENTRADA.size * len(figuras)
    entradas = b""
    for figura in figuras:
        largura, altura = struct.unpack(">II", figura[16:24])  # of the PNG's first block
        entradas += ENTRADA.pack(largura % 256, altura % 256, 0, 0, 1, 32, len(figura), lugar)
        lugar += len(figura)
    with open(destino, "wb") as saida:
        saida.write(CABECA.pack(0, 1, len(figuras)) + entradas + b"".join(figuras))


main(sys.argv[1], sys.argv[2:])
