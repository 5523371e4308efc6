#pragma once

#include <cstddef>
#include <string>

namespace larder {

// Where the title stands in the text of a recipe, or of a box for titles: behind white space, up
// to the end of its line or to a tab. Nothing but white space has a title of no length.
struct TitleLine {
    std::size_t From = 0;
    std::size_t Length = 0;
};
TitleLine TitleLineOf(const std::string& text);

}  // namespace larder
