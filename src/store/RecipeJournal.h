#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/NumberedFiles.h"
#include "store/DataPaths.h"
#include "store/RecipePair.h"
#include "store/RecordChange.h"

namespace larder {

// How a change reaches the recipe files so that it is there whole or not at all, wherever the
// program is killed or the power fails. What was begun is told by the two temporary files:
//   the text alone, a journal   one record is being changed where it stands; the journal has the
//                               old bytes, and a checksum of the new ones
//   the text alone, anything else, or both   a rewrite, or a journal, that was not finished; the
//                               real files are untouched
//   the index alone             the rewritten text stands in its place, the index does not yet
//
// docs/file-formats.md tells why no instant is ambiguous.
class RecipeJournal {
  public:
    // What settling has done to the recipe files, for readers too.
    struct Settled {
        bool Changed = false;  // what was counted is to be counted anew
        // How many entries the user's index had before the half of a new recipe that was cut off,
        // and that may have been counted.
        std::optional<std::int64_t> BeforeHalf;

        void Merge(const Settled& later);
    };

    // Both outlive the journal.
    RecipeJournal(NumberedFiles& files, const DataPaths& paths);

    // Deals with what an earlier write has left, in this run or one before: takes the change of a
    // record back unless it is complete, finishes a rewrite, deletes the temporary files. Nothing
    // happens when there are none. A failure names the file; the temporary files stay then, and
    // nothing may be written before a later call succeeds. Leaves the files that it needed closed.
    // Returns what was done since the last call that succeeded.
    Settled Settle();
    // Settle for readers: does nothing unless something has been left half done.
    void SettleForReaders();
    // Settle for the start of the program, before the files are opened.
    void SettleLastRun();

    // How readers take the files while Settle does not succeed.
    // The index that goes with the text of a pair: the temporary one as long as the rewritten text
    // stands in its place and the index does not.
    std::string IndexFor(const RecipePair& pair) const;
    // The change that the files with this text are left in the middle of, null for none: the record
    // is the old one still, and one that was to be added is not there.
    const RecordChange* HalfDone(int textNumber) const;

    // Changes one record in the files of its pair, which are open for writing, and carries it to
    // the disk. `bytes` are the new ones. After a failure the old record is there, or will be at
    // the next Settle.
    void CarryOut(const RecordChange& change, std::string_view bytes);

    // Puts the finished temporary files, all closed, in the place of a pair. After a failure
    // either nothing was replaced, and the temporary files are there, or Settle completes it.
    void PutInPlace(const RecipePair& pair);

  private:
    // Closes a pair when it goes, whatever has failed.
    class Closing {
      public:
        Closing(RecipeJournal& journal, const RecipePair& pair) : journal_(journal), pair_(pair) {}
        ~Closing() { journal_.Close(pair_); }
        Closing(const Closing&) = delete;
        Closing& operator=(const Closing&) = delete;

      private:
        RecipeJournal& journal_;
        const RecipePair& pair_;
    };

    void SettleFiles();
    void SettleUnfinished();
    bool IsOneAlone() const;
    bool IsSettledAlready(const RecordChange& change);
    void Forget();
    RecipePair PairOf(const RecordChange& change) const;
    void WriteJournal(const RecordChange& change);
    std::optional<RecordChange> ReadJournal();
    void TakeBack(const RecordChange& change);
    void PutBackDespiteMark(const RecordChange& change, const RecipePair& pair);
    void PutBack(const RecordChange& change, const RecipePair& pair);
    bool IsFirstNotBegun(const RecordChange& change, const RecipePair& pair);
    void RequireFile(const std::string& path) const;
    void RequireIndexInPlace() const;
    bool StockIsOnDisc() const;
    void RequireStockOf(bool disc) const;
    void Open(const RecipePair& pair);
    void OpenFilesOf(const RecordChange& change, const RecipePair& pair);
    void OpenText(const RecipePair& pair);
    void OpenIndex(const RecipePair& pair);
    void OpenIndexBehind(const RecordChange& change, const RecipePair& pair);
    void Close(const RecipePair& pair);
    bool IsUntouched(const RecordChange& change, const RecipePair& pair);
    void RequireFilesOf(const RecordChange& change);
    bool IsTextOf(const RecordChange& change, const RecipePair& pair) const;
    bool MayTakeBack(const RecordChange& change, const RecipePair& pair) const;
    bool IsComplete(const RecordChange& change, const RecipePair& pair);
    void SettleChange();
    void DeleteTemporaries();

    void FinishPair();
    void RenameIndex(const RecipePair& pair);
    void TrimIndex(const RecipePair& pair);
    std::optional<RecipePair> OwnerOfTemporaryIndex();
    std::optional<RecipePair> OwnerByMark(const std::string& mark) const;
    std::vector<std::int32_t> EntriesOf(int indexNumber);
    bool Fits(const std::vector<std::int32_t>& entries, const RecipePair& pair);
    bool OwnIndexFits(const RecipePair& pair);

    NumberedFiles& files_;
    const DataPaths& paths_;
    std::optional<RecordChange> unfinished_;  // half done, and not taken back yet
    bool unflushed_ = false;                  // what was put back, since a flush failed
    bool textRenamed_ = false;  // and its index not, since a failure in this run; or maybe so
    std::optional<RecipePair> renamed_;  // whose text that is, once it is known
    Settled settled_;                    // and not told yet
};

}  // namespace larder
