#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace larder {

class Paths;

// How a numbered file is opened.
enum class FileMode {
    Input,   // sequential text, must exist
    Output,  // text, created or emptied
    Append,  // text, created if missing; the position is behind the last byte
    Binary,  // reading and writing at any byte, created if missing
    Random,  // records of a fixed length, created if missing
};

// Files by number: the one door to the file system for everything that is data. A number stands
// for a role and is fixed for the whole program; positions and records count from 1.
//
// What another open number has written is seen at once: a read after a Seek always goes to the
// file, and the rest of the block that a line was cut from serves the lines that follow it only
// until the number is sought or closed or anything is written through this table. So a title costs
// one read, and a walk over a whole file one read for many lines. A Sweep, below, lets blocks serve
// longer for as long as it lives. Every write is with the system when the call returns; Flush
// carries it to the disk.
//
// Failures: 52 the number is not open (or not 1 to 511), 53 the file is missing (Input), 54 the
// mode does not allow the operation, 55 the number is open already, 61 disk full, 62 reading past
// the end, 63 a position or record below 1, 75 the storage cannot be reached or not be written
// (a disc that is gone, a read-only file, a folder in the place of the file), 76 its folder is
// missing, 57 any other input/output error, 6 a number that does not fit. A failure of the file
// system has the program's path as its Source.
class NumberedFiles {
  public:
    static constexpr int MaxNumber = 511;

    // What the table is about to do to the outside; a test's hook may throw a Failure from it, or
    // count. Kind is "open", "read", "write", "flush", "close", "truncate", "rename", "delete",
    // "attributes" or "folder" (one is made).
    // Lengths and existence are asked for without notice.
    struct Access {
        std::string_view Kind;
        int Number;             // 0 for what goes by path alone
        std::string_view Path;  // the program's path; the new name for a rename
        std::uint64_t Bytes;    // asked for or handed over; 0 where there are none
    };
    using Watcher = std::function<void(const Access&)>;

    // For reading many records of a file one after another, as a search does. While one lives, a
    // Seek or ReadRecord may be served from the block that the number holds, if it was read in this
    // sweep and nothing was written through this table since; and as long as the places follow each
    // other closely, blocks grow, so that many titles cost one read. What another program writes
    // may thus be seen only by the next sweep: none may live while events run.
    class Sweep {
      public:
        explicit Sweep(NumberedFiles& files);
        ~Sweep();
        Sweep(const Sweep&) = delete;
        Sweep& operator=(const Sweep&) = delete;

      private:
        NumberedFiles& files_;
    };

    explicit NumberedFiles(const Paths& paths);
    ~NumberedFiles();
    NumberedFiles(const NumberedFiles&) = delete;
    NumberedFiles& operator=(const NumberedFiles&) = delete;

    // Called before every operation that reaches the file system. Null for none.
    void Watch(Watcher watcher);

    // A Binary or Random file that must not be written is opened for reading alone.
    void Open(int number, const std::string& path, FileMode mode, int recordLength = 4);
    // Closing a number that is not open is no failure. The number is free afterwards even when the
    // system reports a failure; CloseAll closes every number and then raises the first one.
    void Close(int number);
    void CloseAll();
    bool IsOpen(int number) const;
    // The lowest number that is not open; failure 67 when all are.
    int FreeNumber() const;

    std::int64_t Length(int number) const;         // LOF, in bytes
    std::int64_t Position(int number) const;       // of the next byte (or record), from 1
    void Seek(int number, std::int64_t position);  // byte, or record of a Random file
    bool AtEnd(int number) const;                  // EOF of a sequential file

    // The next line without its line end (CR LF, LF or CR); moves behind it. 62 at the end.
    std::string ReadLine(int number);
    // The same into a string that is used again and again, and past a line that nobody wants.
    void ReadLineInto(int number, std::string& line);
    void SkipLine(int number);
    // Hands one line after another to `take`, for as long as that asks for the next one or for the
    // one behind it. Lines end with CR LF or LF here. The text lasts until `take` returns, and
    // `take` uses no files. 62 when a line is asked for at the end.
    enum class AfterLine { Next, SkipOne, End };
    using LineTaker = std::function<AfterLine(std::string_view line)>;
    void WalkLines(int number, const LineTaker& take);
    // Exactly `count` bytes from the position. 62 when the file holds fewer, 5 when negative; the
    // length is checked against the file before memory is taken.
    std::string ReadChars(int number, std::int64_t count);
    // One formatted number from a line of its own: leading blanks skipped, up to a blank, comma or
    // line end; moves behind the line end. 0 for a text that is no number. 62 at the end.
    double ReadNumber(int number);

