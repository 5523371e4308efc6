#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/Failure.h"
#include "platform/NativeFile.h"
#include "platform/NumberedFiles.h"
#include "platform/Paths.h"

// What is done to files by their path, outside the numbers.
namespace larder {

namespace {

// Who may read and write the old file may read and write the new one: a family may share a folder,
// or a cook keep it private. Whoever wrote the new file can write it again in any case.
void KeepRights(const std::string& native, const std::string& target) {
    struct stat old {};
    if (stat(target.c_str(), &old) != 0) return;
    const bool sameGroup = chown(native.c_str(), static_cast<uid_t>(-1), old.st_gid) == 0;
    const mode_t rights = old.st_mode & (sameGroup ? 0777 : 0707);
    chmod(native.c_str(), rights | S_IRUSR | S_IWUSR);
}

}  // namespace

bool NumberedFiles::Exists(const std::string& path) const {
    const std::string native = paths_.Native(path);
    struct stat status {};
    if (stat(native.c_str(), &status) == 0) return S_ISREG(status.st_mode);
    if (errno == ENOENT || errno == ENOTDIR) return false;
    const int number = PathFailureNumber(errno, native);
    throw Failure(number, path, path + "\n" + FailureText(number));
}

bool NumberedFiles::MustNotBeWritten(const std::string& path) const {
    return larder::MustNotBeWritten(paths_.Native(path));
}

bool NumberedFiles::ClearReadOnly(const std::string& path) {
    const std::string native = paths_.Native(path);
    struct stat status {};
    if (stat(native.c_str(), &status) != 0 || (status.st_mode & S_IWUSR) != 0) return false;
    Tell("attributes", 0, path, 0);
    if (chmod(native.c_str(), (status.st_mode & 07777) | S_IWUSR) != 0) return false;
    // Some file systems let it succeed without any effect.
    return stat(native.c_str(), &status) == 0 && (status.st_mode & S_IWUSR) != 0;
}

void NumberedFiles::Delete(const std::string& path) {
    Tell("delete", 0, path, 0);
    const std::string native = paths_.Native(path);
    if (unlink(native.c_str()) != 0) throw Failure(PathFailureNumber(errno, native), path);
}

void NumberedFiles::Replace(const std::string& from, const std::string& to) {
    Tell("rename", 0, to, 0);
    const std::string native = paths_.Native(from);
    const std::string target = paths_.Native(to);
    KeepRights(native, target);
    if (std::rename(native.c_str(), target.c_str()) != 0) {
        const int systemError = errno;
        const bool missing = access(native.c_str(), F_OK) != 0;
        throw Failure(PathFailureNumber(systemError, missing ? native : target),
                      missing ? from : to);
    }
    FlushAll({}, to);
}

}  // namespace larder
