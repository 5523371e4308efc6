#include "tools/StockIndexer.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/Text.h"
#include "platform/rtf/Rtf.h"
#include "search/SearchText.h"
#include "search/WordIndex.h"
#include "support/DataFolder.h"
#include "support/SearchScene.h"
#include "tools/DataBuilder.h"

namespace larder {
namespace {

// The words of a text as a reader sees them: runs of letters, digits and underscores.
std::set<std::string> WordsOf(const std::string& text) {
    std::set<std::string> words;
    std::string word;
    for (const char c : text + " ") {
        const auto byte = static_cast<unsigned char>(c);
        const bool inWord = (byte < 0x80 && isalnum(byte) != 0) || byte == '_' || byte >= 0xC0;
        if (inWord) {
            word += c;
        } else if (!word.empty()) {
            words.insert(word);
            word.clear();
        }
    }
    return words;
}

// Whether the delimiters cut every occurrence of the word out of the text as it stands.
bool CutTheSame(const std::string& cutText, const std::string& word) {
    return cutText.find(" " + word + " ") != std::string::npos;
}

class StockIndexerTest : public testing::Test {
  protected:
    void WriteStock(const std::vector<std::pair<std::string, std::string>>& recipes) const {
        test::Database stock;
        for (const auto& [title, body] : recipes) {
            stock.AddRecipe(title, "{\\rtf1\\ansi " + title + "\\par " + body + "\\par}");
        }
        data.WriteStock(stock);
        data.Folder.Write("Data/Category Names.txt", "Cod\r\nMackerel\r\n");
    }
    void Index() const { IndexStock(data.Folder.Native("Data")); }
    std::string Numbers(std::string word) { return index.LookUpWord(word); }

    test::DataFolder data;
    WordIndex index{data.Files, data.Paths};
};

TEST_F(StockIndexerTest, TellsWhatItDoesAndHowManyWordsThereAre) {
    WriteStock({{"Cod Soup", "Simmer the cod."}, {"Mackerel", "Fry it."}});
    std::vector<std::string> lines;
    IndexStock(data.Folder.Native("Data"), [&](const std::string& line) { lines.push_back(line); });
    // cod, soup, simmer, mackerel, fry, it
    EXPECT_EQ(lines,
              (std::vector<std::string>{"Making New Search Index", "Totoal Words Count: 6"}));
}

TEST_F(StockIndexerTest, TitlesAndBodiesAreIndexed) {
    WriteStock({{"Cod Cakes", "Fry in butter."}, {"Butter Sauce", "With {\\b lemon}."}});
    Index();
    EXPECT_EQ(Numbers("cod"), "1");
    EXPECT_EQ(Numbers("butter"), "1 2");
    EXPECT_EQ(Numbers("lemon"), "2");
    EXPECT_EQ(Numbers("rtf1"), "") << "no word of the recipe";
}

TEST_F(StockIndexerTest, TheCategoriesAreSearchesForTheirNames) {
    WriteStock({{"Cod Cakes", "Fry."}, {"Sauce", "For cod."}});
    Index();
    EXPECT_EQ(data.Folder.Read("Data/Categories.ctg"),
              " 2 \r\nMY FAVORITES\r\n \r\nBUYING AND PREPARATION TIPS\r\n\r\nALL RECIPES\r\n*\r\n"
              "Cod\r\n 1 2 \r\n");
}

TEST_F(StockIndexerTest, TooManyWordsAreAnErrorThatWritesNothing) {
    std::string body;
    for (int i = 0; i < 32767; ++i)
        body += "w" + std::to_string(i) + " ";
    WriteStock({{"Cod", body}});
    try {
        Index();
        ADD_FAILURE() << "too many words";
    } catch (const std::length_error& e) {
        EXPECT_TRUE(std::string(e.what()).starts_with("MakeSearchIndex: ")) << e.what();
    }
    EXPECT_FALSE(data.Folder.Exists("Data/Search.ydb"));
    EXPECT_FALSE(data.Folder.Exists("Data/Search.ind"));
    EXPECT_FALSE(data.Folder.Exists("Data/Categories.ctg"));
}

// The recipes that come with the program, built without their pictures, which take long.
void BuildBook(const test::TempFolder& folder) {
    namespace fs = std::filesystem;
    const fs::path sources = BOOK_SOURCES;
    const fs::path copy = folder.Native("sources");
    for (const char* part : {"recipes", "descriptions", "Category Names.txt"}) {
        fs::create_directories(copy);
        fs::copy(sources / part, copy / part, fs::copy_options::recursive);
    }
    folder.Write("sources/pictures/001.svg",
                 "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 4 3\"/>");
    DataBuilder(copy, folder.Native("built")).Build();
    folder.Delete("Data");
    folder.Rename("built/Data", "Data");
}

TEST(Book, EveryWordOfEveryRecipeFindsIt) {
    test::SearchScene scene;
    BuildBook(scene.Data.Folder);
    scene.Store.OpenYDB_IND_Normal();
    scene.Store.RecalculateTotalRecipes();
    ASSERT_GT(scene.Store.OriginalNumRecords, 50);

    std::map<std::string, std::string> found;  // by the word as it stands in a recipe
    int checked = 0;
    for (std::int32_t number = 1; number <= scene.Store.OriginalNumRecords; ++number) {
        const std::string text = ReadRtf(scene.Store.GetRecipeRTF(number)).value().Text();
        std::string cut = " " + text + " ";
        ReplaceDelimiters(cut);
        for (const std::string& word : WordsOf(text)) {
            if (IsStopWord(LowerCase(word)) || !CutTheSame(cut, word)) continue;
            const auto [entry, isNew] = found.try_emplace(word);
            if (isNew) entry->second = scene.Find(word);
            ++checked;
            ASSERT_NE(entry->second.find(" " + std::to_string(number) + " "), std::string::npos)
                << "recipe " << number << ", word " << ToUtf8(word);
        }
    }
    EXPECT_GT(checked, 50 * scene.Store.OriginalNumRecords);
}

}  // namespace
}  // namespace larder
