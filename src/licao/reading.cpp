#include "licao/reading.h"

#include "platform/som.h"
#include "platform/speech.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace quorel {

/// How long a wave file sounds, by its header; nothing for what is none.
static std::chrono::milliseconds lengthOf(const QString &native)
{
    constexpr qsizetype kHeader = 4096; // bytes; other chunks may stand before the samples
    constexpr qsizetype kRateAt = 16, kSizeAt = 4; // behind a chunk's name
    constexpr qint64 kMillis = 1000;
    QFile file(native);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray header = file.read(kHeader);
    const auto number = [&header](const char *chunk, qsizetype offset) {
        const qsizetype at = header.indexOf(chunk);
        const bool there = at >= 0 && at + offset + qsizetype(sizeof(quint32)) <= header.size();
        return there ? qint64(qFromLittleEndian<quint32>(header.constData() + at + offset)) : 0;
    };
    const qint64 rate = number("fmt ", kRateAt);
    return std::chrono::milliseconds(rate > 0 ? number("data", kSizeAt) * kMillis / rate : 0);
}

Reading::Reading(Midia midia, Speech &voice, QObject *parent) : QObject(parent), mMidia(std::move(midia)), mVoice(voice)
{
    mPlaying.setSingleShot(true);
    connect(&mPlaying, &QTimer::timeout, this, &Reading::next);
    connect(&mVoice, &Speech::changed, this, &Reading::tell);
}

void Reading::setPage(const LicaoRec &licao, std::span<const PecaRec> pieces, int page, bool options)
{
    stop();
    mItems.clear();
    QStringList texts;
    for (const PecaRec &piece : pieces)
        texts << piece.Titulo << piece.Texto;
    texts.removeAll(QString());
    const auto recording = [&](int number) {
        if (licao.Codigo.isEmpty() || !mMidia.som)
            return QString();
        return mMidia.som(u'V' + licao.Codigo + (number > 0 ? u"_%1"_s.arg(number) : QString()));
    };
    const bool numbered = page > 0 && licao.Opcoes.empty();
    add(page == 0 || numbered ? recording(numbered ? page + 1 : 0) : QString(), texts.join(u".\n"_s));
    for (int n = 1; options && n <= int(licao.Opcoes.size()); ++n) {
        const QString &text = licao.Opcoes[std::size_t(n - 1)].Texto;
        add(recording(n), text.isEmpty() ? text : u"Opção %1: %2."_s.arg(n).arg(text));
    }
    tell();
}

void Reading::add(const QString &sound, const QString &text)
{
    if (!sound.isEmpty() || !text.trimmed().isEmpty())
        mItems.push_back({sound, text});
}

bool Reading::isPossible() const
{
    const auto recorded = [](const Item &item) { return !item.sound.isEmpty(); };
    return std::ranges::any_of(mItems, recorded) || (!mItems.empty() && mVoice.isAvailable());
}

void Reading::read()
{
    stop();
    stopSound(); // the page's own sound
    mNext = 0;
    next();
}

void Reading::next()
{
    constexpr std::chrono::milliseconds kPause{250};
    QStringList texts;
    for (; mNext < mItems.size() && mItems[mNext].sound.isEmpty(); ++mNext)
        texts << mItems[mNext].text;
    if (!texts.isEmpty() && mVoice.isAvailable()) {
        // What the voice says nobody sees the end of, so recordings behind it are said too.
        for (; mNext < mItems.size(); ++mNext)
            texts << mItems[mNext].text;
        mVoice.say(texts.join(u'\n'));
    } else if (mNext < mItems.size()) {
        const QString sound = mItems[mNext++].sound;
        if (playSound(sound))
            mPlaying.start(lengthOf(sound) + kPause);
    }
}

void Reading::stop()
{
    if (mPlaying.isActive())
        stopSound();
    mPlaying.stop();
    mVoice.stop();
}

} // namespace quorel
