#include "store/RecipeWriter.h"

#include <limits>
#include <optional>
#include <utility>

#include "platform/Failure.h"
#include "store/FileNumbers.h"

namespace larder {

namespace {

// The line that closes a description, and every record of a text that is to be indexed anew.
constexpr const char* recordEnd = "\\yyk";

// The pairs of a text and its index that recipes are added to: the user's own and the temporary.
bool AreCustom(std::int16_t text, std::int16_t index) {
    return text == filenumber::CustomRecipes && index == filenumber::CustomRecipesIndex;
}

bool AreTemporary(std::int16_t text, std::int16_t index) {
    return text == filenumber::RecipesTemp && index == filenumber::RecipesIndexTemp;
}

std::int32_t AsPosition(std::int64_t position) {
    if (position > std::numeric_limits<std::int32_t>::max()) {
        throw Failure(failure::Overflow, "RecipeWriter");
    }
    return static_cast<std::int32_t>(position);
}

[[noreturn]] void Refuse(int number, const std::string& path) {
    throw Failure(number, path, path + "\n" + FailureText(number));
}

}  // namespace

RecipeWriter::RecipeWriter(NumberedFiles& files, const DataPaths& paths, RecipeStore& store,
                           Message message)
    : Journal(files, paths),
      files_(files),
      paths_(paths),
      store_(store),
      message_(std::move(message)) {
    store_.Journal = &Journal;
}

RecipeWriter::~RecipeWriter() {
    store_.Journal = nullptr;
}

bool RecipeWriter::AddRecipeTo_YDB_IND(const std::string& strTitleTXT,
                                       const std::string& strRecipeRTF, std::int16_t XYDBFileNum,
                                       std::int16_t XINDFileNum) {
    try {
        AppendRecord(strTitleTXT, strRecipeRTF, XYDBFileNum, XINDFileNum);
        return true;
    } catch (const Failure& f) {
        message_("Error adding recipe.\n" + f.Description);
        return false;
    }
}

void RecipeWriter::AppendRecord(const std::string& strTitleTXT, const std::string& strRecipeRTF,
                                std::int16_t XYDBFileNum, std::int16_t XINDFileNum) {
    const bool custom = AreCustom(XYDBFileNum, XINDFileNum);
    if (!custom && !AreTemporary(XYDBFileNum, XINDFileNum)) {
        Ignoring([&] { files_.Close(XYDBFileNum); });
        throw Failure(failure::BadFileNumber, "AddRecipeTo_YDB_IND");
    }
    // Left open for appending, the text could not be read; closed, the next read opens it.
    const auto close = [&] {
        Ignoring([&] { files_.Close(XYDBFileNum); });
        Ignoring([&] { files_.Close(XINDFileNum); });
    };
    try {
        if (custom) {
            Settle();
            RequireOwnText();
        }
        OpenForAppending(custom ? CustomPair(paths_) : TemporaryPair(paths_));
        if (custom) {
            AppendToOwn(strTitleTXT, strRecipeRTF);
        } else {
            AppendToTemporary(strTitleTXT, strRecipeRTF);
        }
    } catch (const Failure&) {
        close();
        throw;
    }
    close();
}

void RecipeWriter::Settle() {
    settled_.Merge(Journal.Settle());
    if (!StockIsMadeAnew) RequireCounted(StockPair(paths_), store_.OriginalNumRecords);
    const RecipePair own = CustomPair(paths_);
    const std::int64_t counted = store_.TotalNumRecords - store_.OriginalNumRecords;
    // The half of a new recipe may have been counted and cut off since.
    const bool oneLess = settled_.BeforeHalf == counted - 1;
    RequireCounted(own, oneLess ? counted - 1 : counted);
    if (!settled_.Changed) return;
    store_.RecalculateTotalRecipes();
    settled_ = {};
}

// The index may be another one than was counted: its folder is gone from the mount point, or was
// put in the place of another. By it a number would be that of another recipe, which would be
// written over, or lose its picture and its place among the favourites.
void RecipeWriter::RequireCounted(const RecipePair& pair, std::int64_t records) {
    if (records > 0 && !files_.Exists(pair.IndexPath)) {
        Refuse(failure::FileNotFound, pair.IndexPath);
    }
    if (RecordsOf(pair) != records) Refuse(failure::BadRecordNumber, pair.IndexPath);
    // Made anew by a start because it was lost. The text may be on a disc, which is not asked for
    // without need.
    if (records == 0 && files_.Exists(pair.TextPath)) RequireTextOfIndex(pair);
}

// A new recipe behind a text that has not the records of its index would get a place among them.
void RecipeWriter::RequireOwnText() {
    const RecipePair own = CustomPair(paths_);
    if (files_.Exists(own.TextPath)) {
        RequireTextOfIndex(own);
    } else if (RecordsOf(own) > 0) {
        Refuse(failure::FileNotFound, own.TextPath);
    }
}

void RecipeWriter::RequireTextOfIndex(const RecipePair& pair) {
    const std::int64_t records = RecordsOf(pair);
    files_.Close(pair.Text);
    files_.Open(pair.Text, pair.TextPath, FileMode::Input);
    const std::int64_t length = files_.Length(pair.Text);
    const std::int64_t last = records == 0 ? 0 : files_.ReadRecord(pair.Index, records);
    if (records == 0 ? length > 0 : last > length) Refuse(failure::BadRecordNumber, pair.TextPath);
}

// Of the index that is in the folder now.
std::int64_t RecipeWriter::RecordsOf(const RecipePair& pair) {
    files_.Close(pair.Index);
    files_.Open(pair.Index, pair.IndexPath, FileMode::Random);
    return files_.Length(pair.Index) / 4;
}

void RecipeWriter::AppendToOwn(const std::string& title, const std::string& rtf) {
    using namespace filenumber;
    const std::int32_t newTotal = AsPosition(std::int64_t{store_.TotalNumRecords} + 1);
    RecordChange change;
    change.Adds = true;
    change.TextLength = files_.Length(CustomRecipes);
    change.IndexLength = files_.Length(CustomRecipesIndex) / 4 * 4;
    change.Position = AsPosition(change.TextLength + 1);
    const std::string record = title + "\r\n" + rtf + "\r\n";
    change.SetNew(record);
    Journal.CarryOut(change, record);
    store_.TotalNumRecords = newTotal;
}

void RecipeWriter::AppendToTemporary(const std::string& title, const std::string& rtf) {
    using namespace filenumber;
    const std::int32_t position = PositionForAppending(RecipesTemp);
    files_.WriteLine(RecipesTemp, title);
    files_.WriteLine(RecipesTemp, rtf);
    files_.WriteRecord(RecipesIndexTemp, files_.Length(RecipesIndexTemp) / 4 + 1, position);
}

// An index that is open stays in use.
void RecipeWriter::OpenForAppending(const RecipePair& pair) {
    Ignoring([&] { files_.Close(pair.Text); });
    files_.Open(pair.Text, pair.TextPath, FileMode::Append);
    if (!files_.IsOpen(pair.Index)) files_.Open(pair.Index, pair.IndexPath, FileMode::Random);
}

// Moves the text file behind its last byte and returns that position, as an index entry holds it.
std::int32_t RecipeWriter::PositionForAppending(int textNumber) {
    files_.Seek(textNumber, files_.Length(textNumber) + 1);
    return AsPosition(files_.Position(textNumber));
}

void RecipeWriter::AddCategoryTo_YDB_IND(const std::string& strTitleTXT,
                                         const std::string& strCategoryD_RTF) {
    using namespace filenumber;
    const std::int64_t entries = files_.Length(CatDIndex) / 4;
    std::optional<std::int64_t> textLength;  // none as long as nothing can have been written
    // Closing fails for no reason that matters: what counts has been flushed by then.
    const auto close = [&] { Ignoring([&] { files_.Close(CatD); }); };
    close();
    try {
        files_.Open(CatD, paths_.strCatDFile, FileMode::Append);
        textLength = files_.Length(CatD);
        const std::int32_t position = PositionForAppending(CatD);
        files_.WriteLine(CatD, strTitleTXT);
        files_.WriteLine(CatD, strCategoryD_RTF);
        files_.WriteLine(CatD, "");
        files_.WriteLine(CatD, recordEnd);
        files_.Flush(CatD);
        files_.WriteRecord(CatDIndex, entries + 1, position);
        files_.Flush(CatDIndex);
    } catch (const Failure&) {
        // The entry goes first: one without its text would be worse than text without an entry.
        Ignoring([&] {
            files_.SetLength(CatDIndex, entries * 4);
            if (textLength) files_.SetLength(CatD, *textLength);
        });
        close();
        Ignoring([&] { files_.Open(CatD, paths_.strCatDFile, FileMode::Input); });
        throw;
    }
    close();
    files_.Open(CatD, paths_.strCatDFile, FileMode::Input);
}

std::string RecipeWriter::GetNextRecipieFromDisk(std::int16_t fileN, std::int32_t& Position) {
    Position = AsPosition(files_.Position(fileN));
    std::string lines;
    while (!files_.AtEnd(fileN)) {
        const std::string line = files_.ReadLine(fileN);
        if (line == recordEnd) return lines;
        lines.append(line).append("\r");
    }
    Position = -1;
    return lines;
}

}  // namespace larder
