#include "licao/aparencia.h"
#include "licao/calculadora.h"
#include "licao/cartao.h"
#include "licao/editor.h"
#include "licao/sessao.h"
#include "platform/codec.h"
#include "platform/costuras.h"
#include "platform/protocolo.h"
#include "support/suporte.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace quorel;
using teste::child;

namespace {

const Midia kSemMidia{[](const QString &) { return QString(); }, [](const QString &) { return QString(); }};

QString lesson(int tipo, const QString &opcoes, const QString &esperada = {})
{
    return u"(1,1)7<SPÇ>%1<SPÇ>1<SPÇ>0<SPÇ>0<SPÇ>0<SPÇ>0<SPÇ>Título<SPÇ>Texto<SPÇ><SPÇ><SPÇ><SPÇ><PÇ><VAA>"
           "(1)7\t1\t1\t1\t0\t0\t%2\tBoa!\tOlhe bem.<VOA>(2)%3<VCM><CM>"_s.arg(tipo)
               .arg(esperada, opcoes);
}

const QString kEscolha = lesson(2, u"1\tum\t0<OP>2\tdois\t1"_s);

/// A shell in this process: its address, what it was told, and what it answers "next" with.
struct Gerenciador
{
    Gerenciador()
    {
        endereco.publish(QString::fromUtf16(kTituloGerenciador));
        endereco.replaceProc([this](Janela, quint32 message, quintptr, qintptr lParam) -> qintptr {
            const auto *dados = reinterpret_cast<const CopyData *>(lParam);
            if (message != kCopyData)
                return 0;
            recebidas << u"%1 %2"_s.arg(dados->code).arg(QLatin1String(static_cast<const char *>(dados->bytes)));
            if (!seguinte.isEmpty())
                envia(MSG_AULA, std::exchange(seguinte, {}));
            return 1;
        });
    }
    bool envia(CodigoMensagem code, const QString &texto)
    {
        const QByteArray bytes = encode1252(texto) + '\0';
        return sendCopyData(
            findWindow(u"Zeto - Quorel", true), endereco.handle(), quint32(code), qint32(bytes.size()), bytes);
    }
    Endereco endereco;
    QStringList recebidas;
    QString seguinte;
};

/// The player beside it.
struct Tocador
{
    explicit Tocador(Programa programa = Programa::Zeto)
        : janela(programa, kSemMidia), filho(u"Zeto - Quorel"_s, &janela), sessao(filho, janela),
          fim(&sessao, &Sessao::fim)
    { }
    void clica(const QString &nome) { QTest::mouseClick(&child<QPushButton>(janela, nome), Qt::LeftButton); }
    QString retorno() { return child<QLabel>(janela, u"LblRetorno"_s).text(); }

    JanelaLicao janela;
    Filho filho;
    Sessao sessao;
    QSignalSpy fim;
};

} // namespace

class TstJanelaLicao : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { vesteAplicacao(*qApp); }
    void init() { teste::failOnWarnings(); }
    void theFirstAnswerIsSent_data();
    void theFirstAnswerIsSent();
    void keysAloneAnswerAndGoOn();
    void typesAnAnswerWithTheCalculator();
    void ordersByClicks();
    void turnsPagesBeforeItAsksTheShell();
    void marksChangeTheButtons();
    void closingIsLeaving();
    void aLessonOutsideARoteiroSendsNothing();
    void theShellCloses();
    void staysAliveWithoutAShell();
    void drawsUndoesAndSaves();
    void coloursReadWell();
    void showsDamagedAndEnormousTexts();
};

