#include <algorithm>
#include <functional>
#include <limits>

#include "platform/Failure.h"
#include "store/Hourglass.h"
#include "store/RecipeUpdater.h"

// The long way: a pair of files is written anew with one record changed.
namespace larder {

namespace {

using filenumber::RecipesIndexTemp;
using filenumber::RecipesTemp;

constexpr std::int64_t copyBlock = 1024 * 1024;

// The line end of the record in front, which comes back with the line that is written.
constexpr std::int64_t lineEnd = 2;

}  // namespace

bool RecipeUpdater::UpdateRecipe_TheLongWay(std::int32_t RecipeNum, const std::string& strRTF,
                                            const std::string& strTitleTXT) {
    if (!InRange(RecipeNum)) return false;
    return Rewrite(RecipeNum, {strTitleTXT, strRTF}, lineEnd,
                   [this](const Place& place) { CopyTail(place); });
}

bool RecipeUpdater::UpdateRecipe_customOnly(std::int32_t RecipeNum, const std::string& strRTF,
                                            const std::string& strTitleTXT) {
    if (!InRange(RecipeNum) || RecipeNum <= store_.OriginalNumRecords) return false;
    const auto addOneByOne = [this](const Place& place) {
        for (std::int32_t i = place.Entry + 1; i <= place.Last; ++i) {
            const std::int32_t number = store_.OriginalNumRecords + i;
            const FoundTitle title = store_.LookUpTitle(number);
            const std::string rtf = store_.GetRecipeRTF(number);
            // Stored as it came, a record that could not be read would be a deleted one.
            if (title.Is != TitleIs::Gone && (title.Is != TitleIs::There || rtf.empty())) {
                throw Failure(failure::DeviceError, place.Pair.TextPath);
            }
            writer_.AppendRecord(title.Text, rtf, RecipesTemp, RecipesIndexTemp);
        }
    };
    return Rewrite(RecipeNum, {strTitleTXT, strRTF}, 0, addOneByOne);
}

bool RecipeUpdater::Rewrite(std::int32_t RecipeNum, const NewRecord& record,
                            std::int64_t notFromHead, const Tail& tail) {
    if (around_.EditMode()) around_.TellMaintainer("Doing a long update.\rPlease wait...");
    std::string trouble;
    const bool replaced = [&] {
        const Hourglass hourglass(around_);
        return ReplaceFiles(RecipeNum, record, notFromHead, tail, trouble);
    }();
    if (!trouble.empty()) around_.ShowError(trouble);
    if (!replaced) return false;
    Ignoring([&] { around_.ShowNewTitle(RecipeNum, record.Title); });
    return true;
}

// Whether the change stands; `trouble` is what to tell, which there may be even then.
bool RecipeUpdater::ReplaceFiles(std::int32_t RecipeNum, const NewRecord& record,
                                 std::int64_t notFromHead, const Tail& tail, std::string& trouble) {
    const RecipePair pair = PlaceOf(RecipeNum).Pair;
    bool replacing = false;
    try {
        writer_.Settle();
        if (!InRange(RecipeNum)) return false;  // was the half of a new one
        Close(pair);
        RequireWritable(pair);
        BuildTemporaries(PlaceOf(RecipeNum), record, notFromHead, tail);
        Close(pair);
        replacing = true;
        writer_.Journal.PutInPlace(pair);
    } catch (const Failure& f) {
        Close(pair);
        Close(TemporaryPair(paths_));
        trouble = "Error updating recipe\n" + f.Description;
        if (!replacing || !TextWasReplaced(pair)) return false;
        // There is no way back from here; where the rest cannot be done either, the next write or
        // the next start does it.
        Ignoring([&] { writer_.Journal.Settle(); });
    }
    return true;
}

// To be replaced asks a file for nothing, so it is asked here. A mark that can be taken off goes,
// as it does for a record that is written over.
void RecipeUpdater::RequireWritable(const RecipePair& pair) {
    for (const std::string& path : {pair.TextPath, pair.IndexPath}) {
        if (files_.MustNotBeWritten(path) && !files_.ClearReadOnly(path)) {
            throw Failure(failure::PathAccess, path);
        }
    }
}

// Not in doubt: whoever has the new text is to keep it then.
bool RecipeUpdater::TextWasReplaced(const RecipePair& pair) const {
    bool replaced = false;
    Ignoring([&] {
        replaced = !files_.Exists(paths_.strRecipesTempFile) && files_.Exists(pair.TextPath);
    });
    return replaced;
}

// An index that has not an entry for each record, in their order and within the text, would double
// records or lose some.
void RecipeUpdater::CheckIndex(const Place& place) {
    const RecipePair& pair = place.Pair;
    bool sound = files_.Length(pair.Index) / 4 == place.Last;
    if (sound) {
        const std::vector<std::int32_t> entries = files_.ReadRecords(pair.Index, 1, place.Last);
        sound = entries.front() >= 1 && entries.back() <= files_.Length(pair.Text) &&
                std::ranges::adjacent_find(entries, std::greater_equal()) == entries.end();
    }
    if (!sound) throw Failure(failure::BadRecordNumber, pair.IndexPath);
}

// Both temporary files, whole and closed. `notFromHead`: how many bytes before the record are left
// out of the line that the records in front of it become.
void RecipeUpdater::BuildTemporaries(const Place& place, const NewRecord& record,
                                     std::int64_t notFromHead, const Tail& tail) {
    const RecipePair& pair = place.Pair;
    const RecipePair temporary = TemporaryPair(paths_);
    files_.Open(pair.Text, pair.TextPath, FileMode::Input);
    files_.Open(pair.Index, pair.IndexPath, FileMode::Random);
    CheckIndex(place);
    files_.Open(RecipesTemp, temporary.TextPath, FileMode::Output);
    // The text's name is on the disk before there is an index: an index without a text would mean
    // that the text has been renamed.
    files_.Flush(RecipesTemp);
    files_.Open(RecipesIndexTemp, temporary.IndexPath, FileMode::Random);
    const std::int32_t start = files_.ReadRecord(pair.Index, place.Entry);
    files_.Seek(pair.Text, 1);
    if (start > 1) CopyAsLine(pair.Text, std::int64_t{start} - 1 - notFromHead);
    files_.WriteRecords(RecipesIndexTemp, 1, files_.ReadRecords(pair.Index, 1, place.Entry - 1));
    writer_.AppendRecord(record.Title, record.Rtf, RecipesTemp, RecipesIndexTemp);
    if (place.Entry < place.Last) tail(place);
    Close(temporary);
}

// Copies bytes from the position of a text to the temporary one, and a line end behind them. A
// large text is never in memory as a whole.
void RecipeUpdater::CopyAsLine(int from, std::int64_t count) {
    for (std::int64_t left = count; left > copyBlock; left -= copyBlock, count = left) {
        files_.Write(RecipesTemp, files_.ReadChars(from, copyBlock));
    }
    files_.WriteLine(RecipesTemp, files_.ReadChars(from, count));
}

void RecipeUpdater::CopyTail(const Place& place) {
    const RecipePair& pair = place.Pair;
    const RecipePair temporary = TemporaryPair(paths_);
    std::vector<std::int32_t> entries =
        files_.ReadRecords(pair.Index, std::int64_t{place.Entry} + 1, place.Last - place.Entry);
    const std::int32_t tail = entries.front();
    files_.Seek(pair.Text, tail);
    files_.Open(RecipesTemp, temporary.TextPath, FileMode::Append);
    files_.Open(RecipesIndexTemp, temporary.IndexPath, FileMode::Random);
    const std::int64_t delta = files_.Length(RecipesTemp) + 1 - tail;
    CopyAsLine(pair.Text, files_.Length(pair.Text) - tail - 1);
    for (std::int32_t& entry : entries) {
        const std::int64_t moved = entry + delta;
        if (moved > std::numeric_limits<std::int32_t>::max()) {
            throw Failure(failure::Overflow, pair.IndexPath);
        }
        entry = static_cast<std::int32_t>(moved);
    }
    files_.WriteRecords(RecipesIndexTemp, std::int64_t{place.Entry} + 1, entries);
}

}  // namespace larder
