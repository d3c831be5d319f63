#include "reports/fgraficos.h"
#include "reports/grade.h"
#include "reports/grafico.h"
#include "reports/lista_disciplinas.h"
#include "reports/mascara.h"
#include "reports/visor.h"
#include "visual/aparencia.h"
#include "visual/controles.h"

#include <QGroupBox>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr double kPontos = 9.75;
static constexpr double kLado = 735; // twips of a picture button
static constexpr int kFaixa = 66; // pixels above the page, for the buttons
static constexpr QRgb kFundo = 0xffe8f1fa;

static constexpr LinhaLayout kCmdImprime{u"CmdImprime", {120, 105, kLado, kLado}};
static constexpr LinhaLayout kCmdFecha{u"CmdFecha", {990, 105, kLado, kLado}};
static constexpr LinhaLayout kCmdGrafPlan1{u"CmdGrafPlan(1)", {120, 1065, kLado, kLado}};
static constexpr LinhaLayout kCmdGrafPlan0{u"CmdGrafPlan(0)", {990, 1065, kLado, kLado}};
static constexpr LinhaLayout kLblGrafPla0{u"LblGrafPla(0)", {60, 1815, 855, 270}};
static constexpr LinhaLayout kLblGrafPla1{u"LblGrafPla(1)", {930, 1815, 855, 270}};
static constexpr LinhaLayout kLblData0{u"LblData(0)", {2010, 150, 1650, 270}};
static constexpr LinhaLayout kMskDataInicial{u"MskDataInicial", {2010, 435, 1500, 405}};
static constexpr LinhaLayout kLblData1{u"LblData(1)", {2010, 1095, 1650, 270}};
static constexpr LinhaLayout kMskDataFinal{u"MskDataFinal", {2010, 1380, 1500, 405}};
static constexpr LinhaLayout kFrmDesempenho{u"FrmDesempenho", {3810, 60, 3150, 2085}};
static constexpr LinhaLayout kLstDisciplinas{u"LstDisciplinas", {120, 420, 2910, 1140}};
static constexpr LinhaLayout kChkDisciplinas{u"ChkDisciplinas", {120, 1605, 2910, 405}};
static constexpr Lugar kVista{120, 2280, 6840, 4740}; // of the sheet and of the chart
static constexpr Lugar kWWW{50, 10, 7080, 7140};

static QString nameOf(const LinhaLayout &linha)
{
    return QString::fromUtf16(linha.nome);
}

static QLabel *newLabel(const LinhaLayout &linha, const QString &texto, QWidget *parent)
{
    auto *label = new QLabel(texto, parent);
    label->setObjectName(nameOf(linha));
    label->setTextFormat(Qt::PlainText);
    coloca(*label, linha.lugar);
    return label;
}

static void place(QWidget *controle, const QString &nome, const Lugar &lugar)
{
    controle->setObjectName(nome);
    coloca(*controle, lugar);
}

void FGraficos::buildLayout()
{
    QPalette paleta = palette();
    paleta.setColor(QPalette::Window, QColor::fromRgb(kFundo));
    setPalette(paleta);
    setFont(fonte(Tipo::Sistema, kPontos));
    setWindowTitle(u" "_s); // until it is loaded; Qt would put the program's name in the place of an empty one
    buildPeriodo();
    buildDisciplinas();
    buildBotoes();
    buildVistas();
}

void FGraficos::buildPeriodo()
{
    mLblData = {newLabel(kLblData0, u"Data Inicial:"_s, this), newLabel(kLblData1, u"Data Final:"_s, this)};
    mMskDataInicial = new MaskEdBox(this);
    place(mMskDataInicial, nameOf(kMskDataInicial), kMskDataInicial.lugar);
    mMskDataInicial->setAccessibleName(u"Data Inicial"_s);
    mMskDataFinal = new MaskEdBox(this);
    place(mMskDataFinal, nameOf(kMskDataFinal), kMskDataFinal.lugar);
    mMskDataFinal->setAccessibleName(u"Data Final"_s);
}

void FGraficos::buildDisciplinas()
{
    mFrmDesempenho = new QGroupBox(u"Disciplinas"_s, this);
    place(mFrmDesempenho, nameOf(kFrmDesempenho), kFrmDesempenho.lugar);
    mLstDisciplinas = new ListaDisciplinas(mFrmDesempenho);
    place(mLstDisciplinas, nameOf(kLstDisciplinas), kLstDisciplinas.lugar);
    mLstDisciplinas->setAccessibleName(u"Disciplinas"_s);
    mChkDisciplinas = new CaixaMarca(kChkDisciplinas, u"Seleciona Todas"_s, mFrmDesempenho);
    mChkDisciplinas->setFont(fonte(Tipo::Sistema, kPontos));
}

void FGraficos::buildBotoes()
{
    auto *planilha = novoBotao(kCmdGrafPlan1, u"planilha"_s, QString(), this);
    planilha->setAccessibleName(u"Planilha"_s);
    auto *grafico = novoBotao(kCmdGrafPlan0, u"grafico"_s, QString(), this);
    grafico->setAccessibleName(u"Gráfico"_s);
    mCmdGrafPlan = {grafico, planilha};
    mLblGrafPla = {newLabel(kLblGrafPla0, u"Planilha"_s, this), newLabel(kLblGrafPla1, u"Gráfico"_s, this)};
    for (QLabel *label : mLblGrafPla)
        label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
}

void FGraficos::buildVistas()
{
    mGrdRot = new GrdRot(this);
    place(mGrdRot, u"GrdRot"_s, kVista);
    mCrtGrafico = new CrtGrafico(this); // over the sheet: it is what shows when both are visible
    place(mCrtGrafico, u"CrtGrafico"_s, kVista);
    mWWW = new WebBrowser(kFaixa, this);
    place(mWWW, u"WWW"_s, kWWW);
    mCmdImprime = novoBotao(kCmdImprime, u"imprime"_s, u"Imprime"_s, this);
    mCmdFecha = novoBotao(kCmdFecha, u"fecha"_s, u"Fecha Histórico"_s, this);
    for (QWidget *controle : findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
        controle->setVisible(controle != mGrdRot && controle != mCrtGrafico && controle != mWWW);
}

} // namespace quorel
