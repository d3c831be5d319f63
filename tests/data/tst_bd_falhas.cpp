#include "apoio.h"

#include "data/bd.h"
#include "data/errobd.h"
#include "data/recordset.h"
#include "platform/costuras.h"
#include "support/suporte.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QListView>
#include <QTableView>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

using Operacao = std::function<void(BD &, const QVariant &alias)>;

/// How a member of BD takes a failure.
enum Modo {
    Calado, ///< goes on as if nothing were
    Levanta, ///< the failure reaches the caller
    Relata, ///< a box, then an empty result
};

/// Every member that takes an alias, on a table that is not there, on one that is not open, under an alias that was
/// never opened.
class TstBdFalhas final : public QObject
{
    Q_OBJECT
private:
    Registro mRegistro;
    void rows() const;

private slots:
    void init();
    void withoutAnyTable_data() { rows(); }
    void withoutAnyTable();
    void tableNotOpen_data() { rows(); }
    void tableNotOpen();
    void aliasNeverOpened_data() { rows(); }
    void aliasNeverOpened();
    void silentWithoutWarning_data();
    void silentWithoutWarning();
};

void TstBdFalhas::init()
{
    failOnWarnings();
    reiniciaCosturas();
    reiniciaData();
}

struct Membro
{
    const char *name;
    Modo mode;
    const char *origin; ///< in the title of the box
    Operacao operation;
};

static const QList<Membro> &fieldMembers()
{
    static const QList<Membro> members{
        {"NomeCampo", Levanta, "", [](BD &bd, auto &alias) { bd.NomeCampo(0, alias); }},
        {"lista", Levanta, "", [](BD &bd, auto &alias) { bd.lista(alias); }},
        {"Posicao", Levanta, "", [](BD &bd, auto &alias) { bd.Posicao(alias); }},
        {"PosicaoRegistroAtual", Calado, "", [](BD &bd, auto &alias) { bd.PosicaoRegistroAtual(alias); }},
        {"NumeroTotalDeRegistros", Levanta, "", [](BD &bd, auto &alias) { bd.NumeroTotalDeRegistros(alias); }},
        {"FimDeArquivo", Levanta, "", [](BD &bd, auto &alias) { bd.FimDeArquivo(alias); }},
        {"ComecoDeArquivo", Levanta, "", [](BD &bd, auto &alias) { bd.ComecoDeArquivo(alias); }},
        {"TabelaVazia", Calado, "", [](BD &bd, auto &alias) { bd.TabelaVazia(alias); }},
        {"RecordSetVazia", Levanta, "", [](BD &bd, auto &alias) { bd.RecordSetVazia(alias); }},
        {"MoveProximoRegistro", Relata, "", [](BD &bd, auto &alias) { bd.MoveProximoRegistro(alias); }},
        {"MoveRegistroAnterior", Relata, "", [](BD &bd, auto &alias) { bd.MoveRegistroAnterior(alias); }},
        {"MoveParaComecoDeArquivo", Relata, "", [](BD &bd, auto &alias) { bd.MoveParaComecoDeArquivo(alias); }},
        {"MoveParaFimDeArquivo", Relata, "", [](BD &bd, auto &alias) { bd.MoveParaFimDeArquivo(alias); }},
        {"Mover", Relata, "Mover", [](BD &bd, auto &alias) { bd.Mover(1, kInicioAtual, alias); }},
        {"RetornaRegistroString", Relata, "Mover",
            [](BD &bd, auto &alias) { bd.RetornaRegistroString(0, alias, u"|"_s, u"\n"_s); }},
        {"MarcaPosicao", Levanta, "", [](BD &bd, auto &alias) { bd.MarcaPosicao(alias); }},
        {"DefineCache", Levanta, "", [](BD &bd, auto &alias) { bd.DefineCache(10, alias); }},
    };
    return members;
}

