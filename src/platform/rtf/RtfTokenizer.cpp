#include "platform/rtf/RtfTokenizer.h"

#include <algorithm>
#include <array>

namespace larder {

namespace {

constexpr std::array<bool, 256> MakeTextBytes() {
    std::array<bool, 256> text{};
    for (std::size_t i = 0x20; i < 256; ++i)
        text[i] = i != '\\' && i != '{' && i != '}';
    return text;
}
constexpr std::array<bool, 256> kTextBytes = MakeTextBytes();

bool IsText(char c) {
    return kTextBytes[static_cast<unsigned char>(c)];
}
bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

int HexValue(char c) {
    if (IsDigit(c)) return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

RtfToken Plain(RtfToken::Kind kind, std::string_view text = {}) {
    RtfToken token;
    token.kind = kind;
    token.text = text;
    return token;
}

}  // namespace

std::string_view RtfTokenizer::Take(std::size_t count) {
    const std::string_view taken = rtf_.substr(at_, count);
    at_ += taken.size();
    return taken;
}

RtfToken RtfTokenizer::Next() {
    while (at_ < rtf_.size()) {
        const std::size_t start = at_;
        while (at_ < rtf_.size() && IsText(rtf_[at_]))
            ++at_;
        if (at_ > start) {
            return Plain(RtfToken::Kind::Text, rtf_.substr(start, at_ - start));
        }
        switch (rtf_[at_++]) {
            case '{':
                return Plain(RtfToken::Kind::GroupOpen);
            case '}':
                return Plain(RtfToken::Kind::GroupClose);
            case '\t':
                return Plain(RtfToken::Kind::Tab);
            case '\\':
                if (at_ < rtf_.size()) return Escape();
                break;
            default:
                break;
        }
    }
    return {};
}

RtfToken RtfTokenizer::Escape() {
    if (IsLetter(rtf_[at_])) return Word();
    if (rtf_[at_] != '\'') return Plain(RtfToken::Kind::Symbol, Take(1));
    ++at_;
    return Hex();
}

RtfToken RtfTokenizer::Word() {
    RtfToken token;
    token.kind = RtfToken::Kind::Word;
    const std::size_t start = at_;
    while (at_ < rtf_.size() && IsLetter(rtf_[at_]))
        ++at_;
    token.text = rtf_.substr(start, at_ - start);

    const bool negative = at_ + 1 < rtf_.size() && rtf_[at_] == '-' && IsDigit(rtf_[at_ + 1]);
    if (negative) ++at_;
    std::int64_t number = 0;
    for (; at_ < rtf_.size() && IsDigit(rtf_[at_]); ++at_) {
        token.hasNumber = true;
        number = std::min<std::int64_t>(number * 10 + (rtf_[at_] - '0'), kMostRtfNumber);
    }
    token.number = static_cast<std::int32_t>(negative ? -number : number);
    if (at_ < rtf_.size() && rtf_[at_] == ' ') ++at_;

    if (token.text == "bin") {
        token.kind = RtfToken::Kind::Binary;
        token.text = Take(static_cast<std::size_t>(std::max(token.number, 0)));
    }
    return token;
}

RtfToken RtfTokenizer::Hex() {
    const int high = at_ < rtf_.size() ? HexValue(rtf_[at_]) : -1;
    const int low = at_ + 1 < rtf_.size() ? HexValue(rtf_[at_ + 1]) : -1;
    if (high < 0 || low < 0) return Plain(RtfToken::Kind::Symbol, rtf_.substr(at_ - 1, 1));
    at_ += 2;
    RtfToken token;
    token.kind = RtfToken::Kind::HexByte;
    token.number = high * 16 + low;
    return token;
}

void RtfTokenizer::SkipGroup() {
    for (std::size_t depth = 0; at_ < rtf_.size();) {
        const char c = rtf_[at_];
        if (c == '}' && depth-- == 0) return;
        ++at_;
        if (c == '{') ++depth;
        if (c != '\\' || at_ == rtf_.size()) continue;
        if (IsLetter(rtf_[at_])) {
            Word();  // for the bytes behind \bin
        } else {
            ++at_;
        }
    }
}

}  // namespace larder
