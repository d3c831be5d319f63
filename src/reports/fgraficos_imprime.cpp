#include "platform/caixas.h"
#include "platform/caminho.h"
#include "platform/costuras.h"
#include "reports/fgraficos.h"
#include "reports/grade.h"
#include "reports/grafico.h"
#include "reports/mascara.h"
#include "reports/paginas.h"
#include "reports/visor.h"
#include "startup/quorel_zeto.h"
#include "startup/texto_util.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr double kTopDaPagina = 10; // twips, in the preview

/// The window and the page in it, in one of the window's two forms; twips.
struct Forma
{
    Lugar janela;
    Lugar pagina;
};
static constexpr double kEsquerda = 50;
static constexpr Forma kPrevia{{0, 0, 8250, 8300}, {kEsquerda, kTopDaPagina, 8150, 7910}};
static constexpr Forma kNormal{{0, 0, 7080, 7140}, {kEsquerda, kTopDaPagina, 7080, 7140}};

QString FGraficos::CriaHtmlGrafico()
{
    mCrtGrafico->EditCopy();
    mArqGrafico = gTexto.ArquivoTemporario(u"TMP"_s);
    const QImage picture = QGuiApplication::clipboard()->image();
    picture.save(nativePath(mArqGrafico), "PNG"); // a picture that can't be had shows as none on the page
    const CabecalhoPagina cabecalho = leCabecalho(mMskDataInicial->Text(), mMskDataFinal->Text());
    mArqHtml = gravaPagina(paginaGrafico(cabecalho, mArqGrafico));
    return mArqHtml;
}

QString FGraficos::CriaDesemp_html()
{
    const CabecalhoPagina cabecalho = leCabecalho(mMskDataInicial->Text(), mMskDataFinal->Text());
    return gravaPagina(paginaDesempenho(cabecalho, mGrdRot->linhas()));
}

void FGraficos::imprimeClick()
{
    if (mWWW->isHidden())
        beginPreview();
    else
        endPreview();
}

void FGraficos::beginPreview()
{
    const bool grafico = !mCrtGrafico->isHidden();
    const QString pagina = grafico ? CriaHtmlGrafico() : CriaDesemp_html();
    QStringList figuras{gConfig.N_Fig(u"quorel"_s)};
    if (grafico)
        figuras << mArqGrafico;
    setCliente(kPrevia.janela);
    coloca(*mWWW, kPrevia.pagina);
    OcultaControl();
    mWWW->Navigate(pagina, figuras);
}

void FGraficos::endPreview()
{
    const Resposta resposta = caixa(
        {.texto = u"Deseja Imprimir esta página ?"_s, .titulo = u"Confirmar Impressão"_s, .botoes = Botoes::SimNao});
    if (resposta == Resposta::Sim)
        mWWW->ExecWB();
    gTexto.ApagaArquivo(mArqGrafico); // Kept: the sheet's page and the ".TMP" of a page's name stay where they are
    gTexto.ApagaArquivo(mArqHtml);
    setCliente(kNormal.janela);
    coloca(*mWWW, kNormal.pagina);
    OcultaControl();
}

void FGraficos::OcultaControl()
{
    const bool normal = mFrmDesempenho->isHidden(); // the form that it turns to
    mFrmDesempenho->setVisible(normal);
    setVista(*mGrdRot, normal);
    setVista(*mCrtGrafico, normal); // Kept: both, whichever of them was on view before
    for (QWidget *controle : std::initializer_list<QWidget *>{mCmdGrafPlan[0], mCmdGrafPlan[1], mLblGrafPla[1],
             mLblGrafPla[0], mLblData[0], mLblData[1], mMskDataFinal, mMskDataInicial, mWWW})
        controle->setVisible(controle->isHidden());
}

} // namespace quorel
