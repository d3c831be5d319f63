#include "reports/planilha.h"

#include "apoio.h"
#include "data/bd.h"
#include "reports/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include <QTemporaryDir>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// A row of the log; the code as SQL has it, for what is no number.
struct Aula
{
    QString codigo;
    QString respostas;
    QString data = u"2026-03-01 10:00:00"_s;
};
using Log = std::vector<Aula>;

static const EscolhaDisciplinas kTodas{true, QString()};
static const EscolhaDisciplinas kCiencias{false, u"Ciências\t\t\t\t\t4"_s};

class TstPlanilha : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void marksOfALog_data();
    void marksOfALog();
    void sheets_data();
    void sheets();
    void numbersEndAt32767_data();
    void numbersEndAt32767();
    void aScanThatFailsLeavesTheSheet();
    void aMissingRecordSetLeavesTheHeader();
    void twentyThousandRows();

private:
    Planilha planilhaDe(const Log &log, const EscolhaDisciplinas &escolha);
    void open();

    std::unique_ptr<Registro> mRegistro;
};

void TstPlanilha::init()
{
    failOnWarnings();
    reiniciaReports();
    gBlocosArq.resize(2); // the index stands
    // In each string the first line is a filling, since it is never found.
    gRotCiencias = u"9001\t-\r\n10\t Animais\r\n11\tPlantas\r\n12\tcom\t7\r\n13\tcom\ttab\r\n"_s;
    gRotMatematica = u"9002\t-\r\n20\tContas\r\n21\tMedidas\r\n"_s;
    gRotPortugues = u"9003\t-\r\n30\tRimas\r\n20\tContas de letras\r\n"_s;
    gRotDesenv = u"9004\t-\r\n40\tCores\r\n"_s;
    mRegistro = std::make_unique<Registro>();
}

void TstPlanilha::open()
{
    mRegistro->open();
    gBD->Records_Set(u"SELECT * FROM LG_LogAulas"_s, u"rsLogAulas"_s, {}, kCursorKeyset);
}

/// The sheet of log rows in their order.
Planilha TstPlanilha::planilhaDe(const Log &log, const EscolhaDisciplinas &escolha)
{
    QString sql;
    for (const Aula &aula : log)
        sql += u"INSERT INTO LG_LogAulas VALUES (3, 7, '%1', %2, NULL, '%3', NULL);"_s.arg(
            aula.data, aula.codigo, aula.respostas);
    mRegistro->sql(sql);
    open();
    return montaPlanilha(escolha).value();
}

/// The rows behind the header, their cells joined by "|".
static QStringList linhasDe(const Planilha &planilha)
{
    QStringList linhas;
    for (const LinhaPlanilha &linha : planilha.linhas)
        linhas << QStringList(linha.begin(), linha.end()).join(u'|');
    if (linhas.takeFirst() != u"Data|Nome do Roteiro|Acertos|Erros"_s)
        return {u"another header"_s};
    return linhas;
}

void TstPlanilha::marksOfALog_data()
{
    QTest::addColumn<QString>("respostas");
    QTest::addColumn<QString>("marcas");
    const auto add = [](const char *name, const QString &respostas, const QString &marcas) {
        QTest::newRow(name) << respostas << marcas;
    };
    add("answers as the children send them", "Ciências<disc>Animais<rot>A:E:A:", "2|1");
    add("no answer", "Ciências<disc>Animais<rot>", "0|0");
    add("no <rot>: no answer text", "AAAEEE", "0|0");
    add("<rot> in other letters is none", "x<ROT>AE", "0|0");
    add("letters before <rot> don't count", "AVALIAÇÃO E<disc>ESTUDO<rot>A:", "1|0");
    add("the first <rot> counts, letters behind a second too", "x<rot>A<rot>E", "1|1");
    add("capital letters alone, plain ones alone", "x<rot>a:e:Á:É:Â:À:", "0|0");
    add("any other A and E too", "x<rot>ACERTOU:ERRADA", "3|2");
    add("<rot> first", "<rot>E", "0|1");
    add("32767 of both", "x<rot>" + u"AE"_s.repeated(32767), "32767|32767");
}

void TstPlanilha::marksOfALog()
{
    QFETCH(QString, respostas);
    QFETCH(QString, marcas);
    const Planilha planilha = planilhaDe({{"10", respostas}}, kCiencias);
    QVERIFY(planilha.completa);
    QCOMPARE(linhasDe(planilha),
        (QStringList{"Ciências|||", "01/03/26 10:00:00|Animais|" + marcas, "|*** TOTAL ***|" + marcas}));
    const Marcas &resumo = planilha.resumo[0];
    QCOMPARE(u"%1|%2"_s.arg(resumo.acertos).arg(resumo.erros), marcas);
}

