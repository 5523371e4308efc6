#pragma once

#include <string>

namespace larder {

// The sound of a button as the bytes of a wave file: one channel, 16 bits, 22,050 samples a
// second, 40 milliseconds; a short knock on wood.
std::string ClickSound();

}  // namespace larder
