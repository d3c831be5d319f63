#include "register/abertura.h"

#include <utility>

namespace quorel {

bool Abertura::abre(std::function<void()> consulta)
{
    const unsigned own = ++mVezes;
    mUltima = consulta; // ours may be replaced while it runs
    consulta();
    if (own == mVezes)
        return true;
    for (unsigned seen = own; seen != mVezes;) {
        seen = mVezes;
        const std::function<void()> newest = mUltima;
        newest();
    }
    return false;
}

} // namespace quorel
