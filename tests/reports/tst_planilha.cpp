#include "reports/planilha.h"

#include "apoio.h"
#include "data/bd.h"
#include "data/consultas.h"
#include "reports/indice.h"
#include "reports/periodo.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include <QTemporaryDir>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

using Linhas4 = std::vector<LinhaPlanilha>;

class TstPlanilha : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void marksOfALog_data();
    void marksOfALog();
    void whichRowsCount_data();
    void whichRowsCount();
    void oneDiscipline_data();
    void oneDiscipline();
    void allDisciplines();
    void allDisciplinesWithoutAny_data();
    void allDisciplinesWithoutAny();
    void countersEndAt32767_data();
    void countersEndAt32767();
    void aTabInANameShiftsItsFields();
    void thePeriodOfARegister();
    void aCodeBeyond32BitsEndsTheSheet();
    void aScanThatFailsLeavesTheSheet();
    void aMissingRecordSetLeavesTheHeader();
    void twentyThousandRows();
};

static const LinhaPlanilha kHeader{u"Data"_s, u"Nome do Roteiro"_s, u"Acertos"_s, u"Erros"_s};
static const EscolhaDisciplinas kTodas{true, QString()};

static EscolhaDisciplinas escolha(const QString &nome)
{
    return {false, nome + u"\t\t\t\t\t4"_s};
}

void TstPlanilha::init()
{
    failOnWarnings();
    reiniciaReports();
    // In each string the first line is a filling, since it is never found.
    gRotCiencias = u"9001\t-\r\n10\t Animais\r\n11\tPlantas\r\n"_s;
    gRotMatematica = u"9002\t-\r\n20\tContas\r\n"_s;
    gRotPortugues = u"9003\t-\r\n30\tRimas\r\n20\tContas de letras\r\n"_s;
    gRotDesenv = u"9004\t-\r\n40\tCores\r\n"_s;
}

static LinhaLog row(qint32 codigo, const QString &respostas, const QString &data = u"01/03/26 10:00:00"_s)
{
    return {codigo, u"Disciplina<disc>Nome<rot>"_s + respostas, data};
}

void TstPlanilha::marksOfALog_data()
{
    QTest::addColumn<QString>("respostas");
    QTest::addColumn<qint16>("acertos");
    QTest::addColumn<qint16>("erros");
    const auto add = [](const char *name, const QString &text, int acertos, int erros) {
        QTest::newRow(name) << text << qint16(acertos) << qint16(erros);
    };
    add("answers as the children send them", u"Ciências<disc>Animais<rot>A:E:A:"_s, 2, 1);
    add("no answer", u"Ciências<disc>Animais<rot>"_s, 0, 0);
    add("no <rot>: no answer text", u"AAAEEE"_s, 0, 0);
    add("<rot> in other letters is none", u"x<ROT>AE"_s, 0, 0);
    add("letters before <rot> don't count", u"AVALIAÇÃO E<disc>ESTUDO<rot>A:"_s, 1, 0);
    add("the first <rot> counts, letters behind a second too", u"x<rot>A<rot>E"_s, 1, 1);
    add("capital letters alone, plain ones alone", u"x<rot>a:e:Á:É:Â:À:"_s, 0, 0);
    add("any other A and E too", u"x<rot>ACERTOU:ERRADA"_s, 3, 2);
    add("<rot> first", u"<rot>E"_s, 0, 1);
    add("32767 of both", u"x<rot>"_s + u"AE"_s.repeated(32767), 32767, 32767);
}

void TstPlanilha::marksOfALog()
{
    QFETCH(QString, respostas);
    QFETCH(qint16, acertos);
    QFETCH(qint16, erros);
    const Planilha planilha = contaMarcas({{10, respostas, u"01/03/26 10:00:00"_s}}, escolha(u"Ciências"_s));
    QVERIFY(planilha.completa);
    const QString a = QString::number(acertos);
    const QString e = QString::number(erros);
    QCOMPARE(planilha.linhas,
        (Linhas4{kHeader, {u"Ciências"_s, {}, {}, {}}, {u"01/03/26 10:00:00"_s, u"Animais"_s, a, e},
            {QString(), u"*** TOTAL ***"_s, a, e}}));
    QCOMPARE(planilha.resumo, (Resumo{Marcas{acertos, erros}}));
}

