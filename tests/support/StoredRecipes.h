#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "support/FileBytes.h"

namespace larder::test {

// A recipe as it stands on the disk.
struct StoredRecipe {
    std::string Title;
    std::string Body;  // with its padding, without the CR LF that closes it

    bool operator==(const StoredRecipe&) const = default;
};

// All files of a folder and of the folders in it, by their path from there ("Food Photos/4.jpg").
using FolderBytes = std::map<std::string, std::string>;

inline FolderBytes BytesOf(const std::filesystem::path& folder) {
    const std::size_t prefix = folder.native().size() + 1;
    FolderBytes files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        files[entry.path().native().substr(prefix)] = BytesOfFile(entry.path());
    }
    return files;
}

inline void PutBytes(const std::filesystem::path& folder, const FolderBytes& files) {
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    for (const auto& [name, bytes] : files) {
        const std::filesystem::path path = folder / name;
        if (name.find('/') != std::string::npos) {
            std::filesystem::create_directories(path.parent_path());
        }
        PutFile(path, bytes);
    }
}

// The records of a text and its index by the description of the formats alone, not by the program.
// Whatever is wrong with the files fails the test.
inline std::vector<StoredRecipe> RecordsIn(const std::string& text, const std::string& index) {
    std::vector<StoredRecipe> records;
    EXPECT_EQ(index.size() % 4, 0U);
    std::vector<std::size_t> starts;
    for (std::size_t i = 0; i + 4 <= index.size(); i += 4) {
        std::uint32_t entry = 0;
        for (std::size_t byte = 4; byte-- > 0;)
            entry = entry << 8 | static_cast<unsigned char>(index[i + byte]);
        EXPECT_GE(entry, starts.empty() ? 1U : starts.back() + 4) << "entry " << i / 4 + 1;
        EXPECT_LE(entry + 3, text.size()) << "entry " << i / 4 + 1;
        if (entry < 1 || entry > text.size()) return records;
        starts.push_back(entry);
    }
    if (!starts.empty()) {
        EXPECT_EQ(starts.front(), 1U);
    } else {
        EXPECT_EQ(text, "");
    }
    starts.push_back(text.size() + 1);
    for (std::size_t i = 0; i + 1 < starts.size(); ++i) {
        const std::string record = text.substr(starts[i] - 1, starts[i + 1] - starts[i]);
        const std::size_t lineEnd = record.find("\r\n");
        if (lineEnd == std::string::npos || record.size() < lineEnd + 4) {
            ADD_FAILURE() << "record " << i + 1 << " has no title line or no end";
            return records;
        }
        records.push_back(
            {record.substr(0, lineEnd), record.substr(lineEnd + 2, record.size() - lineEnd - 4)});
    }
    return records;
}

inline std::string FileIn(const FolderBytes& files, const std::string& name) {
    const auto file = files.find(name);
    return file == files.end() ? std::string() : file->second;
}

inline std::vector<StoredRecipe> StockIn(const FolderBytes& files) {
    return RecordsIn(FileIn(files, "Recipes.ydb"), FileIn(files, "Recipes Index.ind"));
}

inline std::vector<StoredRecipe> OwnIn(const FolderBytes& files) {
    return RecordsIn(FileIn(files, "Custom Recipes.ydb"),
                     FileIn(files, "Custom Recipes Index.ind"));
}

// The stock, and the user's recipes behind it.
inline std::vector<StoredRecipe> RecipesIn(const FolderBytes& files) {
    std::vector<StoredRecipe> recipes = StockIn(files);
    for (StoredRecipe& own : OwnIn(files))
        recipes.push_back(std::move(own));
    return recipes;
}

inline bool HasTemporaries(const FolderBytes& files) {
    return files.contains("Recipes Temp.ydb") || files.contains("Recipes Index Temp.ind");
}

}  // namespace larder::test
