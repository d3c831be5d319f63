#include "licao/conta.h"
#include "licao/correcao.h"
#include "licao/programa.h"
#include "linha/textolicao.h"
#include "support/suporte.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;
using namespace quorel;

class TstTextoLicao : public QObject
{
    Q_OBJECT
private slots:
    void init() { teste::failOnWarnings(); }
    void reads_data();
    void reads();
    void readsPiecesAndOptions();
    void survivesDamagedTexts();
    void checks_data();
    void checks();
    void calculates_data();
    void calculates();
    void knowsItsNameAndSwitches();
};

static const QString kPadrao = u"(1,1)2610<SPÇ>1<SPÇ>1<SPÇ>0<SPÇ>0<SPÇ>0<SPÇ>0<SPÇ><SPÇ><SPÇ><SPÇ><SPÇ><SPÇ><PÇ><VAA>"
                               "(1)2610\t1\t1\t1\t0\t0\t0 <MD><VOA>(1)<VCM>22 CHAMA AULA  20<CM>"_s;

static QString lesson(int tipo, const QString &opcoes, const QString &esperada = {})
{
    return u"(1,1)7<SPÇ>%1<SPÇ>1<SPÇ>0<SPÇ>0<SPÇ>0<SPÇ>0<SPÇ>Título<SPÇ>Texto\r\nlongo<SPÇ><SPÇ>GATO<SPÇ>SINO<SPÇ>"
           "<PÇ><VAA>(1)7\t1\t1\t1\t0\t0\t%2\tMuito bem\tPense<VOA>(2)%3<VCM><CM>"_s.arg(tipo)
               .arg(esperada, opcoes);
}

static const QString kDuas = u"1\tum\t0\t\t\t\t\t\tUM<OP>2\tdois\t1"_s;

void TstTextoLicao::reads_data()
{
    QTest::addColumn<QString>("linha");
    QTest::addColumn<TipoExercicio>("tipo");
    QTest::addColumn<int>("opcoes");
    QTest::addColumn<QString>("texto");
    using enum TipoExercicio;
    QTest::newRow("choice") << lesson(2, kDuas) << Uma << 2 << u"Texto\nlongo"_s;
    QTest::newRow("the default calculator lesson is a page") << kPadrao << Pagina << 0 << QString();
    QTest::newRow("no right option: a page") << lesson(2, u"1\tum\t0"_s) << Pagina << 0 << u"Texto\nlongo"_s;
    QTest::newRow("nothing to type: a page") << lesson(4, {}, u" | "_s) << Pagina << 0 << u"Texto\nlongo"_s;
    QTest::newRow("an order with gaps: a page") << lesson(5, kDuas) << Pagina << 0 << u"Texto\nlongo"_s;
    QTest::newRow("an unknown kind follows its options") << lesson(99, kDuas) << Uma << 2 << u"Texto\nlongo"_s;
    QTest::newRow("a story without question") << lesson(7, {}) << Historia << 0 << u"Texto\nlongo"_s;
    QTest::newRow("empty") << QString() << Pagina << 0 << QString();
    QTest::newRow("plain text shows as it stands") << u"Olá <b>mundo</b>"_s << Pagina << 0 << u"Olá <b>mundo</b>"_s;
    QTest::newRow("cut inside a piece") << lesson(2, kDuas).section(u"xto"_s, 0, 0) << Pagina << 0 << u"Te"_s;
    QTest::newRow("what is not to be shown shows when there is nothing else")
        << u"(1,1)7<SPÇ>1<SPÇ>0<SPÇ><SPÇ><SPÇ><SPÇ><SPÇ><SPÇ>oculto<PÇ><VAA>"_s << Pagina << 0 << u"oculto"_s;
    QTest::newRow("options beyond the limit are left out")
        << lesson(3, u"1\tum\t1<OP>"_s.repeated(500)) << Todas << kMaxOpcoes << u"Texto\nlongo"_s;
}

void TstTextoLicao::reads()
{
    QFETCH(QString, linha);
    const LicaoRec licao = leLicao(linha);
    QTEST(licao.Tipo, "tipo");
    QTEST(int(licao.Opcoes.size()), "opcoes");
    QVERIFY(!licao.Pecas.empty());
    QTEST(licao.Pecas.front().Texto, "texto");
}

void TstTextoLicao::readsPiecesAndOptions()
{
    const LicaoRec licao = leLicao(lesson(2, kDuas, u"a| B "_s) + u"CMDEXEC"_s);
    QVERIFY(licao.Avulsa);
    QCOMPARE(licao.Codigo, u"7"_s);
    QVERIFY((licao.Pecas == std::vector{PecaRec{u"Título"_s, u"Texto\nlongo"_s, u"GATO"_s, u"SINO"_s}}));
    QVERIFY((licao.Opcoes == std::vector{OpcaoRec{u"um"_s, u"UM"_s, false, 0}, OpcaoRec{u"dois"_s, {}, true, 1}}));
    QCOMPARE(licao.Esperadas, (QStringList{u"a"_s, u"B"_s}));
    QCOMPARE(licao.Elogio, u"Muito bem"_s);
    QCOMPARE(licao.Dica, u"Pense"_s);
    QVERIFY(!leLicao(lesson(2, kDuas)).Avulsa);
}

