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

bool NumberedFiles::Exists(const std::string& path) const {
    return paths_.FileExists(path);
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
    if (std::rename(native.c_str(), target.c_str()) != 0) {
        const int systemError = errno;
        const bool missing = access(native.c_str(), F_OK) != 0;
        throw Failure(PathFailureNumber(systemError, missing ? native : target),
                      missing ? from : to);
    }
    FlushAll({}, to);
}

}  // namespace larder
