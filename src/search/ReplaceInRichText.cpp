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
    const auto whatLength = static_cast<std::int32_t>(strWhat.size());
    const auto withLength = static_cast<std::int32_t>(strWith.size());
    rtb.SetSelStart(0);
    rtb.Span("\r\n\t", true, true);
    std::int32_t position = rtb.SelLength() + 1;
    std::int32_t replaced = 0;
    for (;;) {
        position = rtb.Find(strWhat, position + 1, -1, intFindOptions);
        const auto textLength = static_cast<std::int32_t>(rtb.Text().size());
        if (position == -1 || position + whatLength >= textLength) return replaced;
        if (!ItalicCounts(rtb, vItalic)) continue;
        rtb.SetSelStart(position);
        rtb.SetSelLength(whatLength);
        rtb.SetSelText(strWith);
        ++replaced;
        // Behind the new text, which may hold what is sought: that would go on for ever.
        position += MaxOf(withLength, 1) - 1;
    }
}

}  // namespace larder
