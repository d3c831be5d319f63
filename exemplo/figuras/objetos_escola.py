"""Figures: school, people, the body, play, art and the little things of every day."""

from tracos import *  # noqa: F403 - the strokes are this module's alphabet


def lapis(cor=AMARELO):
    return grupo(ret(-14, -52, 28, 92, cor) + ret(-5, -52, 10, 92, OURO) + ret(-14, -66, 28, 16, PRATA)
                 + ret(-14, -80, 28, 18, ROSA, 7) + poli("-14,40 14,40 0,76", AREIA) + poli("-5,63 5,63 0,76", PRETO),
                 giro=28)


def livro():
    capa = area("M0 -46 Q-40 -66 -76 -50 L-76 54 Q-40 40 0 58Z", AZUL)
    folha = area("M0 -44 Q-36 -62 -68 -48 L-68 44 Q-36 32 0 48Z", BRANCO)
    riscos = "".join(linha(f"M-58 {y} Q-36 {y - 8} -12 {y + 4}", PRATA, 4) for y in (-28, -10, 8, 26))
    return espelha(capa + folha + riscos) + linha("M0 -44 L0 56", MARINHO, 4)


def mochila():
    alca = linha("M-18 -60 Q0 -84 18 -60", VINHO, 9)
    corpo = ret(-52, -62, 104, 132, VERMELHO, 34) + ret(-62, 6, 22, 52, VINHO, 10) + ret(40, 6, 22, 52, VINHO, 10)
    bolso = ret(-36, 8, 72, 50, "#f27d70", 12) + linha("M-30 20 L30 20", VINHO, 4) + circ(0, 24, 5, AMARELO)
    return alca + corpo + bolso + linha("M-34 -26 Q0 -14 34 -26", VINHO, 4) + estrela_no(0, -38)


def estrela_no(x, y):
    return grupo(estrela(12, AMARELO), x, y)


def escola():
    predio = ret(-74, -14, 148, 84, "#fbe3b5") + poli("-80,-14 80,-14 64,-40 -64,-40", VERMELHO)
    torre = ret(-24, -46, 48, 116, "#fff2d4") + poli("-30,-46 30,-46 0,-76", VINHO)
    relogio = circ(0, -28, 12, BRANCO) + linha("M0 -36 L0 -28 L6 -25", PRETO, 2.5)
    janelas = "".join(ret(x, y, 20, 20, CEU, 3) for x in (-62, 42) for y in (-2, 32))
    porta = ret(-14, 30, 28, 40, MADEIRA, 4) + circ(8, 52, 2.5, AMARELO)
    return predio + torre + relogio + janelas + porta + texto(0, 12, 13, "ESCOLA", MARINHO) + ret(-80, 68, 160, 8, VERDE, 3)


def quadro():
    moldura = ret(-76, -56, 152, 100, MADEIRA, 6) + ret(-68, -48, 136, 84, "#2f6b4f", 3)
    escrita = texto(0, 2, 40, "a b c", BRANCO) + linha("M-44 20 Q-20 12 0 20 T44 20", AMARELO, 3)
    return moldura + escrita + ret(-60, 44, 120, 8, MARROM, 3) + ret(-30, 40, 16, 6, BRANCO, 2) + ret(6, 37, 26, 8, AZUL, 2)


def rosto(cor, cabelo, frente):
    orelhas = circ(-36, 2, 8, cor) + circ(36, 2, 8, cor)
    cara = circ(0, 0, 37, cor) + olhos(0, 0) + sorriso(0, 14, 11, VINHO)
    faces = circ(-22, 13, 6, ROSA, 'opacity="0.7"') + circ(22, 13, 6, ROSA, 'opacity="0.7"')
    return cabelo + orelhas + cara + faces + frente


def busto(cor, pele):
    return area("M-48 80 Q-48 38 0 38 Q48 38 48 80Z", cor) + ret(-11, 28, 22, 20, pele, 8)


def menino():
    frente = area("M-38 -6 Q-36 -42 0 -42 Q36 -42 38 -6 Q22 -26 0 -22 Q-20 -20 -38 -6Z", MARROM)
    return busto(AZUL, PELE) + grupo(rosto(PELE, "", frente), 0, -20) + texto(0, 72, 22, "T", BRANCO)