void TstPlanilha::sheets_data()
{
    QTest::addColumn<Log>("log");
    QTest::addColumn<QString>("escolha"); // empty: all disciplines
    QTest::addColumn<QStringList>("linhas");
    QTest::addColumn<Resumo>("resumo");
    const Log some{{"10", "<rot>A:", "2026-03-05 09:30:00"}, {"30", "<rot>E:A:"}, {"40", "<rot>E:"},
        {"11", "<rot>A:A:E:"}, {"10", "<rot>E:", "2026-03-01 00:00:00"}};
    const QStringList ciencias{"Ciências|||", "05/03/26 09:30:00|Animais|1|0", "01/03/26 10:00:00|Plantas|2|1",
        "01/03/26|Animais|0|1", "|*** TOTAL ***|3|2"};
    const QStringList portugues{"Português|||", "01/03/26 10:00:00|Rimas|1|1", "|*** TOTAL ***|1|1"};
    const auto geral = [](const QString &marcas) { return QStringList{"|||", "|*** TOTAL GERAL***|" + marcas}; };
    QTest::newRow("a roteiro run twice gives two lines, in the order of the log")
        << some << "Ciências" << ciencias << Resumo{Marcas{3, 2}};
    QTest::newRow("Português") << some << "Português" << portugues << Resumo{Marcas{1, 1}};
    QTest::newRow("Desenv. Sensorio Motor")
        << some << "Desenv. Sensorio Motor"
        << QStringList{"Desenv. Sensorio Motor|||", "01/03/26 10:00:00|Cores|0|1", "|*** TOTAL ***|0|1"}
        << Resumo{Marcas{0, 1}};
    QTest::newRow("without a row: no title, no total") << some << "Matemática" << QStringList{} << Resumo{};
    QTest::newRow("another text") << some << "Desenvolvimento Sensório Motor" << QStringList{} << Resumo{};
    QTest::newRow("nothing chosen") << some << "\t" << QStringList{} << Resumo{};
    QTest::newRow("all but Desenv. Sensorio Motor, the ones without a row left out")
        << some << "" << ciencias + portugues + geral("4|3") << Resumo{Marcas{3, 2}, {}, Marcas{1, 1}};
    QTest::newRow("all: no row, not even a total") << Log{} << "" << QStringList{} << Resumo{};
    for (const char *codigo : {"77", "9001", "40", "0", "-10", "NULL"})
        QTest::addRow("all: %s adds nothing", codigo) << Log{{codigo, "<rot>A"}} << "" << geral("0|0") << Resumo{};
    QTest::newRow("all: in two indexes, Português is asked before Matemática")
        << Log{{"20", "<rot>A"}, {"21", "<rot>E"}} << ""
        << QStringList{"Matemática|||", "01/03/26 10:00:00|Medidas|0|1", "|*** TOTAL ***|0|1", "Português|||",
               "01/03/26 10:00:00|Contas de letras|1|0", "|*** TOTAL ***|1|0"}
            + geral("1|1")
        << Resumo{Marcas{}, {0, 1}, {1, 0}};
    QTest::newRow("a tab in a name shifts its fields")
        << Log{{"12", "<rot>A:A:E:"}} << "Ciências"
        << QStringList{"Ciências|||", "01/03/26 10:00:00|com|7|2", "|*** TOTAL ***|7|2"} << Resumo{Marcas{7, 2}};
}

void TstPlanilha::sheets()
{
    QFETCH(Log, log);
    QFETCH(QString, escolha);
    QFETCH(QStringList, linhas);
    QFETCH(Resumo, resumo);
    const Planilha planilha = planilhaDe(log, escolha.isEmpty() ? kTodas : EscolhaDisciplinas{false, escolha + "\t4"});
    QVERIFY(planilha.completa);
    QCOMPARE(linhasDe(planilha), linhas);
    QCOMPARE(planilha.resumo, resumo);
    QVERIFY(gBD->FimDeArquivo(u"rsLogAulas"_s));
}

