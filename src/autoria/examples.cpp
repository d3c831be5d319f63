#include "autoria/lessontable.h"
#include "autoria/source.h"

namespace quorel {

using namespace Qt::StringLiterals;

namespace {

struct Example
{
    Kind kind;
    const char *comment;
    const char *lines;
};

constexpr std::array<Example, 7> kExamples{{
    {Kind::Leia, R"(# LEIA: uma página para ler. Com mais linhas "pagina:", vira um livro de várias páginas.
# "fig" é o nome de uma figura e "som" o de um som, sem extensão; tire as linhas que não usar.
)",
        R"(AULA Zeto leia: Vamos começar
texto: Escreva aqui o que a criança vai ler.
 Uma linha que começa com um espaço continua o texto em outra linha.
 .
 Um ponto sozinho deixa uma linha em branco.
)"},
    {Kind::Escolha, R"(# ESCOLHA: uma só opção é a certa. "*" marca a certa, "-" as erradas.
# Uma opção pode ter figura, atrás de "@", com ou sem texto: - cachorro @CAO
)",
        R"(AULA Zeto escolha: Qual é o resultado?
texto: Quanto é 2 + 3?
- 4
* 5
- 6
elogio: Isso mesmo!
dica: Conte nos dedos.
)"},
    {Kind::Marque, R"(# MARQUE: mais de uma opção é certa, e a criança marca todas.
)",
        R"(AULA Zeto marque: Quais são animais?
texto: Marque todos os animais.
* gato
- mesa
* sapo
dica: Os animais são vivos.
)"},
    {Kind::Escreva, R"(# ESCREVA: a criança escreve a resposta. Outras formas certas vêm atrás de "|".
# Maiúsculas e espaços nas pontas não contam.
)",
        R"(AULA Zeto escreva: Escreva o número
texto: Quantos dias tem uma semana?
resposta: 7|sete
dica: Comece no domingo e conte até o sábado.
)"},
    {Kind::Ordene, R"(# ORDENE: as opções vão aqui na ordem certa, com "="; o programa as mostra em outra ordem.
)",
        R"(AULA Zeto ordene: Do menor para o maior
texto: Clique nos números do menor para o maior.
= 3
= 8
= 15
dica: Qual deles vem primeiro quando você conta?
)"},
    {Kind::Desenhe, R"(# DESENHE: a criança desenha à vontade. Não há resposta certa.
)",
        R"(AULA Desenho desenhe: Meu desenho
texto: Desenhe o que você mais gosta de fazer na escola.
)"},
    {Kind::Historia, R"(# HISTORIA: uma história em páginas. Se houver opções, a última página é a pergunta.
)",
        R"(AULA Vrel historia: A semente
texto: Era uma vez uma semente que dormia na terra.
pagina: Veio a chuva, e a semente acordou.
pagina: O que acordou a semente?
* a chuva
- o vento
dica: Leia de novo a segunda página.
)"},
}};

constexpr const char *kBegin =
    R"(# Um bloco: os roteiros de um mês de uma disciplina. O nome do arquivo diz o mês, o ano e a disciplina: 0326MA.
# As linhas que começam com "#" são comentários. Grave em UTF-8.
tema: Março: o tema do mês
objetivo: o que a criança vai aprender.

# Um roteiro: o código (um número que nenhum outro roteiro tem), o nome, a figura do botão, um som e uma frase.
ROTEIRO 90001 Meu primeiro roteiro
desc: O que há neste roteiro.
# As habilidades da BNCC, separadas por vírgulas: bncc: EF02MA06, EF02MA07

)";

constexpr const char *kEnd =
    R"(# A última aula não tem exercício: a resposta dada na última página não chega ao cadastro.
AULA Zeto leia: Parabéns!
texto: Você chegou ao fim.
)";

} // namespace

QByteArray exampleSource(Kind kind)
{
    QByteArray text = kBegin;
    for (const Example &example : kExamples) {
        if (kind == Kind::None || kind == example.kind)
            text += QByteArray(example.comment) + example.lines + '\n';
    }
    return text + kEnd;
}

QByteArray aulaSnippet(Kind kind)
{
    for (const Example &example : kExamples) {
        if (kind == example.kind)
            return example.lines;
    }
    return {};
}

} // namespace quorel
