#!/usr/bin/env python3
"""Makes the sounds of the sample, 8 bits and 11025 Hz: a bell, two short signals, melodies, clapping hands."""

import math
import random
import wave
from pathlib import Path

TAXA = 11025  # samples a second
NOTAS = {"C": 261.63, "D": 293.66, "E": 329.63, "F": 349.23, "G": 392.0, "A": 440.0, "B": 493.88, "c": 523.25,
         "d": 587.33, "e": 659.25, "g": 783.99, "-": 0.0}


def nota(freq, segundos, queda, parciais=((1, 1.0), (2, 0.35), (3, 0.15))):
    """A tone that dies away: queda is how much of it is gone a second, as an exponent."""
    total = sum(peso for _, peso in parciais)
    amostras = []
    for n in range(int(segundos * TAXA)):
        t = n / TAXA
        ataque = min(1.0, t / 0.008)
        som = sum(peso * math.sin(2 * math.pi * freq * k * t) for k, peso in parciais) / total
        amostras.append(som * ataque * math.exp(-queda * t))
    return amostras


def soma(base, parte, inicio):
    """Lays a part over what is there, from a second on."""
    desde = int(inicio * TAXA)
    base.extend([0.0] * (desde + len(parte) - len(base)))
    for n, valor in enumerate(parte):
        base[desde + n] += valor


def melodia(notas, passo):
    saida = []
    for n, letra in enumerate(notas):
        if NOTAS[letra]:
            soma(saida, nota(NOTAS[letra], passo * 1.8, 3.0), n * passo)
    return saida


def sino():
    parciais = ((1, 1.0), (2.0, 0.6), (2.4, 0.4), (3.0, 0.25), (4.2, 0.2))
    saida = []
    for inicio in (0.0, 0.45):
        soma(saida, nota(620, 1.0, 4.0, parciais), inicio)
    return saida


def palmas():
    """Hands of a class: short bursts of noise, thick at first and thinner to the end."""
    sorte = random.Random(7)
    saida = []
    instante = 0.0
    while instante < 1.5:
        forca = sorte.uniform(0.3, 1.0) * (1.0 - instante / 1.9)
        ruido = [sorte.uniform(-1, 1) * forca * math.exp(-n / 90) for n in range(500)]
        soma(saida, ruido, instante)
        instante += sorte.uniform(0.006, 0.03)
    return saida


def chuva():
    sorte = random.Random(3)
    saida, anterior = [], 0.0
    for n in range(int(1.4 * TAXA)):
        anterior = 0.6 * anterior + 0.4 * sorte.uniform(-1, 1)
        saida.append(anterior * math.sin(math.pi * n / (1.4 * TAXA)))
    return saida


def grava(nome, amostras):
    maior = max(abs(v) for v in amostras) or 1.0
    with wave.open(str(Path(__file__).parent / f"{nome}.wav"), "wb") as arquivo:
        arquivo.setnchannels(1)
        arquivo.setsampwidth(1)
        arquivo.setframerate(TAXA)
        arquivo.writeframes(bytes(int(128 + 110 * v / maior) for v in amostras))


def main():
    grava("SINO", sino())
    grava("PLIM", melodia("ce", 0.12))
    grava("FLAUTA", melodia("CEGcGc", 0.2))
    grava("RODA", melodia("EGcBAGEGFEDC", 0.22))
    grava("TAMBOR", [v for _ in range(3) for v in nota(95, 0.28, 14.0, ((1, 1.0), (1.6, 0.4)))])
    grava("ESCALA", melodia("CDEFGABc", 0.2))
    grava("CHUVA", chuva())
    grava("PALMAS", palmas())


if __name__ == "__main__":
    main()
