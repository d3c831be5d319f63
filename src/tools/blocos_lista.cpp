#include "tools/blocos_lista.h"

#include "catalogue/catalogo.h"
#include "catalogue/leitor_blocos.h"
#include "platform/caminho.h"

namespace quorel::blocos {

using namespace Qt::StringLiterals;

static QJsonArray jsonDasAulas(const Vetor<AulaRec> &aulas)
{
    QJsonArray lista;
    for (int j = 1; aulas.isDimensioned() && j <= aulas.upperBound(); ++j) {
        const AulaRec &aula = aulas[j];
        lista += QJsonObject{{u"cod"_s, aula.Cod}, {u"nome"_s, aula.Nome}, {u"linha"_s, aula.Linha},
            {u"tipo"_s, aula.Tipo}, {u"jogo"_s, aula.Jogo}};
    }
    return lista;
}

QJsonObject jsonDoBloco(const QByteArray &texto, int &end)
{
    const Bloco bloco = leBloco(texto);
    end = bloco.lidos < bloco.roteiros.upperBound() ? bloco.lidos + 1 : 0;
    QJsonArray roteiros;
    for (int i = 1; i <= bloco.roteiros.upperBound(); ++i) {
        const RoteiroRec &r = bloco.roteiros[i];
        roteiros += QJsonObject{{u"cod"_s, r.Cod}, {u"nome"_s, r.Nome}, {u"fig"_s, r.Fig}, {u"som"_s, r.Som},
            {u"desc"_s, r.Desc}, {u"nivel"_s, r.Nivel}, {u"disc"_s, r.Disc}, {u"titulo"_s, r.Titulo},
            {u"aulas"_s, jsonDasAulas(r.Aulas)}};
    }
    return {{u"objetivo"_s, textoEntre(texto, "<OBJ>", "</OBJ>")}, {u"tema"_s, textoEntre(texto, "<TM>", "</TM>")},
        {u"roteiros"_s, roteiros}};
}

QJsonArray jsonDoDiretorio(const QList<BlockFile> &arquivos, QStringList &unread)
{
    QList<QJsonObject> lista;
    QHash<int, QString> temas; // of the last file of each group
    ContadorDeMeses meses;
    for (const BlockFile &arquivo : arquivos) {
        try {
            const CabecaBloco cabeca = leCabeca(arquivo.name, arquivo.nivel, backslashPath(arquivo.path));
            meses.next(cabeca.grupo);
            temas[meses.mes()] = cabeca.tema;
            lista += QJsonObject{{u"mes"_s, meses.mes()}, {u"ano"_s, cabeca.ano}, {u"disciplina"_s, cabeca.disciplina},
                {u"arquivo"_s, arquivo.path}, {u"objetivo"_s, cabeca.objetivo}};
        } catch (const ErroExecucao &) { // the shell would not start
            unread += arquivo.path;
        }
    }
    QJsonArray comTema;
    for (QJsonObject &arquivo : lista) {
        arquivo[u"tema"_s] = temas.value(arquivo[u"mes"_s].toInt());
        comTema += arquivo;
    }
    return comTema;
}

/// On one line: a listing has a line an entry.
static QString line(const QJsonValue &valor)
{
    return valor.toString().simplified();
}

QString textoDoBloco(const QJsonObject &bloco)
{
    QString texto = u"Objetivo: %1\nTema: %2\n"_s.arg(line(bloco[u"objetivo"_s]), line(bloco[u"tema"_s]));
    int i = 0;
    for (const QJsonValue &roteiro : bloco[u"roteiros"_s].toArray()) {
        texto += u"%1. [%2] %3 (figura: %4, som: %5)\n"_s.arg(QString::number(++i),
            QString::number(roteiro[u"cod"_s].toInt()),
            line(roteiro[u"titulo"_s].toString().isEmpty() ? roteiro[u"nome"_s] : roteiro[u"titulo"_s]),
            line(roteiro[u"fig"_s]), line(roteiro[u"som"_s]));
        int j = 0;
        for (const QJsonValue &aula : roteiro[u"aulas"_s].toArray())
            texto += u"   %1.%2 [%3] %4: %5\n"_s.arg(QString::number(i), QString::number(++j), line(aula[u"cod"_s]),
                line(aula[u"tipo"_s]), line(aula[u"nome"_s]));
    }
    return texto;
}

QString textoDoDiretorio(const QJsonArray &arquivos)
{
    QString texto;
    int mes = -1;
    for (const QJsonValue &arquivo : arquivos) {
        if (arquivo[u"mes"_s].toInt() != mes) {
            mes = arquivo[u"mes"_s].toInt();
            texto += u"%1. %2\n"_s.arg(QString::number(mes), line(arquivo[u"tema"_s]));
        }
        texto += u"   %1 %2: %3 (%4)\n"_s.arg(line(arquivo[u"disciplina"_s]),
            QString::number(arquivo[u"ano"_s].toInt()), line(arquivo[u"objetivo"_s]), line(arquivo[u"arquivo"_s]));
    }
    return texto;
}

} // namespace quorel::blocos
