#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace larder::bench {

// A made-up cook-book to be searched: 20,000 stock recipes of about 150 different words each, out
// of 27,000, some of which stand in half of the recipes and most in a few. The same at every run.
class SearchFolder {
  public:
    static constexpr int Recipes = 20000;
    static constexpr int Words = 27000;
    static constexpr int Own = 500;

    // Writes FOLDER/Data with the word index.
    explicit SearchFolder(const std::filesystem::path& folder);

    std::string Title(int recipe) const { return "Recipe " + std::to_string(recipe); }
    // Title and body as plain text; recipes count from 1.
    std::string Text(int recipe) const;
    // The word that begins with `from` or follows it in the alphabet, among those that stand in
    // about `share` of the recipes.
    std::string WordNear(const std::string& from, double share) const;

    std::filesystem::path Data;

  private:
    void DrawWords();
    void WriteStock() const;
    void WriteIndex() const;

    std::vector<std::string> names_;
    std::vector<std::vector<std::uint16_t>> wordsOf_;  // by recipe, from 0
    std::vector<int> recipesWith_;                     // by word
};

}  // namespace larder::bench
