#pragma once

#include "autoria/blockfile.h"
#include "autoria/lessoncheck.h"
#include "catalogue/leitor_blocos.h"
#include "catalogue/marcas.h"

#include <QHash>
#include <QSet>

#include <functional>
#include <optional>

namespace quorel {

/// What one file's examination leaves for those of the other files.
struct CheckMemory
{
    struct Theme
    {
        QString text;
        QString where; ///< file, line and column
    };
    QHash<int, QString> roteiroCodes; ///< where each was met first
    QHash<QString, Theme> themes; ///< by directory and month
    QHash<QString, bool> figs, sounds; ///< those looked for: whether they were found
};

/// The examination of one block file.
class BlockCheck final
{
public:
    /// @param edb  must outlive this object @param place  tells what stands where in the file, or in its source
    /// @param where  the file's name for other files' findings
    BlockCheck(const BlockFile &file, const QByteArray &edb, bool withMedia, CheckMemory &memory,
        std::function<Place(qsizetype)> place, const QString &where);

    Findings run();

private:
    bool isNoBlock();
    void name();
    void lineEnds();
    void head();
    void openings();
    void missingNumbers();
    void order();
    void roteiro(int i, const LugarBloco &section);
    void roteiroCode(int i, const LugarBloco &section);
    void roteiroFields(const RoteiroRec &r, const LugarBloco &section);
    void skills(const RoteiroRec &r, const LugarBloco &section);
    void aula(const LugarBloco &section);
    void lesson(const AulaRec &a, const LugarBloco &section);
    void code(const AulaRec &a, const LugarBloco &section);
    void type(const AulaRec &a, const LugarBloco &section);
    void html(const AulaRec &a, const LugarBloco &section);
    void lastAula(const LugarBloco &section);
    bool calcHolds(const QString &codigo);

    bool hasFig(const QString &name);
    bool hasSound(const QString &name);
    /// Whether a failure ended the reading before this Roteiro.
    bool isBehindStop(int i) const { return i > mBloco.lidos && mBloco.lidos < mBloco.roteiros.upperBound(); }
    qsizetype opening(const LugarBloco &section) const;
    qsizetype placeOfStop();
    /// Where a marker stands in a section, -1 when it doesn't; where what follows it stands.
    qsizetype placeOf(const LugarBloco &section, ProximaMarca &mark) const;
    qsizetype behind(const LugarBloco &section, ProximaMarca &mark) const;
    void add(qsizetype at, Severity severity, const QString &code, const QString &text);

    const BlockFile &mFile;
    const QByteArray &mEdb;
    bool mWithMedia;
    CheckMemory &mMemory;
    std::function<Place(qsizetype)> mPlace;
    QString mWhere;
    PlantaBloco mPlan;
    Bloco mBloco;
    Findings mFindings;
    QSet<std::pair<int, int>> mOpened; ///< Roteiro and Aula of every marker
    QHash<QString, LugarBloco> mAulaCodes; ///< where each was met first
    std::optional<QSet<double>> mCalcCodes; ///< of the Aulas of the last Roteiro, once they are asked for
    std::pair<int, bool> mLastLesson; ///< the Roteiro of the lesson looked at last, and whether it is an exercise
    MediaSearch mFigSearch, mSoundSearch;

    // Sections of a damaged file may overlap: each marker is sought in one pass over the text for all of them.
    std::string_view mView;
    ProximaMarca mCodRot{mView, "CODROT:"};
    ProximaMarca mFig{mView, "FIG:"};
    ProximaMarca mSom{mView, "SOM:"};
    ProximaMarca mDesc{mView, "<DESC>"};
    ProximaMarca mEndDesc{mView, "</DESC>"};
    ProximaMarca mNivel{mView, "NIVEL:"};
    ProximaMarca mDisc{mView, "DISC:"};
    ProximaMarca mBncc{mView, "BNCC:"};
    ProximaMarca mLinha{mView, "Linha ="};
    ProximaMarca mTipo{mView, "Tipo = "};
};

} // namespace quorel
