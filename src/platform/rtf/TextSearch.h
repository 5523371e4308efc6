#pragma once

#include <cstddef>
#include <string_view>

namespace larder {

// The options of FindInText, to be added.
inline constexpr int kFindWholeWord = 2;
inline constexpr int kFindMatchCase = 4;

// The first place of `what` in the Windows-1252 text that begins at `from` or later and ends at
// `to` or before, counted from 0; -1 when there is none. A `to` beyond the end is the end. An
// empty `what` is found nowhere. Without kFindMatchCase, letters match without regard to case,
// accented ones too. With kFindWholeWord neither neighbour of the place may be a letter or digit.
std::ptrdiff_t FindInText(std::string_view text, std::string_view what, std::size_t from,
                          std::size_t to, int options);

struct TextRange {
    std::size_t from = 0;
    std::size_t to = 0;
};

// The longest run next to `from` (behind it when `forward`, else before it) made of characters of
// the set only, or, with `negate`, of characters outside it.
TextRange SpanOf(std::string_view text, std::size_t from, std::string_view characterSet,
                 bool forward, bool negate);

}  // namespace larder
