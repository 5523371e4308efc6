#include "platform/NumberedFiles.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <utility>

#include "platform/Failure.h"
#include "platform/NativeFile.h"
#include "platform/NumberedFilesSlot.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace larder {

namespace {

struct LineEnd {
    std::size_t Length;  // bytes before the line end
    std::size_t Next;    // where the next line begins; 0 when that is not in the text
};

// The first line of a text: up to a CR LF, LF or CR. A CR that ends the text may have its LF behind
// it, so it leaves Next open.
inline LineEnd FirstLine(std::string_view text) {
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

std::string_view WithoutReturn(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

}  // namespace

NumberedFiles::NumberedFiles(const Paths& paths) : paths_(paths) {}

NumberedFiles::~NumberedFiles() = default;

NumberedFiles::Sweep::Sweep(NumberedFiles& files) : files_(files) {
    ++files_.sweeps_;
    ++files_.sweep_;  // what was read before may be old
}

NumberedFiles::Sweep::~Sweep() {
    --files_.sweeps_;
}

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
        slot->File.Truncate(0);
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
    if (slot.Mode == FileMode::Random) return MoveTo(slot, slot.OffsetOf(position));
    if (position < 1) throw Failure(failure::BadRecordNumber, slot.Path);
    if (position > farthest) throw Failure(failure::Overflow, slot.Path);
    MoveTo(slot, position - 1);
}

bool NumberedFiles::AtEnd(int number) const {
    const Slot& slot = At(number, "AtEnd");
    if (HoldsCurrentBlock(slot) && !slot.Block.UsedUp()) return false;
    return slot.Offset >= slot.File.Size();
}

// Within a sweep a block may go on serving; outside every move is one to the file.
void NumberedFiles::MoveTo(Slot& slot, std::int64_t offset) const {
    if (sweeps_ > 0 && slot.BlockSweep == sweep_ && slot.BlockWrites == writes_) {
        slot.SweepTo(offset);
    } else {
        slot.MoveTo(offset);
    }
}

bool NumberedFiles::HoldsCurrentBlock(const Slot& slot) const {
    return !slot.Block.Empty() && slot.BlockWrites == writes_;
}

// Puts the bytes from the position on into the block, none at the end of the file.
void NumberedFiles::FillBlock(Slot& slot) const {
    Tell("read", slot.Number, slot.Path, slot.NextBlock);
    slot.BlockWrites = writes_;
    slot.BlockSweep = sweep_;
    slot.Block.Fill(slot.NextBlock,
                    [&](char* to) { return slot.File.Read(slot.Offset, to, slot.NextBlock); });
    slot.NextBlock = std::min(slot.NextBlock * blockGrowth, lastBlock);
}

// Behind a CR: the LF that belongs to it, if there is one.
void NumberedFiles::SkipLineFeed(Slot& slot) const {
    if (slot.Block.UsedUp()) FillBlock(slot);
    if (slot.Block.UsedUp() || slot.Block.Rest().front() != '\n') return;
    slot.MoveBy(1);
}

template <typename Take>
void NumberedFiles::WalkLine(int number, Take&& take) {
    Slot& slot = At(number, "ReadLine");
    slot.RequireReadable();
    if (!HoldsCurrentBlock(slot) || slot.Block.UsedUp()) FillBlock(slot);
    if (slot.Block.Empty()) throw Failure(failure::InputPastEnd, slot.Path);
    while (!slot.Block.Empty()) {
        const std::string_view rest = slot.Block.Rest();
        const LineEnd line = FirstLine(rest);
        take(rest.substr(0, line.Length));
        if (line.Next != 0) return slot.MoveBy(line.Next);
        const bool carriageReturn = line.Length < rest.size();
        slot.MoveBy(rest.size());
        if (carriageReturn) return SkipLineFeed(slot);
        FillBlock(slot);
    }
}

// Hands over the lines that stand whole in the block, and returns what is asked for behind them.
NumberedFiles::AfterLine NumberedFiles::WalkBlock(Slot& slot, AfterLine after,
                                                  const LineTaker& take) {
    std::string_view rest = slot.Block.Rest();
    while (after != AfterLine::End) {
        const std::size_t lineFeed = rest.find('\n');
        if (lineFeed == std::string_view::npos) break;
        slot.MoveBy(lineFeed + 1);
        after = after == AfterLine::SkipOne ? AfterLine::Next
                                            : take(WithoutReturn(rest.substr(0, lineFeed)));
        rest.remove_prefix(lineFeed + 1);
    }
    return after;
}

// The line that goes on behind the block, into `line` unless it is to be skipped.
void NumberedFiles::TakeLineApart(Slot& slot, std::string* line) {
    bool any = false;
    for (;;) {
        if (!HoldsCurrentBlock(slot) || slot.Block.UsedUp()) FillBlock(slot);
        if (slot.Block.Empty()) break;
        any = true;
        const std::string_view rest = slot.Block.Rest();
        const std::size_t lineFeed = rest.find('\n');
        if (line != nullptr) line->append(rest.substr(0, lineFeed));
        slot.MoveBy(std::min(lineFeed, rest.size() - 1) + 1);
        if (lineFeed != std::string_view::npos) return;
    }
    if (!any) throw Failure(failure::InputPastEnd, slot.Path);
}

void NumberedFiles::WalkLines(int number, const LineTaker& take) {
    Slot& slot = At(number, "WalkLines");
    slot.RequireReadable();
    std::string line;  // that does not stand whole in a block
    AfterLine after = AfterLine::Next;
    for (;;) {
        if (HoldsCurrentBlock(slot)) after = WalkBlock(slot, after, take);
        if (after == AfterLine::End) return;
        line.clear();
        TakeLineApart(slot, after == AfterLine::SkipOne ? nullptr : &line);
        after = after == AfterLine::SkipOne ? AfterLine::Next : take(WithoutReturn(line));
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
    MoveTo(slot, slot.Offset + count);
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

void NumberedFiles::SetLength(int number, std::int64_t bytes) {
    Slot& slot = At(number, "SetLength");
    slot.Require(slot.Mode != FileMode::Input);
    if (bytes < 0) throw Failure(failure::InvalidArgument, slot.Path);
    Tell("truncate", number, slot.Path, static_cast<std::uint64_t>(bytes));
    ++writes_;
    slot.File.Truncate(bytes);
}

void NumberedFiles::Flush(int number) {
    FlushAll({number});
}

void NumberedFiles::FlushAll(const std::vector<int>& numbers, const std::string& namesBeside) {
    std::vector<std::function<void()>> flushes;
    std::set<std::string> folders;  // by a file in them, each once
    const auto flushFolderOf = [&](const std::string& native, const std::string& name) {
        if (!folders.insert(native.substr(0, native.rfind('/') + 1)).second) return;
        flushes.emplace_back([native, name] { FlushFolderOf(native, name); });
    };
    for (const int number : numbers) {
        Slot& slot = At(number, "Flush");
        Tell("flush", number, slot.Path, 0);
        slot.File.StartFlush();
        flushes.emplace_back([&slot] { slot.File.Flush(); });
        if (slot.File.Created()) flushFolderOf(slot.Native, slot.Path);
    }
    if (!namesBeside.empty()) {
        Tell("flush", 0, namesBeside, 0);
        flushFolderOf(paths_.Native(namesBeside), namesBeside);
    }
    FlushTogether(flushes);
}

}  // namespace larder
