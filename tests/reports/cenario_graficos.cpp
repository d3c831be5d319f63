#include "cenario_graficos.h"

#include "data/bd.h"
#include "data/cadastros.h"
#include "platform/codec.h"
#include "platform/costuras.h"
#include "reports/grade.h"
#include "startup/quorel_zeto.h"

#include <QAbstractButton>
#include <QDir>
#include <QLineEdit>
#include <QRegularExpression>

namespace quorel::teste {

using namespace Qt::StringLiterals;

/// A block file with Roteiros of these names, numbered on from a code.
static void block(const QString &arquivo, int codigo, const QStringList &nomes)
{
    QString texto;
    for (int i = 0; i < nomes.size(); ++i)
        texto += u"[ROT<%1>]\r\nNomeRot =%2\r\nCODROT:%3\r\n[<%1>1]\r\n"_s.arg(i + 1).arg(nomes[i]).arg(codigo + i);
    escreve(qEnvironmentVariable("QUOREL_WINDIR") + u"/QUOREL2001/DBBLOCOS/"_s + arquivo, encode1252(texto));
}

CenarioGraficos::CenarioGraficos(const QString &aluno)
{
    reiniciaStartup();
    reiniciaReports();
    QDir(qEnvironmentVariable("QUOREL_WINDIR")).removeRecursively();
    block(u"F1/0226CIF1.edb"_s, 100, {"Primeiro", "Água limpa", "Plantas"});
    block(u"F1/0226MAF1.edb"_s, 200, {"Primeiro", "Contar até dez"});
    block(u"F1/0226POF1.edb"_s, 300, {"Primeiro", "As letras"});
    block(u"I1/0226DEI1.edb"_s, 400, {"Primeiro", "Antes e depois"});
    gConfig.SetaCFG(QString()); // all below the Windows directory
    costuras().now = [] { return QDateTime(QDate(2026, 3, 20), QTime(12, 0)); };
    mRegistro.sql(
        u"INSERT INTO CL_Classes VALUES (10, '1º ano A', '', ''); INSERT INTO AL_Alunos VALUES (20, '%1')"_s.arg(
            QString(aluno).replace(u'\'', u"''"_s)));
    mRegistro.open();
    CriaGenericos();
    AbreTabelasCadastro();
    gAluno = 20;
    gClasse = 10;
    fazOutra();
}

CenarioGraficos::~CenarioGraficos()
{
    mJanela.reset();
    reiniciaData();
    reiniciaCosturas();
}

void CenarioGraficos::log(const QString &data, int roteiro, const QString &respostas)
{
    mRegistro.sql(u"INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, LG_Resp) VALUES (20, 10, '%1', %2, "
                  "'disc<disc>nome<rot>%3')"_s.arg(data, QString::number(roteiro), respostas));
}

void CenarioGraficos::logEmTodas()
{
    log(u"2026-03-01 10:00:00"_s, 101, u"A:A:E:"_s);
    log(u"2026-03-02 10:00:00"_s, 102, u"A:"_s);
    log(u"2026-03-03 10:00:00"_s, 201, u"E:E:"_s);
    log(u"2026-03-04 10:00:00"_s, 301, u"A:A:A:A:"_s);
    log(u"2026-03-05 10:00:00"_s, 401, u"A:E:E:E:"_s);
}

QListWidget &CenarioGraficos::lista()
{
    return child<QListWidget>(*mJanela, u"LstDisciplinas"_s);
}

CrtGrafico &CenarioGraficos::grafico()
{
    return child<CrtGrafico>(*mJanela, u"CrtGrafico"_s);
}

void CenarioGraficos::clicaLinha(int linha, Qt::KeyboardModifier tecla)
{
    QTest::mouseClick(lista().viewport(), Qt::LeftButton, tecla, lista().visualItemRect(lista().item(linha)).center());
}

QStringList CenarioGraficos::planilha()
{
    QStringList linhas;
    for (const LinhaPlanilha &linha : child<GrdRot>(*mJanela, u"GrdRot"_s).linhas())
        linhas << QStringList(linha.begin(), linha.end()).join(u'|');
    return linhas;
}

void CenarioGraficos::faz(const QString &passos)
{
    static const QRegularExpression forma(u"^([^=?]+)([=?]?)(.*)$"_s);
    for (const QString &passo : passos.split(u"; "_s, Qt::SkipEmptyParts)) {
        const auto partes = forma.match(passo);
        const QString nome = partes.captured(1);
        const QString texto = partes.captured(3);
        if (partes.captured(2) == u"?"_s) {
            QVERIFY2(mostra(nome) == texto, qPrintable(passo + u" is "_s + mostra(nome)));
        } else if (nome == u"linha"_s) {
            clicaLinha(texto.toInt());
        } else if (partes.captured(2) == u"="_s) {
            auto &caixa = child<QLineEdit>(*mJanela, nome);
            caixa.clear();
            caixa.setCursorPosition(0);
            QTest::keyClicks(&caixa, texto);
        } else {
            child<QAbstractButton>(*mJanela, nome).click();
        }
    }
}

QString CenarioGraficos::mostra(const QString &nome)
{
    if (nome == u"figuras"_s)
        return grafico().accessibleDescription();
    if (nome == u"linha"_s)
        return lista().selectedItems().isEmpty() ? u""_s
                                                 : QString::number(lista().row(lista().selectedItems().front()));
    if (nome == u"linhas"_s)
        return QString::number(planilha().size());
    if (nome.startsWith(u"Msk"_s))
        return child<QLineEdit>(*mJanela, nome).displayText();
    return child<QWidget>(*mJanela, nome).isVisible() ? u"sim"_s : u"não"_s;
}

void CenarioGraficos::fazOutra()
{
    mJanela = std::make_unique<FGraficos>(mAtiva);
}

void CenarioGraficos::mostraEFaz(const std::function<void()> &acao)
{
    const NextWindow<FGraficos> next([&acao](FGraficos &) { acao(); });
    mJanela->mostraModal();
    QVERIFY(next.came());
}

} // namespace quorel::teste
