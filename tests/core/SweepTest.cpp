#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/Failure.h"
#include "platform/NumberedFiles.h"
#include "platform/Paths.h"
#include "support/TempFolder.h"

namespace larder {
namespace {

using test::TempFolder;

// Records of 100 bytes whose first line is their number, and their places in an index.
class SweepTest : public testing::Test {
  protected:
    static constexpr int Records = 1000;
    static constexpr int RecordLength = 100;
    static constexpr int Text = 1;
    static constexpr int Index = 2;

    void SetUp() override {
        std::string text;
        for (int record = 1; record <= Records; ++record)
            text += Record("title " + std::to_string(record));
        folder.Write("a.txt", text);
        files.Open(Text, At("a.txt"), FileMode::Input);
        files.Open(Index, At("a.ind"), FileMode::Random);
        for (int record = 1; record <= Records; ++record)
            files.WriteRecord(Index, record, PlaceOf(record));
        files.Watch([this](const NumberedFiles::Access& access) {
            if (access.Kind != "read") return;
            ++reads;
            bytes += access.Bytes;
            if (failing) throw Failure(failure::PathAccess, "test");
        });
    }
    static std::string Record(std::string text) {
        text += "\r\n";
        text.resize(RecordLength, ' ');
        return text;
    }
    static int FoundTitle(int record) {
        return static_cast<int>(std::string("title \r\n").size() + std::to_string(record).size());
    }
    static int PlaceOf(int record) { return (record - 1) * RecordLength + 1; }
    std::string At(const std::string& name) const { return root + "\\" + name; }
    std::string Title(int record) {
        files.Seek(Text, files.ReadRecord(Index, record));
        return files.ReadLine(Text);
    }

