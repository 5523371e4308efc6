#include "SearchFolder.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <random>
#include <stdexcept>

#include "LargeFolder.h"
#include "search/WordIndexBuilder.h"

namespace larder::bench {

namespace {

constexpr double CommonShare = 0.5;    // of the recipes that hold the most common words
constexpr double WordsARecipe = 20.8;  // with the shares below: 150 different ones

// A word that can be spoken, another one for every number below 27,000.
std::string Name(std::uint32_t number) {
    static constexpr const char* syllables[] = {
        "ba",  "cod", "da", "el", "fi",  "gar", "ha",  "is",  "ju",  "ko",
        "lem", "ma",  "no", "os", "pe",  "qua", "ri",  "sal", "ti",  "un",
        "ve",  "wa",  "xi", "yo", "zan", "bre", "cla", "dor", "fle", "gru"};
    // Common words come from all over the alphabet.
    std::uint32_t mixed = number * 7919U % 27000U;
    std::string name;
    for (int i = 0; i < 3; ++i) {
        name = syllables[mixed % 30] + name;
        mixed /= 30;
    }
    return name;
}

double ShareOf(int word) {
    return std::min(CommonShare, WordsARecipe / (word + 20));
}

}  // namespace

SearchFolder::SearchFolder(const std::filesystem::path& folder) : Data(folder / "Data") {
    WriteLargeFolder(folder, {1, Own, 3000});
    std::filesystem::create_directory(Data / "Food Photos");
    DrawWords();
    WriteStock();
    WriteIndex();
}

void SearchFolder::DrawWords() {
    std::mt19937 random(20260102);
    std::uniform_real_distribution<double> chance(0, 1);
    wordsOf_.resize(Recipes);
    recipesWith_.resize(Words);
    for (int word = 0; word < Words; ++word) {
        names_.push_back(Name(static_cast<std::uint32_t>(word)));
        const double step = std::log(1 - ShareOf(word));
        // The gap to the next recipe that holds the word.
        const auto gap = [&] { return static_cast<int>(std::log(1 - chance(random)) / step); };
        for (int recipe = gap(); recipe < Recipes; recipe += 1 + gap()) {
            wordsOf_[static_cast<std::size_t>(recipe)].push_back(static_cast<std::uint16_t>(word));
            ++recipesWith_[static_cast<std::size_t>(word)];
        }
    }
}

std::string SearchFolder::Text(int recipe) const {
    std::string text = Title(recipe) + "\r\n";
    int column = 0;
    for (const std::uint16_t word : wordsOf_[static_cast<std::size_t>(recipe - 1)]) {
        text += names_[word] + (++column % 12 == 0 ? ".\r\n" : " ");
    }
    return text;
}

void SearchFolder::WriteStock() const {
    std::ofstream recipes(Data / "Recipes.ydb", std::ios::binary);
    std::ofstream index(Data / "Recipes Index.ind", std::ios::binary);
    std::uint32_t position = 1;
    for (int recipe = 1; recipe <= Recipes; ++recipe) {
        for (int i = 0; i < 4; ++i)
            index.put(static_cast<char>((position >> (8 * i)) & 0xFF));
        std::string body = "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Times New Roman;}}\\fs24 ";
        for (const char c : Text(recipe)) {
            if (c == '\r') {
                body += "\\par ";
            } else if (c != '\n') {
                body += c;
            }
        }
        const std::string record = Title(recipe) + "\r\n" + body + "\\par}\r\n";
        recipes << record;
        position += static_cast<std::uint32_t>(record.size());
    }
    recipes.close();
    index.close();
    if (!recipes || !index) throw std::runtime_error("the cook-book cannot be written");
}

void SearchFolder::WriteIndex() const {
    WordIndexBuilder builder;
    for (int recipe = 1; recipe <= Recipes; ++recipe) {
        // The numbers of the titles would be 20,000 words more.
        std::string text = Text(recipe);
        builder.Add(recipe, text.substr(text.find('\r')));
    }
    builder.Write(Data / "Search.ydb", Data / "Search.ind");
}

std::string SearchFolder::WordNear(const std::string& from, double share) const {
    std::string best;
    for (int word = 0; word < Words; ++word) {
        const std::string& name = names_[static_cast<std::size_t>(word)];
        const double has = recipesWith_[static_cast<std::size_t>(word)] / double{Recipes};
        const bool fits = has > 0 && has >= share * 0.8 && has <= share * 1.25;
        if (fits && name >= from && (best.empty() || name < best)) best = name;
    }
    if (best.empty()) throw std::runtime_error("no word from " + from + " on");
    return best;
}

}  // namespace larder::bench
