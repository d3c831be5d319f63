// The page docs/protocolo.md, proved by its own child: docs/filho_exemplo.py in the place of each program.
#include "platform/protocolo.h"

#include "filho_em_teste.h"

#include <QScopeGuard>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

using namespace quorel;
using namespace quorel::teste;

static constexpr uid_t kNobody = 65534;
static constexpr qint64 kOther = 5'000'000; ///< of no process

/// A shell that answers each MSG_PROXIMA with the next of its lessons, from inside the handler, and at last "ESCONDE".
struct Gerenciador
{
    Gerenciador()
    {
        endereco.replaceProc([this](Janela, quint32, quintptr sender, qintptr data) {
            const auto &copy = *reinterpret_cast<const CopyData *>(data);
            came << QByteArray::number(quint32(copy.code)) + ' ' + static_cast<const char *>(copy.bytes);
            const bool end = aulas.isEmpty();
            taken += envia(sender, end ? MSG_CONTROLE : MSG_AULA, end ? "ESCONDE" : aulas.takeFirst());
            return qintptr(1);
        });
        endereco.publish(QString::fromUtf16(kTituloGerenciador));
    }
    qintptr envia(Janela to, CodigoMensagem code, const QByteArray &text)
    {
        return sendCopyData(to, endereco.handle(), quint32(code), qint32(text.size() + 1), text + '\0');
    }

    Endereco endereco;
    QList<QByteArray> aulas{"segunda", "terceira li\xe7\xe3o"};
    QList<QByteArray> came;
    qintptr taken = 0;
};

class TstProtocolo : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void theExampleTakesThePlaceOf_data();
    void theExampleTakesThePlaceOf();
    void theWindowedOneIsAnsweredByKeysAndMouse();
    void theExampleRefusesAListenerOfAnotherUser();
    void thePageNamesWhatTheExampleDoes();
};

void TstProtocolo::theExampleTakesThePlaceOf_data()
{
    const Table<QString, QStringList, QString, QString> row("name", "options", "title", "inner");
    row("Zeto", "Zeto.exe", {}, "Zeto - Quorel", "ZETO");
    row("Desenho", "Desenho.exe", {}, "Editor de Desenhos - Quorel", "");
    row("Vrel", "Vrel.exe", {}, "Histórias - Quorel", "");
    row("Livros", "Livros.exe", {}, "Livros - Quorel", "Livros");
    row("Calc", "Calc.exe", {}, "Calculadora - Quorel", "");
    row("a title that is asked for", "Zeto.exe", {"--titulo", "Livros - Quorel"}, "Livros - Quorel", "Livros");
}

void TstProtocolo::theExampleTakesThePlaceOf()
{
    QFETCH(QString, name);
    QFETCH(QStringList, options);
    QFETCH(QString, title);
    QFETCH(QString, inner);
    const ScratchDir dir;
    QVERIFY(QFile::copy(QUOREL_SOURCE "/docs/filho_exemplo.py", dir.native("/" + name)));
    Gerenciador shell;
    ChildProcess filho(dir.native("/" + name), options + QStringList{"/cfg:x", "/Hook:"});
    QTRY_VERIFY_WITH_TIMEOUT(findWindow(title, true) != 0, kPatience);
    const Janela janela = findWindow(title, true);
    if (!inner.isEmpty())
        QVERIFY(findWindow(inner, false) != 0 && findWindow(inner, true) != janela);
    QCOMPARE(shell.envia(janela, MSG_AULA, "primeira"), 1);
    QTRY_COMPARE(shell.came, QList<QByteArray>(3, "2069 A"));
    QCOMPARE(shell.taken, 3); // both nested lessons and the "ESCONDE" were answered with 1
    QCOMPARE(shell.envia(janela, MSG_SAI, ""), 1);
    QVERIFY(filho.waitForFinished());
    QCOMPARE(filho.exitCode(), 0);
    QCOMPARE(QString::fromUtf8(filho.readAllStandardOutput()),
        "AULA primeira\nAULA segunda\nAULA terceira lição\n(o roteiro terminou: escondido)\n");
    QCOMPARE(findWindow(title, true), Janela(0));
}

/// Does what a pupil does to the window of that title on the display named in DISPLAY.
static bool doOn(const QString &title, const QStringList &what)
{
    QProcess hands;
    const QStringList found{
        "search", "--sync", "--onlyvisible", "--name", '^' + title + '$', "windowactivate", "--sync"};
    hands.start("timeout", QStringList{"20", "xdotool"} + found + what);
    return hands.waitForFinished() && hands.exitCode() == 0;
}

