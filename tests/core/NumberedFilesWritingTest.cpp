#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "platform/Failure.h"
#include "platform/NumberedFiles.h"
#include "platform/Paths.h"
#include "support/Killer.h"
#include "support/TempFolder.h"
#include "support/Unprivileged.h"

namespace larder {
namespace {

// What writers of whole databases need beside single lines and records.
class NumberedFilesWritingTest : public testing::Test {
  protected:
    std::string At(const std::string& name) const { return root + "\\" + name; }
    void Watch() {
        files.Watch([this](const NumberedFiles::Access& access) {
            log_.push_back(std::string(access.Kind) + " " + std::to_string(access.Number));
        });
    }

    test::TempFolder folder;
    Paths paths;
    std::string root = paths.Alias(folder.Native());
    NumberedFiles files{paths};
    std::vector<std::string> log_;
};

TEST_F(NumberedFilesWritingTest, RecordsInARowAreOneAccess) {
    files.Open(1, At("a.ind"), FileMode::Random);
    Watch();
    files.WriteRecords(1, 2, {-1, 258, 7});
    EXPECT_EQ(folder.Read("a.ind"),
              std::string("\0\0\0\0\xFF\xFF\xFF\xFF\x02\x01\0\0\x07\0\0\0", 16));
    EXPECT_EQ(files.ReadRecords(1, 2, 3), (std::vector<std::int32_t>{-1, 258, 7}));
    EXPECT_EQ(log_, (std::vector<std::string>{"write 1", "read 1"}));
}

TEST_F(NumberedFilesWritingTest, RecordsBehindTheEndOrHalfBehindItAreZero) {
    folder.Write("a.ind", std::string("\x05\0\0\0\x06\0\0", 7));
    files.Open(1, At("a.ind"), FileMode::Random);
    EXPECT_EQ(files.ReadRecords(1, 1, 3), (std::vector<std::int32_t>{5, 0, 0}));
    EXPECT_TRUE(files.ReadRecords(1, 1, 0).empty());
    EXPECT_EQ(Ignoring([&] { files.ReadRecords(1, 0, 1); }), failure::BadRecordNumber);
    EXPECT_EQ(Ignoring([&] { files.ReadRecords(1, 1, -1); }), failure::InvalidArgument);
}

TEST_F(NumberedFilesWritingTest, AFileIsCutOrFilledUpWithZeros) {
    folder.Write("a.txt", "abcdef");
    files.Open(1, At("a.txt"), FileMode::Binary);
    files.SetLength(1, 2);
    EXPECT_EQ(folder.Read("a.txt"), "ab");
    files.SetLength(1, 3);
    EXPECT_EQ(folder.Read("a.txt"), std::string("ab\0", 3));
    EXPECT_EQ(Ignoring([&] { files.SetLength(1, -1); }), failure::InvalidArgument);
    files.Close(1);
    files.Open(1, At("a.txt"), FileMode::Input);
    EXPECT_EQ(Ignoring([&] { files.SetLength(1, 1); }), failure::BadFileMode);
}

TEST_F(NumberedFilesWritingTest, SeveralFilesAndTheirFolderAreFlushedTogether) {
    files.Open(1, At("a.txt"), FileMode::Output);
    files.Open(2, At("b.txt"), FileMode::Output);
    Watch();
    files.FlushAll({1, 2}, At("a.txt"));
    EXPECT_EQ(log_, (std::vector<std::string>{"flush 1", "flush 2", "flush 0"}));
    EXPECT_EQ(Ignoring([&] { files.FlushAll({1, 3}); }), failure::BadFileNumber);
    EXPECT_EQ(Ignoring([&] { files.FlushAll({}, At("no\\such.txt")); }), failure::PathNotFound);
}

TEST_F(NumberedFilesWritingTest, WithoutAFurtherThreadFilesAreFlushedOneAfterTheOther) {
    files.Open(1, At("a.txt"), FileMode::Output);
    files.Open(2, At("b.txt"), FileMode::Output);
    EXPECT_FALSE(test::KilledInAProcess([&] {
        if (geteuid() == 0 && setuid(65534) != 0) FAIL();  // no limit holds the superuser
        const rlimit none{0, 0};
        ASSERT_EQ(setrlimit(RLIMIT_NPROC, &none), 0);
        EXPECT_THROW(std::thread([] {}).join(), std::system_error) << "the limit holds";
        EXPECT_NO_THROW(files.FlushAll({1, 2}));
    }));
}

TEST_F(NumberedFilesWritingTest, AFileExistsOrNotWithoutNotice) {
    folder.Write("a.txt", "x");
    folder.MakeFolder("b");
    Watch();
    EXPECT_TRUE(files.Exists(At("a.txt")));
    EXPECT_FALSE(files.Exists(At("b")));
    EXPECT_FALSE(files.Exists(At("c")));
    EXPECT_TRUE(log_.empty());
}

TEST_F(NumberedFilesWritingTest, WhereNobodyCanTellWhetherAFileExistsIsAFailure) {
    std::filesystem::create_symlink("round", folder.Native("round"));
    EXPECT_EQ(Ignoring([&] { files.Exists(At("round")); }), failure::PathAccess);
    EXPECT_FALSE(files.Exists(At("nowhere\\a.txt")));
    folder.Write("a.txt", "x");
    EXPECT_FALSE(files.Exists(At("a.txt\\b.txt")));
}

TEST_F(NumberedFilesWritingTest, AMarkOfWriteProtectionIsTakenOffOnce) {
    folder.Write("a.txt", "x");
    ASSERT_EQ(chmod(folder.Native("a.txt").c_str(), 0444), 0);
    EXPECT_TRUE(files.ClearReadOnly(At("a.txt")));
    struct stat status {};
    ASSERT_EQ(stat(folder.Native("a.txt").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0644U);
    EXPECT_FALSE(files.ClearReadOnly(At("a.txt"))) << "there is none any more";
    EXPECT_FALSE(files.ClearReadOnly(At("missing.txt")));
}

TEST_F(NumberedFilesWritingTest, AMarkOnSomebodyElsesFileStays) {
    folder.Write("a.txt", "x");
    ASSERT_EQ(chmod(folder.Native("a.txt").c_str(), 0444), 0);
    const bool superuser = geteuid() == 0;
    const test::Unprivileged somebodyElse;
    EXPECT_EQ(files.ClearReadOnly(At("a.txt")), !superuser) << "an owner may take it off";
}

}  // namespace
}  // namespace larder
