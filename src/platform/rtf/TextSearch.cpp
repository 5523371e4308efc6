#include "platform/rtf/TextSearch.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/Text.h"

namespace larder {

namespace {

using Table = std::array<unsigned char, 256>;

Table Identity() {
    Table table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = static_cast<unsigned char>(i);
    return table;
}

const Table& CaseKept() {
    static const Table table = Identity();
    return table;
}

const Table& CaseFolded() {
    static const Table table = [] {
        Table folded = Identity();
        for (unsigned char& c : folded) {
            c = static_cast<unsigned char>(LowerCase(std::string(1, static_cast<char>(c)))[0]);
        }
        return folded;
    }();
    return table;
}

bool IsLetterOrDigit(char c) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0xC0) return byte != 0xD7 && byte != 0xF7;
    if (byte >= 0x80) {
        return std::string_view("\x83\x8A\x8C\x8E\x9A\x9C\x9E\x9F\xAA\xB5\xBA").find(c) !=
               std::string_view::npos;
    }
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= 'a' && byte <= 'z');
}

bool StandsAlone(std::string_view text, std::size_t from, std::size_t to) {
    return (from == 0 || !IsLetterOrDigit(text[from - 1])) &&
           (to == text.size() || !IsLetterOrDigit(text[to]));
}

// Tells where a text cannot be found by its first two characters, a block of places in one go.
class BeginningFilter {
  public:
    BeginningFilter(std::string_view what, const Table& fold)
        : first_(FormsOf(what[0], fold)),
          second_(FormsOf(what[1 % what.size()], fold)),
          gap_(what.size() > 1 ? 1 : 0) {}

    // The first block from `at` on that may hold the text, or `behind`.
    std::size_t PassOver(std::string_view text, std::size_t at, std::size_t behind) const {
        constexpr std::size_t kBlock = 16;
        for (; at + kBlock <= behind; at += kBlock) {
            unsigned char hits = 0;
            for (std::size_t i = 0; i < kBlock; ++i) {
                const char a = text[at + i];
                const char b = text[at + i + gap_];
                const int first = int{a == first_[0]} | int{a == first_[1]};
                const int second = int{b == second_[0]} | int{b == second_[1]};
                hits |= static_cast<unsigned char>(first & second);
            }
            if (hits != 0) return at + FirstHit(text, at);
        }
        return at;
    }

  private:
    using Forms = std::array<char, 2>;

    // A letter and its other case; the code page has no third form of any.
    static Forms FormsOf(char c, const Table& fold) {
        Forms forms{c, c};
        const unsigned char folded = fold[static_cast<unsigned char>(c)];
        for (std::size_t other = 0; other < fold.size(); ++other) {
            if (fold[other] == folded && static_cast<char>(other) != c) {
                forms[1] = static_cast<char>(other);
            }
        }
        return forms;
    }

    std::size_t FirstHit(std::string_view text, std::size_t at) const {
        std::size_t i = 0;
        const auto is = [](char c, const Forms& forms) { return c == forms[0] || c == forms[1]; };
        while (!is(text[at + i], first_) || !is(text[at + i + gap_], second_))
            ++i;
        return i;
    }

    Forms first_;
    Forms second_;
    std::size_t gap_;
};

}  // namespace

std::ptrdiff_t FindInText(std::string_view text, std::string_view what, std::size_t from,
                          std::size_t to, int options) {
    to = std::min(to, text.size());
    if (what.empty() || from > to || what.size() > to - from) return -1;
    const Table& fold = options & kFindMatchCase ? CaseKept() : CaseFolded();
    const auto same = [&fold](char a, char b) {
        return fold[static_cast<unsigned char>(a)] == fold[static_cast<unsigned char>(b)];
    };
    const BeginningFilter filter(what, fold);
    const std::size_t behind = to - what.size() + 1;
    for (std::size_t at = from; at < behind; ++at) {
        at = filter.PassOver(text.substr(0, to), at, behind);
        if (at == behind) break;
        if (!std::equal(what.begin(), what.end(), text.data() + at, same)) continue;
        if (options & kFindWholeWord && !StandsAlone(text, at, at + what.size())) continue;
        return static_cast<std::ptrdiff_t>(at);
    }
    return -1;
}

TextRange SpanOf(std::string_view text, std::size_t from, std::string_view characterSet,
                 bool forward, bool negate) {
    from = std::min(from, text.size());
    std::array<bool, 256> member{};
    for (const char c : characterSet)
        member[static_cast<unsigned char>(c)] = true;
    const auto belongs = [&](std::size_t at) {
        return member[static_cast<unsigned char>(text[at])] != negate;
    };
    TextRange range{from, from};
    if (forward) {
        while (range.to < text.size() && belongs(range.to))
            ++range.to;
    } else {
        while (range.from > 0 && belongs(range.from - 1))
            --range.from;
    }
    return range;
}

}  // namespace larder
