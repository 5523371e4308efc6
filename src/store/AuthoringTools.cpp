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

// Calls `piece` for each stretch of the text from a marker up to the next one or the end.
void ForEachMarked(const std::string& text, char marker, const Piece& piece) {
    std::size_t start = text.find(marker);
    while (start != std::string::npos) {
        const std::size_t end = std::min(text.find(marker, start + 1), text.size());
        piece(start, end);
        start = end < text.size() ? end : std::string::npos;
    }
}

}  // namespace

AuthoringTools::AuthoringTools(NumberedFiles& files, const Paths& system, const DataPaths& paths,
                               RecipeWriter& writer)
    : files_(files), system_(system), paths_(paths), writer_(writer) {}

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
    ForEachMarked(text, '#', [&](std::size_t start, std::size_t end) {
        const TextRange identifier = SpanOf(text, start, " ", true, true);
        const TextRange gap = SpanOf(text, identifier.to, " \t", true, false);
        const std::size_t from = std::min(gap.to, end);
        const TextRange title = SpanOf(text, from, "\r\n\t", true, true);
        const std::size_t to = std::min(title.to, end);
        writer_.AddRecipeTo_YDB_IND(text.substr(from, to - from), WriteRtf(document.Cut(from, end)),
                                    filenumber::CustomRecipes, filenumber::CustomRecipesIndex);
    });
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

}  // namespace larder
