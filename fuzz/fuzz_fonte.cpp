// Block files and their sources. Any bytes, taken for a block file, must come back from their source; taken for a
// source, or put behind one, they are read and checked to the end.
#include "autoria/checker.h"

#include <cstdlib>

using namespace quorel;
using namespace Qt::StringLiterals;

static void checkSource(const QByteArray &source)
{
    const BlockFile file = blockFile(u"F1/0226MAF1.edb"_s);
    const MadeBlock made = makeBlock(source, u"f.txt"_s, file);
    (void)Checker(false).check(made, file, u"f.txt"_s);
    if (made.understood && makeBlock(sourceOfBlock(made.edb), {}, {}).edb != made.edb)
        std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const MadeBlock again = makeBlock(sourceOfBlock(bytes), {}, {});
    if (!again.understood || again.edb != bytes)
        std::abort();
    (void)Checker(false).check(blockFile(u"F1/0226MAF1.edb"_s), bytes);
    checkSource(bytes);
    checkSource(exampleSource(Kind::Ordene) + bytes);
    return 0;
}
