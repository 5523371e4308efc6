#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/NumberedFilesSlot.h"

// Files of 4-byte records.
namespace larder {

namespace {

// A record as it stands in a file: signed, the low byte first.
std::int32_t RecordFrom(const char* bytes) {
    std::uint32_t value = 0;
    for (std::size_t i = sizeof(std::int32_t); i-- > 0;) {
        value = (value << 8) | static_cast<unsigned char>(bytes[i]);
    }
    return static_cast<std::int32_t>(value);
}

void PutRecord(char* bytes, std::int32_t value) {
    auto rest = static_cast<std::uint32_t>(value);
    for (std::size_t i = 0; i < sizeof(std::int32_t); ++i) {
        bytes[i] = static_cast<char>(rest & 0xFF);
        rest >>= 8;
    }
}

}  // namespace

// What there is of a record at an offset.
std::size_t NumberedFiles::ReadRecordBytes(Slot& slot, std::int64_t offset, RecordBytes& to) const {
    if (sweeps_ == 0) {
        Tell("read", slot.Number, slot.Path, to.size());
        return slot.File.Read(offset, to.data(), to.size());
    }
    MoveTo(slot, offset);
    if (!HoldsCurrentBlock(slot) || slot.Block.Rest().size() < to.size()) FillBlock(slot);
    return slot.Block.Rest().copy(to.data(), to.size());
}

std::int32_t NumberedFiles::ReadRecord(int number, std::int64_t record) {
    Slot& slot = At(number, "ReadRecord");
    const std::int64_t offset = slot.OffsetOf(record);
    RecordBytes bytes{};
    const std::size_t got = ReadRecordBytes(slot, offset, bytes);
    MoveTo(slot, offset + slot.RecordLength);
    return got < bytes.size() ? 0 : RecordFrom(bytes.data());
}

std::vector<std::int32_t> NumberedFiles::ReadRecords(int number, std::int64_t first,
                                                     std::int64_t count) {
    Slot& slot = At(number, "ReadRecords");
    const std::int64_t offset = slot.OffsetOf(first);
    if (count < 0) throw Failure(failure::InvalidArgument, slot.Path);
    slot.OffsetOf(first + count);  // checked for its failure
    // A file shorter than asked for gives no more than it has; the rest are zeros.
    std::vector<std::int32_t> values(static_cast<std::size_t>(count));
    if (values.empty()) return values;
    std::string bytes(static_cast<std::size_t>((count - 1) * slot.RecordLength + recordBytes),
                      '\0');
    Tell("read", number, slot.Path, bytes.size());
    const std::size_t got = slot.File.Read(offset, bytes.data(), bytes.size());
    MoveTo(slot, offset + count * slot.RecordLength);
    const auto stride = static_cast<std::size_t>(slot.RecordLength);
    for (std::size_t i = 0; i < values.size() && i * stride + sizeof(values[i]) <= got; ++i) {
        values[i] = RecordFrom(bytes.data() + i * stride);
    }
    return values;
}

void NumberedFiles::WriteRecord(int number, std::int64_t record, std::int32_t value) {
    Slot& slot = At(number, "WriteRecord");
    const std::int64_t offset = slot.OffsetOf(record);
    RecordBytes bytes{};
    PutRecord(bytes.data(), value);
    WriteAt(slot, offset, {bytes.data(), bytes.size()});
    slot.MoveTo(offset + slot.RecordLength);
}

void NumberedFiles::WriteRecords(int number, std::int64_t first,
                                 const std::vector<std::int32_t>& values) {
    Slot& slot = At(number, "WriteRecord");
    const std::int64_t offset = slot.OffsetOf(first);
    if (slot.RecordLength != recordBytes) throw Failure(failure::InvalidArgument, slot.Path);
    if (values.empty()) return;
    std::string bytes(values.size() * sizeof(values.front()), '\0');
    for (std::size_t i = 0; i < values.size(); ++i) {
        PutRecord(bytes.data() + i * sizeof(values[i]), values[i]);
    }
    WriteAt(slot, offset, bytes);
}

}  // namespace larder
