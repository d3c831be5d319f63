#include "shell/dica.h"
#include "shell/fblocos.h"
#include "shell/imagem.h"
#include "visual/aparencia.h"
#include "visual/controles.h"

#include <QLabel>

#include <array>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr int kPorLinha = 4; // pictures in a row
static constexpr std::array<double, kPorLinha> kColunas{240, 2220, 4380, 6540}; // twips
static constexpr std::array<double, kPorLinha> kLinhas{540, 2460, 4380, 6300}; // twips
static constexpr double kLadoBotao = 1275; // twips

static constexpr int kJogosPorBotao = 3;
static constexpr std::array<double, kPorLinha> kLinhasJogos{1920, 3840, 5760, 7680}; // twips
static constexpr double kLadoJogo = 315; // twips
static constexpr double kPassoJogo = 480; // twips between the small buttons of a picture
static constexpr double kDesvioUltimos = 60; // twips that the last three stand further to the right
static constexpr double kEsquerdaJogoZero = 60; // twips
static constexpr double kPontosJogo = 12;
static constexpr std::array<QRgb, kJogosPorBotao> kCoresJogos{0xffffffc0, 0xffc0ffc0, 0xffffe0c0};

static constexpr LinhaLayout kLblTitulo{u"LblTitulo", {0, 0, 8100, 330}};
static constexpr LinhaLayout kCmdManual{u"CmdManual", {3720, 7740, 495, 495}};
static constexpr LinhaLayout kCmdVoltar{u"cmdVoltar", {7320, 0, 495, 495}};
static constexpr Lugar kFrmTip{960, 6360, 4410, 555};
static constexpr Lugar kTxtInf{120, 120, 4155, 315};

void fBlocos::buildLayout()
{
    setFundo(u"fundo_blocos"_s);
    mLblTitulo = novoTitulo(kLblTitulo, u"Roteiros de Português"_s, QString(), this);
    buildBotoes();
    buildJogos();
    mCmdManual = novoBotao(kCmdManual, u"manual"_s, u"Manual"_s, this);
    mCmdVoltar = novoBotao(kCmdVoltar, u"voltar"_s, u"Voltar às disciplinas"_s, this);
    mDica = new Dica(kFrmTip, kTxtInf, this);
}

void fBlocos::buildBotoes()
{
    for (int i = 0; i < kNumBotoes; ++i) {
        const double left = kColunas[std::size_t(i % kPorLinha)];
        const double top = kLinhas[std::size_t(i / kPorLinha)];
        auto *botao = new Imagem(u"ImgBotao(%1)"_s.arg(i + 1), {left, top, kLadoBotao, kLadoBotao}, this);
        botao->setAccessibleName(u"Roteiro %1"_s.arg(i + 1));
        mBotoes.push_back(botao);
    }
}

static Lugar lugarDoJogo(int k)
{
    if (k == 0)
        return {kEsquerdaJogoZero, 0, kLadoJogo, kLadoJogo};
    const int botao = (k - 1) / kJogosPorBotao;
    const int qual = (k - 1) % kJogosPorBotao;
    const double desvio = botao == kNumBotoes - 1 ? kDesvioUltimos : 0;
    return {kColunas[std::size_t(botao % kPorLinha)] + qual * kPassoJogo + desvio,
        kLinhasJogos[std::size_t(botao / kPorLinha)], kLadoJogo, kLadoJogo};
}

void fBlocos::buildJogos()
{
    for (int k = 0; k <= kNumJogos; ++k) {
        auto *jogo = new QPushButton(k == 0 ? u"1"_s : u"?"_s, this);
        jogo->setObjectName(u"CmdJogos(%1)"_s.arg(k));
        jogo->setAccessibleName(u"Jogo %1"_s.arg(k));
        jogo->setFont(fonte(Tipo::TimesNewRoman, kPontosJogo, true));
        QPalette paleta = jogo->palette();
        paleta.setColor(QPalette::Button, QColor::fromRgb(kCoresJogos[std::size_t((k + 2) % kJogosPorBotao)]));
        jogo->setPalette(paleta);
        coloca(*jogo, lugarDoJogo(k));
        jogo->hide();
        mJogos.push_back(jogo);
    }
}

} // namespace quorel
