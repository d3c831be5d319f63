"""Figures: animals, fruit, plants, weather, places and maps."""

from tracos import *  # noqa: F403 - the strokes are this module's alphabet


def gato():
    orelhas = espelha(poli("14,-44 50,-76 52,-20", LARANJA) + poli("26,-44 44,-62 46,-32", ROSA))
    cara = elip(0, -4, 58, 50, LARANJA) + elip(0, 16, 28, 20, "#fde2c4") + olhos(0, -12, 24, 7)
    bigodes = espelha(linha("M26 14 L62 6 M26 22 L62 26", MARROM, 2.5))
    nariz = poli("-7,4 7,4 0,13", VINHO) + sorriso(-7, 18, 7, MARROM, 3) + sorriso(7, 18, 7, MARROM, 3)
    listras = linha("M0 -52 L0 -36 M-14 -48 L-12 -36 M14 -48 L12 -36", MADEIRA, 5)
    return orelhas + cara + bigodes + nariz + listras + area("M-30 80 Q-30 46 0 46 Q30 46 30 80Z", LARANJA)


def cao():
    orelhas = espelha(area("M34 -46 Q74 -40 66 20 Q52 30 44 8Z", MARROM))
    cara = area("M-46 -30 Q-40 -62 0 -62 Q40 -62 46 -30 Q54 40 0 52 Q-54 40 -46 -30Z", MADEIRA)
    focinho = elip(0, 24, 30, 24, AREIA) + elip(0, 10, 12, 8, PRETO) + linha("M0 18 L0 28", PRETO, 3) + sorriso(0, 28, 13)
    lingua = area("M-7 36 L7 36 L7 48 Q0 58 -7 48Z", ROSA)
    return cara + elip(-22, -22, 17, 19, MARROM) + olhos(0, -18, 21, 6) + focinho + lingua + orelhas + ret(-26, 60, 52, 12, VERMELHO, 6) + circ(0, 72, 7, AMARELO)


def peixe():
    cauda = area("M36 0 L76 -36 Q66 0 76 36Z", LARANJA)
    corpo = area("M-70 0 Q-30 -54 44 -6 L44 6 Q-30 54 -70 0Z", AZUL)
    barba = area("M-14 -30 Q6 -58 24 -50 L20 -20Z", LARANJA) + area("M-8 28 Q6 50 20 44 L14 20Z", LARANJA)
    escamas = "".join(linha(f"M{x} -12 Q{x + 11} 0 {x} 12", CEU, 3.5) for x in (-22, -4, 14))
    bolhas = "".join(f'<circle cx="{x}" cy="{y}" r="{r}" fill="none" stroke="{AZUL}" stroke-width="3"/>' for x, y, r in ((-72, -34, 7), (-60, -56, 5), (-74, -66, 4)))
    return cauda + barba + corpo + escamas + circ(-44, -8, 9, BRANCO) + circ(-46, -8, 5, PRETO) + linha("M-62 8 Q-54 12 -50 8", MARINHO, 3) + bolhas


def passaro():
    corpo = area("M-46 -20 Q-44 -58 -8 -54 Q20 -50 28 -14 Q54 10 74 20 Q40 46 0 44 Q-40 40 -46 -20Z", CEU.replace("bfe3f7", "4aa8e0"))
    asa = area("M-8 -6 Q34 -16 52 22 Q18 40 -4 20Z", MARINHO)
    bico = poli("-46,-30 -46,-14 -72,-20", LARANJA)
    pernas = linha("M-6 42 L-8 64 M12 42 L12 64 M-18 66 L4 66 M2 66 L24 66", OURO, 5)
    return pernas + corpo + elip(-24, 14, 18, 22, BRANCO, -20) + asa + bico + circ(-26, -28, 6, PRETO) + circ(-24, -30, 2, BRANCO)


def borboleta():
    asas = espelha(area("M4 -6 Q20 -70 66 -56 Q82 -20 6 6Z", ROXO) + area("M4 6 Q66 0 58 46 Q28 70 4 18Z", ROSA) + circ(44, -34, 11, AMARELO) + circ(36, 30, 8, BRANCO) + circ(22, -18, 6, LILAS))
    return asas + linha("M-3 -30 Q-14 -52 -24 -58 M3 -30 Q14 -52 24 -58", PRETO, 3) + elip(0, 2, 7, 38, PRETO) + circ(0, -34, 9, PRETO)


