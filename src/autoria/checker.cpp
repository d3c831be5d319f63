#include "autoria/checker.h"

#include "autoria/blockcheck.h"

#include <algorithm>

namespace quorel {

/// Lines and columns of a file, one character a byte.
static std::function<Place(qsizetype)> placesIn(const QByteArray &edb)
{
    auto ends = std::make_shared<std::vector<qsizetype>>(); // of the lines, found when the first place is asked for
    return [ends, &edb](qsizetype at) {
        if (ends->empty()) {
            for (qsizetype end = edb.indexOf('\n'); end >= 0; end = edb.indexOf('\n', end + 1))
                ends->push_back(end);
            ends->push_back(edb.size());
        }
        const auto line = std::ranges::lower_bound(*ends, at) - ends->begin();
        const qsizetype begin = line == 0 ? 0 : (*ends)[std::size_t(line) - 1] + 1;
        return Place{int(line) + 1, int(at - begin) + 1};
    };
}

Checker::Checker(bool withMedia) : mWithMedia(withMedia), mMemory(std::make_shared<CheckMemory>()) { }

Findings Checker::check(const BlockFile &file, const QByteArray &edb)
{
    return BlockCheck(file, edb, mWithMedia, *mMemory, placesIn(edb), file.path).run();
}

Findings Checker::check(const MadeBlock &made, const BlockFile &destination, const QString &sourcePath)
{
    Findings all = made.findings;
    Findings found = BlockCheck(
        destination, made.edb, mWithMedia, *mMemory, [&made](qsizetype at) { return made.places.at(at); }, sourcePath)
                         .run();
    all.insert(all.end(), found.begin(), found.end());
    sortByPlace(all);
    return all;
}

} // namespace quorel
