#include "apoio.h"

#include "data/bd.h"
#include "data/conexao.h"
#include "lessons/andamento.h"
#include "lessons/gancho.h"
#include "lessons/log_aulas.h"
#include "lessons/mensagens.h"
#include "lessons/programas_filhos.h"
#include "platform/codec.h"
#include "platform/costuras.h"
#include "platform/endereco.h"
#include "startup/estado.h"
#include "support/suporte.h"

#include "vista_gravada.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

static constexpr int kPatience = 30000; ///< ms

/// A lesson program of its own process; it ends with its scope.
class Crianca final
{
public:
    Crianca()
    {
        const QString program = mDir.filePath(QStringLiteral("Zeto" QUOREL_SUFFIX));
        QFile::copy(QStringLiteral(QUOREL_BIN "/filho_licao" QUOREL_SUFFIX), program);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"FILHO_DIARIO"_s, mDir.filePath(u"diario"_s));
        mProcess.setProcessEnvironment(environment);
        mProcess.setProcessChannelMode(QProcess::ForwardedChannels);
        mProcess.start(program, QStringList());
        if (!QTest::qWaitFor([this] { return window() != 0; }, kPatience))
            qFatal("the child does not come up");
    }
    ~Crianca()
    {
        mProcess.kill();
        mProcess.waitForFinished();
    }
    Janela window() const { return findWindow(kTituloZeto, false); }
    QStringList lines() const { return QString::fromUtf8(le(mDir.filePath(u"diario"_s))).split(u'\n'); }

private:
    QTemporaryDir mDir;
    QProcess mProcess;
};

/// The messages of a child program against the log of a real register, read back by plain SQL.
class TstLogAulas final : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<VistaGravada> mVista;
    std::unique_ptr<Registro> mRegistro;

    static void receives(qint32 code, const QString &text)
    {
        const QByteArray bytes = encode1252(text) + '\0';
        sendCopyData(janelaBlocos(), janelaBlocos(), quint32(code), qint32(bytes.size()), bytes);
    }
    /// Closes the register and reads its log: pupil, class, code of the Roteiro, answers.
    QStringList rows() const
    {
        gBD->Fechar();
        return mRegistro->sql(u"SELECT LG_Aluno, LG_Classe, RO_Cod, LG_Resp FROM LG_LogAulas ORDER BY LG_Id"_s);
    }

private slots:
    void init();
    void cleanup();
    void writes_data();
    void writes();
    void dateIsThePresentOne();
    void changeOfClassAloneDoesNotReopenTheLog();
    void failedWriteLosesTheAnswers();
    void boxInAHandlerOutlastsTheChildsWait();
    void pupilChangesWhileABoxStands();
};

void TstLogAulas::init()
{
    failOnWarnings();
    reiniciaLessons();
    reiniciaStartup();
    mVista = std::make_unique<VistaGravada>();
    mRegistro = std::make_unique<Registro>();
    mRegistro->open();
    InstalaGancho(janelaBlocos());
    gAluno = 12;
    gClasse = 3;
    gNomeDisciplina = u"Português"_s;
    umRoteiro({u"um"_s, u"dois"_s}, u"Zeto"_s);
    gCodRoteiro = 77;
    gNomeRoteiro = u"Rota"_s;
    gAulaAtual = 2;
}

void TstLogAulas::cleanup()
{
    RemoveGancho();
    gBD->Fechar();
    mVista.reset();
    mRegistro.reset();
    reiniciaLessons();
    reiniciaCatalogue();
    reiniciaData();
}

using Mensagens = QList<std::pair<qint32, QString>>;

