#include "platform/NumberedFiles.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>
#include <utility>

#include "platform/Failure.h"
#include "platform/NativeFile.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace larder {

namespace {

// A title fits into the first block; the blocks of a walk grow up to the last.
constexpr std::size_t firstBlock = 512;
constexpr std::size_t lastBlock = 256 * 1024;
constexpr std::size_t blockGrowth = 8;
constexpr std::int64_t recordBytes = 4;
constexpr std::int64_t farthest = std::numeric_limits<std::int64_t>::max() - recordBytes;

NativeFile::Access AccessOf(FileMode mode) {
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

struct LineEnd {
    std::size_t Length;  // bytes before the line end
    std::size_t Next;    // where the next line begins; 0 when that is not in the text
};

// The first line of a text: up to a CR LF, LF or CR. A CR that ends the text may have its LF behind
// it, so it leaves Next open.
LineEnd FirstLine(std::string_view text) {
    const void* const lineFeed = std::memchr(text.data(), '\n', text.size());
    const std::size_t upToLineFeed =
        lineFeed ? static_cast<std::size_t>(static_cast<const char*>(lineFeed) - text.data())
                 : text.size();
    const void* const carriage = std::memchr(text.data(), '\r', upToLineFeed);
    if (!carriage) return {upToLineFeed, lineFeed ? upToLineFeed + 1 : 0};
    const auto length = static_cast<std::size_t>(static_cast<const char*>(carriage) - text.data());
    if (lineFeed && length + 1 == upToLineFeed) return {length, upToLineFeed + 1};
    return {length, length + 1 < text.size() ? length + 1 : 0};
}

}  // namespace

struct NumberedFiles::Slot {
    Slot(int number, std::string path, const std::string& native, FileMode mode, int recordLength)
        : Number(number),
          Path(std::move(path)),
          Native(native),
          Mode(mode),
          RecordLength(recordLength),
          File(native, AccessOf(mode), Path) {}

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
        Block.clear();
        NextBlock = firstBlock;
    }

    // Forward within the block.
    void MoveBy(std::size_t bytes) {
        Offset += static_cast<std::int64_t>(bytes);
        BlockUsed += bytes;
    }

    int Number;
    std::string Path;
    std::string Native;
    FileMode Mode;
    int RecordLength;
    NativeFile File;
    std::int64_t Offset = 0;  // of the next byte, from 0

    // Bytes of the file from Offset - BlockUsed on, as they were when the table had made
    // BlockWrites writes.
    std::string Block;
    std::size_t BlockUsed = 0;
    std::uint64_t BlockWrites = 0;
    std::size_t NextBlock = firstBlock;
};

NumberedFiles::NumberedFiles(const Paths& paths) : paths_(paths) {}

NumberedFiles::~NumberedFiles() = default;

void NumberedFiles::Watch(Watcher watcher) {
    watcher_ = std::move(watcher);
}

void NumberedFiles::Tell(std::string_view kind, int number, std::string_view path,
                         std::uint64_t bytes) const {
    if (watcher_) watcher_({kind, number, path, bytes});
}

NumberedFiles::Slot& NumberedFiles::At(int number, const char* source) const {
    if (!IsOpen(number)) throw Failure(failure::BadFileNumber, source);
    return *slots_[static_cast<std::size_t>(number)];
}

void NumberedFiles::Open(int number, const std::string& path, FileMode mode, int recordLength) {
    if (number < 1 || number > MaxNumber) throw Failure(failure::BadFileNumber, "Open");
    if (IsOpen(number)) throw Failure(failure::FileAlreadyOpen, path);
    if (recordLength < recordBytes) throw Failure(failure::InvalidArgument, path);
    Tell("open", number, path, 0);
    auto slot = std::make_unique<Slot>(number, path, paths_.Native(path), mode, recordLength);
    if (mode == FileMode::Output && slot->File.Size() > 0) {
        Tell("truncate", number, path, 0);
        slot->File.Truncate();
        ++writes_;
    }
    if (mode == FileMode::Append) slot->Offset = slot->File.Size();
    slots_[static_cast<std::size_t>(number)] = std::move(slot);
}

void NumberedFiles::Close(int number) {
    if (!IsOpen(number)) return;
    const std::unique_ptr<Slot> slot = std::move(slots_[static_cast<std::size_t>(number)]);
    Tell("close", number, slot->Path, 0);
    slot->File.Close();
}

