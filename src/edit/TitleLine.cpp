#include "edit/TitleLine.h"

#include <algorithm>

namespace larder {

TitleLine TitleLineOf(const std::string& text) {
    const std::size_t from = text.find_first_not_of(" \r\n\t");
    if (from == std::string::npos) return {};
    return {from, std::min(text.find_first_of("\r\n\t", from), text.size()) - from};
}

}  // namespace larder
