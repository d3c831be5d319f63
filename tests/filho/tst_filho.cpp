#include "platform/codec.h"
#include "platform/endereco.h"
#include "platform/protocolo.h"
#include "support/suporte.h"

#include <QProcess>

using namespace Qt::StringLiterals;
using namespace quorel;

/// A real child program, driven by this process as its shell.
class TstFilho : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void answers_data();
    void answers();
    void aLessonInsideTheSendIsToldAfterIt();
    void textsOfEverySize();
    void endsWithTheShell();
    void endsWhenTold();

private:
    qintptr send(CodigoMensagem code, const QByteArray &bytes, qint32 size = -1);
    qintptr lesson(const QString &text) { return send(MSG_AULA, encode1252(text) + '\0'); }

    std::unique_ptr<Endereco> mShell;
    std::unique_ptr<QProcess> mChild;
    QStringList mReceived;
    QByteArray mBack; // lesson sent within the handler of the next message
};

void TstFilho::init()
{
    teste::failOnWarnings();
    mReceived.clear();
    mBack.clear();
    mShell = std::make_unique<Endereco>();
    mShell->publish(QString::fromUtf16(kTituloGerenciador));
    mShell->replaceProc([this](Janela, quint32, quintptr, qintptr lParam) -> qintptr {
        const auto *dados = reinterpret_cast<const CopyData *>(lParam);
        const QByteArray bytes(static_cast<const char *>(dados->bytes), qsizetype(dados->size) - 1);
        mReceived << QString::number(dados->code) + u' ' + decode1252(bytes);
        if (!mBack.isEmpty())
            send(MSG_AULA, std::exchange(mBack, {}));
        return 1;
    });
    mChild = std::make_unique<QProcess>();
    mChild->setProcessChannelMode(QProcess::ForwardedChannels);
    mChild->start(QStringLiteral(QUOREL_BUILD "/tests/filho_de_teste"), {});
    QTRY_COMPARE(mReceived, QStringList{u"2109 42"_s}); // found by being the parent
    mReceived.clear();
}

void TstFilho::cleanup()
{
    mShell.reset();
    mChild->kill();
    mChild->waitForFinished();
}

qintptr TstFilho::send(CodigoMensagem code, const QByteArray &bytes, qint32 size)
{
    const Janela child = findWindow(u"Filho de teste", false);
    return sendCopyData(child, mShell->handle(), quint32(code), size < 0 ? qint32(bytes.size()) : size, bytes);
}

void TstFilho::answers_data()
{
    QTest::addColumn<int>("codigo");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("resposta");
    QTest::newRow("on, with accents") << int(MSG_AULA) << encode1252(u"proxima Ç é ã") + '\0' << u"2069 Ç é ã"_s;
    QTest::newRow("back") << int(MSG_AULA) << QByteArray("anterior E\0", 11) << u"2070 E"_s;
    QTest::newRow("cut at the first NUL") << int(MSG_AULA) << QByteArray("proxima A\0B\0", 12) << u"2069 A"_s;
    QTest::newRow("no NUL at the end") << int(MSG_AULA) << QByteArray("proxima A") << u"2069 A"_s;
    QTest::newRow("control word") << int(MSG_CONTROLE) << QByteArray("ULTIMA\0", 7) << u"2111 ULTIMA"_s;
    QTest::newRow("a game that is none") << int(MSG_JOGO) << QByteArray() << u"2111 jogo="_s;
    QTest::newRow("asks for the game") << int(MSG_AULA) << QByteArray("jogo\0", 5) << u"2123 "_s;
}

void TstFilho::answers()
{
    QFETCH(int, codigo);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, resposta);
    QVERIFY(send(CodigoMensagem(9999), QByteArray("x\0", 2))); // an unknown code is taken and passed over
    QVERIFY(send(CodigoMensagem(codigo), bytes));
    QTRY_COMPARE(mReceived, QStringList{resposta});
}

void TstFilho::aLessonInsideTheSendIsToldAfterIt()
{
    mBack = QByteArray("proxima 2\0", 10);
    QVERIFY(lesson(u"proxima_e_diz 1"_s));
    QTRY_COMPARE(mReceived, (QStringList{u"2069 1"_s, u"2111 pendente"_s, u"2069 2"_s}));
}

void TstFilho::textsOfEverySize()
{
    QVERIFY(lesson(u"tamanho "_s + QString(204799 - 8, u'x')));
    QTRY_COMPARE(mReceived, QStringList{u"2111 204799"_s});
    QVERIFY(lesson(u"enorme"_s)); // one too long is refused by the child itself
    QTRY_COMPARE(mReceived.size(), 2);
    QCOMPARE(mReceived.last().size(), 204799 + 5);
}

void TstFilho::endsWithTheShell()
{
    mShell->withdraw();
    QVERIFY(lesson(u"proxima A"_s));
    QTRY_COMPARE(mChild->state(), QProcess::NotRunning);
    QCOMPARE(mChild->exitCode(), 3);
    QVERIFY(mReceived.isEmpty());
}

void TstFilho::endsWhenTold()
{
    QVERIFY(send(MSG_SAI, {}));
    QVERIFY(mChild->waitForFinished());
    QCOMPARE(mChild->exitCode(), 0);
}

QTEST_MAIN(TstFilho)
#include "tst_filho.moc"
