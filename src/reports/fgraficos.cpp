#include "reports/fgraficos.h"

#include "data/bd.h"
#include "data/consultas.h"
#include "platform/caixas.h"
#include "platform/costuras.h"
#include "platform/twips.h"
#include "reports/estado.h"
#include "reports/grade.h"
#include "reports/grafico.h"
#include "reports/lista_disciplinas.h"
#include "reports/mascara.h"
#include "reports/periodo.h"
#include "reports/textos.h"
#include "reports/visor.h"
#include "startup/estado.h"

#include <QApplication>
#include <QCheckBox>
#include <QEventLoop>
#include <QHideEvent>
#include <QPushButton>
#include <QScreen>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr Lugar kNormal{0, 0, 7080, 7140};
static constexpr int kPeriodoPadrao = 30; // days back

// The disciplines' numbers are never read; the name ends at the first tab.
static const std::array<QString, 4> &disciplinas()
{
    static const std::array lines{kCiencias + u"\t\t\t\t\t4"_s, kMatematica + u"\t\t\t\t\t1"_s,
        kPortugues + u"\t\t\t\t\t3"_s, kDesenv + u"\t\t\t\t\t6"_s};
    return lines;
}

namespace {

/// The hourglass, for as long as it lives.
class Ampulheta final
{
    Q_DISABLE_COPY_MOVE(Ampulheta)
public:
    Ampulheta() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Ampulheta() { QApplication::restoreOverrideCursor(); }
};

} // namespace

FGraficos::FGraficos(JanelaAtiva &ativa) : JanelaBase(ativa, u"FGraficos"_s, kNormal)
{
    setWindowModality(Qt::ApplicationModal);
    buildLayout();
    connectEvents();
}

void FGraficos::connectEvents()
{
    connect(mLstDisciplinas, &ListaDisciplinas::clicada, this, &FGraficos::listClick);
    connect(mChkDisciplinas, &QCheckBox::toggled, this, &FGraficos::todasChange);
    connect(mCmdGrafPlan[0], &QPushButton::clicked, this, [this] { showChart(true); });
    connect(mCmdGrafPlan[1], &QPushButton::clicked, this, [this] { showChart(false); });
    connect(mCrtGrafico, &CrtGrafico::virado, this, [this] {
        mCrtGrafico->setChartType(mCrtGrafico->chartType() == kBidimensional ? kTridimensional : kBidimensional);
    });
    connect(mCmdImprime, &QPushButton::clicked, this, &FGraficos::imprimeClick);
    connect(mCmdFecha, &QPushButton::clicked, this, &FGraficos::hide);
}

void FGraficos::mostraModal()
{
    mostra();
    QEventLoop loop;
    connect(this, &FGraficos::escondida, &loop, &QEventLoop::quit);
    if (isVisible())
        loop.exec();
}

void FGraficos::hideEvent(QHideEvent *event)
{
    JanelaBase::hideEvent(event);
    if (!event->spontaneous()) // the desktop puts it aside
        emit escondida();
}

void FGraficos::load()
{
    centraliza();
    gBlocosArq.assign(1, {});
    openName();
    if (mMskDataFinal->Text() == QString::fromUtf16(kMascaraVazia))
        mMskDataFinal->setText(dataEmDias(1));
    if (mMskDataInicial->Text() == QString::fromUtf16(kMascaraVazia))
        mMskDataInicial->setText(dataEmDias(-kPeriodoPadrao));
    for (const QString &linha : disciplinas())
        mLstDisciplinas->AddItem(linha);
    mMskDataInicial->setFocus();
}

void FGraficos::centraliza()
{
    const QRect tela = screen()->availableGeometry();
    vaiPara((tela.x() + (tela.width() - width()) / 2.0) * kTwipsPerPixel,
        (tela.y() + (tela.height() - height()) / 2.0) * kTwipsPerPixel);
}

void FGraficos::openName()
{
    gBD->Records_Set(consultas::nomeNoLog(gAluno, gClasse), kLogAulas, {}, kCursorStatic, kTravaOtimista, kOpcaoTexto);
    const QString nome = gBD->Campo(u"AL_NOME"_s, kLogAulas).toString();
    setWindowTitle(u"Gráfico de Desempenho | "_s + (nome.isEmpty() ? u"Aluno Genérico"_s : nome));
}

