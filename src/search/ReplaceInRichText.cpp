#include "search/ReplaceInRichText.h"

#include <optional>

#include "platform/RichTextBox.h"
#include "search/SearchText.h"

namespace larder {

namespace {

bool ItalicCounts(const RichTextBox& rtb, std::int16_t vItalic) {
    if (vItalic == AnyItalic) return true;
    const std::optional<bool> italic = rtb.SelItalic();
    return italic.has_value() && vItalic == (*italic ? -1 : 0);
}

}  // namespace

std::int32_t ReplaceInRichText(RichTextBox& rtb, const std::string& strWhat,
                               const std::string& strWith, std::int16_t intFindOptions,
                               std::int16_t vItalic) {
    rtb.SetSelStart(0);
    rtb.Span("\r\n\t", true, true);
    std::int32_t position = rtb.SelLength() + 1;
    auto textLength = static_cast<std::int32_t>(rtb.Text().size());
    std::int32_t replaced = 0;
    for (;;) {
        position = rtb.Find(strWhat, position + 1, -1, intFindOptions);
        // What a text takes in the box is not its length: a lone CR or LF counts two there.
        const std::int32_t whatLength = rtb.SelLength();
        if (position == -1 || position + whatLength >= textLength) return replaced;
        if (!ItalicCounts(rtb, vItalic)) continue;
        rtb.SetSelText(strWith);
        const std::int32_t withLength = rtb.SelStart() - position;
        textLength += withLength - whatLength;
        ++replaced;
        // Behind the new text, which may hold what is sought: that would go on for ever.
        position += MaxOf(withLength, 1) - 1;
    }
}

}  // namespace larder
