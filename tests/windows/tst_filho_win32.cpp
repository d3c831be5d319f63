// A shell's place and a child program in plain C: every message crosses the system's own WM_COPYDATA.
#include "platform/codec.h"
#include "platform/endereco.h"
#include "platform/eventos.h"
#include "platform/preparo.h"
#include "platform/programas.h"
#include "platform/protocolo.h"
#include "support/sistema.h"
#include "support/suporte.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <functional>

#include <qt_windows.h>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

static constexpr char16_t kFilho[] = u"Histórias - Quorel";
static constexpr char16_t kLinha[] = u"/cfg:C:\\Lições  da \"avó\\zeto_cnf.txt  /Hook:";
static const QString k32 = QStringLiteral(QUOREL_BUILD "/tests/filho_win32_32.exe");

/// The shell's place, and what came to it.
struct Gerenciador
{
    Gerenciador()
    {
        endereco.replaceProc([this](Janela, quint32, quintptr sender, qintptr data) -> qintptr {
            const auto &copy = *reinterpret_cast<const CopyData *>(data);
            came.append(QByteArray::number(quint32(copy.code)) + ' ' + static_cast<const char *>(copy.bytes));
            insideSends += insideSend();
            if (handler)
                handler(sender);
            return 1;
        });
        endereco.publish(QString::fromUtf16(kTituloGerenciador));
    }
    qintptr envia(Janela to, CodigoMensagem code, const QByteArray &text = {})
    {
        return sendCopyData(to, endereco.handle(), quint32(code), qint32(text.size() + 1),
            QByteArrayView(text.data(), text.size() + 1));
    }

    Endereco endereco;
    std::function<void(Janela)> handler;
    QList<QByteArray> came;
    int insideSends = 0; ///< messages that came while a send of ours was on its way
};

class TstFilhoWin32 : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { preparePlatform(); }
    void init();
    void cleanup();
    void answersFromInsideItsWindowProcedure_data();
    void answersFromInsideItsWindowProcedure();
    void thePagesChildTakesThePlaceOf_data();
    void thePagesChildTakesThePlaceOf();
    void getsItsNextLessonAfterWaitingForLong();
    void aChainWithoutEndIsCut();
    void getsItsCommandLineAsItStands();
    void aLongDashIsADash();
    void aSlowStartIsWaitedFor();
    void awkwardOnes_data();
    void awkwardOnes();
    void isPlacedWithoutBeingWaitedFor();
    void isOpenedLikeADocument_data();
    void isOpenedLikeADocument();

private:
    Janela start(const QString &name, const QString &program = QStringLiteral(QUOREL_BUILD "/tests/filho_win32.exe"));

    std::unique_ptr<QTemporaryDir> mDir;
    std::unique_ptr<Gerenciador> mShell;
};

void TstFilhoWin32::init()
{
    failOnWarnings();
    mDir = std::make_unique<QTemporaryDir>(QDir::tempPath() + u"/Lições da Conceição XXXXXX"_s);
    mShell = std::make_unique<Gerenciador>();
}

/// Whatever the test left of its child ends with it.
void TstFilhoWin32::cleanup()
{
    mShell->handler = nullptr;
    for (Janela left = findWindow(kFilho, false); left != 0; left = findWindow(kFilho, false)) {
        mShell->envia(left, MSG_SAI);
        if (!QTest::qWaitFor([left] { return findWindow(kFilho, false) != left; })) {
            DWORD process = 0;
            GetWindowThreadProcessId(HWND(left), &process);
            mataProcesso(process);
        }
    }
}

/// Under a name with blanks and accents, so that a path in a command line has them too. 0 when it can't be started.
Janela TstFilhoWin32::start(const QString &name, const QString &program)
{
    const QString copy = QDir::toNativeSeparators(mDir->filePath(name));
    if (!QFile::copy(program, copy) || !startProgramNow({copy, QString::fromUtf16(kLinha), true}))
        return 0;
    return findWindow(kFilho, true); // at once: the start waited for it
}

void TstFilhoWin32::answersFromInsideItsWindowProcedure_data()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("64 bits") << QStringLiteral(QUOREL_BUILD "/tests/filho_win32.exe");
    QTest::newRow("32 bits") << k32;
}