void FGraficos::unload()
{
    mDescarregada = true;
    hide();
}

EscolhaDisciplinas FGraficos::escolha() const
{
    return {mTodas, mLstDisciplinas->linhaEscolhida()};
}

void FGraficos::todasChange()
{
    mTodas = false;
    if (!mChkDisciplinas->isChecked())
        return;
    mTodas = true;
    mLstDisciplinas->desfazEscolha();
    setVista(*mCrtGrafico, false);
    Processar();
}

void FGraficos::listClick()
{
    if (mTodas)
        return; // Kept: the line shows as chosen, but the box must be unticked first
    mChkDisciplinas->setChecked(false);
    setVista(*mCrtGrafico, false);
    Processar();
}

void FGraficos::Processar()
{
    const Periodo periodo = lePeriodo(mMskDataInicial->Text(), mMskDataFinal->Text());
    if (periodo.estado == EstadoPeriodo::Incompleto)
        return;
    if (periodo.estado == EstadoPeriodo::Invalido) {
        caixa({.texto = u"Data Inválida"_s});
        mMskDataInicial->setFocus();
        return;
    }
    const Ampulheta ampulheta;
    gBD->Records_Set(consultas::logDoPeriodo(periodo.inicio, periodo.fim, gAluno, gClasse), kLogAulas, {},
        kCursorKeyset, kTravaOtimista, kOpcaoTexto);
    MontaPlanilha();
}

void FGraficos::AbreRSTUDO(const QString &Classe, const QString &Tipo)
{
    gBD2->Records_Set(
        consultas::roteirosProntos(Classe, Tipo), u"RSTudo"_s, {}, kCursorStatic, kTravaOtimista, kOpcaoTexto);
}

void FGraficos::MontaPlanilha()
{
    std::optional<Planilha> planilha = montaPlanilha(escolha());
    if (!planilha)
        return;
    mGrdRot->setLinhas(std::move(planilha->linhas));
    mResumo = planilha->resumo;
    if (planilha->completa)
        MontaGraf();
}

void FGraficos::MontaGraf()
{
    struct Serie
    {
        QColor cor;
        QString nome;
    };
    const QColor azul(150, 225, 255);
    const std::vector<Serie> series = mTodas
        ? std::vector<Serie>{{azul, kCiencias}, {{225, 255, 15}, kMatematica}, {{255, 105, 100}, kPortugues}}
        : std::vector<Serie>{{azul, mLstDisciplinas->linhaEscolhida().section(u'\t', 0, 0)}};
    std::vector<std::vector<qint16>> marcas(2);
    for (std::size_t i = 0; i < series.size(); ++i) {
        marcas[0].push_back(mResumo[i].acertos);
        marcas[1].push_back(mResumo[i].erros);
    }
    mCrtGrafico->ChartData(marcas);
    mCrtGrafico->setBrushSolid(1);
    mCrtGrafico->Refresh();
    for (std::size_t i = 0; i < series.size(); ++i) {
        mCrtGrafico->setFillColor(int(i) + 1, series[i].cor);
        mCrtGrafico->setColumnLabel(int(i) + 1, series[i].nome);
    }
    mCrtGrafico->setRowLabel(1, u"Acertos"_s);
    mCrtGrafico->setRowLabel(2, u"Erros"_s);
    setVista(*mCrtGrafico, true);
    mResumo = {};
}

void FGraficos::showChart(bool grafico)
{
    setVista(*mGrdRot, !grafico);
    setVista(*mCrtGrafico, grafico);
}

// A sheet that lies behind the chart is visible all the same, but no place for the keyboard to get lost in.
void FGraficos::setVista(QWidget &vista, bool visivel)
{
    vista.setVisible(visivel);
    mGrdRot->setFocusPolicy(mCrtGrafico->isHidden() ? Qt::StrongFocus : Qt::NoFocus);
}

} // namespace quorel
