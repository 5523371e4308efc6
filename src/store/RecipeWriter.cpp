#include "store/RecipeWriter.h"

#include <limits>
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

}  // namespace

RecipeWriter::RecipeWriter(NumberedFiles& files, const DataPaths& paths, RecipeStore& store,
                           Message message)
    : files_(files), paths_(paths), store_(store), message_(std::move(message)) {}

void RecipeWriter::AddRecipeTo_YDB_IND(const std::string& strTitleTXT,
                                       const std::string& strRecipeRTF, std::int16_t XYDBFileNum,
                                       std::int16_t XINDFileNum) {
    try {
        Append(strTitleTXT, strRecipeRTF, XYDBFileNum, XINDFileNum);
    } catch (const Failure& f) {
        // Left open for appending, the text could not be read; closed, the next read opens it. Of
        // numbers that are no pair none was opened here, so none is closed.
        if (AreCustom(XYDBFileNum, XINDFileNum) || AreTemporary(XYDBFileNum, XINDFileNum)) {
            Ignoring([&] { files_.Close(XYDBFileNum); });
            Ignoring([&] { files_.Close(XINDFileNum); });
        }
        message_("Error adding recipe.\n" + f.Description);
    }
}

void RecipeWriter::Append(const std::string& title, const std::string& rtf, std::int16_t textNumber,
                          std::int16_t indexNumber) {
    OpenForAppending(textNumber, indexNumber);
    const bool custom = textNumber == filenumber::CustomRecipes;
    const std::int64_t number = std::int64_t{store_.TotalNumRecords} + 1;
    const std::int32_t newTotal = custom ? AsPosition(number) : store_.TotalNumRecords;
    const std::int32_t position = PositionForAppending(textNumber);
    files_.WriteLine(textNumber, title);
    files_.WriteLine(textNumber, rtf);
    if (custom) files_.Flush(textNumber);
    files_.WriteRecord(indexNumber, files_.Length(indexNumber) / 4 + 1, position);
    if (custom) files_.Flush(indexNumber);
    files_.Close(textNumber);
    files_.Close(indexNumber);
    store_.TotalNumRecords = newTotal;
}

void RecipeWriter::OpenForAppending(std::int16_t textNumber, std::int16_t indexNumber) {
    Ignoring([&] { files_.Close(textNumber); });
    const bool custom = AreCustom(textNumber, indexNumber);
    if (!custom && !AreTemporary(textNumber, indexNumber)) return;
    files_.Open(textNumber, custom ? paths_.strCustomRecipesFile : paths_.strRecipesTempFile,
                FileMode::Append);
    if (files_.IsOpen(indexNumber)) return;  // stays in use
    files_.Open(indexNumber,
                custom ? paths_.strCustomRecipesIndexFile : paths_.strRecipesIndexTempFile,
                FileMode::Random);
}

// Moves the text file behind its last byte and returns that position, as an index entry holds it.
std::int32_t RecipeWriter::PositionForAppending(int textNumber) {
    files_.Seek(textNumber, files_.Length(textNumber) + 1);
    return AsPosition(files_.Position(textNumber));
}

void RecipeWriter::AddCategoryTo_YDB_IND(const std::string& strTitleTXT,
                                         const std::string& strCategoryD_RTF) {
    using namespace filenumber;
    const std::int64_t entry = files_.Length(CatDIndex) / 4 + 1;
    files_.Close(CatD);
    try {
        files_.Open(CatD, paths_.strCatDFile, FileMode::Append);
        const std::int32_t position = PositionForAppending(CatD);
        files_.WriteLine(CatD, strTitleTXT);
        files_.WriteLine(CatD, strCategoryD_RTF);
        files_.WriteLine(CatD, "");
        files_.WriteLine(CatD, recordEnd);
        files_.Flush(CatD);
        files_.WriteRecord(CatDIndex, entry, position);
        files_.Flush(CatDIndex);
        files_.Close(CatD);
    } catch (const Failure&) {
        Ignoring([&] { files_.Close(CatD); });
        Ignoring([&] { files_.Open(CatD, paths_.strCatDFile, FileMode::Input); });
        throw;
    }
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