void TstJanelaLicao::theFirstAnswerIsSent_data()
{
    QTest::addColumn<QStringList>("cartoes");
    QTest::addColumn<QString>("botao");
    QTest::addColumn<QString>("mensagem");
    QTest::addColumn<QString>("diz");
    QTest::newRow("right") << QStringList{u"Opcao2"_s} << u"CmdProxima"_s << u"2069 A"_s << u"Boa!"_s;
    QTest::newRow("wrong") << QStringList{u"Opcao1"_s} << u"CmdProxima"_s << u"2069 E"_s << u"Ainda não. Olhe bem."_s;
    QTest::newRow("wrong, then right, is wrong")
        << QStringList{u"Opcao1"_s, u"Opcao2"_s} << u"CmdProxima"_s << u"2069 E"_s << u"Boa!"_s;
    QTest::newRow("back with an answer") << QStringList{u"Opcao2"_s} << u"CmdAnterior"_s << u"2070 A"_s << u"Boa!"_s;
    QTest::newRow("out with an answer") << QStringList{u"Opcao2"_s} << u"CmdSair"_s << u"2071 A"_s << u"Boa!"_s;
    QTest::newRow("no answer") << QStringList{} << u"CmdProxima"_s << u"2069 "_s << u"Escolha a resposta certa."_s;
}

void TstJanelaLicao::theFirstAnswerIsSent()
{
    QFETCH(QStringList, cartoes);
    QFETCH(QString, botao);
    Gerenciador shell;
    Tocador tocador;
    QVERIFY(shell.envia(MSG_AULA, kEscolha));
    QVERIFY(tocador.filho.aulaPendente());
    QTRY_VERIFY(tocador.janela.isVisible());
    for (const QString &cartao : cartoes) {
        QTest::mouseClick(&child<Cartao>(tocador.janela, cartao), Qt::LeftButton);
        tocador.clica(u"CmdConferir"_s);
    }
    QTEST(tocador.retorno(), "diz");
    tocador.clica(botao);
    QTEST(shell.recebidas.join(u'|'), "mensagem");
}

void TstJanelaLicao::keysAloneAnswerAndGoOn()
{
    Gerenciador shell;
    Tocador tocador;
    tocador.sessao.aula(kEscolha);
    QVERIFY(shell.envia(MSG_AULA, kEscolha));
    QTRY_VERIFY(!tocador.filho.aulaPendente());
    QVERIFY(QTest::qWaitForWindowActive(&tocador.janela));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); // nothing chosen: nothing happens
    QCOMPARE(tocador.retorno(), u"Escolha a resposta certa."_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_2);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(tocador.retorno(), u"Boa!"_s);
    shell.seguinte = lesson(1, {});
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(shell.recebidas, QStringList{u"2069 A"_s});
    QTRY_VERIFY(!tocador.filho.aulaPendente());
    QVERIFY(tocador.janela.isVisible());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(shell.recebidas.last(), u"2069 "_s);
    QVERIFY(!tocador.janela.isVisible()); // nothing came: the Roteiro is over or goes on elsewhere
}

void TstJanelaLicao::typesAnAnswerWithTheCalculator()
{
    JanelaLicao janela(Programa::Calc, kSemMidia);
    janela.mostraLicao(leLicao(lesson(4, {}, u"12|doze"_s)), {});
    janela.show();
    for (const char tecla : {'3', '*', '4', '\r'})
        QTest::keyClick(&child<Calculadora>(janela, u"Calculadora"_s), tecla == '\r' ? '=' : tecla);
    QTest::mouseClick(&child<QPushButton>(janela, u"CmdUsar"_s), Qt::LeftButton);
    QCOMPARE(child<QLineEdit>(janela, u"TxtResposta"_s).text(), u"12"_s);
    QTest::keyClick(&child<QLineEdit>(janela, u"TxtResposta"_s), Qt::Key_Return);
    QCOMPARE(janela.resposta(), u"A"_s);
}

void TstJanelaLicao::ordersByClicks()
{
    JanelaLicao janela(Programa::Zeto, kSemMidia);
    janela.mostraLicao(leLicao(lesson(5, u"1\tb\t2<OP>2\ta\t1<OP>3\tc\t3"_s)), {});
    janela.show();
    for (const char16_t *nome : {u"Opcao1", u"Opcao1", u"Opcao2", u"Opcao1"}) // the second click takes the first back
        QTest::mouseClick(&child<Cartao>(janela, QString::fromUtf16(nome)), Qt::LeftButton);
    QVERIFY(!child<QPushButton>(janela, u"CmdConferir"_s).isEnabled());
    QTest::mouseClick(&child<Cartao>(janela, u"Opcao3"_s), Qt::LeftButton);
    QTest::mouseClick(&child<QPushButton>(janela, u"CmdProxima"_s), Qt::LeftButton); // checks before it goes on
    QCOMPARE(janela.resposta(), u"A"_s);
}

