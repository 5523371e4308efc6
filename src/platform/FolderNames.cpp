#include "platform/FolderNames.h"

#include <filesystem>
#include <system_error>

namespace larder {

std::vector<std::string> NamesIn(const std::string& nativeFolder) {
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entry(nativeFolder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        names.push_back(entry->path().filename().string());
    }
    return names;
}

}  // namespace larder