void TstFilhoWin32::answersFromInsideItsWindowProcedure()
{
    QFETCH(QString, program);
    QVERIFY(QFileInfo::exists(program));
    const Janela filho = start(u"Vrel.exe"_s, program);
    if (program == k32 && filho == 0) {
        qInfo("NOT RUN: this system runs no 32-bit programs, so the 32-bit child was only built");
        return;
    }
    QVERIFY(filho != 0);
    QList<QByteArray> lessons{"segunda", "terceira li\xe7\xe3o"};
    QList<qintptr> nested;
    mShell->handler = [&](Janela sender) {
        nested.append(lessons.isEmpty() ? mShell->envia(sender, MSG_CONTROLE, "ESCONDE")
                                        : mShell->envia(sender, MSG_AULA, lessons.takeFirst()));
    };
    QCOMPARE(mShell->envia(filho, MSG_AULA, "primeira"), 1);
    QCOMPARE(mShell->came, QList<QByteArray>(3, "2069 A"));
    QCOMPARE(mShell->insideSends, 3); // all of them while the first send was on its way
    QCOMPARE(nested, QList<qintptr>(3, 1));
    mShell->handler = nullptr;
    QCOMPARE(mShell->envia(filho, MSG_SAI), 1);
    QTRY_COMPARE(findWindow(kFilho, false), Janela(0));
}

void TstFilhoWin32::thePagesChildTakesThePlaceOf_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("inner");
    QTest::newRow("Zeto") << u"Zeto.exe"_s << u"Zeto - Quorel"_s << u"ZETO"_s;
    QTest::newRow("Desenho") << u"Desenho.exe"_s << u"Editor de Desenhos - Quorel"_s << QString();
    QTest::newRow("Vrel") << u"Vrel.exe"_s << u"Histórias - Quorel"_s << QString();
    QTest::newRow("Livros") << u"Livros.exe"_s << u"Livros - Quorel"_s << u"Livros"_s;
    QTest::newRow("Calc") << u"Calc.exe"_s << u"Calculadora - Quorel"_s << QString();
}

/// docs/filho_windows.c, which knows nothing but the page.
void TstFilhoWin32::thePagesChildTakesThePlaceOf()
{
    QFETCH(QString, name);
    QFETCH(QString, title);
    QFETCH(QString, inner);
    start(name, QStringLiteral(QUOREL_BUILD "/tests/filho_pagina.exe"));
    const Janela filho = findWindow(title, true);
    QVERIFY(filho != 0);
    if (!inner.isEmpty())
        QVERIFY(findWindow(inner, true) != 0 && findWindow(inner, true) != filho);
    placeWindow(filho, Ordem::Top, 0);
    const auto size = [filho] {
        RECT rectangle = {};
        GetWindowRect(HWND(filho), &rectangle);
        return QSize(rectangle.right - rectangle.left, rectangle.bottom - rectangle.top);
    };
    QTRY_COMPARE(size(), QSize(400, 300));
    QList<QByteArray> lessons{"segunda", "terceira li\xe7\xe3o"};
    QList<qintptr> nested;
    mShell->handler = [&](Janela sender) {
        nested.append(lessons.isEmpty() ? mShell->envia(sender, MSG_CONTROLE, "ESCONDE")
                                        : mShell->envia(sender, MSG_AULA, lessons.takeFirst()));
    };
    QCOMPARE(mShell->envia(filho, MSG_AULA, "primeira"), 1);
    QTRY_COMPARE(mShell->came, QList<QByteArray>(3, "2069 A"));
    QCOMPARE(nested, QList<qintptr>(3, 1));
    QTRY_VERIFY(!IsWindowVisible(HWND(filho)));
    mShell->handler = nullptr;
    PostMessageW(HWND(filho), WM_CLOSE, 0, 0); // the pupil leaves
    QTRY_COMPARE(mShell->came.last(), "2071 ");
    QCOMPARE(mShell->envia(filho, MSG_SAI), 1);
    QTRY_COMPARE(findWindow(title, true), Janela(0));
}

void TstFilhoWin32::getsItsNextLessonAfterWaitingForLong()
{
    const Janela filho = start(u"Vrel.exe"_s);
    QVERIFY(filho != 0);
    qintptr next = -1;
    mShell->handler = [&](Janela sender) {
        mShell->handler = nullptr;
        // As long as a page is read: by now the system takes the child, which waits for us, for hung.
        constexpr int kRead = 6000; // ms
        QTest::qWait(kRead);
        next = mShell->envia(sender, MSG_AULA, "depois da leitura");
    };
    mShell->envia(filho, MSG_AULA, "antes");
    QCOMPARE(next, 1);
    QCOMPARE(mShell->came.size(), 2);
}