def sapo():
    corpo = elip(0, 26, 62, 46, VERDE) + elip(0, 40, 38, 30, FOLHA)
    olhoes = espelha(circ(30, -32, 23, VERDE) + circ(30, -34, 15, BRANCO) + circ(28, -32, 8, PRETO))
    patas = espelha(elip(56, 62, 24, 12, MATO, -10))
    return patas + corpo + olhoes + elip(0, -4, 56, 30, VERDE) + sorriso(0, -2, 34, MATO, 5) + circ(-5, -14, 2.5, MATO) + circ(5, -14, 2.5, MATO)


def coelho():
    orelhas = espelha(elip(22, -50, 13, 34, PRATA, 8) + elip(22, -48, 7, 25, ROSA, 8))
    cara = circ(0, 10, 46, PRATA) + olhos(0, 2, 18, 6) + espelha(elip(11, 26, 13, 11, BRANCO))
    return orelhas + cara + poli("-7,14 7,14 0,22", VERMELHO) + ret(-8, 34, 7, 13, BRANCO, 2) + ret(1, 34, 7, 13, BRANCO, 2) + espelha(linha("M22 24 L50 20 M22 30 L50 34", CINZA, 2.5)) + area("M-24 80 Q-24 56 0 56 Q24 56 24 80Z", PRATA)


def joaninha():
    patas = espelha(linha("M44 -10 L66 -22 M50 16 L74 16 M44 38 L64 54", PRETO, 6))
    asas = circ(0, 12, 56, VERMELHO) + linha("M0 -42 L0 68", PRETO, 5)
    pintas = espelha(circ(24, -10, 10, PRETO) + circ(32, 24, 10, PRETO) + circ(16, 48, 8, PRETO))
    antenas = linha("M-12 -56 Q-18 -72 -28 -74 M12 -56 Q18 -72 28 -74", PRETO, 4)
    return patas + antenas + circ(0, -44, 24, PRETO) + asas + pintas + circ(-9, -52, 5, BRANCO) + circ(9, -52, 5, BRANCO)


def tartaruga():
    patas = elip(-34, 44, 15, 20, FOLHA) + elip(34, 44, 15, 20, FOLHA) + poli("-58,30 -78,42 -54,44", FOLHA)
    cabeca = circ(62, 4, 21, FOLHA) + ret(42, 10, 18, 26, FOLHA, 8) + circ(68, -2, 4.5, PRETO) + sorriso(68, 10, 7, MATO, 3)
    casco = area("M-62 36 Q-58 -48 0 -50 Q56 -48 60 36Z", MATO) + ret(-66, 30, 130, 13, MADEIRA, 6)
    placas = poli("-16,-34 16,-34 26,-8 0,8 -26,-8", VERDE) + poli("-34,-14 -30,2 -10,16 -14,26 -50,26", VERDE) + poli("34,-14 30,2 10,16 14,26 48,26", VERDE)
    return patas + cabeca + casco + placas


def galinha():
    corpo = area("M-52 -46 Q-30 -60 -16 -34 Q4 -6 46 -28 Q74 -6 50 34 Q20 62 -24 42 Q-56 20 -52 -46Z", BRANCO)
    asa = area("M-8 2 Q24 -4 40 10 Q24 38 -2 26Z", PRATA)
    crista = circ(-50, -56, 8, VERMELHO) + circ(-38, -62, 9, VERMELHO) + circ(-26, -56, 8, VERMELHO)
    pernas = linha("M-8 46 L-10 70 M16 46 L18 70 M-20 72 L0 72 M8 72 L28 72", OURO, 5)
    return crista + pernas + corpo + asa + poli("-50,-38 -52,-24 -74,-28", LARANJA) + elip(-48, -14, 6, 10, VERMELHO) + circ(-38, -36, 4.5, PRETO)


