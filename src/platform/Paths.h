#pragma once

#include <map>
#include <string>
#include <string_view>

namespace larder {

// Turns the program's paths into the system's. The program composes its paths as
// `<root>\Data\Recipes.ydb` in Windows-1252, with backslashes and drive letters; the system has
// slashes, one root, UTF-8 names that differ by case, and folders that the code page cannot spell.
//
// - A drive letter ("E:\...") leads to the mount point that was given for it. A letter without one
//   leads nowhere, as does a path with a zero byte: to the empty path, which names no file.
// - Anything else begins at an alias (see Alias) or at the system's root.
// - Each name is matched exactly first, and without regard to case (of the code page) if there is
//   no exact match. A name that matches nothing stays as it is, so that it can be created. Nothing
//   is remembered of a folder's content: discs come and go.
class Paths {
  public:
    // The program's name for a native path: the path itself with backslashes where Windows-1252
    // can spell it, else a made-up name ("\?1") that Native takes back to exactly this path. The
    // result has no backslash at its end. A relative path counts from the current folder.
    std::string Alias(const std::string& native);

    // The letter leads to this native folder from now on ("E" -> "/media/cdrom").
    void MapDrive(char letter, const std::string& mountPoint);
    void ForgetDrives();

    std::string Native(std::string_view path) const;

    // As the file system object of the program answers: FileExists is false for a folder, and
    // FolderExists for a file; neither raises a failure.
    bool FileExists(std::string_view path) const;
    bool FolderExists(std::string_view path) const;
    // Whether both paths lead to one and the same file, which exists.
    bool SameFile(std::string_view path, std::string_view other) const;

  private:
    std::map<std::string, std::string> aliases_;  // made-up name -> native path
    std::map<char, std::string> drives_;
};

}  // namespace larder
