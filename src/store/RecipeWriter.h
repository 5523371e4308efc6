#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/NumberedFiles.h"
#include "store/DataPaths.h"
#include "store/RecipeJournal.h"
#include "store/RecipePair.h"
#include "store/RecipeStore.h"

namespace larder {

// Puts records at the end of the database files, so that a crash costs the record being added and
// no other: a recipe of the user's by way of the journal; a description as text before index entry,
// each carried to the disk.
class RecipeWriter {
  public:
    // Shows a critical message to the user.
    using Message = std::function<void(const std::string& text)>;

    // All three outlive the writer.
    RecipeWriter(NumberedFiles& files, const DataPaths& paths, RecipeStore& store, Message message);
    ~RecipeWriter();
    RecipeWriter(const RecipeWriter&) = delete;
    RecipeWriter& operator=(const RecipeWriter&) = delete;

    // Before every write to recipe files: deals with what an earlier one has left, as Journal
    // tells, counts the recipes anew where that changed them, and sees to it that both indexes are
    // those that were counted, by which all numbers go. After a failure nothing may be written.
    void Settle();

    // Appends a recipe to the custom files (21 and 22), which makes it number TotalNumRecords + 1,
    // or to the temporary files (11 and 12), which whoever puts them in the place of others has to
    // flush. Other pairs open nothing. Leaves both files closed; a failure is shown as a message,
    // and false returned.
    bool AddRecipeTo_YDB_IND(const std::string& strTitleTXT, const std::string& strRecipeRTF,
                             std::int16_t XYDBFileNum, std::int16_t XINDFileNum);
    // The same for a caller that has a message of its own: any failure reaches him.
    void AppendRecord(const std::string& strTitleTXT, const std::string& strRecipeRTF,
                      std::int16_t XYDBFileNum, std::int16_t XINDFileNum);

    // Appends a category description to files 3 and 4, which are open before and after. Any
    // failure reaches the caller; the description is not there then.
    void AddCategoryTo_YDB_IND(const std::string& strTitleTXT, const std::string& strCategoryD_RTF);

    // The lines up to the next "\yyk", each with a CR behind it, and where they began. A tail
    // without that line is returned with the position -1.
    std::string GetNextRecipieFromDisk(std::int16_t fileN, std::int32_t& Position);

    // While a tool that has emptied the index of the stock writes the user's recipes.
    bool StockIsMadeAnew = false;

    // What every writer of recipes goes through; one for all of them.
    RecipeJournal Journal;

  private:
    std::int32_t PositionForAppending(int textNumber);
    void OpenForAppending(const RecipePair& pair);
    void RequireCounted(const RecipePair& pair, std::int64_t records);
    void RequireOwnText();
    void RequireTextOfIndex(const RecipePair& pair);
    std::int64_t RecordsOf(const RecipePair& pair);
    void AppendToOwn(const std::string& title, const std::string& rtf);
    void AppendToTemporary(const std::string& title, const std::string& rtf);

    NumberedFiles& files_;
    const DataPaths& paths_;
    RecipeStore& store_;
    Message message_;
    RecipeJournal::Settled settled_;  // and not counted anew yet
};

}  // namespace larder
