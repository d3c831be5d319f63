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
    void aCellOutsideTheWordsIsAFailure();
    void theTextCanBeReplaced();
};

static void add(const char *name, const QString &expected, const Operacao &operacao)
{
    QTest::newRow(name) << operacao << expected;
}

static void addBlocksAndTables()
{
    add("head of a document", "<HTML> \r\n<TITLE>Título</TITLE>\r\n<BODY bgcolor=#FFFFFF>\r\n",
        [](Html &h) { h.InicializaHtml(u"Título"_s, u"#FFFFFF"_s); });
    add("a number as colour", "<HTML> \r\n<TITLE>T</TITLE>\r\n<BODY bgcolor=255>\r\n",
        [](Html &h) { h.InicializaHtml(u"T"_s, 255); });
    add("three breaks", "<BR>\r\n<BR>\r\n<BR>\r\n", [](Html &h) { h.Pula_Linha(3); });
    add("no break for 0", "", [](Html &h) { h.Pula_Linha(0); });
    add("no break below 0", "", [](Html &h) { h.Pula_Linha(std::numeric_limits<qint16>::min()); });
    add("Traça_Linha ends no line", "<HR SIZE=-3>", [](Html &h) { h.Traça_Linha(-3); });
    add("table with all", "<TABLE BORDER=1 ALIGN=CENTER WIDTH=50%>\r\n", [](Html &h) { h.Borda(true, 1, u"50%"_s); });
    add("table with nothing", "<TABLE BORDER=0>\r\n", [](Html &h) { h.Borda(false, 0, {}); });
    add("cell in the centre", "<TD ALIGN=CENTER>\r\n", [](Html &h) { h.BordaColuna(0, {}, {}); });
    add("cell: 1 is right", "<TD ALIGN=RIGHT WIDTH=18 COLSPAN=3>\r\n",
        [](Html &h) { h.BordaColuna(1, u"18"_s, u"3"_s); });
    add("cell: 2 is left", "<TD ALIGN=LEFT COLSPAN=2>\r\n", [](Html &h) { h.BordaColuna(2, {}, u"2"_s); });
    add("block in the centre", "<DIV ALIGN=CENTER>\r\n", [](Html &h) { h.Alinhamento(0); });
    add("block: 1 is left", "<DIV ALIGN=LEFT>\r\n", [](Html &h) { h.Alinhamento(1); });
    add("block: 2 is right", "<DIV ALIGN=RIGHT>\r\n", [](Html &h) { h.Alinhamento(2); });
    add("block of another number: a line end", "\r\n", [](Html &h) { h.Alinhamento(5); });
    add("block below 0: a line end", "\r\n", [](Html &h) { h.Alinhamento(-1); });
    add("xAlinhamento ends no line and looks at no number", "</DIV>", [](Html &h) { h.xAlinhamento(7); });
    add("FinalizaHtml ends no line", "</BODY></HTML>", &Html::FinalizaHtml);
    const auto list = [](Html &h) {
        for (void (Html::*tag)() :
            {&Html::Desenha_Linha, &Html::listaDefinicao, &Html::termoDL, &Html::defineDL, &Html::xlistaDefinicao})
            (h.*tag)();
    };
    add("a line and a list, in no page of ours", "<HR>\r\n<DL>\r\n<DT>\r\n<DD>\r\n</DL>\r\n", list);
}

static void addTextsAndPictures()
{
    add("font", "<FONT SIZE=+2>\r\n", [](Html &h) { h.Font(u"+2"_s); });
    add("text of two lines", "a<BR>b<BR><BR>\r\n", [](Html &h) { h.Txt(u"a\r\nb\r\n\r\n"_s, false); });
    add("a lone LF, a lone CR, a tag", "a\nb\rc<b>&\r<BR>\r\n", [](Html &h) { h.Txt(u"a\nb\rc<b>&\r\r\n"_s, false); });
    add("text with a break behind it", "a\r\n<BR>\r\n", [](Html &h) { h.Txt(u"a"_s, true); });
    add("picture without sizes", "<img SRC=\"c:\\f.gif\"> \r\n", [](Html &h) { h.Img(u"c:\\f.gif"_s, 0, 0); });
    add("picture: sizes below 0 are none", "<img SRC=\"f\"> \r\n", [](Html &h) { h.Img(u"f"_s, -1, -80); });
    add("picture: the width stands first", "<img SRC=\"f\" Width=\"120\"  Height=\"80\" > \r\n",
        [](Html &h) { h.Img(u"f"_s, 80, 120); });
    add("picture: a height alone, in decimals", "<img SRC=\"f\" Height=\"0.1\" > \r\n",
        [](Html &h) { h.Img(u"f"_s, 0.1F, 0); });
    add("picture: the largest and the smallest size",
        "<img SRC=\"f\" Width=\"340282346638528859811704183484516925440\"  Height=\"0." + QString(44, u'0')
            + "1\" > \r\n",
        [](Html &h) { h.Img(u"f"_s, std::numeric_limits<float>::denorm_min(), std::numeric_limits<float>::max()); });
}

void TstHtml::appends_data()
{
    QTest::addColumn<Operacao>("operacao");
    QTest::addColumn<QString>("expected");
    addBlocksAndTables();
    addTextsAndPictures();
}

void TstHtml::appends()
{
    QFETCH(Operacao, operacao);
    QFETCH(QString, expected);
    Html html;
    operacao(html);
    QCOMPARE(html.html(), expected);
}

void TstHtml::aCellOutsideTheWordsIsAFailure()
{
    Html html;
    html.BordaLinha();
    for (const qint32 alinhamento : {-1, 3, 5})
        QCOMPARE(failureOf([&] { html.BordaColuna(alinhamento, u"18"_s, {}); }), int(kFalhaIndice));
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
    html.FinalizaHtml();
    html.Italico(); // nothing stops a caller from going on
    html.InicializaHtml(u"B"_s, u"blue"_s); // a second document throws the first away
    QCOMPARE(html.html(), u"<HTML> \r\n<TITLE>B</TITLE>\r\n<BODY bgcolor=blue>\r\n"_s);
}

QTEST_GUILESS_MAIN(TstHtml)
#include "tst_html.moc"
