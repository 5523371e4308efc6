#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "platform/Failure.h"
#include "platform/NumberedFiles.h"
#include "platform/Paths.h"
#include "support/TempFolder.h"

namespace larder::test {

// A file table over a folder of the test's own.
class NumberedFilesTest : public ::testing::Test {
  protected:
    std::string At(const std::string& name) const { return root + "\\" + name; }
    int OpenFailure(const std::string& path, FileMode mode) {
        return Ignoring([&] { files.Open(1, path, mode); });
    }
    int ReadLineFailure(int number) {
        return Ignoring([&] { files.ReadLine(number); });
    }
    void OpenInput(const std::string& content) {
        folder.Write("a.txt", content);
        files.Close(1);
        files.Open(1, At("a.txt"), FileMode::Input);
    }
    // Counts the operations of one kind from now on.
    void Count(const std::string& kind) {
        counted = 0;
        bytes = 0;
        files.Watch([this, kind](const NumberedFiles::Access& access) {
            if (access.Kind != kind) return;
            ++counted;
            bytes += access.Bytes;
        });
    }

    TempFolder folder;
    Paths paths;
    std::string root = paths.Alias(folder.Native());
    NumberedFiles files{paths};
    int counted = 0;
    std::uint64_t bytes = 0;
};

}  // namespace larder::test
