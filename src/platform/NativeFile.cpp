#include "platform/NativeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <exception>
#include <future>
#include <utility>

#include "platform/Failure.h"

namespace larder {

namespace {

// Calls the system again for as long as a signal interrupts it.
template <typename Call>
auto Uninterrupted(Call&& call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

std::string FolderOf(const std::string& native) {
    const std::size_t slash = native.rfind('/');
    return slash == std::string::npos ? "." : native.substr(0, slash + 1);
}

bool IsWriteProtection(int systemError) {
    return systemError == EACCES || systemError == EROFS || systemError == EPERM;
}

// Without O_NONBLOCK a pipe in the place of a file would hold the program up until somebody opens
// its other end; regular files take no notice of it.
int OpenDescriptor(const std::string& native, int flags) {
    return Uninterrupted(
        [&] { return open(native.c_str(), flags | O_CLOEXEC | O_NONBLOCK, 0666); });
}

bool IsRegular(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

int PathFailureNumber(int systemError, const std::string& native) {
    if (native.empty()) return failure::PathNotFound;  // a drive that leads nowhere
    switch (systemError) {
        case ENOENT:
            return access(FolderOf(native).c_str(), F_OK) == 0 ? failure::FileNotFound
                                                               : failure::PathNotFound;
        case ENOTDIR:
            return failure::PathNotFound;
        case ENOSPC:
        case EDQUOT:
            return failure::DiskFull;
        default:
            return failure::PathAccess;
    }
}

int DataFailureNumber(int systemError) {
    switch (systemError) {
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return failure::DiskFull;
        case EBADF:  // opened for reading alone
        case EROFS:
        case ENODEV:
        case ENXIO:
        case ENOMEDIUM:
        case ESTALE:
            return failure::PathAccess;
        default:
            return failure::DeviceError;
    }
}

NativeFile::NativeFile(const std::string& native, Access access, std::string name)
    : name_(std::move(name)) {
    const int flags = access == Access::Read    ? O_RDONLY
                      : access == Access::Write ? O_WRONLY
                                                : O_RDWR;
    descriptor_ = OpenDescriptor(native, flags);
    if (descriptor_ < 0 && errno == ENOENT && access != Access::Read) {
        descriptor_ = OpenDescriptor(native, flags | O_CREAT);
        created_ = descriptor_ >= 0;
    } else if (descriptor_ < 0 && access == Access::ReadWrite && IsWriteProtection(errno)) {
        descriptor_ = OpenDescriptor(native, O_RDONLY);
    }
    if (descriptor_ < 0) throw Failure(PathFailureNumber(errno, native), name_);
    if (!IsRegular(descriptor_)) {
        close(descriptor_);
        throw Failure(failure::PathAccess, name_);
    }
}

NativeFile::~NativeFile() {
    if (descriptor_ >= 0) close(descriptor_);
}

std::int64_t NativeFile::Size() const {
    struct stat status {};
    if (fstat(descriptor_, &status) != 0) throw Failure(DataFailureNumber(errno), name_);
    return status.st_size;
}

// An input/output error while reading is what a disc that was taken out gives: the storage cannot
// be reached.
std::size_t NativeFile::Read(std::int64_t offset, char* to, std::size_t count) const {
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got = Uninterrupted([&] {
            return pread(descriptor_, to + done, count - done,
                         offset + static_cast<std::int64_t>(done));
        });
        if (got < 0) {
            const int number = errno == EIO ? failure::PathAccess : DataFailureNumber(errno);
            throw Failure(number, name_);
        }
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

void NativeFile::Write(std::int64_t offset, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t put =
            Uninterrupted([&] { return pwrite(descriptor_, bytes.data(), bytes.size(), offset); });
        if (put < 0) throw Failure(DataFailureNumber(errno), name_);
        bytes.remove_prefix(static_cast<std::size_t>(put));
        offset += put;
    }
}

void NativeFile::Truncate(std::int64_t size) {
    if (ftruncate(descriptor_, size) == 0) return;
    // How the system puts that the file was opened for reading alone.
    const int systemError = errno == EINVAL && size >= 0 ? EBADF : errno;
    throw Failure(DataFailureNumber(systemError), name_);
}

void NativeFile::Flush() {
    if (fsync(descriptor_) != 0) throw Failure(DataFailureNumber(errno), name_);
}

void NativeFile::StartFlush() const {
#ifdef SYNC_FILE_RANGE_WRITE
    sync_file_range(descriptor_, 0, 0, SYNC_FILE_RANGE_WRITE);
#endif
}

void NativeFile::Close() {
    const int descriptor = std::exchange(descriptor_, -1);
    // An interrupted close has closed the file on this system.
    if (descriptor >= 0 && close(descriptor) != 0 && errno != EINTR) {
        throw Failure(DataFailureNumber(errno), name_);
    }
}

bool MustNotBeWritten(const std::string& native) {
    struct stat status {};
    if (stat(native.c_str(), &status) != 0) return false;
    // The mark counts for the superuser too, whom the system lets write all the same.
    const bool ours = status.st_uid == geteuid() || geteuid() == 0;
    if (ours && (status.st_mode & S_IWUSR) == 0) return true;
    const int refused = faccessat(AT_FDCWD, native.c_str(), W_OK, AT_EACCESS);
    return refused != 0 && IsWriteProtection(errno);
}

void FlushFolderOf(const std::string& native, const std::string& name) {
    const int descriptor = Uninterrupted(
        [&] { return open(FolderOf(native).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (descriptor < 0) throw Failure(PathFailureNumber(errno, native), name);
    const int result = fsync(descriptor);
    const int systemError = errno;
    close(descriptor);
    // Some file systems keep no such state and say that they cannot flush a folder.
    if (result != 0 && systemError != EINVAL) throw Failure(DataFailureNumber(systemError), name);
}

void FlushTogether(const std::vector<std::function<void()>>& flushes) {
    if (flushes.empty()) return;
    // Where there can be no further thread, they wait for one another.
    std::vector<std::future<void>> others;
    for (std::size_t i = 1; i < flushes.size(); ++i) {
        others.push_back(std::async(std::launch::async | std::launch::deferred, flushes[i]));
    }
    std::exception_ptr first;
    const auto keep = [&first](auto&& flush) {
        try {
            flush();
        } catch (...) {
            if (!first) first = std::current_exception();
        }
    };
    keep(flushes.front());
    for (std::future<void>& other : others)
        keep([&other] { other.get(); });
    if (first) std::rethrow_exception(first);
}

}  // namespace larder
