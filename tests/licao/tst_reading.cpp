#include "licao/cartao.h"
#include "licao/janelalicao.h"
#include "licao/reading.h"
#include "licao/typesize.h"
#include "platform/speech.h"
#include "support/speech_server.h"
#include "support/suporte.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// What helps eyes and ears: the voice, the size of the letters, capitals, the whole screen.
class TstReading : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void aLoudspeakerNeedsAVoiceOrARecording();
    void questionAndOptionsAreReadAloud();
    void recordingsComeFirst();
    void lettersGrowAndAnAnswerStays();
    void capitalsLeaveOptionsAlone();
    void theWholeScreen();

private:
    QString sound(const QString &nome) const; ///< of the test's media
    void record(const QString &nome) const; ///< puts a short recording there
    JanelaLicao &window(Preferences preferences = {});

    std::unique_ptr<ScratchDir> mDir;
    std::unique_ptr<SpeechServer> mServer; ///< one, since the program has one voice
    std::unique_ptr<JanelaLicao> mWindow;
    LicaoRec mLesson;
};

void TstReading::initTestCase()
{
    mDir = std::make_unique<ScratchDir>();
    mServer = std::make_unique<SpeechServer>(mDir->native("/s"));
    // In the place of a machine's player: it tells what it was given.
    mDir->put("/bin/pw-play", "#!/bin/sh\nbasename \"$1\" >>\"$(dirname \"$0\")/../played\"\n");
    QFile::setPermissions(mDir->native("/bin/pw-play"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("PATH", mDir->native("/bin:").toUtf8() + qgetenv("PATH"));
}

void TstReading::init()
{
    failOnWarnings();
    setTypeSize(kSmallestType);
    QFile::remove(mDir->native("/V71.wav"));
    mServer->heard.clear();
    mLesson = {};
    mLesson.Codigo = u"71"_s;
    mLesson.Tipo = TipoExercicio::Uma;
    mLesson.Pecas = {{u"Bichos"_s, u"Quem late?"_s, {}, {}}};
    mLesson.Opcoes = {{u"cão"_s, {}, true, 0}, {u"gato"_s, {}, false, 0}, {}};
}

QString TstReading::sound(const QString &nome) const
{
    const QString path = mDir->native("/" + nome + ".wav");
    return QFile::exists(path) ? path : QString();
}

void TstReading::record(const QString &nome) const
{
    const QByteArray second("\x40\x1f\0\0", 4), bytes("\x50\0\0\0", 4); // 8,000 bytes a second, 80 bytes
    mDir->put("/" + nome + ".wav", "RIFF....WAVEfmt ...." + QByteArray(8, '.') + second + "....data" + bytes);
}

JanelaLicao &TstReading::window(Preferences preferences)
{
    const Midia media{[](const QString &) { return QString(); }, [this](const QString &nome) { return sound(nome); }};
    mWindow = std::make_unique<JanelaLicao>(Programa::Zeto, media, preferences);
    mWindow->mostraLicao(mLesson, {});
    mWindow->show();
    if (!QTest::qWaitForWindowActive(mWindow.get()))
        qFatal("the window does not become the active one");
    return *mWindow;
}

void TstReading::aLoudspeakerNeedsAVoiceOrARecording()
{
    Speech nobody;
    const Midia media{{}, [this](const QString &nome) { return sound(nome); }};
    Reading reading(media, nobody, nullptr);
    reading.setPage(mLesson, mLesson.Pecas, 0, true);
    QVERIFY(!reading.isPossible());
    reading.read(); // and nothing happens
    record(u"V71"_s);
    reading.setPage(mLesson, mLesson.Pecas, 0, true);
    QVERIFY(reading.isPossible());
    mLesson.Codigo.clear();
    reading.setPage(mLesson, mLesson.Pecas, 0, true);
    QVERIFY(!reading.isPossible());
}

void TstReading::questionAndOptionsAreReadAloud()
{
    JanelaLicao &shown = window();
    auto &speaker = child<QPushButton>(shown, u"CmdLer"_s);
    QTRY_VERIFY(speaker.isVisible());
    QTest::keyClick(&shown, Qt::Key_F8);
    QTRY_COMPARE(mServer->heard, QByteArrayList{"Bichos.|Quem late?|Opção 1: cão.|Opção 2: gato.|"});
    QTest::mouseClick(&speaker, Qt::LeftButton);
    QTRY_COMPARE(mServer->heard.size(), 2);
    const int before = mServer->cancelled;
    shown.mostraLicao(mLesson, {});
    QTRY_VERIFY(mServer->cancelled > before); // a page that goes takes its voice along
}

void TstReading::recordingsComeFirst()
{
    record(u"V71"_s);
    JanelaLicao &shown = window();
    QTRY_VERIFY(Speech::instance().isAvailable());
    QTest::keyClick(&shown, Qt::Key_F8);
    QTRY_COMPARE(mServer->heard, QByteArrayList{"Opção 1: cão.|Opção 2: gato.|"});
    QCOMPARE(mDir->get("/played"), "V71.wav\n");
}

void TstReading::lettersGrowAndAnAnswerStays()
{
    mLesson.Tipo = TipoExercicio::Digitada;
    mLesson.Opcoes.clear();
    mLesson.Esperadas = QStringList{u"cão"_s};
    JanelaLicao &shown = window();
    auto &answer = child<QLineEdit>(shown, u"TxtResposta"_s);
    QTest::keyClicks(&answer, "ca");
    const auto &title = child<QLabel>(shown, u"LblTitulo"_s);
    const int before = title.font().pixelSize();
    QTest::mouseClick(&child<QPushButton>(shown, u"CmdMaior"_s), Qt::LeftButton);
    QTest::keyClick(&shown, Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(typeSize(), 150);
    QCOMPARE(title.font().pixelSize(), before * 3 / 2);
    QCOMPARE(child<QLineEdit>(shown, u"TxtResposta"_s).text(), "ca");
    for (int i = 0; i < 5; ++i)
        QTest::keyClick(&shown, Qt::Key_Equal, Qt::ControlModifier);
    QCOMPARE(typeSize(), 200);
    QCOMPARE(child<QLabel>(window(), u"LblTitulo"_s).font().pixelSize(), before * 2); // the next window too
    QTest::keyClick(mWindow.get(), Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(typeSize(), 175);
    QTest::keyClick(mWindow.get(), Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(typeSize(), 100);
}

void TstReading::capitalsLeaveOptionsAlone()
{
    JanelaLicao &shown = window({.capitals = true});
    QCOMPARE(child<QLabel>(shown, u"LblTitulo"_s).text(), u"BICHOS"_s);
    QStringList texts;
    for (const QLabel *label : shown.findChildren<QLabel *>())
        texts << label->text();
    QVERIFY(texts.contains(u"QUEM LATE?"_s));
    QCOMPARE(child<Cartao>(shown, u"Opcao1"_s).text(), u"cão"_s);
}

void TstReading::theWholeScreen()
{
    JanelaLicao &shown = window({.fullScreen = true});
    QVERIFY(shown.isFullScreen());
    QTest::keyClick(&shown, Qt::Key_F11);
    QVERIFY(!shown.isFullScreen());
    QTest::keyClick(&shown, Qt::Key_F11);
    QVERIFY(shown.isFullScreen());
}

QTEST_MAIN(TstReading)
#include "tst_reading.moc"
