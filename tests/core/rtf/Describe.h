#pragma once

#include <cstdio>
#include <string>

#include "platform/rtf/RichText.h"
#include "platform/rtf/Utf.h"

namespace larder::test {

inline std::string ColourName(std::uint32_t colour) {
    char name[8];
    std::snprintf(name, sizeof name, "%06x", colour & 0xFFFFFF);
    return name;
}

inline std::string DescribeChars(const RichText& document, const CharFormat& format) {
    std::string text;
    const auto add = [&text](const std::string& word) { text += (text.empty() ? "" : " ") + word; };
    if (format.bold) add("b");
    if (format.italic) add("i");
    if (format.underline) add("ul");
    if (format.strike) add("strike");
    if (format.script == Script::Super) add("super");
    if (format.script == Script::Sub) add("sub");
    if (format.halfPoints != 24) add("fs" + std::to_string(format.halfPoints));
    if (format.colour != kAutomaticColour) add("bgr=" + ColourName(format.colour));
    if (format.highlight != kAutomaticColour) add("on=" + ColourName(format.highlight));
    const RichFont& font = document.Fonts()[format.font];
    if (font.name != "Times New Roman") add("font=" + font.name);
    if (font.charset != charset::Ansi) add("charset=" + std::to_string(font.charset));
    return text;
}

inline std::string DescribePara(const ParaFormat& format) {
    std::string text;
    const auto add = [&text](const std::string& word, int value) {
        if (value != 0) text += word + std::to_string(value) + " ";
    };
    const char* const alignments[] = {"", "right ", "centre ", "justify "};
    text += alignments[static_cast<int>(format.alignment)];
    add("li", format.left);
    add("ri", format.right);
    add("fi", format.firstLine);
    add("sb", format.spaceBefore);
    add("sa", format.spaceAfter);
    const char* const tabs[] = {"tx", "tqr", "tqc", "tqdec"};
    for (const TabStop& tab : format.tabs)
        add(tabs[static_cast<int>(tab.kind)], tab.position);
    if (!text.empty()) text.pop_back();
    return text;
}

// A document in one line, for comparing: "[centre]<b fs30>Title|plain". Layouts and looks that
// are the usual ones are left out ("<>" takes the usual look up again); | is a paragraph's end,
// / a line break within one, and {png 3 100x200} a picture: kind, bytes, goal.
inline std::string Describe(const RichText& document) {
    std::string text;
    std::size_t paragraph = 0;
    std::string look;
    const auto begin = [&] {
        const auto layout =
            DescribePara(document.ParaFormats()[document.Paragraphs()[paragraph].format]);
        if (!layout.empty()) text += "[" + layout + "]";
    };
    const auto reach = [&](std::size_t wanted) {
        for (; paragraph < wanted;) {
            text += document.Paragraphs()[paragraph].end == BreakKind::Line ? '/' : '|';
            ++paragraph;
            begin();
        }
    };
    begin();
    document.ForEachPiece([&](const RichText::Piece& piece) {
        reach(piece.paragraph);
        const std::string now = DescribeChars(document, document.CharFormats()[piece.format]);
        if (now != look) text += "<" + now + ">";
        look = now;
        if (piece.picture >= 0) {
            const RichPicture& p = document.Pictures()[static_cast<std::size_t>(piece.picture)];
            const char* const kinds[] = {"png", "jpeg", "dib", "none"};
            text += std::string("{") + kinds[static_cast<int>(p.kind)] + " " +
                    std::to_string(p.bytes ? p.bytes->size() : 0) + " " +
                    std::to_string(p.goalWidth) + "x" + std::to_string(p.goalHeight) + "}";
            return;
        }
        AppendUtf8(text, std::u16string_view(document.Units()).substr(piece.start, piece.length));
    });
    reach(document.Paragraphs().size() - 1);
    return text;
}

}  // namespace larder::test
