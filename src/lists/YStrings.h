#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace larder {

// Operations on delimited text. Positions count from 1, 0 is "not found"; comparisons are exact,
// byte by byte. GetToken, GetTokenAfter and CountTokens keep state between calls, so everybody who
// walks a text of his own takes an instance of his own.
//
// A non-const reference is an argument that the procedure changes.
class YStrings {
  public:
    // Deletes from the first `fromStr` through the first character of the delimiter that ends the
    // `NumOfTokens` tokens behind it, and returns what `Str` has become. Without `fromStr` returns
    // an empty text and leaves `Str` alone. Failures, with nothing changed: 5 when there are fewer
    // delimiters, 6 when a position does not fit into 16 bits.
    std::string DelTokens(std::string& Str, const std::string& fromStr, std::int16_t NumOfTokens,
                          const std::string& Delim);

    // Deletes from behind the first character of the first `fromStr` through the first character
    // of the first `toStr`; what is not found counts as standing at 0.
    void DelStrFromTo(std::string& Str, const std::string& fromStr, const std::string& toStr);

    // Replaces every `strToDelete`, those too that a replacement has made, and returns what `Str`
    // has become. `strToDelete` is not empty and not part of `strReplaceWith`.
    std::string ReplaceStr(std::string& Str, const std::string& strToDelete,
                           const std::string& strReplaceWith);

    // The next stretch of `Str` between delimiters, which is not empty, from `start` on; moves
    // `start` behind the delimiter that ends it. An empty text when there is none left. From a
    // `start` of 0 the walk goes on where the last call on the same text has ended, or begins at 1
    // on another text. `sDelim` is not empty.
    std::string GetToken(const std::string& Str, std::int32_t& start, const std::string& sDelim);

    // The token behind the first `sAfterToken`, and with `Continue` and the same texts as before
    // the one behind the token that was returned last. The text "0" without `sAfterToken`.
    std::string GetTokenAfter(const std::string& Str, const std::string& sAfterToken,
                              const std::string& sDelim, bool Continue);

    // The tokens that stand in both lists, in the order of the shorter, each with a delimiter on
    // both sides. Swaps the arguments when `strB` is the shorter, and leaves `strB` with a
    // delimiter more at both ends. `strDelim` is a single blank.
    std::string StrAnd(std::string& strA, std::string& strB, const std::string& strDelim);

    // How many tokens follow, walking as GetToken does from a `start` of 0: right after a walk
    // over the same text there are none left, and the count is 0.
    std::int32_t CountTokens(const std::string& Str, const std::string& sDelim);

    // Without the blanks of both ends; tabs and line ends stay.
    std::string TrimSpaces(const std::string& strX) const;

    // GetToken for a `start` within the text, without the memory of the last call: for long lists,
    // of which GetToken would take a copy with every token.
    static std::string TokenFrom(std::string_view Str, std::int32_t& start,
                                 std::string_view sDelim);

  private:
    std::string LastStr_;       // the text of the last GetToken
    std::int32_t LastPos_ = 0;  // where it ended
    std::int32_t AfterPos_ = 0;
    std::string AfterStr_;
    std::string AfterToken_;
    std::string AfterDelim_;
};

}  // namespace larder
