#include "cenario.h"

#include "catalogue/estado.h"
#include "lessons/andamento.h"
#include "lessons/gancho.h"
#include "platform/costuras.h"
#include "platform/endereco.h"
#include "platform/erro.h"
#include "platform/fim.h"
#include "platform/protocolo.h"
#include "shell/estado.h"
#include "startup/sistema_util.h"

#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTimer>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The first window, from pointing at a block to the roteiro window and back, and the end that closing it brings.
class TstFPrincip : public QObject
{
    Q_OBJECT
private slots:
    void showsTheBlocksOfTheMonth();
    void pointingShowsTheTip();
    void tips_data();
    void tips();
    void textOfTheTipIsSeenWhole();
    void theMouseHidesTheTip();
    void opensTheDiscipline_data();
    void opensTheDiscipline();
    void drawingToolIsLookedForAtLoad();
    void comingBackFromABoxIsNoActivation();
    void orderOfTheEnd();
    void unloadsDuringTheEndReturnAtOnce();
};

static QWidget &tip(Cenario &c)
{
    return child<QWidget>(c.principal(), u"FrmTip"_s);
}

static const QPlainTextEdit *tipText(Cenario &c)
{
    return c.principal().findChild<QPlainTextEdit *>(u"TxtInf"_s); // made with the first text
}

void TstFPrincip::showsTheBlocksOfTheMonth()
{
    Cenario c;
    QString visiveis;
    for (int i = 1; i <= 12; ++i) {
        if (c.principal().bloco(i).isVisible())
            visiveis += u"%1:%2 "_s.arg(i).arg(c.principal().bloco(i).tag());
    }
    QCOMPARE(visiveis, u"9:0 10:1 "_s);
    QCOMPARE(c.principal().windowTitle(), u"Série: Fundamental I"_s);
    QVERIFY(c.principal().isVisible() && c.painel().isVisible() && !c.blocos().isVisible());
    QCOMPARE(c.principal().pos(), QPoint(0, 0));
    const int frame = c.principal().frameGeometry().width() - c.principal().width();
    QCOMPARE(c.painel().pos(), QPoint(527 + frame, 0)); // (7920 - 10) / 15
    QCOMPARE(c.painel().height(), c.principal().height());
    for (const int indice : {0, 13})
        QCOMPARE(failureOf([&] { c.principal().bloco(indice); }), int(kFalhaControle));
}

void TstFPrincip::pointingShowsTheTip()
{
    Cenario c;
    QTest::mouseMove(&c.principal().bloco(9), QPoint(20, 20));
    QTRY_COMPARE(gImgApontada, qint16(9));
    QTRY_VERIFY(tip(c).isVisible());
    const QRect texto = tipText(c)->geometry();
    QCOMPARE(QRect(texto.topLeft(), QSize(texto.width(), 1)), QRect(4, 8, 221, 1)); // its height is the text's
    const QPoint fora(1645 / 15 + 1, (945 + 1275 - 105) / 15); // right of the block, 105 over its lower edge
    QCOMPARE(tip(c).pos(), fora);
    QCOMPARE(gImgDica, qint16(9));
}

void TstFPrincip::tips_data()
{
    const QString nenhum = u"ROTEIROS NÃO DISPONÍVEIS. ESCOLHA OUTRO MÊS."_s;
    const QColor azul(0, 0, 255);
    const QColor vermelho(255, 0, 0);
    QTest::addColumn<qint16>("apontada");
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QColor>("cor");
    QTest::newRow("discipline and objective") << qint16(9) << u"Matemática - Contar até 10"_s << azul;
    QTest::newRow("without an objective") << qint16(10) << u"Português - "_s << azul;
    QTest::newRow("not in this month") << qint16(2) << nenhum << vermelho;
    QTest::newRow("a number without a block fails the tick, and stands nowhere") << qint16(14) << nenhum << vermelho;
}