void TstJanelaLicao::turnsPagesBeforeItAsksTheShell()
{
    JanelaLicao janela(Programa::Livros, kSemMidia);
    LicaoRec licao;
    licao.Pecas = {{u"Um"_s, {}, {}, {}}, {u"Dois"_s, {}, {}, {}}};
    janela.mostraLicao(licao, {});
    janela.show();
    QSignalSpy proxima(&janela, &JanelaLicao::proxima);
    QSignalSpy anterior(&janela, &JanelaLicao::anterior);
    auto &next = child<QPushButton>(janela, u"CmdProxima"_s);
    QTest::mouseClick(&next, Qt::LeftButton);
    QCOMPARE(child<QLabel>(janela, u"LblTitulo"_s).text(), u"Dois"_s);
    QCOMPARE(child<QLabel>(janela, u"LblLado"_s).text(), u"Página 2 de 2"_s);
    QCOMPARE(proxima.count(), 0);
    QTest::mouseClick(&next, Qt::LeftButton);
    QCOMPARE(proxima.count(), 1);
    for (int n = 0; n < 2; ++n)
        QTest::mouseClick(&child<QPushButton>(janela, u"CmdAnterior"_s), Qt::LeftButton);
    QCOMPARE(anterior.count(), 1);
}

void TstJanelaLicao::marksChangeTheButtons()
{
    Gerenciador shell;
    Tocador tocador;
    shell.envia(MSG_CONTROLE, u"ULTIMA"_s);
    shell.envia(MSG_CONTROLE, u"PRIMEIRA"_s);
    shell.envia(MSG_AULA, lesson(1, {}));
    QTRY_VERIFY(tocador.janela.isVisible());
    QCOMPARE(child<QPushButton>(tocador.janela, u"CmdProxima"_s).text(), u"&Terminar"_s);
    QVERIFY(!child<QPushButton>(tocador.janela, u"CmdAnterior"_s).isEnabled());
    shell.envia(MSG_AULA, lesson(1, {})); // they are said anew for each lesson
    QTRY_VERIFY(child<QPushButton>(tocador.janela, u"CmdAnterior"_s).isEnabled());
    shell.envia(MSG_CONTROLE, u"ESCONDE"_s);
    QTRY_VERIFY(!tocador.janela.isVisible());
    QVERIFY(shell.recebidas.isEmpty());
}

void TstJanelaLicao::closingIsLeaving()
{
    Gerenciador shell;
    Tocador tocador;
    shell.envia(MSG_AULA, kEscolha);
    QTRY_VERIFY(tocador.janela.isVisible());
    tocador.janela.close();
    QCOMPARE(shell.recebidas, QStringList{u"2071 "_s});
    QCOMPARE(tocador.fim.count(), 0);
    QVERIFY(!tocador.janela.isVisible());
}

void TstJanelaLicao::aLessonOutsideARoteiroSendsNothing()
{
    Gerenciador shell;
    Tocador tocador;
    shell.envia(MSG_AULA, kEscolha + u"CMDEXEC"_s);
    QTRY_VERIFY(tocador.janela.isVisible());
    QVERIFY(child<QPushButton>(tocador.janela, u"CmdProxima"_s).isHidden());
    QVERIFY(child<QPushButton>(tocador.janela, u"CmdAnterior"_s).isHidden());
    QCOMPARE(child<QPushButton>(tocador.janela, u"CmdSair"_s).text(), u"&Fechar"_s);
    tocador.clica(u"CmdSair"_s);
    QVERIFY(shell.recebidas.isEmpty());
    QVERIFY(!tocador.janela.isVisible());
}

void TstJanelaLicao::theShellCloses()
{
    Gerenciador shell;
    Tocador tocador;
    shell.envia(MSG_AULA, kEscolha);
    QTRY_VERIFY(tocador.janela.isVisible());
    QTest::mouseClick(&child<Cartao>(tocador.janela, u"Opcao1"_s), Qt::LeftButton);
    tocador.clica(u"CmdConferir"_s);
    shell.envia(MSG_SAI, {});
    QCOMPARE(tocador.fim.count(), 0); // the shell has its answer first
    QTRY_COMPARE(tocador.fim.count(), 1);
    QCOMPARE(shell.recebidas, QStringList{u"2071 E"_s}); // an answer that nothing took along yet
}

