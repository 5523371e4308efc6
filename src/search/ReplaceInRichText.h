#pragma once

#include <cstdint>
#include <string>

namespace larder {

class RichTextBox;

// Any state of italics, for ReplaceInRichText.
inline constexpr std::int16_t AnyItalic = -2;

// Replaces `strWhat` by `strWith` in a box, found with the options of RichTextBox::Find, behind the
// first line: a recipe's title is never touched. `vItalic` is -1 for what stands in italics, 0 for
// what does not, AnyItalic for both; what is partly italic counts for AnyItalic alone. An
// occurrence that ends with the text is left alone. The new text is not searched again. Returns how
// many were replaced.
std::int32_t ReplaceInRichText(RichTextBox& rtb, const std::string& strWhat,
                               const std::string& strWith, std::int16_t intFindOptions,
                               std::int16_t vItalic);

}  // namespace larder
