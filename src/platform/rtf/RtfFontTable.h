#pragma once

#include <optional>
#include <string>
#include <unordered_map>

#include "platform/rtf/RichText.h"
#include "platform/rtf/RtfCodePages.h"
#include "platform/rtf/RtfSymbolFonts.h"

namespace larder {

// A font of the font table, ready for use.
struct RtfFont {
    RichFont font;
    int codePage = 0;  // 0: that of the document
    SymbolFont symbol = SymbolFont::None;
    int index = -1;  // in the fonts of the document that is being read; -1: not used so far
};

// Collects the font table of a document, and looks fonts up in it.
class RtfFontTable {
  public:
    // The words of an entry, in the order in which they come.
    void Begin(int number);
    void SetFamily(FontFamily family) { family_ = family; }
    void SetCharset(int charset) { charset_ = charset; }
    void SetCodePage(int codePage) { codePage_ = codePage; }
    void AddToName(char16_t unit);
    // Ends the entry under way, if one is.
    void End();

    int CodePage() const;       // of the entry under way, for its name; 0: that of the document
    RtfFont* Find(int number);  // null: no such font

  private:
    std::optional<int> number_;
    FontFamily family_ = FontFamily::Nil;
    std::optional<int> charset_;
    std::optional<int> codePage_;
    std::u16string name_;
    std::unordered_map<int, RtfFont> fonts_;
};

}  // namespace larder
