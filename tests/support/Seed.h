#pragma once

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

namespace larder::test {

// The seed of a random test: a new one each time, printed, so that LARDER_TEST_SEED can bring a
// failure back.
inline std::uint32_t Seed() {
    const char* fixed = std::getenv("LARDER_TEST_SEED");
    const std::uint32_t seed =
        fixed ? static_cast<std::uint32_t>(std::stoul(fixed)) : std::random_device{}();
    std::cout << "LARDER_TEST_SEED=" << seed << std::endl;
    return seed;
}

}  // namespace larder::test
