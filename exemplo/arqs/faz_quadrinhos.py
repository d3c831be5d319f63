#!/usr/bin/env python3
"""Makes the comic pages beside it from the stories below and the objects of ../figuras; each page stands alone."""

import html
import sys
from pathlib import Path

AQUI = Path(__file__).resolve().parent
sys.path.insert(0, str(AQUI.parent / "figuras"))
sys.dont_write_bytecode = True

import objetos_escola as e  # noqa: E402
import objetos_mundo as m  # noqa: E402
from tracos import grupo  # noqa: E402

# File: (title, panels); a panel is background, objects (drawing, x, y, scale), speech, narration.
HISTORIAS = {
    "escola.htm": ("A mochila perdida", [
        ("#fff1c9", [(e.escola(), 200, 130, 1.2), (e.menina(), 60, 190, 0.8)], "Cadê a minha mochila?", "Na saída, Nina ficou aflita."),
        ("#dff1fb", [(e.menino(), 80, 150, 1.1), (e.relogio(), 230, 90, 0.7)], "Calma! Onde você a usou por último?", "Tobi parou para pensar com ela."),
        ("#e6f6e0", [(e.quadro(), 190, 90, 0.9), (e.menina(), 70, 160, 0.95)], "Na hora do lanche!", "Nina fechou os olhos e lembrou."),
        ("#fde6ee", [(m.arvore(), 220, 120, 1.1), (e.mochila(), 170, 185, 0.55), (e.menino(), 70, 165, 0.95)], "Achamos!", "Embaixo da árvore do pátio estava a mochila vermelha."),
        ("#efe9fb", [(e.menina(), 85, 150, 1.0), (e.menino(), 205, 150, 1.0)], "Obrigada, amigo!", "Quem ajuda a procurar já ajuda a encontrar."),
    ]),
    "semente.htm": ("A semente teimosa", [
        ("#fff1c9", [(e.menina(), 80, 150, 1.0), (m.semente(), 220, 150, 0.7)], "Plantei ontem e nada!", "Nina olhava a terra a toda hora."),
        ("#dff1fb", [(m.chuva(), 220, 90, 0.9), (e.menino(), 80, 150, 1.0)], "Ela precisa de água…", "Veio a chuva e molhou a terra."),
        ("#fff7da", [(m.sol(), 210, 90, 0.9), (e.menino(), 80, 160, 0.95)], "…e também de luz.", "Depois veio o sol."),
        ("#e6f6e0", [(m.joaninha(), 80, 150, 0.6), (m.planta(), 200, 120, 1.0)], "Que cheiro bom!", "Com o tempo nasceram a raiz, o caule e as folhas."),
        ("#fde6ee", [(m.flor(), 215, 125, 1.1), (e.menina(), 85, 150, 1.0)], "Valeu a pena esperar!", "As plantas têm o seu tempo. A gente também."),
    ]),
    "agua.htm": ("A viagem da gota", [
        ("#dff1fb", [(m.rio(), 160, 130, 1.2), (m.gota(), 70, 110, 0.6)], "Eu moro no rio!", "Gotinha vivia passeando pelas pedras."),
        ("#fff7da", [(m.sol(), 220, 80, 0.8), (m.gota(), 110, 130, 0.7)], "Que calor! Estou subindo!", "O sol aqueceu a água, que virou vapor."),
        ("#cfe6f7", [(m.nuvem(), 160, 110, 1.3), (m.gota(), 160, 120, 0.45)], "Quanta gota amiga!", "Lá no alto fazia frio. As gotas se juntaram em uma nuvem."),
        ("#dbe3ee", [(m.chuva(), 170, 100, 1.1), (m.gota(), 70, 170, 0.5)], "Iupi! Lá vou eu!", "A nuvem ficou pesada, e choveu."),
        ("#e6f6e0", [(m.flor(), 220, 130, 1.0), (m.gota(), 90, 140, 0.8)], "E começa tudo outra vez!", "A chuva regou o campo e voltou ao rio. É o ciclo da água."),
    ]),
}
ESTILO = ("body{margin:0;background:#24507e;font-family:Verdana,Arial,sans-serif;color:#33343f}"
          "h1{color:#ffd34e;text-align:center;margin:18px 0 6px;font-size:30px}"
          ".tira{max-width:1020px;margin:0 auto;text-align:center}"
          ".q{display:inline-block;width:310px;margin:8px;background:#fff;border:4px solid #33343f;border-radius:12px;"
          "overflow:hidden;vertical-align:top;text-align:left}"
          ".q svg{display:block;width:100%}.q p{margin:8px 12px 12px;font-size:16px;line-height:1.35;min-height:44px}"
          ".fim{color:#fff;text-align:center;font-size:17px;margin:10px 0 24px}")


def quebra(fala, largura=22):
    linhas = [""]
    for palavra in fala.split():
        if len(linhas[-1]) + len(palavra) > largura:
            linhas.append("")
        linhas[-1] = (linhas[-1] + " " + palavra).strip()
    return linhas


def balao(fala):
    """The speech on top at the left; its tail points down to who speaks."""
    linhas = quebra(fala)
    altura = 16 + 19 * len(linhas)
    largura = 24 + 9.4 * max(map(len, linhas))
    dito = "".join(f'<text x="22" y="{31 + 19 * n}" font-size="15" font-family="Verdana,Arial,sans-serif" fill="#33343f">'
                   f"{html.escape(linha)}</text>" for n, linha in enumerate(linhas))
    rabo = f'<path d="M52 {8 + altura} L66 {26 + altura} L74 {8 + altura}Z" fill="#fff" stroke="#33343f" stroke-width="2"/>'
    return (f'{rabo}<rect x="10" y="10" width="{largura:.0f}" height="{altura}" rx="14" fill="#fff" stroke="#33343f" '
            f'stroke-width="2"/><path d="M54 {9 + altura} L73 {9 + altura}" stroke="#fff" stroke-width="4"/>{dito}')


def quadrinho(fundo, objetos, fala, narra):
    cena = "".join(grupo(desenho, x, y + 20, escala) for desenho, x, y, escala in objetos)
    return (f'<div class="q"><svg viewBox="0 0 300 240" role="img"><rect width="300" height="240" fill="{fundo}"/>{cena}'
            f"{balao(fala)}</svg><p>{html.escape(narra)}</p></div>")


def pagina(titulo, quadros):
    corpo = "\n".join(quadrinho(*q) for q in quadros)
    return (f'<!DOCTYPE html>\n<html lang="pt-BR"><head><meta charset="utf-8"><title>Quadrinhos - {titulo}</title>\n'
            f"<style>{ESTILO}</style></head>\n<body><h1>{titulo}</h1>\n<div class=\"tira\">\n{corpo}\n</div>\n"
            '<p class="fim">Fim! Feche esta janela para continuar o roteiro.</p></body></html>\n')


def main():
    for arquivo, (titulo, quadros) in HISTORIAS.items():
        (AQUI / arquivo).write_text(pagina(titulo, quadros), encoding="utf-8")


if __name__ == "__main__":
    main()