def menina():
    cabelo = area("M-44 40 Q-52 -44 0 -44 Q52 -44 44 40 Q30 34 30 0 L-30 0 Q-30 34 -44 40Z", PRETO)
    frente = area("M-37 0 Q-36 -42 0 -42 Q36 -42 37 0 Q22 -10 10 -28 Q-10 -8 -37 0Z", PRETO)
    laco = poli("22,-40 42,-52 42,-26", VERMELHO) + poli("22,-40 2,-52 2,-26", VERMELHO) + circ(22, -39, 6, VINHO)
    return busto(LARANJA, MORENA) + grupo(rosto(MORENA, cabelo, frente + laco), 0, -20) + texto(0, 72, 22, "N", BRANCO)


def professora():
    cabelo = circ(0, -40, 18, MARROM) + area("M-42 16 Q-46 -44 0 -44 Q46 -44 42 16Z", MARROM)
    oculos = "".join(f'<circle cx="{x}" cy="0" r="12" fill="none" stroke="{MARINHO}" stroke-width="3"/>' for x in (-14, 14))
    frente = area("M-36 -4 Q-34 -40 0 -40 Q34 -40 36 -4 Q16 -28 -36 -4Z", MARROM) + oculos + linha("M-2 0 L2 0", MARINHO, 3)
    return busto(ROXO, PELE) + grupo(rosto(PELE, cabelo, frente), 0, -20) + grupo(livro(), 0, 64, 0.32)


def avo():
    frente = area("M-38 2 Q-42 -44 0 -44 Q42 -44 38 2 Q30 -28 0 -30 Q-30 -28 -38 2Z", PRATA)
    return busto(MATO, PELE) + grupo(rosto(PELE, circ(0, -42, 16, PRATA), frente), 0, -20)


def familia():
    return (grupo(avo(), -46, -14, 0.62) + grupo(professora(), 46, -14, 0.62) + grupo(menino(), -30, 34, 0.52)
            + grupo(menina(), 30, 34, 0.52))


def relogio():
    riscos = gira(linha("M0 -58 L0 -50", PRETO, 4), 12)
    numeros = texto(0, -34, 15, "12") + texto(0, 46, 18, "6") + texto(40, 7, 18, "3") + texto(-40, 7, 18, "9")
    ponteiros = linha("M0 0 L0 -26", PRETO, 6) + linha("M0 0 L20 0", VERMELHO, 7) + circ(0, 0, 6, PRETO)
    return circ(0, 0, 74, AZUL) + circ(0, 0, 64, BRANCO) + riscos + numeros + ponteiros


def mao():
    dedos = "".join(ret(x, y, 20, 70, PELE, 10, g) for x, y, g in ((-42, -54, -14), (-20, -70, -4), (3, -68, 5), (24, -52, 15)))
    polegar = ret(34, 4, 20, 56, PELE, 10, 52)
    return dedos + polegar + ret(-38, -10, 74, 76, PELE, 26) + linha("M-20 22 Q0 10 22 26", "#d99b70", 3)


def olho():
    forma = "M-74 4 Q0 -64 74 4 Q0 62 -74 4Z"
    cilios = "".join(linha(f"M{x} {y} L{x * 1.16} {y - 16}", PRETO, 5) for x, y in ((-48, -26), (-18, -42), (18, -42), (48, -26)))
    iris = circ(0, 0, 28, AZUL) + circ(0, 0, 13, PRETO) + circ(9, -9, 6, BRANCO)
    return cilios + area(forma, BRANCO) + iris + linha(forma, PRETO, 5)


def orelha():
    fora = area("M-34 4 Q-44 -70 10 -70 Q56 -68 46 -12 Q40 12 24 28 Q20 66 -8 66 Q-30 62 -26 36Z", PELE)
    return fora + linha("M-12 -10 Q-18 -46 10 -46 Q32 -42 24 -12 Q14 6 4 12 Q8 26 -6 36", "#d08e63", 6)


def nariz():
    forma = area("M-14 -68 Q-18 -10 -42 26 Q-46 54 -20 52 Q0 66 20 52 Q46 54 42 26 Q18 -10 14 -68Z", PELE)
    return forma + elip(-17, 42, 9, 6, "#b9744c") + elip(17, 42, 9, 6, "#b9744c") + linha("M-6 -50 Q-10 -14 -22 14", "#fbe0c8", 5)


