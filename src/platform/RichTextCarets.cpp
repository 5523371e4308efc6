#include "platform/RichTextCarets.h"

#include <algorithm>
#include <utility>

namespace larder {

void RichTextCarets::Clear() {
    *this = {};
}

void RichTextCarets::Changes(int before, std::optional<int> after) {
    if (!underWay_) underWay_.emplace(Ends{before, after});
    underWay_->after = after;
}

void RichTextCarets::Done(int steps) {
    while (!made_.empty() && made_.back().to > steps_)
        made_.pop_back();
    if (underWay_) made_.push_back({steps_, steps, *std::exchange(underWay_, std::nullopt)});
    steps_ = steps;
}

std::optional<int> RichTextCarets::WalkedTo(int steps) {
    const int left = std::exchange(steps_, steps);
    const auto walked = [&](const Step& step) {
        return step.from == std::min(left, steps) && step.to == std::max(left, steps);
    };
    const auto step = std::find_if(made_.begin(), made_.end(), walked);
    if (step == made_.end()) return std::nullopt;
    return steps < left ? step->ends.before : step->ends.after;
}

}  // namespace larder
