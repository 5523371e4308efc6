#pragma once

#include <vector>

namespace larder {

// Where a picture gives way when it is shown in another size than its own: the spans, in the
// picture's own pixels and in order, take up the difference, and what lies between them keeps its
// size. So the border of a sheet stays as wide as it was drawn, and a fish between two rules keeps
// its shape. A direction without spans is stretched as a whole, and so is a picture that is smaller
// than what keeps its size.
struct Elastic {
    struct Span {
        float From = 0;
        float To = 0;
    };
    std::vector<Span> Across;
    std::vector<Span> Down;
};

}  // namespace larder
