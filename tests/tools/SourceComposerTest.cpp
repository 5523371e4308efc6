#include "tools/SourceComposer.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "platform/rtf/Rtf.h"

namespace larder {
namespace {

SourceText Source(int number, const std::string& title, std::vector<std::string> lines) {
    SourceText source;
    source.Number = number;
    source.Title = title;
    source.Lines = std::move(lines);
    return source;
}

// The format of the unit at which `text` begins, and of the paragraph that it stands in.
class Composed {
  public:
    explicit Composed(const std::string& rtf) : document_(ReadRtf(rtf).value()) {}

    CharFormat FormatOf(const std::u16string& text) const {
        const std::size_t unit = document_.Units().find(text);
        EXPECT_NE(unit, std::u16string::npos);
        CharFormat format;
        document_.ForEachPiece([&](const RichText::Piece& piece) {
            if (piece.start <= unit && unit < piece.start + piece.length) {
                format = document_.CharFormats()[piece.format];
            }
        });
        return format;
    }
    ParaFormat LayoutOf(const std::u16string& text) const {
        const std::size_t unit = document_.Units().find(text);
        ParaFormat layout;
        document_.ForEachPiece([&](const RichText::Piece& piece) {
            if (piece.start <= unit && unit < piece.start + piece.length) {
                layout = document_.ParaFormats()[document_.Paragraphs()[piece.paragraph].format];
            }
        });
        return layout;
    }

  private:
    RichText document_;
};

TEST(SourceComposer, EachRecipeBeginsWithItsMarkerNumberAndTitle) {
    const std::string rtf =
        ComposeRecipes({Source(1, "Crab", {"Boil."}), Source(2, "Clam", {"Steam."})});
    EXPECT_EQ(RtfToPlainUtf8(rtf), "#1 Crab\nBoil.\n#2 Clam\nSteam.\n");
}

TEST(SourceComposer, ServingsAndTimeStandInALineBelowTheTitle) {
    SourceText source = Source(1, "Crab", {"Boil."});
    source.Serves = "4";
    source.Time = "35 minutes";
    EXPECT_EQ(RtfToPlainUtf8(ComposeRecipes({source})), "#1 Crab\nServes 4 · 35 minutes\nBoil.\n");
    source.Serves.clear();
    EXPECT_EQ(RtfToPlainUtf8(ComposeRecipes({source})), "#1 Crab\n35 minutes\nBoil.\n");
}

TEST(SourceComposer, AnIngredientGetsABulletAndAHangingIndent) {
    const std::string rtf = ComposeRecipes({Source(1, "Crab", {"Ingredients", "- 2 crabs"})});
    EXPECT_EQ(RtfToPlainUtf8(rtf), "#1 Crab\nIngredients\n•\t2 crabs\n");
    const ParaFormat layout = Composed(rtf).LayoutOf(u"2 crabs");
    EXPECT_GT(layout.left, 0);
    EXPECT_EQ(layout.firstLine, -layout.left);
    ASSERT_EQ(layout.tabs.size(), 1U);
    EXPECT_EQ(layout.tabs[0].position, layout.left);
}

TEST(SourceComposer, AStepKeepsItsNumberAndHangs) {
    const std::string rtf = ComposeRecipes({Source(1, "Crab", {"Method", "12. Boil."})});
    EXPECT_EQ(RtfToPlainUtf8(rtf), "#1 Crab\nMethod\n12.\tBoil.\n");
    EXPECT_LT(Composed(rtf).LayoutOf(u"Boil.").firstLine, 0);
}

TEST(SourceComposer, ANumberThatIsNoStepStaysInItsParagraph) {
    const std::string rtf = ComposeRecipes({Source(1, "Crab", {"12.5 g of salt"})});
    EXPECT_EQ(RtfToPlainUtf8(rtf), "#1 Crab\n12.5 g of salt\n");
    EXPECT_EQ(Composed(rtf).LayoutOf(u"12.5").firstLine, 0);
}

TEST(SourceComposer, HeadingsAreBoldAndThoseAmongTheIngredientsItalic) {
    const Composed page(ComposeRecipes(
        {Source(1, "Crab", {"Ingredients", "For the sauce", "- salt", "Method", "Stir"})}));
    EXPECT_TRUE(page.FormatOf(u"Ingredients").bold);
    EXPECT_TRUE(page.FormatOf(u"Method").bold);
    EXPECT_TRUE(page.FormatOf(u"For the sauce").italic);
    EXPECT_FALSE(page.FormatOf(u"Stir").bold);
    EXPECT_FALSE(page.FormatOf(u"Stir").italic);
}

TEST(SourceComposer, TheTitleIsLargerThanTheText) {
    const Composed page(ComposeRecipes({Source(1, "Crab", {"Boil."})}));
    EXPECT_TRUE(page.FormatOf(u"Crab").bold);
    EXPECT_GT(page.FormatOf(u"Crab").halfPoints, page.FormatOf(u"Boil.").halfPoints);
}

TEST(SourceComposer, WordsBetweenAsterisksAreInItalics) {
    const std::string rtf = ComposeRecipes({Source(1, "Crab", {"Make a *beurre blanc* now."})});
    EXPECT_EQ(RtfToPlainUtf8(rtf), "#1 Crab\nMake a beurre blanc now.\n");
    const Composed page(rtf);
    EXPECT_TRUE(page.FormatOf(u"beurre").italic);
    EXPECT_FALSE(page.FormatOf(u"now").italic);
}

TEST(SourceComposer, CharactersOfTheCodePageSurvive) {
    const std::string rtf = ComposeRecipes({Source(1, "Crème à l’œuf", {"½ – 180 °C"})});
    EXPECT_EQ(RtfToPlainUtf8(rtf), "#1 Crème à l’œuf\n½ – 180 °C\n");
}

TEST(SourceComposer, EachDescriptionBeginsWithAMarkerABlankAndItsTitleInALineOfItsOwn) {
    const std::string rtf = ComposeDescriptions({Source(1, "Cod", {"A white fish."})});
    EXPECT_EQ(RtfToPlainUtf8(rtf), "@ Cod\nCod\nA white fish.\n");
}

TEST(SourceComposer, WhatIsComposedIsStableRtf) {
    const std::string rtf = ComposeRecipes({Source(1, "Crab", {"Ingredients", "- a *b* c"})});
    EXPECT_EQ(WriteRtf(ReadRtf(rtf).value()), rtf);
}

TEST(SourceComposer, NoSourcesGiveAnEmptyDocument) {
    EXPECT_EQ(RtfToPlainUtf8(ComposeRecipes({})), "");
}

}  // namespace
}  // namespace larder
