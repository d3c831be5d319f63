// The system's own side of the platform: titles, inner windows, widgets' windows, shapes, drives, files, the registry.
#include "platform/aplicacao.h"
#include "platform/caminho.h"
#include "platform/endereco.h"
#include "platform/preparo.h"
#include "platform/programas.h"
#include "platform/sistema.h"
#include "support/suporte.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <string>

#include <qt_windows.h>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstJanelas : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { preparePlatform(); }
    void init() { failOnWarnings(); }
    void titlesAreFoundInFourPasses();
    void anAddressIsAnInvisibleWindow();
    void aWidgetsWindowIsTheAddress();
    void anotherProcedureBeforeOurs();
    void anInnerWindowMovesItsWidget();
    void whatASystemSendIsWorth_data();
    void whatASystemSendIsWorth();
    void roundRegion();
    void readOnlyFiles();
    void drivesAndDirectories();
    void theDialUpValue();
    void commandLines();
};

/// A window of this process that is none of Qt's, as another program would make it.
class Bare
{
    Q_DISABLE_COPY_MOVE(Bare)
public:
    explicit Bare(const wchar_t *title, HWND parent = nullptr)
        : handle(CreateWindowExW(
            0, L"STATIC", title, parent ? WS_CHILD : WS_OVERLAPPED, 10, 10, 50, 50, parent, nullptr, nullptr, nullptr))
    { }
    ~Bare() { DestroyWindow(handle); }
    const HWND handle;
};

void TstJanelas::titlesAreFoundInFourPasses()
{
    const Bare livros(L"Livros de teste - Quorel");
    const Bare inner(L"Livros de teste", livros.handle);
    const Bare deep(L"Miolo de teste", inner.handle);
    QCOMPARE(findWindow(u"Livros de teste", true), Janela(inner.handle));
    QCOMPARE(findWindow(u"Livros de teste - Quorel", false), Janela(livros.handle));
    QCOMPARE(findWindow(u"Livros de teste - Q", true), Janela(livros.handle));
    QCOMPARE(findWindow(u"Livros de teste - Q", false), Janela(0));
    QCOMPARE(findWindow(u"LIVROS DE TESTE", true), Janela(0));
    QCOMPARE(findWindow(u"Miolo", true), Janela(deep.handle));
    QCOMPARE(findWindow(u"", true), Janela(0));
    const Bare dashed(L"Livros \u2014 de teste"); // only that of another program counts as "-"
    QCOMPARE(findWindow(u"Livros - de teste", true), Janela(0));
    const std::wstring longTitle = L"Quadrinhos de teste - " + std::wstring(5000, L'x');
    const Bare endless(longTitle.c_str());
    QCOMPARE(findWindow(u"Quadrinhos de teste -", true), Janela(endless.handle));
    Endereco endereco;
    endereco.publish(u"Livros de teste - Quorel"_s);
    QCOMPARE(findWindow(u"Livros de teste - Quorel", false), endereco.handle()); // the addresses come first
}

void TstJanelas::anAddressIsAnInvisibleWindow()
{
    Janela handle = 0;
    {
        Endereco endereco;
        handle = endereco.handle();
        auto *window = HWND(handle);
        QVERIFY(IsWindow(window) && !IsWindowVisible(window) && !GetParent(window));
        QCOMPARE(sendCopyData(handle, 1, 7, 0, {}), 0); // not published yet
        endereco.publish(u"Endereço de teste"_s);
        QCOMPARE(findWindow(u"Endereço de teste", false), handle);
        QCOMPARE(sendCopyData(handle, 1, 7, 0, {}), 1);
        SendMessageW(window, WM_CLOSE, 0, 0); // as one that ends programs does
        QVERIFY(IsWindow(window));
        endereco.setTitle(u"Outro de teste"_s);
        QCOMPARE(findWindow(u"Outro de teste", false), handle);
        endereco.withdraw();
        QCOMPARE(findWindow(u"Outro de teste", true), Janela(0));
        QCOMPARE(sendCopyData(handle, 1, 7, 0, {}), 0);
    }
    QVERIFY(!IsWindow(HWND(handle)));
}

void TstJanelas::aWidgetsWindowIsTheAddress()
{
    QWidget corpo;
    corpo.setMinimumSize(220, 140);
    corpo.setGeometry(300, 200, 400, 300);
    Endereco endereco(&corpo);
    int came = 0;
    endereco.replaceProc([&](Janela, quint32 message, quintptr, qintptr) { return came += int(message == kCopyData); });
    endereco.publish(u"Corpo de teste"_s);
    corpo.show();
    QCOMPARE(endereco.handle(), handleOf(&corpo));
    QCOMPARE(sendCopyData(endereco.handle(), 1, 7, 0, {}), 1);
    placeWindow(endereco.handle(), Ordem::Top, kKeepSize);
    RECT place = {};
    QVERIFY(GetWindowRect(HWND(endereco.handle()), &place));
    QCOMPARE(QPoint(place.left, place.top), QPoint(0, 0));
    placeWindow(endereco.handle(), Ordem::Top, kKeepPosition);
    QTRY_COMPARE(corpo.size(), QSize(220, 140)); // the least size instead of 0
    corpo.setWindowFlag(Qt::WindowMaximizeButtonHint, false); // Qt makes the window anew
    corpo.show();
    QCOMPARE(findWindow(u"Corpo de teste", false), endereco.handle());
    QCOMPARE(sendCopyData(endereco.handle(), 1, 7, 0, {}), 2);
}

