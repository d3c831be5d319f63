// The reports: indexing 720 block files beside reading the same files alone; a report of a period, from the query to
// the painted sheet, beside the store's own loop over the same query and a table view on a model of the same cells; the
// preview of a sheet's page beside parsing and laying out the same text. Argument: number of rows.

#include "data/bd.h"
#include "data/consultas.h"
#include "data/schema.h"
#include "platform/caminho.h"
#include "reports/fgraficos.h"
#include "reports/grade.h"
#include "reports/indice.h"
#include "reports/mascara.h"
#include "reports/paginas.h"
#include "reports/visor.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "startup/texto_util.h"
#include "visual/janela_ativa.h"

#include <QAbstractButton>
#include <QAbstractTableModel>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTableView>
#include <QTemporaryDir>
#include <QTextDocument>

#include <benchmark/benchmark.h>

#include <sqlite3.h>

#include <memory>

using namespace quorel;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kFileSize = 100 * 1024;
constexpr int kRoteirosPerFile = 10;
constexpr int kIndexLines = 7000;
constexpr int kFirstCode = 1000;

void check(bool ok, const char *what)
{
    if (!ok)
        qFatal("%s", what);
}

QByteArray blockFile(int firstCode)
{
    const QByteArray linha = QByteArray("As cores do c\xE9u e do mar<SP\xC7>").repeated(16);
    QByteArray text = "<OBJ>Ler</OBJ>\r\n<TM>Fevereiro</TM>\r\n";
    for (int i = 1; i <= kRoteirosPerFile; ++i) {
        const QByteArray n = QByteArray::number(i);
        text += "[ROT<" + n + ">]\r\nNomeRot = Roteiro " + n + "\r\nCODROT:" + QByteArray::number(firstCode + i)
            + "\r\nFIG:MA1\r\nSOM:SO1\r\n<DESC>Cores</DESC>\r\nNIVEL:F1\r\nDISC:MA\r\n";
        for (int j = 1; text.size() < kFileSize / kRoteirosPerFile * i; ++j)
            text += "[<" + n + ">" + QByteArray::number(j) + "]\r\nNome =Aula\r\nLinha =(1,1)2610<SP\xC7>" + linha
                + "\r\n\tTipo = Zeto\t1\r\n";
    }
    return text;
}

/// 6 levels, 12 months, 10 disciplines.
struct Blocos
{
    Blocos()
    {
        int code = kFirstCode;
        for (const QString &nivel : {u"F1"_s, u"F2"_s, u"F3"_s, u"F4"_s, u"I1"_s, u"I2"_s}) {
            QDir(dir.path()).mkdir(nivel);
            for (int mes = 1; mes <= 12; ++mes) {
                for (const char *disc : {"AV", "CI", "DE", "DI", "ED", "ES", "GE", "HI", "MA", "PO"}) {
                    const QString nome = u"%1/%2%3%4%1.edb"_s.arg(nivel)
                                             .arg(mes, 2, 10, QChar(u'0'))
                                             .arg(26)
                                             .arg(QLatin1StringView(disc));
                    QFile file(dir.filePath(nome));
                    check(file.open(QIODevice::WriteOnly) && file.write(blockFile(code)) > 0, "no block file");
                    caminhos << backslashPath(file.fileName());
                    code += kRoteirosPerFile;
                }
            }
        }
        gConfig.SetaCFG(u"DBBLOCOS="_s + backslashPath(dir.path()));
    }
    QTemporaryDir dir;
    QStringList caminhos;
};

void readingFiles(benchmark::State &state)
{
    const Blocos blocos;
    for (auto _ : state) {
        for (const QString &caminho : blocos.caminhos)
            benchmark::DoNotOptimize(gTexto.LeArquivo(caminho));
    }
}

void indexingFiles(benchmark::State &state)
{
    const Blocos blocos;
    for (auto _ : state) {
        reiniciaReports();
        indexaBlocos();
    }
    check(gBlocosArq.size() == 721 && gRotPortugues.count(u"\r\n"_s) == 720, "not all files are indexed");
}

/// A row of the log as the store's own loop reads it.
struct LinhaLog
{
    qint32 codigo;
    QString respostas;
    QString data;
};