void NumberedFiles::CloseAll() {
    std::exception_ptr first;
    for (int number = 1; number <= MaxNumber; ++number) {
        try {
            Close(number);
        } catch (...) {
            if (!first) first = std::current_exception();
        }
    }
    if (first) std::rethrow_exception(first);
}

bool NumberedFiles::IsOpen(int number) const {
    return number >= 1 && number <= MaxNumber && slots_[static_cast<std::size_t>(number)];
}

int NumberedFiles::FreeNumber() const {
    for (int number = 1; number <= MaxNumber; ++number) {
        if (!IsOpen(number)) return number;
    }
    throw Failure(failure::TooManyFiles, "FreeNumber");
}

std::int64_t NumberedFiles::Length(int number) const {
    return At(number, "Length").File.Size();
}

std::int64_t NumberedFiles::Position(int number) const {
    const Slot& slot = At(number, "Position");
    return (slot.Mode == FileMode::Random ? slot.Offset / slot.RecordLength : slot.Offset) + 1;
}

void NumberedFiles::Seek(int number, std::int64_t position) {
    Slot& slot = At(number, "Seek");
    if (slot.Mode == FileMode::Random) return slot.MoveTo(slot.OffsetOf(position));
    if (position < 1) throw Failure(failure::BadRecordNumber, slot.Path);
    if (position > farthest) throw Failure(failure::Overflow, slot.Path);
    slot.MoveTo(position - 1);
}

bool NumberedFiles::AtEnd(int number) const {
    const Slot& slot = At(number, "AtEnd");
    if (HoldsCurrentBlock(slot) && slot.BlockUsed < slot.Block.size()) return false;
    return slot.Offset >= slot.File.Size();
}

bool NumberedFiles::HoldsCurrentBlock(const Slot& slot) const {
    return !slot.Block.empty() && slot.BlockWrites == writes_;
}

// Puts the bytes from the position on into the block, none at the end of the file.
void NumberedFiles::FillBlock(Slot& slot) const {
    Tell("read", slot.Number, slot.Path, slot.NextBlock);
    slot.Block.resize(slot.NextBlock);
    slot.BlockUsed = 0;
    slot.BlockWrites = writes_;
    slot.Block.resize(slot.File.Read(slot.Offset, slot.Block.data(), slot.NextBlock));
    slot.NextBlock = std::min(slot.NextBlock * blockGrowth, lastBlock);
}

// Behind a CR: the LF that belongs to it, if there is one.
void NumberedFiles::SkipLineFeed(Slot& slot) const {
    if (slot.BlockUsed == slot.Block.size()) FillBlock(slot);
    if (slot.BlockUsed == slot.Block.size() || slot.Block[slot.BlockUsed] != '\n') return;
    slot.MoveBy(1);
}

template <typename Take>
void NumberedFiles::WalkLine(int number, Take&& take) {
    Slot& slot = At(number, "ReadLine");
    slot.RequireReadable();
    if (!HoldsCurrentBlock(slot) || slot.BlockUsed == slot.Block.size()) FillBlock(slot);
    if (slot.Block.empty()) throw Failure(failure::InputPastEnd, slot.Path);
    while (!slot.Block.empty()) {
        const std::string_view rest = std::string_view(slot.Block).substr(slot.BlockUsed);
        const LineEnd line = FirstLine(rest);
        take(rest.substr(0, line.Length));
        if (line.Next != 0) return slot.MoveBy(line.Next);
        const bool carriageReturn = line.Length < rest.size();
        slot.MoveBy(rest.size());
        if (carriageReturn) return SkipLineFeed(slot);
        FillBlock(slot);
    }
}

std::string NumberedFiles::ReadLine(int number) {
    std::string line;
    ReadLineInto(number, line);
    return line;
}

void NumberedFiles::ReadLineInto(int number, std::string& line) {
    line.clear();
    WalkLine(number, [&](std::string_view stretch) { line.append(stretch); });
}

void NumberedFiles::SkipLine(int number) {
    WalkLine(number, [](std::string_view) {});
}