void TstPlanilha::whichRowsCount_data()
{
    QTest::addColumn<qint32>("codigo");
    QTest::addColumn<QString>("expected"); // slot and name; "-" for a row that adds nothing
    QTest::newRow("in an index") << 10 << "0 Animais";
    QTest::newRow("in two: Português is asked before Matemática") << 20 << "2 Contas de letras";
    QTest::newRow("in no index") << 77 << "-";
    QTest::newRow("first line of an index") << 9001 << "-";
    QTest::newRow("Desenv. Sensorio Motor is not among all") << 40 << "-";
    QTest::newRow("no code") << 0 << "-";
    QTest::newRow("code below 0") << -10 << "-";
}

void TstPlanilha::whichRowsCount()
{
    QFETCH(qint32, codigo);
    QFETCH(QString, expected);
    const Planilha planilha = contaMarcas({row(codigo, u"A:A:E:"_s)}, kTodas);
    QVERIFY(planilha.completa);
    QString found = u"-"_s;
    for (std::size_t fatia = 0; fatia < planilha.resumo.size(); ++fatia) {
        if (planilha.resumo[fatia] == Marcas{2, 1})
            found = QString::number(fatia) + u' ' + planilha.linhas.at(2)[1];
    }
    QCOMPARE(found, expected);
    const bool counted = expected != u"-"_s;
    QCOMPARE(planilha.linhas.size(), std::size_t(counted ? 6 : 3));
    const QString total = u"*** TOTAL GERAL***"_s;
    QCOMPARE(planilha.linhas.back(),
        counted ? (LinhaPlanilha{QString(), total, u"2"_s, u"1"_s})
                : (LinhaPlanilha{QString(), total, u"0"_s, u"0"_s}));
}

static std::vector<LinhaLog> someRows()
{
    return {row(10, u"A:"_s, u"05/03/26 09:30:00"_s), row(30, u"E:A:"_s), row(40, u"E:"_s), row(11, u"A:A:E:"_s),
        row(10, u"E:"_s, u"01/03/26"_s)};
}

void TstPlanilha::oneDiscipline_data()
{
    QTest::addColumn<QString>("nome");
    QTest::addColumn<Linhas4>("rows"); // behind the header
    QTest::addColumn<Marcas>("marcas");
    const QString date = u"01/03/26 10:00:00"_s;
    const QString total = u"*** TOTAL ***"_s;
    QTest::newRow("a roteiro run twice gives two lines, in the order of the log")
        << u"Ciências"_s
        << Linhas4{{u"Ciências"_s, {}, {}, {}}, {u"05/03/26 09:30:00"_s, u"Animais"_s, u"1"_s, u"0"_s},
               {date, u"Plantas"_s, u"2"_s, u"1"_s}, {u"01/03/26"_s, u"Animais"_s, u"0"_s, u"1"_s},
               {QString(), total, u"3"_s, u"2"_s}}
        << Marcas{3, 2};
    QTest::newRow("Português") << u"Português"_s
                               << Linhas4{{u"Português"_s, {}, {}, {}}, {date, u"Rimas"_s, u"1"_s, u"1"_s},
                                      {QString(), total, u"1"_s, u"1"_s}}
                               << Marcas{1, 1};
    QTest::newRow("Desenv. Sensorio Motor")
        << u"Desenv. Sensorio Motor"_s
        << Linhas4{{u"Desenv. Sensorio Motor"_s, {}, {}, {}}, {date, u"Cores"_s, u"0"_s, u"1"_s},
               {QString(), total, u"0"_s, u"1"_s}}
        << Marcas{0, 1};
    QTest::newRow("without a row: no title, no total") << u"Matemática"_s << Linhas4{} << Marcas{};
    QTest::newRow("another text") << u"História"_s << Linhas4{} << Marcas{};
    QTest::newRow("the catalogue's longer name") << u"Desenvolvimento Sensório Motor"_s << Linhas4{} << Marcas{};
    QTest::newRow("nothing chosen") << QString() << Linhas4{} << Marcas{};
}

void TstPlanilha::oneDiscipline()
{
    QFETCH(QString, nome);
    QFETCH(Linhas4, rows);
    QFETCH(Marcas, marcas);
    const Planilha planilha = contaMarcas(someRows(), escolha(nome));
    rows.insert(rows.begin(), kHeader);
    QCOMPARE(planilha, (Planilha{rows, Resumo{marcas}, true}));
}