static const QList<Membro> &writeMembers()
{
    static const QList<Membro> members{
        {"RegistroAdiciona", Relata, "RegistroAdiciona", [](BD &bd, auto &alias) { bd.RegistroAdiciona(alias); }},
        {"RegistroTroca", Relata, "", [](BD &bd, auto &alias) { bd.RegistroTroca(u"CL_Nome"_s, u"z"_s, alias); }},
        {"RegistroAtualiza", Relata, "Registro Atualiza", [](BD &bd, auto &alias) { bd.RegistroAtualiza(alias); }},
        {"RegistroApaga", Relata, "RegistroApaga", [](BD &bd, auto &alias) { bd.RegistroApaga(alias, 1, false); }},
        {"ReAtualizaRecordSet", Relata, "Registro reAtualizaRecordSet",
            [](BD &bd, auto &alias) { bd.ReAtualizaRecordSet(alias); }},
        {"RecordSetResync", Relata, "", [](BD &bd, auto &alias) { bd.RecordSetResync(alias); }},
        {"CancelaAdicao", Levanta, "", [](BD &bd, auto &alias) { bd.CancelaAdicao(alias); }},
        {"CancelaEdicao", Levanta, "", [](BD &bd, auto &alias) { bd.CancelaEdicao(alias); }},
        {"ModoEdicao", Levanta, "", [](BD &bd, auto &alias) { bd.ModoEdicao(alias); }},
        {"RegistroInclui", Levanta, "", [](BD &bd, auto &alias) { bd.RegistroInclui(u"CL_Nome"_s, u"z"_s, alias); }},
        {"RegistroSalvaBinario", Relata, "",
            [](BD &bd, auto &alias) {
                bd.RegistroSalvaBinario(u"CL_Nome"_s, barras(QCoreApplication::applicationFilePath()), alias);
            }},
        {"Pesquisa", Relata, "Pesquisa",
            [](BD &bd, auto &alias) {
                QString criterion = u"CL_COD=1"_s;
                bd.Pesquisa(criterion, alias, 0);
            }},
        {"Filtro", Levanta, "",
            [](BD &bd, auto &alias) {
                QString criterion = u"CL_COD=1"_s;
                bd.Filtro(criterion, alias);
            }},
        {"LocalizarProxima", Levanta, "",
            [](BD &bd, auto &alias) {
                QString criterion = u"CL_COD=1"_s;
                bd.LocalizarProxima(criterion, alias, 0);
            }},
        {"Sort", Relata, "Sort", [](BD &bd, auto &alias) { bd.Sort(u"CL_Nome"_s, alias); }},
        {"CopiaRegistro", Relata, "CopiaRegistro", [](BD &bd, auto &alias) { bd.CopiaRegistro(alias, 1); }},
        {"CopiaTabela", Relata, "CopiaTabela", [](BD &bd, auto &alias) { bd.CopiaTabela(alias, 1); }},
        {"SeekEx", Calado, "", [](BD &bd, auto &alias) { bd.SeekEx(alias); }},
    };
    return members;
}

/// Calls an operation on a control of its own, with a field to be filled in.
template <typename Controle>
static Operacao on(const std::function<void(BD &, Controle &, const QVariant &alias, QString &field)> &call)
{
    return [call](BD &bd, const QVariant &alias) {
        Controle control;
        QString field;
        call(bd, control, alias, field);
    };
}

static const QList<Membro> &controlMembers()
{
    static const QList<Membro> members{
        {"Combo_Set", Levanta, "",
            on<QComboBox>([](BD &bd, auto &combo, auto &alias, auto &field) { bd.Combo_Set(combo, alias, field); })},
        {"List_Set", Levanta, "",
            on<QListView>([](BD &bd, auto &list, auto &alias, auto &field) { bd.List_Set(list, alias, field); })},
        {"List_Cod", Levanta, "",
            on<QListView>([](BD &bd, auto &list, auto &alias, auto &) { bd.List_Cod(list, alias); })},
        {"Grid_Cod", Levanta, "",
            on<QTableView>([](BD &bd, auto &grid, auto &alias, auto &) { bd.Grid_Cod(grid, alias); })},
        {"Obj_Set", Levanta, "",
            on<QLabel>([](BD &bd, auto &label, auto &alias, auto &) { bd.Obj_Set(label, alias, u"CL_Nome"_s); })},
    };
    return members;
}

