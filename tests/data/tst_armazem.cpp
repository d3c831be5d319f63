#include "apoio.h"

#include "data/armazem.h"
#include "data/conexao.h"
#include "data/datas.h"
#include "data/linhas.h"
#include "platform/costuras.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QFile>

#include <functional>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// What every store keeps, played on each of them. A story works on a fresh register (classes 1 a, 2 b and 3 c; pupil 7
/// Ana) and gives what it saw as a text.
class TstArmazem final : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void keeps_data();
    void keeps();
    void logs_data();
    void logs();
};

namespace {

/// A register, and the ways to it. Another store gives another one of these.
struct Cadastro
{
    Registro arquivo{
        kTresClasses + u"INSERT INTO AL_Alunos VALUES (7, 'Ana'); INSERT INTO CLxAL VALUES (7, 1, NULL, 1)"_s};

    QString linha() const { return u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + arquivo.path(); }
    /// Another program's work. @return its rows, blanks between them
    QString other(const QString &sql) const { return arquivo.sql(sql).join(u' '); }
    /// Whether another program gets the right to write now.
    bool isFree() const
    {
        Conexao other(linha(), Espera::Operacao);
        other.BeginTrans();
        return failureOf([&] { other.reserve(); }) == 0;
    }
};

using Historia = std::function<QString(const Cadastro &)>;

QString kindOf(const std::function<void()> &statement)
{
    static const QStringList kNames{
        u"ocupado"_s, u"sumiu"_s, u"so leitura"_s, u"cheio"_s, u"danificado"_s, u"recusado"_s, u"outra"_s};
    try {
        statement();
    } catch (const ErroBD &erro) {
        return kNames.at(static_cast<int>(erro.especie()));
    }
    return u"bem"_s;
}

QString textOf(const Linhas &rows)
{
    QStringList all;
    for (qsizetype row = 0; row < rows.rowCount(); ++row) {
        QStringList cells;
        for (int i = 0; i < rows.columnCount(); ++i)
            cells << (rows.kind(row, i) == Celula::Nulo ? u"Null"_s
                                                        : variantText(cellValue(rows, row, i, TipoCampo::Variante)));
        all << cells.join(u'|');
    }
    return all.join(u' ');
}

QString asked(Conexao &store, const QString &sql)
{
    Linhas rows;
    store.query(sql, rows);
    return textOf(rows);
}

const QString kLog = u"LG_LogAulas"_s, kLogKey = u"LG_Id"_s, kClasses = u"CL_Classes"_s, kClassKey = u"CL_Cod"_s;

qint64 addClass(Conexao &store, const std::vector<Atribuicao> &values)
{
    return store.insert(kClasses, kClassKey, values);
}

QString failedStatementUndoesItselfAlone(const Cadastro &cadastro)
{
    Conexao store(cadastro.linha());
    store.BeginTrans();
    addClass(store, {{u"CL_Nome"_s, u"d"_s}});
    const QString kind = kindOf([&] { addClass(store, {{kClassKey, 1}}); });
    addClass(store, {{u"CL_Nome"_s, u"e"_s}});
    store.CommitTrans();
    return kind + u' ' + cadastro.other(u"SELECT CL_Nome FROM CL_Classes ORDER BY CL_Cod"_s);
}

QString keysRise(const Cadastro &cadastro)
{
    Conexao store(cadastro.linha());
    const qint64 first = addClass(store, {});
    store.remove({kClasses, kClassKey, first});
    const qint64 second = addClass(store, {});
    const qint64 given = addClass(store, {{kClassKey, 50}});
    const qint64 behind = addClass(store, {});
    return u"%1 %2 %3 %4"_s.arg(second - first).arg(given).arg(behind).arg(second - 3);
}

QString namesAreTheSchemas(const Cadastro &cadastro)
{
    Conexao store(cadastro.linha());
    Linhas rows;
    QStringList names;
    for (const Coluna &each : store.query(u"select al_cod, [AL_NOME] as Quem, 1 from al_alunos"_s, rows))
        names << (each.nome == "1"_L1 ? u"?"_s : each.nome) + u'/' + each.tabela + u'.' + each.origem
                + (each.chave ? u"!"_s : QString());
    return names.join(u' ') + u' ' + kindOf([&] { store.query(u"select [Nada] from AL_Alunos"_s, rows); });
}

QString valuesComeAndGoInOneForm(const Cadastro &cadastro)
{
    Conexao store(cadastro.linha());
    const QDateTime date = wallClock(QDate(2026, 2, 28), QTime(7, 5, 9));
    const qint64 key = store.insert(kLog, kLogKey,
        {{u"LG_Aluno"_s, qint64(2147483647)}, {u"LG_Data"_s, date}, {u"LG_Resp"_s, u"Ção 'x'"_s},
            {u"RO_Cod"_s, QVariant(QMetaType::fromType<QString>())}, {u"LG_Classe"_s, true}});
    return textOf(store.readRow(
               {kLog, kLogKey, key}, {u"LG_Aluno"_s, u"LG_Data"_s, u"LG_Resp"_s, u"RO_Cod"_s, u"LG_Classe"_s}))
        + u' ' + asked(store, u"SELECT LG_Id FROM LG_LogAulas WHERE LG_Data = #2/28/2026# OR LG_Classe = True"_s);
}

QString textWithNulIsRefused(const Cadastro &cadastro)
{
    Conexao store(cadastro.linha());
    const QString text = u"a"_s + QChar(0) + u"b"_s;
    const int number = failureOf([&] { addClass(store, {{u"CL_Nome"_s, text}}); });
    return kindOf([&] {
        store.update({kClasses, kClassKey, 1}, {{u"CL_Nome"_s, text}});
    }) + u' '
        + QString::number(number) + u' ' + cadastro.other(u"SELECT group_concat(CL_Nome, '') FROM CL_Classes"_s);
}

QString writesTellWhetherTheRowWasThere(const Cadastro &cadastro)
{
    Conexao store(cadastro.linha());
    const auto update = [&](qint64 key) { return store.update({kClasses, kClassKey, key}, {{u"CL_Nome"_s, u"a"_s}}); };
    const auto remove = [&](qint64 key) { return store.remove({kClasses, kClassKey, key}); };
    return u"%1 %2 %3 %4"_s.arg(update(1)).arg(update(99)).arg(remove(2)).arg(remove(2)); // 1 is called a already
}

QString noUpdateChangesTheOrder(const Cadastro &cadastro)
{
    Conexao store(cadastro.linha());
    for (int i = 1; i <= 3; ++i)
        store.insert(kLog, kLogKey,
            {{u"LG_Aluno"_s, 7}, {u"LG_Classe"_s, 1}, {u"LG_Data"_s, wallClock(QDate(2026, 3, 1), QTime(8, 0))}});
    const QString sql = u"SELECT DISTINCTROW LG_LogAulas.LG_Id FROM AL_Alunos INNER JOIN LG_LogAulas ON "
                        "AL_Alunos.AL_Cod = LG_LogAulas.LG_Aluno ORDER BY LG_LogAulas.LG_Data DESC;"_s;
    const QString before = asked(store, sql);
    store.update({kLog, kLogKey, 2}, {{u"LG_Resp"_s, QString(9000, u'x')}});
    return before + u", "_s + asked(store, sql) + u", "_s
        + asked(store, u"Select CL_Cod From CL_Classes ORDER BY CL_Prof"_s);
}

QString textsAreOrderedByOurOrder(const Cadastro &cadastro)
{
    cadastro.other(
        u"DELETE FROM CL_Classes; INSERT INTO CL_Classes (CL_Nome) VALUES ('b'), ('Átila'), ('ana'), ('Ana'), "
        "(NULL), ('Beta'), ('á')"_s);
    Conexao store(cadastro.linha());
    return asked(store, u"SELECT CL_Nome FROM CL_Classes ORDER BY CL_Nome"_s);
}

QString lockIsToldByTheWrite(const Cadastro &cadastro)
{
    Conexao holder(cadastro.linha());
    holder.BeginTrans();
    holder.reserve();
    Conexao store(cadastro.linha());
    const QString begun = kindOf([&] { store.BeginTrans(); });
    return begun + u' ' + asked(store, u"Select CL_Cod From CL_Classes"_s) + u' '
        + kindOf([&] { addClass(store, {}); });
}

/// @param write  the first one of a transaction, which fails or meets no row
QString givesTheLockBack(const Cadastro &cadastro, const std::function<void(Conexao &)> &write)
{
    Conexao store(cadastro.linha());
    store.BeginTrans();
    store.BeginTrans();
    ignora([&] { write(store); });
    const bool free = cadastro.isFree();
    addClass(store, {{u"CL_Nome"_s, u"d"_s}}); // begins anew
    const bool held = !cadastro.isFree();
    store.RollbackTrans();
    addClass(store, {{u"CL_Nome"_s, u"e"_s}});
    store.CommitTrans();
    return u"%1 %2 "_s.arg(free).arg(held) + cadastro.other(u"SELECT CL_Nome FROM CL_Classes ORDER BY CL_Cod"_s);
}

QString settlesBeforeABox(const Cadastro &cadastro)
{
    Conexao store(cadastro.linha());
    store.BeginTrans();
    addClass(store, {{u"CL_Nome"_s, u"d"_s}});
    store.settle();
    const bool free = cadastro.isFree();
    addClass(store, {{u"CL_Nome"_s, u"e"_s}});
    store.CommitTrans();
    return u"%1 %2 "_s.arg(free).arg(store.depth())
        + cadastro.other(u"SELECT CL_Nome FROM CL_Classes ORDER BY CL_Cod"_s);
}

QString movedRegisterIsRefused(const Cadastro &cadastro)
{
    Conexao store(cadastro.linha());
    cadastro.other(u"INSERT INTO QR_Registro VALUES ('mudou', '\\lá\\Cadastros.mdb')"_s);
    return kindOf([&] { addClass(store, {}); }) + u' ' + kindOf([&] { store.log({LinhaLog{}}, [](bool) {}); }) + u' '
        + kindOf([&] { Conexao again(cadastro.linha()); });
}

QString damageIsTold(const Cadastro &cadastro)
{
    escreve(cadastro.arquivo.native(), QByteArray(5000, 'x'));
    const QString damaged = kindOf([&] { Conexao store(cadastro.linha()); });
    QFile::remove(cadastro.arquivo.native());
    return damaged + u' ' + kindOf([&] { Conexao store(cadastro.linha()); });
}

} // namespace

