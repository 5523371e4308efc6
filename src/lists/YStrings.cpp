#include "lists/YStrings.h"

#include <cassert>
#include <cstddef>
#include <limits>
#include <utility>

#include "platform/Failure.h"
#include "platform/Text.h"

namespace larder {

namespace {

std::int32_t Length(std::string_view text) {
    return static_cast<std::int32_t>(text.size());
}

// The place of `what` at or behind `from`, 0 when it is not there. Nothing is found in an empty
// text, not even an empty one.
std::int32_t InStr(std::int32_t from, std::string_view text, std::string_view what) {
    if (from > Length(text)) return 0;
    const std::size_t found = text.find(what, static_cast<std::size_t>(from - 1));
    return found == std::string_view::npos ? 0 : static_cast<std::int32_t>(found) + 1;
}

// Characters from place `first` up to, not including, place `end`.
std::string Between(std::string_view text, std::int32_t first, std::int32_t end) {
    return std::string(
        text.substr(static_cast<std::size_t>(first - 1), static_cast<std::size_t>(end - first)));
}

std::string Behind(const std::string& text, std::int32_t place) {
    return text.substr(static_cast<std::size_t>(place));
}

std::int32_t Counted16(std::int32_t value) {
    if (value > std::numeric_limits<std::int16_t>::max()) {
        throw Failure(failure::Overflow, "DelTokens");
    }
    return value;
}

}  // namespace

std::string YStrings::DelTokens(std::string& Str, const std::string& fromStr,
                                std::int16_t NumOfTokens, const std::string& Delim) {
    const std::int32_t from = InStr(1, Str, fromStr);
    if (from == 0) return {};
    const std::int32_t wanted = Counted16(NumOfTokens + 1);
    Counted16(Length(Str));
    std::int32_t matches = 0;
    std::int32_t i = Counted16(from);
    for (; i <= Length(Str); ++i) {
        if (Str.compare(static_cast<std::size_t>(i - 1), Delim.size(), Delim) != 0) continue;
        if (++matches == wanted) break;
    }
    if (Counted16(i) > Length(Str)) throw Failure(failure::InvalidArgument, "DelTokens");
    Str = Between(Str, 1, from) + Behind(Str, i);
    return Str;
}

void YStrings::DelStrFromTo(std::string& Str, const std::string& fromStr,
                            const std::string& toStr) {
    const std::int32_t from = InStr(1, Str, fromStr);
    const std::int32_t to = InStr(1, Str, toStr);
    Str = Between(Str, 1, from + 1) + Behind(Str, to);
}

std::string YStrings::ReplaceStr(std::string& Str, const std::string& strToDelete,
                                 const std::string& strReplaceWith) {
    assert(!strToDelete.empty() && strReplaceWith.find(strToDelete) == std::string::npos);
    // The search goes on at the replacement, not behind it: its last characters may begin another
    // occurrence together with what follows.
    std::size_t place = Str.find(strToDelete);
    while (place != std::string::npos) {
        Str.replace(place, strToDelete.size(), strReplaceWith);
        place = Str.find(strToDelete, place);
    }
    return Str;
}

std::string YStrings::TokenFrom(std::string_view Str, std::int32_t& start,
                                std::string_view sDelim) {
    assert(!sDelim.empty());
    std::int32_t delimiter = InStr(start, Str, sDelim);
    while (delimiter == start) {
        start += Length(sDelim);
        delimiter = InStr(start, Str, sDelim);
    }
    if (delimiter == 0) {
        const std::int32_t end = Length(Str) + 1;
        std::string rest = start < end ? Between(Str, start, end) : std::string();
        start = end;
        return rest;
    }
    std::string token = Between(Str, start, delimiter);
    start = delimiter + Length(sDelim);
    return token;
}

std::string YStrings::GetToken(const std::string& Str, std::int32_t& start,
                               const std::string& sDelim) {
    if (start == 0) {
        if (Str != LastStr_ || LastPos_ == 0) LastPos_ = 1;
        start = LastPos_;
    }
    LastStr_ = Str;
    if (start < 1 || start > Length(Str)) return {};
    std::string token = TokenFrom(Str, start, sDelim);
    LastPos_ = start;
    return token;
}

std::string YStrings::GetTokenAfter(const std::string& Str, const std::string& sAfterToken,
                                    const std::string& sDelim, bool Continue) {
    const bool continuing =
        Continue && Str == AfterStr_ && sAfterToken == AfterToken_ && sDelim == AfterDelim_;
    if (!continuing) {
        const std::int32_t found = InStr(1, Str, sAfterToken);
        AfterPos_ = found + Length(sAfterToken);
        if (found == 0) return "0";
    }
    AfterStr_ = Str;
    AfterToken_ = sAfterToken;
    AfterDelim_ = sDelim;
    return GetToken(Str, AfterPos_, sDelim);
}

std::string YStrings::StrAnd(std::string& strA, std::string& strB, const std::string& strDelim) {
    assert(strDelim == " ");
    if (strB.size() < strA.size()) std::swap(strA, strB);
    strB = strDelim + strB + strDelim;
    std::string both;
    std::int32_t start = 1;
    for (;;) {
        const std::string token = strDelim + GetToken(strA, start, " ") + strDelim;
        if (token == "  ") return both;
        if (strB.find(token) != std::string::npos) both += token;
    }
}

std::int32_t YStrings::CountTokens(const std::string& Str, const std::string& sDelim) {
    std::int32_t count = 0;
    std::int32_t start = 0;
    while (!GetToken(Str, start, sDelim).empty())
        ++count;
    return count;
}

std::string YStrings::TrimSpaces(const std::string& strX) const {
    return std::string(TrimBlanks(strX));
}

}  // namespace larder
