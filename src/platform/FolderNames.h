#pragma once

#include <string>
#include <vector>

namespace larder {

// The names of what lies in a native folder, in no order, as the system spells them. None for a
// folder that is missing or cannot be read.
std::vector<std::string> NamesIn(const std::string& nativeFolder);

}  // namespace larder