void TstArmazem::init()
{
    failOnWarnings();
    reiniciaCosturas();
    costuras().now = [] { return QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7)); };
}

void TstArmazem::keeps_data()
{
    rows<Historia, QString>({
        {"a failed statement undoes itself alone", failedStatementUndoesItselfAlone, "recusado a b c d e"},
        {"keys rise and are never given again", keysRise, "1 50 51 2"},
        {"names are the schema's", namesAreTheSchemas, "AL_Cod/AL_Alunos.AL_Cod! Quem/AL_Alunos.AL_Nome ?/. recusado"},
        {"values come and go in one form", valuesComeAndGoInOneForm, "2147483647|2026-02-28 07:05:09|Ção 'x'|Null|1 1"},
        {"a text with NUL is refused", textWithNulIsRefused, "recusado -2147217887 abc"},
        {"writes tell whether the row was there", writesTellWhetherTheRowWasThere, "1 0 1 0"},
        {"no update changes the order", noUpdateChangesTheOrder, "3 2 1, 3 2 1, 1 2 3"},
        {"texts are ordered by our order", textsAreOrderedByOurOrder, "Null á Ana ana Átila b Beta"},
        {"a lock is told by the write", lockIsToldByTheWrite, "bem 1 2 3 ocupado"},
        {"a first write that fails gives the lock back",
            [](const Cadastro &c) {
                return givesTheLockBack(c, [](Conexao &store) { addClass(store, {{kClassKey, 1}}); });
            },
            "1 1 a b c e"},
        {"and one that meets no row",
            [](const Cadastro &c) {
                return givesTheLockBack(c, [](Conexao &store) { store.remove({kClasses, kClassKey, 99}); });
            },
            "1 1 a b c e"},
        {"what worked is kept before a box", settlesBeforeABox, "1 0 a b c d e"},
        {"a register that moved is refused", movedRegisterIsRefused, "sumiu sumiu sumiu"},
        {"damage and absence are told apart", damageIsTold, "danificado sumiu"},
    });
}