static WNDPROC gBeforeOther = nullptr;
static int gSeenByOther = 0;

static LRESULT CALLBACK otherProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    gSeenByOther += int(message == WM_APP);
    return CallWindowProcW(gBeforeOther, window, message, wParam, lParam);
}

/// What else stands in a window's chain of procedures, an input method's say, stays there when the address goes.
void TstJanelas::anotherProcedureBeforeOurs()
{
    QWidget corpo;
    corpo.setGeometry(300, 200, 400, 300);
    corpo.show();
    auto *window = HWND(corpo.winId());
    const auto replaced = [window](WNDPROC by) {
        return reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(by)));
    };
    auto first = std::make_unique<Endereco>(&corpo);
    first->publish(u"Corpo de teste"_s);
    gBeforeOther = replaced(otherProc);
    first.reset();
    SendMessageW(window, WM_APP, 0, 0);
    QCOMPARE(gSeenByOther, 1);
    QCOMPARE(sendCopyData(Janela(window), 1, 7, 0, {}), 0);
    SetWindowPos(window, nullptr, 0, 0, 600, 500, SWP_NOZORDER);
    QTRY_VERIFY(corpo.width() > 500); // Qt is reached through both
    Endereco second(&corpo);
    second.publish(u"Corpo de teste"_s);
    QCOMPARE(sendCopyData(second.handle(), 1, 7, 0, {}), 1);
    QVERIFY(replaced(gBeforeOther) == otherProc);
}

void TstJanelas::anInnerWindowMovesItsWidget()
{
    QWidget corpo;
    corpo.setGeometry(100, 100, 400, 300);
    QWidget miolo(&corpo);
    miolo.setMinimumSize(90, 60);
    miolo.setGeometry(30, 40, 200, 100);
    Endereco endereco(&corpo);
    endereco.replaceProc([](Janela, quint32, quintptr, qintptr) { return qintptr(5); });
    endereco.publish(u"Corpo de teste"_s);
    const Janela inner = endereco.publishInner({u"Miolo de teste"_s, &miolo});
    corpo.show();
    QCOMPARE(findWindow(u"Miolo de teste", false), inner);
    QCOMPARE(GetAncestor(HWND(inner), GA_ROOT), HWND(endereco.handle()));
    QCOMPARE(sendCopyData(inner, 1, 7, 0, {}), 5); // to the same procedure
    placeWindow(inner, Ordem::Topmost, kKeepSize | kKeepPosition);
    QCOMPARE(miolo.geometry(), QRect(30, 40, 200, 100));
    placeWindow(inner, Ordem::Top, kKeepPosition);
    QCOMPARE(miolo.geometry(), QRect(30, 40, 90, 60));
    placeWindow(inner, Ordem::Top, kKeepSize);
    QCOMPARE(miolo.geometry(), QRect(0, 0, 90, 60));
    QVERIFY(!miolo.testAttribute(Qt::WA_NativeWindow));
}

void TstJanelas::whatASystemSendIsWorth_data()
{
    QTest::addColumn<quint32>("size");
    QTest::addColumn<bool>("withBytes");
    QTest::addColumn<int>("seen"); // -1: the procedure is not called
    QTest::newRow("text") << 3u << true << 3;
    QTest::newRow("size 0") << 0u << true << 0;
    QTest::newRow("the largest") << kMaxCopyData << true << int(kMaxCopyData);
    QTest::newRow("one too long") << kMaxCopyData + 1 << true << -1;
    QTest::newRow("a size without bytes") << 3u << false << -1;
}

void TstJanelas::whatASystemSendIsWorth()
{
    QFETCH(quint32, size);
    QFETCH(bool, withBytes);
    QFETCH(int, seen);
    Endereco endereco;
    int came = -1;
    bool hadBytes = false;
    endereco.replaceProc([&](Janela, quint32, quintptr, qintptr data) {
        const auto &copy = *reinterpret_cast<const CopyData *>(data);
        came = int(copy.size);
        hadBytes = copy.bytes != nullptr;
        return qintptr(1);
    });
    endereco.publish(u"Endereço de teste"_s);
    QByteArray bytes(qsizetype(kMaxCopyData) + 1, 'x');
    COPYDATASTRUCT data{7, size, withBytes ? bytes.data() : nullptr};
    const LRESULT result = SendMessageW(HWND(endereco.handle()), WM_COPYDATA, 0, LPARAM(&data));
    QCOMPARE(result, LRESULT(seen >= 0));
    QCOMPARE(came, seen);
    QCOMPARE(hadBytes, seen > 0);
}

