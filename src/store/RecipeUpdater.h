#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/NumberedFiles.h"
#include "store/DataPaths.h"
#include "store/RecipePair.h"
#include "store/RecipeStore.h"
#include "store/RecipeWriter.h"

namespace larder {

// What an update asks of those around it.
class UpdateSurroundings {
  public:
    virtual ~UpdateSurroundings() = default;

    virtual bool EditMode() const = 0;
    virtual void ShowError(const std::string& text) = 0;  // a critical message
    virtual void TellMaintainer(const std::string& text) = 0;
    virtual void SetHourglass(bool on) = 0;
    // The list that is on show, if it has the recipe.
    virtual void ShowNewTitle(std::int32_t RecipeNum, const std::string& strTitleTXT) = 0;
};

// Replaces records by number, stock or custom. A record keeps its number and, where the new text
// fits, its place: it is written over and filled up with blanks (the short way). Else the whole
// file is rewritten (the long way), which shifts the records behind it.
//
// All return whether the change stands in the files. False for a number outside 1 to
// TotalNumRecords, without a word, and after a failure, which has been shown; the old record is
// there then. Files of the pair are left closed. A title has no line end.
class RecipeUpdater {
  public:
    // All outlive the updater.
    RecipeUpdater(NumberedFiles& files, const DataPaths& paths, RecipeStore& store,
                  RecipeWriter& writer, UpdateSurroundings& around);

    bool UpdateRecipe(std::int32_t RecipeNum, const std::string& strRTF,
                      const std::string& strTitleTXT);
    // A record that begins at `start` and whose successor begins at `next` has next - start bytes
    // of room; title and text need 4 more than they are long. The last record's successor is taken
    // to begin at the file's length, which is a byte short: that byte stays as it is. A record that
    // cannot be read is a failure that reaches the caller.
    bool UpdateRecipe_TheShortWay(std::int32_t RecipeNum, const std::string& strRTF,
                                  const std::string& strTitleTXT);
    bool UpdateRecipe_TheLongWay(std::int32_t RecipeNum, const std::string& strRTF,
                                 const std::string& strTitleTXT);
    // An earlier form of the long way, kept for reference: custom recipes alone, those behind the
    // changed one rewritten one by one. Leaves a CR LF more behind the records in front.
    bool UpdateRecipe_customOnly(std::int32_t RecipeNum, const std::string& strRTF,
                                 const std::string& strTitleTXT);

  private:
    struct Place {
        RecipePair Pair;
        std::int32_t Entry;  // k, from 1
        std::int32_t Last;   // records of the pair
    };
    struct NewRecord {
        const std::string& Title;
        const std::string& Rtf;
    };
    enum class Outcome { Done, DoesNotFit, Failed };
    using Tail = std::function<void(const Place& place)>;

    bool InRange(std::int32_t RecipeNum) const;
    Place PlaceOf(std::int32_t RecipeNum) const;
    void Close(const RecipePair& pair);
    Outcome WriteInPlace(std::int32_t RecipeNum, const NewRecord& record, std::string& trouble);
    bool OverwriteRecord(const Place& place, const NewRecord& record);
    bool ClearAttributes(const RecipePair& pair);

    void RequireWritable(const RecipePair& pair);
    bool ReplaceFiles(std::int32_t RecipeNum, const NewRecord& record, std::int64_t notFromHead,
                      const Tail& tail, std::string& trouble);
    std::int64_t EndOf(const Place& place, std::int32_t start);
    void CheckIndex(const Place& place);
    bool Rewrite(std::int32_t RecipeNum, const NewRecord& record, std::int64_t notFromHead,
                 const Tail& tail);
    void BuildTemporaries(const Place& place, const NewRecord& record, std::int64_t notFromHead,
                          const Tail& tail);
    void CopyAsLine(int from, std::int64_t count);
    void CopyTail(const Place& place);
    bool TextWasReplaced(const RecipePair& pair) const;

    NumberedFiles& files_;
    const DataPaths& paths_;
    RecipeStore& store_;
    RecipeWriter& writer_;
    UpdateSurroundings& around_;
};

}  // namespace larder
