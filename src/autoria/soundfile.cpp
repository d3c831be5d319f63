#include "autoria/soundfile.h"

#include "autoria/mediaplace.h"
#include "platform/caminho.h"
#include "startup/quorel_zeto.h"

#include <QDir>
#include <QRegularExpression>
#include <QStringList>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

constexpr quint16 kPcm = 1, kFloat = 3, kExtensible = 0xFFFE;
constexpr quint32 kMaxRate = 48000;
constexpr double kMaxSeconds = 600;
constexpr int kBits = 8; // of a byte
constexpr double kFull = 32768; // a sample of 16 bits
constexpr long kFull16 = 32767;

template <typename T>
T number(QByteArrayView bytes, qsizetype at)
{
    return bytes.size() >= at + qsizetype(sizeof(T)) ? qFromLittleEndian<T>(bytes.data() + at) : T(0);
}

struct Form
{
    quint16 kind = 0, channels = 0, bits = 0;
    quint32 rate = 0;
    int bytes() const { return bits / kBits; } ///< of a sample
};

Form formOf(QByteArrayView chunk)
{
    constexpr qsizetype kRate = 4, kBitsAt = 14, kSubKind = 24;
    Form form{number<quint16>(chunk, 0), number<quint16>(chunk, 2), number<quint16>(chunk, kBitsAt),
        number<quint32>(chunk, kRate)};
    if (form.kind == kExtensible)
        form.kind = number<quint16>(chunk, kSubKind);
    return form;
}

/// Finds the two chunks that matter; others are passed over. A length beyond the file means its rest.
bool chunksOf(QByteArrayView bytes, QByteArrayView &form, QByteArrayView &data)
{
    constexpr qsizetype kHead = 12, kChunkHead = 8, kSize = 4;
    if (!bytes.startsWith("RIFF") || bytes.size() < kHead || bytes.sliced(8, 4) != "WAVE")
        return false;
    for (qsizetype at = kHead; at + kChunkHead <= bytes.size();) {
        const auto wanted = qsizetype(number<quint32>(bytes, at + kSize));
        const qsizetype size = std::min(wanted, bytes.size() - at - kChunkHead);
        const QByteArrayView content = bytes.sliced(at + kChunkHead, size);
        if (bytes.sliced(at, kSize) == "fmt ")
            form = content;
        else if (bytes.sliced(at, kSize) == "data")
            data = content;
        at += kChunkHead + size + (size & 1);
    }
    return !form.isEmpty() && !data.isEmpty();
}

/// One sample, -1 to 1.
double sampleAt(const char *at, const Form &form)
{
    constexpr double kHalf8 = 128, kHalf16 = 32768, kHalf24 = 8388608, kHalf32 = 2147483648.0;
    if (form.kind == kFloat) {
        float value = 0;
        std::memcpy(&value, at, sizeof value);
        return std::isfinite(value) ? std::clamp(double(value), -1.0, 1.0) : 0;
    }
    switch (form.bytes()) {
    case 1:
        return (double(quint8(*at)) - kHalf8) / kHalf8;
    case 2:
        return qFromLittleEndian<qint16>(at) / kHalf16;
    case 3:
        return double(qint32((quint32(quint8(at[0])) << 8) | (quint32(quint8(at[1])) << 16)
                          | (quint32(quint8(at[2])) << 24))
                   / 256)
            / kHalf24;
    default:
        return qFromLittleEndian<qint32>(at) / kHalf32;
    }
}

/// Samples of the channels that stay, each from -1 to 1; more than two channels become one.
std::vector<double> samplesOf(QByteArrayView data, const Form &form, int channels)
{
    const qsizetype frame = qsizetype(form.bytes()) * form.channels, frames = data.size() / frame;
    std::vector<double> samples;
    samples.reserve(std::size_t(frames * channels));
    for (qsizetype i = 0; i < frames; ++i) {
        const char *at = data.data() + i * frame;
        if (channels == form.channels) {
            for (int c = 0; c < channels; ++c)
                samples.push_back(sampleAt(at + qsizetype(c) * form.bytes(), form));
            continue;
        }
        double sum = 0;
        for (int c = 0; c < form.channels; ++c)
            sum += sampleAt(at + qsizetype(c) * form.bytes(), form);
        samples.push_back(sum / form.channels);
    }
    return samples;
}

/// Every `step` frames become their mean, which takes away what fewer samples can't say.
std::vector<double> thinned(const std::vector<double> &samples, int channels, int step)
{
    std::vector<double> out;
    const std::size_t group = std::size_t(step * channels);
    for (std::size_t at = 0; at + group <= samples.size(); at += group) {
        for (int c = 0; c < channels; ++c) {
            double sum = 0;
            for (int s = 0; s < step; ++s)
                sum += samples[at + std::size_t(s * channels + c)];
            out.push_back(sum / step);
        }
    }
    return out;
}

