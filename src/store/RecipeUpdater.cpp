#include "store/RecipeUpdater.h"

#include <algorithm>

#include "platform/Failure.h"
#include "store/Hourglass.h"

namespace larder {

RecipeUpdater::RecipeUpdater(NumberedFiles& files, const DataPaths& paths, RecipeStore& store,
                             RecipeWriter& writer, UpdateSurroundings& around)
    : files_(files), paths_(paths), store_(store), writer_(writer), around_(around) {}

bool RecipeUpdater::InRange(std::int32_t RecipeNum) const {
    return RecipeNum >= 1 && RecipeNum <= store_.TotalNumRecords;
}

RecipeUpdater::Place RecipeUpdater::PlaceOf(std::int32_t RecipeNum) const {
    const std::int32_t stock = store_.OriginalNumRecords;
    if (RecipeNum <= stock) return {StockPair(paths_), RecipeNum, stock};
    return {CustomPair(paths_), RecipeNum - stock, store_.TotalNumRecords - stock};
}

void RecipeUpdater::Close(const RecipePair& pair) {
    Ignoring([&] { files_.Close(pair.Text); });
    Ignoring([&] { files_.Close(pair.Index); });
}

bool RecipeUpdater::UpdateRecipe(std::int32_t RecipeNum, const std::string& strRTF,
                                 const std::string& strTitleTXT) {
    try {
        return UpdateRecipe_TheShortWay(RecipeNum, strRTF, strTitleTXT);
    } catch (const Failure&) {
        around_.ShowError("Couldn't update recipe #" + std::to_string(RecipeNum));
        return false;
    }
}

bool RecipeUpdater::UpdateRecipe_TheShortWay(std::int32_t RecipeNum, const std::string& strRTF,
                                             const std::string& strTitleTXT) {
    if (!InRange(RecipeNum)) return false;
    // What an earlier write has left is dealt with before the record is read; where that fails, the
    // write below tells it.
    Ignoring([&] { writer_.Settle(); });
    // Makes sure that the record can be reached: asks for the disc, say.
    store_.GetRecipeTitle(RecipeNum);
    store_.GetRecipeRTF(RecipeNum);
    std::string trouble;
    const Outcome outcome = [&] {
        const Hourglass hourglass(around_);
        return WriteInPlace(RecipeNum, {strTitleTXT, strRTF}, trouble);
    }();
    if (outcome == Outcome::DoesNotFit) {
        return UpdateRecipe_TheLongWay(RecipeNum, strRTF, strTitleTXT);
    }
    if (!trouble.empty()) around_.ShowError(trouble);
    if (outcome == Outcome::Failed) return false;
    Ignoring([&] { around_.ShowNewTitle(RecipeNum, strTitleTXT); });
    return true;
}

// Tries for as long as there is a mark of write protection to take away, as files copied from a
// disc have it.
RecipeUpdater::Outcome RecipeUpdater::WriteInPlace(std::int32_t RecipeNum, const NewRecord& record,
                                                   std::string& trouble) {
    const RecipePair pair = PlaceOf(RecipeNum).Pair;
    for (;;) {
        try {
            writer_.Settle();
            if (!InRange(RecipeNum)) return Outcome::Failed;  // was the half of a new one
            Close(pair);
            // Opened, a text that has vanished would be there again, without its recipes.
            if (!files_.Exists(pair.TextPath)) throw Failure(failure::FileNotFound, pair.TextPath);
            files_.Open(pair.Text, pair.TextPath, FileMode::Binary);
            files_.Open(pair.Index, pair.IndexPath, FileMode::Random);
            const bool fitted = OverwriteRecord(PlaceOf(RecipeNum), record);
            Close(pair);
            return fitted ? Outcome::Done : Outcome::DoesNotFit;
        } catch (const Failure& f) {
            Close(pair);
            if (f.Number == failure::PathAccess && ClearAttributes(pair)) continue;
            trouble = "Error updating recipe\n" + f.Description;
            return Outcome::Failed;
        }
    }
}

bool RecipeUpdater::ClearAttributes(const RecipePair& pair) {
    const bool text = files_.ClearReadOnly(pair.TextPath);
    const bool index = files_.ClearReadOnly(pair.IndexPath);
    return text || index;
}

// Where the record behind it begins; for the last one, the length of the text. An index that has
// another record begin before that would lose it.
std::int64_t RecipeUpdater::EndOf(const Place& place, std::int32_t start) {
    const std::vector<std::int32_t> entries =
        files_.ReadRecords(place.Pair.Index, 1, files_.Length(place.Pair.Index) / 4);
    if (static_cast<std::size_t>(place.Entry) > entries.size()) {
        throw Failure(failure::BadRecordNumber, place.Pair.IndexPath);
    }
    const auto own = static_cast<std::size_t>(place.Entry) - 1;
    const bool last = own + 1 == entries.size();
    const std::int64_t end = last ? files_.Length(place.Pair.Text) : entries[own + 1];
    const auto inside = [&](std::int32_t entry) { return entry >= start && entry < end; };
    if (start < 1 || end <= start || std::ranges::count_if(entries, inside) != 1) {
        throw Failure(failure::BadRecordNumber, place.Pair.IndexPath);
    }
    return end;
}

// False when the record has no room for it: nothing is written then.
bool RecipeUpdater::OverwriteRecord(const Place& place, const NewRecord& record) {
    RecordChange change;
    change.Custom = place.Pair.Text == filenumber::CustomRecipes;
    change.Disc = !change.Custom && paths_.strPathCD != paths_.strPath;
    change.TextLength = files_.Length(place.Pair.Text);
    change.IndexLength = files_.Length(place.Pair.Index) / 4 * 4;
    change.Position = files_.ReadRecord(place.Pair.Index, place.Entry);
    const std::int64_t room = EndOf(place, change.Position) - change.Position;
    const auto needed = static_cast<std::int64_t>(record.Rtf.size() + record.Title.size() + 4);
    if (room < needed) return false;
    files_.Seek(place.Pair.Text, change.Position);
    change.Old = files_.ReadChars(place.Pair.Text, room);
    const std::string padding(static_cast<std::size_t>(room - needed), ' ');
    const std::string bytes = record.Title + "\r\n" + record.Rtf + padding + "\r\n";
    change.SetNew(bytes);
    writer_.Journal.CarryOut(change, bytes);
    return true;
}

}  // namespace larder
