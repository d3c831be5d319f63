#pragma once

#include "licao/midia.h"
#include "linha/textolicao.h"

#include <QObject>
#include <QTimer>

#include <span>
#include <vector>

namespace quorel {

class Speech;

/// Reads a page of a lesson aloud, question and options: by recordings where the media hold them, else by the system's
/// voice. A recording is a sound named "V" and the lesson's code; an option's, or that of a further page where there
/// are no options, has "_" and its number behind it. Nothing ever waits for it.
class Reading final : public QObject
{
    Q_OBJECT
public:
    Reading(Midia midia, Speech &voice, QObject *parent); ///< @param voice  outlives this one

    /// What to read from now on; ends what is being read.
    /// @param pieces   those of the page @param page  0-based
    /// @param options  whether the page shows the lesson's options
    void setPage(const LicaoRec &licao, std::span<const PecaRec> pieces, int page, bool options);

    bool isPossible() const; ///< there is a recording, or something to say and a voice
    void read(); ///< from the beginning
    void stop();

signals:
    void possible(bool possible); ///< after setPage(), and when the voice comes or goes

private:
    struct Item
    {
        QString sound; ///< native path; empty: the text is said
        QString text;
    };
    void add(const QString &sound, const QString &text);
    void next();
    void tell() { emit possible(isPossible()); }

    Midia mMidia;
    Speech &mVoice;
    std::vector<Item> mItems;
    std::size_t mNext = 0;
    QTimer mPlaying; ///< until a recording's end
};

} // namespace quorel
