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

// Whether the case of this number is gone into where each leads to many others: every tenth under
// the sanitizers.
constexpr bool IsGoneInto(int number) {
    return number % (10 / Rounds(10)) == 0;
}

}  // namespace larder::test
