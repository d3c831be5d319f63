#include "licao/sessao.h"
#include "platform/codec.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QPushButton>

using namespace quorel;
using namespace quorel::teste;

/// The player and its shell in one process: what the player says when the shell closes.
class TstSessao : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void theShellCloses_data();
    void theShellCloses();
};

void TstSessao::theShellCloses_data()
{
    const Table<QString, QString, QStringList> row("linha", "botao", "ditas");
    const QString linha = "(1,1)7<SPÇ>1<SPÇ>1<SPÇ><SPÇ><SPÇ><SPÇ><SPÇ>T<SPÇ>x<PÇ><VAA><VOA><VCM><CM>";
    row("in a lesson without an answer", linha, "", {"2071 "});
    row("inside the step to the next lesson", linha, "Próxima", {"2069 ", "2071 "});
    row("inside the step to the lesson before", linha, "Anterior", {"2070 ", "2071 "});
    row("outside a Roteiro", linha + "CMDEXEC", "", {});
}

void TstSessao::theShellCloses()
{
    QFETCH(QString, linha);
    QFETCH(QString, botao);
    Endereco shell;
    QStringList ditas;
    Janela filhoJanela = 0;
    const auto envia = [&](CodigoMensagem code, const QString &text) {
        const QByteArray bytes = encode1252(text) + '\0';
        QCOMPARE(sendCopyData(filhoJanela, shell.handle(), quint32(code), qint32(bytes.size()), bytes), 1);
    };
    shell.replaceProc([&](Janela, quint32, quintptr, qintptr data) {
        const auto &copy = *reinterpret_cast<const CopyData *>(data);
        ditas << QString::number(copy.code) + ' ' + static_cast<const char *>(copy.bytes);
        if (copy.code != MSG_SAI)
            envia(MSG_SAI, ""); // closes before it has dealt with the step
        return qintptr(1);
    });
    shell.publish(QString::fromUtf16(kTituloGerenciador));
    JanelaLicao janela(Programa::Zeto, {});
    Filho filho("Zeto - Quorel", &janela);
    Sessao sessao(filho, janela);
    bool ended = false;
    connect(&sessao, &Sessao::fim, this, [&] { ended = true; });
    filhoJanela = findWindow(u"Zeto - Quorel", false);
    envia(MSG_AULA, linha);
    QTRY_VERIFY(janela.isVisible());
    if (botao.isEmpty())
        envia(MSG_SAI, "");
    for (auto *button : janela.findChildren<QPushButton *>()) {
        if (!botao.isEmpty() && button->text().remove('&') == botao)
            QTest::mouseClick(button, Qt::LeftButton);
    }
    QTRY_VERIFY(ended);
    QTEST(ditas, "ditas");
}

QTEST_MAIN(TstSessao)
#include "tst_sessao.moc"
