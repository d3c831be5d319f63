"""The block databases of the sample: read from plain texts in UTF-8, written as .edb in code page 1252 with CR LF.

A source is named like the block file that comes out of it (month group, year, discipline: 0226MA.txt). It has lines
"key: value"; a line that begins with a blank goes on with the value above; "*" is a right option, "-" a wrong one, "="
an option of an exercise of order (they stand in their right order); "#" begins a comment. docs/formato-da-linha.md
tells what each key becomes.
"""

from dataclasses import dataclass, field
from pathlib import Path

CODEC = "cp1252"
CRLF = "\r\n"
TIPOS = {"leia": "1", "escolha": "2", "marque": "3", "escreva": "4", "ordene": "5", "desenhe": "6", "historia": "7"}
PROGRAMAS = ("Zeto", "Desenho", "Vrel", "Livros", "Calc", "HTML")
MARCAS = ("<SPÇ>", "<PÇ>", "<VAA>", "<VOA>", "<VCM>", "<CM>", "<OP>", "<VETPECA>", "<TIPO>", "\t", "[ROT<", "Tipo = ",
          "Jogo = ", "Linha =", "Nome =", "CMDEXEC")
ELOGIOS = ("Muito bem!", "Isso mesmo!", "Você acertou!", "Parabéns!", "Que beleza!", "Ótimo!")
DISCIPLINAS = {
    "AV": "Avaliação", "CI": "Ciências", "DE": "Desenvolvimento Sensório Motor", "DI": "Divertimentos",
    "ED": "Educação Artística", "ES": "Estudos Sociais", "GE": "Geografia", "HI": "História", "MA": "Matemática",
    "PO": "Português"}


class ErroFonte(Exception):
    """A source that can't become a block file; the text names file and line."""


@dataclass
class Opcao:
    texto: str
    certa: str  # "1" or "0"; of an exercise of order its place, from 1
    fig: str = ""


@dataclass
class Pagina:
    titulo: str = ""
    texto: str = ""
    fig: str = ""
    som: str = ""


@dataclass
class Aula:
    programa: str
    tipo: str  # a key of TIPOS
    nome: str
    cod: str = ""
    paginas: list = field(default_factory=lambda: [Pagina()])
    opcoes: list = field(default_factory=list)
    resposta: str = ""
    elogio: str = ""
    dica: str = ""
    jogo: str = ""
    chama: str = ""  # code of an Aula of the CALC section: the lesson text is that code alone
    arquivo: str = ""  # of an HTML lesson


@dataclass
class Roteiro:
    cod: str
    nome: str
    fig: str = ""
    som: str = ""
    desc: str = ""
    aulas: list = field(default_factory=list)


@dataclass
class Bloco:
    tema: str = ""
    objetivo: str = ""
    roteiros: list = field(default_factory=list)


def linhas_logicas(texto):
    """(number, line) of each line that says something, those that go on joined to the one above by a line end."""
    saida = []
    for numero, linha in enumerate(texto.splitlines(), 1):
        if not linha.strip() or linha.startswith("#"):
            continue
        if linha[0] == " " and saida:
            saida[-1] = (saida[-1][0], saida[-1][1] + "\n" + linha.strip())
        else:
            saida.append((numero, linha.rstrip()))
    return saida


class Leitor:
    """Reads one source; what it meets goes to the Roteiro and the Aula opened last."""

    def __init__(self, caminho):
        self.caminho = Path(caminho)
        self.bloco = Bloco()
        self.linha = 0

    def le(self):
        for self.linha, texto in linhas_logicas(self.caminho.read_text(encoding="utf-8")):
            for marca in MARCAS:
                if marca in texto:
                    self.falha(f"o texto contém a marca {marca!r}")
            if texto.startswith("ROTEIRO "):
                self.abre_roteiro(texto)
            elif texto.startswith("AULA "):
                self.abre_aula(texto)
            elif texto[0] in "*-=" and texto[1:2] == " ":
                self.opcao(texto)
            else:
                self.chave(*self.parte(texto, ":"))
        for roteiro in self.bloco.roteiros:
            completa(roteiro)
        return self.bloco

    def falha(self, motivo):
        raise ErroFonte(f"{self.caminho}:{self.linha}: {motivo}")

    def parte(self, texto, sinal):
        antes, achou, depois = texto.partition(sinal)
        if not achou:
            self.falha(f"falta {sinal!r} em {texto!r}")
        return antes.strip(), depois.strip()

    def aula(self):
        if not self.bloco.roteiros or not self.bloco.roteiros[-1].aulas:
            self.falha("fora de uma AULA")
        return self.bloco.roteiros[-1].aulas[-1]

    def abre_roteiro(self, texto):
        _, cod, nome = texto.split(" ", 2)
        if not cod.isdigit():
            self.falha(f"código inválido: {cod}")
        self.bloco.roteiros.append(Roteiro(cod, nome))

    def abre_aula(self, texto):
        cabeca, nome = self.parte(texto[len("AULA "):], ":")
        programa, _, tipo = cabeca.partition(" ")
        tipo = tipo or "leia"
        if programa not in PROGRAMAS or tipo not in TIPOS:
            self.falha(f"aula desconhecida: {cabeca}")
        self.bloco.roteiros[-1].aulas.append(Aula(programa, tipo, nome))

    def opcao(self, texto):
        opcoes = self.aula().opcoes
        sinal, (dito, _, fig) = texto[0], texto[2:].partition("@")
        certa = str(len(opcoes) + 1) if sinal == "=" else "1" if sinal == "*" else "0"
        opcoes.append(Opcao(dito.strip(), certa, fig.strip()))

    def chave(self, chave, valor):
        if not self.bloco.roteiros:
            alvo, chaves = self.bloco, ("tema", "objetivo")
        elif not self.bloco.roteiros[-1].aulas:
            alvo, chaves = self.bloco.roteiros[-1], ("fig", "som", "desc")
        elif chave == "pagina":
            self.aula().paginas.append(Pagina(texto=valor))
            return
        elif chave in ("titulo", "texto", "fig", "som"):
            alvo, chaves = self.aula().paginas[-1], (chave,)
        else:
            alvo, chaves = self.aula(), ("cod", "resposta", "elogio", "dica", "jogo", "chama", "arquivo")
        if chave not in chaves:
            self.falha(f"chave desconhecida: {chave}")
        setattr(alvo, chave, valor)


