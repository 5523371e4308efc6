#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace larder {

inline constexpr int kCodePageLatin = 1252;

// The code page of text in a font with the given \fcharset number; 0 when the font leaves it to
// the document, kCodePageLatin for numbers without a meaning.
int CodePageOfCharset(int charset);

// Turns the bytes of one code page into UTF-16. A multi-byte character may arrive a byte at a
// time: the decoder keeps its beginning.
class RtfDecoder {
  public:
    // A page that the system cannot decode is taken as kCodePageLatin.
    explicit RtfDecoder(int codePage);
    ~RtfDecoder();
    RtfDecoder(const RtfDecoder&) = delete;
    RtfDecoder& operator=(const RtfDecoder&) = delete;

    // Whether every byte is a character, the one in Units().
    bool IsSingleByte() const { return singleByte_; }
    const std::array<char16_t, 256>& Units() const { return units_; }

    // Adds the character that the byte ends, if it ends one, to `out`. Malformed input yields
    // U+FFFD for what cannot be part of a character.
    void Feed(unsigned char byte, std::u16string& out);
    // Forgets a character that was begun.
    void Reset() { begun_.clear(); }

  private:
    enum class Outcome : std::uint8_t { Character, Incomplete, Malformed };

    bool Open(int codePage);
    Outcome Decode(std::string_view bytes, std::u16string& out);

    std::array<char16_t, 256> units_{};
    std::array<bool, 256> leads_{};  // bytes that begin a longer character
    std::string begun_;
    void* converter_ = nullptr;  // an iconv_t, null for kCodePageLatin
    bool singleByte_ = true;
};

// The decoders of one document, opened when first asked for. Those that it gives out live as long
// as it does.
class RtfDecoders {
  public:
    RtfDecoder& Of(int codePage);

  private:
    std::map<int, std::unique_ptr<RtfDecoder>> decoders_;
};

}  // namespace larder
