#!/usr/bin/env python3
"""Lays out the sample installation, but for its blocks and its register: monta.py [--licao PROGRAMA] DESTINO

DESTINO/windows becomes the directory that QUOREL_WINDIR is set to. Only what an earlier run made is replaced or taken
away; whatever the shell, a teacher or another program left there, or changed, stays. DESTINO/feito.json remembers what
was made.
"""

import argparse
import hashlib
import json
import shutil
import sys
from pathlib import Path

import ajuda

AQUI = Path(__file__).resolve().parent
PROGRAMAS = ("Zeto.exe", "Desenho.exe", "Desenhos.exe", "Vrel.exe", "Livros.exe", "Calc.exe")


def soma(dados):
    return hashlib.sha256(dados).hexdigest()


class Obra:
    """What is laid out below a directory, and what the run before laid there."""

    def __init__(self, destino):
        self.destino = destino
        self.lista = destino / "feito.json"
        self.antes = json.loads(self.lista.read_text()) if self.lista.is_file() else {}
        self.agora = {}

    def e_nosso(self, alvo):
        """Whether a file is as an earlier run left it."""
        return self.antes.get(alvo.relative_to(self.destino).as_posix()) == soma(alvo.read_bytes())

    def grava(self, alvo, dados):
        """Writes bytes where there is nothing, or what an earlier run made; a file that holds them keeps its time."""
        alvo.parent.mkdir(parents=True, exist_ok=True)
        igual = alvo.is_file() and alvo.read_bytes() == dados
        if not igual and alvo.exists() and not self.e_nosso(alvo):
            print(f"monta.py: {alvo} não foi feito aqui e fica como está", file=sys.stderr)
            return
        if not igual:
            alvo.write_bytes(dados)
        self.agora[alvo.relative_to(self.destino).as_posix()] = soma(dados)

    def termina(self):
        """Takes away what has no source any more: the shell would still list it."""
        for velho in self.antes.keys() - self.agora.keys():
            alvo = self.destino / velho
            if alvo.is_file() and self.e_nosso(alvo):
                alvo.unlink()
        self.lista.write_text(json.dumps(self.agora, indent=0, sort_keys=True))


def lugar_da_figura(nome):
    """Fig/<first character>/<fifth character, or _>/<name>, as the media lookup asks for it."""
    radical = nome.partition(".")[0]
    return Path("Fig", radical[0], radical[4] if len(radical) > 4 else "_", nome)


def monta_midia(obra, raiz):
    for pasta, lugar in (("figuras", lugar_da_figura), ("sons", lambda nome: Path("Som", nome[0], nome))):
        for fonte in sorted((AQUI / pasta).glob("*")):
            if fonte.suffix.lower() in (".gif", ".bmp", ".wav"):
                obra.grava(raiz / lugar(fonte.name.upper()), fonte.read_bytes())
    for pasta in ("Fig", "Som", "Video"):
        (raiz / pasta).mkdir(parents=True, exist_ok=True)


def monta_textos(obra, quorel):
    """The help is RTF, which opens anywhere under its .doc name."""
    texto = (AQUI / "textos" / "ajuda.txt").read_text(encoding="utf-8")
    obra.grava(quorel / "DBBLOCOS" / "help.doc", ajuda.rtf(texto))
    for fonte in sorted((AQUI / "textos" / "MatDid").glob("*")):
        obra.grava(quorel / "DBBLOCOS" / "MatDid" / fonte.name, fonte.read_bytes())
    for fonte in sorted((AQUI / "arqs").glob("*.htm")):
        obra.grava(quorel / "Arqs" / fonte.name, fonte.read_bytes())


def monta_programas(obra, exe, licao):
    """The player under each name. Links, so that a new build needs no new layout; copies where links aren't had."""
    exe.mkdir(parents=True, exist_ok=True)
    for nome in PROGRAMAS:
        alvo = exe / nome
        if alvo.is_symlink():
            alvo.unlink()
        if not alvo.exists():
            try:
                alvo.symlink_to(licao.resolve())
                continue
            except OSError:
                pass
        obra.grava(alvo, licao.read_bytes())
        shutil.copymode(licao, alvo)


def monta(destino, licao=None):
    windows = Path(destino) / "windows"
    quorel = windows / "QUOREL2001"
    for pasta in ("exe", "cfg", "zeto_mm", "DBBLOCOS/Jogos", "Arqs"):
        (quorel / pasta).mkdir(parents=True, exist_ok=True)
    for nivel in sorted(pasta.name for pasta in (AQUI / "blocos").iterdir() if pasta.is_dir()):
        (quorel / "DBBLOCOS" / nivel).mkdir(exist_ok=True)  # the blocks are made into it by quorel-blocos
    (windows / "Temp").mkdir(exist_ok=True)
    obra = Obra(Path(destino))
    monta_midia(obra, quorel / "zeto_mm")
    monta_textos(obra, quorel)
    if licao:
        monta_programas(obra, quorel / "exe", Path(licao))
    obra.termina()


def main():
    args = argparse.ArgumentParser(description="Monta a instalação de exemplo.")
    args.add_argument("destino", help="diretório da instalação; windows/ fica dentro dele")
    args.add_argument("--licao", metavar="PROGRAMA", help="programa que faz as vezes dos programas de exercícios")
    opcoes = args.parse_args()
    try:
        monta(opcoes.destino, opcoes.licao)
    except (OSError, ValueError) as erro:
        sys.exit(f"monta.py: {erro}")


if __name__ == "__main__":
    main()
