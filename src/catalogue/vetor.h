#pragma once

#include "platform/erro.h"

#include <utility>
#include <vector>

namespace quorel {

/// An array with bounds 0 to an upper one, as the module variables and records have them. Until it is dimensioned it
/// has no bounds at all. Every index is checked.
/// Only the elements up to the last one ever written take memory: a damaged file may announce millions.
template <typename T>
class Vetor final
{
public:
    Vetor() = default;

    /// Bounds 0 to `upper`, all elements empty again. @param upper  0 or more
    void dimension(int upper)
    {
        mElements.clear();
        mUpper = upper;
    }

    bool isDimensioned() const { return mUpper >= 0; }

    /// The last index. @throws ErroExecucao 9 when the array was never dimensioned
    int upperBound() const
    {
        if (mUpper < 0)
            throw ErroExecucao(kFalhaIndice);
        return mUpper;
    }

    /// Reading changes nothing. @throws ErroExecucao 9 outside the bounds
    const T &operator[](int index) const
    {
        check(index);
        return std::size_t(index) < mElements.size() ? mElements[std::size_t(index)] : empty();
    }

    /// An element to be written; references taken before no longer hold. @throws ErroExecucao 9 outside the bounds
    T &edit(int index)
    {
        check(index);
        if (std::size_t(index) >= mElements.size())
            mElements.resize(std::size_t(index) + 1);
        return mElements[std::size_t(index)];
    }

    bool operator==(const Vetor &other) const
    {
        if (mUpper != other.mUpper)
            return false;
        for (int i = 0; i <= mUpper; ++i) {
            if (std::size_t(i) >= mElements.size() && std::size_t(i) >= other.mElements.size())
                return true;
            if (!((*this)[i] == other[i]))
                return false;
        }
        return true;
    }

private:
    static const T &empty()
    {
        static const T none{};
        return none;
    }

    void check(int index) const
    {
        if (index < 0 || index > mUpper)
            throw ErroExecucao(kFalhaIndice);
    }

    int mUpper = -1;
    std::vector<T> mElements;
};

} // namespace quorel
