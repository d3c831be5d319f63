#include "apoio.h"

#include "data/bd.h"
#include "data/conexao.h"
#include "lessons/dismissal.h"
#include "lessons/executa_aula.h"
#include "lessons/log_aulas.h"
#include "lessons/programas_filhos.h"

#include "support/sistema.h"

#include "cenario.h"

using namespace quorel;
using namespace quorel::teste;

/// The messages of a child program against the log of a real register, read back by plain SQL.
class TstLogAulas final : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void writes_data();
    void writes();
    void changeOfClassAloneDoesNotReopenTheLog();
    void failedWriteLosesTheAnswers();
    void boxInAHandlerOutlastsTheChildsWait();
    void rowThatFindsNoTableWaits();
    void theEndWaitsForLastAnswers_data();
    void theEndWaitsForLastAnswers();

private:
    static void receives(qint32 code, const QString &text = {}) { Cenario::receives(code, text); }
    QStringList sql(const QString &text) const { return mRegistro->sql(text); }
    /// Closes the register and reads its log.
    QStringList rows() const
    {
        gBD->Fechar();
        return sql("SELECT LG_Aluno, LG_Classe, LG_Data, RO_Cod, AU_Cod, LG_Resp FROM LG_LogAulas ORDER BY LG_Id");
    }
    std::unique_ptr<Cenario> mCenario;
    std::unique_ptr<Registro> mRegistro;
};

/// A row without its pupil, class and answers: date, code of the Roteiro, no code of an Aula, what the answers are of.
static const QString kResto = "2001-05-06 04:05:06|77|NULL|Português<disc>Rota<rot>";
static const QString kLinha = "12|3|" + kResto;

void TstLogAulas::init()
{
    mCenario = std::make_unique<Cenario>();
    mRegistro = std::make_unique<Registro>();
    mRegistro->open();
    costuras().now = [] { return QDateTime(QDate(2001, 5, 6), QTime(4, 5, 6)); };
    gAluno = 12;
    gClasse = 3;
    gNomeDisciplina = "Português";
    umRoteiro({"um", "dois"}, "Zeto");
    gCodRoteiro = 77;
    gNomeRoteiro = "Rota";
    gAulaAtual = 2;
}

void TstLogAulas::cleanup()
{
    gBD->Fechar();
    mCenario.reset();
    mRegistro.reset();
    reiniciaData();
}

void TstLogAulas::writes_data()
{
    const Table<qint32, qint32, QString, Mensagens, QStringList> row(
        "pupil", "roteiro", "gathered", "messages", "rows");
    row("past the last lesson, without the answer that comes with it", 12, 77, "A:E:", {{MSG_PROXIMA, "A"}},
        {kLinha + "A:E:"});
    row("past the last lesson twice: one row", 12, 77, "A:", {{MSG_PROXIMA, ""}, {MSG_PROXIMA, ""}}, {kLinha + "A:"});
    row("past the last lesson without answers", 12, 77, "", {{MSG_PROXIMA, ""}}, {});
    row("leaving before any answer", 12, 77, "", {{MSG_SAI, ""}}, {kLinha});
    row("each answer to be recorded now has its row", 12, 77,
        "A:", {{MSG_RESPOSTA, "E:Ç"}, {MSG_RESPOSTA, "C"}, {MSG_SAI, "A"}},
        {kLinha + "A:E:Ç:", kLinha + "C:", kLinha + "A:"});
    row("another pupil and class", 12, 77, "", {{MSG_CLASSE, "8"}, {MSG_ALUNO, "9.7"}, {MSG_SAI, "A"}},
        {"9|8|" + kResto + "A:"});
    row("no pupil: nothing written", 0, 77, "", {{MSG_RESPOSTA, "A"}, {MSG_SAI, "A"}}, {});
    row("outside a Roteiro answers are dropped", 12, 0, "A:", {{MSG_RESPOSTA, "E"}}, {});
}

void TstLogAulas::writes()
{
    QFETCH(qint32, pupil);
    QFETCH(qint32, roteiro);
    QFETCH(QString, gathered);
    QFETCH(Mensagens, messages);
    gAluno = pupil;
    gCodRoteiro = roteiro;
    gRespostas = gathered;
    for (const auto &[code, text] : messages)
        receives(code, text);
    QVERIFY(gRespostas.isEmpty());
    QTEST(rows(), "rows");
}

void TstLogAulas::changeOfClassAloneDoesNotReopenTheLog()
{
    const auto log = [] { return gBD->lista("RSLog", "LG_Resp", ","); };
    sql("INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, LG_Resp) VALUES"
        "(12, 3, '2001-03-01 10:00:00', 'old'), (12, 3, '2001-04-01 10:00:00', 'new'),"
        "(12, 8, '2001-03-01 10:00:00', 'other')");
    receives(MSG_ALUNO, "12");
    QCOMPARE(log(), "new,old");
    receives(MSG_CLASSE, "8");
    QCOMPARE(log(), "new,old");
    receives(MSG_SAI, "A"); // its row is of the class that RSLog does not show
    QCOMPARE(log(), "new,old");
    receives(MSG_ALUNO, "12");
    QCOMPARE(log(), "Português<disc>Rota<rot>A:,other");
}

