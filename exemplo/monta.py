#!/usr/bin/env python3
"""Lays out the sample installation: monta.py [--licao PROGRAMA] DESTINO

DESTINO/windows becomes the directory that QUOREL_WINDIR is set to. What the shell or a teacher left there (register,
configuration, chosen list) stays; everything that comes from the sources is written anew when it differs.
"""

import argparse
import shutil
import sys
from pathlib import Path

import ajuda
import blocos

AQUI = Path(__file__).resolve().parent
PROGRAMAS = ("Zeto.exe", "Desenho.exe", "Desenhos.exe", "Vrel.exe", "Livros.exe", "Calc.exe")


def grava(destino, dados):
    """Writes bytes; a file that holds them already keeps its time."""
    destino.parent.mkdir(parents=True, exist_ok=True)
    if not destino.is_file() or destino.read_bytes() != dados:
        destino.write_bytes(dados)


def esvazia_sobras(pasta, escritos):
    """Files of an earlier layout whose source is gone would still be listed by the shell."""
    for velho in pasta.rglob("*"):
        if velho.is_file() and velho not in escritos:
            velho.unlink()


def lugar_da_figura(nome):
    """Fig/<first character>/<fifth character, or _>/<name>, as the media lookup asks for it."""
    radical = nome.partition(".")[0]
    return Path("Fig", radical[0], radical[4] if len(radical) > 4 else "_", nome)


def monta_midia(raiz):
    escritos = set()
    for pasta, lugar in (("figuras", lugar_da_figura), ("sons", lambda nome: Path("Som", nome[0], nome))):
        for fonte in sorted((AQUI / pasta).glob("*")):
            if fonte.suffix.lower() in (".gif", ".bmp", ".wav"):
                alvo = raiz / lugar(fonte.name.upper())
                grava(alvo, fonte.read_bytes())
                escritos.add(alvo)
    esvazia_sobras(raiz, escritos)
    for pasta in ("Fig", "Som", "Video"):
        (raiz / pasta).mkdir(parents=True, exist_ok=True)


def monta_blocos(raiz):
    for pasta in sorted(p for p in (AQUI / "blocos").iterdir() if p.is_dir()):
        nivel, escritos = pasta.name, set()
        for fonte in sorted(pasta.glob("*.txt")):
            texto = blocos.texto_do_bloco(blocos.le_bloco(fonte), nivel, fonte.stem[4:6].upper())
            alvo = raiz / nivel / blocos.nome_edb(fonte, nivel)
            grava(alvo, texto.encode(blocos.CODEC))
            escritos.add(alvo)
        esvazia_sobras(raiz / nivel, escritos)
    (raiz / "Jogos").mkdir(parents=True, exist_ok=True)


def monta_textos(quorel):
    """The help is RTF, which opens anywhere under its .doc name."""
    grava(quorel / "DBBLOCOS" / "help.doc", ajuda.rtf((AQUI / "textos" / "ajuda.txt").read_text(encoding="utf-8")))
    for fonte in sorted((AQUI / "textos" / "MatDid").glob("*")):
        grava(quorel / "DBBLOCOS" / "MatDid" / fonte.name, fonte.read_bytes())
    for fonte in sorted((AQUI / "arqs").glob("*.htm")):
        grava(quorel / "Arqs" / fonte.name, fonte.read_bytes())


def monta_programas(exe, licao):
    """The player under each name. Links, so that a new build needs no new layout; copies where links aren't had."""
    exe.mkdir(parents=True, exist_ok=True)
    for nome in PROGRAMAS:
        alvo = exe / nome
        alvo.unlink(missing_ok=True)
        try:
            alvo.symlink_to(licao.resolve())
        except OSError:
            shutil.copy2(licao, alvo)


def monta(destino, licao=None):
    windows = Path(destino) / "windows"
    quorel = windows / "QUOREL2001"
    for pasta in ("exe", "cfg", "zeto_mm", "DBBLOCOS", "Arqs"):
        (quorel / pasta).mkdir(parents=True, exist_ok=True)
    (windows / "Temp").mkdir(exist_ok=True)
    monta_midia(quorel / "zeto_mm")
    monta_blocos(quorel / "DBBLOCOS")
    monta_textos(quorel)
    if licao:
        monta_programas(quorel / "exe", Path(licao))


def main():
    args = argparse.ArgumentParser(description="Monta a instalação de exemplo.")
    args.add_argument("destino", help="diretório da instalação; windows/ fica dentro dele")
    args.add_argument("--licao", metavar="PROGRAMA", help="programa que faz as vezes dos programas de exercícios")
    opcoes = args.parse_args()
    try:
        monta(opcoes.destino, opcoes.licao)
    except (OSError, blocos.ErroFonte, UnicodeError) as erro:
        sys.exit(f"monta.py: {erro}")


if __name__ == "__main__":
    main()