def boca():
    labios = area("M-72 -4 Q-36 -44 0 -26 Q36 -44 72 -4 Q36 54 0 54 Q-36 54 -72 -4Z", VERMELHO)
    dentro = area("M-52 -4 Q0 -18 52 -4 Q30 34 0 34 Q-30 34 -52 -4Z", "#7d1f2c")
    return labios + dentro + area("M-46 -5 Q0 -18 46 -5 L38 8 Q0 0 -38 8Z", BRANCO) + elip(0, 24, 22, 10, ROSA)


def bola():
    faixas = area("M-66 -22 Q0 -4 66 -22 A70 70 0 0 1 66 22 Q0 40 -66 22 A70 70 0 0 1 -66 -22Z", AMARELO)
    return circ(0, 0, 70, VERMELHO) + faixas + grupo(estrela(18, AZUL), 0, 8) + elip(-28, -46, 16, 8, "#f7a09a", -30)


def pipa():
    forma = poli("0,-76 50,-16 0,50 -50,-16", AMARELO) + poli("0,-76 50,-16 0,-16", VERMELHO) + poli("-50,-16 0,-16 0,50", AZUL)
    rabiola = linha("M0 50 Q20 58 6 66 T18 80", PRETO, 3) + circ(14, 59, 5, VERDE) + circ(8, 69, 5, ROXO)
    return forma + linha("M0 -76 L0 50 M-50 -16 L50 -16", MARROM, 3) + rabiola


def piao():
    corpo = area("M-54 -22 Q-54 -46 0 -46 Q54 -46 54 -22 Q44 20 0 56 Q-44 20 -54 -22Z", VERDE)
    faixa = area("M-52 -14 Q0 4 52 -14 Q50 -2 45 8 Q0 24 -45 8 Q-50 -2 -52 -14Z", AMARELO)
    return corpo + faixa + ret(-7, -68, 14, 24, MADEIRA, 4) + poli("-6,50 6,50 0,78", CINZA) + linha("M-64 62 Q-40 74 -22 70", PRATA, 4)


def boneca():
    vestido = area("M-18 8 L18 8 L50 66 L-50 66Z", ROSA) + linha("M-44 56 L44 56", VERMELHO, 5)
    bracos = linha("M-18 16 L-46 34 M18 16 L46 34", PELE, 11)
    pernas = linha("M-14 66 L-14 78 M14 66 L14 78", PELE, 11)
    trancas = espelha(circ(42, -22, 12, LARANJA) + circ(46, -4, 9, LARANJA) + circ(42, -36, 6, AZUL))
    frente = area("M-38 -2 Q-36 -44 0 -44 Q36 -44 38 -2 Q0 -30 -38 -2Z", LARANJA)
    return trancas + bracos + pernas + vestido + grupo(rosto(PELE, "", frente), 0, -30, 0.92)


def trem():
    rodas = "".join(circ(x, 52, 15, PRETO) + circ(x, 52, 6, PRATA) for x in (-48, -8, 42))
    corpo = ret(-64, -4, 90, 46, VERMELHO, 8) + ret(16, -44, 54, 86, AZUL, 6) + ret(28, -32, 30, 26, CEU, 4)
    chamine = ret(-50, -36, 22, 34, PRETO, 3) + ret(-56, -42, 34, 10, PRETO, 3) + ret(-76, 24, 14, 18, OURO, 3)
    fumo = circ(-38, -58, 12, PRATA) + circ(-20, -68, 9, PRATA) + circ(-6, -74, 6, PRATA)
    return fumo + chamine + corpo + ret(-64, 14, 80, 7, AMARELO) + rodas + ret(-78, 66, 156, 6, MARROM, 2)


def onibus():
    corpo = ret(-76, -44, 152, 92, AMARELO, 16) + ret(-76, 8, 152, 12, LARANJA)
    janelas = "".join(ret(x, -32, 28, 30, CEU, 5) for x in (-66, -32, 2)) + ret(38, -32, 30, 66, CEU, 5)
    rodas = "".join(circ(x, 48, 18, PRETO) + circ(x, 48, 8, PRATA) for x in (-42, 38))
    return corpo + janelas + rodas + circ(-70, 30, 6, BRANCO) + texto(-14, 20, 14, "ESCOLAR", MARINHO)


