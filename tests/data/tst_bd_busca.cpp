#include "apoio.h"
#include "passos.h"

#include "data/bd.h"
#include "data/errobd.h"
#include "data/recordset.h"
#include "platform/costuras.h"
#include "support/suporte.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// Searching, filtering, sorting and copying, on the classes 1 to 4 named a, B, b and without a name.
class TstBdBusca final : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Registro> mRegistro;
    std::shared_ptr<RecordSet> mSet;
    void play(const QString &steps) const { teste::play(*mSet, *mRegistro, steps); }

private slots:
    void init();
    void cleanup();
    void searches_data();
    void searches();
    void givesFields_data();
    void givesFields();
    void criterionIsLeftInUpperCase();
    void pendingChanges_data();
    void pendingChanges();
    void onAnEmptySet();
    void goesOn();
    void goesOnToAFailure_data();
    void goesOnToAFailure();
    void filters_data();
    void filters();
    void sortIsTold();
    void copiesARecord();
    void copiesATable_data();
    void copiesATable();
    void copyIsTold();
};

void TstBdBusca::init()
{
    failOnWarnings();
    reiniciaCosturas();
    mRegistro = std::make_unique<Registro>();
    mRegistro->sql(u"INSERT INTO CL_Classes VALUES (1, 'a', 'x', ''), (2, 'B', 'y', ''), (3, 'b', 'z', ''),"
                   "(4, NULL, NULL, '')"_s);
    mRegistro->open();
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"RS"_s);
    mSet = gBD->GetRecordSet(u"RS"_s);
}

void TstBdBusca::cleanup()
{
    mSet.reset();
    gBD.reset();
    mRegistro.reset();
}

void TstBdBusca::searches_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("criterion");
    QTest::addColumn<QString>("found"); // the code
    QTest::addColumn<QString>("state");
    const auto row = [](const char *name, const char *before, const char *criterion, const char *found,
                         const char *state) {
        QTest::newRow(name) << QString::fromLatin1(before) << QString::fromLatin1(criterion)
                            << QString::fromLatin1(found) << QString::fromLatin1(state);
    };
    row("a hit", "", "CL_Cod = 3", "3", "3/4 0 b");
    row("the first of two", "last", "CL_Nome='b'", "2", "2/4 0 B");
    row("from behind the end", "end", "CL_Cod=1", "1", "1/4 0 a");
    row("from before the beginning", "previous", "CL_Cod=1", "1", "1/4 0 a");
    row("a miss leaves it behind the end", "", "CL_Cod=9", "", "EOF -3/4 0 3021");
    row("an empty criterion moves nothing", "last", "", "", "4/4 0 Null");
    row("nothing behind the equals sign: the first", "last", "CL_Cod=", "", "1/4 0 a");
    row("blanks behind it", "last", "CL_Cod=   ", "", "1/4 0 a");
    row("no equals sign is no search", "last", "CL_Cod > 1", "", "1/4 0 a");
    row("at least", "", "CL_Cod >= 3", "3", "3/4 0 b");
    row("like", "", "cl_nome like b*", "2", "2/4 0 B");
    row("a deleted row is not found", "bookmark 2; remove", "CL_Nome='b'", "3", "2/3 0 b");
    row("nor a filtered one", "filter CL_Cod<>2", "CL_Nome='b'", "3", "2/3 0 b");
    row("a row just added is", "add novo; update; first", "CL_Nome='novo'", "5", "5/5 0 novo");
}

void TstBdBusca::searches()
{
    QFETCH(QString, before);
    QFETCH(QString, criterion);
    QFETCH(QString, found);
    QFETCH(QString, state);
    const BoxScript boxes;
    play(before);
    QCOMPARE(gBD->Pesquisa(criterion, u"rs"_s, u"CL_Cod"_s), found);
    QCOMPARE(stateOf(*mSet), state);
}