    TempFolder folder{TempFolder::InMemory()};
    Paths paths;
    std::string root = paths.Alias(folder.Native());
    NumberedFiles files{paths};
    int reads = 0;
    std::uint64_t bytes = 0;
    bool failing = false;
};

TEST_F(SweepTest, WithoutASweepEveryTitleIsReadFromBothFiles) {
    for (int record = 1; record <= 10; ++record)
        Title(record);
    EXPECT_EQ(reads, 20);
}

TEST_F(SweepTest, TitlesThatFollowEachOtherCloselyCostAFewReads) {
    const NumberedFiles::Sweep sweep(files);
    for (int record = 1; record <= Records; record += 3)
        EXPECT_EQ(Title(record), "title " + std::to_string(record));
    EXPECT_LE(reads, 12);
}

TEST_F(SweepTest, TitlesFarFromEachOtherAreReadAlone) {
    std::string text = std::string(200'000, 'x') + "\r\n";
    for (int i = 0; i < 5; ++i)
        text += "title\r\n" + std::string(100'000, 'x') + "\r\n";
    folder.Write("b.txt", text);
    files.Open(3, At("b.txt"), FileMode::Input);
    const NumberedFiles::Sweep sweep(files);
    for (int i = 0; i < 5; ++i) {
        files.Seek(3, 200'003 + i * 100'009);
        EXPECT_EQ(files.ReadLine(3), "title");
    }
    EXPECT_EQ(reads, 5);
    EXPECT_LE(bytes, 5u * 512);
}

TEST_F(SweepTest, TitlesThatAreNearEachOtherOnlyNowAndThenAreReadAlone) {
    std::string text(400'000, 'x');
    std::vector<int> places;
    for (int place = 0; place < 390'000; place += places.size() % 2 == 0 ? 9'000 : 1'000) {
        text.replace(static_cast<std::size_t>(place), 7, "title\r\n");
        places.push_back(place + 1);
    }
    folder.Write("b.txt", text);
    files.Open(3, At("b.txt"), FileMode::Input);
    const NumberedFiles::Sweep sweep(files);
    for (const int place : places) {
        files.Seek(3, place);
        EXPECT_EQ(files.ReadLine(3), "title");
    }
    EXPECT_LE(bytes, 512 + 128 * places.size()) << "not what lies between them";
}

TEST_F(SweepTest, EveryOrderGivesTheSameTitles) {
    const NumberedFiles::Sweep sweep(files);
    unsigned number = 1;
    for (int i = 0; i < 3000; ++i) {
        number = number * 1103515245U + 12345U;
        const int step = static_cast<int>(number >> 16) % (i % 2 == 0 ? 8 : Records);
        const int record = 1 + (i * 7 + step) % Records;
        ASSERT_EQ(Title(record), "title " + std::to_string(record)) << "at step " << i;
        ASSERT_EQ(files.Position(Index), record + 1);
        ASSERT_EQ(files.Position(Text), PlaceOf(record) + FoundTitle(record)) << "at step " << i;
    }
}

TEST_F(SweepTest, AWriteThroughTheTableIsSeenByTheNextRead) {
    const NumberedFiles::Sweep sweep(files);
    EXPECT_EQ(Title(1), "title 1");
    files.Open(3, At("a.txt"), FileMode::Binary);
    files.Seek(3, PlaceOf(2));
    files.Write(3, "TITLE");
    EXPECT_EQ(Title(2), "TITLE 2");
    files.WriteRecord(Index, 3, PlaceOf(500));
    EXPECT_EQ(Title(3), "title 500");
    EXPECT_EQ(Title(4), "title 4");
}

TEST_F(SweepTest, AFileThatIsEmptiedGivesNothingMore) {
    const NumberedFiles::Sweep sweep(files);
    EXPECT_EQ(Title(1), "title 1");
    files.Open(3, At("a.txt"), FileMode::Output);
    files.Seek(Text, PlaceOf(2));
    EXPECT_EQ(Ignoring([&] { files.ReadLine(Text); }), failure::InputPastEnd);
}

TEST_F(SweepTest, AClosedNumberIsClosedAndReadAnewWhenItIsOpenAgain) {
    const NumberedFiles::Sweep sweep(files);
    EXPECT_EQ(Title(1), "title 1");
    files.Close(Text);
    EXPECT_EQ(Ignoring([&] { Title(2); }), failure::BadFileNumber);
    folder.Write("a.txt", Record("one") + Record("two"));
    files.Open(Text, At("a.txt"), FileMode::Input);
    EXPECT_EQ(Title(2), "two");
}

TEST_F(SweepTest, TheNextSweepSeesWhatAnotherProgramHasWritten) {
    {
        const NumberedFiles::Sweep sweep(files);
        EXPECT_EQ(Title(1), "title 1");
    }
    folder.Write("a.txt", Record("one") + Record("two") + Record("three"));
    {
        const NumberedFiles::Sweep sweep(files);
        EXPECT_EQ(Title(2), "two");
    }
    folder.Write("a.txt", Record("ONE") + Record("TWO") + Record("THREE"));
    EXPECT_EQ(Title(3), "THREE") << "nothing of a sweep lives on behind it";
}

TEST_F(SweepTest, ABlockFromBeforeTheSweepDoesNotServeIt) {
    EXPECT_EQ(Title(1), "title 1");
    folder.Write("a.txt", Record("one") + Record("two"));
    const NumberedFiles::Sweep sweep(files);
    EXPECT_EQ(Title(2), "two");
}

TEST_F(SweepTest, AFailedReadIsToldAndTheNextOneGoesToTheFile) {
    const NumberedFiles::Sweep sweep(files);
    EXPECT_EQ(Title(1), "title 1");
    failing = true;
    EXPECT_EQ(Ignoring([&] { Title(900); }), failure::PathAccess);
    failing = false;
    EXPECT_EQ(Title(900), "title 900");
    EXPECT_EQ(Title(2), "title 2");
}

TEST_F(SweepTest, ARecordBehindTheEndOrHalfBehindItIsNought) {
    folder.Write("b.ind", std::string("\x07\0\0\0\x01\x01", 6));
    files.Open(3, At("b.ind"), FileMode::Random);
    const NumberedFiles::Sweep sweep(files);
    EXPECT_EQ(files.ReadRecord(3, 1), 7);
    EXPECT_EQ(files.ReadRecord(3, 2), 0);
    EXPECT_EQ(files.ReadRecord(3, 3), 0);
    EXPECT_EQ(files.ReadRecord(3, 1'000'000), 0);
    EXPECT_EQ(files.ReadRecord(3, 1), 7);
    EXPECT_EQ(Ignoring([&] { files.ReadRecord(3, 0); }), failure::BadRecordNumber);
}

TEST_F(SweepTest, CharactersAndLinesMix) {
    const NumberedFiles::Sweep sweep(files);
    for (int record = 1; record <= 20; ++record) {
        EXPECT_EQ(Title(record), "title " + std::to_string(record));
        EXPECT_EQ(files.ReadChars(Text, 3), "   ");
        EXPECT_EQ(files.ReadLine(Text).substr(0, 3), "   ");
    }
}

}  // namespace
}  // namespace larder
