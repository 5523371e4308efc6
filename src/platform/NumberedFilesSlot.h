#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Failure.h"
#include "platform/NativeFile.h"
#include "platform/NumberedFiles.h"

// What stands behind a number of the table while it is open; for the table's own files alone.
namespace larder {

// A title fits into the first block; the blocks of a walk grow up to the last.
inline constexpr std::size_t firstBlock = 512;
inline constexpr std::size_t lastBlock = 256 * 1024;
inline constexpr std::size_t blockGrowth = 8;
// A sweep reads a small block, the usual title and what follows it, for every place, and large ones
// where its last places stood near enough to each other: in a sparser file small reads cost less
// than what lies between the places.
inline constexpr std::size_t smallSweepBlock = 128;
inline constexpr std::size_t largeSweepBlock = 64 * 1024;
inline constexpr std::int64_t nearEnough = 3072;  // bytes from place to place
inline constexpr int placesToJudgeBy = 8;
inline constexpr std::int64_t recordBytes = 4;
inline constexpr std::int64_t farthest = std::numeric_limits<std::int64_t>::max() - recordBytes;

// Bytes that were read from a file at once. The memory is taken when it is needed and then kept.
class ReadBlock {
  public:
    bool Empty() const { return size_ == 0; }
    bool UsedUp() const { return used_ == size_; }
    std::string_view Rest() const { return {bytes_.get() + used_, size_ - used_}; }
    std::size_t Size() const { return size_; }
    std::size_t Used() const { return used_; }
    void Use(std::size_t bytes) { used_ += bytes; }
    void UseUpTo(std::size_t used) { used_ = used; }
    void Clear() { size_ = used_ = 0; }

    // Puts in its place what `read` puts into the memory and counts.
    template <typename Read>
    void Fill(std::size_t most, Read&& read) {
        Clear();
        if (capacity_ < most) {
            bytes_ = std::make_unique_for_overwrite<char[]>(most);
            capacity_ = most;
        }
        size_ = read(bytes_.get());
    }

  private:
    std::unique_ptr<char[]> bytes_;
    std::size_t capacity_ = 0;
    std::size_t size_ = 0;
    std::size_t used_ = 0;
};

struct NumberedFiles::Slot {
    Slot(int number, std::string path, const std::string& native, FileMode mode, int recordLength)
        : Number(number),
          Path(std::move(path)),
          Native(native),
          Mode(mode),
          RecordLength(recordLength),
          File(native, AccessOf(mode), Path) {}

    static NativeFile::Access AccessOf(FileMode mode) {
        switch (mode) {
            case FileMode::Input:
                return NativeFile::Access::Read;
            case FileMode::Output:
            case FileMode::Append:
                return NativeFile::Access::Write;
            default:
                return NativeFile::Access::ReadWrite;
        }
    }

    void Require(bool allowed) const {
        if (!allowed) throw Failure(failure::BadFileMode, Path);
    }
    void RequireReadable() const { Require(Mode == FileMode::Input || Mode == FileMode::Binary); }
    void RequireWritable() const { Require(Mode != FileMode::Input && Mode != FileMode::Random); }

    // The offset of a record, checked.
    std::int64_t OffsetOf(std::int64_t record) const {
        Require(Mode == FileMode::Random);
        if (record < 1) throw Failure(failure::BadRecordNumber, Path);
        if (record > farthest / RecordLength) throw Failure(failure::Overflow, Path);
        return (record - 1) * RecordLength;
    }

    void MoveTo(std::int64_t offset) {
        Offset = offset;
        Block.Clear();
        NextBlock = firstBlock;
        JudgeFrom(offset, smallSweepBlock);
    }

    // The same within a sweep: a block that holds the place stays.
    void SweepTo(std::int64_t offset) {
        const std::int64_t from = Offset - static_cast<std::int64_t>(Block.Used());
        const std::int64_t behind = from + static_cast<std::int64_t>(Block.Size());
        Offset = offset;
        if (!Block.Empty() && offset >= from && offset <= behind) {
            Block.UseUpTo(static_cast<std::size_t>(offset - from));
        } else {
            Block.Clear();
            ChooseSweepBlock();
            NextBlock = SweepBlock;
        }
        ++SweptPlaces;
    }

    void ChooseSweepBlock() {
        const std::int64_t distance = Offset - SweptFrom;
        if (distance < 0) {
            JudgeFrom(Offset, smallSweepBlock);
        } else if (SweptPlaces >= placesToJudgeBy) {
            const bool near = distance <= SweptPlaces * nearEnough;
            JudgeFrom(Offset, near ? largeSweepBlock : smallSweepBlock);
        }
    }
    void JudgeFrom(std::int64_t offset, std::size_t block) {
        SweptFrom = offset;
        SweptPlaces = 0;
        SweepBlock = block;
    }

    // Forward within the block.
    void MoveBy(std::size_t bytes) {
        Offset += static_cast<std::int64_t>(bytes);
        Block.Use(bytes);
    }

    int Number;
    std::string Path;
    std::string Native;
    FileMode Mode;
    int RecordLength;
    NativeFile File;
    std::int64_t Offset = 0;  // of the next byte, from 0

    // The file from Offset on and what was used before it, as they were when the table had made
    // BlockWrites writes.
    ReadBlock Block;
    std::uint64_t BlockWrites = 0;
    std::uint64_t BlockSweep = 0;  // the sweep that it was read in, or the last one before it
    std::size_t NextBlock = firstBlock;

    // What a sweep judges its next blocks by: so many places since that one.
    std::int64_t SweptFrom = 0;
    std::int64_t SweptPlaces = 0;
    std::size_t SweepBlock = smallSweepBlock;
};

}  // namespace larder
