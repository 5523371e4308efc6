#include <algorithm>

#include "platform/Failure.h"
#include "store/RecipeJournal.h"

// A rewritten pair of files takes the place of the real one: the text first, then the index.
namespace larder {

namespace {

using filenumber::RecipesIndexTemp;
using filenumber::RecipesTemp;

// The last byte of a finished temporary index: whose it is. It is no part of an entry.
constexpr std::string_view customMark = "C";
constexpr std::string_view stockMark = "S";
constexpr std::string_view discMark = "D";  // the stock's too, whose text lies on a disc

std::string MarkOfTemporaryIndex(NumberedFiles& files, const DataPaths& paths) {
    files.Close(RecipesIndexTemp);
    files.Open(RecipesIndexTemp, paths.strRecipesIndexTempFile, FileMode::Binary);
    const std::int64_t length = files.Length(RecipesIndexTemp);
    files.Seek(RecipesIndexTemp, length - length % 4 + 1);
    std::string mark = files.ReadChars(RecipesIndexTemp, length % 4);
    files.Close(RecipesIndexTemp);
    return mark;
}

std::int64_t RecordsIn(NumberedFiles& files, int indexNumber, const std::string& path) {
    files.Close(indexNumber);
    files.Open(indexNumber, path, FileMode::Random);
    const std::int64_t records = files.Length(indexNumber) / 4;
    files.Close(indexNumber);
    return records;
}

// Whose a temporary index is that could not be read as a whole: by its mark, else by the number of
// its records. Nothing where neither tells, and for the stock that is not in use.
std::optional<RecipePair> LikelyOwner(NumberedFiles& files, const DataPaths& paths,
                                      std::string_view markOfStock) {
    const RecipePair custom = CustomPair(paths);
    const RecipePair stock = StockPair(paths);
    bool isCustom = false;
    bool isStock = false;
    const int failed = Ignoring([&] {
        const std::string mark = MarkOfTemporaryIndex(files, paths);
        isCustom = mark == customMark;
        isStock = mark == markOfStock;
    });
    if (failed != 0) {
        Ignoring([&] {
            const auto records = RecordsIn(files, RecipesIndexTemp, paths.strRecipesIndexTempFile);
            isCustom = records == RecordsIn(files, custom.Index, custom.IndexPath);
            isStock = records == RecordsIn(files, stock.Index, stock.IndexPath);
        });
    }
    if (isCustom == isStock) return std::nullopt;
    return isCustom ? custom : stock;
}

}  // namespace

void RecipeJournal::PutInPlace(const RecipePair& pair) {
    const std::string& text = paths_.strRecipesTempFile;
    const std::string& index = paths_.strRecipesIndexTempFile;
    files_.Open(RecipesTemp, text, FileMode::Append);
    files_.Open(RecipesIndexTemp, index, FileMode::Append);
    const bool custom = pair.Text == filenumber::CustomRecipes;
    const std::string_view ofStock = StockIsOnDisc() ? discMark : stockMark;
    files_.Write(RecipesIndexTemp, custom ? customMark : ofStock);
    files_.FlushAll({RecipesTemp, RecipesIndexTemp}, index);
    files_.Close(RecipesTemp);
    files_.Close(RecipesIndexTemp);
    try {
        files_.Replace(text, pair.TextPath);
        RenameIndex(pair);
    } catch (const Failure&) {
        textRenamed_ = true;
        Ignoring([&] { textRenamed_ = !files_.Exists(text); });
        renamed_ = textRenamed_ ? std::optional(pair) : std::nullopt;
        throw;
    }
}

// A rename may have been carried out although it was told as failed.
std::string RecipeJournal::IndexFor(const RecipePair& pair) const {
    const std::string& index = paths_.strRecipesIndexTempFile;
    const bool temporary = textRenamed_ && renamed_ && renamed_->Text == pair.Text &&
                           !files_.Exists(paths_.strRecipesTempFile) && files_.Exists(index);
    return temporary ? index : pair.IndexPath;
}

void RecipeJournal::RenameIndex(const RecipePair& pair) {
    files_.Replace(paths_.strRecipesIndexTempFile, pair.IndexPath);
    Ignoring([&] { TrimIndex(pair); });
    Close(pair);
}

// Takes the mark off.
void RecipeJournal::TrimIndex(const RecipePair& pair) {
    if (!files_.Exists(pair.IndexPath)) return;
    files_.Open(pair.Index, pair.IndexPath, FileMode::Random);
    const std::int64_t length = files_.Length(pair.Index);
    if (length % 4 != 0) files_.SetLength(pair.Index, length - length % 4);
}

// Whoever renamed the text may have been stopped before that was on the disk, where the text must
// not come after its index.
void RecipeJournal::FinishPair() {
    textRenamed_ = true;
    const std::string& index = paths_.strRecipesIndexTempFile;
    std::optional<RecipePair> owner;
    try {
        NamingFile(index, [&] { owner = OwnerOfTemporaryIndex(); });
    } catch (const Failure&) {
        // Readers do without the records of a text rather than read it by the old index.
        const std::string_view ofStock = StockIsOnDisc() ? discMark : stockMark;
        if (!renamed_) renamed_ = LikelyOwner(files_, paths_, ofStock);
        throw;
    }
    renamed_ = owner;
    if (owner) {
        Close(*owner);
        NamingFile(owner->IndexPath, [&] {
            files_.FlushAll({}, owner->TextPath);
            RenameIndex(*owner);
        });
    } else {
        textRenamed_ = false;  // no text has got here by this one
        DeleteTemporaries();
    }
}

std::optional<RecipePair> RecipeJournal::OwnerByMark(const std::string& mark) const {
    if (mark == customMark) return CustomPair(paths_);
    if (mark != stockMark && mark != discMark) return std::nullopt;
    RequireStockOf(mark == discMark);
    return StockPair(paths_);
}

// By its mark; without one, by the text that its entries fit. Nothing for an index of neither, nor
// for a marked one that does not fit where the one that is there does.
std::optional<RecipePair> RecipeJournal::OwnerOfTemporaryIndex() {
    const RecipePair custom = CustomPair(paths_);
    const RecipePair stock = StockPair(paths_);
    const std::optional<RecipePair> marked = OwnerByMark(MarkOfTemporaryIndex(files_, paths_));
    files_.Open(RecipesIndexTemp, paths_.strRecipesIndexTempFile, FileMode::Random);
    const std::vector<std::int32_t> entries = EntriesOf(RecipesIndexTemp);
    files_.Close(RecipesIndexTemp);
    if (marked) return Fits(entries, *marked) || !OwnIndexFits(*marked) ? marked : std::nullopt;
    const bool fitsCustom = Fits(entries, custom);
    const bool fitsStock = Fits(entries, stock);
    if (fitsCustom && fitsStock) return OwnIndexFits(custom) ? stock : custom;
    if (fitsCustom) return custom;
    if (fitsStock) return stock;
    return std::nullopt;
}

std::vector<std::int32_t> RecipeJournal::EntriesOf(int indexNumber) {
    return files_.ReadRecords(indexNumber, 1, files_.Length(indexNumber) / 4);
}

// As many entries as the pair has records, each at the beginning of a line of its text.
bool RecipeJournal::Fits(const std::vector<std::int32_t>& entries, const RecipePair& pair) {
    if (!files_.Exists(pair.TextPath) || !files_.Exists(pair.IndexPath)) return false;
    Open(pair);
    const std::int64_t length = files_.Length(pair.Text);
    const auto beginsLine = [&](std::int32_t entry) {
        if (entry == 1) return true;
        if (entry < 3 || entry > length) return false;
        files_.Seek(pair.Text, entry - 1);
        return files_.ReadChars(pair.Text, 1) == "\n";
    };
    const bool fits = static_cast<std::int64_t>(entries.size()) == files_.Length(pair.Index) / 4 &&
                      !entries.empty() && entries.front() == 1 &&
                      std::ranges::adjacent_find(entries, std::greater_equal()) == entries.end() &&
                      std::ranges::all_of(entries, beginsLine);
    Close(pair);
    return fits;
}

bool RecipeJournal::OwnIndexFits(const RecipePair& pair) {
    if (!files_.Exists(pair.TextPath) || !files_.Exists(pair.IndexPath)) return false;
    Open(pair);
    const std::vector<std::int32_t> entries = EntriesOf(pair.Index);
    return Fits(entries, pair);
}

}  // namespace larder