void TstBdBusca::givesFields_data()
{
    QTest::addColumn<QVariant>("field");
    QTest::addColumn<QString>("text");
    QTest::newRow("by name") << QVariant(u"cl_prof"_s) << u"y"_s;
    QTest::newRow("by number") << QVariant(0) << u"2"_s;
    QTest::newRow("all") << QVariant(-1) << u"2\tB\ty\t\t"_s;
    QTest::newRow("all, by a text") << QVariant(u"-1"_s) << u"2\tB\ty\t\t"_s;
    QTest::newRow("an empty one") << QVariant(u"CL_Senha"_s) << u""_s;
    QTest::newRow("no field at all") << QVariant() << u""_s;
}

void TstBdBusca::givesFields()
{
    QFETCH(QVariant, field);
    QFETCH(QString, text);
    const BoxScript boxes;
    QString criterion = u"CL_Cod=2"_s;
    QCOMPARE(gBD->Pesquisa(criterion, u"RS"_s, field), text);
    QCOMPARE(gBD->PosicaoRegistroAtual(), 2);
    play(u"first"_s);
    QCOMPARE(gBD->LocalizarProxima(criterion, u"RS"_s, field), text);
}

void TstBdBusca::criterionIsLeftInUpperCase()
{
    QString criterion = u"cl_nome='ção ß ÿ'"_s;
    gBD->Pesquisa(criterion, u"RS"_s, 0);
    QCOMPARE(criterion, u"CL_NOME='ÇÃO ß Ÿ'"_s);
}

void TstBdBusca::pendingChanges_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("criterion");
    QTest::addColumn<QString>("state");
    QTest::newRow("an edit is lost") << u"name z"_s << u"CL_Nome='a'"_s << u"1/4 0 a"_s;
    QTest::newRow("also when nothing is searched for") << u"name z"_s << u"CL_Cod="_s << u"1/4 0 a"_s;
    QTest::newRow("an empty criterion keeps it") << u"name z"_s << u""_s << u"1/4 1 z"_s;
    QTest::newRow("an added record stays pending") << u"add novo"_s << u"CL_Cod=3"_s << u"3/5 2 b"_s;
    QTest::newRow("and is not found") << u"add novo"_s << u"CL_Nome='novo'"_s << u"EOF -3/5 2 3021"_s;
}

void TstBdBusca::pendingChanges()
{
    QFETCH(QString, before);
    QFETCH(QString, criterion);
    QFETCH(QString, state);
    const BoxScript boxes;
    play(before);
    gBD->Pesquisa(criterion, u"RS"_s, 0);
    QCOMPARE(stateOf(*mSet), state);
}

void TstBdBusca::onAnEmptySet()
{
    const BoxScript boxes;
    play(u"filter CL_Cod=9"_s);
    QString criterion = u"não se lê"_s;
    QCOMPARE(gBD->Pesquisa(criterion, u"RS"_s, 0), u""_s);
    QCOMPARE(criterion, u"NÃO SE LÊ"_s);
    QCOMPARE(gBD->LocalizarProxima(criterion, u"RS"_s, 0), u""_s);
    play(u"add"_s); // an added record alone: nothing to find, nothing to tell
    criterion = u"CL_Cod=1"_s;
    QCOMPARE(gBD->Pesquisa(criterion, u"RS"_s, 0), u""_s);
    QCOMPARE(mSet->EditMode(), qint32(kEdicaoInclusao));
}

void TstBdBusca::goesOn()
{
    QString criterion = u"CL_Nome='b'"_s;
    QCOMPARE(gBD->Pesquisa(criterion, u"RS"_s, 0), u"2"_s);
    QCOMPARE(gBD->LocalizarProxima(criterion, u"RS"_s, 0), u"3"_s);
    QCOMPARE(gBD->LocalizarProxima(criterion, u"RS"_s, 0), u""_s);
    QVERIFY(gBD->FimDeArquivo(u"RS"_s));
    play(u"first; next; name z"_s);
    QCOMPARE(gBD->LocalizarProxima(criterion, u"RS"_s, 0), u"3"_s); // the edit is lost here too
    QCOMPARE(gBD->lista(u"RS"_s, u"CL_Nome"_s, u","_s), u"a,B,b,"_s);
    criterion = u"CL_Cod="_s;
    QCOMPARE(gBD->LocalizarProxima(criterion, u"RS"_s, 0), u""_s);
    QCOMPARE(gBD->PosicaoRegistroAtual(u"RS"_s), 3); // no search, no move
}

