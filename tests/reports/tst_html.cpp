#include "reports/html.h"

#include "platform/erro.h"
#include "support/suporte.h"

#include <functional>
#include <limits>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

using Operacao = std::function<void(Html &)>;

class TstHtml : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void appends_data();
    void appends();
    void aCellOutsideTheWordsIsAFailure_data();
    void aCellOutsideTheWordsIsAFailure();
    void theTextCanBeReplaced();
    void aSecondDocumentThrowsTheFirstAway();
};

static void row(const char *name, const Operacao &operacao, const QString &expected)
{
    QTest::newRow(name) << operacao << expected;
}

static void addSimpleRows()
{
    row(
        "FinalizaHtml ends no line", [](Html &h) { h.FinalizaHtml(); }, u"</BODY></HTML>"_s);
    row(
        "Negrito", [](Html &h) { h.Negrito(); }, u"<B>\r\n"_s);
    row(
        "xNegrito", [](Html &h) { h.xNegrito(); }, u"</B>\r\n"_s);
    row(
        "Desenha_Linha", [](Html &h) { h.Desenha_Linha(); }, u"<HR>\r\n"_s);
    row(
        "BordaLinha", [](Html &h) { h.BordaLinha(); }, u"<TR>\r\n"_s);
    row(
        "xBorda", [](Html &h) { h.xBorda(); }, u"</TABLE>\r\n"_s);
    row(
        "xBordaLinha", [](Html &h) { h.xBordaLinha(); }, u"</TR>\r\n"_s);
    row(
        "xBordaColuna", [](Html &h) { h.xBordaColuna(); }, u"</TD>\r\n"_s);
    row(
        "xAlinhamento ends no line and looks at no number", [](Html &h) { h.xAlinhamento(7); }, u"</DIV>"_s);
    row(
        "Font", [](Html &h) { h.Font(u"+2"_s); }, u"<FONT SIZE=+2>\r\n"_s);
    row(
        "xFont", [](Html &h) { h.xFont(); }, u"</FONT>\r\n"_s);
    row(
        "Traça_Linha ends no line", [](Html &h) { h.Traça_Linha(-3); }, u"<HR SIZE=-3>"_s);
    row(
        "Italico", [](Html &h) { h.Italico(); }, u"<I>\r\n"_s);
    row(
        "xItalico", [](Html &h) { h.xItalico(); }, u"</I>\r\n"_s);
    row(
        "listaDefinicao", [](Html &h) { h.listaDefinicao(); }, u"<DL>\r\n"_s);
    row(
        "xlistaDefinicao", [](Html &h) { h.xlistaDefinicao(); }, u"</DL>\r\n"_s);
    row(
        "termoDL", [](Html &h) { h.termoDL(); }, u"<DT>\r\n"_s);
    row(
        "defineDL", [](Html &h) { h.defineDL(); }, u"<DD>\r\n"_s);
}

static void addRowsWithArguments()
{
    row(
        "three breaks", [](Html &h) { h.Pula_Linha(3); }, u"<BR>\r\n<BR>\r\n<BR>\r\n"_s);
    row(
        "no break for 0", [](Html &h) { h.Pula_Linha(0); }, QString());
    row(
        "no break below 0", [](Html &h) { h.Pula_Linha(std::numeric_limits<qint16>::min()); }, QString());
    row(
        "head of a document", [](Html &h) { h.InicializaHtml(u"Título"_s, u"#FFFFFF"_s); },
        u"<HTML> \r\n<TITLE>Título</TITLE>\r\n<BODY bgcolor=#FFFFFF>\r\n"_s);
    row(
        "a number as colour", [](Html &h) { h.InicializaHtml(u"T"_s, 255); },
        u"<HTML> \r\n<TITLE>T</TITLE>\r\n<BODY bgcolor=255>\r\n"_s);
    row(
        "table with all", [](Html &h) { h.Borda(true, 1, u"50%"_s); },
        u"<TABLE BORDER=1 ALIGN=CENTER WIDTH=50%>\r\n"_s);
    row(
        "table with nothing", [](Html &h) { h.Borda(false, 0, QString()); }, u"<TABLE BORDER=0>\r\n"_s);
    row(
        "cell in the centre", [](Html &h) { h.BordaColuna(0, QString(), QString()); }, u"<TD ALIGN=CENTER>\r\n"_s);
    row(
        "cell: 1 is right", [](Html &h) { h.BordaColuna(1, u"18"_s, u"3"_s); },
        u"<TD ALIGN=RIGHT WIDTH=18 COLSPAN=3>\r\n"_s);
    row(
        "cell: 2 is left", [](Html &h) { h.BordaColuna(2, QString(), u"2"_s); }, u"<TD ALIGN=LEFT COLSPAN=2>\r\n"_s);
}

