#pragma once

#include <ctime>

namespace larder::test {

// Seconds that the processor has worked for this program: what else runs on the machine, and a
// machine that stands still, do not count.
inline double ProcessorTime() {
    return static_cast<double>(std::clock()) / static_cast<double>(CLOCKS_PER_SEC);
}

}  // namespace larder::test
