#pragma once

#include "autoria/blockfile.h"
#include "autoria/model.h"

namespace quorel {

/// Where the bytes of a block file come from in its source.
class PlaceMap final
{
public:
    /// From `offset` on the bytes come from `place`. @param spread  byte by byte, one character each
    void add(qsizetype offset, const Place &place, bool spread);

    /// @param offset  in bytes from 0; beyond the end it is the last place
    Place at(qsizetype offset) const;

private:
    struct Segment
    {
        qsizetype offset;
        Place place;
        bool spread;
    };
    std::vector<Segment> mSegments;
};

/// A block file made of a source.
struct MadeBlock
{
    QByteArray edb; ///< code page 1252, CR LF; of what was understood
    bool understood = false; ///< false: something was left out, so it must not be written
    Findings findings; ///< of the source's form alone; see Checker for the lessons
    PlaceMap places;
};

/// Reads a source. Never fails: what can't be understood is a finding of Severity::Error and is left out.
/// @param utf8  with or without a byte order mark, any line end @param path  the findings' file
BlockSource readSource(QByteArrayView utf8, const QString &path, Findings &findings);

/// The source as text, lines ended by LF. A text that a plain line can't say is written exactly (with "|").
QByteArray writeSource(const BlockSource &source);

/// Makes a block file of a source that was read, or put together by a program.
/// @param destination  its name gives level and discipline where the source doesn't
MadeBlock makeBlock(const BlockSource &source, const BlockFile &destination);

/// Both: reads the source, makes the block file. @param path  of the source
MadeBlock makeBlock(QByteArrayView utf8, const QString &path, const BlockFile &destination);

/// Turns any block file back into a source. makeBlock() of it gives the same bytes, whatever they are and under
/// whatever name: what can't be told otherwise stands in raw blocks.
QByteArray sourceOfBlock(QByteArrayView edb);

/// A commented example of each kind of exercise, ready to be made. @param kind  of that one alone, None for all
QByteArray exampleSource(Kind kind = Kind::None);

/// The lines that begin an Aula of a kind, without comments, for editors that insert one.
QByteArray aulaSnippet(Kind kind);

} // namespace quorel
