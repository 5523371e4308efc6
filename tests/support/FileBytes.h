#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace larder::test {

// All bytes of a file, read at once; none of one that is missing.
inline std::string BytesOfFile(const std::filesystem::path& path) {
    std::error_code missing;
    const auto size = std::filesystem::file_size(path, missing);
    if (missing) return {};
    std::string bytes(size, '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(size));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

// Makes the file, or empties it first.
inline void PutFile(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace larder::test
