#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace larder {

// Makes the files of a data folder that follow from its stock recipes: the word index, and
// "Categories.ctg" as word searches for the names in "Category Names.txt". Throws std::length_error
// when the recipes have more words than the index holds, std::runtime_error when the index cannot
// be written; other failures of the files reach the caller. Tells `report`, line by line, how far
// it is.
void IndexStock(
    const std::filesystem::path& dataFolder,
    const std::function<void(const std::string&)>& report = [](const std::string&) {});

}  // namespace larder
