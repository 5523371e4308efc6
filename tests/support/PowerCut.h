#pragma once

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/NumberedFiles.h"
#include "support/FileBytes.h"
#include "support/StoredRecipes.h"

namespace larder::test {

// Whether an access changes a file or what the folder holds, or may.
inline bool Changes(const NumberedFiles::Access& access) {
    return access.Kind != "read" && access.Kind != "close";
}

// What a disk holds when the power fails. Follows the accesses of a table of files to one folder
// and the folders in it, all of whose files count as flushed at the beginning, and tells each state
// that the disk may have at that moment: bytes that were not flushed are there, not there, or there
// in part, and any of the names that were made, changed or deleted since the last flush of their
// folder may be undone. What is outside the folder does not count.
class PowerCut {
  public:
    explicit PowerCut(std::filesystem::path folder) : folder_(std::move(folder)) {
        for (const auto& [name, bytes] : BytesOf(folder_))
            names_[name] = NewFile(bytes);
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_)) {
            if (entry.is_directory()) names_[NameOf(entry.path().string())] = aFolder;
        }
        durableNames_ = names_;
    }

    // To be called from the table's watcher: the access before is over, this one not begun.
    void Follow(const NumberedFiles::Access& access) {
        Finish();
        std::string path(access.Path);
        std::ranges::replace(path, '\\', '/');
        if (!path.starts_with(folder_.string() + "/")) return;
        kind_ = access.Kind;
        number_ = access.Number;
        name_ = NameOf(path);
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
                for (const auto& [name, file] : names) {
                    if (file == aFolder || !IsReached(name, names)) continue;
                    folder[name] = Survivor(file, way);
                }
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

        const std::string& Name() const { return New.empty() ? Gone : New; }
    };
    static constexpr int aFolder = 0;  // instead of a file's number

    int NewFile(const std::string& durable) {
        files_[++lastFile_] = {durable, durable};
        return lastFile_;
    }
    std::string NameOf(const std::string& path) const {
        return path.substr(folder_.string().size() + 1);
    }
    static std::string FolderOf(const std::string& name) {
        const std::size_t slash = name.rfind('/');
        return slash == std::string::npos ? "" : name.substr(0, slash);
    }
    static bool IsReached(const std::string& name, const Names& names) {
        const std::string folder = FolderOf(name);
        return folder.empty() || (names.contains(folder) && IsReached(folder, names));
    }
    bool IsThere(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

    // The bytes as programs see them.
    void Remember() {
        for (const auto& [name, file] : names_) {
            if (file != aFolder && IsThere(name))
                files_[file].Current = BytesOfFile(folder_ / name);
        }
    }

    void Complete() {
        if (kind_ == "open") CompleteOpen();
        if (kind_ == "flush") CompleteFlush();
        if (kind_ == "close") open_.erase(number_);
        if (kind_ == "delete" && !IsThere(name_)) Change({name_, "", 0});
        if (kind_ == "rename") CompleteRename();
        if (kind_ == "folder" && IsThere(name_)) Change({"", name_, aFolder});
        kind_.clear();
    }
    void CompleteOpen() {
        const bool created = !names_.contains(name_) && IsThere(name_);
        if (created) Change({"", name_, NewFile("")});
        if (names_.contains(name_)) open_[number_] = {name_, names_[name_], created};
    }
    // By number 0 both the bytes of a file that is open by its path are flushed, and the names that
    // stand beside a path.
    void CompleteFlush() {
        Remember();
        const auto open = open_.find(number_);
        const bool isOpen = open != open_.end();
        if (number_ == 0 && !(isOpen && open->second.Name == name_)) FlushNames(FolderOf(name_));
        if (!isOpen || open->second.Name != name_) return;
        File& file = files_[open->second.File];
        file.Durable = file.Current;
        if (number_ != 0 && open->second.Created) FlushNames(FolderOf(name_));
    }
    void FlushNames(const std::string& folder) {
        std::erase_if(pending_, [&](const NameChange& change) {
            if (FolderOf(change.Name()) != folder) return false;
            Apply(change, durableNames_);
            return true;
        });
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

    // By halves, each compared at once: a loop over the bytes takes most of a test's time.
    static std::size_t FirstDifference(std::string_view from, std::string_view to) {
        std::size_t same = 0;
        for (std::size_t end = std::min(from.size(), to.size()); same < end;) {
            const std::size_t half = (end - same + 1) / 2;
            if (from.substr(same, half) == to.substr(same, half)) {
                same += half;
            } else {
                end = same + half - 1;
            }
        }
        return same;
    }

    static constexpr int Ways = 7;
    std::string Survivor(int id, int way) const {
        const File& file = files_.at(id);
        const std::string& from = file.Durable;
        const std::string& to = file.Current;
        if (from == to) return to;
        const std::size_t common = std::min(from.size(), to.size());
        const std::size_t middle = (FirstDifference(from, to) + to.size()) / 2;
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

    struct Opened {
        std::string Name;
        int File;
        bool Created;  // by this open
    };

    std::filesystem::path folder_;
    std::map<int, File> files_;
    int lastFile_ = 0;
    Names names_;
    Names durableNames_;
    std::vector<NameChange> pending_;
    std::map<int, Opened> open_;  // by number

    std::string kind_;
    int number_ = 0;
    std::string name_;
};

}  // namespace larder::test
