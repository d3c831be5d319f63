#!/usr/bin/env python3
"""Um programa filho completo, só com a biblioteca padrão: toma o lugar de qualquer um dos cinco programas.

Uso: filho_exemplo.py [--titulo "Zeto - Quorel"] [/cfg:ARQUIVO] [/Hook:]
Sem --titulo, o nome com que foi iniciado decide (Zeto.exe, Desenho.exe, Vrel.exe, Livros.exe, Calc.exe).
"""
import collections
import os
import select
import socket
import stat
import struct
import sys

TITULOS = {"zeto": ("Zeto - Quorel", "ZETO"), "desenho": ("Editor de Desenhos - Quorel", None),
           "vrel": ("Histórias - Quorel", None), "livros": ("Livros - Quorel", "Livros"),
           "calc": ("Calculadora - Quorel", None)}
GERENCIADOR = "Gerenciador de Roteiros do Quorel"
MSG_AULA, MSG_PROXIMA, MSG_SAI, MSG_CONTROLE = 2060, 2069, 2071, 2122
ENVIO, RESPOSTA, LUGAR = 1, 2, 3
POSICAO = struct.Struct("<IIIIIQ")  # comprimento, tipo, zero, ordem, o que conservar, janela
CABECA = struct.Struct("<IIIIiIQQ")  # comprimento, tipo, número, código, tamanho, zero, destino, remetente
VOLTA = struct.Struct("<IIIq")  # comprimento, tipo, número, resultado
MAIOR = 204800


def diretorio():
    base = os.environ.get("XDG_RUNTIME_DIR", "")
    meu = base.startswith("/") and os.path.isdir(base) and os.stat(base).st_uid == os.getuid()
    caminho = base + "/quorel" if meu else f"/tmp/quorel-{os.getuid()}"
    try:
        os.mkdir(caminho, 0o700)
    except FileExistsError:
        pass
    estado = os.lstat(caminho)
    if not stat.S_ISDIR(estado.st_mode) or estado.st_uid != os.getuid():
        sys.exit("o diretório das mensagens não é seu: " + caminho)
    if stat.S_IMODE(estado.st_mode) & 0o777 != 0o700:
        os.chmod(caminho, 0o700)
    return caminho


def e_meu(conexao):
    """Se quem está do outro lado é do mesmo usuário; vale para quem se conecta e para quem escuta."""
    return struct.unpack("3i", conexao.getsockopt(socket.SOL_SOCKET, socket.SO_PEERCRED, 12))[1] == os.getuid()


