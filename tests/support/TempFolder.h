#pragma once

#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace larder::test {

// A new folder that goes with everything in it when the test ends. Names are relative to it.
class TempFolder {
  public:
    TempFolder() : TempFolder(std::filesystem::temp_directory_path()) {}
    // Somewhere else than where temporary files usually are.
    explicit TempFolder(const std::filesystem::path& base) {
        std::string name = (base / "larder-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
        root_ = name;
        // Tests that give up their privileges must still get in.
        std::filesystem::permissions(root_, std::filesystem::perms::all);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::string Native(std::string_view name = {}) const {
        return name.empty() ? root_.string() : (root_ / name).string();
    }
    void Write(std::string_view name, std::string_view bytes) const {
        const std::filesystem::path path = root_ / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary | std::ios::trunc)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    std::string Read(std::string_view name) const {
        std::ifstream file(root_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    bool Exists(std::string_view name) const { return std::filesystem::exists(root_ / name); }
    void Delete(std::string_view name) const { std::filesystem::remove_all(root_ / name); }
    void Rename(std::string_view from, std::string_view to) const {
        std::filesystem::rename(root_ / from, root_ / to);
    }
    void MakeFolder(std::string_view name) const {
        std::filesystem::create_directories(root_ / name);
    }

    // A place in memory where the system has one: no flush costs anything there.
    static std::filesystem::path InMemory() {
        const std::filesystem::path shared = "/dev/shm";
        return access(shared.c_str(), W_OK) == 0 ? shared : std::filesystem::temp_directory_path();
    }

  private:
    std::filesystem::path root_;
};

}  // namespace larder::test