void TstPlanilha::allDisciplines()
{
    gRotMatematica += u"21\tMedidas\r\n"_s;
    std::vector<LinhaLog> log = someRows();
    log.push_back(row(21, u"A:A:A:A:"_s));
    const Planilha planilha = contaMarcas(log, kTodas);
    const QString date = u"01/03/26 10:00:00"_s;
    const QString total = u"*** TOTAL ***"_s;
    const Linhas4 expected{kHeader, {u"Ciências"_s, {}, {}, {}}, {u"05/03/26 09:30:00"_s, u"Animais"_s, u"1"_s, u"0"_s},
        {date, u"Plantas"_s, u"2"_s, u"1"_s}, {u"01/03/26"_s, u"Animais"_s, u"0"_s, u"1"_s},
        {QString(), total, u"3"_s, u"2"_s}, {u"Matemática"_s, {}, {}, {}}, {date, u"Medidas"_s, u"4"_s, u"0"_s},
        {QString(), total, u"4"_s, u"0"_s}, {u"Português"_s, {}, {}, {}}, {date, u"Rimas"_s, u"1"_s, u"1"_s},
        {QString(), total, u"1"_s, u"1"_s}, {}, {QString(), u"*** TOTAL GERAL***"_s, u"8"_s, u"3"_s}};
    QCOMPARE(planilha, (Planilha{expected, Resumo{Marcas{3, 2}, Marcas{4, 0}, Marcas{1, 1}}, true}));
}

void TstPlanilha::allDisciplinesWithoutAny_data()
{
    QTest::addColumn<std::vector<LinhaLog>>("log");
    QTest::addColumn<bool>("total");
    QTest::newRow("no row: the header alone") << std::vector<LinhaLog>{} << false;
    QTest::newRow("rows of Desenv. Sensorio Motor alone") << std::vector<LinhaLog>{row(40, u"A:"_s)} << true;
    QTest::newRow("rows without a code alone") << std::vector<LinhaLog>{row(0, u"A:"_s)} << true;
}

void TstPlanilha::allDisciplinesWithoutAny()
{
    QFETCH(std::vector<LinhaLog>, log);
    QFETCH(bool, total);
    Linhas4 expected{kHeader};
    if (total) {
        expected.push_back({});
        expected.push_back({QString(), u"*** TOTAL GERAL***"_s, u"0"_s, u"0"_s});
    }
    QCOMPARE(contaMarcas(log, kTodas), (Planilha{expected, {}, true}));
}

/// A row with so many right and wrong answers.
static LinhaLog manyAnswers(qint32 codigo, int acertos, int erros)
{
    return row(codigo, QString(acertos, u'A') + QString(erros, u'E'));
}

void TstPlanilha::countersEndAt32767_data()
{
    QTest::addColumn<std::vector<LinhaLog>>("log");
    QTest::addColumn<bool>("completa");
    QTest::addColumn<int>("rows");
    QTest::addColumn<LinhaPlanilha>("last");
    const QString date = u"01/03/26 10:00:00"_s;
    const QString name = u"Animais"_s;
    const QString total = u"*** TOTAL ***"_s;
    using Log = std::vector<LinhaLog>;
    QTest::newRow("a row's right answers past it: their cell stays empty")
        << Log{manyAnswers(10, 32768, 3)} << false << 3 << LinhaPlanilha{date, name, {}, {}};
    QTest::newRow("a row's wrong answers past it: their cell stays empty")
        << Log{manyAnswers(10, 3, 32768)} << false << 3 << LinhaPlanilha{date, name, u"3"_s, {}};
    QTest::newRow("a discipline's right answers past it") << Log{manyAnswers(10, 32766, 0), manyAnswers(10, 2, 0),
        manyAnswers(10, 1, 0)} << false << 4 << LinhaPlanilha{date, name, {}, {}};
    QTest::newRow("a discipline's wrong answers past it")
        << Log{manyAnswers(10, 0, 32767), manyAnswers(10, 0, 1)} << false << 4 << LinhaPlanilha{date, name, u"0"_s, {}};
    QTest::newRow("the grand total of right answers past it: the discipline's total is shown")
        << Log{manyAnswers(10, 32767, 0), manyAnswers(30, 1, 0)} << false << 7
        << LinhaPlanilha{QString(), total, u"1"_s, u"0"_s};
    QTest::newRow("the grand total of wrong answers past it") << Log{manyAnswers(10, 0, 1),
        manyAnswers(30, 1, 32767)} << false << 7 << LinhaPlanilha{QString(), total, u"1"_s, u"32767"_s};
    QTest::newRow("a discipline's totals at it")
        << Log{manyAnswers(10, 32766, 32765), manyAnswers(10, 1, 2)} << true << 7
        << LinhaPlanilha{QString(), u"*** TOTAL GERAL***"_s, u"32767"_s, u"32767"_s};
    QTest::newRow("all totals at it") << Log{manyAnswers(10, 32766, 32767), manyAnswers(30, 1, 0)} << true << 9
                                      << LinhaPlanilha{QString(), u"*** TOTAL GERAL***"_s, u"32767"_s, u"32767"_s};
}