def abelha():
    asas = elip(-8, -36, 20, 32, CEU, -24) + elip(24, -36, 18, 28, CEU, 18)
    corpo = elip(4, 12, 58, 38, AMARELO) + area("M-16 -22 Q-6 12 -16 46 L0 50 Q10 12 0 -26Z", PRETO) + area("M22 -24 Q32 12 22 48 L36 43 Q46 12 36 -19Z", PRETO)
    return asas + poli("60,4 78,12 60,20", PRETO) + corpo + circ(-44, 6, 24, AMARELO) + olhos(-48, 2, 8, 4) + sorriso(-48, 14, 7) + linha("M-54 -16 Q-62 -32 -70 -34 M-42 -17 Q-44 -34 -52 -42", PRETO, 3)


def vaca():
    chifres = espelha(area("M26 -44 Q48 -52 44 -76 Q24 -66 18 -50Z", AREIA))
    orelhas = espelha(elip(56, -28, 22, 12, PRETO, 14) + elip(56, -28, 12, 6, ROSA, 14))
    cara = area("M-42 -44 Q0 -66 42 -44 Q44 10 34 44 L-34 44 Q-44 10 -42 -44Z", BRANCO) + area("M-42 -44 Q-30 -58 -10 -56 Q0 -20 -24 0 Q-40 0 -42 -44Z", PRETO)
    focinho = elip(0, 46, 46, 28, ROSA) + circ(-16, 40, 6, VINHO) + circ(16, 40, 6, VINHO) + sorriso(0, 56, 14, VINHO)
    return chifres + orelhas + cara + circ(-20, -18, 9, BRANCO) + olhos(0, -18, 20, 6) + focinho


def maca():
    fruta = area("M0 -34 Q-24 -52 -50 -34 Q-76 -8 -52 40 Q-30 76 0 60 Q30 76 52 40 Q76 -8 50 -34 Q24 -52 0 -34Z", VERMELHO)
    return fruta + linha("M0 -34 Q0 -56 12 -68", MARROM, 7) + area("M10 -54 Q30 -80 58 -64 Q42 -40 10 -54Z", VERDE) + elip(-38, -4, 9, 20, "#f49a92", 20)


def banana():
    return area("M-58 -52 Q-44 30 54 32 Q70 38 62 52 Q-20 80 -62 -12 Q-72 -40 -66 -54Z", AMARELO) + linha("M-50 -20 Q-28 44 52 44", OURO, 5) + ret(-69, -70, 14, 22, MARROM, 4, -8) + circ(62, 42, 7, MARROM)


def uva():
    pontos = [(-36, -22), (-12, -26), (12, -26), (36, -22), (-24, 0), (0, -4), (24, 0), (-13, 24), (13, 24), (0, 46)]
    bagos = "".join(circ(x, y, 17, ROXO) + circ(x - 5, y - 6, 4, LILAS) for x, y in pontos)
    return linha("M0 -40 L4 -74", MARROM, 7) + area("M4 -52 Q30 -82 62 -58 Q46 -34 4 -52Z", VERDE) + bagos


def laranja():
    return circ(0, 8, 58, LARANJA) + area("M0 -46 Q20 -78 54 -64 Q38 -36 0 -46Z", VERDE) + circ(0, -44, 6, MARROM) + "".join(circ(x, y, 2.5, "#d8741f") for x, y in ((-24, 0), (-4, 24), (22, 8), (8, -12), (-16, 42), (34, 34))) + elip(-30, -16, 8, 15, "#fbb877", 35)


def melancia():
    return area("M-76 -24 A76 76 0 0 0 76 -24Z", MATO) + area("M-66 -24 A66 66 0 0 0 66 -24Z", "#dff2cf") + area("M-58 -24 A58 58 0 0 0 58 -24Z", VERMELHO) + "".join(elip(x, y, 4, 7, PRETO, g) for x, y, g in ((-32, -8, 20), (0, -8, 0), (32, -8, -20), (-16, 14, 10), (16, 14, -10)))


def cenoura():
    folhas = espelha(area("M0 -34 Q10 -80 30 -74 Q30 -50 4 -32Z", VERDE)) + area("M-6 -34 Q-8 -80 0 -80 Q8 -80 6 -34Z", MATO)
    return grupo(folhas + area("M-28 -32 Q0 -46 28 -32 Q24 40 0 80 Q-24 40 -28 -32Z", LARANJA) + linha("M-24 -10 L-6 -8 M22 6 L6 8 M-16 28 L-2 30", "#d8741f", 4), giro=24)


