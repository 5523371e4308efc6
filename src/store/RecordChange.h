#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace larder {

// A change of one record where it stands: bytes written over those of a record, or behind the last
// one together with an index entry. It has all that is needed to take the change back.
struct RecordChange {
    bool Custom = true;            // the user's recipes, else the stock
    bool Disc = false;             // the stock's text lies on a disc
    bool Adds = false;             // behind the last record
    std::int64_t TextLength = 0;   // of the files before the change, in bytes
    std::int64_t IndexLength = 0;  // in whole entries
    std::int32_t Position = 0;     // of the first byte that is written, from 1
    std::string Old;               // what is written over; empty for one that adds

    std::int64_t NewBytes = 0;  // how many bytes are written
    std::uint64_t NewSum = 0;   // their checksum

    void SetNew(std::string_view bytes);

    // The title and the body of the record that is written over. `bytes` is how many the record has
    // up to the next one; the last one of a file has one more than is written over. Failures 5 and
    // 62 for a number that the record cannot have.
    std::string OldTitle() const;
    std::string OldBody(std::int64_t bytes) const;
};

// The checksum of bytes: 64 bits, FNV-1a.
std::uint64_t ChecksumOf(std::string_view bytes);

// The bytes of a journal, and back. Nothing for bytes that are no journal, or not a whole one.
std::string JournalOf(const RecordChange& change);
std::optional<RecordChange> ChangeIn(std::string_view journal);
// Whether a file that begins so can be a journal. No recipe text does, since a title has no line
// feed.
bool BeginsAsJournal(std::string_view bytes);

}  // namespace larder
