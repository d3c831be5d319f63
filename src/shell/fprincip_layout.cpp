#include "shell/blocos_do_mes.h"
#include "shell/dica.h"
#include "shell/fprincip.h"
#include "shell/imagem.h"
#include "visual/aparencia.h"
#include "visual/controles.h"

#include <array>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr double kLadoBloco = 1275; // twips
static constexpr double kLadoBotao = 555; // twips
static constexpr double kPontosTitulo = 14.25;
static constexpr int kComFigura = 10; // blocks 11 and 12 have none

// Left and Top of the blocks, in twips.
static constexpr std::array<std::pair<double, double>, kNumBlocos> kBlocos{
    {{4950, 6030}, {6345, 945}, {315, 3495}, {315, 6060}, {3352, 6060}, {6390, 6060}, {3330, 3495}, {6345, 3480},
        {315, 945}, {3330, 945}, {4950, 6060}, {4950, 6060}}};

// In the order of reading, which is that of the Tab key.
static constexpr std::array<int, kNumBlocos> kOrdemTab{9, 10, 2, 3, 7, 8, 4, 5, 1, 6, 11, 12};

static constexpr LinhaLayout kLblTitulo{u"LblTitulo", {45, 60, 8130, 330}};
static constexpr LinhaLayout kLblMes{u"LblMes", {240, 8460, 315, 330}};
static constexpr LinhaLayout kCmdDesenho{u"CmdDesenho", {315, 7560, kLadoBotao, kLadoBotao}};
static constexpr LinhaLayout kCmdHelp{u"CmdHelp", {7050, 7560, kLadoBotao, kLadoBotao}};
static constexpr LinhaLayout kCmdArquivos{u"CmdArquivos", {3780, 7560, kLadoBotao, kLadoBotao}};
static constexpr LinhaLayout kCommand1{u"Command1", {1920, 7560, kLadoBotao, kLadoBotao}};
static constexpr Lugar kFrmTip{2640, 2280, 3390, 555};
static constexpr Lugar kTxtInf{60, 120, 3315, 315};

void fPrincip::buildLayout()
{
    setFont(fonte(Tipo::Arial, kPontosTitulo));
    setFundo(u"fundo_principal"_s);
    setWindowTitle(u"Blocos de Roteiros do Sistema Quorel"_s);
    novoTitulo(kLblTitulo, u"Disciplinas"_s, u"Disciplinas"_s, this);
    novoTitulo(kLblMes, QString(), u"Mês"_s, this);
    buildBlocos();
    buildBotoes();
    mDica = new Dica(kFrmTip, kTxtInf, this);
}

void fPrincip::buildBlocos()
{
    for (int i = 1; i <= kNumBlocos; ++i) {
        const auto &[left, top] = kBlocos[std::size_t(i - 1)];
        auto *bloco = new Imagem(u"ImgBloco(%1)"_s.arg(i), {left, top, kLadoBloco, kLadoBloco}, this);
        bloco->setAccessibleName(i <= kComFigura ? ImgDisc(i) : u"Sem disciplina"_s);
        if (i <= kComFigura)
            bloco->setPicture(figura(u"bloco_%1"_s.arg(i, 2, 10, QChar(u'0'))));
        mBlocos.push_back(bloco);
    }
    QWidget *anterior = nullptr;
    for (const int indice : kOrdemTab) {
        if (anterior)
            setTabOrder(anterior, &bloco(indice));
        anterior = &bloco(indice);
    }
}

void fPrincip::buildBotoes()
{
    mCmdDesenho = novoBotao(kCmdDesenho, u"desenho"_s, u"Editor de Desenho"_s, this);
    mCommand1 = novoBotao(kCommand1, u"quorel"_s, u"Chama Quorel"_s, this);
    mCmdArquivos = novoBotao(kCmdArquivos, u"revista"_s, u"Revista Quorel"_s, this);
    mCmdHelp = novoBotao(kCmdHelp, u"ajuda"_s, u"Ajuda do Sistema"_s, this);
    for (QPushButton *oculto : {mCmdDesenho, mCommand1, mCmdArquivos})
        oculto->hide();
}

} // namespace quorel
