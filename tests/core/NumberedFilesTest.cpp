#include "platform/NumberedFiles.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <limits>
#include <vector>

#include "core/NumberedFilesFixture.h"
#include "support/DiskLimit.h"
#include "support/Unprivileged.h"

namespace larder::test {
namespace {

// Opening and closing

TEST_F(NumberedFilesTest, ANumberThatIsNotOpenIs52InEveryOperation) {
    EXPECT_FALSE(files.IsOpen(7));
    EXPECT_EQ(ReadLineFailure(7), failure::BadFileNumber);
    EXPECT_EQ(Ignoring([&] { files.Length(7); }), failure::BadFileNumber);
    EXPECT_EQ(Ignoring([&] { files.Position(7); }), failure::BadFileNumber);
    EXPECT_EQ(Ignoring([&] { files.Seek(7, 1); }), failure::BadFileNumber);
    EXPECT_EQ(Ignoring([&] { files.AtEnd(7); }), failure::BadFileNumber);
    EXPECT_EQ(Ignoring([&] { files.ReadChars(7, 1); }), failure::BadFileNumber);
    EXPECT_EQ(Ignoring([&] { files.ReadNumber(7); }), failure::BadFileNumber);
    EXPECT_EQ(Ignoring([&] { files.Write(7, "x"); }), failure::BadFileNumber);
    EXPECT_EQ(Ignoring([&] { files.ReadRecord(7, 1); }), failure::BadFileNumber);
    EXPECT_EQ(Ignoring([&] { files.WriteRecord(7, 1, 1); }), failure::BadFileNumber);
    EXPECT_EQ(Ignoring([&] { files.Flush(7); }), failure::BadFileNumber);
    EXPECT_EQ(Ignoring([&] { files.Close(7); }), 0) << "closing it is no failure";
}

TEST_F(NumberedFilesTest, NumbersRunFrom1To511) {
    folder.Write("a.txt", "x");
    for (const int number : {-1, 0, 512, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(Ignoring([&] { files.Open(number, At("a.txt"), FileMode::Input); }),
                  failure::BadFileNumber);
        EXPECT_FALSE(files.IsOpen(number));
    }
    files.Open(511, At("a.txt"), FileMode::Input);
    EXPECT_TRUE(files.IsOpen(511));
}

TEST_F(NumberedFilesTest, AMissingFileIs53ForInputAndItsMissingFolder76) {
    EXPECT_EQ(OpenFailure(At("none.txt"), FileMode::Input), failure::FileNotFound);
    EXPECT_EQ(OpenFailure(At("no\\none.txt"), FileMode::Input), failure::PathNotFound);
    EXPECT_EQ(OpenFailure(At("no\\none.txt"), FileMode::Append), failure::PathNotFound);
    EXPECT_EQ(OpenFailure("Q:\\none.txt", FileMode::Input), failure::PathNotFound);
    EXPECT_EQ(OpenFailure("Q:\\none.txt", FileMode::Random), failure::PathNotFound);
    folder.Write("file", "");
    EXPECT_EQ(OpenFailure(At("file\\none.txt"), FileMode::Append), failure::PathNotFound);
    EXPECT_FALSE(files.IsOpen(1));
}

TEST_F(NumberedFilesTest, EveryModeButInputCreatesAMissingFile) {
    for (const FileMode mode :
         {FileMode::Output, FileMode::Append, FileMode::Binary, FileMode::Random}) {
        files.Open(1, At("new.txt"), mode);
        files.Close(1);
        EXPECT_TRUE(folder.Exists("new.txt"));
        EXPECT_EQ(folder.Read("new.txt"), "");
        folder.Delete("new.txt");
    }
}

TEST_F(NumberedFilesTest, AnOpenNumberIs55AndStaysInUse) {
    OpenInput("first\r\nsecond\r\n");
    files.ReadLine(1);
    folder.Write("b.txt", "other\r\n");
    EXPECT_EQ(OpenFailure(At("b.txt"), FileMode::Input), failure::FileAlreadyOpen);
    EXPECT_EQ(files.ReadLine(1), "second");
}

TEST_F(NumberedFilesTest, AFolderOrAPipeInThePlaceOfAFileIs75) {
    folder.MakeFolder("sub");
    ASSERT_EQ(mkfifo(folder.Native("pipe").c_str(), 0600), 0);
    for (const FileMode mode : {FileMode::Input, FileMode::Output, FileMode::Random}) {
        EXPECT_EQ(OpenFailure(At("sub"), mode), failure::PathAccess);
        EXPECT_EQ(OpenFailure(At("pipe"), mode), failure::PathAccess);
    }
}

TEST_F(NumberedFilesTest, AFileThatMustNotBeReadIs75) {
    folder.Write("secret.txt", "x");
    chmod(folder.Native("secret.txt").c_str(), 0);
    const Unprivileged unprivileged;
    EXPECT_EQ(OpenFailure(At("secret.txt"), FileMode::Input), failure::PathAccess);
}

TEST_F(NumberedFilesTest, AFileThatMustNotBeMadeIs75InEveryModeThatMakesIt) {
    folder.MakeFolder("locked");
    chmod(folder.Native("locked").c_str(), 0555);
    const Unprivileged unprivileged;
    for (const FileMode mode :
         {FileMode::Output, FileMode::Append, FileMode::Binary, FileMode::Random}) {
        EXPECT_EQ(OpenFailure(At("locked\\a.ind"), mode), failure::PathAccess);
    }
    EXPECT_EQ(OpenFailure(At("locked\\a.ind"), FileMode::Input), failure::FileNotFound);
}

TEST_F(NumberedFilesTest, ARandomFileThatMustNotBeWrittenOpensForReadingAlone) {
    folder.Write("a.ind", std::string("\x07\0\0\0", 4));
    chmod(folder.Native("a.ind").c_str(), 0444);
    const Unprivileged unprivileged;
    files.Open(1, At("a.ind"), FileMode::Random);
    EXPECT_EQ(files.ReadRecord(1, 1), 7);
    EXPECT_EQ(Ignoring([&] { files.WriteRecord(1, 1, 8); }), failure::PathAccess);
    EXPECT_EQ(Ignoring([&] { files.Open(2, At("a.ind"), FileMode::Append); }), failure::PathAccess);
}

TEST_F(NumberedFilesTest, AFailureNamesTheProgramsPathAndTheUsualText) {
    try {
        files.Open(1, At("none.txt"), FileMode::Input);
        FAIL();
    } catch (const Failure& f) {
        EXPECT_EQ(f.Source, At("none.txt"));
        EXPECT_EQ(f.Description, "File not found");
    }
}

TEST_F(NumberedFilesTest, FreeNumberIsTheLowestThatIsNotOpenAnd67WhenAllAre) {
    EXPECT_EQ(files.FreeNumber(), 1);
    for (int number = 1; number <= NumberedFiles::MaxNumber; ++number) {
        files.Open(number, At("a.txt"), FileMode::Append);
    }
    EXPECT_EQ(Ignoring([&] { files.FreeNumber(); }), failure::TooManyFiles);
    files.Close(33);
    EXPECT_EQ(files.FreeNumber(), 33);
    files.CloseAll();
    EXPECT_EQ(files.FreeNumber(), 1);
    EXPECT_FALSE(files.IsOpen(511));
}

TEST_F(NumberedFilesTest, NamesMatchWithoutRegardToCase) {
    folder.Write("DATA/RECIPES.YDB", "x\r\n");
    files.Open(1, At("Data\\Recipes.ydb"), FileMode::Input);
    EXPECT_EQ(files.ReadLine(1), "x");
    files.Open(2, At("Data\\recipes.ydb"), FileMode::Append);
    files.Write(2, "y");
    EXPECT_EQ(folder.Read("DATA/RECIPES.YDB"), "x\r\ny") << "no second file beside it";
}

// Writing

TEST_F(NumberedFilesTest, OutputEmptiesTheFileAndAppendGoesOnBehindItsEnd) {
    folder.Write("a.txt", "old");
    files.Open(1, At("a.txt"), FileMode::Append);
    EXPECT_EQ(files.Position(1), 4);
    files.WriteLine(1, "new");
    EXPECT_EQ(folder.Read("a.txt"), "oldnew\r\n") << "with the system at once, without a close";
    EXPECT_EQ(files.Position(1), 9);
    files.Close(1);
    files.Open(1, At("a.txt"), FileMode::Output);
    EXPECT_EQ(folder.Read("a.txt"), "");
    files.Write(1, "");
    files.WriteLine(1, "");
    EXPECT_EQ(folder.Read("a.txt"), "\r\n");
}

TEST_F(NumberedFilesTest, ABinaryFileIsReadAndWrittenAtAnyByte) {
    folder.Write("a.txt", "0123456789");
    files.Open(1, At("a.txt"), FileMode::Binary);
    files.Seek(1, 4);
    files.Write(1, "abc");
    EXPECT_EQ(files.ReadChars(1, 2), "67");
    files.Seek(1, 3);
    EXPECT_EQ(files.ReadLine(1), "2abc6789");
    EXPECT_EQ(folder.Read("a.txt"), "012abc6789");
}

TEST_F(NumberedFilesTest, AnOperationThatTheModeDoesNotAllowIs54) {
    files.Open(1, At("out.txt"), FileMode::Output);
    files.Open(2, At("out.txt"), FileMode::Input);
    files.Open(3, At("a.ind"), FileMode::Random);
    EXPECT_EQ(ReadLineFailure(1), failure::BadFileMode);
    EXPECT_EQ(Ignoring([&] { files.ReadChars(1, 0); }), failure::BadFileMode);
    EXPECT_EQ(Ignoring([&] { files.Write(2, "x"); }), failure::BadFileMode);
    EXPECT_EQ(Ignoring([&] { files.WriteLine(3, "x"); }), failure::BadFileMode);
    EXPECT_EQ(ReadLineFailure(3), failure::BadFileMode);
    EXPECT_EQ(Ignoring([&] { files.ReadRecord(2, 1); }), failure::BadFileMode);
    EXPECT_EQ(Ignoring([&] { files.WriteRecord(1, 1, 1); }), failure::BadFileMode);
}

TEST_F(NumberedFilesTest, AFullDiskIs61AndSparesWhatStandsThere) {
    const DiskLimit limit(4096);
    files.Open(1, At("a.txt"), FileMode::Append);
    files.Write(1, std::string(4000, 'x'));
    EXPECT_EQ(Ignoring([&] { files.Write(1, std::string(4000, 'y')); }), failure::DiskFull);
    EXPECT_EQ(folder.Read("a.txt").substr(0, 4000), std::string(4000, 'x'));
    EXPECT_EQ(files.Position(1), 4001);
}

// Records

TEST_F(NumberedFilesTest, ARecordIsASignedNumberWithItsLowByteFirst) {
    files.Open(1, At("a.ind"), FileMode::Random);
    files.WriteRecord(1, 1, 0x01020304);
    files.WriteRecord(1, 2, -2);
    EXPECT_EQ(folder.Read("a.ind"), "\x04\x03\x02\x01\xFE\xFF\xFF\xFF");
    EXPECT_EQ(files.ReadRecord(1, 1), 0x01020304);
    EXPECT_EQ(files.Position(1), 2) << "positions of such a file count records";
    EXPECT_EQ(files.ReadRecord(1, 2), -2);
    EXPECT_EQ(files.Length(1), 8) << "and lengths bytes";
}

TEST_F(NumberedFilesTest, ARecordBehindTheEndOrHalfBehindItReadsAsNought) {
    folder.Write("a.ind", std::string("\x01\0\0\0\x02\x02\x02", 7));
    files.Open(1, At("a.ind"), FileMode::Random);
    EXPECT_EQ(files.ReadRecord(1, 1), 1);
    EXPECT_EQ(files.ReadRecord(1, 2), 0);
    EXPECT_EQ(files.ReadRecord(1, 3), 0);
    EXPECT_EQ(files.ReadRecord(1, std::int64_t{1} << 40), 0);
}

TEST_F(NumberedFilesTest, ARecordBelow1Is63AndOneOutOfAllReachAnOverflow) {
    files.Open(1, At("a.ind"), FileMode::Random);
    EXPECT_EQ(Ignoring([&] { files.ReadRecord(1, 0); }), failure::BadRecordNumber);
    EXPECT_EQ(Ignoring([&] { files.WriteRecord(1, -1, 5); }), failure::BadRecordNumber);
    EXPECT_EQ(Ignoring([&] { files.Seek(1, 0); }), failure::BadRecordNumber);
    EXPECT_EQ(Ignoring([&] { files.ReadRecord(1, std::numeric_limits<std::int64_t>::max()); }),
              failure::Overflow);
}

TEST_F(NumberedFilesTest, RecordsMayBeLongerThanTheirNumberButNotShorter) {
    files.Open(1, At("a.ind"), FileMode::Random, 8);
    files.WriteRecord(1, 2, 9);
    EXPECT_EQ(files.Length(1), 12);
    EXPECT_EQ(files.ReadRecord(1, 2), 9);
    EXPECT_EQ(files.ReadRecord(1, 1), 0);
    EXPECT_EQ(Ignoring([&] { files.Open(2, At("a.ind"), FileMode::Random, 3); }),
              failure::InvalidArgument);
}

// By path

TEST_F(NumberedFilesTest, DeleteTakesAFileAwayAndIs53WithoutIt) {
    folder.Write("a.txt", "x");
    files.Delete(At("A.txt"));
    EXPECT_FALSE(folder.Exists("a.txt"));
    EXPECT_EQ(Ignoring([&] { files.Delete(At("a.txt")); }), failure::FileNotFound);
    folder.MakeFolder("sub");
    EXPECT_EQ(Ignoring([&] { files.Delete(At("sub")); }), failure::PathAccess);
}

TEST_F(NumberedFilesTest, ReplacePutsTheNewFileInThePlaceOfTheOld) {
    folder.Write("New.txt", "new");
    folder.Write("old.TXT", "old");
    files.Replace(At("New.txt"), At("Old.txt"));
    EXPECT_EQ(folder.Read("old.TXT"), "new");
    EXPECT_FALSE(folder.Exists("New.txt"));
    EXPECT_FALSE(folder.Exists("Old.txt"));
    EXPECT_EQ(Ignoring([&] { files.Replace(At("New.txt"), At("Old.txt")); }),
              failure::FileNotFound);
    EXPECT_EQ(Ignoring([&] { files.Replace(At("old.TXT"), At("no\\such.txt")); }),
              failure::PathNotFound);
    EXPECT_EQ(folder.Read("old.TXT"), "new");
}

TEST_F(NumberedFilesTest, WhatIsReplacedKeepsWhoMayReadAndWriteIt) {
    using std::filesystem::perms;
    const auto rightsOf = [&](const std::string& name) {
        return std::filesystem::status(folder.Native(name)).permissions();
    };
    const perms own = perms::owner_read | perms::owner_write;
    for (const perms rights : {own, own | perms::group_read | perms::group_write, own | perms::all,
                               perms::owner_read | perms::others_read}) {
        folder.Write("Old.txt", "old");
        std::filesystem::permissions(folder.Native("Old.txt"), rights);
        folder.Write("New.txt", "new");
        files.Replace(At("New.txt"), At("Old.txt"));
        EXPECT_EQ(folder.Read("Old.txt"), "new");
        EXPECT_EQ(rightsOf("Old.txt"), rights | own) << static_cast<int>(rights);
        folder.Delete("Old.txt");
    }
}

// What the watcher sees

TEST_F(NumberedFilesTest, TheWatcherIsToldEveryOperationBeforeItHappens) {
    std::vector<std::string> log;
    folder.Write("a.txt", "old");
    files.Watch([&](const NumberedFiles::Access& access) {
        log.push_back(std::string(access.Kind) + " " + std::to_string(access.Number) + " " +
                      std::string(access.Path.substr(access.Path.rfind('\\') + 1)) + " " +
                      std::to_string(access.Bytes));
    });
    files.Open(3, At("a.txt"), FileMode::Output);
    files.WriteLine(3, "abc");
    files.Flush(3);
    files.Close(3);
    files.Open(4, At("a.ind"), FileMode::Random);
    files.WriteRecord(4, 1, 1);
    files.ReadRecord(4, 1);
    files.CloseAll();
    files.Replace(At("a.ind"), At("a.txt"));
    files.Delete(At("a.txt"));
    const std::vector<std::string> expected = {
        "open 3 a.txt 0",  "truncate 3 a.txt 0", "write 3 a.txt 5", "flush 3 a.txt 0",
        "close 3 a.txt 0", "open 4 a.ind 0",     "write 4 a.ind 4", "read 4 a.ind 4",
        "close 4 a.ind 0", "rename 0 a.txt 0",   "flush 0 a.txt 0", "delete 0 a.txt 0"};
    EXPECT_EQ(log, expected);
}

TEST_F(NumberedFilesTest, AFailureOfTheWatcherKeepsTheOperationFromHappening) {
    folder.Write("a.txt", "old");
    const auto fail = [](const NumberedFiles::Access& access) {
        throw Failure(failure::PathAccess, std::string(access.Kind));
    };
    files.Watch(fail);
    EXPECT_EQ(OpenFailure(At("a.txt"), FileMode::Output), failure::PathAccess);
    EXPECT_FALSE(files.IsOpen(1));
    files.Watch(nullptr);
    EXPECT_EQ(folder.Read("a.txt"), "old");
    files.Open(1, At("a.txt"), FileMode::Append);
    files.Watch(fail);
    EXPECT_EQ(Ignoring([&] { files.Write(1, "x"); }), failure::PathAccess);
    EXPECT_EQ(Ignoring([&] { files.Delete(At("a.txt")); }), failure::PathAccess);
    EXPECT_EQ(folder.Read("a.txt"), "old");
}

TEST_F(NumberedFilesTest, ANumberIsFreeAfterAFailedClose) {
    OpenInput("x");
    files.Open(2, At("a.txt"), FileMode::Input);
    files.Watch([](const NumberedFiles::Access& access) {
        if (access.Kind == "close" && access.Number == 1) {
            throw Failure(failure::DeviceError, "test");
        }
    });
    EXPECT_EQ(Ignoring([&] { files.CloseAll(); }), failure::DeviceError);
    EXPECT_FALSE(files.IsOpen(1));
    EXPECT_FALSE(files.IsOpen(2)) << "the others are closed all the same";
}

}  // namespace
}  // namespace larder::test