void TstProtocolo::theWindowedOneIsAnsweredByKeysAndMouse()
{
    const ScratchDir dir;
    QVERIFY(QFile::copy(QUOREL_SOURCE "/docs/filho_tk.py", dir.native("/Zeto.exe")));
    QVERIFY(QFile::copy(QUOREL_SOURCE "/docs/filho_exemplo.py", dir.native("/filho_exemplo.py")));
    ChildProcess tela("sh", {"-c", "exec Xvfb -displayfd 1 -nolisten tcp 2>/dev/null"});
    while (!tela.canReadLine() && tela.waitForReadyRead(kPatience)) { }
    qputenv("DISPLAY", ":" + tela.readLine().trimmed());
    ChildProcess gerente("openbox", {"--sm-disable"});
    const auto unset = qScopeGuard([] { qunsetenv("DISPLAY"); });
    const QByteArray lesson = "(1,1)7<SP\xc7>2<SP\xc7>1<SP\xc7><SP\xc7><SP\xc7><SP\xc7><SP\xc7>Conta<SP\xc7>Quanto?"
                              "<SP\xc7><SP\xc7><SP\xc7><SP\xc7><P\xc7><VAA>(1)7<VOA>(2)1\t3\t0<OP>2\t4\t1<VCM><CM>";
    Gerenciador shell;
    shell.aulas = {lesson};
    ChildProcess filho(dir.native("/Zeto.exe"), {"/cfg:x", "/Hook:"});
    const QString title = "Zeto - Quorel";
    QTRY_VERIFY_WITH_TIMEOUT(findWindow(title, true) != 0, kPatience);
    const Janela janela = findWindow(title, true);
    QCOMPARE(shell.envia(janela, MSG_AULA, lesson), 1);
    placeWindow(janela, Ordem::Topmost, 0);
    QVERIFY(doOn(title, {"key", "1", "key", "2", "key", "Right"})); // the first answer counts
    QTRY_COMPARE_WITH_TIMEOUT(shell.came, QList<QByteArray>{"2069 E"}, kPatience);
    // The next lesson came inside that send. The buttons to go back and on are the last row of the window.
    QVERIFY(doOn(title, {"key", "2", "mousemove", "--window", "%1", "250", "174", "click", "1"}));
    QTRY_COMPARE_WITH_TIMEOUT(shell.came, (QList<QByteArray>{"2069 E", "2069 A"}), kPatience);
    QCOMPARE(shell.taken, 2);
    QCOMPARE(shell.envia(janela, MSG_SAI, ""), 1);
    QVERIFY(filho.waitForFinished());
    QCOMPARE(filho.exitCode(), 0);
    QCOMPARE(filho.readAllStandardError(), QByteArray());
}

/// Somebody else's socket under the number of a shell, left there while the directory was open to others.
void TstProtocolo::theExampleRefusesAListenerOfAnotherUser()
{
    if (::getuid() != 0) // nobody else can be played, and the kernel keeps this user from becoming somebody
        QVERIFY(::seteuid(kNobody) != 0);
    const QByteArray bus = qgetenv("XDG_RUNTIME_DIR") + "/quorel/", other = bus + QByteArray::number(kOther);
    const Gerenciador shell;
    const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, (other + ".sock").constData(), sizeof address.sun_path - 1);
    QCOMPARE(::bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    const bool played = ::getuid() == 0 && ::seteuid(kNobody) == 0;
    QCOMPARE(::listen(listener, 1), 0);
    QCOMPARE(::seteuid(::getuid()), 0);
    escreve(other + ".janelas", QByteArray::number(kOther << 32 | 1) + " 0 Gerenciador de Roteiros do Quorel\n");
    ChildProcess filho(QUOREL_SOURCE "/docs/filho_exemplo.py", {"--titulo", "Exemplo"});
    QTRY_VERIFY_WITH_TIMEOUT(findWindow(u"Exemplo", true) != 0, kPatience);
    const Janela janela = findWindow(u"Exemplo", true);
    QCOMPARE(sendCopyData(janela, Janela(kOther << 32 | 1), MSG_AULA, 5, QByteArray("aula\0", 5)), 1);
    int peer = -1;
    QTRY_VERIFY_WITH_TIMEOUT(peer >= 0 || (peer = ::accept(listener, nullptr, nullptr)) >= 0, kPatience);
    QByteArray got(64, '\0');
    ssize_t n = -1;
    const auto ended = [&] { return (n = ::recv(peer, got.data(), std::size_t(got.size()), MSG_DONTWAIT)) >= 0; };
    QVERIFY(QTest::qWaitFor(ended, kPatience));
    QCOMPARE(n > 0, !played); // the answer goes to who is of the same user
    ::close(peer);
    ::close(listener);
    QFile::remove(other + ".sock");
    QFile::remove(other + ".janelas");
}

void TstProtocolo::thePageNamesWhatTheExampleDoes()
{
    const QByteArray page = le(QUOREL_SOURCE "/docs/protocolo.md");
    for (const char *word : {"(filho_exemplo.py)", "(filho_tk.py)", "(filho_windows.c)", "(filho_windows.py)",
             "Gerenciador de Roteiros do Quorel", "Zeto - Quorel", "`ZETO`", "2060", "2071", "2122", "2123", "2059",
             "2062", "2069", "2070", "2109", "2110", "2111", "204800", "/Hook:", "/cnf:"})
        QVERIFY2(page.contains(word), word);
}

QTEST_MAIN(TstProtocolo)
#include "tst_protocolo.moc"