void TstJanelas::roundRegion()
{
    QWidget janela(nullptr, Qt::FramelessWindowHint);
    janela.resize(100, 60);
    janela.show();
    setRoundRegion(&janela, 100, 60, 20);
    HRGN region = CreateRectRgn(0, 0, 0, 0);
    QTRY_COMPARE(GetWindowRgn(HWND(janela.winId()), region), COMPLEXREGION);
    QVERIFY(!PtInRegion(region, 0, 0) && !PtInRegion(region, 99, 59));
    QVERIFY(PtInRegion(region, 3, 3) && PtInRegion(region, 50, 30)); // 3, 3 would be outside, were 20 the radius
    DeleteObject(region);
    QWidget dentro(&janela);
    setRoundRegion(&dentro, 40, 20, 10);
    QVERIFY(dentro.mask().contains(QPoint(20, 10)) && !dentro.mask().contains(QPoint(0, 0)));
    setRoundRegion(nullptr, 100, 60, 20);
}

void TstJanelas::readOnlyFiles()
{
    const QTemporaryDir dir(QDir::tempPath() + u"/Avó Conceição XXXXXX"_s);
    const QString path = barras(dir.filePath(u"Cadastros.mdb"_s));
    QVERIFY(!isReadOnly(path)); // a missing file counts as writable
    QVERIFY(!clearReadOnly(path));
    escreve(path, "x");
    QVERIFY(!isReadOnly(path));
    QVERIFY(SetFileAttributesW(reinterpret_cast<const wchar_t *>(path.utf16()), FILE_ATTRIBUTE_READONLY));
    QVERIFY(isReadOnly(path));
    QVERIFY(clearReadOnly(path));
    QVERIFY(!isReadOnly(path));
    QVERIFY(!isReadOnly(barras(dir.path())));
    QVERIFY(!isReadOnly(QString()));
}

void TstJanelas::drivesAndDirectories()
{
    QCOMPARE(proposedCopies(), u"C:\\FigurasQuorel"_s);
    QCOMPARE(proposedMedia(), u"D:\\zeto_MM"_s);
    constexpr int kFixedDrive = 3;
    QVERIFY(driveRoots(kFixedDrive).contains(u"C:\\"_s));
    for (const QString &root : driveRoots(kOpticalDrive))
        QVERIFY(root.endsWith(u":\\"_s));
    QCOMPARE(volumeOf(u"C:\\Quorel\\zeto_cnf.txt"_s), u"C:"_s);
    QCOMPARE(volumeOf(u"\\\\sala\\quorel\\cfg\\zeto_cnf.txt"_s), u"\\\\sala\\quorel"_s);
    QCOMPARE(nativePath(u"C:/a\\b"_s), u"C:\\a\\b"_s);
    QCOMPARE(nativePath(u"a\0b"_s), QString());
    const QByteArray before = qgetenv("QUOREL_WINDIR");
    qunsetenv("QUOREL_WINDIR");
    QCOMPARE(windowsDirectory().toLower(), u"c:\\windows"_s);
    qputenv("QUOREL_WINDIR", "C:\\ProgramData\\Quorel\\");
    QCOMPARE(windowsDirectory(), u"C:\\ProgramData\\Quorel"_s);
    qputenv("QUOREL_WINDIR", before);
}

void TstJanelas::theDialUpValue()
{
    constexpr wchar_t kKey[] = L"System\\CurrentControlSet\\Services\\RemoteAccess";
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, kKey);
    QVERIFY(!dialUpConnected());
    HKEY key = nullptr;
    QCOMPARE(RegCreateKeyW(HKEY_LOCAL_MACHINE, kKey, &key), ERROR_SUCCESS);
    QVERIFY(!dialUpConnected());
    for (const DWORD value : {0u, 1u}) {
        RegSetValueExW(key, L"Remote Connection", 0, REG_DWORD, reinterpret_cast<const BYTE *>(&value), sizeof value);
        QCOMPARE(dialUpConnected(), value != 0);
    }
    RegCloseKey(key);
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, kKey);
}

void TstJanelas::commandLines()
{
    QCOMPARE(commandLineWords(0, nullptr).size(), QCoreApplication::arguments().size());
    QVERIFY(!rawCommandLine(0, nullptr).contains(u"tst_janelas"_s));
    const QTemporaryDir dir;
    QVERIFY(!startProgramNow({QDir::toNativeSeparators(dir.filePath(u"falta.exe"_s)), {}, true}));
    escreve(dir.filePath(u"texto.exe"_s), "no program");
    QVERIFY(!startProgramNow({QDir::toNativeSeparators(dir.filePath(u"texto.exe"_s)), {}, true}));
    QVERIFY(!startProgramNow({}));
    QVERIFY(!openDocumentNow({0, u"OPEN"_s, barras(dir.filePath(u"falta.htm"_s)), u"falta.htm"_s}));
}

QTEST_MAIN(TstJanelas)
#include "tst_janelas.moc"