void TstLogAulas::writes_data()
{
    QTest::addColumn<qint32>("pupil");
    QTest::addColumn<qint32>("roteiro");
    QTest::addColumn<QString>("gathered");
    QTest::addColumn<Mensagens>("messages");
    QTest::addColumn<QStringList>("rows");

    const QString row = u"12|3|77|Português<disc>Rota<rot>"_s;
    QTest::newRow("past the last lesson, without the answer that comes with it")
        << 12 << 77 << u"A:E:"_s << Mensagens{{MSG_PROXIMA, u"A"_s}} << QStringList{row + u"A:E:"_s};
    QTest::newRow("past the last lesson twice: one row")
        << 12 << 77 << u"A:"_s << Mensagens{{MSG_PROXIMA, u""_s}, {MSG_PROXIMA, u""_s}} << QStringList{row + u"A:"_s};
    QTest::newRow("past the last lesson without answers")
        << 12 << 77 << QString() << Mensagens{{MSG_PROXIMA, u""_s}} << QStringList();
    QTest::newRow("leaving before any answer")
        << 12 << 77 << QString() << Mensagens{{MSG_SAI, u""_s}} << QStringList{row};
    QTest::newRow("each answer to be recorded now has its row")
        << 12 << 77 << u"A:"_s << Mensagens{{MSG_RESPOSTA, u"E:Ç"_s}, {MSG_RESPOSTA, u"C"_s}, {MSG_SAI, u"A"_s}}
        << QStringList{row + u"A:E:Ç:"_s, row + u"C:"_s, row + u"A:"_s};
    QTest::newRow("another pupil and class")
        << 12 << 77 << QString() << Mensagens{{MSG_CLASSE, u"8"_s}, {MSG_ALUNO, u"9.7"_s}, {MSG_SAI, u"A"_s}}
        << QStringList{u"9|8|77|Português<disc>Rota<rot>A:"_s};
    QTest::newRow("no pupil: nothing kept, nothing written")
        << 0 << 77 << QString() << Mensagens{{MSG_RESPOSTA, u"A"_s}, {MSG_SAI, u"A"_s}} << QStringList();
    QTest::newRow("a pupil that is no number is none")
        << 12 << 77 << QString() << Mensagens{{MSG_ALUNO, u"Ana"_s}, {MSG_SAI, u"A"_s}} << QStringList();
    QTest::newRow("outside a Roteiro answers are dropped")
        << 12 << 0 << u"A:"_s << Mensagens{{MSG_RESPOSTA, u"E"_s}} << QStringList();
}

void TstLogAulas::writes()
{
    QFETCH(qint32, pupil);
    QFETCH(qint32, roteiro);
    QFETCH(QString, gathered);
    QFETCH(Mensagens, messages);
    QFETCH(QStringList, rows);
    gAluno = pupil;
    gCodRoteiro = roteiro;
    gRespostas = gathered;
    for (const auto &[code, text] : messages)
        receives(code, text);
    QVERIFY(gRespostas.isEmpty());
    QCOMPARE(this->rows(), rows);
}

void TstLogAulas::dateIsThePresentOne()
{
    const QString format = u"yyyy-MM-dd HH:mm:ss"_s;
    const QString before = QDateTime::currentDateTime().toString(format);
    receives(MSG_SAI, u"A"_s);
    const QString after = QDateTime::currentDateTime().toString(format);
    gBD->Fechar();
    const QStringList written = mRegistro->sql(u"SELECT LG_Data, AU_Cod FROM LG_LogAulas"_s);
    QCOMPARE(written.size(), 1);
    QVERIFY2(before + u"|NULL"_s <= written[0] && written[0] <= after + u"|NULL"_s, qPrintable(written[0]));
}

void TstLogAulas::changeOfClassAloneDoesNotReopenTheLog()
{
    mRegistro->sql(u"INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, LG_Resp) VALUES"
                   "(12, 3, '2001-03-01 10:00:00', 'old'), (12, 3, '2001-04-01 10:00:00', 'new'),"
                   "(12, 8, '2001-03-01 10:00:00', 'other')"_s);
    receives(MSG_ALUNO, u"12"_s);
    QCOMPARE(gBD->lista(u"RSLog"_s, u"LG_Resp"_s, u","_s), u"new,old"_s);
    receives(MSG_CLASSE, u"8"_s);
    QCOMPARE(gClasse, 8);
    QCOMPARE(gBD->lista(u"RSLog"_s, u"LG_Resp"_s, u","_s), u"new,old"_s);
    receives(MSG_SAI, u"A"_s); // its row is of the class that RSLog does not show
    QCOMPARE(gBD->lista(u"RSLog"_s, u"LG_Resp"_s, u","_s), u"new,old"_s);
    receives(MSG_ALUNO, u"12"_s);
    QCOMPARE(gBD->lista(u"RSLog"_s, u"LG_Resp"_s, u","_s), u"Português<disc>Rota<rot>A:,other"_s);
}

