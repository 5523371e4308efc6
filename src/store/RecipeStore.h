#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/NumberedFiles.h"
#include "store/DataPaths.h"
#include "store/DiscQuestion.h"

namespace larder {

class Failure;
class RecipeJournal;
struct RecipePair;
struct RecordChange;

// What a look-up of a title has come upon.
enum class TitleIs {
    There,       // a line that is not empty
    Gone,        // an empty line, which is how a recipe is deleted, or no record at all
    Unreadable,  // nobody knows: the user has given up on the disc, or the storage has failed
};

struct FoundTitle {
    std::string Text;  // what GetRecipeTitle gives
    TitleIs Is = TitleIs::Gone;
};

// Reading recipes and category descriptions by number. Recipes 1 to OriginalNumRecords are the
// stock, in files 1 and 2; those up to TotalNumRecords are the user's own, in files 21 and 22;
// descriptions are in 3 and 4. An index entry is the position at which the record begins in the
// text file, and the record is a title line and the RTF behind it.
//
// A read that finds its file closed opens it again, because every writer leaves the files closed.
// A read whose storage cannot be reached asks the user for the disc, and tries again for as long
// as the answer is OK; a file that stays closed although it was opened again counts as that too.
// Whatever stands in the files, a read takes no more memory than they are long.
class RecipeStore {
    // What a read that cannot reach its storage does about the disc.
    enum class Asking { Each, Once, GivenUp };
    struct Questions {
        Asking Titles = Asking::Each;
        Asking Bodies = Asking::Each;
    };

  public:
    // For reading many recipes, as a list that is filled does. While one lives, a user who has
    // given up on the disc is not asked again for each title that follows, nor, for who reads the
    // bodies too, for each body. An inner one begins afresh.
    class OneDiscQuestion {
      public:
        enum class Of { Titles, TitlesAndBodies };
        explicit OneDiscQuestion(RecipeStore& store, Of reads = Of::Titles)
            : store_(store), outer_(store.questions_) {
            store_.questions_ = {Asking::Once, reads == Of::Titles ? Asking::Each : Asking::Once};
        }
        ~OneDiscQuestion() { store_.questions_ = outer_; }
        OneDiscQuestion(const OneDiscQuestion&) = delete;
        OneDiscQuestion& operator=(const OneDiscQuestion&) = delete;

      private:
        RecipeStore& store_;
        Questions outer_;
    };

    // All three outlive the store; the paths may still be assigned until the files are opened.
    RecipeStore(NumberedFiles& files, const DataPaths& paths, DiscQuestion& question);

    std::int32_t OriginalNumRecords = 0;
    std::int32_t TotalNumRecords = 0;  // records, deleted ones included

    // The count of recipes that the user is told: records without the deleted custom ones.
    std::int32_t TotalRecipes() const { return TotalRecipes_; }
    void SetTotalRecipes(std::int32_t count);
    // Called with each count that is set; may be empty.
    std::function<void(std::int32_t)> OnTotalRecipes;

    // Knows what a write that failed has left of the files: the store reads by it what was there
    // before. Set by the writer; null for none.
    RecipeJournal* Journal = nullptr;
    // Closes files 21 and 22 and opens 1, 2, 21 and 22, going on whatever fails: what is open stays
    // in use, a missing text file stays closed, a missing index comes into being, empty.
    void OpenYDB_IND_Normal();
    // Opens files 3 and 4. One that cannot be opened is a failure that names it.
    void OpenCategoryDescriptions();

    // The body. An empty text when the user gives up on the disc, and for whatever else cannot be
    // read, but failure 63 for a number that has no record.
    std::string GetRecipeRTF(std::int32_t RecipeNum);
    // The title line, empty for a deleted recipe and for what cannot be read; "No Disk Error" when
    // the user gives up on the disc.
    std::string GetRecipeTitle(std::int32_t RecipeNum);
    // The same with what an empty text means. Whoever acts on a deleted recipe asks here, since one
    // that could not be read is none.
    FoundTitle LookUpTitle(std::int32_t RecipeNum);
    // Whether a recipe was deleted for certain: its record is there, and holds nothing but blanks.
    bool IsBlank(std::int32_t RecipeNum);
    // Moves file 1 to a stock recipe; returns an empty text. Any failure reaches the caller.
    std::string GetRecipeTXT(std::int32_t RecipeNum);

    // Title without blanks at its ends; an empty text whatever fails.
    std::string GetCatTitle(std::int32_t CatNum);
    // The body with the lines that close the record, in the last record all but their last byte.
    // Any failure reaches the caller.
    std::string GetCatRTF(std::int32_t CatNum);

    // Counts anew: OriginalNumRecords, TotalNumRecords, TotalRecipes. An index that is closed is
    // opened; what hinders that is the failure, and its description names the file.
    void RecalculateTotalRecipes();

  private:
    // The files that hold a record, and its entry in the index.
    struct Place {
        int Text;
        int Index;
        std::int64_t Entry;
    };
    Place PlaceOf(std::int32_t RecipeNum) const;
    static Place PlaceOfDescription(std::int32_t CatNum);

    const RecordChange* HalfAdded(int text) const;
    const RecordChange* HalfChanged(int text, std::int32_t start) const;
    std::int32_t ReadEntry(const Place& place, std::int64_t entry);
    std::int64_t EndOf(const Place& place);
    std::int32_t ToRecord(const Place& place);
    std::string ReadTitle(const Place& place);
    std::string ReadBody(const Place& place);

    template <typename Read, typename Ask>
    std::optional<std::string> ReadAskingForDisc(const Place& place, Read&& read, Ask&& ask);
    bool AskForDisc(Asking Questions::*read, const std::string& what);
    void OpenIndex(const RecipePair& pair);
    std::int32_t CountRecords(const RecipePair& pair);
    bool ReopenAfter(const Failure& failure, const Place& place);

    NumberedFiles& files_;
    const DataPaths& paths_;
    DiscQuestion& question_;
    std::int32_t TotalRecipes_ = 0;
    Questions questions_;
};

}  // namespace larder