def ovo():
    return area("M0 -62 Q50 -20 46 22 Q40 64 0 66 Q-40 64 -46 22 Q-50 -20 0 -62Z", "#fdf1de") + elip(-16, -14, 9, 20, BRANCO, 18) + area("M-66 78 Q-60 44 0 52 Q60 44 66 78Z", MADEIRA) + linha("M-56 66 L-20 60 M-10 72 L40 62 M20 74 L58 72", AREIA, 3)


def arvore():
    tronco = area("M-14 76 L-9 10 L9 10 L14 76Z", MADEIRA) + linha("M0 30 L24 8", MADEIRA, 8)
    copa = circ(-32, -8, 32, MATO) + circ(34, -8, 32, MATO) + circ(0, -36, 40, VERDE) + circ(0, 4, 30, VERDE)
    return tronco + copa + "".join(circ(x, y, 7, VERMELHO) for x, y in ((-34, -4), (-6, -44), (24, -28), (36, 4), (-4, 6)))


def flor():
    petalas = grupo(gira(elip(0, -30, 15, 24, ROSA), 7), 0, -24)
    folhas = area("M0 50 Q-44 44 -50 14 Q-12 16 0 50Z", VERDE) + area("M0 62 Q40 52 46 26 Q12 28 0 62Z", VERDE)
    return linha("M0 -10 L0 78", MATO, 8) + folhas + petalas + circ(0, -24, 19, AMARELO) + olhos(0, -27, 7, 3) + sorriso(0, -20, 7, MARROM, 3)


def planta():
    terra = area("M-76 26 Q0 14 76 26 L76 78 L-76 78Z", MARROM)
    raizes = linha("M0 24 L0 66 M0 36 Q-22 44 -30 62 M0 36 Q22 44 30 62 M0 50 L-12 70 M0 50 L12 70", AREIA, 4)
    folhas = espelha(area("M2 0 Q20 -34 52 -26 Q42 6 2 4Z", VERDE))
    flor_ = grupo(gira(elip(0, -15, 8, 12, VERMELHO), 6), 0, -50) + circ(0, -50, 9, AMARELO)
    return terra + raizes + linha("M0 26 L0 -44", MATO, 7) + folhas + flor_


def semente():
    terra = area("M-78 10 L78 10 L78 76 L-78 76Z", MARROM)
    um = elip(-50, 38, 11, 8, AREIA)
    dois = elip(0, 36, 11, 8, AREIA) + linha("M0 36 Q4 20 0 4", FOLHA, 5) + linha("M0 44 L0 62", AREIA, 3)
    tres = elip(50, 36, 9, 7, AREIA) + linha("M50 36 L50 -36", MATO, 5) + area("M50 -14 Q30 -30 22 -14 Q36 0 50 -14Z", VERDE) + area("M50 -28 Q66 -48 76 -32 Q66 -16 50 -28Z", VERDE) + linha("M50 42 L50 68 M50 48 L38 62 M50 48 L62 62", AREIA, 3)
    return terra + um + dois + tres + grupo(sol(), -46, -48, 0.34)


def sol():
    return gira(poli("-9,-56 9,-56 0,-80", OURO), 12) + circ(0, 0, 52, AMARELO) + olhos(0, -8, 18, 6) + sorriso(0, 10, 18, MARROM, 5)


def lua():
    return area("M24 -70 A70 70 0 1 0 66 40 A58 58 0 1 1 24 -70Z", AMARELO) + grupo(estrela(14, BRANCO), 40, -30) + grupo(estrela(9, BRANCO), 62, 0) + grupo(estrela(8, BRANCO), 28, 6)


def nuvem(cor=BRANCO):
    return circ(-36, 6, 28, cor) + circ(0, -14, 38, cor) + circ(38, 4, 30, cor) + ret(-60, 4, 124, 30, cor, 15)


def chuva():
    gotas = "".join(area(f"M{x} {y} q10 16 0 22 q-10 -6 0 -22Z", AZUL) for x, y in ((-40, 28), (-12, 34), (16, 28), (42, 36), (-26, 54), (4, 56), (32, 54)))
    return gotas + grupo(nuvem(CINZA), 0, -24) + grupo(nuvem(PRATA), -6, -28, 0.8)


