#include "platform/Drives.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string_view>
#include <system_error>

namespace larder {

namespace {

// The table of mounts writes blanks and the like as a backslash and three octal digits.
std::string WithoutEscapes(const std::string& field) {
    const auto isOctal = [](char c) { return c >= '0' && c <= '7'; };
    std::string plain;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size() && isOctal(field[i + 1]) &&
            isOctal(field[i + 2]) && isOctal(field[i + 3])) {
            plain += static_cast<char>((field[i + 1] - '0') * 64 + (field[i + 2] - '0') * 8 +
                                       (field[i + 3] - '0'));
            i += 3;
        } else {
            plain += field[i];
        }
    }
    return plain;
}

// Orders names as people do: sr2 before sr10.
bool DeviceBefore(const std::string& a, const std::string& b) {
    const auto number = [](const std::string& name) {
        const auto digits = name.find_last_not_of("0123456789") + 1;
        return std::pair(name.substr(0, digits), name.substr(digits));
    };
    const auto [nameA, digitsA] = number(a);
    const auto [nameB, digitsB] = number(b);
    if (nameA != nameB) return nameA < nameB;
    if (digitsA.size() != digitsB.size()) return digitsA.size() < digitsB.size();
    return digitsA < digitsB;
}

struct DeviceOrder {
    bool operator()(const std::string& a, const std::string& b) const { return DeviceBefore(a, b); }
};

// Device file -> where it is mounted; empty for a drive without a disc.
using Discs = std::map<std::string, std::string, DeviceOrder>;

// "sr0" with the kind "sr".
bool IsOfKind(const std::string& name, std::string_view kind) {
    return name.starts_with(kind) && name.size() > kind.size() &&
           name.find_first_not_of("0123456789", kind.size()) == std::string::npos;
}

void AddOpticalDrives(Discs& discs, const std::string& blockDevices) {
    std::error_code error;
    std::filesystem::directory_iterator entry(blockDevices, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (IsOfKind(name, "sr")) discs.emplace("/dev/" + name, "");
    }
}

// An optical drive, or an image of a disc in a file. Other devices, a memory stick say, may well
// hold the file system of a disc and are none.
bool TakesDiscs(const std::string& device) {
    const std::filesystem::path path = device;
    const std::string name = path.filename().string();
    return path.parent_path() == "/dev" && (IsOfKind(name, "sr") || IsOfKind(name, "loop"));
}

// The device that the table of mounts means: "/dev/cdrom" is a link to "/dev/sr0".
std::string TrueDevice(const std::string& device) {
    std::error_code error;
    const auto target = std::filesystem::canonical(device, error);
    return error ? device : target.string();
}

void AddMountedDiscs(Discs& discs, const std::string& mounts) {
    std::ifstream table(mounts);
    for (std::string line; std::getline(table, line);) {
        std::istringstream fields(line);
        std::string device;
        std::string place;
        std::string type;
        if (!(fields >> device >> place >> type)) continue;
        const std::string name = TrueDevice(WithoutEscapes(device));
        const auto drive = discs.find(name);
        const bool isDisc = (type == "iso9660" || type == "udf") && TakesDiscs(name);
        if (drive == discs.end() && !isDisc) continue;
        // A disc that is mounted twice is one drive, reached where it was mounted first.
        std::string& mountPoint = discs[name];
        if (mountPoint.empty()) mountPoint = WithoutEscapes(place);
    }
}

}  // namespace

SystemDrives::SystemDrives(std::string mounts, std::string blockDevices)
    : mounts_(std::move(mounts)), blockDevices_(std::move(blockDevices)) {}

std::vector<Drive> SystemDrives::List() {
    Discs discs;
    AddOpticalDrives(discs, blockDevices_);
    AddMountedDiscs(discs, mounts_);

    std::vector<Drive> drives = {{'C', Drive::Fixed, "/"}};
    for (const auto& [device, mountPoint] : discs) {
        const char letter = LetterOf(device);
        if (letter <= 'Z') drives.push_back({letter, Drive::CdRom, mountPoint});
    }
    std::sort(drives.begin(), drives.end(),
              [](const Drive& a, const Drive& b) { return a.DriveLetter < b.DriveLetter; });
    return drives;
}

// Beyond Z for a device that comes when all letters are given.
char SystemDrives::LetterOf(const std::string& device) {
    const auto known = letters_.find(device);
    if (known != letters_.end()) return known->second;
    const auto next = static_cast<char>('D' + letters_.size());
    if (next <= 'Z') letters_.emplace(device, next);
    return next;
}

}  // namespace larder