/// A register with so many log rows of one pupil, and an index that knows their Roteiros.
struct Registro
{
    explicit Registro(int rows)
    {
        const QString file = dir.filePath(u"Cadastros.mdb"_s);
        sqlite3 *raw = nullptr;
        check(sqlite3_open(file.toUtf8().constData(), &raw) == SQLITE_OK, "no register");
        db.reset(raw);
        run(registerSchema());
        run("BEGIN");
        for (int i = 0; i < rows; ++i)
            run("INSERT INTO LG_LogAulas VALUES (3, 7, datetime('2026-01-01', '+" + QByteArray::number(i * 97)
                + " seconds'), " + QByteArray::number(kFirstCode + 3 + i * 7 % kIndexLines)
                + ", NULL, 'Matem\xC3\xA1tica<disc>Roteiro<rot>A:E:', NULL)");
        run("COMMIT");
        reiniciaReports();
        gBlocosArq.resize(2); // the index stands
        for (int i = 0; i < kIndexLines; ++i) {
            QString &texto = i % 3 == 0 ? gRotCiencias : i % 3 == 1 ? gRotMatematica : gRotPortugues;
            texto += QString::number(kFirstCode + i) + u"\t Roteiro das cores\r\n"_s;
        }
        criaBD();
        gBD->Source(backslashPath(file));
        gAluno = 3;
        gClasse = 7;
        consulta = consultas::logDoPeriodo(u"01/01/2026"_s, u"12/31/2026"_s, 3, 7);
    }
    void run(const QByteArray &sql) const
    {
        check(
            sqlite3_exec(db.get(), sql.constData(), nullptr, nullptr, nullptr) == SQLITE_OK, sqlite3_errmsg(db.get()));
    }

    /// The store's own loop over the query of a period.
    std::vector<LinhaLog> loop() const
    {
        const QByteArray sql = "SELECT LG_Data, RO_Cod, AU_Cod, LG_Resp, LG_Aluno, LG_Classe FROM LG_LogAulas WHERE "
                               "LG_Data >= '2026-01-01 00:00:00' AND LG_Data <= '2026-12-31 00:00:00' AND LG_Aluno = 3 "
                               "AND LG_Resp <> '' AND LG_Classe = 7 ORDER BY LG_Data DESC";
        sqlite3_stmt *raw = nullptr;
        check(sqlite3_prepare_v2(db.get(), sql.constData(), -1, &raw, nullptr) == SQLITE_OK, "no query");
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt *)> stmt(raw, sqlite3_finalize);
        const auto text = [raw](int column) {
            return QString::fromUtf8(
                reinterpret_cast<const char *>(sqlite3_column_text(raw, column)), sqlite3_column_bytes(raw, column));
        };
        std::vector<LinhaLog> log;
        while (sqlite3_step(raw) == SQLITE_ROW)
            log.push_back({sqlite3_column_int(raw, 1), text(3), text(0)});
        return log;
    }

    struct Closer
    {
        void operator()(sqlite3 *raw) const { sqlite3_close(raw); }
    };
    QTemporaryDir dir;
    std::unique_ptr<sqlite3, Closer> db;
    QString consulta;
};

void loopOverTheQuery(benchmark::State &state)
{
    const Registro registro(int(state.range(0)));
    for (auto _ : state) {
        const std::vector<LinhaLog> log = registro.loop();
        check(std::ssize(log) == state.range(0), "not all rows are read");
    }
}

void sheetOfAPeriod(benchmark::State &state)
{
    const Registro registro(int(state.range(0)));
    for (auto _ : state) {
        gBD->Records_Set(registro.consulta, u"rsLogAulas"_s, {}, kCursorKeyset);
        const auto planilha = montaPlanilha({true, {}});
        check(planilha && planilha->completa && planilha->linhas.size() > std::size_t(state.range(0)),
            "not all rows are in the sheet");
    }
}

/// The same without the query: rows in memory to sheet and summary.
void marksOfRows(benchmark::State &state)
{
    const Registro registro(int(state.range(0)));
    gBD->Records_Set(registro.consulta, u"rsLogAulas"_s, {}, kCursorKeyset);
    for (auto _ : state) {
        gBD->MoveParaComecoDeArquivo(u"rsLogAulas"_s);
        const auto planilha = montaPlanilha({true, {}});
        check(planilha && planilha->completa, "not all rows are counted");
    }
}

