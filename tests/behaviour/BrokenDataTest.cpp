#include <QTest>
#include <algorithm>
#include <cctype>
#include <cstdint>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "support/ProcessorTime.h"

namespace larder::test {
namespace {

// The same damage at each run, so that a failure comes back by itself.
constexpr std::uint32_t Seed = 1937;

constexpr int Truncations = 12;
constexpr int Noises = 6;
constexpr int Damages = 8;

// The whole window on a data folder in which one file is damaged: it opens, or a box names the
// file; whatever the user clicks then, it neither crashes nor hangs.
class BrokenDataTest : public MainWindowFixture, public testing::WithParamInterface<const char*> {
  protected:
    BrokenDataTest() {
        Book.AddStock("Cod");
        Book.AddStock("Salmon", "Bake.\nServe with dill.");
        Book.AddManyStock(4);
        Book.AddOwn("Mine");
        Book.AddOwn("");
        Book.AddOwn("Mine too");
        Book.Numbers("MY FAVORITES") = " 2 7 ";
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 2 3 ";
        Book.Numbers("COD") = " 1 8 9 ";
        Folder.MakeFolder("Data/Food Photos");
        Book.WriteTo(Folder);
        whole_ = Folder.Read(File());
    }

    static std::string File() { return std::string("Data/") + GetParam(); }
    const std::string& Whole() const { return whole_; }

    void Try(const std::string& bytes, const std::string& what) {
        SCOPED_TRACE(what);
        Book.WriteTo(Folder);
        Folder.Write(File(), bytes);
        Open();
    }

    void Open() {
        Boxes.Shown.clear();
        if (Restart()) {
            ClickThroughEverything();
        } else {
            ASSERT_EQ(Boxes.Shown.size(), 1U);
            EXPECT_NE(Boxes.Shown[0].Text.find(GetParam()), std::string::npos)
                << Boxes.Shown[0].Text;
            EXPECT_EQ(Main().ExitStatus(), 1);
        }
        Close();
    }

    void ClickThroughEverything() {
        const int categories = std::min(List(1).Count(), 12);
        for (int category = 1; category <= categories; ++category) {
            PressLine(1, category);
            const int recipes = std::min(List(2).Count(), 10);
            for (int recipe = 1; recipe <= recipes && recipe <= List(2).Count(); ++recipe) {
                PressLine(2, recipe);
            }
            if (recipes > 0) Click("ibNext");
        }
        for (std::int32_t number = -1; number <= std::min(Main().store.TotalNumRecords, 20);
             ++number) {
            Main().viewer.ShowRecipe(number);
            Main().store.GetCatTitle(number);
            Ignoring([&] { Main().store.GetCatRTF(number); });
        }
    }