def arco():
    cores = (VERMELHO, LARANJA, AMARELO, VERDE, AZUL, MARINHO, ROXO)
    faixas = "".join(linha(f"M{-72 + 8 * n} 44 A{72 - 8 * n} {72 - 8 * n} 0 0 1 {72 - 8 * n} 44", cor, 8.5) for n, cor in enumerate(cores))
    return faixas + grupo(nuvem(), -50, 46, 0.42) + grupo(nuvem(), 50, 46, 0.42)


def gota():
    return area("M0 -74 Q50 -4 50 26 A50 50 0 0 1 -50 26 Q-50 -4 0 -74Z", AZUL) + olhos(0, 18, 17, 6) + sorriso(0, 34, 14, MARINHO, 4) + elip(-24, -6, 7, 16, CEU, 28)


def vento():
    return linha("M-74 -24 L30 -24 Q60 -26 54 -48 Q44 -64 28 -50 M-56 4 L50 4 Q78 6 72 28 Q60 44 46 30 M-70 32 L6 32 Q28 34 22 52 Q12 62 2 52", AZUL, 9) + area("M-30 -58 Q-16 -74 0 -62 Q-12 -46 -30 -58Z", VERDE)


def terra():
    terras = area("M-44 -46 Q-10 -72 10 -52 Q4 -30 -14 -24 Q-10 0 -30 -6 Q-56 -18 -44 -46Z", VERDE) + area("M-16 8 Q14 0 26 20 Q22 52 2 62 Q-14 40 -16 8Z", VERDE) + area("M34 -40 Q62 -20 64 8 Q44 12 36 -8Z", VERDE)
    return circ(0, 0, 70, AZUL) + terras + elip(-34, -44, 14, 7, CEU, -40)


def casa():
    return ret(-52, -10, 104, 78, "#fbe3b5") + poli("-72,-6 0,-70 72,-6", VERMELHO) + ret(30, -62, 16, 34, VINHO) + ret(-40, 10, 34, 30, CEU, 3) + linha("M-23 10 L-23 40 M-40 25 L-6 25", BRANCO, 4) + ret(10, 14, 28, 54, MADEIRA, 3) + circ(32, 42, 3, AMARELO) + ret(-80, 66, 160, 9, VERDE, 4)


def oca():
    palha = area("M-72 66 Q-66 -60 0 -62 Q66 -60 72 66Z", OURO)
    fios = "".join(linha(f"M0 -62 Q{x} -40 {x * 1.25} 64", MADEIRA, 3) for x in (-50, -28, 28, 50))
    return palha + fios + area("M-20 66 Q-20 14 0 14 Q20 14 20 66Z", MARROM) + ret(-80, 64, 160, 9, VERDE, 4)


def caravela():
    velas = area("M-40 -56 Q-66 -20 -40 8 L-4 8 Q-22 -22 -4 -56Z", BRANCO) + area("M10 -66 Q-10 -24 10 10 L56 10 Q36 -26 52 -66Z", BRANCO)
    cruzes = linha("M26 -42 L26 -12 M12 -28 L40 -28", VERMELHO, 7) + linha("M-34 -34 L-34 -14 M-44 -24 L-24 -24", VERMELHO, 5)
    casco = area("M-74 14 L-54 26 L46 26 L58 6 L76 6 Q70 52 44 58 L-44 58 Q-66 46 -74 14Z", MADEIRA) + linha("M-60 38 L58 38", MARROM, 4)
    mastros = linha("M-22 -64 L-22 26 M30 -76 L30 26", MARROM, 5) + poli("30,-78 30,-64 50,-71", VERDE)
    return mastros + velas + cruzes + casco + area("M-80 58 Q-60 46 -40 58 T0 58 T40 58 T80 58 L80 76 L-80 76Z", AZUL)


def mapa():
    papel = poli("-78,-52 -26,-64 26,-52 78,-64 78,52 26,64 -26,52 -78,64", AREIA) + poli("-26,-64 26,-52 26,64 -26,52", "#e7c98c")
    rio = linha("M-74 -26 Q-40 -8 -30 18 T24 44 T76 30", AZUL, 9)
    caminho = f'<path d="M-58 34 Q-20 -40 46 -34" fill="none" stroke="{VERMELHO}" stroke-width="5" stroke-dasharray="9 8"/>'
    return papel + rio + caminho + linha("M40 -42 L54 -26 M54 -42 L40 -26", VERMELHO, 7) + poli("-50,-10 -38,-32 -26,-10", MATO) + poli("2,-4 14,-26 26,-4", MATO) + circ(-58, 36, 7, VERMELHO)


