#include "lessons/espia.h"

#include "lessons/andamento.h"
#include "lessons/gancho.h"
#include "platform/codec.h"
#include "platform/protocolo.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

Espia &spy()
{
    static Espia one;
    return one;
}

struct NomeDeCodigo
{
    qint32 codigo;
    QStringView nome;
};
constexpr std::array<NomeDeCodigo, 11> kNomes{{{MSG_EXEC_CALC, u"MSG_EXEC_CALC"}, {MSG_AULA, u"MSG_AULA"},
    {MSG_FECHA_BLOCOS, u"MSG_FECHA_BLOCOS"}, {MSG_PROXIMA, u"MSG_PROXIMA"}, {MSG_ANTERIOR, u"MSG_ANTERIOR"},
    {MSG_SAI, u"MSG_SAI"}, {MSG_ALUNO, u"MSG_ALUNO"}, {MSG_CLASSE, u"MSG_CLASSE"}, {MSG_RESPOSTA, u"MSG_RESPOSTA"},
    {MSG_CONTROLE, u"MSG_CONTROLE"}, {MSG_JOGO, u"MSG_JOGO"}}};

QString nameOfCode(qint32 codigo)
{
    const auto *found = std::ranges::find(kNomes, codigo, &NomeDeCodigo::codigo);
    return found == kNomes.end() ? u"código desconhecido: é ignorado"_s : found->nome.toString();
}

QString nameOfWindow(Janela janela)
{
    if (janela == 0)
        return u"(nenhuma janela)"_s;
    if (janela == janelaBlocos())
        return u"o próprio gerenciador"_s;
    const std::array<std::pair<Janela, QStringView>, 5> known{{{gJanelaZeto, u"Zeto"}, {gJanelaDesenho, u"Desenho"},
        {gJanelaVrel, u"Vrel"}, {gJanelaLivros, u"Livros"}, {gJanelaCalc, u"Calc"}}};
    const auto *found = std::ranges::find(known, janela, &std::pair<Janela, QStringView>::first);
    return found == known.end() ? u"janela %1"_s.arg(janela) : found->second.toString();
}

/// Controls as "\t", "\n" and "\x1B".
QString shown(const QString &texto)
{
    constexpr char16_t kDelete = 0x7F;
    constexpr char16_t kAfterControls = 0xA0; // between the two the second set of controls
    constexpr int kHex = 16;
    QString out;
    for (const QChar c : texto) {
        const char16_t code = c.unicode();
        if (c == u'\n')
            out += "\\n"_L1;
        else if (c == u'\t')
            out += "\\t"_L1;
        else if (c == u'\r')
            out += "\\r"_L1;
        else if (code < u' ' || (code >= kDelete && code < kAfterControls))
            out += u"\\x%1"_s.arg(int(code), 2, kHex, QLatin1Char('0'));
        else
            out += c;
    }
    return out;
}

QString asMessage(const Passagem &passagem, QStringView seta)
{
    const QString texto =
        passagem.tamanho > 0 ? u'"' + shown(passagem.texto) + u'"' : u"sem texto: vale o da mensagem anterior"_s;
    return u"%1 %2  %3 %4, tamanho %5: %6"_s.arg(seta, nameOfWindow(passagem.outra))
        .arg(passagem.codigo)
        .arg(nameOfCode(passagem.codigo))
        .arg(passagem.tamanho)
        .arg(texto);
}

} // namespace

void setEspia(Espia espia)
{
    spy() = std::move(espia);
}

QString textoDaPassagem(const Passagem &passagem)
{
    switch (passagem.tipo) {
    case Passagem::Tipo::Envio:
        return asMessage(passagem, u"->");
    case Passagem::Tipo::Chegada:
        return asMessage(passagem, u"<-");
    case Passagem::Tipo::Recusa:
        return u"!! %1  não recebeu %2 %3: foi embora, não respondeu a tempo ou respondeu 0"_s
            .arg(nameOfWindow(passagem.outra))
            .arg(passagem.codigo)
            .arg(nameOfCode(passagem.codigo));
    case Passagem::Tipo::Ausente:
        break;
    }
    const QString titulo = passagem.texto.section(u'\n', 0, 0), comando = passagem.texto.section(u'\n', 1);
    return u"!! nenhuma janela começa por \"%1\". O arquivo não existe, não pode ser executado, terminou logo, ou não "
           "mostrou a janela a tempo: %2"_s.arg(shown(titulo), shown(comando));
}

void tellEnvio(Janela janela, qint32 codigo, const QString &texto)
{
    if (spy() && janela != janelaBlocos()) // what the shell sends to itself is told as it comes
        spy()({Passagem::Tipo::Envio, janela, codigo, qint32(texto.size() + 1), texto});
}

void tellRecusa(Janela janela, qint32 codigo)
{
    if (spy())
        spy()({Passagem::Tipo::Recusa, janela, codigo, 0, {}});
}

void tellAusente(const QString &titulo, const QString &comando)
{
    if (spy())
        spy()({Passagem::Tipo::Ausente, 0, 0, 0, titulo + u'\n' + comando});
}

void tellChegada(Janela remetente, qintptr lParam)
{
    if (!spy() || lParam == 0)
        return;
    const auto &data = *reinterpret_cast<const CopyData *>(lParam); // NOLINT(performance-no-int-to-ptr)
    const auto size = qint32(data.size);
    QByteArrayView bytes(static_cast<const char *>(data.bytes), data.bytes && size > 0 ? size : 0);
    if (const qsizetype end = bytes.indexOf('\0'); end >= 0)
        bytes = bytes.first(end);
    spy()({Passagem::Tipo::Chegada, remetente, qint32(quint32(data.code)), size, decode1252(bytes)});
}

} // namespace quorel