void TstPlanilha::numbersEndAt32767_data()
{
    QTest::addColumn<Log>("log");
    QTest::addColumn<int>("linhas"); // behind the header
    QTest::addColumn<QString>("ultima");
    QTest::addColumn<bool>("completa");
    const auto aula = [](const QString &codigo, int acertos, int erros) {
        return Aula{codigo, u"<rot>"_s + QString(acertos, u'A') + QString(erros, u'E')};
    };
    const auto add = [](const char *name, const Log &log, int linhas, const QString &ultima, bool completa = false) {
        QTest::newRow(name) << log << linhas << ultima << completa;
    };
    const QString animais = u"01/03/26 10:00:00|Animais|"_s;
    add("a row's right answers past it: their cell stays empty", {aula("10", 32768, 3)}, 2, animais + "|");
    add("a row's wrong answers past it", {aula("10", 3, 32768)}, 2, animais + "3|");
    add("a discipline's right answers past it", {aula("10", 32766, 0), aula("10", 2, 0), aula("10", 1, 0)}, 3,
        animais + "|");
    add("a discipline's wrong answers past it", {aula("10", 0, 32767), aula("10", 0, 1)}, 3, animais + "0|");
    add("the grand total of right answers past it: the discipline's total is shown",
        {aula("10", 32767, 0), aula("30", 1, 0)}, 6, "|*** TOTAL ***|1|0");
    add("the grand total of wrong answers past it", {aula("10", 0, 1), aula("30", 1, 32767)}, 6,
        "|*** TOTAL ***|1|32767");
    add("a discipline's totals at it", {aula("10", 32766, 32765), aula("10", 1, 2)}, 6,
        "|*** TOTAL GERAL***|32767|32767", true);
    add("the grand totals at it", {aula("10", 32766, 32767), aula("30", 1, 0)}, 8, "|*** TOTAL GERAL***|32767|32767",
        true);
    add("a tab in a name where a number is looked for", {aula("10", 1, 0), aula("13", 1, 0), aula("10", 1, 0)}, 3,
        "01/03/26 10:00:00|com||");
    add("a code of which 10 is the low bits", {aula("4294967306", 1, 0)}, 0, "");
}

void TstPlanilha::numbersEndAt32767()
{
    QFETCH(Log, log);
    QFETCH(int, linhas);
    QFETCH(QString, ultima);
    QFETCH(bool, completa);
    const Planilha planilha = planilhaDe(log, kTodas);
    QCOMPARE(planilha.completa, completa);
    QCOMPARE(linhasDe(planilha).size(), linhas);
    QCOMPARE(linhasDe(planilha).value(linhas - 1), ultima);
}

void TstPlanilha::aScanThatFailsLeavesTheSheet()
{
    const QTemporaryDir dir;
    reiniciaReports();
    gConfig = Quorel_Zeto();
    gConfig.SetaCFG(u"[zeto]\r\nDBBLOCOS="_s + barras(dir.path()));
    const QByteArray bloco = "[ROT<1>]NomeRot =Um\r\nCODROT:50\r\n[<1>1][ROT<2>]NomeRot =Dois\r\nCODROT:51\r\n[<2>1]";
    escreve(dir.filePath(u"F1/0102CIF1.edb"_s), bloco);
    escreve(dir.filePath(u"F1/leia-me.edb"_s), bloco);
    mRegistro->sql(u"INSERT INTO LG_LogAulas VALUES (3, 7, '2026-03-01 10:00:00', 51, NULL, '<rot>A', 1)"_s);
    open();
    QVERIFY(!montaPlanilha(kTodas));
    // What was indexed is used from then on, and no scan is tried again.
    QCOMPARE(linhasDe(montaPlanilha(kCiencias).value()).value(1), u"01/03/26 10:00:00|Dois|1|0"_s);
    QCOMPARE(gBlocosArq.size(), std::size_t(3));
}

void TstPlanilha::aMissingRecordSetLeavesTheHeader()
{
    reiniciaData();
    const Planilha planilha = montaPlanilha(kTodas).value();
    QVERIFY(!planilha.completa);
    QCOMPARE(linhasDe(planilha), QStringList());
}

void TstPlanilha::twentyThousandRows()
{
    constexpr int kRows = 20000;
    for (int i = 0; i < kRows; ++i)
        gRotPortugues += QString::number(100000 + i) + u"\tRoteiro\r\n"_s;
    mRegistro->sql(u"WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < %1) INSERT INTO "
                   "LG_LogAulas SELECT 3, 7, '2026-03-01', 100000 + i, NULL, '<rot>A', NULL FROM n"_s.arg(kRows - 1));
    open();
    const Planilha planilha = montaPlanilha(kTodas).value();
    QCOMPARE(planilha.linhas.size(), std::size_t(kRows + 5));
    QCOMPARE(planilha.resumo[2], (Marcas{kRows, 0}));
}

QTEST_MAIN(TstPlanilha)
#include "tst_planilha.moc"