def barco():
    vela = poli("4,-72 4,18 66,18", BRANCO) + poli("-4,-58 -4,18 -50,18", ROSA)
    casco = area("M-72 26 L76 26 L52 58 L-48 58Z", VERMELHO) + ret(-72, 26, 148, 8, VINHO)
    onda = area("M-80 58 Q-60 46 -40 58 T0 58 T40 58 T80 58 L80 76 L-80 76Z", AZUL)
    return linha("M0 -76 L0 26", MARROM, 6) + vela + casco + onda


def baloes():
    fio = linha("M-34 0 Q-20 40 0 76 M34 -4 Q20 40 0 76 M0 6 L0 76", CINZA, 2.5)
    def balao(x, y, cor):
        return elip(x, y, 27, 33, cor) + poli(f"{x - 6},{y + 38} {x + 6},{y + 38} {x},{y + 30}", cor) + elip(x - 10, y - 12, 5, 9, BRANCO, 25)
    return fio + balao(-38, -30, VERMELHO) + balao(38, -34, AZUL) + balao(0, -40, AMARELO)


def paleta():
    forma = area("M-70 10 Q-76 -54 0 -58 Q78 -54 72 4 Q66 24 42 16 Q18 12 22 34 Q28 60 -6 60 Q-62 56 -70 10Z", MADEIRA)
    tintas = "".join(circ(x, y, 13, cor) for x, y, cor in ((-42, 8, VERMELHO), (-40, -24, AMARELO), (-8, -38, AZUL), (28, -32, VERDE), (-22, 36, ROXO)))
    pincel = grupo(ret(-4, -70, 8, 76, MARINHO, 4) + ret(-6, 4, 12, 14, PRATA) + area("M-6 18 L6 18 Q6 30 0 38 Q-6 30 -6 18Z", LARANJA), 44, 8, 1, 22)
    return forma + tintas + pincel


def tambor():
    corpo = ret(-58, -16, 116, 68, VERMELHO) + elip(0, 52, 58, 18, VERMELHO)
    zigue = linha("M-58 -6 L-38 56 L-18 2 L0 62 L18 2 L38 56 L58 -6", AMARELO, 4)
    baquetas = linha("M-64 -70 L-20 -28 M64 -70 L20 -28", MADEIRA, 6) + circ(-18, -27, 8, MARROM) + circ(18, -27, 8, MARROM)
    return corpo + zigue + elip(0, -16, 58, 20, VINHO) + elip(0, -18, 52, 16, AREIA) + baquetas


def violao():
    corpo = circ(-14, 34, 42, LARANJA) + circ(8, -2, 30, LARANJA) + circ(-4, 18, 17, MARROM)
    braco = linha("M6 2 L54 -62", MARROM, 13) + ret(46, -80, 22, 24, MARROM, 4, 37)
    cordas = linha("M-32 48 L56 -66 M-28 52 L60 -62", AREIA, 1.6) + linha("M-40 44 L-22 58", MARROM, 6)
    return corpo + braco + cordas


def palhaco():
    cabelo = espelha(circ(48, -14, 20, LARANJA) + circ(50, 14, 16, LARANJA) + circ(36, -36, 16, LARANJA))
    cara = circ(0, 4, 50, "#fde7d3") + elip(0, 34, 30, 16, BRANCO) + sorriso(0, 28, 20, VERMELHO, 6) + circ(0, 8, 12, VERMELHO)
    olhinhos = elip(-19, -14, 12, 15, CEU) + elip(19, -14, 12, 15, CEU) + olhos(0, -12, 19, 5)
    chapeu = poli("-24,-42 24,-42 4,-78", ROXO) + circ(4, -76, 8, AMARELO) + circ(-4, -52, 4, AMARELO) + circ(10, -52, 4, VERDE)
    return cabelo + cara + olhinhos + chapeu


def trofeu():
    taca = area("M-42 -62 L42 -62 Q42 10 0 14 Q-42 10 -42 -62Z", AMARELO) + espelha(linha("M42 -48 Q72 -48 66 -20 Q58 0 34 0", OURO, 9))
    base = ret(-8, 12, 16, 30, OURO) + ret(-30, 40, 60, 12, OURO, 4) + ret(-42, 52, 84, 20, MARROM, 4)
    return taca + base + grupo(estrela(22, BRANCO), 0, -28) + ret(-48, -68, 96, 10, OURO, 5)