std::string NumberedFiles::ReadChars(int number, std::int64_t count) {
    Slot& slot = At(number, "ReadChars");
    slot.RequireReadable();
    if (count < 0) throw Failure(failure::InvalidArgument, slot.Path);
    if (count > slot.File.Size() - slot.Offset) {
        if (count == 0) return {};
        throw Failure(failure::InputPastEnd, slot.Path);
    }
    std::string chars(static_cast<std::size_t>(count), '\0');
    if (count > 0) {
        Tell("read", number, slot.Path, chars.size());
        if (slot.File.Read(slot.Offset, chars.data(), chars.size()) < chars.size()) {
            throw Failure(failure::InputPastEnd, slot.Path);
        }
    }
    slot.MoveTo(slot.Offset + count);
    return chars;
}

double NumberedFiles::ReadNumber(int number) {
    const std::string line = ReadLine(number);
    const std::size_t first = std::min(line.find_first_not_of(' '), line.size());
    const std::string_view field = std::string_view(line).substr(first);
    return Val(field.substr(0, field.find_first_of(" ,")));
}

void NumberedFiles::WriteAt(Slot& slot, std::int64_t offset, std::string_view bytes) {
    Tell("write", slot.Number, slot.Path, bytes.size());
    ++writes_;
    slot.File.Write(offset, bytes);
    slot.MoveTo(offset + static_cast<std::int64_t>(bytes.size()));
}

void NumberedFiles::Write(int number, std::string_view text) {
    Slot& slot = At(number, "Write");
    slot.RequireWritable();
    if (!text.empty()) WriteAt(slot, slot.Offset, text);
}

void NumberedFiles::WriteLine(int number, std::string_view text) {
    std::string line;
    line.reserve(text.size() + 2);
    line.append(text).append("\r\n");
    Write(number, line);
}

void NumberedFiles::WriteNumberLine(int number, std::int64_t value) {
    WriteLine(number, (value < 0 ? "" : " ") + std::to_string(value) + " ");
}

std::int32_t NumberedFiles::ReadRecord(int number, std::int64_t record) {
    Slot& slot = At(number, "ReadRecord");
    const std::int64_t offset = slot.OffsetOf(record);
    Tell("read", number, slot.Path, recordBytes);
    std::array<char, recordBytes> bytes{};
    const std::size_t got = slot.File.Read(offset, bytes.data(), bytes.size());
    slot.MoveTo(offset + slot.RecordLength);
    if (got < bytes.size()) return 0;
    std::uint32_t value = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) {
        value = (value << 8) | static_cast<unsigned char>(bytes[i]);
    }
    return static_cast<std::int32_t>(value);
}

void NumberedFiles::WriteRecord(int number, std::int64_t record, std::int32_t value) {
    Slot& slot = At(number, "WriteRecord");
    const std::int64_t offset = slot.OffsetOf(record);
    std::array<char, recordBytes> bytes{};
    auto rest = static_cast<std::uint32_t>(value);
    for (char& byte : bytes) {
        byte = static_cast<char>(rest & 0xFF);
        rest >>= 8;
    }
    WriteAt(slot, offset, {bytes.data(), bytes.size()});
    slot.MoveTo(offset + slot.RecordLength);
}

void NumberedFiles::Flush(int number) {
    Slot& slot = At(number, "Flush");
    Tell("flush", number, slot.Path, 0);
    slot.File.Flush();
    if (slot.File.Created()) FlushFolderOf(slot.Native, slot.Path);
}

void NumberedFiles::FlushFolder(const std::string& path) const {
    Tell("flush", 0, path, 0);
    FlushFolderOf(paths_.Native(path), path);
}

void NumberedFiles::Delete(const std::string& path) {
    Tell("delete", 0, path, 0);
    const std::string native = paths_.Native(path);
    if (unlink(native.c_str()) != 0) throw Failure(PathFailureNumber(errno, native), path);
}

void NumberedFiles::Replace(const std::string& from, const std::string& to) {
    Tell("rename", 0, to, 0);
    const std::string native = paths_.Native(from);
    const std::string target = paths_.Native(to);
    if (std::rename(native.c_str(), target.c_str()) != 0) {
        const int systemError = errno;
        const bool missing = access(native.c_str(), F_OK) != 0;
        throw Failure(PathFailureNumber(systemError, missing ? native : target),
                      missing ? from : to);
    }
    FlushFolder(to);
}

}  // namespace larder
