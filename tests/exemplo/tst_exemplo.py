#!/usr/bin/env python3
"""The sample installation is complete: read back from the block files that were laid out, not from the sources."""

import contextlib
import io
import json
import os
import re
import sqlite3
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

FONTES = Path(sys.argv.pop(1))
sys.path.insert(0, str(FONTES))

import monta  # noqa: E402


class Exemplo(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pasta = tempfile.TemporaryDirectory()
        licao = Path(cls.pasta.name, "licao")
        licao.write_bytes(b"player")
        monta.monta(cls.pasta.name, licao)
        cls.windows = Path(cls.pasta.name, "windows")
        exemplo = Path(monta.__file__).parent
        cls.quorel = cls.windows / "QUOREL2001"
        for nivel in ("F1", "I1"):
            feito = subprocess.run([os.environ["QUOREL_BLOCOS"], "faz", exemplo / "blocos" / nivel,
                                    cls.quorel / "DBBLOCOS" / nivel], check=True, capture_output=True, text=True)
            assert not feito.stdout, feito.stdout
        subprocess.run([os.environ["CMAKE"], "-DFERRAMENTA=" + os.environ["QUOREL_CADASTRO"],
                        f"-DPYTHON={sys.executable}", f"-DLISTA={exemplo / 'cadastro.txt'}", f"-DCADASTRO={cls.windows / 'Cadastros.mdb'}",
                        f"-DBLOCOS={cls.quorel / 'DBBLOCOS'}", "-DFERRAMENTA_BLOCOS=" + os.environ["QUOREL_BLOCOS"],
                        "-P", str(exemplo / "cadastro.cmake")], check=True)
        cls.textos = {p.name: p.read_bytes() for p in sorted(cls.quorel.glob("DBBLOCOS/*/*.edb"))}
        cls.midia = {str(p.relative_to(cls.quorel)).upper() for p in cls.quorel.rglob("*.*")}

    @classmethod
    def tearDownClass(cls):
        cls.pasta.cleanup()

    def aulas(self, nivel=""):
        """(file, Linha, Tipo) of each Aula of the level, of all levels when it is empty."""
        for nome, dados in self.textos.items():
            if nome[6:8].startswith(nivel):
                texto = dados.decode("cp1252")
                for linha, tipo in re.findall(r"\tLinha =(.*?)\r\n\tTipo = ([^\t\r]*)\t", texto, re.S):
                    yield nome, linha, tipo

    def tem_figura(self, nome):
        lugar = f"ZETO_MM/FIG/{nome[0]}/{nome[4] if len(nome) > 4 else '_'}/{nome}"
        return len(nome) < 9 and any(lugar + fim in self.midia for fim in (".GIF", ".BMP"))

    def test_layout_is_that_of_an_installation(self):
        for lugar in ("exe/Zeto.exe", "exe/Desenho.exe", "exe/Desenhos.exe", "exe/Vrel.exe", "exe/Livros.exe",
                      "exe/Calc.exe", "cfg", "zeto_mm/Fig", "zeto_mm/Som", "zeto_mm/Video", "DBBLOCOS/Jogos",
                      "DBBLOCOS/help.doc", "Arqs"):
            self.assertTrue((self.quorel / lugar).exists(), lugar)
        self.assertTrue((self.windows / "Cadastros.mdb").is_file())
        self.assertTrue((self.quorel / "DBBLOCOS/help.doc").read_bytes().startswith(b"{\\rtf1"))

    def test_months_and_disciplines(self):
        for nivel, meses, codigos in (("F1", 3, {"PO", "MA", "CI", "HI", "GE", "ED"}), ("I1", 2, {"PO", "MA", "DE"})):
            nomes = [n for n in self.textos if n[6:8] == nivel]
            self.assertEqual(len({n[:2] for n in nomes}), meses)
            for mes in {n[:2] for n in nomes}:
                self.assertLessEqual(codigos, {n[4:6] for n in nomes if n[:2] == mes})
        for nome, dados in self.textos.items():
            self.assertRegex(nome, r"^\d{4}[A-Z]{2}(F1|I1)\.edb$")
            self.assertRegex(dados.decode("cp1252"), r"<OBJ>[^<]+</OBJ>\r\n<TM>[^<]+</TM>")

    def test_text_is_code_page_1252_with_cr_lf(self):
        for nome, dados in self.textos.items():
            texto = dados.decode("cp1252")
            self.assertEqual(texto.encode("cp1252"), dados)
            self.assertNotIn("?SP", texto)
            self.assertEqual(re.findall(r"(?<!\r)\n|\r(?!\n)", texto), [], nome)

    def test_enough_aulas_of_each_type(self):
        tipos = [tipo for _, _, tipo in self.aulas("F1")]
        self.assertGreaterEqual(len(tipos), 40)
        self.assertLessEqual({"Zeto", "Desenho", "Vrel", "Livros", "Calc", "HTML"}, set(tipos))
        kinds = {linha.split("<SPÇ>")[1] for _, linha, _ in self.aulas() if "<SPÇ>" in linha}
        self.assertEqual(kinds, set("1234567"))

    def test_codes_are_unique(self):
        cods = [c for d in self.textos.values() for c in re.findall(r"CODROT:(\d+)\r\n", d.decode("cp1252"))]
        cods += [re.match(r"\(\d+,\d+\)(\d+)<", linha).group(1) for _, linha, _ in self.aulas() if len(linha) > 5]
        self.assertEqual(sorted(cods), sorted(set(cods)))

    def test_called_calculator_aula_stands_in_the_last_section(self):
        chamadas = [(nome, linha) for nome, linha, _ in self.aulas() if len(linha) < 6]
        self.assertGreater(len(chamadas), 0)
        for nome, cod in chamadas:
            ultima = self.textos[nome].decode("cp1252").rpartition("[ROT<")[2]
            self.assertIn("NomeRot =CALC\r\n", ultima)
            self.assertIn(f"Linha =(1,1){cod}<", ultima)

    def test_every_roteiro_has_a_button_and_ends_in_a_page(self):
        for nome, dados in self.textos.items():
            for secao in dados.decode("cp1252").split("[ROT<")[1:]:
                if "NomeRot =CALC" in secao:
                    continue
                fig, som = (re.search(chave + r":(\w+)\r\n", secao).group(1) for chave in ("FIG", "SOM"))
                self.assertTrue(self.tem_figura(fig), (nome, fig))
                self.assertIn(f"ZETO_MM/SOM/{som[0]}/{som}.WAV", self.midia)
                ultima = secao.rpartition("Linha =")[2]
                self.assertEqual(ultima.split("<SPÇ>")[1], "1", (nome, ultima[:60]))

    def test_figures_sounds_and_pages_are_found(self):
        for nome, linha, tipo in self.aulas():
            if tipo == "HTML":
                pagina = self.quorel / "Arqs" / linha.split("<SPÇ>")[8]
                self.assertIn("<title>Quadrinhos - ", pagina.read_text(encoding="utf-8"))
            pecas, _, resto = linha.partition("<VAA>")
            for campos in (peca.split("<SPÇ>") for peca in pecas.split("<PÇ>") if len(peca) > 5):
                self.assertEqual(len(campos), 13, (nome, linha[:60]))
                self.assertTrue(not campos[10] or self.tem_figura(campos[10]), (nome, campos[10]))
                som = campos[11]
                self.assertTrue(not som or f"ZETO_MM/SOM/{som[0]}/{som}.WAV" in self.midia, (nome, som))
            for opcao in resto.partition("<VOA>")[2].partition("<VCM>")[0].split("<OP>"):
                fig = (opcao.split("\t") + [""] * 9)[8]
                self.assertTrue(not fig or self.tem_figura(fig), (nome, fig))

    def test_every_exercise_can_be_answered(self):
        for nome, linha, _ in self.aulas():
            tipo = linha.split("<SPÇ>")[1] if "<SPÇ>" in linha else "1"
            resposta, _, opcoes = linha.partition("<VAA>")[2].partition("<VOA>")
            certas = [o.split("\t")[2] for o in opcoes.partition("<VCM>")[0].split("<OP>") if "\t" in o]
            if tipo in "27":
                self.assertEqual(certas.count("1"), 1, (nome, linha[:60]))
            elif tipo == "3":
                self.assertGreater(certas.count("1"), 1, (nome, linha[:60]))
            elif tipo == "4":
                self.assertTrue(resposta.split("\t")[6], (nome, linha[:60]))
            elif tipo == "5":
                self.assertEqual(sorted(certas), [str(n + 1) for n in range(len(certas))], (nome, linha[:60]))
                self.assertNotEqual(certas, sorted(certas), (nome, linha[:60]))

    def test_the_register_holds_four_weeks_of_lessons(self):
        codigos = {int(c) for d in self.textos.values() for c in re.findall(r"CODROT:(\d+)\r\n", d.decode("cp1252"))}
        cadastro = sqlite3.connect(self.windows / "Cadastros.mdb")
        linhas = cadastro.execute("SELECT LG_Aluno, RO_Cod, LG_Resp, LG_Data > date('now', 'localtime', '-29 days') "
                                  "AND LG_Data < date('now', 'localtime') FROM LG_LogAulas").fetchall()
        alunos = [a for a, in cadastro.execute("SELECT AL_Cod FROM AL_Alunos")]
        cadastro.close()
        for aluno in alunos:
            self.assertGreater(sum(linha[0] == aluno for linha in linhas), 8, aluno)
        for _, codigo, texto, recente in linhas:
            self.assertIn(codigo, codigos)
            self.assertRegex(texto, r"^[^<]+<disc>[^<]+<rot>([AE]:)+$")
            self.assertTrue(recente)

    def test_nothing_is_to_mend(self):
        # The configuration that the shell would write at its first start.
        cfg = Path(self.pasta.name, "zeto_cnf.txt")
        cfg.write_bytes("".join(f"{chave}={str(pasta).replace('/', chr(92))}\r\n" for chave, pasta in (
            ("ZETO_MM", self.quorel / "zeto_mm"), ("DIRQUOREL", self.quorel))).encode("cp1252"))
        dito = subprocess.run([os.environ["QUOREL_BLOCOS"], "verifica", self.quorel / "DBBLOCOS/F1",
                               self.quorel / "DBBLOCOS/I1", "--cfg", cfg], capture_output=True, text=True,
                              env={**os.environ, "QUOREL_WINDIR": str(self.windows)})
        self.assertEqual((dito.returncode, dito.stdout), (0, ""), dito.stderr)

    def test_each_index_begins_with_a_roteiro_that_nobody_reports_on(self):
        # The first line of an index can't be found by the reports.
        for nivel, codigos in (("F1", ("CI", "MA", "PO")), ("I1", ("DE", "MA", "PO"))):
            for codigo in codigos:
                nome = min(n for n in self.textos if n[4:8] == codigo + nivel)
                primeiro = self.textos[nome].decode("cp1252").split("[ROT<")[1]
                self.assertEqual(primeiro.count("Linha ="), 1, nome)
                self.assertEqual(primeiro.split("<SPÇ>")[1], "1", nome)

    def test_a_second_layout_touches_only_what_it_made(self):
        deles = self.quorel / "DBBLOCOS/F1/9926POF1.edb"
        deles.write_bytes(b"dela")
        mudado = self.quorel / "Arqs/agua.htm"
        antes = mudado.read_bytes()
        mudado.write_bytes(b"mudado")
        sem_fonte = self.quorel / "zeto_mm/Fig/S/_/SEM.GIF"
        lista = Path(self.pasta.name, "feito.json")
        feito = json.loads(lista.read_text())
        sem_fonte.write_bytes(b"velha")
        feito["windows/QUOREL2001/zeto_mm/Fig/S/_/SEM.GIF"] = monta.soma(b"velha")
        lista.write_text(json.dumps(feito))
        hora = (self.quorel / "DBBLOCOS/help.doc").stat().st_mtime_ns
        try:
            with contextlib.redirect_stderr(io.StringIO()) as dito:
                monta.monta(self.pasta.name)
            self.assertIn("agua.htm", dito.getvalue())
            self.assertEqual((deles.read_bytes(), mudado.read_bytes()), (b"dela", b"mudado"))
            self.assertFalse(sem_fonte.exists())
            self.assertEqual((self.quorel / "DBBLOCOS/help.doc").stat().st_mtime_ns, hora)
            self.assertTrue((self.windows / "Cadastros.mdb").is_file())
        finally:
            deles.unlink()
            mudado.write_bytes(antes)


if __name__ == "__main__":
    unittest.main()