    static std::mt19937 Random() {
        std::cout << "seed " << Seed << std::endl;
        return std::mt19937(Seed);
    }
    static std::string Noise(std::mt19937& random, std::size_t length) {
        std::string bytes(length, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        return bytes;
    }

  private:
    std::string whole_;
};

INSTANTIATE_TEST_SUITE_P(EachFile, BrokenDataTest,
                         testing::Values("Recipes.ydb", "Recipes Index.ind", "Custom Recipes.ydb",
                                         "Custom Recipes Index.ind", "CategyD.ydb",
                                         "CategyD Index.ind", "Categories.ctg"),
                         [](const auto& file) {
                             std::string name;
                             for (const char c : std::string(file.param)) {
                                 if (std::isalpha(static_cast<unsigned char>(c))) name += c;
                             }
                             return name;
                         });

TEST_P(BrokenDataTest, AMissingFileOpensOrIsNamed) {
    Folder.Delete(File());
    // Without the stock text the disc is asked for, which nobody puts in here.
    if (std::string(GetParam()) != "Recipes.ydb") {
        Open();
        return;
    }
    EXPECT_FALSE(Restart());
    EXPECT_EQ(Boxes.Shown.size(), 2U);
}

TEST_P(BrokenDataTest, AFolderInThePlaceOfTheFileOpensOrIsNamed) {
    Folder.Delete(File());
    Folder.MakeFolder(File());
    if (std::string(GetParam()) != "Recipes.ydb") {
        Open();
        return;
    }
    EXPECT_FALSE(Restart());
    EXPECT_EQ(Boxes.Shown.size(), 2U);
}

TEST_P(BrokenDataTest, AnEmptyFileOpensOrIsNamed) {
    Try("", "emptied");
}

TEST_P(BrokenDataTest, ATruncatedFileOpensOrIsNamed) {
    for (int i = 1; i <= Truncations; ++i) {
        const std::size_t length = Whole().size() * static_cast<std::size_t>(i) / (Truncations + 1);
        Try(Whole().substr(0, length), "cut at byte " + std::to_string(length));
    }
    Try(Whole().substr(0, Whole().size() - 1), "without its last byte");
}

TEST_P(BrokenDataTest, AFileOfNoiseOpensOrIsNamed) {
    std::mt19937 random = Random();
    for (int i = 0; i < Noises; ++i) {
        const std::size_t length = 1 + random() % 600;
        Try(Noise(random, length), "noise number " + std::to_string(i));
    }
}

TEST_P(BrokenDataTest, AFileWithDamagedBytesOpensOrIsNamed) {
    std::mt19937 random = Random();
    for (int i = 0; i < Damages; ++i) {
        std::string bytes = Whole();
        for (int hit = 0; hit < 3; ++hit)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        Try(bytes, "damage number " + std::to_string(i));
    }
}

TEST_P(BrokenDataTest, AFileThatIsDoubledOpensOrIsNamed) {
    Try(Whole() + Whole(), "doubled");
}

// One broken thing each, told by what the user meets.
class BrokenContentTest : public MainWindowFixture {
  protected:
    BrokenContentTest() {
        Book.AddStock("Cod");
        Book.AddStock("Salmon");
        Book.AddStock("Tuna");
        Book.Numbers("MY FAVORITES") = " 1 2 3 ";
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 1 ";
        Folder.MakeFolder("Data/Food Photos");
        Book.WriteTo(Folder);
    }
    bool WithIndex(const std::vector<std::int32_t>& positions) {
        Folder.Write("Data/Recipes Index.ind", IndexBytes(positions));
        return Restart();
    }
    bool WithCategories(const std::string& text) {
        Folder.Write("Data/Categories.ctg", text);
        return Restart();
    }
    std::string Text() { return Main().ui.rtbSee.Text(); }
};

TEST_F(BrokenContentTest, AnIndexEntryBeyondTheEndIsAnUnavailableRecipe) {
    for (const std::int32_t entry : {1000000, 2147483647}) {
        ASSERT_TRUE(WithIndex({1, entry, 1}));
        PressLine(2, 1);
        EXPECT_TRUE(Main().viewer.ShowRecipe(1)) << entry;
        EXPECT_TRUE(Main().viewer.ShowRecipe(2)) << entry;
        EXPECT_EQ(Text(),
                  "The recipe 2 is unavailable because it was permanently deleted from the "
                  "database.");
        EXPECT_TRUE(Main().ui.rtbSee.Visible()) << entry;
        EXPECT_TRUE(Boxes.Shown.empty()) << entry;
    }
}

TEST_F(BrokenContentTest, AnIndexEntryBelowTheFirstPositionIsARecipeThatCannotBeShown) {
    for (const std::int32_t entry : {-1, 0, -2147483647}) {
        ASSERT_TRUE(WithIndex({1, entry, 1}));
        PressLine(2, 1);
        EXPECT_TRUE(Main().viewer.ShowRecipe(1)) << entry;
        EXPECT_FALSE(Main().viewer.ShowRecipe(2)) << entry;
        EXPECT_FALSE(Main().ui.rtbSee.Visible()) << entry;
        EXPECT_TRUE(Boxes.Shown.empty()) << entry;
    }
}

TEST_F(BrokenContentTest, IndexEntriesOutOfOrderCostOnlyTheirOwnRecipes) {
    const std::string text = Folder.Read("Data/Recipes.ydb");
    const auto salmon = static_cast<std::int32_t>(text.find("Salmon\r\n")) + 1;
    const auto tuna = static_cast<std::int32_t>(text.find("Tuna\r\n")) + 1;
    ASSERT_TRUE(WithIndex({tuna, salmon, 1}));
    EXPECT_EQ(Shown(2), (std::vector<std::string>{"Tuna", "Salmon", "Cod"}));
    for (const int line : {1, 2, 3})
        PressLine(2, line);
    EXPECT_EQ(Text().substr(0, 3), "Cod");
}

TEST_F(BrokenContentTest, ATitleLineOf10MegabytesIsRead) {
    const double begin = ProcessorTime();
    Database recipes;
    recipes.AddRecipe(std::string(10'000'000, 'x'), "{\\rtf1 Long}");
    recipes.AddRecipe("Short", "{\\rtf1 Short}");
    Folder.Write("Data/Recipes.ydb", recipes.Text);
    Folder.Write("Data/Recipes Index.ind", recipes.Index());
    ASSERT_TRUE(
        WithCategories(" 2 \r\nMY FAVORITES\r\n 1 2 \r\nALL RECIPES WITH PICTURES\r\n"
                       " 1 \r\nALL RECIPES\r\n*\r\n"));
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{1, 2}));
    EXPECT_EQ(Shown(2)[0].size(), 10'000'000U);
    QTest::mouseMove(Pressed(2), PointOnLine(2, 1));
    PressLine(2, 1);
    PressLine(2, 2);
    EXPECT_EQ(Text().substr(0, 5), "Short");
    EXPECT_LT(ProcessorTime() - begin, 10.0);
}

TEST_F(BrokenContentTest, ACategoryNameOf10MegabytesIsRead) {
    const double begin = ProcessorTime();
    ASSERT_TRUE(WithCategories(" 3 \r\nALL RECIPES WITH PICTURES\r\n 1 \r\n" +
                               std::string(10'000'000, 'x') + "\r\n 2 \r\n"));
    QTest::mouseMove(Pressed(1), PointOnLine(1, 2));
    PressLine(1, 2);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2}));
    EXPECT_LT(ProcessorTime() - begin, 10.0);
}

