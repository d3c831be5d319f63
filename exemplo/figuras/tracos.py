"""Strokes and palette of the figures: each returns a piece of SVG. An object stands in a square of 160 around (0, 0)."""

import math

AZUL, CEU, MARINHO = "#3f8fd6", "#bfe3f7", "#24507e"
VERDE, MATO, FOLHA = "#58b368", "#37864a", "#8fd18a"
AMARELO, OURO, LARANJA = "#ffd34e", "#e8a92c", "#f5903d"
VERMELHO, VINHO, ROSA = "#e5524f", "#a93338", "#f7a8b8"
ROXO, LILAS, MARROM, MADEIRA, AREIA = "#7e57b5", "#c7b0e6", "#7a4b2a", "#b97a45", "#f1d9a8"
PRETO, CINZA, PRATA, BRANCO, PELE, MORENA = "#33343f", "#8b90a0", "#d5d9e2", "#ffffff", "#f3c6a0", "#9c6440"


def circ(x, y, raio, cor, extra=""):
    return f'<circle cx="{x}" cy="{y}" r="{raio}" fill="{cor}" {extra}/>'


def elip(x, y, rx, ry, cor, giro=0):
    return f'<ellipse cx="{x}" cy="{y}" rx="{rx}" ry="{ry}" fill="{cor}" transform="rotate({giro} {x} {y})"/>'


def ret(x, y, w, h, cor, canto=0, giro=0):
    meio = f"{x + w / 2} {y + h / 2}"
    return f'<rect x="{x}" y="{y}" width="{w}" height="{h}" rx="{canto}" fill="{cor}" transform="rotate({giro} {meio})"/>'


def area(d, cor):
    return f'<path d="{d}" fill="{cor}"/>'


def linha(d, cor=PRETO, grossura=4):
    return (f'<path d="{d}" fill="none" stroke="{cor}" stroke-width="{grossura}" stroke-linecap="round" '
            'stroke-linejoin="round"/>')


def poli(pontos, cor):
    return f'<polygon points="{pontos}" fill="{cor}"/>'


def texto(x, y, tamanho, dito, cor=PRETO):
    return (f'<text x="{x}" y="{y}" font-family="DejaVu Sans" font-weight="bold" font-size="{tamanho}" '
            f'text-anchor="middle" fill="{cor}">{dito}</text>')


def grupo(dentro, x=0, y=0, escala=1.0, giro=0):
    return f'<g transform="translate({x} {y}) rotate({giro}) scale({escala})">{dentro}</g>'


def estrela(raio, cor, pontas=5, dentro=0.45):
    passos = [(raio if n % 2 == 0 else raio * dentro, math.pi * n / pontas - math.pi / 2) for n in range(2 * pontas)]
    return poli(" ".join(f"{r * math.cos(a):.1f},{r * math.sin(a):.1f}" for r, a in passos), cor)


def olhos(x, y, afasta=14, raio=4):
    return "".join(circ(x + lado * afasta, y, raio, PRETO) + circ(x + lado * afasta + 1.4, y - 1.4, raio / 3, BRANCO)
                   for lado in (-1, 1))


def sorriso(x, y, largura=12, cor=PRETO, grossura=3.5):
    return linha(f"M{x - largura} {y} Q{x} {y + largura} {x + largura} {y}", cor, grossura)


def espelha(dentro):
    """The piece and its image on the other side of the middle."""
    return dentro + f'<g transform="scale(-1 1)">{dentro}</g>'


def gira(dentro, vezes):
    return "".join(grupo(dentro, giro=360 * n / vezes) for n in range(vezes))
