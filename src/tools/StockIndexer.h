#pragma once

#include <filesystem>

namespace larder {

// Makes the files of a data folder that follow from its stock recipes: the word index, and
// "Categories.ctg" as word searches for the names in "Category Names.txt". Throws std::length_error
// when the recipes have more words than the index holds; failures of the files reach the caller.
void IndexStock(const std::filesystem::path& dataFolder);

}  // namespace larder