void TstLogAulas::failedWriteLosesTheAnswers()
{
    AbreLog();
    mRegistro->sql(u"CREATE TRIGGER cheio BEFORE INSERT ON LG_LogAulas BEGIN SELECT RAISE(ABORT, 'cheio'); END"_s);
    gRespostas = u"A:"_s;
    BoxScript boxes({Resposta::Ok});
    receives(MSG_SAI, QString());
    QCOMPARE(boxes.last().titulo, u"RSLog - Registro Atualiza"_s);
    QVERIFY(gRespostas.isEmpty());
    mRegistro->sql(u"DROP TRIGGER cheio"_s);
    receives(MSG_SAI, u"E"_s);
    QCOMPARE(rows(), QStringList{u"12|3|77|Português<disc>Rota<rot>E:"_s});
}

/// The child gives its first answer up while the box about it stands, and sends the next ones. These are served when
/// the handler with the box has ended or, on Windows, inside it, where what was refused may still stand before them:
/// each has a row of its own, and no answer is counted twice.
void TstLogAulas::boxInAHandlerOutlastsTheChildsWait()
{
    mRegistro->sql(u"CREATE TRIGGER cheio BEFORE INSERT ON LG_LogAulas WHEN NEW.LG_Resp LIKE '%rot>A:' "
                   "BEGIN SELECT RAISE(ABORT, 'cheio'); END"_s);
    const Crianca child;
    const QString row = u"12|3|77|Português<disc>Rota<rot>"_s;
    QStringList story;
    costuras().box = [&](const Caixa &box) {
        const bool gaveUp = QTest::qWaitFor([&] { return child.lines().contains(u"enviou tudo"_s); }, kPatience);
        story << box.titulo << (gaveUp ? u"desistiu"_s : u"espera"_s);
        return Resposta::Ok;
    };
    AbreLog();
    EnviaTexto(child.window(), janelaBlocos(), MSG_AULA, u"APRESSADO:A,E,C"_s);
    QTRY_VERIFY_WITH_TIMEOUT(gMensagem.Texto == "C"_L1, kPatience);
    reiniciaCosturas();
    QCOMPARE(story, (QStringList{u"RSLog - Registro Atualiza"_s, u"desistiu"_s}));
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"RSLog"_s), 2);
    QCOMPARE(gBD->Source()->depth(), 0);
    receives(MSG_RESPOSTA, u"D"_s);
    QCOMPARE(
        rows().replaceInStrings(u"<rot>A:"_s, u"<rot>"_s), (QStringList{row + u"E:"_s, row + u"C:"_s, row + u"D:"_s}));
}

/// The box comes before the row is begun. What is written afterwards is a row of its own in the log that is open then.
void TstLogAulas::pupilChangesWhileABoxStands()
{
    mRegistro->sql(u"INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, RO_Cod, LG_Resp) VALUES (9, 3, 5, 'dele')"_s);
    AbreLog(); // empty, so it is read again before a row is added
    mRegistro->sql(u"ALTER TABLE LG_LogAulas RENAME TO Outra"_s);
    QStringList titles;
    costuras().box = [&](const Caixa &box) {
        titles << box.titulo;
        mRegistro->sql(u"ALTER TABLE Outra RENAME TO LG_LogAulas"_s);
        receives(MSG_ALUNO, u"9"_s);
        return Resposta::Ok;
    };
    receives(MSG_SAI, u"A"_s);
    reiniciaCosturas();
    QCOMPARE(titles, QStringList{u"1 - Registro reAtualizaRecordSet"_s});
    QCOMPARE(rows(), (QStringList{u"9|3|5|dele"_s, u"9|3|77|Português<disc>Rota<rot>A:"_s}));
}

QTEST_MAIN(TstLogAulas)
#include "tst_log_aulas.moc"
