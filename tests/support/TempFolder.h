#pragma once

#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

#include "support/FileBytes.h"

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
        // Tests that give up their privileges must still get in, and read what they have written.
        std::filesystem::permissions(root_, std::filesystem::perms::all);
        umask(S_IWGRP | S_IWOTH);
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
        PutFile(path, bytes);
    }
    std::string Read(std::string_view name) const { return BytesOfFile(root_ / name); }
    bool Exists(std::string_view name) const { return std::filesystem::exists(root_ / name); }
    void Delete(std::string_view name) const { std::filesystem::remove_all(root_ / name); }
    void Rename(std::string_view from, std::string_view to) const {
        std::filesystem::rename(root_ / from, root_ / to);
    }
    void MakeFolder(std::string_view name) const {
        std::filesystem::create_directories(root_ / name);
    }

    // A place in memory where the system has one with room to spare: no flush costs anything there.
    static std::filesystem::path InMemory() {
        constexpr std::uintmax_t room = 1U << 30;
        const std::filesystem::path shared = "/dev/shm";
        std::error_code none;
        const auto space = std::filesystem::space(shared, none);
        const bool fits = !none && space.available >= room && access(shared.c_str(), W_OK) == 0;
        return fits ? shared : std::filesystem::temp_directory_path();
    }

  private:
    std::filesystem::path root_;
};

}  // namespace larder::test