TEST_F(BrokenContentTest, ABodyThatIsNestedTooDeepShowsWhatCanBeRead) {
    Database recipes;
    recipes.AddRecipe("Deep", "{\\rtf1 Top" + std::string(100'000, '{') + "x");
    Folder.Write("Data/Recipes.ydb", recipes.Text);
    ASSERT_TRUE(WithIndex(recipes.Positions));
    EXPECT_TRUE(Main().viewer.ShowRecipe(1));
    EXPECT_EQ(Text().substr(0, 3), "Top");
}

TEST_F(BrokenContentTest, ABodyThatIsNoRtfIsShownAsPlainText) {
    Database recipes;
    recipes.AddRecipe("Plain", "Just words");
    Folder.Write("Data/Recipes.ydb", recipes.Text);
    ASSERT_TRUE(WithIndex(recipes.Positions));
    EXPECT_TRUE(Main().viewer.ShowRecipe(1));
    EXPECT_EQ(Text(), "Just words");
}

TEST_F(BrokenContentTest, NumbersOfNoRecipeInACategoryLeaveTheOthersReadable) {
    ASSERT_TRUE(
        WithCategories(" 3 \r\nMY FAVORITES\r\n 2 99 -4 x 99999999999 3 \r\n"
                       "ALL RECIPES WITH PICTURES\r\n 1 \r\nALL RECIPES\r\n*\r\n"));
    const std::vector<int> numbers = ShownNumbers();
    ASSERT_FALSE(numbers.empty());
    EXPECT_EQ(numbers.front(), 2);
    EXPECT_EQ(numbers.back(), 3);
    for (int line = 1; line <= List(2).Count(); ++line)
        PressLine(2, line);
    EXPECT_EQ(Text().substr(0, 4), "Tuna");
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(BrokenContentTest, CategoriesThatEndInTheMiddleOfAnEntryAreFatalAndNamed) {
    EXPECT_FALSE(WithCategories(" 3 \r\nMY FAVORITES\r\n 1 \r\nALL RECIPES WITH PICTURES"));
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_NE(Boxes.Shown[0].Text.find("Categories.ctg"), std::string::npos);
    EXPECT_EQ(Main().ExitStatus(), 1);
}

TEST_F(BrokenContentTest, ACategoryThatIsNamedTwiceStandsOnce) {
    ASSERT_TRUE(
        WithCategories(" 3 \r\nMY FAVORITES\r\n 1 \r\nMY FAVORITES\r\n 2 \r\n"
                       "ALL RECIPES WITH PICTURES\r\n 1 \r\nALL RECIPES\r\n*\r\n"));
    EXPECT_EQ(Shown(1), (std::vector<std::string>{"MY FAVORITES", "ALL RECIPES WITH PICTURES",
                                                  "ALL RECIPES"}));
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{1}));
}

TEST_F(BrokenContentTest, AnIndexThatEndsInTheMiddleOfAnEntryHasTheWholeOnesOnly) {
    const std::string index = Folder.Read("Data/Recipes Index.ind");
    Folder.Write("Data/Recipes Index.ind", index.substr(0, 10));
    ASSERT_TRUE(Restart());
    EXPECT_EQ(Main().store.OriginalNumRecords, 2);
}

}  // namespace
}  // namespace larder::test