template <typename T>
void put(QByteArray &into, T value)
{
    const T little = qToLittleEndian(value);
    into.append(reinterpret_cast<const char *>(&little), sizeof little);
}

QByteArray wavOf(const std::vector<double> &samples, int channels, quint32 rate)
{
    constexpr quint32 kFormSize = 16, kRest = 36, kWide = 2;
    constexpr quint16 kSixteen = 16;
    const auto size = quint32(samples.size()) * kWide;
    QByteArray wav("RIFF");
    put(wav, quint32(kRest + size));
    wav += "WAVEfmt ";
    put(wav, kFormSize);
    put(wav, kPcm);
    put(wav, quint16(channels));
    put(wav, rate);
    put(wav, quint32(rate * quint32(channels) * kWide));
    put(wav, quint16(quint32(channels) * kWide));
    put(wav, kSixteen);
    wav += "data";
    put(wav, size);
    for (const double each : samples)
        put(wav, qint16(std::min(std::lround(each * kFull), kFull16)));
    return wav;
}

QString faultOf(const Form &form, QByteArrayView data)
{
    const bool whole = form.kind == kPcm && form.bits % kBits == 0 && form.bits >= kBits && form.bits <= 4 * kBits;
    const bool point = form.kind == kFloat && form.bits == 4 * kBits;
    constexpr quint32 kLowest = 1000, kHighest = 400000;
    constexpr int kMaxChannels = 16;
    if (!whole && !point)
        return u"o som é WAV, mas comprimido (tipo %1, %2 bits): grave de novo como PCM de 16 bits"_s.arg(form.kind)
            .arg(form.bits);
    if (form.channels < 1 || form.channels > kMaxChannels || form.rate < kLowest || form.rate > kHighest)
        return u"o arquivo está danificado: %1 canais, %2 amostras por segundo"_s.arg(form.channels).arg(form.rate);
    const double seconds = double(data.size()) / (form.bytes() * form.channels) / form.rate;
    return seconds > kMaxSeconds ? u"o som tem mais de 10 minutos"_s : QString();
}

} // namespace

Recording recordingFrom(const QByteArray &bytes, QString &fault)
{
    QByteArrayView formBytes, data;
    if (!chunksOf(bytes, formBytes, data)) {
        fault = u"não é um som WAV inteiro. MP3, OGG e M4A não podem ser convertidos aqui: grave de novo em WAV, ou "
                "exporte como \"WAV, PCM de 16 bits\" no programa com que gravou"_s;
        return {};
    }
    const Form form = formOf(formBytes);
    if (fault = faultOf(form, data); !fault.isEmpty())
        return {};
    const int channels = form.channels > 2 ? 1 : form.channels;
    const int step = int((form.rate + kMaxRate - 1) / kMaxRate);
    std::vector<double> samples = samplesOf(data, form, channels);
    if (step > 1)
        samples = thinned(samples, channels, step);
    const quint32 rate = form.rate / quint32(step);
    QStringList changes;
    if (form.kind == kFloat || form.bits != 16)
        changes += u"%1 bits para 16"_s.arg(form.bits);
    if (channels != form.channels)
        changes += u"%1 canais para 1"_s.arg(form.channels);
    if (step > 1)
        changes += u"%1 amostras por segundo para %2"_s.arg(form.rate).arg(rate);
    return {wavOf(samples, channels, rate), double(samples.size()) / channels / rate, changes.join(u", "_s)};
}

QString faultOfSoundName(const QString &name)
{
    static const QRegularExpression good(u"^[A-Za-z0-9_À-ÖØ-öø-ÿ]{1,40}$"_s);
    static const QRegularExpression device(
        u"^(con|prn|aux|nul|(com|lpt)[1-9])$"_s, QRegularExpression::CaseInsensitiveOption);
    return good.match(name).hasMatch() && !device.match(name).hasMatch()
        ? QString()
        : u"\"%1\" não serve de nome: use letras, algarismos ou \"_\", sem ponto, hífen nem espaço"_s.arg(name);
}

QString putSound(const QByteArray &wav, const QString &name, bool replace, QString &fault)
{
    if (fault = faultOfSoundName(name); !fault.isEmpty())
        return {};
    if (const QString there = nativePath(gConfig.N_Som(name)); !replace && !there.isEmpty()) {
        fault = u"já existe um som com esse nome: "_s + QDir::toNativeSeparators(there);
        return {};
    }
    return putMedia(soundPlace(name), wav, fault);
}

} // namespace quorel
