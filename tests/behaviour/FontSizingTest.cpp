#include "layout/FontSizing.h"

#include <QWidget>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"

namespace larder::test {
namespace {

class FontSizingTest : public MainWindowFixture {
  protected:
    FontSizingTest() {
        Book.AddStock("Cod", "Rinse.\nServe.");
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 1 ";
    }

    MainControls& Ui() { return Main().ui; }
    RichTextBox& Box() { return Ui().rtbSee; }

    // The size of a stretch of the text; nothing where it is mixed.
    std::optional<float> SizeOf(std::int32_t start, std::int32_t length) {
        Box().SetSelStart(start);
        Box().SetSelLength(length);
        return Box().SelFontSize();
    }
    std::optional<float> SizeOfAll() {
        return SizeOf(0, static_cast<std::int32_t>(Box().Text().size()));
    }
    std::int16_t Apply(std::int16_t size) {
        Main().fonts.SetRtbFontSize(Box(), size);
        return size;
    }
    std::vector<Label*> Labels() {
        return {&Ui().lblCategory,  &Ui().lblFound,        &Ui().lblTotal,
                &Ui().lblRecipeNum, &Ui().lblJustWithPics, &Ui().lblFamily};
    }
};

TEST_F(FontSizingTest, ATextOfMixedSizesTakesOneSizeThroughout) {
    ASSERT_TRUE(Start());
    Box().SetTextRTF("{\\rtf1 \\fs20 small {\\fs60 large} \\fs24 end\\par next}");
    EXPECT_FALSE(SizeOfAll().has_value());
    Apply(15);
    EXPECT_EQ(SizeOfAll(), 15.0F);
}

TEST_F(FontSizingTest, TheBoxKeepsTheSizeInItsTagAndSelectsNothing) {
    ASSERT_TRUE(Start());
    Box().SetText("some text");
    Apply(15);
    EXPECT_EQ(Box().Tag, "15");
    EXPECT_EQ(Box().SelLength(), 0);
}

TEST_F(FontSizingTest, ASizeBelow8Becomes8ForTheCallerToo) {
    ASSERT_TRUE(Start());
    Box().SetText("some text");
    EXPECT_EQ(Apply(7), 8);
    EXPECT_EQ(Box().Tag, "8");
    EXPECT_EQ(SizeOfAll(), 8.0F);
    EXPECT_EQ(Apply(-30000), 8);
    EXPECT_EQ(Apply(8), 8);
}

TEST_F(FontSizingTest, TheOtherFormatsOfTheTextStay) {
    ASSERT_TRUE(Start());
    Box().SetTextRTF("{\\rtf1{\\colortbl;\\red255\\green0\\blue0;}{\\b bold} {\\cf1 red}}");
    Apply(20);
    SizeOf(0, 4);
    EXPECT_EQ(Box().SelBold(), true);
    SizeOf(5, 3);
    EXPECT_EQ(Box().SelColor(), 0x0000FF);
    EXPECT_EQ(Box().SelBold(), false);
}

TEST_F(FontSizingTest, ThePlaceAndTheVisibilityOfTheBoxAreAsBefore) {
    ASSERT_TRUE(Start());
    for (const bool visible : {true, false}) {
        Box().SetVisible(visible);
        const Rectangle before = Box().Place();
        Apply(15);
        EXPECT_EQ(Box().Visible(), visible);
        EXPECT_EQ(Box().Left(), before.Left);
    }
}

TEST_F(FontSizingTest, AnEmptyTextTakesASize) {
    ASSERT_TRUE(Start());
    Box().SetText("");
    Apply(15);
    EXPECT_EQ(Box().Tag, "15");
    EXPECT_EQ(Box().Text(), "");
}

TEST_F(FontSizingTest, RichTextIs13PointsAtTheDesignHeightAndGrowsWithTheWindow) {
    ASSERT_TRUE(Start());
    Main().fonts.DoFontSizes(1);
    EXPECT_EQ(Box().Tag, "13");
    EXPECT_EQ(Ui().rtbT.Tag, "13");
    Main().fonts.DoFontSizes(1.5F);
    EXPECT_EQ(Box().Tag, "20");  // 19.5, halves to even
    Main().fonts.DoFontSizes(0.5F);
    EXPECT_EQ(Box().Tag, "8");  // 6.5 would be too small
}

TEST_F(FontSizingTest, AListIs13Point2PointsAtTheDesignHeightAndNeverBelow7) {
    ASSERT_TRUE(Start());
    Main().fonts.DoFontSizes(1);
    EXPECT_FLOAT_EQ(List(1).ListFont().Size, 13.2F);
    Main().fonts.DoFontSizes(2);
    EXPECT_FLOAT_EQ(List(2).ListFont().Size, 26.4F);
    Main().fonts.DoFontSizes(0.1F);
    EXPECT_FLOAT_EQ(List(1).ListFont().Size, 7.0F);
    EXPECT_FLOAT_EQ(List(2).ListFont().Size, 7.0F);
}

TEST_F(FontSizingTest, TheFirstResizeStoresEveryLabelsDesignSize) {
    const MainControls design;
    ASSERT_TRUE(Start());
    EXPECT_FLOAT_EQ(std::stof(Ui().lblCategory.Tag), design.lblCategory.LabelFont().Size);
    for (const Label* label : Labels())
        EXPECT_NE(label->Tag, "") << label->Name();
}

TEST_F(FontSizingTest, ALabelScalesFromItsDesignSizeSoThatSizesDoNotDrift) {
    ASSERT_TRUE(Start());
    Main().fonts.DoFontSizes(1);
    for (Label* label : Labels()) {
        const float before = label->LabelFont().Size;
        Main().fonts.DoFontSizes(2);
        EXPECT_FLOAT_EQ(label->LabelFont().Size, before * 2) << label->Name();
        for (int i = 1; i <= 20; ++i)
            Main().fonts.DoFontSizes(static_cast<float>(i) * 0.37F);
        Main().fonts.DoFontSizes(1);
        EXPECT_FLOAT_EQ(label->LabelFont().Size, before) << label->Name();
    }
}

TEST_F(FontSizingTest, TheTracksKeepTheirFont) {
    ASSERT_TRUE(Start());
    for (const int index : {1, 2, 3}) {
        Label& track = Ui().lblScroll(index);
        const float before = track.LabelFont().Size;
        Main().fonts.DoFontSizes(3);
        EXPECT_FLOAT_EQ(track.LabelFont().Size, before);
        EXPECT_EQ(track.Tag, "");
    }
}

TEST_F(FontSizingTest, ANegativeRatioChangesNothing) {
    ASSERT_TRUE(Start());
    const std::string tag = Box().Tag;
    const float size = List(1).ListFont().Size;
    Main().fonts.DoFontSizes(-1);
    EXPECT_EQ(Box().Tag, tag);
    EXPECT_EQ(List(1).ListFont().Size, size);
}

TEST_F(FontSizingTest, TheTitleOfARecipeStaysLargerThanItsTextAfterAResize) {
    ASSERT_TRUE(Start());
    Main().viewer.ShowRecipe(1);
    Main().fonts.DoFontSizes(1);
    EXPECT_EQ(SizeOf(0, 3), 17.0F);  // 13 by 1.3, to the half point
    EXPECT_EQ(SizeOf(6, 4), 13.0F);
}

TEST_F(FontSizingTest, ARecipeIsShownInTheSizeOfTheTag) {
    ASSERT_TRUE(Start());
    Main().fonts.DoFontSizes(2);
    Main().viewer.ShowRecipe(1);
    EXPECT_EQ(SizeOf(6, 4), 26.0F);
}

TEST_F(FontSizingTest, FillingByProgramIsNoTyping) {
    ASSERT_TRUE(Start());
    Main().viewer.ShowRecipe(1);
    Main().fonts.DoFontSizes(1.2F);
    EXPECT_FALSE(Main().viewer.Modified);
}

}  // namespace
}  // namespace larder::test