class Barramento:
    """O lugar deste processo no barramento: recebe, responde e envia.

    Quem tem um laço de eventos próprio (uma janela) dá mais três funções: observa(conexão, sim ou não), chamada quando
    uma conexão começa e acaba; lugar(ordem, o que conservar), para o quadro que põe a janela no canto; respira(), chamada
    umas cinco vezes por segundo enquanto um envio espera, para a janela se repintar.
    """

    observa = staticmethod(lambda conexao, sim: None)
    lugar = staticmethod(lambda ordem, conserva: None)
    respira = None

    def __init__(self, titulo, interno, trata):
        self.trata = trata  # trata(código, texto ou None, remetente) -> resultado
        self.eu = os.getpid() << 32 | 1
        self.linhas = f"{self.eu} 0 {titulo}\n" + (f"{self.eu + 1} {self.eu} {interno}\n" if interno else "")
        self.lidos = {}  # conexão -> bytes que chegaram e ainda não formam um quadro
        self.ligacoes = {}  # processo -> conexão aberta por nós, usada de novo
        self.quadros = collections.deque()  # envios que esperam a sua vez
        self.resultados = {}  # número -> resultado; None enquanto não vem
        self.numero = 0
        self.publica()

    def publica(self):
        """Escuta no diretório e escreve lá a lista das janelas."""
        self.dir = diretorio()
        self.porta = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self.arquivo(".sock", apaga=True)
        self.porta.bind(self.arquivo(".sock"))
        self.porta.listen(16)
        with open(self.arquivo(".novo"), "w", encoding="utf-8") as saida:
            saida.write(self.linhas)
        os.rename(self.arquivo(".novo"), self.arquivo(".janelas"))  # inteiro ou nada

    def processos(self):
        """Os que têm uma lista no diretório. Antes disso publica de novo o que alguém apagou."""
        if not all(os.path.lexists(self.arquivo(fim)) for fim in (".sock", ".janelas")):
            self.observa(self.porta, False)
            self.porta.close()
            self.publica()
            self.observa(self.porta, True)
        return [int(nome[:-8]) for nome in os.listdir(self.dir) if nome.endswith(".janelas") and nome[:-8].isdigit()]

    def arquivo(self, fim, apaga=False, processo=None):
        nome = f"{self.dir}/{processo or os.getpid()}{fim}"
        if apaga and os.path.lexists(nome):
            os.unlink(nome)
        return nome

    def sai(self):
        for fim in (".janelas", ".sock"):
            self.arquivo(fim, apaga=True)

    def passo(self, segundos=None):
        """Espera que algo chegue, sem limite ou só tanto tempo, e guarda os quadros inteiros."""
        for pronto in select.select([self.porta, *self.lidos], [], [], segundos)[0]:
            if pronto is self.porta:
                self.aceita(self.porta.accept()[0])
                continue
            bytes_ = b""
            try:
                bytes_ = pronto.recv(1 << 18)
            except OSError:
                pass
            self.lidos[pronto] += bytes_
            if not bytes_ or not self.separa(pronto):
                self.fecha(pronto)

    def aceita(self, conexao):
        if e_meu(conexao):
            self.guarda(conexao)
        else:
            conexao.close()

    def guarda(self, conexao):
        self.lidos[conexao] = b""
        self.observa(conexao, True)

    def fecha(self, conexao):
        del self.lidos[conexao]
        self.observa(conexao, False)
        conexao.close()

    def separa(self, conexao):
        """Corta os quadros inteiros; False quando um deles não pode ser."""
        dados = self.lidos[conexao]
        while len(dados) >= 8:
            comprimento, tipo = struct.unpack_from("<II", dados)
            fim = comprimento + 4
            certo = {ENVIO: CABECA.size <= fim <= CABECA.size + MAIOR, RESPOSTA: fim == VOLTA.size,
                     LUGAR: fim == POSICAO.size}
            if not certo.get(tipo, False):
                return False
            if len(dados) < fim:
                break
            if tipo == RESPOSTA:
                _, _, numero, resultado = VOLTA.unpack_from(dados)
                if numero in self.resultados:  # uma resposta que ninguém mais espera é esquecida
                    self.resultados[numero] = resultado
            elif tipo == ENVIO:
                if max(CABECA.unpack_from(dados)[4], 0) != fim - CABECA.size:
                    return False
                self.quadros.append((conexao, dados[:fim]))
            elif POSICAO.unpack_from(dados)[5] == self.eu:  # a janela interna fica onde está
                self.lugar(*POSICAO.unpack_from(dados)[3:5])
            dados = dados[fim:]
        self.lidos[conexao] = dados
        return True

    def serve(self):
        """Trata o envio mais antigo e responde. O tratamento pode enviar."""
        conexao, quadro = self.quadros.popleft()
        _, _, numero, codigo, tamanho, _, destino, remetente = CABECA.unpack_from(quadro)
        corpo = quadro[CABECA.size:].split(b"\0")[0]
        texto = corpo.decode("cp1252", "replace") if tamanho > 0 else None
        resultado = self.trata(codigo, texto, remetente) if destino in (self.eu, self.eu + 1) else 0
        try:
            conexao.sendall(VOLTA.pack(VOLTA.size - 4, RESPOSTA, numero, resultado))
        except OSError:
            pass  # quem esperava já se foi

    def envia(self, destino, codigo, texto):
        """Envia e espera a resposta; enquanto espera, serve o que chega. 0 quando o destino se foi."""
        bytes_ = texto.encode("cp1252", "replace") + b"\0"
        if not destino or len(bytes_) > MAIOR:
            return 0
        self.numero += 1
        numero = self.numero
        self.resultados[numero] = None
        cabeca = CABECA.pack(CABECA.size - 4 + len(bytes_), ENVIO, numero, codigo, len(bytes_), 0, destino, self.eu)
        try:
            conexao = self.ligacao(destino >> 32)
            conexao.sendall(cabeca + bytes_)
            while self.resultados[numero] is None and conexao in self.lidos:
                if self.quadros:
                    self.serve()
                elif self.respira:
                    self.passo(0.2)
                    self.respira()
                else:
                    self.passo()
        except OSError:
            pass  # não está mais lá
        return self.resultados.pop(numero) or 0

    def ligacao(self, processo):
        conexao = self.ligacoes.get(processo)
        if conexao not in self.lidos:
            conexao = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
            conexao.connect(self.arquivo(".sock", processo=processo))
            if not e_meu(conexao):
                raise PermissionError(processo)
            self.ligacoes[processo] = conexao
            self.guarda(conexao)
        return conexao

    def escuta(self, processo):
        """Se o processo está no barramento; a conexão fica aberta, e o seu fim acorda quem espera em passo()."""
        try:
            return bool(self.ligacao(processo))
        except OSError:
            return False

    def janela(self, processo, titulo):
        """A janela com esse título do processo dado, ou 0."""
        try:
            if processo not in self.processos():
                return 0
            with open(self.arquivo(".janelas", processo=processo), encoding="utf-8") as entrada:
                for linha in entrada:
                    numero, acima, nome = linha.rstrip("\n").split(" ", 2)
                    if acima == "0" and nome == titulo:
                        return int(numero)
        except (OSError, ValueError):
            pass
        return 0


