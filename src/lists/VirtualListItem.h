#pragma once

#include <cstdint>
#include <string>

namespace larder {

// One entry of a VirtualList: what a line shows, and what it stands for.
struct VirtualListItem {
    std::string Text;            // what the line shows
    std::string Tag;             // recipe: the number; category: its number string
    std::int32_t Num = 0;        // recipe number, 0 for lines that have none
    std::int16_t Icon = 0;       // small icon: 2 for a recipe with a picture, else 0
    std::string Key;             // unique in the list
    bool Bold = false;           // recipe: it has a picture; category: one of the fixed top entries
    std::int32_t Index = 0;      // place in the list, from 1
    std::int32_t ForeColor = 0;  // colour word, red in the low byte
};

}  // namespace larder