def rosa_ventos():
    pontas = gira(poli("0,-52 9,-9 0,0", AZUL) + poli("0,-52 -9,-9 0,0", CEU), 4)
    meias = grupo(gira(poli("0,-34 8,-8 0,0", PRATA) + poli("0,-34 -8,-8 0,0", CINZA), 4), giro=45)
    return circ(0, 0, 58, BRANCO) + meias + pontas + circ(0, 0, 7, VERMELHO) + texto(0, -60, 20, "N", VERMELHO) + texto(0, 76, 20, "S") + texto(70, 7, 20, "L") + texto(-70, 7, 20, "O")


def cidade():
    predios = "".join(ret(x, y, w, 66 - y, cor, 3) for x, y, w, cor in ((-74, -20, 36, AZUL), (-34, -60, 34, ROXO), (4, -36, 34, LARANJA), (42, -6, 32, VERMELHO)))
    janelas = "".join(ret(x, y, 8, 10, AMARELO, 1) for xs, y0 in (((-66, -52), -8), ((-26, -14), -46), ((12, 24), -22), ((48, 60), 8)) for x in xs for y in range(y0, 40, 18))
    return predios + janelas + ret(-80, 56, 160, 18, CINZA) + linha("M-70 65 L-50 65 M-30 65 L-10 65 M10 65 L30 65 M50 65 L70 65", BRANCO, 3)


def campo():
    morros = elip(-34, 50, 60, 50, FOLHA) + elip(40, 54, 56, 44, VERDE) + ret(-80, 50, 160, 26, VERDE)
    cerca = "".join(ret(x, 40, 7, 34, MADEIRA, 2) for x in (-72, -48, -24, 0)) + ret(-78, 50, 90, 6, MADEIRA, 2)
    return grupo(sol(), 44, -44, 0.36) + morros + grupo(casa(), 34, 22, 0.42) + grupo(arvore(), -42, -8, 0.52) + cerca


def monte():
    return poli("-80,62 -22,-58 36,62", CINZA) + poli("-36,-30 -22,-58 -8,-30 -16,-22 -24,-32 -30,-20", BRANCO) + poli("-10,62 40,-24 80,62", MARINHO) + poli("31,-8 40,-24 50,-6 42,-2", BRANCO) + area("M-80 62 Q-20 48 80 62 L80 76 L-80 76Z", VERDE)


def rio():
    return ret(-78, -30, 156, 104, VERDE, 10) + area("M-20 -30 Q20 -10 -14 14 Q-50 40 6 74 L58 74 Q10 44 34 16 Q56 -10 8 -30Z", AZUL) + linha("M2 -10 Q14 0 4 12 M2 40 Q4 54 18 62", CEU, 4) + grupo(arvore(), -50, -20, 0.48) + grupo(arvore(), 58, -14, 0.42)


def semaforo():
    return ret(-8, 30, 16, 48, CINZA) + ret(-34, -76, 68, 116, PRETO, 16) + circ(0, -48, 17, VERMELHO) + circ(0, -16, 17, AMARELO) + circ(0, 16, 17, VERDE)


def bandeira():
    return ret(-72, -50, 144, 100, "#2f9e4f", 3) + poli("0,-42 62,0 0,42 -62,0", AMARELO) + circ(0, 0, 25, "#24509e") + linha("M-24 -4 Q0 -10 23 9", BRANCO, 5)


def estrelinha():
    return estrela(74, AMARELO) + olhos(0, -4, 13, 5) + sorriso(0, 10, 12, MARROM, 4)


def lixeiras():
    def lixeira(x, cor):
        return ret(x - 20, -22, 40, 78, cor, 5) + ret(x - 24, -34, 48, 14, cor, 6) + circ(x, 14, 9, BRANCO)
    return lixeira(-52, AZUL) + lixeira(0, VERMELHO) + lixeira(52, VERDE) + ret(-80, 56, 160, 8, CINZA, 3)
