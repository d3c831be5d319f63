#include "cenario_graficos.h"

#include "data/bd.h"
#include "data/cadastros.h"
#include "data/schema.h"
#include "platform/codec.h"
#include "platform/costuras.h"
#include "reports/estado.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include <QAbstractButton>
#include <QDir>
#include <QListWidget>
#include <QTimer>

#include <sqlite3.h>

namespace quorel::teste {

using namespace Qt::StringLiterals;

static constexpr int kAluno = 20;
static constexpr int kClasse = 10;

static QString windows(const QString &resto)
{
    return qEnvironmentVariable("QUOREL_WINDIR") + u'/' + resto;
}

static void block(const QString &arquivo, const QList<std::pair<int, QString>> &roteiros)
{
    QString text = u"<TM>Tema</TM>\r\n"_s;
    for (qsizetype i = 0; i < roteiros.size(); ++i)
        text +=
            u"[ROT<%1>]\r\nNomeRot =%2\r\nCODROT:%3\r\n[<%1>1]\r\nNome =Aula\r\nLinha =(1,1)7\r\n\tTipo = Zeto\t\r\n"_s
                .arg(QString::number(i + 1), roteiros[i].second, QString::number(roteiros[i].first));
    escreve(windows(u"QUOREL2001/DBBLOCOS/"_s + arquivo), encode1252(text));
}

static void install()
{
    QDir(windows(QString())).removeRecursively();
    block(u"F1/0226CIF1.edb"_s, {{100, u"Primeiro"_s}, {101, u"Água limpa"_s}, {102, u"Plantas"_s}});
    block(u"F1/0226MAF1.edb"_s, {{200, u"Primeiro"_s}, {201, u"Contar até dez"_s}});
    block(u"F1/0226POF1.edb"_s, {{300, u"Primeiro"_s}, {301, u"As letras"_s}});
    block(u"I1/0226DEI1.edb"_s, {{400, u"Primeiro"_s}, {401, u"Antes e depois"_s}});
    gConfig.SetaCFG(u"[zeto]\r\nZETO_MM=%1\\zeto_mm\r\nDBBLOCOS=%1\\DBBLOCOS"_s.arg(barras(windows(u"QUOREL2001"_s))));
}

CenarioGraficos::CenarioGraficos(const QString &aluno)
{
    reiniciaStartup();
    reiniciaReports();
    install();
    costuras().now = [] { return QDateTime(kHoje, QTime(12, 0)); };
    sql(QString::fromUtf8(registerSchema()));
    sql(u"INSERT INTO CL_Classes VALUES (10, '1º ano A', '', ''); INSERT INTO AL_Alunos VALUES (20, '%1')"_s.arg(
        QString(aluno).replace(u'\'', u"''"_s)));
    criaBD();
    gBD->Source(barras(windows(u"Cadastros.mdb"_s)));
    CriaGenericos();
    AbreTabelasCadastro();
    gAluno = kAluno;
    gClasse = kClasse;
    mJanela = std::make_unique<FGraficos>(mAtiva);
}

CenarioGraficos::~CenarioGraficos()
{
    mJanela.reset();
    reiniciaData();
    reiniciaCosturas();
}

void CenarioGraficos::sql(const QString &comando)
{
    sqlite3 *db = nullptr;
    char *message = nullptr;
    if (sqlite3_open(windows(u"Cadastros.mdb"_s).toUtf8().constData(), &db) != SQLITE_OK
        || sqlite3_exec(db, comando.toUtf8().constData(), nullptr, nullptr, &message) != SQLITE_OK)
        qFatal("%s", message ? message : "no register");
    sqlite3_close(db);
}

void CenarioGraficos::log(const QString &data, int roteiro, const QString &respostas)
{
    sql(u"INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, LG_Resp) VALUES (20, 10, '%1', %2, "
        "'disc<disc>nome<rot>%3')"_s.arg(data, QString::number(roteiro), respostas));
}

void CenarioGraficos::clicaLinha(int linha)
{
    auto &lista = child<QListWidget>(*mJanela, u"LstDisciplinas"_s);
    QTest::mouseClick(lista.viewport(), Qt::LeftButton, {}, lista.visualItemRect(lista.item(linha)).center());
}

void CenarioGraficos::clica(const QString &botao)
{
    child<QAbstractButton>(*mJanela, botao).click();
}

void CenarioGraficos::mostraEFaz(const std::function<void()> &acao)
{
    QTimer timer; // the load runs events too, before the window is there
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        if (mJanela->isVisible()) {
            timer.stop();
            acao();
        }
    });
    timer.start(1);
    mJanela->mostraModal();
}

QString CenarioGraficos::figuras() const
{
    return child<QWidget>(*mJanela, u"CrtGrafico"_s).accessibleDescription();
}

} // namespace quorel::teste
