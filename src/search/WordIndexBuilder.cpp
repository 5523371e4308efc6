#include "search/WordIndexBuilder.h"

#include <fstream>
#include <stdexcept>

#include "lists/YStrings.h"
#include "platform/Text.h"
#include "search/SearchText.h"
#include "search/WordIndex.h"

namespace larder {

void WordIndexBuilder::Add(std::int32_t recipeNum, std::string text) {
    ReplaceDelimiters(text);
    std::int32_t start = 1;
    while (start <= static_cast<std::int32_t>(text.size())) {
        const std::string token = LowerCase(YStrings::TokenFrom(text, start, " "));
        if (token.empty()) break;
        if (IsStopWord(token)) continue;
        std::vector<std::int32_t>& numbers = words_[token];
        if (numbers.empty() || numbers.back() != recipeNum) numbers.push_back(recipeNum);
    }
}

void WordIndexBuilder::Write(const std::filesystem::path& ydb,
                             const std::filesystem::path& ind) const {
    if (words_.size() > MaxWords) {
        throw std::length_error("the word index holds at most " + std::to_string(MaxWords) +
                                " words, and these recipes have " + std::to_string(words_.size()));
    }
    std::ofstream text(ydb, std::ios::binary);
    std::ofstream index(ind, std::ios::binary);
    std::uint32_t position = 1;  // of the record, as in the other indexes; nobody reads it
    for (const auto& [word, numbers] : words_) {
        std::string record = word + "\r\n";
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            record += (i == 0 ? "" : " ") + std::to_string(numbers[i]);
        }
        record += "\r\n";
        text << record;
        for (int shift = 0; shift < 32; shift += 8) {
            index.put(static_cast<char>((position >> shift) & 0xFF));
        }
        position += static_cast<std::uint32_t>(record.size());
    }
    text.close();
    index.close();
    if (!text || !index) throw std::runtime_error(ydb.string() + " cannot be written");
}

}  // namespace larder
