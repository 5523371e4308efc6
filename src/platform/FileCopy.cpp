#include <sys/stat.h>

#include <cerrno>

#include "platform/Failure.h"
#include "platform/NativeFile.h"
#include "platform/NumberedFiles.h"
#include "platform/Paths.h"

namespace larder {

namespace {

constexpr std::size_t copyBlock = 256 * 1024;

}  // namespace

void NumberedFiles::CopyFile(const std::string& from, const std::string& to) {
    const std::string beside = to + ".new";
    MakeFolderOf(to);
    try {
        CopyBytes(from, beside);
        Replace(beside, to);
    } catch (const Failure&) {
        Ignoring([&] { Delete(beside); });
        throw;
    }
}

void NumberedFiles::MakeFolderOf(const std::string& path) {
    const std::string folder = path.substr(0, path.find_last_of('\\'));
    if (paths_.FolderExists(folder)) return;
    Tell("folder", 0, folder, 0);
    const std::string native = paths_.Native(folder);
    if (mkdir(native.c_str(), 0777) != 0) throw Failure(PathFailureNumber(errno, native), folder);
    Tell("flush", 0, folder, 0);
    FlushFolderOf(native, folder);
}

void NumberedFiles::CopyBytes(const std::string& from, const std::string& to) {
    Tell("open", 0, from, 0);
    NativeFile source(paths_.Native(from), NativeFile::Access::Read, from);
    if (paths_.FileExists(to)) Delete(to);  // what an earlier run left
    Tell("open", 0, to, 0);
    NativeFile copy(paths_.Native(to), NativeFile::Access::Write, to);
    std::string block(copyBlock, '\0');
    for (std::int64_t offset = 0;;) {
        Tell("read", 0, from, block.size());
        const std::size_t got = source.Read(offset, block.data(), block.size());
        if (got == 0) break;
        Tell("write", 0, to, got);
        copy.Write(offset, std::string_view(block).substr(0, got));
        offset += static_cast<std::int64_t>(got);
    }
    Tell("flush", 0, to, 0);
    copy.Flush();
    Tell("close", 0, to, 0);
    copy.Close();
}

}  // namespace larder