void TstTextoLicao::survivesDamagedTexts()
{
    const quint32 seed = QRandomGenerator::global()->generate();
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    const QStringList parts{u"("_s, u")"_s, u","_s, u"<SPÇ>"_s, u"<PÇ>"_s, u"<VAA>"_s, u"<VOA>"_s, u"<OP>"_s,
        u"<VCM>"_s, u"<VETPECA>"_s, u"\t"_s, u"1"_s, u"5"_s, u"-7"_s, u"texto"_s, u"\r\n"_s, u"CMDEXEC"_s,
        QString(QChar(0))};
    for (int n = 0; n < 3000; ++n) {
        QString linha;
        for (int k = random.bounded(60); k > 0; --k)
            linha += parts[random.bounded(parts.size())];
        const LicaoRec licao = leLicao(linha);
        QVERIFY(!licao.Pecas.empty());
        QVERIFY(!temResposta(licao) || !licao.Opcoes.empty() || !licao.Esperadas.isEmpty());
    }
    QCOMPARE(
        int(leLicao(lesson(1, {}).replace(u"<PÇ>"_s, u"<PÇ>x<SPÇ>1<SPÇ>1"_s.repeated(9000))).Pecas.size()), kMaxPecas);
}

void TstTextoLicao::checks_data()
{
    QTest::addColumn<TipoExercicio>("tipo");
    QTest::addColumn<std::vector<int>>("escolhidas");
    QTest::addColumn<bool>("certa");
    using enum TipoExercicio;
    using Escolhidas = std::vector<int>;
    QTest::newRow("one right") << Uma << Escolhidas{1} << true;
    QTest::newRow("one wrong") << Uma << Escolhidas{2} << false;
    QTest::newRow("nothing") << Uma << Escolhidas{} << false;
    QTest::newRow("all the right ones, any order") << Todas << Escolhidas{1, 0} << true;
    QTest::newRow("one of them missing") << Todas << Escolhidas{0} << false;
    QTest::newRow("one too many") << Todas << Escolhidas{0, 1, 2} << false;
    QTest::newRow("in order, equal places either way") << Ordem << Escolhidas{1, 0, 2} << true;
    QTest::newRow("out of order") << Ordem << Escolhidas{0, 2, 1} << false;
    QTest::newRow("an order not finished") << Ordem << Escolhidas{0, 1} << false;
}

void TstTextoLicao::checks()
{
    QFETCH(TipoExercicio, tipo);
    QFETCH(std::vector<int>, escolhidas);
    LicaoRec licao;
    licao.Tipo = tipo;
    licao.Opcoes = {{{}, {}, true, 1}, {{}, {}, true, 1}, {{}, {}, false, 2}};
    QTEST(escolhaCerta(licao, escolhidas), "certa");
    licao.Esperadas = {u"maçã"_s, u"12"_s};
    QVERIFY(digitadaCerta(licao, u"  MAÇÃ "));
    QVERIFY(!digitadaCerta(licao, u"1 2"));
}

void TstTextoLicao::calculates_data()
{
    QTest::addColumn<QString>("teclas");
    QTest::addColumn<QString>("visor");
    QTest::newRow("in the order typed") << u"2+3*4="_s << u"20"_s;
    QTest::newRow("decimal comma") << u"0,1+0,2="_s << u"0,3"_s;
    QTest::newRow("the last operator counts") << u"9+-4="_s << u"5"_s;
    QTest::newRow("division by 0, then a new number") << u"5/0=7"_s << u"7"_s;
    QTest::newRow("division by 0 stays") << u"5/0=="_s << u"Erro"_s;
    QTest::newRow("too long") << u"999999999999*999999999999="_s << u"Erro"_s;
    QTest::newRow("the 13th digit is passed over") << u"1234567890123"_s << u"123456789012"_s;
    QTest::newRow("take back, to 0") << u"12<<<"_s << u"0"_s;
    QTest::newRow("begin again") << u"12+C5="_s << u"5"_s;
    QTest::newRow("negative") << u"3-5="_s << u"-2"_s;
    QTest::newRow("periodic") << u"10/3="_s << u"3,33333333333"_s;
}

void TstTextoLicao::calculates()
{
    QFETCH(QString, teclas);
    Conta conta;
    for (const QChar tecla : teclas)
        conta.tecla(tecla.unicode());
    QTEST(conta.visor(), "visor");
}

void TstTextoLicao::knowsItsNameAndSwitches()
{
    QCOMPARE(programaDe(u"/opt/x/Vrel.exe"), Programa::Vrel);
    QCOMPARE(programaDe(u"C:\\QUOREL\\exe\\CALC.EXE"), Programa::Calc);
    QCOMPARE(programaDe(u"desenhos.exe"), Programa::Desenho);
    QCOMPARE(programaDe(u"licao"), Programa::Zeto);
    QCOMPARE(
        leParametros(u"/cnf:\\srv\\a b\\zeto_cnf.txt /Hook:"_s), (ParametrosRec{u"\\srv\\a b\\zeto_cnf.txt"_s, true}));
    QCOMPARE(leParametros(u"/cfg:C:\\q\\zeto_cnf.txt/user:"_s), (ParametrosRec{u"C:\\q\\zeto_cnf.txt"_s, false}));
    QCOMPARE(leParametros({}), ParametrosRec{});
}

QTEST_MAIN(TstTextoLicao)
#include "tst_textolicao.moc"
