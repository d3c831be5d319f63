#!/usr/bin/env python3
"""Writes the SVG of every figure: NAME.svg, a lesson's figure of 240 by 180, and RNAME.svg, a button of 85 by 85.

desenha.py DIRETÓRIO; desenha.sh turns them into the GIF and BMP files that stand beside it.
"""

import inspect
import sys
from pathlib import Path

import objetos_escola
import objetos_mundo
from tracos import AZUL, grupo, ret, circ

NOMES = {"professora": "PROFA", "passaro": "AVE", "borboleta": "BORBO", "joaninha": "JOANA", "tartaruga": "TARTA",
         "melancia": "MELANCI", "caravela": "CARAV", "rosa_ventos": "ROSA", "semaforo": "SINAL", "bandeira": "BANDEIR",
         "estrelinha": "ESTRELA", "triangulo": "TRIANG", "retangulo": "RETANG", "lixeiras": "LIXO", "quadrado": "QUADRA"}
FUNDOS = ("#fff6dc", "#e3f3fb", "#e9f7e4", "#fdeaf0", "#f0eafb")
LADRILHOS = ("#ffe08a", "#a9dcf5", "#b9e5ae", "#f9c1cf", "#d3c2f0")
CONTADAS = (("lapis", 5), ("lapis", 8), ("maca", 7), ("bola", 3), ("estrelinha", 10), ("ovo", 6), ("flor", 4),
            ("peixe", 9), ("pipa", 2), ("gato", 3))


def objetos():
    """Name of the figure -> its drawing, of all functions of the two modules that draw without an argument."""
    saida = {}
    for modulo in (objetos_escola, objetos_mundo):
        for nome, funcao in inspect.getmembers(modulo, inspect.isfunction):
            propria = funcao.__module__ == modulo.__name__
            if propria and all(p.default is not p.empty for p in inspect.signature(funcao).parameters.values()):
                saida[NOMES.get(nome, nome.upper())] = funcao()
    return saida


def svg(largura, altura, dentro):
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{largura}" height="{altura}" '
            f'viewBox="0 0 {largura} {altura}">{dentro}</svg>\n')


def cena(nome, dentro):
    fundo = FUNDOS[sum(map(ord, nome)) % len(FUNDOS)]
    if nome in ("LUA", "ESTRELA"):
        fundo = AZUL
    if nome in ("NUVEM", "CHUVA", "ARCO", "GALINHA", "AVE", "OVO", "VENTO"):
        fundo = "#9fd4f3"
    return svg(240, 180, ret(0, 0, 240, 180, fundo, 14) + grupo(dentro, 120, 90))


def botao(nome, dentro):
    cor = LADRILHOS[sum(map(ord, nome)) % len(LADRILHOS)]
    return svg(85, 85, ret(0, 0, 85, 85, "#ffffff") + ret(1, 1, 83, 83, cor, 14) + circ(42.5, 42.5, 37, "#ffffff", 'opacity="0.55"')
               + grupo(dentro, 42.5, 42.5, 0.42))


def contada(dentro, quantos):
    """The object so many times, in rows that can be counted with a finger."""
    linhas = 1 if quantos <= 3 else 2
    por_linha = -(-quantos // linhas)
    escala = min(0.42, 1.3 / por_linha)
    saida = ""
    for n in range(quantos):
        linha, coluna = divmod(n, por_linha)
        nesta = min(por_linha, quantos - linha * por_linha)
        x = (coluna - (nesta - 1) / 2) * 220 / por_linha
        saida += grupo(dentro, x, (linha - (linhas - 1) / 2) * 80, escala)
    return saida


def main():
    destino = Path(sys.argv[1])
    desenhos = objetos()
    for nome, dentro in desenhos.items():
        (destino / f"{nome}.svg").write_text(cena(nome, dentro), encoding="utf-8")
        (destino / f"R{nome[:7]}.svg").write_text(botao(nome, dentro), encoding="utf-8")
    for funcao, quantos in CONTADAS:
        nome = NOMES.get(funcao, funcao.upper())
        (destino / f"{nome[:6]}{quantos}.svg").write_text(cena("X", contada(desenhos[nome], quantos)), encoding="utf-8")


if __name__ == "__main__":
    main()
