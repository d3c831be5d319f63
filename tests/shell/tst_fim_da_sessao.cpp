#include "cenario.h"

#include "lessons/andamento.h"
#include "lessons/gancho.h"
#include "platform/costuras.h"
#include "platform/endereco.h"
#include "platform/fim.h"
#include "platform/protocolo.h"
#include "startup/sistema_util.h"

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The end of the program and its order.
class TstFimDaSessao : public QObject
{
    Q_OBJECT
private slots:
    void orderOfTheEnd();
    void unloadsDuringTheEndReturnAtOnce();
};

static void endsTheProcess(QStringList &ordem)
{
    costuras().endProcess = [&ordem](int) {
        ordem << u"fim"_s;
        throw FimDoPrograma{};
    };
}

void TstFimDaSessao::orderOfTheEnd()
{
    Cenario c;
    QStringList ordem;
    endsTheProcess(ordem);
    std::vector<std::unique_ptr<Endereco>> filhos;
    const auto filho = [&](const QString &nome) {
        filhos.push_back(std::make_unique<Endereco>());
        filhos.back()->publish(nome);
        filhos.back()->replaceProc([&ordem, nome](Janela, quint32, quintptr remetente, qintptr dados) -> qintptr {
            const auto *mensagem = reinterpret_cast<const CopyData *>(dados);
            const bool doGerenciador = remetente == janelaBlocos() && gJanelaGancho != 0;
            ordem << u"%1 %2%3"_s.arg(nome).arg(mensagem->code).arg(doGerenciador ? u""_s : u" sem gancho"_s);
            return 1;
        });
        return filhos.back()->handle();
    };
    gJanelaDesenho = filho(u"Desenho"_s);
    gJanelaVrel = filho(u"Vrel"_s);
    gJanelaCalc = filho(u"Calc"_s);
    gJanelaZeto = filho(u"Zeto"_s);
    c.clica(u"chkSelec"_s);
    c.abreMatematica();
    costuras().box = [&](const Caixa &caixa) {
        ordem << caixa.titulo + (c.blocos().isVisible() ? u", fBlocos à vista"_s : u""_s);
        return Resposta::Nao;
    };
    QVERIFY_EXCEPTION_THROWN(c.painel().close(), FimDoPrograma); // the panel takes the main window along
    const QStringList esperada{
        u"Exclusão da Lista"_s, u"Zeto 2071"_s, u"Calc 2071"_s, u"Vrel 2071"_s, u"Desenho 2071"_s, u"fim"_s};
    QCOMPARE(ordem, esperada);
    QCOMPARE(gJanelaGancho, Janela(0));
    QCOMPARE(gSistema.ProcuraJanela(QString::fromUtf16(kTituloGerenciador), 2, true), Janela(0));
    QVERIFY(!c.principal().isVisible() && !c.blocos().isVisible() && !c.painel().isVisible());
}

void TstFimDaSessao::unloadsDuringTheEndReturnAtOnce()
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

QTEST_MAIN(TstFimDaSessao)
#include "tst_fim_da_sessao.moc"