void TstLogAulas::failedWriteLosesTheAnswers()
{
    AbreLog();
    mRegistro->nothingWaits();
    sql("CREATE TRIGGER cheio BEFORE INSERT ON LG_LogAulas BEGIN SELECT RAISE(ABORT, 'cheio'); END");
    gRespostas = "A:";
    BoxScript boxes({Resposta::Ok});
    receives(MSG_SAI);
    QCOMPARE(boxes.last().titulo, "RSLog - Registro Atualiza");
    QVERIFY(gRespostas.isEmpty());
    sql("DROP TRIGGER cheio");
    receives(MSG_SAI, "E");
    QCOMPARE(rows(), QStringList{kLinha + "E:"});
}

/// The child gives its first answer up while the box about it stands, and sends the next ones. These are served when
/// the handler with the box has ended or, on Windows, inside it, where what was refused may still stand before them:
/// each has a row of its own, and no answer is counted twice.
void TstLogAulas::boxInAHandlerOutlastsTheChildsWait()
{
    mRegistro->nothingWaits();
    sql("CREATE TRIGGER cheio BEFORE INSERT ON LG_LogAulas WHEN NEW.LG_Resp LIKE '%rot>A:' "
        "BEGIN SELECT RAISE(ABORT, 'cheio'); END");
    const Filhos filhos;
    const ChildProcess child(filhos.program("Zeto"));
    QTRY_VERIFY_WITH_TIMEOUT(findWindow(kTituloZeto, false) != 0, kPatience);
    QStringList story;
    costuras().box = [&](const Caixa &box) {
        const bool gaveUp = QTest::qWaitFor([&] { return filhos.lines().contains("enviou tudo"); }, kPatience);
        story << box.titulo << (gaveUp ? "desistiu" : "espera");
        return Resposta::Ok;
    };
    AbreLog();
    EnviaTexto(findWindow(kTituloZeto, false), janelaBlocos(), MSG_AULA, "APRESSADO:A,E,C");
    QTRY_COMPARE_WITH_TIMEOUT(gMensagem.Texto, "C", kPatience);
    QCOMPARE(story, (QStringList{"RSLog - Registro Atualiza", "desistiu"}));
    QCOMPARE(gBD->NumeroTotalDeRegistros("RSLog"), 2);
    QCOMPARE(gBD->Source()->depth(), 0);
    receives(MSG_RESPOSTA, "D");
    QCOMPARE(rows().replaceInStrings("<rot>A:", "<rot>"), (QStringList{kLinha + "E:", kLinha + "C:", kLinha + "D:"}));
}

void TstLogAulas::rowThatFindsNoTableWaits()
{
    sql("ALTER TABLE LG_LogAulas RENAME TO Outra");
    const BoxScript none;
    receives(MSG_RESPOSTA, "A");
    sql("ALTER TABLE Outra RENAME TO LG_LogAulas");
    receives(MSG_RESPOSTA, "E");
    QCOMPARE(rows(), (QStringList{kLinha + "A:", kLinha + "E:"}));
}

void TstLogAulas::theEndWaitsForLastAnswers_data()
{
    const Table<QString, QStringList> row("linha", "rows");
    row("leaves a little after it has acknowledged", "SAI-TARDE:A", {kLinha + "E:A:"});
    row("asks for lessons before: recorded, nothing started", "SAI-ADIANTE:A", {kLinha + "E:A:A:"});
    row("the end comes inside the handler of its next", "SAI-DENTRO:A", {kLinha + "E:A:A:"});
    row("closed without a word", "SAI-FECHADO:A", {});
}

void TstLogAulas::theEndWaitsForLastAnswers()
{
    QFETCH(QString, linha);
    const Filhos filhos;
    umRoteiro({linha, "dois"}, "Zeto");
    gRespostas = "E:";
    const auto end = [] {
        despedeFilhos();
        waitForChildren();
        RemoveGancho();
    };
    const bool inside = linha.startsWith("SAI-DENTRO"); // before the second lesson is sent
    if (inside)
        mCenario->atNextSend = [&] { mCenario->atNextSend = end; };
    iniciaRoteiro(1);
    QVERIFY(gJanelaZeto != 0);
    if (!inside)
        end();
    QTRY_COMPARE_WITH_TIMEOUT(gJanelaGancho, Janela(0), kPatience);
    QTEST(rows(), "rows");
    QTRY_COMPARE_WITH_TIMEOUT(findWindow(kTituloZeto, false), Janela(0), kPatience);
    if (!inside)
        QCOMPARE(filhos.lines().filter(QRegularExpression("^(inicio|2060) ")).size(), 2);
    mataProcesso(filhos.process());
}

QTEST_MAIN(TstLogAulas)
#include "tst_log_aulas.moc"
