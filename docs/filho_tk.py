#!/usr/bin/env python3
"""Um programa filho com janela (Tk): mostra o texto da aula e um botão por opção, e envia o que o aluno fez.

Precisa de filho_exemplo.py no mesmo diretório, de onde vem o barramento, e do Tk (no Debian, python3-tk).
Uso: filho_tk.py [--titulo "Zeto - Quorel"] [/cfg:ARQUIVO] [/Hook:]
"""
import os
import sys
import tkinter as tk
from collections import namedtuple

from filho_exemplo import GERENCIADOR, MSG_AULA, MSG_CONTROLE, MSG_PROXIMA, MSG_SAI, Barramento, titulos

MSG_ANTERIOR = 2070
CONSERVA_TAMANHO, CONSERVA_POSICAO = 1, 2
Opcao = namedtuple("Opcao", "texto certa")
Aula = namedtuple("Aula", "titulo texto opcoes")


def le_aula(linha):
    """O título e o texto da primeira peça, e as opções; o formato inteiro está em formato-da-linha.md."""
    campos = linha.split("<PÇ>")[0].split("<SPÇ>") + [""] * 13
    depois = linha.split("<VOA>", 1)[1] if "<VOA>" in linha else ""
    opcoes = []
    for uma in depois.split("<VCM>")[0].split(")", 1)[-1].split("<OP>"):
        partes = uma.split("\t") + ["", ""]
        if partes[1]:
            opcoes.append(Opcao(partes[1], partes[2] == "1"))
    return Aula(campos[7], campos[8].replace("\r\n", "\n"), opcoes)


class Janela:
    def __init__(self, titulo, interno):
        self.raiz = tk.Tk()
        self.raiz.title(titulo)
        self.raiz.minsize(400, 300)
        self.raiz.protocol("WM_DELETE_WINDOW", lambda: self.envia(MSG_SAI, esconde=True))
        self.titulo = tk.Label(self.raiz, font=("", 18, "bold"), wraplength=380)
        self.texto = tk.Label(self.raiz, justify="left", wraplength=380)
        self.opcoes = tk.Frame(self.raiz)
        botoes = tk.Frame(self.raiz)
        self.retorno = tk.Label(self.raiz)
        for parte in (self.titulo, self.texto, self.opcoes, botoes, self.retorno):
            parte.pack(padx=12, pady=6)
        for nome, tecla, codigo in (("Anterior", "<Left>", MSG_ANTERIOR), ("Próxima", "<Right>", MSG_PROXIMA)):
            tk.Button(botoes, text=nome, command=lambda c=codigo: self.envia(c)).pack(side="left", padx=6)
            self.raiz.bind(tecla, lambda evento, c=codigo: self.envia(c))
        self.raiz.bind("<Key>", self.tecla)
        self.resposta = ""
        self.pai = os.getppid()  # até a primeira mensagem; depois, o processo de quem a enviou
        self.aula = Aula("", "", [])
        self.em_aula = False
        self.bus = Barramento(titulo, interno, self.recebe)
        self.bus.observa = self.observa
        self.bus.lugar = self.lugar
        self.bus.respira = self.raiz.update_idletasks  # repinta, e não atende teclas nem o mouse
        self.observa(self.bus.porta, True)

    def observa(self, conexao, sim):
        """O laço de eventos do Tk espera também pelas conexões: nada gasta enquanto nada chega."""
        if sim:
            self.raiz.createfilehandler(conexao, tk.READABLE, self.chegou)
            return
        self.raiz.deletefilehandler(conexao)
        self.raiz.after_idle(self.sozinha)

    def chegou(self, *_):
        self.bus.passo(0)
        while self.bus.quadros:
            self.bus.serve()

    def recebe(self, codigo, texto, remetente):
        """Corre dentro do envio do gerenciador: muda a janela, responde 1 e volta logo."""
        self.pai = remetente >> 32 or self.pai
        if codigo == MSG_AULA:
            self.mostra(le_aula(texto or ""))
        elif codigo == MSG_CONTROLE and texto == "ESCONDE":
            self.em_aula = False
            self.raiz.withdraw()
        elif codigo == MSG_SAI:
            self.raiz.after_idle(self.termina)
        return 1

    def mostra(self, aula):
        self.aula, self.resposta, self.em_aula = aula, "", True
        self.titulo["text"], self.texto["text"], self.retorno["text"] = aula.titulo, aula.texto, ""
        for velho in self.opcoes.winfo_children():
            velho.destroy()
        for n, opcao in enumerate(aula.opcoes, 1):
            tk.Button(self.opcoes, text=f"{n}  {opcao.texto}", command=lambda o=opcao: self.escolhe(o)).pack(fill="x")
        self.raiz.deiconify()
        self.raiz.lift()

    def tecla(self, evento):
        if evento.char.isdigit() and 0 < int(evento.char) <= len(self.aula.opcoes):
            self.escolhe(self.aula.opcoes[int(evento.char) - 1])

    def escolhe(self, opcao):
        self.resposta = self.resposta or ("A" if opcao.certa else "E")  # a primeira resposta vale
        self.retorno["text"] = "Muito bem!" if opcao.certa else "Ainda não. Tente de novo."

    def envia(self, codigo, esconde=False):
        if esconde:
            self.raiz.withdraw()
        resposta, self.resposta, self.em_aula = self.resposta, "", False
        foi = self.bus.envia(self.bus.janela(self.pai, GERENCIADOR), codigo, resposta)
        self.raiz.after_idle(self.chegou)  # o que veio junto com a resposta não chama mais o laço
        if esconde and not foi:
            self.raiz.destroy()  # ninguém conduz este programa, ou já não: fechar é terminar

    def termina(self):
        """O gerenciador fecha: com MSG_SAI, vazio também, são gravadas as respostas desta aula e das anteriores."""
        if self.em_aula:
            self.envia(MSG_SAI)
        self.raiz.destroy()

    def sozinha(self):
        """Uma conexão acabou: se o gerenciador morreu e a janela está escondida, ninguém mais a mostra."""
        if self.raiz.state() == "withdrawn" and not self.bus.escuta(self.pai):
            self.raiz.destroy()

    def lugar(self, ordem, conserva):
        if not conserva & CONSERVA_POSICAO:
            self.raiz.geometry("+0+0")
        if not conserva & CONSERVA_TAMANHO:
            self.raiz.geometry("400x300")
        if ordem:
            self.raiz.attributes("-topmost", ordem == 1)
        self.raiz.lift()

    def corre(self):
        try:
            self.raiz.mainloop()
        finally:
            self.bus.sai()


if __name__ == "__main__":
    Janela(*titulos(sys.argv)).corre()
