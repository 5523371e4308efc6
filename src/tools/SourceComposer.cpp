#include "tools/SourceComposer.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "platform/Text.h"
#include "platform/rtf/Rtf.h"

namespace larder {

namespace {

constexpr std::uint16_t TextHalfPoints = 24;
constexpr std::uint16_t TitleHalfPoints = 31;
constexpr std::uint32_t TitleColour = 0x0479A6;    // #A67904, red in the low byte
constexpr std::uint32_t HeadingColour = 0x714B28;  // #284B71
constexpr std::int32_t HangingIndent = 360;        // twips

ParaFormat Spaced(std::int32_t before, std::int32_t after) {
    ParaFormat format;
    format.spaceBefore = before;
    format.spaceAfter = after;
    return format;
}

// Writes paragraphs of the few looks that a recipe has.
class Page {
  public:
    Page() : document_(RichFont{}) {}

    void Marker(const std::string& text) { Append(text, {}); }
    void Title(const std::string& title) {
        Append(title, {.halfPoints = TitleHalfPoints, .colour = TitleColour, .bold = true});
        Break(Spaced(0, 60));
    }
    void PlainLine(const std::string& text) {
        Append(text, {});
        Break(Spaced(0, 0));
    }
    void Facts(const std::string& facts) {
        Append(facts, {.halfPoints = TextHalfPoints, .italic = true});
        Break(Spaced(0, 120));
    }
    void Heading(const std::string& text, bool chief) {
        CharFormat format{.halfPoints = TextHalfPoints};
        format.colour = HeadingColour;
        format.bold = chief;
        format.italic = !chief;
        Append(text, format);
        Break(Spaced(chief ? 120 : 60, 40));
    }
    // A label such as "•" or "3." hangs to the left of the text.
    void Item(const std::string& label, const std::string& text) {
        Append(label + "\t", {});
        Emphasised(text);
        ParaFormat format = Spaced(0, 40);
        format.left = HangingIndent;
        format.firstLine = -HangingIndent;
        format.tabs = {{HangingIndent, TabKind::Left}};
        Break(std::move(format));
    }
    void Paragraph(const std::string& text) {
        Emphasised(text);
        Break(Spaced(0, 100));
    }

    std::string Rtf() const { return WriteRtf(document_); }

  private:
    void Append(const std::string& utf8, CharFormat format) {
        if (utf8.empty()) return;
        if (format.halfPoints == CharFormat{}.halfPoints) format.halfPoints = TextHalfPoints;
        document_.Append(ToUtf16(FromUtf8(utf8)), document_.Intern(format));
    }
    // Words between asterisks are in italics.
    void Emphasised(const std::string& text) {
        bool italic = false;
        std::size_t start = 0;
        while (start <= text.size()) {
            const std::size_t star = std::min(text.find('*', start), text.size());
            CharFormat format;
            format.italic = italic;
            Append(text.substr(start, star - start), format);
            italic = !italic;
            start = star + 1;
        }
    }
    void Break(ParaFormat format) {
        document_.SetParagraphFormat(document_.Intern(std::move(format)));
        document_.AppendBreak(BreakKind::Paragraph, document_.Intern(CharFormat{}));
    }

    RichText document_;
};

// The length of the number that a step begins with ("12. "), 0 for another line.
std::size_t StepLabel(const std::string& line) {
    std::size_t digits = 0;
    while (digits < line.size() && std::isdigit(static_cast<unsigned char>(line[digits])))
        ++digits;
    const bool step = digits > 0 && line.compare(digits, 2, ". ") == 0;
    return step ? digits + 1 : 0;
}

void WriteLine(Page& page, const std::string& line, bool inIngredients) {
    if (line.starts_with("- ")) {
        page.Item("•", line.substr(2));
    } else if (const std::size_t label = StepLabel(line); label > 0) {
        page.Item(line.substr(0, label), line.substr(label + 1));
    } else if (line == "Ingredients" || line == "Method") {
        page.Heading(line, true);
    } else if (inIngredients) {
        page.Heading(line, false);
    } else {
        page.Paragraph(line);
    }
}

std::string FactsOf(const SourceText& recipe) {
    std::string facts;
    if (!recipe.Serves.empty()) facts = "Serves " + recipe.Serves;
    if (!recipe.Time.empty()) facts += (facts.empty() ? "" : " · ") + recipe.Time;
    return facts;
}

void WriteLines(Page& page, const SourceText& source) {
    bool inIngredients = false;
    for (const std::string& line : source.Lines) {
        if (line == "Ingredients") inIngredients = true;
        if (line == "Method") inIngredients = false;
        WriteLine(page, line, inIngredients);
    }
}

}  // namespace

std::string ComposeRecipes(const std::vector<SourceText>& recipes) {
    Page page;
    for (const SourceText& recipe : recipes) {
        page.Marker("#" + std::to_string(recipe.Number) + " ");
        page.Title(recipe.Title);
        if (const std::string facts = FactsOf(recipe); !facts.empty()) page.Facts(facts);
        WriteLines(page, recipe);
    }
    return page.Rtf();
}

std::string ComposeDescriptions(const std::vector<SourceText>& descriptions) {
    Page page;
    for (const SourceText& description : descriptions) {
        page.PlainLine("@ " + description.Title);
        page.Title(description.Title);
        WriteLines(page, description);
    }
    return page.Rtf();
}

}  // namespace larder
