#include "store/RecipeStore.h"

#include <limits>

#include "platform/Failure.h"
#include "platform/Text.h"
#include "store/FileNumbers.h"
#include "store/RecipeJournal.h"

namespace larder {

namespace {

constexpr const char* noDisc = "No Disk Error";
constexpr const char* insertDisc = "\rPlease, make sure the CD is in the drive.";

// Whole records of an index: a last one that is cut short does not count.
std::int32_t RecordsIn(std::int64_t indexLength) {
    const std::int64_t records = indexLength / 4;
    if (records > std::numeric_limits<std::int32_t>::max()) {
        throw Failure(failure::Overflow, "RecalculateTotalRecipes");
    }
    return static_cast<std::int32_t>(records);
}

}  // namespace

RecipeStore::RecipeStore(NumberedFiles& files, const DataPaths& paths, DiscQuestion& question)
    : files_(files), paths_(paths), question_(question) {}

void RecipeStore::SetTotalRecipes(std::int32_t count) {
    TotalRecipes_ = count;
    if (OnTotalRecipes) OnTotalRecipes(count);
}

void RecipeStore::OpenYDB_IND_Normal() {
    using namespace filenumber;
    Ignoring([&] { files_.Close(CustomRecipes); });
    Ignoring([&] { files_.Close(CustomRecipesIndex); });
    if (Journal != nullptr) Ignoring([&] { Journal->SettleForReaders(); });
    for (const RecipePair& pair : {StockPair(paths_), CustomPair(paths_)}) {
        Ignoring([&] { files_.Open(pair.Text, pair.TextPath, FileMode::Input); });
        Ignoring([&] { OpenIndex(pair); });
    }
}

void RecipeStore::OpenIndex(const RecipePair& pair) {
    const std::string path = Journal != nullptr ? Journal->IndexFor(pair) : pair.IndexPath;
    files_.Open(pair.Index, path, FileMode::Random);
}

void RecipeStore::OpenCategoryDescriptions() {
    NamingFile(paths_.strCatDFile,
               [&] { files_.Open(filenumber::CatD, paths_.strCatDFile, FileMode::Input); });
    NamingFile(paths_.strCatDIndexFile, [&] {
        files_.Open(filenumber::CatDIndex, paths_.strCatDIndexFile, FileMode::Random);
    });
}

RecipeStore::Place RecipeStore::PlaceOf(std::int32_t RecipeNum) const {
    if (RecipeNum <= OriginalNumRecords) {
        return {filenumber::Recipes, filenumber::RecipesIndex, RecipeNum};
    }
    return {filenumber::CustomRecipes, filenumber::CustomRecipesIndex,
            std::int64_t{RecipeNum} - OriginalNumRecords};
}

RecipeStore::Place RecipeStore::PlaceOfDescription(std::int32_t CatNum) {
    return {filenumber::CatD, filenumber::CatDIndex, CatNum};
}

// The record that is not whole, and so is not there.
const RecordChange* RecipeStore::HalfAdded(int text) const {
    const RecordChange* change = Journal != nullptr ? Journal->HalfDone(text) : nullptr;
    return change != nullptr && change->Adds ? change : nullptr;
}

// The change that has been begun on the record that begins there, and has its old bytes.
const RecordChange* RecipeStore::HalfChanged(int text, std::int32_t start) const {
    const RecordChange* change = Journal != nullptr ? Journal->HalfDone(text) : nullptr;
    return change != nullptr && !change->Adds && change->Position == start ? change : nullptr;
}

// 0 behind the last entry.
std::int32_t RecipeStore::ReadEntry(const Place& place, std::int64_t entry) {
    const RecordChange* added = HalfAdded(place.Text);
    if (added != nullptr && entry > added->IndexLength / 4) return 0;
    return files_.ReadRecord(place.Index, entry);
}

// Where the next record begins; the last one ends with the file.
std::int64_t RecipeStore::EndOf(const Place& place) {
    const std::int32_t next = ReadEntry(place, place.Entry + 1);
    if (next != 0) return next;
    const RecordChange* added = HalfAdded(place.Text);
    return added != nullptr ? added->Position : files_.Length(place.Text) + 1;
}

// Moves the text file to the record and returns where it begins.
std::int32_t RecipeStore::ToRecord(const Place& place) {
    const std::int32_t start = ReadEntry(place, place.Entry);
    // Looked at before the text file, which may well be missing where there is no record.
    if (start < 1) throw Failure(failure::BadRecordNumber, "RecipeStore");
    files_.Seek(place.Text, start);
    return start;
}

std::string RecipeStore::ReadTitle(const Place& place) {
    const std::int32_t start = ToRecord(place);
    const RecordChange* change = HalfChanged(place.Text, start);
    return change != nullptr ? change->OldTitle() : files_.ReadLine(place.Text);
}

// The body ends with a CR LF, which does not belong to it.
std::string RecipeStore::ReadBody(const Place& place) {
    const std::int32_t start = ToRecord(place);
    if (const RecordChange* change = HalfChanged(place.Text, start)) {
        return change->OldBody(EndOf(place) - start);
    }
    files_.SkipLine(place.Text);
    const std::int64_t body = files_.Position(place.Text);
    return files_.ReadChars(place.Text, EndOf(place) - body - 2);
}

// Failure 52 is the normal way back after a writer has closed the files: opens them again, and
// tells whether that has helped.
bool RecipeStore::ReopenAfter(const Failure& failure, const Place& place) {
    if (failure.Number != failure::BadFileNumber) return false;
    OpenYDB_IND_Normal();
    return files_.IsOpen(place.Text) && files_.IsOpen(place.Index);
}

// Runs `read` until it succeeds or the user gives up, which gives nothing. A read is run again as
// a whole, from its index entry on, because files that were opened again have lost their position.
// `ask` asks the user, given the description of the failure; true to try again.
template <typename Read, typename Ask>
std::optional<std::string> RecipeStore::ReadAskingForDisc(const Place& place, Read&& read,
                                                          Ask&& ask) {
    for (;;) {
        try {
            return read(place);
        } catch (const Failure& f) {
            if (ReopenAfter(f, place)) continue;
            const bool unreachable =
                f.Number == failure::PathAccess || f.Number == failure::BadFileNumber;
            if (!unreachable) throw;
            const std::string description =
                f.Number == failure::PathAccess ? f.Description : FailureText(failure::PathAccess);
            if (!ask(description)) return std::nullopt;
            // A file that was open on a disc which has left the drive stays dead when it is back.
            Ignoring([&] { files_.Close(place.Text); });
            Ignoring([&] { files_.Close(place.Index); });
        }
    }
}

std::string RecipeStore::GetRecipeRTF(std::int32_t RecipeNum) {
    try {
        const auto read = [this](const Place& place) { return ReadBody(place); };
        const auto ask = [this](const std::string& description) {
            return AskForDisc(&Questions::Bodies, description);
        };
        return ReadAskingForDisc(PlaceOf(RecipeNum), read, ask).value_or("");
    } catch (const Failure& f) {
        if (f.Number == failure::BadRecordNumber) throw;
        return {};
    }
}

FoundTitle RecipeStore::LookUpTitle(std::int32_t RecipeNum) {
    try {
        const auto read = [this](const Place& place) { return ReadTitle(place); };
        const auto ask = [this](const std::string&) {
            return AskForDisc(&Questions::Titles, "Can't get recipe.");
        };
        std::optional<std::string> title = ReadAskingForDisc(PlaceOf(RecipeNum), read, ask);
        if (!title) return {noDisc, TitleIs::Unreadable};
        const TitleIs is = title->empty() ? TitleIs::Gone : TitleIs::There;
        return {*std::move(title), is};
    } catch (const Failure& f) {
        // What the files do not have is not there; any other failure says nothing about them.
        const bool noRecord =
            f.Number == failure::BadRecordNumber || f.Number == failure::InputPastEnd;
        return {"", noRecord ? TitleIs::Gone : TitleIs::Unreadable};
    }
}

bool RecipeStore::AskForDisc(Asking Questions::*read, const std::string& what) {
    if (questions_.*read == Asking::GivenUp) return false;
    if (question_.AskOkCancel(what + insertDisc)) return true;
    if (questions_.*read == Asking::Each) return false;
    for (Asking Questions::*each : {&Questions::Titles, &Questions::Bodies}) {
        if (questions_.*each == Asking::Once) questions_.*each = Asking::GivenUp;
    }
    return false;
}

std::string RecipeStore::GetRecipeTitle(std::int32_t RecipeNum) {
    return LookUpTitle(RecipeNum).Text;
}

bool RecipeStore::IsBlank(std::int32_t RecipeNum) {
    if (LookUpTitle(RecipeNum).Is != TitleIs::Gone) return false;
    std::string body;  // none of a record that cannot be read
    Ignoring([&] { body = GetRecipeRTF(RecipeNum); });
    return !body.empty() && body.find_first_not_of(" \r\n") == std::string::npos;
}

std::string RecipeStore::GetRecipeTXT(std::int32_t RecipeNum) {
    const Place place{filenumber::Recipes, filenumber::RecipesIndex, RecipeNum};
    for (;;) {
        try {
            ToRecord(place);
            return {};
        } catch (const Failure& f) {
            if (ReopenAfter(f, place)) continue;
            if (f.Number != failure::BadFileNumber) throw;
            throw Failure(failure::PathAccess, f.Source);
        }
    }
}

std::string RecipeStore::GetCatTitle(std::int32_t CatNum) {
    std::string title;
    Ignoring([&] { title = ReadTitle(PlaceOfDescription(CatNum)); });
    return std::string(TrimBlanks(title));
}

// Unlike a recipe's body this one is read to the start of the next record, and the last one by the
// length of the file, a byte short: what follows the closing brace is of no account to RTF.
std::string RecipeStore::GetCatRTF(std::int32_t CatNum) {
    const Place place = PlaceOfDescription(CatNum);
    ReadTitle(place);
    const std::int64_t body = files_.Position(place.Text);
    std::int64_t next = files_.ReadRecord(place.Index, place.Entry + 1);
    if (next == 0) next = files_.Length(place.Text);
    return files_.ReadChars(place.Text, next - body);
}

// An index that could not be opened was passed over in silence. Its records must not count as none,
// so it is opened once more for the reason.
std::int32_t RecipeStore::CountRecords(const RecipePair& pair) {
    std::int32_t count = 0;
    NamingFile(pair.IndexPath, [&] {
        if (!files_.IsOpen(pair.Index)) OpenIndex(pair);
        const RecordChange* added = HalfAdded(pair.Text);
        count = RecordsIn(added != nullptr ? added->IndexLength : files_.Length(pair.Index));
    });
    return count;
}

void RecipeStore::RecalculateTotalRecipes() {
    const std::int32_t stock = CountRecords(StockPair(paths_));
    const std::int32_t own = CountRecords(CustomPair(paths_));
    if (own > std::numeric_limits<std::int32_t>::max() - stock) {
        throw Failure(failure::Overflow, "RecalculateTotalRecipes");
    }
    OriginalNumRecords = stock;
    TotalNumRecords = stock + own;
    std::int32_t deleted = 0;
    for (std::int32_t i = 1; i <= own; ++i) {
        const FoundTitle title = LookUpTitle(stock + i);
        // What cannot be read counts as present; without their disc, so do all that follow, which
        // need no question each.
        if (title.Is == TitleIs::Unreadable && title.Text == noDisc) break;
        if (title.Is == TitleIs::Gone) ++deleted;
    }
    SetTotalRecipes(TotalNumRecords - deleted);
}

}  // namespace larder