void TstJanelaLicao::staysAliveWithoutAShell()
{
    Tocador tocador;
    tocador.sessao.aula(kEscolha);
    tocador.clica(u"CmdProxima"_s);
    QCOMPARE(child<QLabel>(tocador.janela, u"LblTitulo"_s).text(), u"O Quorel foi fechado"_s);
    tocador.clica(u"CmdSair"_s);
    QCOMPARE(tocador.fim.count(), 1);
}

void TstJanelaLicao::drawsUndoesAndSaves()
{
    JanelaLicao janela(Programa::Desenho, kSemMidia);
    janela.mostraSozinho();
    janela.show();
    auto &tela = child<Tela>(janela, u"Tela"_s);
    QTest::mouseClick(&child<QPushButton>(janela, u"Cor3"_s), Qt::LeftButton);
    QTest::mouseClick(&tela, Qt::LeftButton, {}, {100, 100});
    QCOMPARE(tela.imagem().pixelColor(100, 100), QColor(0xD3, 0x20, 0x20));
    QTest::mouseClick(&child<QPushButton>(janela, u"CmdDesfazer"_s), Qt::LeftButton);
    QCOMPARE(tela.imagem().pixelColor(100, 100), QColor(Qt::white));
    QTest::mouseClick(&child<QPushButton>(janela, u"Ferramenta2"_s), Qt::LeftButton); // fills the whole sheet
    QTest::mouseClick(&tela, Qt::LeftButton, {}, {5, 5});
    QTemporaryDir dir;
    auto &editor = child<Editor>(janela, u"Editor"_s);
    QVERIFY(editor.salva(dir.filePath(u"meu desenho"_s)));
    const QImage saved(dir.filePath(u"meu desenho.png"_s));
    QCOMPARE(saved.size(), tela.size());
    QCOMPARE(saved.pixelColor(saved.width() - 1, saved.height() - 1), QColor(0xD3, 0x20, 0x20));
    teste::BoxScript boxes{Resposta::Ok};
    QVERIFY(!editor.salva(dir.filePath(u"nenhuma/pasta.png"_s)));
    QVERIFY(boxes.last().texto.startsWith(u"Não foi possível salvar"_s));
}

static double luminance(QRgb cor)
{
    const auto linear = [](int part) {
        const double share = part / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(cor)) + 0.7152 * linear(qGreen(cor)) + 0.0722 * linear(qBlue(cor));
}

void TstJanelaLicao::coloursReadWell()
{
    std::vector<std::pair<QRgb, QRgb>> pairs{{cores::kTexto, cores::kFundo}, {cores::kTextoFraco, cores::kPapel},
        {cores::kCerto, cores::kFundoCerto}, {cores::kErrado, cores::kFundoErrado}};
    for (const CaraterRec &each : carateres())
        pairs.emplace_back(cores::kPapel, each.cor);
    for (const auto &[one, other] : pairs) {
        const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
        QVERIFY2((light + 0.05) / (dark + 0.05) >= 4.5, qPrintable(QColor::fromRgb(other).name()));
    }
}

void TstJanelaLicao::showsDamagedAndEnormousTexts()
{
    const QStringList texts{{}, u"x"_s.repeated(204000), u"palavra "_s.repeated(25000), u"(1,1)<SPÇ>"_s.repeated(9000),
        lesson(3, u"1\tum\t1<OP>"_s.repeated(9000)), lesson(2, kEscolha)};
    for (const CaraterRec &each : carateres()) {
        JanelaLicao janela(each.programa, kSemMidia);
        janela.show();
        for (const QString &text : texts) {
            janela.mostraLicao(leLicao(text), {});
            QVERIFY(!janela.grab().isNull());
            QVERIFY(janela.minimumSizeHint().width() <= 800);
        }
    }
}

QTEST_MAIN(TstJanelaLicao)
#include "tst_janelalicao.moc"
