"""The help document: RTF made of a plain text in UTF-8. "= " begins the title, "== " a heading, "* " a point."""

ESTILOS = {"= ": r"\pard\qc\sa240\b\fs40\cf1 ", "== ": r"\pard\sb240\sa80\b\fs28\cf1 ",
           "* ": r"\pard\fi-280\li480\sa60\b0\fs24\cf0 \bullet  ", "": r"\pard\sa120\b0\fs24\cf0 "}
CABECA = (r"{\rtf1\ansi\ansicpg1252\deff0\deflang1046{\fonttbl{\f0\fswiss Arial;}}"
          r"{\colortbl;\red20\green60\blue140;}\paperw11906\paperh16838\margl1134\margr1134\margt1134\margb1134\f0")


def escapa(texto):
    """Braces and backslashes escaped; what is not ASCII as the byte of code page 1252 it has."""
    saida = []
    for letra in texto:
        if letra in "\\{}":
            saida.append("\\" + letra)
        elif ord(letra) < 128:
            saida.append(letra)
        else:
            saida.append(f"\\'{letra.encode('cp1252')[0]:02x}")
    return "".join(saida)


def rtf(texto):
    saida = [CABECA]
    for linha in texto.splitlines():
        if not linha.strip():
            continue
        marca = next(m for m in ESTILOS if linha.startswith(m))
        saida.append(ESTILOS[marca] + escapa(linha[len(marca):].strip()) + r"\par")
    return ("\r\n".join(saida) + "}").encode("ascii")
