#include "platform/Failure.h"
#include "store/RecipeJournal.h"

// Whether the files that are there now are those that a change was begun in, and how far it got.
namespace larder {

void RecipeJournal::RequireFile(const std::string& path) const {
    if (!files_.Exists(path)) throw Failure(failure::FileNotFound, path);
}

bool RecipeJournal::StockIsOnDisc() const {
    return paths_.strPathCD != paths_.strPath;
}

// What was begun on the stock beside the user's recipes says nothing about the stock of a disc, nor
// the other way round.
void RecipeJournal::RequireStockOf(bool disc) const {
    if (disc == StockIsOnDisc()) return;
    throw Failure(failure::PathAccess, paths_.strRecipesFile,
                  paths_.strRecipesFile + "\n" + FailureText(failure::PathAccess));
}

// Open for a change that was to be made in these files: where the text fits a new recipe, the index
// behind which it was added must be there.
void RecipeJournal::OpenFilesOf(const RecordChange& change, const RecipePair& pair) {
    Close(pair);
    try {
        OpenText(pair);
        if (change.Adds && IsTextOf(change, pair)) {
            OpenIndexBehind(change, pair);
        } else {
            OpenIndex(pair);
        }
    } catch (const Failure&) {
        Close(pair);
        throw;
    }
}

// It must not come into being either: an empty one would say that there was nothing before.
void RecipeJournal::OpenIndexBehind(const RecordChange& change, const RecipePair& pair) {
    NamingFile(pair.IndexPath, [&] {
        if (change.IndexLength > 0) RequireFile(pair.IndexPath);
        files_.Open(pair.Index, pair.IndexPath, FileMode::Random);
        if (files_.Length(pair.Index) >= change.IndexLength) return;
        throw Failure(failure::BadRecordNumber, pair.IndexPath);
    });
}

// Of a first record the text may not have come into being. Where it has its entry, the text was
// there, and is only missing now; and where the journal is missing too, so is the whole folder.
bool RecipeJournal::IsFirstNotBegun(const RecordChange& change, const RecipePair& pair) {
    if (change.TextLength != 0 || files_.Exists(pair.TextPath)) return false;
    NamingFile(paths_.strRecipesTempFile, [&] { RequireFile(paths_.strRecipesTempFile); });
    std::int64_t indexLength = 0;
    NamingFile(pair.IndexPath, [&] {
        if (!files_.Exists(pair.IndexPath)) return;
        Close(pair);
        files_.Open(pair.Index, pair.IndexPath, FileMode::Random);
        indexLength = files_.Length(pair.Index) / 4 * 4;
    });
    Close(pair);
    return indexLength <= change.IndexLength;
}

// That they are still the files which this run has left half done, and not a copy of them or those
// of another folder in their place.
void RecipeJournal::RequireFilesOf(const RecordChange& change) {
    const std::string& journal = paths_.strRecipesTempFile;
    NamingFile(journal, [&] {
        RequireFile(journal);
        Close(TemporaryPair(paths_));
        const std::optional<RecordChange> there = ReadJournal();
        if (there && JournalOf(*there) == JournalOf(change)) return;
        throw Failure(failure::BadRecordNumber, journal);
    });
    const RecipePair pair = PairOf(change);
    if (IsFirstNotBegun(change, pair)) return;
    OpenFilesOf(change, pair);
    const Closing closing(*this, pair);
    NamingFile(pair.TextPath, [&] {
        if (!MayTakeBack(change, pair)) throw Failure(failure::BadRecordNumber, pair.TextPath);
    });
}

// By another run, which has taken the change back or found it complete, and deleted the journal.
bool RecipeJournal::IsSettledAlready(const RecordChange& change) {
    const RecipePair pair = PairOf(change);
    for (const std::string& path : {pair.TextPath, pair.IndexPath})
        if (!files_.Exists(path)) return false;
    if (files_.Exists(paths_.strRecipesTempFile)) return false;
    OpenFilesOf(change, pair);
    const Closing closing(*this, pair);
    return MayTakeBack(change, pair) && (IsUntouched(change, pair) || IsComplete(change, pair));
}

// Whether the text can be that of which the journal was written.
bool RecipeJournal::IsTextOf(const RecordChange& change, const RecipePair& pair) const {
    const std::int64_t growth = files_.Length(pair.Text) - change.TextLength;
    return growth >= 0 && growth <= (change.Adds ? change.NewBytes : 0);
}

// Whether both files, opened for the change, can be those.
bool RecipeJournal::MayTakeBack(const RecordChange& change, const RecipePair& pair) const {
    const std::int64_t indexGrowth = files_.Length(pair.Index) - change.IndexLength;
    return IsTextOf(change, pair) && (!change.Adds || indexGrowth <= 4);
}

bool RecipeJournal::IsComplete(const RecordChange& change, const RecipePair& pair) {
    if (files_.Length(pair.Text) < change.Position - 1 + change.NewBytes) return false;
    files_.Seek(pair.Text, change.Position);
    if (ChecksumOf(files_.ReadChars(pair.Text, change.NewBytes)) != change.NewSum) return false;
    return !change.Adds ||
           files_.ReadRecord(pair.Index, change.IndexLength / 4 + 1) == change.Position;
}

bool RecipeJournal::IsUntouched(const RecordChange& change, const RecipePair& pair) {
    if (change.Adds) {
        return files_.Length(pair.Text) == change.TextLength &&
               files_.Length(pair.Index) == change.IndexLength;
    }
    files_.Seek(pair.Text, change.Position);
    return files_.ReadChars(pair.Text, static_cast<std::int64_t>(change.Old.size())) == change.Old;
}

}  // namespace larder