void TstPlanilha::countersEndAt32767()
{
    QFETCH(std::vector<LinhaLog>, log);
    QFETCH(bool, completa);
    QFETCH(int, rows);
    QFETCH(LinhaPlanilha, last);
    const Planilha planilha = contaMarcas(log, kTodas);
    QCOMPARE(planilha.completa, completa);
    QCOMPARE(planilha.linhas.size(), std::size_t(rows));
    QCOMPARE(planilha.linhas.back(), last);
}

void TstPlanilha::aTabInANameShiftsItsFields()
{
    gRotCiencias += u"12\tcom\t7\r\n13\tcom\ttab\r\n"_s;
    const Planilha shifted = contaMarcas({row(12, u"A:A:E:"_s)}, escolha(u"Ciências"_s));
    QVERIFY(shifted.completa);
    QCOMPARE(shifted.linhas[2], (LinhaPlanilha{u"01/03/26 10:00:00"_s, u"com"_s, u"7"_s, u"2"_s}));
    QCOMPARE(shifted.resumo[0], (Marcas{7, 2}));
    const Planilha ended = contaMarcas({row(10, u"A:"_s), row(13, u"A:"_s), row(10, u"A:"_s)}, escolha(u"Ciências"_s));
    QVERIFY(!ended.completa);
    QCOMPARE(ended.linhas.size(), std::size_t(4));
    QCOMPARE(ended.linhas.back(), (LinhaPlanilha{u"01/03/26 10:00:00"_s, u"com"_s, {}, {}}));
}

void TstPlanilha::thePeriodOfARegister()
{
    const Registro registro;
    const auto add = [&registro](const QString &data, const QString &codigo, const QString &resp, int aluno = 3) {
        registro.sql(
            u"INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, LG_Resp) VALUES (%1, 7, '%2', %3, "
            "%4)"_s.arg(aluno)
                .arg(data, codigo, resp));
    };
    add(u"2026-02-27 23:59:59"_s, u"10"_s, u"'x<rot>A:'"_s); // a second before the first day
    add(u"2026-02-28 00:00:00"_s, u"11"_s, u"'x<rot>A:A:'"_s);
    add(u"2026-03-01 12:00:00"_s, u"NULL"_s, u"'x<rot>A:'"_s);
    add(u"2026-03-01 12:00:01"_s, u"10"_s, u"''"_s); // no answers: not even a line
    add(u"2026-03-01 12:00:02"_s, u"10"_s, u"NULL"_s);
    add(u"2026-03-01 12:00:03"_s, u"10"_s, u"'x<rot>E:'"_s, 4); // another pupil
    add(u"2026-03-02 08:05:09"_s, u"10"_s, u"'sem marca AEAE'"_s);
    add(u"2026-03-03 00:00:00"_s, u"10"_s, u"'x<rot>E:E:E:'"_s);
    add(u"2026-03-03 00:00:01"_s, u"11"_s, u"'x<rot>A:'"_s); // the last day counts at midnight alone
    registro.open();
    gBlocosArq.resize(2); // the index stands
    const Periodo periodo = lePeriodo(u"28/02/26"_s, u"03/03/26"_s);
    gBD->Records_Set(consultas::logDoPeriodo(periodo.inicio, periodo.fim, 3, 7), u"rsLogAulas"_s, {}, kCursorKeyset);
    const auto planilha = montaPlanilha(kTodas);
    QVERIFY(planilha);
    const Linhas4 expected{kHeader, {u"Ciências"_s, {}, {}, {}}, {u"03/03/26"_s, u"Animais"_s, u"0"_s, u"3"_s},
        {u"02/03/26 08:05:09"_s, u"Animais"_s, u"0"_s, u"0"_s}, {u"28/02/26"_s, u"Plantas"_s, u"2"_s, u"0"_s},
        {QString(), u"*** TOTAL ***"_s, u"2"_s, u"3"_s}, {}, {QString(), u"*** TOTAL GERAL***"_s, u"2"_s, u"3"_s}};
    QCOMPARE(*planilha, (Planilha{expected, Resumo{Marcas{2, 3}}, true}));
    QVERIFY(gBD->FimDeArquivo(u"rsLogAulas"_s));

    const Periodo reversed = lePeriodo(u"03/03/26"_s, u"28/02/26"_s);
    gBD->Records_Set(consultas::logDoPeriodo(reversed.inicio, reversed.fim, 3, 7), u"rsLogAulas"_s, {}, kCursorKeyset);
    QCOMPARE(*montaPlanilha(kTodas), (Planilha{{kHeader}, {}, true}));
}

