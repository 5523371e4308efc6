#include "store/RecordChange.h"

#include <cstdio>
#include <limits>
#include <sstream>

#include "platform/Failure.h"

namespace larder {

namespace {

constexpr std::string_view signature = "\nTidewell Larder journal 1 ";
constexpr std::size_t sumDigits = 16;

std::string Digits(std::uint64_t sum) {
    char digits[sumDigits + 1];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(sum));
    return digits;
}

}  // namespace

void RecordChange::SetNew(std::string_view bytes) {
    NewBytes = static_cast<std::int64_t>(bytes.size());
    NewSum = ChecksumOf(bytes);
}

std::string RecordChange::OldTitle() const {
    return Old.substr(0, Old.find_first_of("\r\n"));
}

std::string RecordChange::OldBody(std::int64_t bytes) const {
    const std::size_t title = OldTitle().size();
    const std::size_t start = title + (Old.compare(title, 2, "\r\n") == 0 ? 2 : 1);
    const std::int64_t count = bytes - static_cast<std::int64_t>(start) - 2;
    if (count < 0) throw Failure(failure::InvalidArgument, "OldBody");
    if (start > Old.size() || static_cast<std::size_t>(count) > Old.size() - start) {
        throw Failure(failure::InputPastEnd, "OldBody");
    }
    return Old.substr(start, static_cast<std::size_t>(count));
}

std::uint64_t ChecksumOf(std::string_view bytes) {
    std::uint64_t sum = 14695981039346656037ULL;
    for (const char c : bytes) {
        sum ^= static_cast<unsigned char>(c);
        sum *= 1099511628211ULL;
    }
    return sum;
}

std::string JournalOf(const RecordChange& change) {
    std::ostringstream line;
    line << signature
         << (change.Custom ? "custom "
             : change.Disc ? "disc "
                           : "stock ")
         << (change.Adds ? "add " : "change ") << change.TextLength << ' ' << change.IndexLength
         << ' ' << change.Position << ' ' << change.NewBytes << ' ' << Digits(change.NewSum) << ' '
         << change.Old.size() << "\r\n";
    const std::string body = line.str() + change.Old;
    return body + Digits(ChecksumOf(body));
}

std::optional<RecordChange> ChangeIn(std::string_view journal) {
    if (!BeginsAsJournal(journal) || journal.size() < signature.size() + sumDigits) return {};
    const std::string_view body = journal.substr(0, journal.size() - sumDigits);
    if (journal.substr(body.size()) != Digits(ChecksumOf(body))) return {};
    const std::size_t lineEnd = body.find("\r\n");
    if (lineEnd == std::string_view::npos) return {};
    std::istringstream line(std::string(body.substr(signature.size(), lineEnd)));
    RecordChange change;
    std::string pair;
    std::string kind;
    std::string sum;
    std::size_t oldBytes = 0;
    line >> pair >> kind >> change.TextLength >> change.IndexLength >> change.Position >>
        change.NewBytes >> sum >> oldBytes;
    change.Old = body.substr(lineEnd + 2);
    if (!line || change.Old.size() != oldBytes) return {};
    change.Custom = pair == "custom";
    change.Disc = pair == "disc";
    change.Adds = kind == "add";
    change.NewSum = std::stoull(sum, nullptr, 16);
    return change;
}

bool BeginsAsJournal(std::string_view bytes) {
    return bytes.starts_with(signature);
}

}  // namespace larder
