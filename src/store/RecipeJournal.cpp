#include "store/RecipeJournal.h"

#include <utility>

#include "platform/Failure.h"

namespace larder {

namespace {

using filenumber::RecipesTemp;

// Enough to tell a journal from the text of recipes.
constexpr std::int64_t headBytes = 64;

}  // namespace

RecipeJournal::RecipeJournal(NumberedFiles& files, const DataPaths& paths)
    : files_(files), paths_(paths) {}

RecipePair RecipeJournal::PairOf(const RecordChange& change) const {
    return change.Custom ? CustomPair(paths_) : StockPair(paths_);
}

void RecipeJournal::Close(const RecipePair& pair) {
    Ignoring([&] { files_.Close(pair.Text); });
    Ignoring([&] { files_.Close(pair.Index); });
}

// A text that is not there must not come into being: an empty one would have lost its recipes.
void RecipeJournal::OpenText(const RecipePair& pair) {
    NamingFile(pair.TextPath, [&] {
        RequireFile(pair.TextPath);
        files_.Open(pair.Text, pair.TextPath, FileMode::Binary);
    });
}

void RecipeJournal::OpenIndex(const RecipePair& pair) {
    NamingFile(pair.IndexPath, [&] { files_.Open(pair.Index, pair.IndexPath, FileMode::Random); });
}

void RecipeJournal::Open(const RecipePair& pair) {
    Close(pair);
    OpenText(pair);
    OpenIndex(pair);
}

RecipeJournal::Settled RecipeJournal::Settle() {
    SettleFiles();
    return std::exchange(settled_, {});
}

void RecipeJournal::Settled::Merge(const Settled& later) {
    Changed = Changed || later.Changed;
    if (later.BeforeHalf) BeforeHalf = later.BeforeHalf;
}

void RecipeJournal::SettleForReaders() {
    if (unfinished_ || textRenamed_ || IsOneAlone()) SettleFiles();
}

// A journal or an index may be here without this run knowing of it: its folder was away while a
// copy stood in the place. Both are there while a rewrite is at work.
bool RecipeJournal::IsOneAlone() const {
    return files_.Exists(paths_.strRecipesTempFile) !=
           files_.Exists(paths_.strRecipesIndexTempFile);
}

void RecipeJournal::Forget() {
    unfinished_.reset();
    unflushed_ = false;
}

void RecipeJournal::SettleFiles() {
    if (unfinished_ && IsSettledAlready(*unfinished_)) {
        settled_.Changed = true;
        Forget();
    }
    if (unfinished_) {
        RequireFilesOf(*unfinished_);
        SettleUnfinished();
        return;
    }
    // Its readers have the temporary index open, which is about to be renamed or deleted.
    if (renamed_) Close(*renamed_);
    const bool text = files_.Exists(paths_.strRecipesTempFile);
    const bool index = files_.Exists(paths_.strRecipesIndexTempFile);
    if (text || index) Close(TemporaryPair(paths_));
    if (index && !text) FinishPair();
    if (text && !index) SettleChange();
    if (text) DeleteTemporaries();
    if (!textRenamed_) return;
    // An index of which renaming was told as failed may be in its place all the same.
    RequireIndexInPlace();
    settled_.Changed = true;
    textRenamed_ = false;
    renamed_.reset();
}

// A folder that is out of reach looks empty, and readers may have made an index there meanwhile,
// but never a text. Whose text was renamed may not be known.
void RecipeJournal::RequireIndexInPlace() const {
    const RecipePair custom = CustomPair(paths_);
    const RecipePair pair = renamed_ ? *renamed_ : custom;
    NamingFile(pair.IndexPath, [&] { RequireFile(pair.IndexPath); });
    if (!renamed_ && files_.Exists(StockPair(paths_).TextPath)) return;
    NamingFile(pair.TextPath, [&] { RequireFile(pair.TextPath); });
}

const RecordChange* RecipeJournal::HalfDone(int textNumber) const {
    if (!unfinished_) return nullptr;
    const int changed = unfinished_->Custom ? filenumber::CustomRecipes : filenumber::Recipes;
    return changed == textNumber ? &*unfinished_ : nullptr;
}

void RecipeJournal::SettleLastRun() {
    Settle();
    // An index that has just been renamed into its place may still bear its mark; readers take no
    // notice of it.
    for (const RecipePair& pair : {StockPair(paths_), CustomPair(paths_)}) {
        Ignoring([&] { TrimIndex(pair); });
        Close(pair);
    }
}

// The index goes first, and for good: alone it would mean that the text was renamed.
void RecipeJournal::DeleteTemporaries() {
    const std::string& text = paths_.strRecipesTempFile;
    const std::string& index = paths_.strRecipesIndexTempFile;
    if (files_.Exists(index)) {
        NamingFile(index, [&] { files_.Delete(index); });
        NamingFile(index, [&] { files_.FlushAll({}, index); });
    }
    if (files_.Exists(text)) NamingFile(text, [&] { files_.Delete(text); });
}

void RecipeJournal::CarryOut(const RecordChange& change, std::string_view bytes) {
    const RecipePair pair = PairOf(change);
    WriteJournal(change);
    try {
        files_.Seek(pair.Text, change.Position);
        files_.Write(pair.Text, bytes);
        if (change.Adds) {
            files_.WriteRecord(pair.Index, change.IndexLength / 4 + 1, change.Position);
            files_.FlushAll({pair.Text, pair.Index});
        } else {
            files_.Flush(pair.Text);
        }
    } catch (const Failure&) {
        unfinished_ = change;
        Ignoring([&] { TakeBack(change); });
        throw;
    }
    // A journal that stays does no harm: the next Settle finds the change complete.
    Ignoring([&] { files_.Delete(paths_.strRecipesTempFile); });
}

// On the disk, and its name too, before the first byte of the record changes.
void RecipeJournal::WriteJournal(const RecordChange& change) {
    const std::string& path = paths_.strRecipesTempFile;
    try {
        files_.Close(RecipesTemp);
        files_.Open(RecipesTemp, path, FileMode::Output);
        files_.Write(RecipesTemp, JournalOf(change));
        files_.FlushAll({RecipesTemp}, path);
        files_.Close(RecipesTemp);
    } catch (const Failure&) {
        Ignoring([&] { files_.Close(RecipesTemp); });
        Ignoring([&] { files_.Delete(path); });
        throw;
    }
}

std::optional<RecordChange> RecipeJournal::ReadJournal() {
    files_.Open(RecipesTemp, paths_.strRecipesTempFile, FileMode::Input);
    const std::int64_t length = files_.Length(RecipesTemp);
    std::optional<RecordChange> change;
    if (length > headBytes && BeginsAsJournal(files_.ReadChars(RecipesTemp, headBytes))) {
        files_.Seek(RecipesTemp, 1);
        change = ChangeIn(files_.ReadChars(RecipesTemp, length));
    }
    files_.Close(RecipesTemp);
    return change;
}

// A change that was begun before the program was killed. One that is complete stays; only the
// system may know of it as yet, so it is carried to the disk before its journal goes.
void RecipeJournal::SettleChange() {
    std::optional<RecordChange> change;
    NamingFile(paths_.strRecipesTempFile, [&] { change = ReadJournal(); });
    if (!change) return;
    const RecipePair pair = PairOf(*change);
    if (!change->Custom) RequireStockOf(change->Disc);
    if (IsFirstNotBegun(*change, pair)) return;
    OpenFilesOf(*change, pair);
    bool takeBack = false;
    {
        const Closing closing(*this, pair);
        NamingFile(pair.TextPath, [&] {
            takeBack = MayTakeBack(*change, pair) && !IsComplete(*change, pair);
            if (!takeBack) files_.FlushAll({pair.Text, pair.Index});
        });
    }
    if (!takeBack) return;
    unfinished_ = change;
    SettleUnfinished();
}

// It stays unfinished until it is taken back, which may fail halfway.
void RecipeJournal::SettleUnfinished() {
    const RecordChange change = *unfinished_;
    settled_.Changed = true;
    if (change.Adds) settled_.BeforeHalf = change.IndexLength / 4;
    TakeBack(change);
}

// Puts the old state back and forgets the change. Files that were marked as not to be written
// since then lose their mark.
void RecipeJournal::TakeBack(const RecordChange& change) {
    const RecipePair pair = PairOf(change);
    {
        const Closing closing(*this, pair);
        NamingFile(pair.TextPath, [&] { PutBackDespiteMark(change, pair); });
    }
    Forget();
    DeleteTemporaries();
}

void RecipeJournal::PutBackDespiteMark(const RecordChange& change, const RecipePair& pair) {
    try {
        PutBack(change, pair);
    } catch (const Failure& f) {
        if (f.Number != failure::PathAccess) throw;
        const bool text = files_.ClearReadOnly(pair.TextPath);
        const bool index = files_.ClearReadOnly(pair.IndexPath);
        if (!text && !index) throw;
        PutBack(change, pair);
    }
}

// What is there already is not written again: a file that must not be written was not changed
// either. But it may be there for the system alone, so it is flushed. Of a flush that failed the
// next one may know nothing: it has work only with what is written anew.
void RecipeJournal::PutBack(const RecordChange& change, const RecipePair& pair) {
    if (IsFirstNotBegun(change, pair)) return;
    Open(pair);
    if (unflushed_ || !IsUntouched(change, pair)) {
        if (change.Adds) {
            files_.SetLength(pair.Text, change.TextLength);
            files_.SetLength(pair.Index, change.IndexLength);
        } else {
            files_.Seek(pair.Text, change.Position);
            files_.Write(pair.Text, change.Old);
        }
    }
    unflushed_ = true;
    files_.FlushAll({pair.Text, pair.Index});
    unflushed_ = false;
}

}  // namespace larder