class Filho:
    def __init__(self, titulo, interno, gancho):
        self.gancho = gancho  # um gerenciador iniciou este programa
        self.pai = os.getppid()  # até a primeira mensagem; depois, o processo de quem a enviou
        self.conduzido = False  # veio alguma mensagem
        self.aulas = collections.deque()
        self.em_aula = False
        self.fim = False
        self.bus = Barramento(titulo, interno, self.recebe)

    def recebe(self, codigo, texto, remetente):
        """Corre dentro do envio do gerenciador: guarda e volta logo."""
        self.pai = remetente >> 32 or self.pai
        self.conduzido = True
        if codigo == MSG_AULA:
            self.aulas.append(texto or "")
            self.em_aula = True
        elif codigo == MSG_CONTROLE and texto == "ESCONDE":
            print("(o roteiro terminou: escondido)", flush=True)
        elif codigo == MSG_CONTROLE:
            print(f"(controle: {texto})", flush=True)
        elif codigo == MSG_SAI:
            self.fim = True
        return 1

    def mostra(self, linha):
        """Mostra a aula e responde que está certa. Um programa de verdade esperaria o aluno."""
        print("AULA", linha, flush=True)
        self.diz(MSG_PROXIMA, "A")
        # Sem aula nova o roteiro acabou ou foi para outro programa; mas não se o gerenciador fecha no meio do envio.
        self.em_aula = bool(self.aulas) or self.fim

    def diz(self, codigo, texto):
        self.bus.envia(self.bus.janela(self.pai, GERENCIADOR), codigo, texto)  # procurado de novo a cada envio

    def acabou(self):
        """Se o gerenciador morreu sem se despedir: o da última mensagem; antes da primeira, todos os que há."""
        if self.conduzido:
            return not self.bus.escuta(self.pai)
        gerenciadores = (p for p in self.bus.processos() if self.bus.janela(p, GERENCIADOR))
        return self.gancho and not any(self.bus.escuta(p) for p in gerenciadores)

    def corre(self):
        try:
            while not self.fim:
                if self.aulas:
                    self.mostra(self.aulas.popleft())
                elif self.bus.quadros:
                    self.bus.serve()
                elif self.acabou():
                    break
                else:
                    self.bus.passo()
            if self.fim and self.em_aula:
                self.diz(MSG_SAI, "")  # com ela são gravadas as respostas das aulas anteriores
        finally:
            self.bus.sai()


def titulos(argumentos):
    if "--titulo" in argumentos[:-1]:
        pedido = argumentos[argumentos.index("--titulo") + 1]
        return next((par for par in TITULOS.values() if par[0] == pedido), (pedido, None))
    nome = os.path.splitext(os.path.basename(argumentos[0]))[0].lower()
    return TITULOS.get(nome, TITULOS["zeto"])


if __name__ == "__main__":
    sys.stdout.reconfigure(encoding="utf-8")
    Filho(*titulos(sys.argv), "/Hook:" in sys.argv).corre()
