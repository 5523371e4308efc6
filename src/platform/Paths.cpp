#include "platform/Paths.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <memory>

#include "platform/Text.h"

namespace larder {

namespace {

constexpr std::string_view madeUpPrefix = "\\?";

bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

char UpperLetter(char c) {
    return static_cast<char>(c & ~0x20);
}

// The code page can spell the path, and the spelling can't be mistaken for anything else.
bool CanSpell(const std::string& native) {
    return native.find('\\') == std::string::npos && ToUtf8(FromUtf8(native)) == native &&
           native.rfind("/?", 0) != 0;
}

std::string WithoutTrailingSlashes(std::string path) {
    while (!path.empty() && path.back() == '/')
        path.pop_back();
    return path;
}

bool IsKind(const std::string& native, mode_t kind) {
    struct stat status {};
    return stat(native.c_str(), &status) == 0 && (status.st_mode & S_IFMT) == kind;
}

bool Exists(const std::string& native) {
    struct stat status {};
    return stat(native.c_str(), &status) == 0;
}

// The name in the folder that differs from `name` by case alone; of several the first in byte
// order, so that the answer does not depend on the order of the folder. `name` when there is none.
std::string MatchInFolder(const std::string& folder, const std::string& name) {
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(folder.c_str()), closedir);
    if (!listing) return name;
    const std::string wanted = FromUtf8(name);
    std::string best;
    while (const dirent* entry = readdir(listing.get())) {
        const std::string candidate = entry->d_name;
        const std::string spelled = FromUtf8(candidate);
        if (!EqualNoCase(spelled, wanted) || ToUtf8(spelled) != candidate) continue;
        if (best.empty() || candidate < best) best = candidate;
    }
    return best.empty() ? name : best;
}

// `base` is taken as it is; `rest` is empty or begins with a slash and has none at its end. The
// whole is tried as it stands first: the common case costs one call of the system.
std::string Match(const std::string& base, const std::string& rest) {
    const std::string exact = base + rest;
    if (rest.empty() || Exists(exact)) return exact;
    const std::size_t slash = rest.rfind('/');
    const std::string folder = Match(base, rest.substr(0, slash));
    const std::string name = rest.substr(slash + 1);
    const std::string there = folder + "/" + name;
    if (there != exact && Exists(there)) return there;
    return folder + "/" + MatchInFolder(folder.empty() ? "/" : folder, name);
}

// Slashes for backslashes, each once, none at the end, one at the front of what is not empty.
std::string NativeNames(std::string_view path) {
    std::string names;
    for (const char c : "/" + ToUtf8(path)) {
        const char native = c == '\\' ? '/' : c;
        if (native != '/' || names.empty() || names.back() != '/') names += native;
    }
    return WithoutTrailingSlashes(names);
}

}  // namespace

std::string Paths::Alias(const std::string& native) {
    std::error_code ignored;
    const auto absolute = std::filesystem::absolute(native, ignored);
    const std::string whole = WithoutTrailingSlashes(absolute.empty() ? native : absolute.string());
    if (CanSpell(whole)) {
        std::string path = FromUtf8(whole);
        std::replace(path.begin(), path.end(), '/', '\\');
        return path;
    }
    for (const auto& [name, target] : aliases_) {
        if (target == whole) return name;
    }
    const std::string name = std::string(madeUpPrefix) + std::to_string(aliases_.size() + 1);
    aliases_[name] = whole;
    return name;
}

void Paths::MapDrive(char letter, const std::string& mountPoint) {
    drives_[UpperLetter(letter)] = WithoutTrailingSlashes(mountPoint);
}

void Paths::ForgetDrives() {
    drives_.clear();
}

std::string Paths::Native(std::string_view path) const {
    if (path.empty() || path.find('\0') != std::string_view::npos) return {};
    std::string native;
    if (path.size() >= 2 && IsLetter(path[0]) && path[1] == ':') {
        const auto drive = drives_.find(UpperLetter(path[0]));
        if (drive == drives_.end()) return {};
        native = Match(drive->second, NativeNames(path.substr(2)));
    } else {
        const std::size_t nameEnd = std::min(path.find('\\', 1), path.size());
        const auto alias = aliases_.find(std::string(path.substr(0, nameEnd)));
        native = alias == aliases_.end() ? Match({}, NativeNames(path))
                                         : Match(alias->second, NativeNames(path.substr(nameEnd)));
    }
    return native.empty() ? "/" : native;
}

bool Paths::FileExists(std::string_view path) const {
    return IsKind(Native(path), S_IFREG);
}

bool Paths::FolderExists(std::string_view path) const {
    return IsKind(Native(path), S_IFDIR);
}

bool Paths::SameFile(std::string_view path, std::string_view other) const {
    std::error_code missing;
    return std::filesystem::equivalent(Native(path), Native(other), missing) && !missing;
}

}  // namespace larder