def bolo():
    base = ret(-60, 0, 120, 62, "#f6cf9b", 8) + area("M-60 6 L-60 -4 Q-60 -14 -50 -14 L50 -14 Q60 -14 60 -4 L60 14 Q50 30 40 14 Q30 2 20 16 Q10 32 0 16 Q-10 2 -20 16 Q-30 32 -40 14 Q-50 4 -60 16Z", ROSA)
    velas = "".join(ret(x - 4, -46, 8, 32, cor, 2) + area(f"M{x} -66 Q{x + 10} -52 {x} -46 Q{x - 10} -52 {x} -66Z", LARANJA) for x, cor in ((-30, AZUL), (0, VERDE), (30, ROXO)))
    return elip(0, 64, 76, 10, PRATA) + base + velas


def copo():
    return area("M-38 -58 L38 -58 L28 64 Q0 72 -28 64Z", "#e4f3fb") + area("M-35 -26 L35 -26 L28 60 Q0 68 -28 60Z", AZUL) + elip(0, -26, 35, 6, "#74b4e8") + linha("M20 -76 L4 -30", VERMELHO, 7)


def abaco():
    moldura = "".join(ret(*r, MADEIRA, 5) for r in ((-72, -64, 12, 130), (60, -64, 12, 130), (-72, -66, 144, 12), (-72, 56, 144, 12)))
    fios, contas = "", ""
    for y, cor, n in ((-34, VERMELHO, 4), (0, AMARELO, 3), (34, AZUL, 5)):
        fios += linha(f"M-60 {y} L60 {y}", CINZA, 3)
        contas += "".join(elip(-50 + 16 * k, y, 8, 13, cor) for k in range(n)) + elip(52, y, 8, 13, cor)
    return fios + contas + moldura


def dado():
    frente = ret(-58, -30, 88, 88, BRANCO, 10) + poli("-54,-30 -22,-62 62,-62 28,-30", PRATA) + poli("30,-26 62,-60 62,24 30,56", CINZA)
    return frente + "".join(circ(x, y, 8, VERMELHO) for x, y in ((-36, -8), (8, -8), (-14, 14), (-36, 36), (8, 36))) + elip(4, -46, 10, 6, PRETO)


def moedas():
    def moeda(x, y, cor, borda, valor):
        return circ(x, y, 36, borda) + circ(x, y, 30, cor) + texto(x, y + 9, 26, valor, MARROM)
    return moeda(-34, 24, "#f0b678", "#bd7a3e", "5") + moeda(36, 28, PRATA, CINZA, "50") + moeda(0, -32, AMARELO, OURO, "1")


def formas():
    return circ(-38, -36, 34, VERMELHO) + ret(6, -68, 64, 64, AZUL, 2) + poli("-38,8 -74,70 -2,70", VERDE) + ret(6, 18, 70, 44, LARANJA, 2)


def triangulo():
    return poli("0,-66 72,58 -72,58", VERDE)


def quadrado():
    return ret(-60, -60, 120, 120, AZUL, 2)


def retangulo():
    return ret(-76, -42, 152, 84, LARANJA, 2)


def circulo():
    return circ(0, 0, 66, VERMELHO)


def sinais():
    return ret(-70, -70, 66, 66, VERDE, 14) + texto(-37, -20, 52, "+", BRANCO) + ret(6, -70, 66, 66, VERMELHO, 14) + texto(39, -20, 52, "−", BRANCO) + ret(-32, 8, 66, 66, AZUL, 14) + texto(1, 58, 52, "=", BRANCO)


def letras():
    return ret(-74, -30, 64, 64, VERMELHO, 8, -8) + texto(-42, 20, 46, "A", BRANCO) + ret(6, -16, 64, 64, AZUL, 8, 6) + texto(38, 34, 46, "B", BRANCO) + ret(-34, -78, 58, 58, OURO, 8, 5) + texto(-5, -32, 42, "C", BRANCO) + ret(-70, 50, 140, 8, MADEIRA, 3)


def carta():
    return ret(-72, -46, 144, 96, BRANCO, 6) + area("M-72 -40 L0 20 L72 -40 L72 -46 L-72 -46Z", PRATA) + linha("M-70 -42 L0 18 L70 -42 M-70 48 L-22 2 M70 48 L22 2", CINZA, 4) + grupo(area("M0 14 Q-26 -6 -12 -16 Q-2 -20 0 -8 Q2 -20 12 -16 Q26 -6 0 14Z", VERMELHO), 0, 24, 1.1)
