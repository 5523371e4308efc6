#include "platform/rtf/Rtf.h"
#include "platform/rtf/RtfInterpreter.h"

namespace larder {

std::optional<RichText> ReadRtf(std::string_view rtf) {
    if (!rtf.starts_with("{\\rtf")) return std::nullopt;
    return RtfInterpreter(rtf).Run();
}

std::string RtfToPlainUtf8(std::string_view bytes) {
    const std::optional<RichText> document = ReadRtf(bytes);
    std::string text = document ? document->PlainUtf8() : RichText::FromPlain(bytes).PlainUtf8();
    if (!text.empty() && text.back() != '\n') text += '\n';
    return text;
}

}  // namespace larder
