#pragma once

namespace larder::test {

// How often a random test goes round. The sanitizers slow every round down many times and find in
// a part of them what they find in all: those that count run in the plain build.
constexpr int Rounds(int plain) {
#ifdef LARDER_SANITIZED
    return plain / 10;
#else
    return plain;
#endif
}

}  // namespace larder::test