/// The cells of the sheet and nothing else.
class PlainModel final : public QAbstractTableModel
{
public:
    using QAbstractTableModel::QAbstractTableModel;
    void setRows(std::vector<LinhaPlanilha> rows)
    {
        beginResetModel();
        mRows = std::move(rows);
        endResetModel();
    }
    int rowCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : int(mRows.size()); }
    int columnCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : 4; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        return role == Qt::DisplayRole ? mRows[std::size_t(index.row())][std::size_t(index.column())] : QVariant();
    }

private:
    std::vector<LinhaPlanilha> mRows;
};

void loopAndTableView(benchmark::State &state)
{
    const Registro registro(int(state.range(0)));
    PlainModel model;
    QTableView view;
    view.resize(472, 400);
    view.setModel(&model);
    view.show();
    for (auto _ : state) {
        std::vector<LinhaPlanilha> rows;
        for (const LinhaLog &linha : registro.loop())
            rows.push_back({linha.data, u"Roteiro das cores"_s, u"1"_s, u"1"_s});
        model.setRows(std::move(rows));
        QApplication::processEvents();
    }
}

template <typename T>
T &control(const QWidget &window, const QString &name)
{
    T *found = window.findChild<T *>(name);
    check(found, qPrintable(name));
    return *found;
}

void reportOfAPeriod(benchmark::State &state)
{
    const Registro registro(int(state.range(0)));
    JanelaAtiva ativa;
    FGraficos janela(ativa);
    janela.mostra();
    gBlocosArq.resize(2); // the index stands
    control<MaskEdBox>(janela, u"MskDataInicial"_s).setText(u"01/01/26"_s);
    control<MaskEdBox>(janela, u"MskDataFinal"_s).setText(u"31/12/26"_s);
    control<QAbstractButton>(janela, u"ChkDisciplinas"_s).setChecked(true);
    auto &sheet = control<QAbstractButton>(janela, u"CmdGrafPlan(1)"_s);
    for (auto _ : state) {
        janela.Processar(); // ends with the chart on view
        sheet.click();
        QApplication::processEvents();
    }
    check(std::ssize(janela.findChild<GrdRot *>()->linhas()) > state.range(0), "not all rows are in the sheet");
}

/// A sheet's page of so many rows, in a file.
QString pageFile(int rows)
{
    std::vector<LinhaPlanilha> linhas{{u"Data"_s, u"Nome do Roteiro"_s, u"Acertos"_s, u"Erros"_s}};
    for (int i = 0; i < rows; ++i)
        linhas.push_back({u"24/11/26 10:20:30"_s, u"Roteiro das cores"_s, u"12"_s, u"3"_s});
    return gravaPagina(paginaDesempenho({{}, u"Ana"_s, u"1ª A"_s, u"01/11/26"_s, u"30/11/26"_s}, linhas));
}

constexpr int kPageWidth = 520; // pixels, as the preview has

void parsingAndLayingOut(benchmark::State &state)
{
    const QString page = gTexto.LeArquivo(pageFile(int(state.range(0))));
    for (auto _ : state) {
        QTextDocument document;
        document.setUndoRedoEnabled(false);
        document.setTextWidth(kPageWidth);
        document.setHtml(page);
        benchmark::DoNotOptimize(document.size());
    }
}

void previewOfAPage(benchmark::State &state)
{
    const QString file = pageFile(int(state.range(0)));
    for (auto _ : state) {
        WebBrowser browser(0, nullptr);
        browser.resize(kPageWidth, 500);
        browser.show();
        browser.Navigate(file, {});
        QApplication::processEvents();
    }
}

} // namespace

BENCHMARK(readingFiles)->Unit(benchmark::kMillisecond);
BENCHMARK(indexingFiles)->Unit(benchmark::kMillisecond);
BENCHMARK(loopOverTheQuery)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(sheetOfAPeriod)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(marksOfRows)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(loopAndTableView)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(reportOfAPeriod)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(parsingAndLayingOut)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(previewOfAPage)->Arg(2000)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    const QTemporaryDir temporary; // for the pages
    qputenv("TMPDIR", temporary.path().toUtf8());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
