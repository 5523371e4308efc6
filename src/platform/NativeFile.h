#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace larder {

// An open file of the system: bytes at offsets (from 0), no position of its own, closed when it
// goes. Failures are those that NumberedFiles lists; their Source is the name given at opening.
class NativeFile {
  public:
    enum class Access {
        Read,       // must exist
        Write,      // created if missing
        ReadWrite,  // created if missing; for reading alone when it must not be written
    };

    // Only a regular file opens; anything else in its place is failure 75. `name` is what failures
    // call the file.
    NativeFile(const std::string& native, Access access, std::string name);
    ~NativeFile();
    NativeFile(const NativeFile&) = delete;
    NativeFile& operator=(const NativeFile&) = delete;

    std::int64_t Size() const;
    // Up to `count` bytes; fewer only at the end of the file.
    std::size_t Read(std::int64_t offset, char* to, std::size_t count) const;
    void Write(std::int64_t offset, std::string_view bytes);
    // Cuts the file, or fills it up with zeros.
    void Truncate(std::int64_t size);
    void Flush();
    // Sends what was written on its way without waiting for it, so that several files are at it
    // together before the first Flush waits. Flush alone promises anything.
    void StartFlush() const;
    // Closes now, so that a failure of closing can be told.
    void Close();

    // The file did not exist before it was opened here.
    bool Created() const { return created_; }

  private:
    int descriptor_ = -1;
    bool created_ = false;
    std::string name_;
};

// Whether a file that is there must not be written: it is ours and marked so (its owner has no
// right to write it), or the system refuses. A file that is missing must be.
bool MustNotBeWritten(const std::string& native);

// Carries the names in a folder to the disk. Failures as above.
void FlushFolderOf(const std::string& native, const std::string& name);

// Runs flushes at the same time: a disk carries out several that wait together for little more
// than the price of one. All are tried; the first failure is raised.
void FlushTogether(const std::vector<std::function<void()>>& flushes);

// The failure number for an error of the system met while opening, renaming or deleting `native`,
// and the one for an error met while reading or writing.
int PathFailureNumber(int systemError, const std::string& native);
int DataFailureNumber(int systemError);

}  // namespace larder
