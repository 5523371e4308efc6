#include "store/AuthoringTools.h"

#include <algorithm>
#include <functional>

#include "platform/Failure.h"
#include "platform/Paths.h"
#include "platform/rtf/Rtf.h"
#include "platform/rtf/TextSearch.h"
#include "store/FileNumbers.h"

namespace larder {

namespace {

using Piece = std::function<void(std::size_t start, std::size_t end)>;

// Calls `piece` for each stretch of the text from a marker up to the next one or the end. Behind
// another one, a marker that ends the text begins nothing.
void ForEachMarked(const std::string& text, char marker, const Piece& piece) {
    std::size_t start = text.find(marker);
    while (start != std::string::npos) {
        const std::size_t end = std::min(text.find(marker, start + 1), text.size());
        piece(start, end);
        start = end + 1 < text.size() ? end : std::string::npos;
    }
}

}  // namespace

AuthoringTools::AuthoringTools(NumberedFiles& files, const Paths& system, const DataPaths& paths,
                               RecipeStore& store, RecipeWriter& writer)
    : files_(files), system_(system), paths_(paths), store_(store), writer_(writer) {}

RichText AuthoringTools::LoadDocument(const std::string& file) const {
    NumberedFiles reader(system_);
    constexpr int number = 1;
    std::string bytes;
    NamingFile(file, [&] {
        reader.Open(number, file, FileMode::Input);
        bytes = reader.ReadChars(number, reader.Length(number));
    });
    if (auto document = ReadRtf(bytes)) return *std::move(document);
    return RichText::FromPlain(bytes);
}

void AuthoringTools::ReplaceByEmptyIndex(const std::string& text, const std::string& index,
                                         int textNumber, int indexNumber) {
    files_.Close(indexNumber);
    files_.Close(textNumber);
    Ignoring([&] { files_.Delete(index); });
    Ignoring([&] { files_.Delete(text); });
    files_.Open(indexNumber, index, FileMode::Random, 4);
}

void AuthoringTools::StoreRecipeisInFile() {
    const RichText document = LoadDocument(strRecipesSourceFile);
    ReplaceByEmptyIndex(paths_.strRecipesFile, paths_.strRecipesIndexFile, filenumber::Recipes,
                        filenumber::RecipesIndex);
    const std::string text = document.Text();
    writer_.StockIsMadeAnew = true;
    ForEachMarked(text, '#', [&](std::size_t start, std::size_t end) {
        const TextRange identifier = SpanOf(text, start, " ", true, true);
        const TextRange gap = SpanOf(text, identifier.to, " \t", true, false);
        const std::size_t from = std::min(gap.to, end);
        const TextRange title = SpanOf(text, from, "\r\n\t", true, true);
        const std::size_t to = std::min(title.to, end);
        writer_.AddRecipeTo_YDB_IND(text.substr(from, to - from), WriteRtf(document.Cut(from, end)),
                                    filenumber::CustomRecipes, filenumber::CustomRecipesIndex);
    });
    writer_.StockIsMadeAnew = false;
}

void AuthoringTools::StoreCatDInFile() {
    const RichText document = LoadDocument(paths_.strCatDSourceFile);
    ReplaceByEmptyIndex(paths_.strCatDFile, paths_.strCatDIndexFile, filenumber::CatD,
                        filenumber::CatDIndex);
    const std::string text = document.Text();
    ForEachMarked(text, '@', [&](std::size_t start, std::size_t end) {
        const std::size_t from = std::min(start + 2, end);
        const TextRange title = SpanOf(text, from, "\r", true, true);
        const std::size_t to = std::min(title.to, end);
        const std::size_t body = std::min(to + 2, end);
        writer_.AddCategoryTo_YDB_IND(text.substr(from, to - from),
                                      WriteRtf(document.Cut(body, end)));
    });
    files_.Close(filenumber::CatDIndex);
    files_.Close(filenumber::CatD);
}

void AuthoringTools::MakeIndex() {
    using filenumber::Recipes;
    files_.Close(filenumber::RecipesIndex);
    Ignoring([&] { files_.Delete(paths_.strRecipesIndexFile); });
    if (!files_.IsOpen(Recipes)) files_.Open(Recipes, paths_.strRecipesFile, FileMode::Input);
    const int index = files_.FreeNumber();
    files_.Open(index, paths_.strRecipesIndexFile, FileMode::Random);
    try {
        files_.Seek(Recipes, 1);
        std::int64_t entry = 0;
        while (!files_.AtEnd(Recipes)) {
            std::int32_t position = 0;
            writer_.GetNextRecipieFromDisk(Recipes, position);
            if (position != -1) files_.WriteRecord(index, ++entry, position);
        }
    } catch (const Failure&) {
        Ignoring([&] { files_.Close(index); });  // the number may be that of the index
        throw;
    }
    files_.Close(index);
}

void AuthoringTools::ReMakeAll() {
    store_.OpenYDB_IND_Normal();
    const std::int64_t stock = files_.Length(filenumber::RecipesIndex) / 4;
    const std::int64_t own = files_.Length(filenumber::CustomRecipesIndex) / 4;
    store_.OriginalNumRecords = static_cast<std::int32_t>(stock);
    store_.TotalNumRecords = static_cast<std::int32_t>(stock + own);
    store_.SetTotalRecipes(store_.TotalNumRecords);
    Beep();
}

void AuthoringTools::ReMakeAllCatD() {
    StoreCatDInFile();
    Beep();
}

void AuthoringTools::Beep() const {
    if (OnBeep) OnBeep();
}

}  // namespace larder
