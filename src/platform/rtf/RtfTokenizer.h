#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace larder {

struct RtfToken {
    enum class Kind : std::uint8_t {
        End,  // of the input
        GroupOpen,
        GroupClose,
        Text,     // text: bytes from 0x20 on, without braces and backslashes
        Tab,      // a tab byte standing in the text
        Word,     // text: the letters of a control word; number, hasNumber
        Symbol,   // text: the one character behind a backslash
        HexByte,  // number: the byte that \'hh stands for
        Binary    // text: the bytes behind \bin
    };

    Kind kind = Kind::End;
    bool hasNumber = false;
    std::int32_t number = 0;  // kept within +-kMostRtfNumber
    std::string_view text;    // into the input
};

inline constexpr std::int32_t kMostRtfNumber = 1'000'000'000;

// Divides RTF into tokens. Line ends and other control bytes, which mean nothing in RTF, are
// passed over. Never fails: a damaged \'hh is a Symbol without a meaning.
class RtfTokenizer {
  public:
    explicit RtfTokenizer(std::string_view rtf) : rtf_(rtf) {}

    RtfToken Next();

    // Passes over what is left of the group that the last token stands in, groups within it
    // included, however deep. The next token is the brace that closes it.
    void SkipGroup();

  private:
    RtfToken Escape();
    RtfToken Word();
    RtfToken Hex();
    std::string_view Take(std::size_t count);

    std::string_view rtf_;
    std::size_t at_ = 0;
};

}  // namespace larder
