#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "tools/RecipeSource.h"

namespace larder {

// Builds the data folder of the cook-book from the maintainers' sources. The same sources give the
// same bytes.
class DataBuilder {
  public:
    // `source` holds recipes/, descriptions/, pictures/ and "Category Names.txt"; `out` gets the
    // folder Data, which must not exist, and the sound of the buttons beside it.
    DataBuilder(std::filesystem::path source, std::filesystem::path out);

    // Throws SourceError for a mistake in the sources, and a Failure or a file system error where
    // the result cannot be written. What was begun is taken away again.
    void Build();
    // Takes a line about what is being done, if anybody wants to know.
    std::function<void(const std::string&)> OnProgress = [](const std::string&) {};

    // What was built, for a line to the maintainer.
    std::size_t RecipeCount() const { return recipes_.size(); }
    std::size_t CategoryCount() const { return names_.size(); }
    std::size_t PictureCount() const { return pictures_.size(); }

  private:
    void ReadAll();
    void CheckCategories() const;
    void StoreTexts();
    void WriteCategories();
    void WritePictures();
    void CheckMembers(const std::vector<std::string>& lines) const;

    std::filesystem::path source_;
    std::filesystem::path out_;
    std::filesystem::path data_;
    std::vector<SourceText> recipes_;
    std::vector<SourceText> descriptions_;
    std::vector<std::string> names_;  // UTF-8
    std::vector<int> pictures_;       // recipe numbers, ascending
};

}  // namespace larder
