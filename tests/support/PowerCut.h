#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/NumberedFiles.h"
#include "support/StoredRecipes.h"

namespace larder::test {

// Whether an access changes a file or what the folder holds, or may.
inline bool Changes(const NumberedFiles::Access& access) {
    return access.Kind != "read" && access.Kind != "close";
}

// What a disk holds when the power fails. Follows the accesses of a table of files to one folder,
// all of whose files count as flushed at the beginning, and tells each folder that the disk may
// have at that moment: bytes that were not flushed are there, not there, or there in part, and any
// of the names that were made, changed or deleted since the last flush of the folder may be undone.
class PowerCut {
  public:
    explicit PowerCut(std::filesystem::path folder) : folder_(std::move(folder)) {
        for (const auto& [name, bytes] : BytesOf(folder_))
            names_[name] = NewFile(bytes);
        durableNames_ = names_;
    }

    // To be called from the table's watcher: the access before is over, this one not begun.
    void Follow(const NumberedFiles::Access& access) {
        Finish();
        kind_ = access.Kind;
        number_ = access.Number;
        const std::string path(access.Path);
        name_ = path.substr(path.rfind('\\') + 1);
    }

    // The last access that was followed is not carried out: whoever made it was killed there.
    void Forget() { kind_.clear(); }

    // The last access is over.
    void Finish() {
        Complete();
        Remember();
    }

    std::set<FolderBytes> Possible() const {
        std::set<FolderBytes> folders;
        const std::size_t subsets = std::size_t{1} << pending_.size();
        for (std::size_t subset = 0; subset < subsets; ++subset) {
            Names names = durableNames_;
            for (std::size_t i = 0; i < pending_.size(); ++i) {
                if ((subset >> i & 1) != 0) Apply(pending_[i], names);
            }
            for (int way = 0; way < Ways; ++way) {
                FolderBytes folder;
                for (const auto& [name, file] : names)
                    folder[name] = Survivor(file, way);
                folders.insert(std::move(folder));
            }
        }
        return folders;
    }

  private:
    using Names = std::map<std::string, int>;
    struct File {
        std::string Durable;
        std::string Current;
    };
    struct NameChange {
        std::string Gone;  // a name that goes, if any
        std::string New;   // a name that is there then, if any
        int File = 0;
    };

    int NewFile(const std::string& durable) {
        files_[++lastFile_] = {durable, durable};
        return lastFile_;
    }
    bool IsThere(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

    // The bytes as programs see them.
    void Remember() {
        for (const auto& [name, file] : names_) {
            if (!IsThere(name)) continue;
            std::ifstream in(folder_ / name, std::ios::binary);
            files_[file].Current = {std::istreambuf_iterator<char>(in), {}};
        }
    }

    void Complete() {
        if (kind_ == "open") CompleteOpen();
        if (kind_ == "flush") CompleteFlush();
        if (kind_ == "delete" && !IsThere(name_)) Change({name_, "", 0});
        if (kind_ == "rename") CompleteRename();
        kind_.clear();
    }
    void CompleteOpen() {
        const bool created = !names_.contains(name_) && IsThere(name_);
        if (created) Change({"", name_, NewFile("")});
        if (names_.contains(name_)) open_[number_] = {names_[name_], created};
    }
    void CompleteFlush() {
        Remember();
        bool namesToo = number_ == 0;
        if (number_ != 0) {
            const auto [file, created] = open_[number_];
            files_[file].Durable = files_[file].Current;
            namesToo = created;
        }
        if (!namesToo) return;
        durableNames_ = names_;
        pending_.clear();
    }
    void CompleteRename() {
        for (const auto& [name, file] : names_) {
            if (name == name_ || IsThere(name)) continue;
            Change({name, name_, file});
            return;
        }
    }
    void Change(const NameChange& change) {
        pending_.push_back(change);
        Apply(change, names_);
    }
    static void Apply(const NameChange& change, Names& names) {
        if (!change.Gone.empty()) names.erase(change.Gone);
        if (!change.New.empty()) names[change.New] = change.File;
    }

    static constexpr int Ways = 7;
    std::string Survivor(int id, int way) const {
        const File& file = files_.at(id);
        const std::string& from = file.Durable;
        const std::string& to = file.Current;
        const std::size_t common = std::min(from.size(), to.size());
        const auto differs = std::ranges::mismatch(from, to).in1 - from.begin();
        const auto middle = (static_cast<std::size_t>(differs) + to.size()) / 2;
        switch (way) {
            case 0:
                return from;
            case 1:
                return to;
            case 2:  // the new length, and none of the new bytes
                return from.substr(0, common) + std::string(to.size() - common, '\0');
            case 3:  // the first half
                return to.substr(0, middle) + (middle < from.size() ? from.substr(middle) : "");
            case 4:  // the second half
                return from.substr(0, std::min(common, middle)) +
                       std::string(middle > common ? middle - common : 0, '\0') +
                       (middle < to.size() ? to.substr(middle) : "");
            default:  // one file and not the other
                return (id % 2 == 0) == (way == 5) ? from : to;
        }
    }

    std::filesystem::path folder_;
    std::map<int, File> files_;
    int lastFile_ = 0;
    Names names_;
    Names durableNames_;
    std::vector<NameChange> pending_;
    std::map<int, std::pair<int, bool>> open_;  // by number: file, made by this open

    std::string kind_;
    int number_ = 0;
    std::string name_;
};

}  // namespace larder::test