void TstFPrincip::tips()
{
    QFETCH(qint16, apontada);
    QFETCH(QString, texto);
    QFETCH(QColor, cor);
    Cenario c;
    const bool bloco = apontada <= 12;
    const QPoint antes = tip(c).pos();
    gImgApontada = apontada;
    QTRY_VERIFY(tipText(c) && tip(c).isVisible());
    QCOMPARE(tipText(c)->toPlainText(), texto);
    QCOMPARE(tipText(c)->palette().color(QPalette::Text), cor);
    QTRY_COMPARE(gImgApontada, bloco ? apontada : qint16(-1));
    QCOMPARE(tip(c).pos() != antes, bloco);
}

// The frame of a block in the middle ends beyond the window.
void TstFPrincip::textOfTheTipIsSeenWhole()
{
    Cenario c;
    gImgApontada = 7;
    QTRY_VERIFY(tip(c).isVisible());
    QVERIFY(tip(c).geometry().right() > c.principal().width());
    QTextCursor cursor(tipText(c)->document());
    for (; !cursor.atEnd(); cursor.movePosition(QTextCursor::NextCharacter)) {
        if (tipText(c)->document()->characterAt(cursor.position()).isSpace())
            continue; // one at a line's end may hang beyond it
        const int x = tipText(c)->viewport()->mapTo(&c.principal(), tipText(c)->cursorRect(cursor).topLeft()).x();
        QVERIFY(x > tip(c).x() + 4 && x + 8 < c.principal().width()); // border; a letter's width
    }
    const int letters = 25 * tipText(c)->fontMetrics().horizontalAdvance(u'M'); // for which the height is made
    QVERIFY(tipText(c)->viewport()->width() >= letters);
}

void TstFPrincip::theMouseHidesTheTip()
{
    Cenario c;
    gImgApontada = 9;
    QTRY_VERIFY(tip(c).isVisible());
    QTest::mouseMove(&tip(c), QPoint(100, 2));
    QTRY_VERIFY(!tip(c).isVisible());
    QCOMPARE(gImgApontada, qint16(9));
    QTRY_VERIFY(tip(c).isVisible()); // the next tick brings it back
    QTest::mouseMove(&c.principal(), QPoint(400, 470));
    QTRY_COMPARE(gImgApontada, qint16(-1)); // over the bare window
    QVERIFY(!tip(c).isVisible());
}

void TstFPrincip::opensTheDiscipline_data()
{
    QTest::addColumn<int>("tecla");
    QTest::newRow("mouse") << 0;
    QTest::newRow("Enter") << int(Qt::Key_Return);
    QTest::newRow("Space") << int(Qt::Key_Space);
}

void TstFPrincip::opensTheDiscipline()
{
    QFETCH(int, tecla);
    Cenario c;
    if (tecla)
        QTest::keyClick(&c.principal().bloco(10), Qt::Key(tecla));
    else
        c.clica(u"ImgBloco(10)"_s);
    QVERIFY(!c.principal().isVisible() && c.blocos().isVisible());
    QCOMPARE(gDisciplina, qint16(10));
    QCOMPARE(gNomeDisciplina, u"Português"_s);
    QCOMPARE(c.tituloBlocos(), u"Roteiros de Português"_s);
    c.clica(u"cmdVoltar"_s);
    QVERIFY(c.principal().isVisible() && !c.blocos().isVisible());
}

void TstFPrincip::drawingToolIsLookedForAtLoad()
{
    for (const QStringList &arquivos : {QStringList{}, QStringList{u"exe/desenhos.exe"_s}}) {
        Cenario c(2, arquivos);
        QCOMPARE(c.controle(u"CmdDesenho"_s).isVisible(), !arquivos.isEmpty());
    }
}