void TstBdFalhas::rows() const
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("origin");
    QTest::addColumn<Operacao>("operation");
    for (const auto &members : {fieldMembers(), writeMembers(), controlMembers()}) {
        for (const Membro &each : members)
            QTest::newRow(each.name) << int(each.mode) << QString::fromLatin1(each.origin) << each.operation;
    }
}

/// Runs an operation that is to fail and looks at how it does.
static void checkFailure(int mode, const QString &origin, const Operacao &operation, const QVariant &alias, int number,
    const QString &description)
{
    const auto boxes = mode == Relata ? std::make_unique<BoxScript>(std::initializer_list<Resposta>{Resposta::Ok})
                                      : std::make_unique<BoxScript>();
    QCOMPARE(failureOf([&] { operation(*gBD, alias); }), mode == Levanta ? number : 0);
    if (mode == Relata)
        QCOMPARE(boxes->last(), (Caixa{description, alias.toString() + u" - "_s + origin, Icone::Critico}));
}

void TstBdFalhas::withoutAnyTable()
{
    QFETCH(int, mode);
    QFETCH(QString, origin);
    QFETCH(Operacao, operation);
    checkFailure(mode, origin, operation, u"Rs"_s, kFalhaIndice, ErroExecucao(kFalhaIndice).descricao());
}

void TstBdFalhas::tableNotOpen()
{
    QFETCH(int, mode);
    QFETCH(QString, origin);
    QFETCH(Operacao, operation);
    gBD->Records_Set({}, u"RS"_s);
    checkFailure(mode, origin, operation, u"Rs"_s, kErroFechado, ErroBD(kErroFechado).descricao());
}

/// The box tells it, and slot 1 is taken.
void TstBdFalhas::aliasNeverOpened()
{
    QFETCH(Operacao, operation);
    mRegistro.open();
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"um"_s);
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"dois"_s);
    QList<Caixa> boxes;
    costuras().box = [&](const Caixa &box) {
        boxes << box;
        return Resposta::Ok;
    };
    ignora([&] { operation(*gBD, u"Três"_s); }); // the table of slot 1 is empty, which some of them tell
    QVERIFY(!boxes.isEmpty());
    QCOMPARE(boxes[0],
        Caixa{u"Tabela não especificada !!!!  (Três)\r\nComo padrão será selecionda a Primeira Tabela da Lista"_s});
    QCOMPARE(gBD->NomeAlias(1), QVariant(u"um"_s));
}

void TstBdFalhas::silentWithoutWarning_data()
{
    QTest::addColumn<Operacao>("operation");
    const auto row = [](const char *name, const Operacao &operation) { QTest::newRow(name) << operation; };
    row("RegistroAdiciona", [](BD &bd, auto &alias) { bd.RegistroAdiciona(alias, false); });
    row("RegistroTroca", [](BD &bd, auto &alias) { bd.RegistroTroca(u"CL_Nome"_s, u"z"_s, alias, 0, false); });
    row("RegistroAtualiza", [](BD &bd, auto &alias) { bd.RegistroAtualiza(alias, false); });
    row("ReAtualizaRecordSet", [](BD &bd, auto &alias) { bd.ReAtualizaRecordSet(alias, false); });
    row("Pesquisa", [](BD &bd, auto &alias) {
        QString criterion = u"CL_COD=1"_s;
        bd.Pesquisa(criterion, alias, 0, false);
    });
}

void TstBdFalhas::silentWithoutWarning()
{
    QFETCH(Operacao, operation);
    const BoxScript boxes;
    QCOMPARE(failureOf([&] { operation(*gBD, u"RS"_s); }), 0);
    gBD->Records_Set({}, u"RS"_s);
    QCOMPARE(failureOf([&] { operation(*gBD, u"RS"_s); }), 0);
}

QTEST_MAIN(TstBdFalhas)
#include "tst_bd_falhas.moc"
