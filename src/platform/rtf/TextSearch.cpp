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

}  // namespace

std::ptrdiff_t FindInText(std::string_view text, std::string_view what, std::size_t from,
                          std::size_t to, int options) {
    to = std::min(to, text.size());
    if (what.empty() || from > to || what.size() > to - from) return -1;
    const Table& fold = options & kFindMatchCase ? CaseKept() : CaseFolded();
    const auto same = [&fold](char a, char b) {
        return fold[static_cast<unsigned char>(a)] == fold[static_cast<unsigned char>(b)];
    };
    for (std::size_t at = from; at + what.size() <= to; ++at) {
        if (!same(text[at], what[0])) continue;
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
