#include "licao/janelalicao.h"

#include "licao/aparencia.h"
#include "licao/reading.h"
#include "licao/readingtools.h"
#include "licao/typesize.h"
#include "platform/som.h"

#include <QShortcut>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr int kTypeStep = 25; // per cent

void JanelaLicao::connectTools()
{
    const auto key = [this](const QKeySequence &sequence, auto &&act) {
        auto *shortcut = new QShortcut(sequence, this);
        shortcut->setAutoRepeat(false);
        connect(shortcut, &QShortcut::activated, this, act);
    };
    connect(mReading, &Reading::possible, mTools, &ReadingTools::setReadable);
    connect(mTools, &ReadingTools::read, mReading, &Reading::read);
    connect(mTools, &ReadingTools::zoom, this, [this](int steps) { resizeType(typeSize() + steps * kTypeStep); });
    key(Qt::Key_F8, [this] { mReading->read(); });
    for (const int plus : {int(Qt::Key_Plus), int(Qt::Key_Equal)}) // the key bears both signs
        key(QKeySequence(Qt::CTRL | Qt::Key(plus)), [this] { resizeType(typeSize() + kTypeStep); });
    key(QKeySequence(Qt::CTRL | Qt::Key_Minus), [this] { resizeType(typeSize() - kTypeStep); });
    key(QKeySequence(Qt::CTRL | Qt::Key_0), [this] { resizeType(kSmallestType); });
    key(Qt::Key_F11, [this] { switchFullScreen(!isFullScreen()); });
}

void JanelaLicao::resizeType(int size)
{
    setTypeSize(size);
    setStyleSheet(folhaDeEstilo(mPrograma));
    applyTypeSize(*this);
}

void JanelaLicao::switchFullScreen(bool on)
{
    setWindowState(windowState().setFlag(Qt::WindowFullScreen, on));
}

void JanelaLicao::stopReading()
{
    mReading->stop();
    stopSound();
}

} // namespace quorel
