#pragma once

#include "autoria/source.h"

namespace quorel {

/// Writes the items of a source one behind the other, with the numbers that they get.
class BlockWriter final
{
public:
    /// @param path  the findings' file
    BlockWriter(const BlockFile &destination, const QString &path) : mDestination(destination), mPath(path) { }

    void head(const HeadSource &head);
    void item(const RoteiroSource &roteiro);
    void item(const AulaSource &aula);
    void item(const RawSource &raw);

    MadeBlock &made() { return mMade; }

    /// What numbers and separators depend on.
    struct State
    {
        enum class Last { Nothing, Head, Roteiro, Aula, Raw } last = Last::Nothing;
        int roteiro = 0;
        int aula = 0;
        QString code; ///< of the Roteiro
    };
    const State &state() const { return mState; }
    /// Whether an empty line comes before the next Roteiro or Aula.
    bool separates() const;
    /// Takes back what was written behind a place.
    void takeBack(qsizetype size, const State &state);

private:
    enum class Form { Line, Lines, Lesson, WholeLesson, Type };

    void separate();
    void fixed(QByteArrayView bytes, const Place &place);
    void value(const SourceText &text, Form form, const Place &place);
    void field(QByteArrayView before, const SourceText &text, const Place &place);
    void lesson(const AulaSource &aula);
    void piece(const AulaSource &aula, std::size_t n, const SourceText &codigo);
    void answers(const AulaSource &aula, const SourceText &codigo);
    void options(const AulaSource &aula, const QString &codigo);
    void add(const Place &place, const QString &code, const QString &text);

    BlockFile mDestination;
    QString mPath;
    HeadSource mHead;
    State mState;
    MadeBlock mMade;
};

} // namespace quorel