void TstArmazem::keeps()
{
    const auto [story, expected] = row<Historia, QString>();
    QCOMPARE(story(Cadastro()), expected);
}

/// SQL before a row that waited is logged for the first time, what was known of it, what becomes of it then and when it
/// is tried again, and what the log holds in the end.
void TstArmazem::logs_data()
{
    const QString older = u"DROP TABLE QR_Registro; DROP TABLE LG_Entregas"_s;
    const QString there = u"INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, LG_Resp, LG_Id) "
                          "VALUES (7, 1, '2026-03-04 05:06:07', 5, 'A:', 1);"_s;
    const QString named = u"INSERT INTO LG_Entregas VALUES ('x', 1, 'atualiza', NULL)"_s;
    const auto line = [](qint32 pupil, const QString &name, bool first = false, bool doubtful = false) {
        LinhaLog row{.uuid = u"u"_s, .aluno = pupil, .classe = 1, .data = agora(), .roteiro = 5, .respostas = u"A:"_s};
        row.esperou = !first;
        row.incerta = doubtful;
        row.nomeAluno = name;
        return row;
    };
    rows<QString, LinhaLog, QString, QString>({
        {"a first attempt asks no names", "", line(99, u"Bia"_s, true), "entrou", "99"},
        {"once, however often it is tried", "", line(7, u"Ana"_s), "entrou estava", "7"},
        {"case, accents and blanks apart", "", line(7, u" ÁNA"_s), "entrou estava", "7"},
        {"another child has the code", "UPDATE AL_Alunos SET AL_Nome = 'Bia'", line(7, u"Ana"_s), "nome nome", ""},
        {"nobody has the code", "DELETE FROM AL_Alunos", line(7, u"Ana"_s), "nome nome", ""},
        {"another class has the code", "UPDATE CL_Classes SET CL_Nome = 'z'",
            [&] {
                LinhaLog row = line(7, u"Ana"_s);
                row.nomeClasse = u"a"_s;
                return row;
            }(),
            "nome nome", ""},
        {"a person said that it is the same child", "UPDATE AL_Alunos SET AL_Nome = 'Bia'",
            [&] {
                LinhaLog row = line(7, u"Ana"_s);
                row.semNomes = true;
                return row;
            }(),
            "entrou estava", "7"},
        {"merged into another, and that into a third", "INSERT INTO AL_Destinos VALUES (7, 8), (8, 9)",
            line(7, u"Ana"_s), "entrou estava", "9"},
        {"erased", "INSERT INTO AL_Destinos VALUES (7, 0)", line(7, u"Ana"_s), "apagada apagada", ""},
        {"an older register takes it without an id", older, line(7, u"Ana"_s), "entrou entrou", "7 7"},
        {"but not where a commit is in doubt", older, line(7, u"Ana"_s, false, true), "espera espera", ""},
        {"one in doubt that had come in", there + named, line(7, u"Ana"_s, false, true), "estava estava", "7"},
        {"one in doubt that had not", "", line(7, u"Ana"_s, false, true), "entrou estava", "7"},
        {"the same answers logged with an id are another row",
            there + u"INSERT INTO LG_Entregas VALUES ('x', 1, 'maquina', NULL)"_s, line(7, u"Ana"_s, false, true),
            "entrou estava", "7 7"},
    });
}

void TstArmazem::logs()
{
    const auto [before, line, fates, log] = row<QString, LinhaLog, QString, QString>();
    static const QStringList kNames{u"entrou"_s, u"estava"_s, u"apagada"_s, u"nome"_s, u"espera"_s};
    const Cadastro cadastro;
    cadastro.other(before);
    Conexao store(cadastro.linha());
    LinhaLog entry = line;
    entry.cadastro = store.identity().identidade;
    QStringList found;
    for (int i = 0; i < (line.esperou ? 2 : 1); ++i)
        found << kNames.at(static_cast<int>(store.log({entry}, [](bool) {}).front()));
    QCOMPARE(found.join(u' '), fates);
    QCOMPARE(cadastro.other(u"SELECT LG_Aluno FROM LG_LogAulas ORDER BY LG_Id"_s), log);
}

QTEST_GUILESS_MAIN(TstArmazem)
#include "tst_armazem.moc"
