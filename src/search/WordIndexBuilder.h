#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace larder {

// Gathers the words of recipes and writes the word index (see WordIndex for its form).
class WordIndexBuilder {
  public:
    static constexpr std::size_t MaxWords = 32767;  // counted in 16 bits by the reader

    // The words of a text as a query would cut them; recipe numbers come in ascending order.
    void Add(std::int32_t recipeNum, std::string text);

    std::size_t WordCount() const { return words_.size(); }

    // Writes both files. Throws std::length_error, and writes nothing, when there are more words
    // than the index can hold; std::runtime_error when a file cannot be written.
    void Write(const std::filesystem::path& ydb, const std::filesystem::path& ind) const;

  private:
    std::map<std::string, std::vector<std::int32_t>> words_;  // sorted by the bytes of the words
};

}  // namespace larder
