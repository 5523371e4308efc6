#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/Failure.h"
#include "platform/NumberedFiles.h"
#include "platform/Paths.h"
#include "support/DiskLimit.h"
#include "support/TempFolder.h"
#include "support/Unprivileged.h"

namespace larder {
namespace {

class ACopiedFile : public ::testing::Test {
  protected:
    std::string At(const std::string& name) const { return root + "\\" + name; }
    int Copy(const std::string& from, const std::string& to) {
        return Ignoring([&] { files.CopyFile(At(from), At(to)); });
    }
    static std::string Bytes(std::size_t count) {
        std::string bytes(count, '\0');
        for (std::size_t i = 0; i < count; ++i)
            bytes[i] = static_cast<char>(i * 31 + i / 257);
        return bytes;
    }

    test::TempFolder folder;
    Paths paths;
    std::string root = paths.Alias(folder.Native());
    NumberedFiles files{paths};
};

TEST_F(ACopiedFile, IsTheSameByteForByteWhateverItsLength) {
    for (const std::size_t length : {0U, 1U, 262'143U, 262'144U, 262'145U, 1'000'000U}) {
        folder.Write("a.jpg", Bytes(length));
        EXPECT_EQ(Copy("a.jpg", "b.jpg"), 0);
        EXPECT_EQ(folder.Read("b.jpg"), Bytes(length)) << length;
        EXPECT_EQ(folder.Read("a.jpg"), Bytes(length)) << length;
        EXPECT_FALSE(folder.Exists("b.jpg.new"));
    }
}

TEST_F(ACopiedFile, StandsOnTheDiskBeforeItTakesThePlaceOfTheOldOne) {
    folder.Write("a.jpg", "new");
    folder.Write("b.jpg", "the old one");
    std::vector<std::string> steps;
    files.Watch([&](const NumberedFiles::Access& access) {
        steps.emplace_back(access.Kind);
        if (access.Kind == "rename") {
            EXPECT_EQ(folder.Read("b.jpg"), "the old one");
            EXPECT_EQ(folder.Read("b.jpg.new"), "new");
        }
    });
    EXPECT_EQ(Copy("a.jpg", "b.jpg"), 0);
    EXPECT_EQ(steps, (std::vector<std::string>{"open", "open", "read", "write", "read", "flush",
                                               "close", "rename", "flush"}));
    EXPECT_EQ(folder.Read("b.jpg"), "new");
}

TEST_F(ACopiedFile, MakesItsFolderWhenThatIsMissing) {
    folder.Write("a.jpg", "x");
    EXPECT_EQ(Copy("a.jpg", "Food Photos\\7.jpg"), 0);
    EXPECT_EQ(folder.Read("Food Photos/7.jpg"), "x");
    EXPECT_EQ(Copy("a.jpg", "no\\such\\7.jpg"), failure::PathNotFound);
}

TEST_F(ACopiedFile, OverwritesWhatAnInterruptedCopyLeft) {
    folder.Write("a.jpg", "x");
    folder.Write("b.jpg.new", "a longer text that was left");
    EXPECT_EQ(Copy("a.jpg", "b.jpg"), 0);
    EXPECT_EQ(folder.Read("b.jpg"), "x");
}

TEST_F(ACopiedFile, OntoItselfStaysWhole) {
    folder.Write("a.jpg", "x");
    EXPECT_EQ(Copy("a.jpg", "a.jpg"), 0);
    EXPECT_EQ(folder.Read("a.jpg"), "x");
}

TEST_F(ACopiedFile, FailsByItsNumberAndTheTargetStays) {
    folder.Write("b.jpg", "old");
    folder.MakeFolder("folder.jpg");
    folder.Write("hidden.jpg", "x");
    std::filesystem::permissions(folder.Native("hidden.jpg"), std::filesystem::perms::none);
    const test::Unprivileged user;
    EXPECT_EQ(Copy("missing.jpg", "b.jpg"), failure::FileNotFound);
    EXPECT_EQ(Copy("folder.jpg", "b.jpg"), failure::PathAccess);
    EXPECT_EQ(Copy("hidden.jpg", "b.jpg"), failure::PathAccess);
    EXPECT_EQ(folder.Read("b.jpg"), "old");
}

TEST_F(ACopiedFile, LeavesNothingBesideTheTargetWhenAStepFails) {
    folder.Write("a.jpg", Bytes(600'000));
    folder.Write("b.jpg", "old");
    for (const char* kind : {"open", "read", "write", "flush", "close", "rename"}) {
        files.Watch([kind](const NumberedFiles::Access& access) {
            const bool late = access.Kind != "open" || access.Path.ends_with(".new");
            if (access.Kind == kind && late) throw Failure(failure::DeviceError, "test");
        });
        EXPECT_EQ(Copy("a.jpg", "b.jpg"), failure::DeviceError) << kind;
        EXPECT_EQ(folder.Read("b.jpg"), "old") << kind;
        EXPECT_FALSE(folder.Exists("b.jpg.new")) << kind;
    }
}

TEST_F(ACopiedFile, OnAFullDiskLeavesTheOldOne) {
    folder.Write("a.jpg", Bytes(600'000));
    folder.Write("b.jpg", "old");
    const test::DiskLimit full(300'000);
    EXPECT_EQ(Copy("a.jpg", "b.jpg"), failure::DiskFull);
    EXPECT_EQ(folder.Read("b.jpg"), "old");
    EXPECT_FALSE(folder.Exists("b.jpg.new"));
}

}  // namespace
}  // namespace larder
