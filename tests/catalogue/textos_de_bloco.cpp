#include "textos_de_bloco.h"

#include <array>

namespace quorel::teste {

int sorteia(Acaso &acaso, int below)
{
    return std::uniform_int_distribution<int>(0, below - 1)(acaso);
}

QByteArray blocoCerto(int roteiros, int aulas, int linha)
{
    const QByteArray recheio = QByteArray("As cores do c\xE9u (azul) e do mar. ").repeated(linha / 32 + 1).left(linha);
    QByteArray texto = "<OBJ>Ler e contar</OBJ>\r\n<TM>Fevereiro</TM>\r\n";
    for (int i = 1; i <= roteiros; ++i) {
        const QByteArray n = QByteArray::number(i);
        texto += "[ROT<" + n + ">]\r\nNomeRot =Roteiro " + n + "\r\nCODROT:" + QByteArray::number(1000 + i)
            + "\r\nFIG:MA" + n + "\r\nSOM:SO" + n + "\r\n<DESC> A \xE1gua " + n + " </DESC>\r\nNIVEL:F1\r\nDISC:MA\r\n";
        for (int j = 1; j <= aulas; ++j) {
            const QByteArray codigo = QByteArray::number(100 * i + j);
            texto += "[<" + n + ">" + QByteArray::number(j) + "]\r\nNome =Aula " + codigo + "\r\nLinha =(1,1)" + codigo
                + "<SP\xC7>1<SP\xC7>" + recheio + "\r\n\tTipo = Zeto\t1\r\nJogo = J" + codigo + "#\r\n";
        }
    }
    return texto;
}

QByteArray blocoConfuso(Acaso &acaso)
{
    static const std::array<QByteArray, 36> pedacos{"[ROT<", "[ROT<1>]", "[ROT<2>]", "[ROT<3>]", "[ROT<01>]",
        "[ROT<4>]\r\n", "[<1>", "[<1>1]\r\n", "[<1>2]\r\n", "\r\n[<1>2", "\r\n[<1>3]\r\n", "\r\n[<1>20", "[<1>10]\r\n",
        "[<2>1]\r\n", "\r\n[<2>2]\r\n", "[<3>1]\r\n", "NomeRot =", "NomeRot =CALC\r\n",
        "CODROT:", "FIG:", "SOM:", "<DESC>", "</DESC>",
        "NIVEL:", "DISC:", "Nome =", "Linha =", "\r\n\tTipo = ", "Tipo = ", "\t", "Jogo = ", "#", "<SP\xC7>", ")",
        "\r\n", "(1,1)26"};
    QByteArray texto;
    for (int n = 1 + sorteia(acaso, 70); n > 0; --n) {
        const int kind = sorteia(acaso, 40);
        if (kind == 0)
            texto += QByteArray(sorteia(acaso, 3000), char(sorteia(acaso, 256))); // longer than a block of the index
        else if (kind < 6)
            texto += QByteArray::number(sorteia(acaso, 300)) + ' ';
        else
            texto += pedacos[std::size_t(sorteia(acaso, int(pedacos.size())))];
    }
    return texto;
}

QByteArray estraga(Acaso &acaso, QByteArray texto)
{
    for (int n = sorteia(acaso, 12); n > 0 && !texto.isEmpty(); --n) {
        const int size = int(texto.size());
        const int at = sorteia(acaso, size);
        const int length = 1 + sorteia(acaso, qMin(size - at, sorteia(acaso, 4) == 0 ? size : 12));
        const QByteArray pedaco = texto.mid(at, length);
        const int kind = sorteia(acaso, 4);
        if (kind == 0)
            texto.remove(at, length);
        else if (kind == 1)
            texto.insert(sorteia(acaso, size), pedaco);
        else if (kind == 2)
            texto[at] = char(sorteia(acaso, 256));
        else {
            texto.remove(at, length);
            texto.insert(sorteia(acaso, int(texto.size()) + 1), pedaco);
        }
    }
    return texto;
}

} // namespace quorel::teste