    // Writes the text at the position, and a CR LF behind it for WriteLine. After a failure the
    // position is where it was, and part of the text may stand behind it.
    void Write(int number, std::string_view text);
    void WriteLine(int number, std::string_view text);
    // A number as it stands in a line of its own: a blank (or the sign) before, a blank behind.
    void WriteNumberLine(int number, std::int64_t value);

    // Record `record` of a Random file of 4-byte records, signed and little-endian. A record
    // beyond the end reads as 0; one half beyond the end too. 63 below 1. Moves behind the record.
    std::int32_t ReadRecord(int number, std::int64_t record);
    void WriteRecord(int number, std::int64_t record, std::int32_t value);

    // `count` records, or values one behind the other from record `first` on, in one access.
    std::vector<std::int32_t> ReadRecords(int number, std::int64_t first, std::int64_t count);
    void WriteRecords(int number, std::int64_t first, const std::vector<std::int32_t>& values);

    // Cuts a file that is open for writing to a length, or fills it up with zeros. The position
    // stays.
    void SetLength(int number, std::int64_t bytes);

    // What was written stands on the disk when this returns, and so does the name of a file that
    // its Open created. A failed flush is a failure.
    void Flush(int number);
    // The same for several numbers at once, for little more than the price of one flush; with a
    // path, also for the names in its folder. All are tried, the first failure is raised.
    void FlushAll(const std::vector<int>& numbers, const std::string& namesBeside = {});

    // By path, outside the numbers. Delete of a missing file is failure 53. A file of which nobody
    // can tell whether it is there is a failure of Exists, which names it.
    bool Exists(const std::string& path) const;
    void Delete(const std::string& path);
    // Whether a file that is there is marked as not to be written, or the system refuses it.
    bool MustNotBeWritten(const std::string& path) const;
    // Lets the owner write a file that is marked as not to be written. False when there was no
    // such mark or it could not be taken away.
    bool ClearReadOnly(const std::string& path);
    // Puts `from` in place of `to` in one step, its rights as far as may be; flushes the folder.
    void Replace(const std::string& from, const std::string& to);
    // A copy, byte for byte, in the place of what `to` was: written beside it (its name with
    // ".new" behind), flushed, and put there in one step. Makes the folder of `to` when only that
    // is missing. After a failure `to` is what it was, and nothing stands beside it. Takes little
    // memory, however long the file is.
    void CopyFile(const std::string& from, const std::string& to);

  private:
    struct Slot;
    using RecordBytes = std::array<char, 4>;
    Slot& At(int number, const char* source) const;
    void Tell(std::string_view kind, int number, std::string_view path, std::uint64_t bytes) const;
    bool HoldsCurrentBlock(const Slot& slot) const;
    void MoveTo(Slot& slot, std::int64_t offset) const;
    std::size_t ReadRecordBytes(Slot& slot, std::int64_t offset, RecordBytes& to) const;
    template <typename Take>
    void WalkLine(int number, Take&& take);  // hands the stretches of the next line to `take`
    static AfterLine WalkBlock(Slot& slot, AfterLine after, const LineTaker& take);
    void TakeLineApart(Slot& slot, std::string* line);
    void FillBlock(Slot& slot) const;
    void SkipLineFeed(Slot& slot) const;
    void WriteAt(Slot& slot, std::int64_t offset, std::string_view bytes);
    void MakeFolderOf(const std::string& path);
    void CopyBytes(const std::string& from, const std::string& to);

    const Paths& paths_;
    Watcher watcher_;
    std::array<std::unique_ptr<Slot>, MaxNumber + 1> slots_;
    // What was written through this table, and the last sweep; they date the blocks of the slots.
    std::uint64_t writes_ = 0;
    std::uint64_t sweep_ = 0;
    int sweeps_ = 0;  // that live
};

}  // namespace larder
