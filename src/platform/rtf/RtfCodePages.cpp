#include "platform/rtf/RtfCodePages.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>

#include "platform/Text.h"
#include "platform/rtf/Utf.h"

namespace larder {

namespace {

constexpr char16_t kReplacement = 0xFFFD;
constexpr std::size_t kLongestCharacter = 4;  // bytes, in any of the pages
constexpr std::size_t kMostDecoders = 64;     // of one document; later pages are taken as Latin

struct CharsetPage {
    int charset;
    int codePage;
};
constexpr CharsetPage kCharsetPages[] = {
    {0, 1252},   {1, 0},      {2, 1252},   {77, 10000}, {78, 932},   {79, 949},   {80, 936},
    {81, 950},   {82, 950},   {128, 932},  {129, 949},  {130, 1361}, {134, 936},  {136, 950},
    {161, 1253}, {162, 1254}, {163, 1258}, {177, 1255}, {178, 1256}, {179, 1256}, {180, 1256},
    {181, 1255}, {186, 1257}, {204, 1251}, {222, 874},  {238, 1250}, {254, 437},  {255, 850},
};

// What the system's converter calls a page, where that is not "CP" and its number.
std::string ConverterName(int codePage) {
    switch (codePage) {
        case 708:
            return "ASMO_449";
        case 819:
            return "ISO-8859-1";
        case 949:
            return "UHC";
        case 950:
            return "BIG5-HKSCS";
        case 1361:
            return "JOHAB";
        case 10000:
            return "MACINTOSH";
        case 10007:
            return "MAC-CYRILLIC";
        case 10029:
            return "MAC-CENTRALEUROPE";
        case 20866:
            return "KOI8-R";
        case 21866:
            return "KOI8-U";
        case 54936:
            return "GB18030";
        case 65001:
            return "UTF-8";
        default:
            break;
    }
    if (codePage > 28590 && codePage <= 28606)
        return "ISO-8859-" + std::to_string(codePage - 28590);
    return "CP" + std::to_string(codePage);
}

}  // namespace

int CodePageOfCharset(int charset) {
    const auto* found = std::find_if(std::begin(kCharsetPages), std::end(kCharsetPages),
                                     [&](const CharsetPage& p) { return p.charset == charset; });
    return found == std::end(kCharsetPages) ? kCodePageLatin : found->codePage;
}

RtfDecoder::RtfDecoder(int codePage) {
    if (codePage != kCodePageLatin && Open(codePage)) return;
    for (std::size_t i = 0; i < units_.size(); ++i) {
        units_[i] = UnicodeOf(static_cast<unsigned char>(i));
    }
}

RtfDecoder::~RtfDecoder() {
    if (converter_) iconv_close(static_cast<iconv_t>(converter_));
}

bool RtfDecoder::Open(int codePage) {
    const iconv_t converter = iconv_open("UTF-16LE", ConverterName(codePage).c_str());
    if (converter == reinterpret_cast<iconv_t>(-1)) return false;
    converter_ = converter;
    for (std::size_t i = 0; i < units_.size(); ++i) {
        // All pages of RTF agree with ASCII, though some converters have a yen sign in it.
        units_[i] = static_cast<char16_t>(i);
        if (i < 0x80) continue;
        std::u16string decoded;
        const char byte = static_cast<char>(i);
        const Outcome outcome = Decode(std::string_view(&byte, 1), decoded);
        leads_[i] = outcome == Outcome::Incomplete;
        singleByte_ = singleByte_ && !leads_[i];
        units_[i] = decoded.size() == 1 ? decoded[0] : kReplacement;
    }
    return true;
}

RtfDecoder::Outcome RtfDecoder::Decode(std::string_view bytes, std::u16string& out) {
    auto* const converter = static_cast<iconv_t>(converter_);
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    char* in = const_cast<char*>(bytes.data());
    std::size_t inLeft = bytes.size();
    std::array<char, 32> buffer{};
    char* to = buffer.data();
    std::size_t toLeft = buffer.size();
    if (iconv(converter, &in, &inLeft, &to, &toLeft) == static_cast<std::size_t>(-1)) {
        return errno == EINVAL ? Outcome::Incomplete : Outcome::Malformed;
    }
    // Some converters hold a character back, in case an accent follows, until told to go on.
    iconv(converter, nullptr, nullptr, &to, &toLeft);
    for (const char* c = buffer.data(); c < to; c += 2) {
        out += static_cast<char16_t>(static_cast<unsigned char>(c[0]) |
                                     static_cast<unsigned char>(c[1]) << 8);
    }
    return Outcome::Character;
}

void RtfDecoder::Feed(unsigned char byte, std::u16string& out) {
    if (begun_.empty() && !leads_[byte]) {
        out += units_[byte];
        return;
    }
    begun_ += static_cast<char>(byte);
    const Outcome outcome = begun_.size() > 1 ? Decode(begun_, out) : Outcome::Incomplete;
    if (outcome == Outcome::Incomplete && begun_.size() < kLongestCharacter) return;
    begun_.clear();
    if (outcome == Outcome::Character) return;
    out += kReplacement;
    if (byte < 0x80) out += static_cast<char16_t>(byte);
}

RtfDecoder& RtfDecoders::Of(int codePage) {
    const bool isNew = !decoders_.contains(codePage);
    if (isNew && decoders_.size() >= kMostDecoders) codePage = kCodePageLatin;
    std::unique_ptr<RtfDecoder>& decoder = decoders_[codePage];
    if (!decoder) decoder = std::make_unique<RtfDecoder>(codePage);
    return *decoder;
}

}  // namespace larder