void TstFilhoWin32::aChainWithoutEndIsCut()
{
    const Janela filho = start(u"Vrel.exe"_s);
    QVERIFY(filho != 0);
    QList<qintptr> nested; // the innermost first
    mShell->handler = [&](Janela sender) { nested.append(mShell->envia(sender, MSG_AULA, "outra")); };
    QCOMPARE(mShell->envia(filho, MSG_AULA, "primeira"), 1);
    QCOMPARE(nested.size(), 50);
    QCOMPARE(nested.count(1), 49);
    QCOMPARE(nested.first(), 0); // refused, and all the others go on from there
}

void TstFilhoWin32::getsItsCommandLineAsItStands()
{
    const Janela filho = start(u"repete.exe"_s);
    QVERIFY(filho != 0);
    QCOMPARE(mShell->envia(filho, MSG_AULA, "uma"), 1);
    const QString program = QDir::toNativeSeparators(mDir->filePath(u"repete.exe"_s));
    QCOMPARE(decode1252(mShell->came.value(0)), u"2069 \"%1\" %2"_s.arg(program, QString::fromUtf16(kLinha)));
}

void TstFilhoWin32::aLongDashIsADash()
{
    QVERIFY(start(u"traco.exe"_s) != 0);
}

void TstFilhoWin32::aSlowStartIsWaitedFor()
{
    QVERIFY(start(u"lento.exe"_s) != 0);
}

void TstFilhoWin32::awkwardOnes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("answer");
    QTest::newRow("never answers") << u"mudo.exe"_s << 0;
    QTest::newRow("dies inside") << u"morre.exe"_s << 0;
    QTest::newRow("claims a length that nobody takes") << u"nega.exe"_s << 2; // its own send was answered with 0
}

void TstFilhoWin32::awkwardOnes()
{
    QFETCH(QString, name);
    QFETCH(int, answer);
    const Janela filho = start(name);
    QVERIFY(filho != 0);
    QCOMPARE(mShell->envia(filho, MSG_AULA, "uma"), answer);
    QCOMPARE(mShell->came, QList<QByteArray>());
    QVERIFY(!insideSend());
    placeWindow(filho, Ordem::Topmost, kKeepSize | kKeepPosition); // one that hangs is not waited for
    const Janela good = start(u"Vrel.exe"_s); // the shell goes on with another
    QVERIFY(good != 0);
}

void TstFilhoWin32::isPlacedWithoutBeingWaitedFor()
{
    const Janela filho = start(u"Vrel.exe"_s);
    QVERIFY(filho != 0);
    const auto place = [filho] {
        RECT rectangle = {};
        GetWindowRect(HWND(filho), &rectangle);
        return QRect(QPoint(rectangle.left, rectangle.top), QPoint(rectangle.right - 1, rectangle.bottom - 1));
    };
    const auto topmost = [filho] { return (GetWindowLongW(HWND(filho), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; };
    const QSize size = place().size();
    placeWindow(filho, Ordem::Topmost, kKeepSize | kKeepPosition);
    QTRY_VERIFY(topmost());
    placeWindow(filho, Ordem::NoTopmost, kKeepSize | kKeepPosition);
    QTRY_VERIFY(!topmost());
    placeWindow(filho, Ordem::Top, kKeepSize);
    QTRY_COMPARE(place(), QRect(QPoint(0, 0), size));
    mShell->envia(filho, MSG_SAI);
    QTRY_COMPARE(findWindow(kFilho, false), Janela(0));
    placeWindow(filho, Ordem::Top, 0); // gone: passed over
    QCOMPARE(mShell->envia(filho, MSG_AULA, "tarde"), 0);
}

void TstFilhoWin32::isOpenedLikeADocument_data()
{
    QTest::addColumn<QString>("document"); // %1 the directory
    QTest::addColumn<QString>("directory");
    QTest::newRow("by its path, a directory that is none") << u"%1\\Lição 1.exe"_s << u"Lição 1.exe"_s;
    QTest::newRow("by its name in the directory") << u"Lição 1.exe"_s << u"%1\\"_s;
}

/// The system's own way to open what has a name with blanks and accents; a program is what every system can open.
void TstFilhoWin32::isOpenedLikeADocument()
{
    QFETCH(QString, document);
    QFETCH(QString, directory);
    QVERIFY(QFile::copy(QStringLiteral(QUOREL_BUILD "/tests/filho_win32.exe"), mDir->filePath(u"Lição 1.exe"_s)));
    const QString base = QDir::toNativeSeparators(mDir->path());
    const auto in = [&base](QString text) { return text.replace(u"%1"_s, base); };
    QVERIFY(openDocumentNow({0, u"OPEN"_s, in(document), in(directory), ShowMode::Normal}));
    QTRY_VERIFY(findWindow(kFilho, false) != 0);
}

QTEST_MAIN(TstFilhoWin32)
#include "tst_filho_win32.moc"