void TstBdBusca::goesOnToAFailure_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("criterion");
    QTest::addColumn<int>("number");
    QTest::newRow("behind the end") << u"end"_s << u"CL_Cod=1"_s << int(kErroSemRegistro);
    QTest::newRow("no criterion") << u""_s << u"CL_Cod=x"_s << int(kErroCriterio);
    QTest::newRow("no column") << u""_s << u"AL_Cod=1"_s << int(kErroNome);
}

void TstBdBusca::goesOnToAFailure()
{
    QFETCH(QString, before);
    QFETCH(QString, criterion);
    QFETCH(int, number);
    const BoxScript boxes;
    play(before);
    QCOMPARE(failureOf([&] { gBD->LocalizarProxima(criterion, u"RS"_s, 0); }), number);
}

void TstBdBusca::filters_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("criterion");
    QTest::addColumn<QString>("alias");
    QTest::addColumn<QString>("state");
    QTest::newRow("goes to the first") << u"last"_s << u"CL_Cod>1"_s << u"RS"_s << u"1/3 0 B"_s;
    QTest::newRow("in place of another") << u"filter CL_Cod=1"_s << u"CL_Cod=3"_s << u"RS"_s << u"1/1 0 b"_s;
    QTest::newRow("none") << u"filter CL_Cod=3"_s << u""_s << u"RS"_s << u"1/4 0 a"_s;
    QTest::newRow("lets nothing through") << u""_s << u"CL_Cod=9"_s << u"RS"_s << u"BOF EOF -1/0 0 3021"_s;
    QTest::newRow("none after that") << u"filter CL_Cod=9"_s << u""_s << u"RS"_s << u"1/4 0 a"_s;
    QTest::newRow("another after that") << u"filter CL_Cod=9"_s << u"CL_Cod=2"_s << u"RS"_s << u"1/1 0 B"_s;
    QTest::newRow("an empty alias does nothing") << u"last"_s << u"CL_Cod=1"_s << u""_s << u"4/4 0 Null"_s;
    QTest::newRow("nor does it clear one") << u"filter CL_Cod=3"_s << u""_s << u""_s << u"1/1 0 b"_s;
    QTest::newRow("an empty table") << u"remove all; requery"_s << u"não se lê"_s << u"RS"_s
                                    << u"BOF EOF -1/0 0 3021"_s;
    QTest::newRow("an added record stays pending") << u"add"_s << u"CL_Cod=1"_s << u"RS"_s << u"1/2 2 a"_s;
}

void TstBdBusca::filters()
{
    QFETCH(QString, before);
    QFETCH(QString, criterion);
    QFETCH(QString, alias);
    QFETCH(QString, state);
    play(before);
    gBD->Filtro(criterion, alias);
    QCOMPARE(stateOf(*mSet), state);
}

void TstBdBusca::sortIsTold()
{
    BoxScript boxes{Resposta::Ok, Resposta::Ok};
    gBD->Sort(u"CL_Nome UP"_s, u"RS"_s);
    QCOMPARE(boxes.last(), (Caixa{u"O critério não pôde ser entendido."_s, u"RS - Sort"_s, Icone::Critico}));
    gBD->Sort(u"AL_Nome"_s, u"RS"_s);
    QCOMPARE(boxes.last().titulo, u"RS - Sort"_s);
    QCOMPARE(stateOf(*mSet), u"1/4 0 a"_s);
}

static const QString kTables =
    u"CREATE TABLE De (Id INTEGER PRIMARY KEY AUTOINCREMENT, N INTEGER, B BOOLEAN, T VARCHAR,"
    "M TEXT, D DATETIME, R REAL);"
    "CREATE TABLE Para (Id INTEGER PRIMARY KEY AUTOINCREMENT, N INTEGER, B BOOLEAN,"
    "T VARCHAR, M TEXT, D DATETIME, R REAL);"
    "INSERT INTO De (N, B, T, M, D, R) VALUES (5, 1, 'um', 'longo', '2026-11-24 10:00:00', 1.5),"
    "(NULL, 0, NULL, NULL, NULL, NULL), (7, 1, 'três', '', NULL, NULL)"_s;
static const QString kCopied = u"SELECT Id, N, B, T, M, D, R FROM Para"_s;

