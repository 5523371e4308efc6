// Reads any bytes as RTF, and checks that what is written for them is read as the same again, and
// that cutting and putting back changes nothing in the text.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

#include "platform/rtf/Rtf.h"

namespace {

void Require(bool holds, const char* what) {
    if (holds) return;
    std::cerr << "broken: " << what << std::endl;
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string rtf = "{\\rtf" + std::string(reinterpret_cast<const char*>(data), size);
    larder::RichText document = *larder::ReadRtf(rtf);
    const std::string text = document.Text();
    Require(text.size() == document.Length(), "a position for each character of the text");
    Require(document.Units().size() <= rtf.size(), "text in proportion to the input");

    const std::string once = larder::WriteRtf(document);
    const auto again = larder::ReadRtf(once);
    Require(again && again->Text() == text, "the same text after writing");
    Require(larder::WriteRtf(*again) == once, "the same bytes when written twice");

    const std::size_t from = size ? data[0] % (text.size() + 1) : 0;
    const std::size_t to = size ? from + data[size / 2] : 0;
    const larder::RichText part = document.Cut(from, to);
    document.Replace(from, to, part);
    Require(document.Text() == text, "the same text after putting a part back");
    return 0;
}
