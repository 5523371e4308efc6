#pragma once

#include <cstdint>

#include "platform/Failure.h"
#include "platform/Text.h"

// What the lists share: searching numbers that stand in ascending order.
namespace larder {

// The place of `num` within the places L to U, or minus the place where it would have to be put.
// -1 when U is 0, 0 for other bounds below 1. `numberAt(place)` gives the number at a place; any
// failure, one of the list or a distance to the middle of more than 16 bits, ends the search
// with 0.
template <typename NumberAt>
std::int32_t SearchSorted(std::int32_t num, std::int32_t L, std::int32_t U, NumberAt&& numberAt) {
    if (U == 0) return -1;
    if (L < 1 || U < 1) return 0;
    std::int32_t place = 0;
    Ignoring([&] {
        // The bounds overlap in the middle, so that two places are left at the end.
        while (L < U - 1) {
            const std::int32_t middle = L + RoundToInteger((double{1} * U - L) / 2);
            const std::int32_t found = numberAt(middle);
            if (found == num) {
                place = middle;
                return;
            }
            (found < num ? L : U) = middle;
        }
        const std::int32_t atL = numberAt(L);
        if (atL == num) {
            place = L;
            return;
        }
        const std::int32_t atU = numberAt(U);
        place = atU == num ? U : atU < num ? -(U + 1) : atL > num ? -L : -(L + 1);
    });
    return place;
}

// Where a walk over the numbers above one begins, given what SearchSorted said of that number in
// the whole list of `count` places. -1 when nothing stands above it.
inline std::int32_t FirstPlaceAbove(std::int32_t searchResult, std::int32_t count) {
    const bool found = searchResult >= 1;
    const std::int32_t place = found ? searchResult : -searchResult;
    if (place > count || (found && place == count)) return -1;
    return found ? place + 1 : place;
}

}  // namespace larder
