#pragma once

#include <cstdint>
#include <string>

namespace larder {

// A number as it stands in a number string, " 4 5 6 ": by its two blanks 5 is not found in 15.
inline std::string Blanked(std::int32_t number) {
    return " " + std::to_string(number) + " ";
}

}  // namespace larder
