#!/usr/bin/env python3
"""Fills the sample's register with four weeks of lessons: historico.py REGISTER

Each pupil, the generic one too, gets rows of the log like those that lessons leave, up to yesterday, so that the
window of performance has something to show. The answers are drawn by lot, the same ones each time.
"""

import random
import sqlite3
import sys
from datetime import date, datetime, time, timedelta
from pathlib import Path

import blocos

AQUI = Path(__file__).resolve().parent
GENERICO = 9999
DIAS = 28
NOMES = {"PO": "Português", "MA": "Matemática", "CI": "Ciências", "DE": "Desenvolvimento Sensório Motor"}  # reported


def roteiros_dos_niveis(niveis):
    """Discipline's name → its Roteiros, those that have exercises."""
    achados = {}
    for nivel in niveis:
        for fonte in sorted((AQUI / "blocos" / nivel).glob("*.txt")):
            nome = NOMES.get(fonte.stem[4:6].upper())
            roteiros = [r for r in blocos.le_bloco(fonte).roteiros if nome and r.nome != "CALC" and exercicios(r)]
            if roteiros:
                achados.setdefault(nome, []).extend(roteiros)
    return achados


def exercicios(roteiro):
    return [aula for aula in roteiro.aulas if aula.opcoes or aula.resposta]


def respostas(sorte, roteiro):
    """As the lessons report them: a letter for each try."""
    tentativas = []
    for _ in exercicios(roteiro):
        tentativas += ["E"] * sorte.choice((0, 0, 0, 0, 1, 2)) + ["A"]
    return "".join(letra + ":" for letra in tentativas)


def dias_de_aula(hoje):
    dias = (hoje - timedelta(days=n) for n in range(DIAS, 0, -1))
    return [dia for dia in dias if dia.weekday() < 5]


def linhas_do_aluno(sorte, niveis, hoje):
    """(date, code, LG_Resp) of one pupil, oldest first."""
    escolha = roteiros_dos_niveis(niveis)
    for dia in dias_de_aula(hoje):
        hora = datetime.combine(dia, time(8, 0))
        for _ in range(sorte.choice((1, 1, 2))):
            hora += timedelta(minutes=sorte.randint(5, 70), seconds=sorte.randint(0, 59))
            disciplina = sorte.choice(sorted(escolha))
            roteiro = sorte.choice(escolha[disciplina])
            yield (hora.strftime("%Y-%m-%d %H:%M:%S"), int(roteiro.cod),
                   f"{disciplina}<disc>{roteiro.nome}<rot>{respostas(sorte, roteiro)}")


def preenche(cadastro, hoje):
    alunos = cadastro.execute("SELECT CLxAL.AL_Cod, CLxAL.CL_Cod, CL_Nome FROM CLxAL JOIN CL_Classes USING (CL_Cod)")
    pares = [(aluno, classe, ("I1",) if nome.startswith("Infantil") else ("F1",)) for aluno, classe, nome in alunos
             if aluno != GENERICO]
    for aluno, classe, niveis in pares + [(GENERICO, GENERICO, ("F1", "I1"))]:
        for data, codigo, texto in linhas_do_aluno(random.Random(aluno), niveis, hoje):
            cadastro.execute("INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, LG_Resp) "
                             "VALUES (?, ?, ?, ?, ?)", (aluno, classe, data, codigo, texto))


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__.splitlines()[0])
    cadastro = sqlite3.connect(sys.argv[1])
    with cadastro:
        preenche(cadastro, date.today())
    cadastro.close()


if __name__ == "__main__":
    main()