void TstBdBusca::copiesARecord()
{
    const BoxScript boxes;
    mRegistro->sql(kTables);
    gBD->Records_Set(u"Select * From De"_s, u"de"_s);
    gBD->Records_Set(u"Select * From Para"_s, u"para"_s);
    gBD->CopiaRegistro(u"de"_s, u"para"_s);
    gBD->MoveProximoRegistro(u"de"_s);
    gBD->CopiaRegistro(u"de"_s, u"para"_s); // a Null is an empty text, and 0 as a number
    QCOMPARE(gBD->PosicaoRegistroAtual(u"para"_s), 2);
    gBD->Fechar();
    // numbered by the destination; neither dates nor doubles are copied
    QCOMPARE(mRegistro->sql(kCopied), (QStringList{u"1|5|1|um|longo|NULL|NULL"_s, u"2|0|0|||NULL|NULL"_s}));
}

void TstBdBusca::copiesATable_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<int>("from"); // records to skip
    QTest::addColumn<bool>("skipsFirst");
    QTest::addColumn<QStringList>("rows");
    const QString all = u"Select * From De"_s;
    const QStringList rows{u"1|5|1|um|longo|NULL|NULL"_s, u"2|0|0|||NULL|NULL"_s, u"3|7|1|três||NULL|NULL"_s};
    QTest::newRow("all") << all << 0 << false << rows;
    QTest::newRow("without the first field") << all << 0 << true << rows;
    QTest::newRow("from the current one on") << all << 2 << false << QStringList{u"1|7|1|três||NULL|NULL"_s};
    QTest::newRow("from behind the end") << all << 3 << false << QStringList{};
    QTest::newRow("fields go by number, numbers skipped")
        << u"Select Id, Id * 10 as N, B, T From De"_s << 0 << true
        << QStringList{
               u"1|NULL|1|um|NULL|NULL|NULL"_s, u"2|NULL|0||NULL|NULL|NULL"_s, u"3|NULL|1|três|NULL|NULL|NULL"_s};
}

void TstBdBusca::copiesATable()
{
    QFETCH(QString, source);
    QFETCH(int, from);
    QFETCH(bool, skipsFirst);
    QFETCH(QStringList, rows);
    const BoxScript boxes;
    mRegistro->sql(kTables);
    gBD->Records_Set(source, u"de"_s);
    gBD->Records_Set(u"Select * From Para"_s, u"para"_s);
    for (int i = 0; i < from; ++i)
        gBD->MoveProximoRegistro(u"de"_s);
    gBD->CopiaTabela(u"de"_s, u"para"_s, skipsFirst);
    QVERIFY(gBD->FimDeArquivo(u"de"_s));
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"para"_s), rows.size());
    gBD->Fechar();
    QCOMPARE(mRegistro->sql(kCopied), rows);
}

void TstBdBusca::copyIsTold()
{
    BoxScript boxes{Resposta::Ok, Resposta::Ok};
    mRegistro->sql(kTables + u"; UPDATE De SET T = 'x'"_s);
    gBD->Records_Set(u"Select B, T, N From De"_s, u"de"_s); // a text where a number is wanted
    gBD->Records_Set(u"Select N, N as X, R From Para"_s, u"para"_s); // without its key
    gBD->CopiaRegistro(u"de"_s, u"para"_s);
    QCOMPARE(boxes.last(),
        (Caixa{u"O conjunto de registros só pode ser lido."_s, u"de - CopiaRegistro"_s, Icone::Informacao}));
    gBD->Records_Set(u"Select Id, N From Para"_s, u"para"_s);
    gBD->CopiaTabela(u"de"_s, u"para"_s);
    QCOMPARE(boxes.last(), (Caixa{u"O valor não é adequado para o campo."_s, u"de - CopiaTabela"_s, Icone::Critico}));
    QCOMPARE(gBD->ModoEdicao(u"para"_s), QVariant(kEdicaoInclusao)); // what is dropped is the source's change
    gBD->Fechar();
    QCOMPARE(mRegistro->sql(kCopied), QStringList());
}

QTEST_MAIN(TstBdBusca)
#include "tst_bd_busca.moc"
