#pragma once

#include <string>

namespace larder {

// Where a control stood when its window was laid out at design size, in twips.
struct PossitionItem {
    float Top = 0;
    float Left = 0;
    float Height = 0;
    float Width = 0;
    std::string Name;
};

}  // namespace larder
