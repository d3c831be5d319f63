#include "apoio.h"

#include "support/suporte.h"
#include "support/table.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QListView>
#include <QTableView>

#include <functional>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// Every member of BD that takes an alias: without any table, on one that is not open, under an alias never opened.
class TstBdFalhas final : public TesteBD
{
    Q_OBJECT
public:
    TstBdFalhas() : TesteBD({}, {}) { }

private slots:
    void failsInItsWay_data();
    void failsInItsWay();
};

/// How a member of BD takes a failure.
enum Modo {
    Calado, ///< goes on as if nothing were
    Levanta, ///< the failure reaches the caller
    Relata, ///< a box, then an empty result
};

/// What members are called with.
struct Chamada
{
    QVariant alias = u"Rs"_s;
    QString criterion = u"CL_COD=1"_s;
    QString field;
    QComboBox combo;
    QListView list;
    QTableView grid;
    QLabel label;
};

using Operacao = std::function<void(Chamada &)>;

void TstBdFalhas::failsInItsWay_data()
{
    rows<Modo, QString, Operacao>({
        // the origin stands in the title of the box
        {"NomeCampo", Levanta, "", [](auto &with) { gBD->NomeCampo(0, with.alias); }},
        {"lista", Levanta, "", [](auto &with) { gBD->lista(with.alias); }},
        {"Posicao", Levanta, "", [](auto &with) { gBD->Posicao(with.alias); }},
        {"PosicaoRegistroAtual", Calado, "", [](auto &with) { gBD->PosicaoRegistroAtual(with.alias); }},
        {"NumeroTotalDeRegistros", Levanta, "", [](auto &with) { gBD->NumeroTotalDeRegistros(with.alias); }},
        {"FimDeArquivo", Levanta, "", [](auto &with) { gBD->FimDeArquivo(with.alias); }},
        {"ComecoDeArquivo", Levanta, "", [](auto &with) { gBD->ComecoDeArquivo(with.alias); }},
        {"TabelaVazia", Calado, "", [](auto &with) { gBD->TabelaVazia(with.alias); }},
        {"RecordSetVazia", Levanta, "", [](auto &with) { gBD->RecordSetVazia(with.alias); }},
        {"MoveProximoRegistro", Relata, "", [](auto &with) { gBD->MoveProximoRegistro(with.alias); }},
        {"MoveRegistroAnterior", Relata, "", [](auto &with) { gBD->MoveRegistroAnterior(with.alias); }},
        {"MoveParaComecoDeArquivo", Relata, "", [](auto &with) { gBD->MoveParaComecoDeArquivo(with.alias); }},
        {"MoveParaFimDeArquivo", Relata, "", [](auto &with) { gBD->MoveParaFimDeArquivo(with.alias); }},
        {"Mover", Relata, "Mover", [](auto &with) { gBD->Mover(1, 0, with.alias); }},
        {"RetornaRegistroString", Relata, "Mover",
            [](auto &with) { gBD->RetornaRegistroString(0, with.alias, u"|"_s, u"\n"_s); }},
        {"MarcaPosicao", Levanta, "", [](auto &with) { gBD->MarcaPosicao(with.alias); }},
        {"DefineCache", Levanta, "", [](auto &with) { gBD->DefineCache(10, with.alias); }},
        {"Pesquisa", Relata, "Pesquisa", [](auto &with) { gBD->Pesquisa(with.criterion, with.alias, 0); }},
        {"LocalizarProxima", Levanta, "", [](auto &with) { gBD->LocalizarProxima(with.criterion, with.alias, 0); }},
        {"Filtro", Levanta, "", [](auto &with) { gBD->Filtro(with.criterion, with.alias); }},
        {"Sort", Relata, "Sort", [](auto &with) { gBD->Sort(u"CL_Nome"_s, with.alias); }},
        {"SeekEx", Calado, "", [](auto &with) { gBD->SeekEx(with.alias); }},
        {"Combo_Set", Levanta, "", [](auto &with) { gBD->Combo_Set(with.combo, with.alias, with.field); }},
        {"List_Set", Levanta, "", [](auto &with) { gBD->List_Set(with.list, with.alias, with.field); }},
        {"List_Cod", Levanta, "", [](auto &with) { gBD->List_Cod(with.list, with.alias); }},
        {"Grid_Cod", Levanta, "", [](auto &with) { gBD->Grid_Cod(with.grid, with.alias); }},
        {"Obj_Set", Levanta, "", [](auto &with) { gBD->Obj_Set(with.label, with.alias, u"CL_Nome"_s); }},
        {"RegistroAdiciona", Relata, "RegistroAdiciona", [](auto &with) { gBD->RegistroAdiciona(with.alias); }},
        {"RegistroTroca", Relata, "", [](auto &with) { gBD->RegistroTroca(u"CL_Nome"_s, u"z"_s, with.alias); }},
        {"RegistroAtualiza", Relata, "Registro Atualiza", [](auto &with) { gBD->RegistroAtualiza(with.alias); }},
        {"RegistroApaga", Relata, "RegistroApaga",
            [](auto &with) { gBD->RegistroApaga(with.alias, kAfetaAtual, false); }},
        {"ReAtualizaRecordSet", Relata, "Registro reAtualizaRecordSet",
            [](auto &with) { gBD->ReAtualizaRecordSet(with.alias); }},
        {"RecordSetResync", Relata, "", [](auto &with) { gBD->RecordSetResync(with.alias); }},
        {"CancelaAdicao", Levanta, "", [](auto &with) { gBD->CancelaAdicao(with.alias); }},
        {"CancelaEdicao", Levanta, "", [](auto &with) { gBD->CancelaEdicao(with.alias); }},
        {"ModoEdicao", Levanta, "", [](auto &with) { gBD->ModoEdicao(with.alias); }},
        {"RegistroInclui", Levanta, "", [](auto &with) { gBD->RegistroInclui(u"CL_Nome"_s, u"z"_s, with.alias); }},
        {"RegistroSalvaBinario", Relata, "",
            [](auto &with) {
                const QString file = barras(QCoreApplication::applicationFilePath());
                gBD->RegistroSalvaBinario(u"CL_Nome"_s, file, with.alias);
            }},
        {"RegistroAdiciona, without warning", Calado, "", [](auto &with) { gBD->RegistroAdiciona(with.alias, false); }},
        {"RegistroTroca, without warning", Calado, "",
            [](auto &with) { gBD->RegistroTroca(u"CL_Nome"_s, u"z"_s, with.alias, kTrocaComoEsta, false); }},
        {"RegistroAtualiza, without warning", Calado, "", [](auto &with) { gBD->RegistroAtualiza(with.alias, false); }},
        {"ReAtualizaRecordSet, without warning", Calado, "",
            [](auto &with) { gBD->ReAtualizaRecordSet(with.alias, false); }},
        {"Pesquisa, without warning", Calado, "",
            [](auto &with) { gBD->Pesquisa(with.criterion, with.alias, 0, false); }},
        {"CopiaRegistro", Relata, "CopiaRegistro", [](auto &with) { gBD->CopiaRegistro(with.alias, 1); }},
        {"CopiaTabela", Relata, "CopiaTabela", [](auto &with) { gBD->CopiaTabela(with.alias, 1); }},
    });
}

void TstBdFalhas::failsInItsWay()
{
    const auto [mode, origin, operation] = row<Modo, QString, Operacao>();
    Chamada with;
    const auto fails = [&](int number, const QString &description) {
        QCOMPARE(failureOf([&] { operation(with); }), mode == Levanta ? number : 0);
        QCOMPARE(told(), mode == Relata ? u"! Rs - "_s + origin + u": "_s + description : QString());
    };
    fails(kFalhaIndice, ErroExecucao(kFalhaIndice).descricao());
    gBD->Records_Set({}, u"RS"_s);
    fails(kErroFechado, ErroBD(kErroFechado).descricao());
    reiniciaData();
    mRegistro->open();
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"um"_s);
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"dois"_s);
    ignora([&] { operation(with); }); // the table of slot 1 is taken, an empty one, which some of them tell
    QCOMPARE(told().section(u'\n', 0, 0),
        u"Blocos de Roteiros do Sistema Quorel: Tabela não especificada !!!!  (Rs)/"
        "Como padrão será selecionda a Primeira Tabela da Lista"_s);
    QCOMPARE(gBD->NomeAlias(1), QVariant(u"um"_s));
}

QTEST_MAIN(TstBdFalhas)
#include "tst_bd_falhas.moc"
