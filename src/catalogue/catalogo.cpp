#include "catalogue/catalogo.h"

#include "catalogue/estado.h"
#include "catalogue/interno.h"
#include "catalogue/leitor_blocos.h"
#include "catalogue/roteiros.h"
#include "platform/caminho.h"
#include "platform/codec.h"
#include "platform/costuras.h"
#include "platform/eventos.h"
#include "platform/fim.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"
#include "startup/valor.h"

#include <QFile>

#include <array>

namespace quorel {

using namespace Qt::StringLiterals;

namespace {

struct Disciplina
{
    QStringView letras;
    QStringView nome;
};

/// By number, from 1.
constexpr std::array<Disciplina, 10> kDisciplinas{{
    {u"AV", u"Avaliação"},
    {u"CI", u"Ciências"},
    {u"DE", u"Desenvolvimento Sensório Motor"},
    {u"DI", u"Divertimentos"},
    {u"ED", u"Educação Artística"},
    {u"ES", u"Estudos Sociais"},
    {u"GE", u"Geografia"},
    {u"HI", u"História"},
    {u"MA", u"Matemática"},
    {u"PO", u"Português"},
}};

} // namespace

QString NomeDisciplina(const QString &codigo)
{
    int numero = 0;
    for (const Disciplina &disciplina : kDisciplinas) {
        ++numero;
        if (codigo == QString::number(numero) || equalNoCase(codigo, disciplina.letras))
            return disciplina.nome.toString();
    }
    return {};
}

static int grupoDoNome(const QString &nome)
{
    const auto digit = [&nome](qsizetype i) { return i < nome.size() && nome[i] >= u'0' && nome[i] <= u'9'; };
    if (!digit(0) || !digit(1))
        throw ErroExecucao(kFalhaTipo);
    return nome.first(2).toInt();
}

static qint16 anoDoNome(const QString &nome)
{
    const QString atras = gTexto.TextoAntes(nome.sliced(2), u"."_s, true);
    return inteiro16(valorNumerico(QString(u"20"_s + atras)));
}

static bool holdsBoth(const QByteArray &bytes, QByteArrayView antes, QByteArrayView depois)
{
    const qsizetype at = bytes.indexOf(antes);
    return at >= 0 && bytes.indexOf(depois, at + antes.size()) >= 0;
}

/// Reads the head of a block file: the theme and the objectives may stand anywhere, but normally they stand first.
static void readTexts(const QString &caminho, CabecaBloco &cabeca)
{
    constexpr qsizetype kPedaco = 65536;
    QFile file(nativePath(caminho));
    if (!file.open(QIODevice::ReadOnly))
        return;
    QByteArray bytes;
    QByteArray pedaco;
    do {
        pedaco = file.read(qMax(kPedaco, bytes.size())); // doubled, so that searching again stays in proportion
        bytes += pedaco;
        // An empty piece is the end, also of a file that announces more bytes than it gives, as bad discs do.
    } while (!pedaco.isEmpty() && !(holdsBoth(bytes, "<OBJ>", "</OBJ>") && holdsBoth(bytes, "<TM>", "</TM>")));
    cabeca.objetivo = textoEntre(bytes, "<OBJ>", "</OBJ>");
    cabeca.tema = textoEntre(bytes, "<TM>", "</TM>");
}

static CabecaBloco leNome(const QString &nome, const QString &nivel)
{
    CabecaBloco cabeca;
    cabeca.grupo = grupoDoNome(nome);
    // Kept: the level counts as it was typed, against a name in upper case; "f1" finds no discipline.
    cabeca.disciplina = NomeDisciplina(gTexto.TextoAntes(upper1252(nome), nivel + u"."_s, true).right(2));
    cabeca.ano = anoDoNome(nome);
    return cabeca;
}

CabecaBloco leCabeca(const QString &nome, const QString &nivel, const QString &caminho)
{
    CabecaBloco cabeca;
    try {
        cabeca = leNome(nome, nivel);
    } catch (const ErroExecucao &erro) { // ends the program: whoever reads the box has to find the file
        throw ErroExecucao(erro.numero(),
            u"%1: o nome do arquivo de roteiros %2 não é da forma MMAADDNN.edb. Corrija o nome ou retire o arquivo."_s
                .arg(erro.descricao(), nativePath(caminho)));
    }
    readTexts(caminho, cabeca);
    return cabeca;
}

static QString diretorioLocal()
{
    return gSistema.DirWindows() + u"\\QUOREL2001\\DBBLOCOS\\"_s + gNivel;
}

static QString diretorioConfigurado()
{
    return gConfig.Config(u"DBBLOCOS"_s) + u"\\"_s + gNivel;
}

/// The names of the level's block files in their order. A level without any ends the program.
static QStringList nomesDosBlocos()
{
    QStringList nomes = fileNames(diretorioConfigurado(), u".edb"_s);
    if (nomes.isEmpty())
        nomes = fileNames(diretorioLocal(), u".edb"_s);
    if (nomes.isEmpty()) {
        caixa({u"Diretório não encontrado\nExecute o programa de Instalação"_s,
            nativePath(diretorioLocal() + u"\\*.edb"_s), Icone::Informacao});
        encerraPrograma();
    }
    const QString lista = gTexto.OrdenaLista(nomes.join(u';'), u";"_s, u";"_s, 1, 0, -1);
    return lista.split(u';');
}

/// Makes the option of a new month group.
static void addMonth(int grupo)
{
    constexpr int kLeft = 15; // all in twips
    constexpr int kStep = 450;
    constexpr int kLowestTop = 4500;
    constexpr int kShownAbove = 5; // options that stay above the last one at the bar's maximum
    const int top = grupo * kStep;
    vistaMeses().addMonth(grupo, kLeft, top);
    if (top > kLowestTop)
        vistaMeses().setScrollMaximum((grupo - kShownAbove) * kStep);
}

void MontaCatalogo()
{
    const QStringList nomes = nomesDosBlocos();
    gArquivos.dimension(int(nomes.size()) - 1);
    ContadorDeMeses meses;
    for (int i = 0; i < int(nomes.size()); ++i) {
        const QString &nome = nomes[i];
        if (nome.isEmpty())
            continue;
        const QString local = diretorioLocal() + u"\\"_s + nome;
        // Kept: the local copy wins, though the configured directory is listed first.
        const QString caminho = gTexto.ArquivoExiste(local) ? local : diretorioConfigurado() + u"\\"_s + nome;
        const CabecaBloco cabeca = leCabeca(nome, gNivel, caminho);
        if (meses.next(cabeca.grupo))
            addMonth(meses.mes());
        vistaMeses().showMonth(meses.mes());
        gArquivos.edit(i) = {qint16(meses.mes()), cabeca.ano, cabeca.disciplina, caminho, {}, cabeca.objetivo};
        // Kept: every file of the group sets it, so the last one decides.
        vistaMeses().setCaption(meses.mes(), cabeca.tema);
    }
}

/// The first file of a month and a discipline, or an empty path.
static QString findBloco(qint16 mes, const QString &disciplina)
{
    for (int i = 0; i <= gArquivos.upperBound(); ++i) {
        // A file of an unknown discipline has no name and is never opened.
        if (gArquivos[i].Mes == mes && gArquivos[i].Disciplina == disciplina && !disciplina.isEmpty())
            return gArquivos[i].Arquivo;
    }
    return {};
}

void AbreDisciplina(qint16 mes, qint16 disciplina)
{
    QString arquivo = findBloco(mes, NomeDisciplina(QString::number(disciplina)));
    const bool found = !arquivo.isEmpty();
    if (found)
        LeBancoBlocos(arquivo);
    vistaPalco().hidePrincip();
    vistaPalco().showBlocos();
    if (found) {
        vistaPalco().setManualTag(QString::number(disciplina));
        vistaPalco().setTitulo(u"Roteiros de "_s + NomeDisciplina(QString::number(gDisciplina)));
        LeRoteiros();
        return;
    }
    vistaPalco().setTitulo(u"ROTEIROS NÃO DISPONÍVEIS"_s);
    for (int n = 1; n <= kNumJogos; ++n) {
        eventTurn();
        vistaPalco().hideOne(n);
    }
    vistaPalco().keepBlocosVisible();
}

QString ObjetivoDisciplina(const QString &nome)
{
    const double mes = valorNumerico(vistaMeses().selectedMonth());
    for (int i = 0; i <= gArquivos.upperBound(); ++i) {
        if (gArquivos[i].Mes == mes && equalNoCase(gArquivos[i].Disciplina, nome))
            return nome + u" - "_s + gArquivos[i].Objetivo;
    }
    return {};
}

} // namespace quorel
