#include "store/RecipeUpdater.h"

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
    // Makes sure that the record can be reached: asks for the disc, say.
    store_.GetRecipeTitle(RecipeNum);
    store_.GetRecipeRTF(RecipeNum);
    const Place place = PlaceOf(RecipeNum);
    const Hourglass hourglass(around_);
    const Outcome outcome = WriteInPlace(place, {strTitleTXT, strRTF});
    if (outcome == Outcome::DoesNotFit) {
        return UpdateRecipe_TheLongWay(RecipeNum, strRTF, strTitleTXT);
    }
    if (outcome == Outcome::Failed) return false;
    Ignoring([&] { around_.ShowNewTitle(RecipeNum, strTitleTXT); });
    return true;
}

// Tries for as long as there is a mark of write protection to take away, as files copied from a
// disc have it.
RecipeUpdater::Outcome RecipeUpdater::WriteInPlace(const Place& place, const NewRecord& record) {
    for (;;) {
        try {
            writer_.Journal.Settle();
            Close(place.Pair);
            files_.Open(place.Pair.Text, place.Pair.TextPath, FileMode::Binary);
            files_.Open(place.Pair.Index, place.Pair.IndexPath, FileMode::Random);
            const bool fitted = OverwriteRecord(place, record);
            Close(place.Pair);
            return fitted ? Outcome::Done : Outcome::DoesNotFit;
        } catch (const Failure& f) {
            Close(place.Pair);
            if (f.Number == failure::PathAccess && ClearAttributes(place.Pair)) continue;
            around_.ShowError("Error updating recipe\n" + f.Description);
            return Outcome::Failed;
        }
    }
}

bool RecipeUpdater::ClearAttributes(const RecipePair& pair) {
    const bool text = files_.ClearReadOnly(pair.TextPath);
    const bool index = files_.ClearReadOnly(pair.IndexPath);
    return text || index;
}

// False when the record has no room for it: nothing is written then.
bool RecipeUpdater::OverwriteRecord(const Place& place, const NewRecord& record) {
    RecordChange change;
    change.Custom = place.Pair.Text == filenumber::CustomRecipes;
    change.Disc = !change.Custom && paths_.strPathCD != paths_.strPath;
    change.TextLength = files_.Length(place.Pair.Text);
    change.IndexLength = files_.Length(place.Pair.Index) / 4 * 4;
    change.Position = files_.ReadRecord(place.Pair.Index, place.Entry);
    std::int64_t next = files_.ReadRecord(place.Pair.Index, std::int64_t{place.Entry} + 1);
    if (next == 0) next = change.TextLength;
    const std::int64_t room = next - change.Position;
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
