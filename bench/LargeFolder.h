#pragma once

#include <filesystem>

namespace larder::bench {

// How large a made-up cook-book is.
struct Size {
    int Stock = 20000;
    int Own = 500;
    int BodyBytes = 3000;  // of a recipe's RTF
};

// Writes FOLDER/Data with so many recipes, the same for the same size, and the categories
// "HUNDREDS" (the first 200 recipes), "THOUSANDS" (2,000) beside the fixed ones.
void WriteLargeFolder(const std::filesystem::path& folder, const Size& size);

}  // namespace larder::bench
