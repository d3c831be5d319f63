#!/usr/bin/env python3
"""Fills the sample's register with four weeks of lessons: historico.py REGISTER BLOCKS TOOL…

Each pupil, the generic one too, gets rows of the log like those that lessons leave, up to yesterday, so that the
window of performance has something to show. The answers are drawn by lot, the same ones each time. BLOCKS is the directory of the levels' block files, TOOL the command line of
quorel-blocos, which reads them.
"""

import json
import random
import re
import sqlite3
import subprocess
import sys
from collections import namedtuple
from datetime import date, datetime, time, timedelta
from pathlib import Path

GENERICO = 9999
DIAS = 28
NOMES = {"PO": "Português", "MA": "Matemática", "CI": "Ciências", "DE": "Desenvolvimento Sensório Motor"}  # reported
# A question with options or an expected answer, the seventh field.
EXERCICIO = re.compile(r"<VOA>\([1-9]|<VAA>(?:[^\t<]*\t){6}[^\t<]")

Roteiro = namedtuple("Roteiro", "cod nome exercicios")  # how many of its lessons are exercises


class Blocos:
    """The Roteiros of block files, each file read once."""

    def __init__(self, pasta, ferramenta):
        self.pasta = Path(pasta)
        self.ferramenta = ferramenta
        self.lidos = {}

    def roteiros(self, arquivo):
        if arquivo not in self.lidos:
            dito = subprocess.run([*self.ferramenta, "lista", str(arquivo), "--json"], check=True, stdout=subprocess.PIPE)
            lidos = (Roteiro(r["cod"], r["nome"], sum(1 for aula in r["aulas"] if EXERCICIO.search(aula["linha"])))
                     for r in json.loads(dito.stdout)["roteiros"])
            self.lidos[arquivo] = [r for r in lidos if r.nome != "CALC" and r.exercicios]
        return self.lidos[arquivo]

    def dos_niveis(self, niveis):
        """Discipline's name → its Roteiros, those that have exercises."""
        achados = {}
        for nivel in niveis:
            for arquivo in sorted((self.pasta / nivel).glob("*.edb")):
                nome = NOMES.get(arquivo.stem[4:6])
                if nome and self.roteiros(arquivo):
                    achados.setdefault(nome, []).extend(self.roteiros(arquivo))
        return achados


def respostas(sorte, roteiro):
    """As the lessons report them: a letter for each try."""
    tentativas = []
    for _ in range(roteiro.exercicios):
        tentativas += ["E"] * sorte.choice((0, 0, 0, 0, 1, 2)) + ["A"]
    return "".join(letra + ":" for letra in tentativas)


def dias_de_aula(hoje):
    dias = (hoje - timedelta(days=n) for n in range(DIAS, 0, -1))
    return [dia for dia in dias if dia.weekday() < 5]


def linhas_do_aluno(sorte, escolha, hoje):
    """(date, code, LG_Resp) of one pupil, oldest first."""
    for dia in dias_de_aula(hoje):
        hora = datetime.combine(dia, time(8, 0))
        for _ in range(sorte.choice((1, 1, 2))):
            hora += timedelta(minutes=sorte.randint(5, 70), seconds=sorte.randint(0, 59))
            disciplina = sorte.choice(sorted(escolha))
            roteiro = sorte.choice(escolha[disciplina])
            yield (hora.strftime("%Y-%m-%d %H:%M:%S"), roteiro.cod,
                   f"{disciplina}<disc>{roteiro.nome}<rot>{respostas(sorte, roteiro)}")


def preenche(cadastro, blocos, hoje):
    alunos = cadastro.execute("SELECT CLxAL.AL_Cod, CLxAL.CL_Cod, CL_Nome FROM CLxAL JOIN CL_Classes USING (CL_Cod)")
    pares = [(aluno, classe, ("I1",) if nome.startswith("Infantil") else ("F1",)) for aluno, classe, nome in alunos
             if aluno != GENERICO]
    for aluno, classe, niveis in pares + [(GENERICO, GENERICO, ("F1", "I1"))]:
        for data, codigo, texto in linhas_do_aluno(random.Random(aluno), blocos.dos_niveis(niveis), hoje):
            cadastro.execute("INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, LG_Resp) "
                             "VALUES (?, ?, ?, ?, ?)", (aluno, classe, data, codigo, texto))


def main():
    if len(sys.argv) < 4:
        sys.exit(__doc__.splitlines()[0])
    cadastro = sqlite3.connect(sys.argv[1])
    with cadastro:
        preenche(cadastro, Blocos(sys.argv[2], sys.argv[3:]), date.today())
    cadastro.close()


if __name__ == "__main__":
    main()
