#include "lists/NumberSet.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <utility>

namespace larder {

namespace {

// The number that a text spells as the program writes it: digits, the first of them not 0.
std::optional<std::int32_t> Canonical(std::string_view text) {
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || behind != end || number < 1 || text.front() == '0') return {};
    return number;
}

}  // namespace

void NumberSet::Assign(std::string numbers) {
    numbers_ = std::move(numbers);
    fresh_ = false;
}

bool NumberSet::Holds(const std::string& number) const {
    const std::optional<std::int32_t> wanted = Canonical(number);
    if (!wanted) return numbers_.find(" " + number + " ") != std::string::npos;
    if (!fresh_) Sort();
    return std::binary_search(sorted_.begin(), sorted_.end(), *wanted);
}

void NumberSet::Sort() const {
    sorted_.clear();
    const std::string_view text = numbers_;
    // Only what has a blank on both sides counts.
    std::size_t before = text.find(' ');
    while (before != std::string_view::npos) {
        const std::size_t behind = text.find(' ', before + 1);
        if (behind == std::string_view::npos) break;
        if (const auto number = Canonical(text.substr(before + 1, behind - before - 1))) {
            sorted_.push_back(*number);
        }
        before = behind;
    }
    std::sort(sorted_.begin(), sorted_.end());
    fresh_ = true;
}

}  // namespace larder
