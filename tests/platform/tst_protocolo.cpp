// The page docs/protocolo.md, proved by its own child: docs/filho_exemplo.py in the place of each program.
#include "platform/endereco.h"
#include "platform/protocolo.h"

#include <QFile>
#include <QProcess>
#include <QTest>

using namespace quorel;
using namespace Qt::StringLiterals;

static const QString kFilho = QStringLiteral(QUOREL_SOURCE "/docs/filho_exemplo.py");

/// A shell that answers each MSG_PROXIMA with the next of its lessons, from inside the handler, and at last "ESCONDE".
struct Gerenciador
{
    explicit Gerenciador(const QList<QByteArray> &lessons) : aulas(lessons)
    {
        endereco.replaceProc([this](Janela, quint32, quintptr sender, qintptr data) {
            const auto &copy = *reinterpret_cast<const CopyData *>(data);
            came.append(QByteArray::number(quint32(copy.code)) + ' ' + static_cast<const char *>(copy.bytes));
            const QByteArray next = aulas.isEmpty() ? "ESCONDE"_ba : aulas.front();
            taken += envia(sender, aulas.isEmpty() ? MSG_CONTROLE : MSG_AULA, next);
            aulas.removeIf([&](const QByteArray &each) { return each == next; });
            return qintptr(1);
        });
        endereco.publish(QString::fromUtf16(kTituloGerenciador));
    }
    qintptr envia(Janela to, CodigoMensagem code, const QByteArray &text)
    {
        return sendCopyData(to, endereco.handle(), quint32(code), qint32(text.size() + 1),
            QByteArrayView(text.data(), text.size() + 1));
    }

    Endereco endereco;
    QList<QByteArray> aulas;
    QList<QByteArray> came;
    qintptr taken = 0;
};

class TstProtocolo : public QObject
{
    Q_OBJECT
private slots:
    void theExampleTakesThePlaceOf_data();
    void theExampleTakesThePlaceOf();
    void thePageNamesWhatTheExampleDoes();
};

void TstProtocolo::theExampleTakesThePlaceOf_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("inner");
    QTest::newRow("Zeto") << u"Zeto - Quorel"_s << u"ZETO"_s;
    QTest::newRow("Desenho") << u"Editor de Desenhos - Quorel"_s << QString();
    QTest::newRow("Vrel") << u"Histórias - Quorel"_s << QString();
    QTest::newRow("Livros") << u"Livros - Quorel"_s << u"Livros"_s;
    QTest::newRow("Calc") << u"Calculadora - Quorel"_s << QString();
}

void TstProtocolo::theExampleTakesThePlaceOf()
{
    QFETCH(QString, title);
    QFETCH(QString, inner);
    Gerenciador shell({"segunda", "terceira li\xe7\xe3o"});
    QProcess filho;
    filho.start(kFilho, {u"--titulo"_s, title, u"/cfg:x"_s, u"/Hook:"_s});
    QTRY_VERIFY_WITH_TIMEOUT(findWindow(title, true) != 0, 20000);
    const Janela janela = findWindow(title, true);
    if (!inner.isEmpty())
        QVERIFY(findWindow(inner, false) != 0 && findWindow(inner, true) != janela);
    QCOMPARE(shell.envia(janela, MSG_AULA, "primeira"), 1);
    QTRY_COMPARE(shell.came.size(), 3);
    QCOMPARE(shell.came, QList<QByteArray>(3, "2069 A"));
    QCOMPARE(shell.taken, 3); // both nested lessons and the "ESCONDE" were answered with 1
    QCOMPARE(shell.envia(janela, MSG_SAI, ""), 1);
    QVERIFY(filho.waitForFinished());
    QCOMPARE(filho.exitCode(), 0);
    QCOMPARE(QString::fromUtf8(filho.readAllStandardOutput()),
        u"AULA primeira\nAULA segunda\nAULA terceira lição\n(o roteiro terminou: escondido)\n"_s);
    QCOMPARE(findWindow(title, true), Janela(0));
}

void TstProtocolo::thePageNamesWhatTheExampleDoes()
{
    QFile page(QStringLiteral(QUOREL_SOURCE "/docs/protocolo.md"));
    QVERIFY(page.open(QIODevice::ReadOnly));
    const QByteArray text = page.readAll();
    for (const char *word :
        {"(filho_exemplo.py)", "Gerenciador de Roteiros do Quorel", "Zeto - Quorel", "`ZETO`", "2060", "2071", "2122",
            "2123", "2059", "2062", "2069", "2070", "2109", "2110", "2111", "204800", "/Hook:", "/cnf:"})
        QVERIFY2(text.contains(word), word);
}

QTEST_MAIN(TstProtocolo)
#include "tst_protocolo.moc"
