#pragma once

#include <string>

#include "platform/Failure.h"
#include "platform/NumberedFiles.h"

namespace larder {

// Writes a text file so that it is the old or the new one, whole, at every moment: beside it first
// (its name with ".new" behind), then flushed and put in its place. `write` writes to the open
// number, which is closed afterwards. After a failure, which reaches the caller, nothing stands
// beside the old file.
template <typename Write>
void WriteWholeFile(NumberedFiles& files, int number, const std::string& path, Write&& write) {
    const std::string fresh = path + ".new";
    try {
        files.Open(number, fresh, FileMode::Output);
        write();
        files.Flush(number);
        files.Close(number);
        files.Replace(fresh, path);
    } catch (const Failure&) {
        Ignoring([&] { files.Close(number); });
        Ignoring([&] { files.Delete(fresh); });
        throw;
    }
}

}  // namespace larder
