#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/NumberedFiles.h"
#include "platform/Paths.h"
#include "store/DataPaths.h"
#include "support/TempFolder.h"

namespace larder::test {

// The bytes of an index file.
inline std::string IndexBytes(const std::vector<std::int32_t>& positions) {
    std::string bytes;
    for (const std::int32_t position : positions) {
        const auto value = static_cast<std::uint32_t>(position);
        for (int shift = 0; shift < 32; shift += 8) {
            bytes += static_cast<char>((value >> shift) & 0xFF);
        }
    }
    return bytes;
}

// A text file and its index, composed byte by byte, so that readers are tested against the format
// and not against our writer.
struct Database {
    std::string Text;
    std::vector<std::int32_t> Positions;

    void AddRecipe(std::string_view title, std::string_view body) {
        Positions.push_back(static_cast<std::int32_t>(Text.size()) + 1);
        Text.append(title).append("\r\n").append(body).append("\r\n");
    }
    void AddDescription(std::string_view title, std::string_view body) {
        AddRecipe(title, body);
        Text.append("\r\n\\yyk\r\n");
    }
    std::string Index() const { return IndexBytes(Positions); }
};

// A data folder, in memory where there is room, with the parts of the program that reach it. Empty
// at first.
class DataFolder {
  public:
    DataFolder() {
        Folder.MakeFolder("Data");
        const std::string root = NamePaths.Alias(Folder.Native()) + "\\Data\\";
        Paths.Assign(root, root);
    }

    void WriteStock(const Database& recipes) const {
        Folder.Write("Data/Recipes.ydb", recipes.Text);
        Folder.Write("Data/Recipes Index.ind", recipes.Index());
    }
    void WriteCustom(const Database& recipes) const {
        Folder.Write("Data/Custom Recipes.ydb", recipes.Text);
        Folder.Write("Data/Custom Recipes Index.ind", recipes.Index());
    }
    void WriteDescriptions(const Database& descriptions) const {
        Folder.Write("Data/CategyD.ydb", descriptions.Text);
        Folder.Write("Data/CategyD Index.ind", descriptions.Index());
    }

    TempFolder Folder{TempFolder::InMemory()};
    larder::Paths NamePaths;
    DataPaths Paths;
    NumberedFiles Files{NamePaths};
};

}  // namespace larder::test
