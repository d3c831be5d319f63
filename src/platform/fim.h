#pragma once

#include <functional>

namespace quorel {

/// What a test's endProcess throws so that encerraPrograma() does not return into the handlers below it. Deliberately
/// no std::exception: nothing but the test catches it.
struct FimDoPrograma
{
    int exitCode = 0;
};

/// Ends the process without returning into the handlers below: runs what beforeEnd() was given, leaves the bus,
/// flushes, and ends.
[[noreturn]] void encerraPrograma(int exitCode = 0);

/// Work for encerraPrograma(), in the order given: an open transaction is rolled back so. Failures inside are passed
/// over.
void beforeEnd(std::function<void()> work);

/// Forgets the work given; for tests.
void reiniciaFim();

} // namespace quorel