void TstFPrincip::comingBackFromABoxIsNoActivation()
{
    Cenario c;
    QVERIFY(QTest::qWaitForWindowActive(&c.principal()));
    gImgApontada = 9;
    QTRY_VERIFY(tip(c).isVisible());
    const NextWindow<QWidget> next([](QWidget &box) { QTest::keyClick(&box, Qt::Key_Escape); });
    mostraCaixa({u"Texto"_s});
    c.principal().activateWindow(); // as a desktop does when a box goes
    QVERIFY(QTest::qWaitForWindowActive(&c.principal()));
    QVERIFY(tip(c).isVisible()); // the Activate handler would hide it
}

static void endsTheProcess(QStringList &ordem)
{
    costuras().endProcess = [&ordem](int) {
        ordem << u"fim"_s;
        throw FimDoPrograma{};
    };
}

void TstFPrincip::orderOfTheEnd()
{
    Cenario c;
    QStringList ordem;
    endsTheProcess(ordem);
    const auto &timer = *c.blocos().findChild<QTimer *>(u"TmrRot"_s);
    std::vector<std::unique_ptr<Endereco>> filhos;
    const auto filho = [&](const QString &nome) {
        filhos.push_back(std::make_unique<Endereco>());
        filhos.back()->publish(nome);
        filhos.back()->replaceProc([&, nome](Janela, quint32, quintptr remetente, qintptr dados) -> qintptr {
            const auto *mensagem = reinterpret_cast<const CopyData *>(dados);
            const bool doGerenciador = remetente == janelaBlocos() && gJanelaGancho != 0;
            ordem << u"%1 %2%3"_s.arg(nome).arg(mensagem->code).arg(doGerenciador ? u""_s : u" sem gancho"_s);
            if (nome == u"Desenho"_s) {
                c.blocos().setTmrRot(true);
                QTimer::singleShot(0, &c.blocos(),
                    [&] { ordem << (gJanelaGancho == 0 && !timer.isActive() ? u"eventos"_s : u"eventos cedo"_s); });
            }
            return 1;
        });
        return filhos.back()->handle();
    };
    gJanelaDesenho = filho(u"Desenho"_s);
    gJanelaVrel = filho(u"Vrel"_s);
    gJanelaCalc = filho(u"Calc"_s);
    gJanelaLivros = filho(u"Livros"_s);
    gJanelaZeto = filho(u"Zeto"_s);
    c.clica(u"chkSelec"_s);
    c.abreMatematica();
    costuras().box = [&](const Caixa &caixa) {
        ordem << caixa.titulo + (c.blocos().isVisible() ? u", fBlocos à vista"_s : u""_s);
        return Resposta::Nao;
    };
    QVERIFY_EXCEPTION_THROWN(c.painel().close(), FimDoPrograma); // the panel takes the main window along
    const QStringList esperada{u"Exclusão da Lista"_s, u"Zeto 2071"_s, u"Livros 2071"_s, u"Calc 2071"_s, u"Vrel 2071"_s,
        u"Desenho 2071"_s, u"eventos"_s, u"fim"_s};
    QCOMPARE(ordem, esperada);
    QCOMPARE(gJanelaGancho, Janela(0));
    QCOMPARE(gSistema.ProcuraJanela(QString::fromUtf16(kTituloGerenciador), 2, true), Janela(0));
    QVERIFY(!c.principal().isVisible() && !c.blocos().isVisible() && !c.painel().isVisible());
}

void TstFPrincip::unloadsDuringTheEndReturnAtOnce()
{
    Cenario c;
    QStringList ordem;
    endsTheProcess(ordem);
    c.clica(u"chkSelec"_s);
    costuras().box = [&](const Caixa &) { // the user closes both windows while the question stands
        c.principal().close();
        c.painel().close();
        ordem << u"pergunta"_s;
        return Resposta::Sim;
    };
    QVERIFY_EXCEPTION_THROWN(c.principal().descarrega(), FimDoPrograma);
    QCOMPARE(ordem, (QStringList{u"pergunta"_s, u"fim"_s}));
}

QTEST_MAIN(TstFPrincip)
#include "tst_fprincip.moc"