static void addRowsOfTextsAndPictures()
{
    row(
        "block in the centre", [](Html &h) { h.Alinhamento(0); }, u"<DIV ALIGN=CENTER>\r\n"_s);
    row(
        "block: 1 is left", [](Html &h) { h.Alinhamento(1); }, u"<DIV ALIGN=LEFT>\r\n"_s);
    row(
        "block: 2 is right", [](Html &h) { h.Alinhamento(2); }, u"<DIV ALIGN=RIGHT>\r\n"_s);
    row(
        "block of another number: a line end", [](Html &h) { h.Alinhamento(5); }, u"\r\n"_s);
    row(
        "block below 0: a line end", [](Html &h) { h.Alinhamento(-1); }, u"\r\n"_s);
    row(
        "text of two lines", [](Html &h) { h.Txt(u"a\r\nb\r\n\r\n"_s, false); }, u"a<BR>b<BR><BR>\r\n"_s);
    row(
        "a lone LF, a lone CR, a tag", [](Html &h) { h.Txt(u"a\nb\rc<b>&\r\r\n"_s, false); },
        u"a\nb\rc<b>&\r<BR>\r\n"_s);
    row(
        "text with a break behind it", [](Html &h) { h.Txt(u"a"_s, true); }, u"a\r\n<BR>\r\n"_s);
    row(
        "picture without sizes", [](Html &h) { h.Img(u"c:\\f.gif"_s, 0, 0); }, u"<img SRC=\"c:\\f.gif\"> \r\n"_s);
    row(
        "picture: sizes below 0 are none", [](Html &h) { h.Img(u"f"_s, -1, -80); }, u"<img SRC=\"f\"> \r\n"_s);
    row(
        "picture: the width stands first", [](Html &h) { h.Img(u"f"_s, 80, 120); },
        u"<img SRC=\"f\" Width=\"120\"  Height=\"80\" > \r\n"_s);
    row(
        "picture: a height alone, in decimals", [](Html &h) { h.Img(u"f"_s, 0.1F, 0); },
        u"<img SRC=\"f\" Height=\"0.1\" > \r\n"_s);
    row(
        "picture: the largest and the smallest size",
        [](Html &h) { h.Img(u"f"_s, std::numeric_limits<float>::denorm_min(), std::numeric_limits<float>::max()); },
        u"<img SRC=\"f\" Width=\"340282346638528859811704183484516925440\"  Height=\"0."_s + QString(44, u'0')
            + u"1\" > \r\n"_s);
    row(
        "logo", [](Html &h) { h.LogoTipo(u"l.gif"_s, u"Um\r\nDois"_s, u"Três"_s); },
        u"<TABLE BORDER=0 ALIGN=CENTER>\r\n<TR>\r\n<TD ALIGN=CENTER>\r\n<img SRC=\"l.gif\"> \r\n<TD ALIGN=CENTER>\r\n"
        "<B>\r\n<I>\r\n<DIV ALIGN=CENTER>\r\n<FONT SIZE=4>\r\nUm<BR>Dois\r\n</FONT>\r\n</I>\r\n</B>\r\n<FONT "
        "SIZE=1>\r\n"
        "<BR>\r\n</FONT>\r\n<FONT SIZE=3>\r\nTrês\r\n</FONT>\r\n</DIV></TD>\r\n</TD>\r\n</TR>\r\n</TABLE>\r\n"
        "<HR SIZE=1>"_s);
}

void TstHtml::appends_data()
{
    QTest::addColumn<Operacao>("operacao");
    QTest::addColumn<QString>("expected");
    addSimpleRows();
    addRowsWithArguments();
    addRowsOfTextsAndPictures();
}

void TstHtml::appends()
{
    QFETCH(Operacao, operacao);
    QFETCH(QString, expected);
    Html html;
    QCOMPARE(html.html(), QString());
    operacao(html);
    QCOMPARE(html.html(), expected);
}

void TstHtml::aCellOutsideTheWordsIsAFailure_data()
{
    QTest::addColumn<qint32>("alinhamento");
    QTest::newRow("3") << 3;
    QTest::newRow("5") << 5;
    QTest::newRow("-1") << -1;
}

void TstHtml::aCellOutsideTheWordsIsAFailure()
{
    QFETCH(qint32, alinhamento);
    Html html;
    html.BordaLinha();
    try {
        html.BordaColuna(alinhamento, u"18"_s, QString());
        QFAIL("no failure");
    } catch (const ErroExecucao &erro) {
        QCOMPARE(erro.numero(), int(kFalhaIndice));
    }
    QCOMPARE(html.html(), u"<TR>\r\n"_s);
}

void TstHtml::theTextCanBeReplaced()
{
    Html html;
    html.Negrito();
    html.html(u"Olá"_s);
    html.xNegrito();
    QCOMPARE(html.html(), u"Olá</B>\r\n"_s);
    html.html(12);
    QCOMPARE(html.html(), u"12"_s);
}

void TstHtml::aSecondDocumentThrowsTheFirstAway()
{
    Html html;
    html.InicializaHtml(u"A"_s, u"red"_s);
    html.FinalizaHtml();
    html.Italico(); // nothing stops a caller from going on
    html.InicializaHtml(u"B"_s, u"blue"_s);
    QCOMPARE(html.html(), u"<HTML> \r\n<TITLE>B</TITLE>\r\n<BODY bgcolor=blue>\r\n"_s);
}

QTEST_GUILESS_MAIN(TstHtml)
#include "tst_html.moc"