void TstPlanilha::aCodeBeyond32BitsEndsTheSheet()
{
    const Registro registro;
    registro.sql(u"INSERT INTO LG_LogAulas VALUES (3, 7, '2026-03-01 10:00:00', 4294967306, NULL, 'x<rot>A:', 1)"_s);
    registro.open();
    gBlocosArq.resize(2); // the index stands
    gBD->Records_Set(consultas::logDoPeriodo(u"01/01/2026"_s, u"12/31/2026"_s, 3, 7), u"rsLogAulas"_s);
    QCOMPARE(montaPlanilha(kTodas), std::optional(Planilha{{kHeader}, {}, false})); // 10 is in its low bits
}

void TstPlanilha::aScanThatFailsLeavesTheSheet()
{
    const QTemporaryDir dir;
    gConfig = Quorel_Zeto();
    gConfig.SetaCFG(u"[zeto]\r\nDBBLOCOS="_s + barras(dir.path()));
    const QByteArray bloco = "[ROT<1>]NomeRot =Um\r\nCODROT:50\r\n[<1>1][ROT<2>]NomeRot =Dois\r\nCODROT:51\r\n[<2>1]";
    escreve(dir.filePath(u"F1/0102MAF1.edb"_s), bloco);
    escreve(dir.filePath(u"F1/leia-me.edb"_s), bloco);
    const Registro registro;
    registro.sql(u"INSERT INTO LG_LogAulas VALUES (3, 7, '2026-03-01 10:00:00', 51, NULL, 'x<rot>A:', 1)"_s);
    registro.open();
    gBD->Records_Set(consultas::logDoPeriodo(u"01/01/2026"_s, u"12/31/2026"_s, 3, 7), u"rsLogAulas"_s);
    QVERIFY(!montaPlanilha(kTodas));
    // What was indexed is used from then on, and no scan is tried again.
    const auto second = montaPlanilha(escolha(u"Matemática"_s));
    QVERIFY(second);
    QCOMPARE(second->linhas.size(), std::size_t(4));
    QCOMPARE(second->linhas[2][1], u"Dois"_s);
    QCOMPARE(gBlocosArq.size(), std::size_t(3));
}

void TstPlanilha::aMissingRecordSetLeavesTheHeader()
{
    reiniciaData();
    gBlocosArq.resize(2);
    QCOMPARE(montaPlanilha(kTodas), std::optional(Planilha{{kHeader}, {}, false}));
}

void TstPlanilha::twentyThousandRows()
{
    constexpr int kRows = 20000;
    for (int i = 0; i < kRows; ++i)
        gRotPortugues += QString::number(100000 + i) + u"\tRoteiro\r\n"_s;
    std::vector<LinhaLog> log;
    for (int i = 0; i < kRows; ++i)
        log.push_back(row(100000 + i, u"A:"_s));
    const Planilha planilha = contaMarcas(log, kTodas);
    QCOMPARE(planilha.linhas.size(), std::size_t(kRows + 5));
    QCOMPARE(planilha.resumo[2], (Marcas{kRows, 0}));
}

QTEST_MAIN(TstPlanilha)
#include "tst_planilha.moc"