def completa(roteiro):
    """Codes that the source leaves out, and praise and headings where it gives none."""
    for n, aula in enumerate(roteiro.aulas, 1):
        aula.cod = aula.cod or f"{roteiro.cod}{n:02d}"
        aula.elogio = aula.elogio or ELOGIOS[n % len(ELOGIOS)]
        aula.paginas[0].titulo = aula.paginas[0].titulo or aula.nome


def embaralha(opcoes, semente):
    """The options of an exercise of order in an order that is never the right one, the same at each run."""
    passo = 1 + semente % max(1, len(opcoes) - 1)
    return opcoes[passo:] + opcoes[:passo]


def crlf(texto):
    return texto.replace("\n", CRLF)


def linha_da_aula(aula):
    """The lesson text, as docs/formato-da-linha.md gives it."""
    if aula.chama:
        return aula.chama
    pecas = []
    for n, pagina in enumerate(aula.paginas):
        campos = [aula.cod if n == 0 else str(n + 1), TIPOS[aula.tipo], "1", "0", "0", "0", "0", pagina.titulo,
                  aula.arquivo or pagina.texto, "", pagina.fig, pagina.som, ""]
        pecas.append("<SPÇ>".join(campos))
    resposta = [f"(1){aula.cod}", "1", "1", "1", "0", "0", aula.resposta, aula.elogio, aula.dica]
    opcoes = embaralha(aula.opcoes, int(aula.cod)) if aula.tipo == "ordene" else aula.opcoes
    textos = ["\t".join([str(n), o.texto, o.certa, "", "", "", "", "", o.fig]) for n, o in enumerate(opcoes, 1)]
    return crlf(f"(1,{len(pecas)})" + "<PÇ>".join(pecas) + "<PÇ><VAA>" + "\t".join(resposta) + "<VOA>"
                + f"({len(textos)})" + "<OP>".join(textos) + "<VCM><CM>")


def texto_da_aula(i, j, aula):
    saida = [f"[<{i}>{j}]", f"\tNome ={aula.nome}", f"\tLinha ={linha_da_aula(aula)}", f"\tTipo = {aula.programa}\t1"]
    if aula.jogo:
        saida.append(f"\tJogo = {aula.jogo}#")
    return CRLF.join(saida) + CRLF


def texto_do_bloco(bloco, nivel, disciplina):
    """The whole text of a .edb file."""
    saida = [f"<OBJ>{bloco.objetivo}</OBJ>", f"<TM>{bloco.tema}</TM>", ""]
    for i, rot in enumerate(bloco.roteiros, 1):
        saida += [f"[ROT<{i}>]", f"NomeRot ={rot.nome}", f"CODROT:{rot.cod}"]
        if rot.nome != "CALC":
            saida += [f"FIG:{rot.fig}", f"SOM:{rot.som}", f"<DESC>{rot.desc}</DESC>", f"NIVEL:{nivel}",
                      f"DISC:{DISCIPLINAS[disciplina]}"]
        saida += [texto_da_aula(i, j, aula) for j, aula in enumerate(rot.aulas, 1)]
    return CRLF.join(saida)


def le_bloco(caminho):
    return Leitor(caminho).le()


def nome_edb(fonte, nivel):
    return f"{Path(fonte).stem.upper()}{nivel}.edb"
