// The teacher's register on 200 classes of 100 pupils, beside plain loops of the C API over the queries that it runs.
#include "data/bd.h"
#include "data/cadastros.h"
#include "data/schema.h"
#include "platform/caminho.h"
#include "platform/preparo.h"
#include "register/estado.h"
#include "register/falunos.h"
#include "startup/estado.h"
#include "visual/janela_ativa.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <memory>
#include <vector>

using namespace quorel;
using namespace Qt::StringLiterals;

static constexpr int kClasses = 200;
static constexpr int kAlunos = 20000;

static QTemporaryDir *gDir = nullptr;
static fAlunos *gJanela = nullptr;

/// A connection of the C API to the register, set as the program's own.
static sqlite3 *plain()
{
    static sqlite3 *db = nullptr;
    if (!db) {
        sqlite3_open(gDir->filePath(u"Cadastros.mdb"_s).toUtf8().constData(), &db);
        sqlite3_exec(db, "PRAGMA synchronous=EXTRA", nullptr, nullptr, nullptr);
    }
    return db;
}

static void run(const QByteArray &sql)
{
    if (sqlite3_exec(plain(), sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        qFatal("%s", sqlite3_errmsg(plain()));
}

/// Reads all rows of a query: the numbers into a vector, the texts into one block. @return the numbers
static std::vector<int> readAll(const QByteArray &sql)
{
    sqlite3_stmt *stmt = nullptr;
    if (sqlite3_prepare_v2(plain(), sql.constData(), -1, &stmt, nullptr) != SQLITE_OK)
        qFatal("%s", sqlite3_errmsg(plain()));
    std::vector<int> numbers;
    QByteArray texts;
    while (sqlite3_step(stmt) == SQLITE_ROW) {
        for (int i = 0; i < sqlite3_column_count(stmt); ++i) {
            if (sqlite3_column_type(stmt, i) == SQLITE_INTEGER)
                numbers.push_back(sqlite3_column_int(stmt, i));
            else
                texts.append(reinterpret_cast<const char *>(sqlite3_column_text(stmt, i)));
        }
    }
    sqlite3_finalize(stmt);
    benchmark::DoNotOptimize(texts.data());
    return numbers;
}

static QByteArray pupilsOfClass(int classe)
{
    return "SELECT CLxAL.AL_Cod, AL_Nome FROM AL_Alunos JOIN CLxAL ON AL_Alunos.AL_Cod = CLxAL.AL_Cod "
           "WHERE CLxAL.CL_Cod = "
        + QByteArray::number(classe) + " ORDER BY AL_Nome COLLATE NOCASE"; // the register orders so, too
}

static void onePass(const std::vector<int> &codes)
{
    for (const int code : codes)
        benchmark::DoNotOptimize(code == -1);
}

/// What a change of class, and a move to the next pupil, are measured by.
static void floorClassAndPass(benchmark::State &state)
{
    const std::vector<int> codes = readAll("SELECT AL_Cod FROM AL_Alunos");
    int classe = 0;
    for (auto _ : state) {
        classe = classe % kClasses + 1;
        benchmark::DoNotOptimize(readAll(pupilsOfClass(classe)));
        onePass(codes);
    }
}

static QPushButton &botao(const QString &nome)
{
    return *gJanela->findChild<QPushButton *>(nome);
}

static void changeClass(benchmark::State &state)
{
    botao(u"CmdAluno(2)"_s).click();
    auto &combo = *gJanela->findChild<QComboBox *>(u"CmbClasse"_s);
    int row = 0;
    for (auto _ : state) {
        row = row % kClasses + 1;
        combo.setCurrentIndex(row);
    }
}

static void openRegister(int classe)
{
    gClasse = classe;
    gSenhaOK = true;
    botao(u"CmdAluno(3)"_s).click();
}

static void nextPupil(benchmark::State &state)
{
    openRegister(kClasses / 2);
    for (int i = 0; auto _ : state) {
        botao(++i % 100 == 0 ? u"CmdAulaInicio"_s : u"CmdAulaFrente"_s).click();
    }
}

/// The queries of a save: two rows written, each for itself, and both tables read again.
static void floorSave(benchmark::State &state)
{
    for (auto _ : state) {
        run("UPDATE AL_Alunos SET AL_Nome = 'Aluno 09950' WHERE AL_Cod = 9951");
        benchmark::DoNotOptimize(readAll("SELECT AL_Cod, AL_Nome FROM AL_Alunos ORDER BY AL_Nome"));
        run("UPDATE CLxAL SET CL_Cod = 100, CLxAL_DataIngr = '2026-03-04 10:00:00' WHERE CLxAL_Id = 9951");
        benchmark::DoNotOptimize(readAll("SELECT * FROM CLxAL"));
    }
}

static void savePupil(benchmark::State &state)
{
    openRegister(kClasses / 2);
    for (auto _ : state)
        botao(u"CmdAulaGrava"_s).click();
}

BENCHMARK(floorClassAndPass)->Unit(benchmark::kMicrosecond)->Repetitions(3);
BENCHMARK(changeClass)->Unit(benchmark::kMicrosecond)->Repetitions(3);
BENCHMARK(nextPupil)->Unit(benchmark::kMicrosecond)->Repetitions(3);
BENCHMARK(floorSave)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20)->Repetitions(3);
BENCHMARK(savePupil)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20)->Repetitions(3);

static void fill()
{
    run(registerSchema());
    run("BEGIN");
    for (int i = 1; i <= kClasses; ++i) {
        const QString nome = u"('Turma %1', 'Professor %1', 'senha%1')"_s.arg(i, 3, 10, QChar(u'0'));
        run("INSERT INTO CL_Classes (CL_Nome, CL_Prof, CL_Senha) VALUES " + nome.toUtf8());
    }
    for (int i = 0; i < kAlunos; ++i) {
        run(u"INSERT INTO AL_Alunos (AL_Nome) VALUES ('Aluno %1')"_s.arg(i, 5, 10, QChar(u'0')).toUtf8());
        run(u"INSERT INTO CLxAL (AL_Cod, CL_Cod, CLxAL_DataIngr) VALUES (%1, %2, '2020-02-03 08:00:00')"_s.arg(i + 1)
                .arg(i / (kAlunos / kClasses) + 1)
                .toUtf8());
    }
    run("COMMIT");
}

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    preparePlatform();
    QApplication app(argc, argv);
    QTemporaryDir dir;
    gDir = &dir;
    fill();
    criaBD();
    gBD->Source(backslashPath(dir.filePath(u"Cadastros.mdb"_s)));
    CriaGenericos();
    AbreTabelasCadastro();
    gAluno = kGenerico;
    gClasse = kGenerico;
    JanelaAtiva ativa;
    fAlunos janela(ativa, {[] { return Lugar{}; }, [] {}, [](const QString &) {}, [] {}});
    gJanela = &janela;
    janela.mostra();
    benchmark::RunSpecifiedBenchmarks();
    sqlite3_close(plain());
}
