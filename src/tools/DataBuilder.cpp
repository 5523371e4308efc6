#include "tools/DataBuilder.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <map>

#include "platform/NumberedFiles.h"
#include "platform/Paths.h"
#include "platform/PictureExport.h"
#include "platform/Text.h"
#include "store/AuthoringTools.h"
#include "store/DataPaths.h"
#include "store/FileNumbers.h"
#include "store/RecipeStore.h"
#include "tools/ClickSound.h"
#include "tools/SourceComposer.h"
#include "tools/StockIndexer.h"

namespace larder {

namespace fs = std::filesystem;

namespace {

// There is no disc to ask for while data are built.
struct NoDisc : DiscQuestion {
    bool AskOkCancel(const std::string&) override { return false; }
};

void WriteFile(const fs::path& file, const std::string& bytes) {
    std::ofstream out(file, std::ios::binary);
    out << bytes;
    out.close();
    if (!out) throw SourceError(file, "cannot be written");
}

std::vector<std::string> ReadAllLines(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw SourceError(file, "cannot be read");
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

// The numbers of the drawings "12.svg" or "012-name.svg" in a folder.
std::vector<int> DrawingsIn(const fs::path& folder) {
    std::vector<int> numbers;
    if (!fs::is_directory(folder)) return numbers;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() != ".svg") continue;
        const std::string name = entry.path().filename().string();
        int number = 0;
        std::from_chars(name.data(), name.data() + name.size(), number);
        if (number < 1) throw SourceError(entry.path(), "does not begin with a recipe's number");
        numbers.push_back(number);
    }
    std::ranges::sort(numbers);
    if (std::ranges::adjacent_find(numbers) != numbers.end()) {
        throw SourceError(folder, "holds two pictures of one recipe");
    }
    return numbers;
}

std::string NumberString(const std::vector<int>& numbers) {
    std::string text = " ";
    for (const int number : numbers)
        text += std::to_string(number) + " ";
    return text;
}

// The line of the first search in a fresh category file: the count and three pairs precede it.
constexpr std::size_t FirstSearch = 7;

constexpr int PhotoWidth = 1280;
constexpr int PhotoHeight = 960;
constexpr int GroundWidth = 2048;
constexpr int GroundHeight = 1440;
constexpr int JpegQuality = 88;

}  // namespace

DataBuilder::DataBuilder(fs::path source, fs::path out)
    : source_(std::move(source)), out_(std::move(out)), data_(out_ / "Data") {}

void DataBuilder::Build() {
    ReadAll();
    CheckCategories();
    if (fs::exists(data_)) throw SourceError(data_, "exists already");
    fs::create_directories(data_ / "util");
    try {
        StoreTexts();
        WriteCategories();
        WritePictures();
        fs::remove_all(data_ / "util");
        WriteFile(out_ / "Click.wav", ClickSound());
    } catch (...) {
        fs::remove_all(data_);
        throw;
    }
}

void DataBuilder::ReadAll() {
    recipes_ = ReadSources(source_ / "recipes", "#");
    descriptions_ = ReadSources(source_ / "descriptions", "@");
    names_ = ReadAllLines(source_ / "Category Names.txt");
    std::erase(names_, std::string());
    pictures_ = DrawingsIn(source_ / "pictures");
    if (recipes_.empty()) throw SourceError(source_ / "recipes", "holds no recipe");
    if (pictures_.empty() || pictures_.back() > static_cast<int>(recipes_.size())) {
        throw SourceError(source_ / "pictures", "holds no picture, or one of no recipe");
    }
}

void DataBuilder::CheckCategories() const {
    for (const SourceText& recipe : recipes_) {
        for (const std::string& category : recipe.Categories) {
            if (std::ranges::find(names_, category) == names_.end()) {
                throw SourceError(recipe.File, "unknown category " + category);
            }
        }
    }
}

void DataBuilder::StoreTexts() {
    Paths system;
    DataPaths paths;
    const std::string root = system.Alias(fs::absolute(data_).string()) + "\\";
    paths.Assign(root, root);
    NumberedFiles files(system);
    NoDisc question;
    RecipeStore store(files, paths, question);
    RecipeWriter writer(files, paths, store,
                        [this](const std::string& text) { throw SourceError(data_, text); });
    AuthoringTools tools(files, system, paths, store, writer);

    const fs::path recipes = data_ / "util" / "Recipes.rtf";
    WriteFile(recipes, ComposeRecipes(recipes_));
    WriteFile(data_ / "util" / "FISH DIRECTORY.rtf", ComposeDescriptions(descriptions_));
    tools.strRecipesSourceFile = system.Alias(fs::absolute(recipes).string());
    tools.StoreRecipeisInFile();
    tools.StoreCatDInFile();
    // The authoring routine stores into the custom files; shipped, they are the stock.
    files.CloseAll();
    files.Replace(paths.strCustomRecipesFile, paths.strRecipesFile);
    files.Replace(paths.strCustomRecipesIndexFile, paths.strRecipesIndexFile);
}

void DataBuilder::WriteCategories() {
    std::string names;
    for (const std::string& name : names_)
        names += FromUtf8(name) + "\r\n";
    WriteFile(data_ / "Category Names.txt", names);
    IndexStock(data_, OnProgress);
    // Opening the database makes an index for recipes of the user's; that one is the program's.
    fs::remove(data_ / "Custom Recipes Index.ind");
    const std::vector<std::string> lines = ReadAllLines(data_ / "Categories.ctg");
    CheckMembers(lines);
    // The fixed entries in the order in which the program shows them; the searches behind them.
    std::string categories = lines.at(0) + "\r\n";
    const std::vector<std::string> fixed = {"MY FAVORITES",
                                            " ",
                                            "BUYING AND PREPARATION TIPS",
                                            "",
                                            "VIDEO",
                                            "",
                                            "KNOTS",
                                            "",
                                            "ALL RECIPES WITH PICTURES",
                                            NumberString(pictures_),
                                            "ALL RECIPES",
                                            "*"};
    for (const std::string& line : fixed)
        categories += line + "\r\n";
    for (std::size_t i = FirstSearch; i < lines.size(); ++i)
        categories += lines[i] + "\r\n";
    WriteFile(data_ / "Categories.ctg", categories);
}

// What the maintainers say of a recipe must agree with what the search for the category finds.
void DataBuilder::CheckMembers(const std::vector<std::string>& lines) const {
    std::map<std::string, std::string> found;
    for (std::size_t i = FirstSearch; i + 1 < lines.size(); i += 2)
        found[lines[i]] = lines[i + 1];
    for (const SourceText& recipe : recipes_) {
        for (const std::string& category : recipe.Categories) {
            const std::string number = " " + std::to_string(recipe.Number) + " ";
            if (found[FromUtf8(category)].find(number) == std::string::npos) {
                throw SourceError(recipe.File,
                                  "does not hold the word of its category " + category);
            }
        }
    }
}

void DataBuilder::WritePictures() {
    const fs::path photos = data_ / "Food Photos";
    fs::create_directories(photos);
    for (const auto& entry : fs::directory_iterator(source_ / "pictures")) {
        if (entry.path().extension() != ".svg") continue;
        const std::string name = entry.path().filename().string();
        int number = 0;
        std::from_chars(name.data(), name.data() + name.size(), number);
        const fs::path photo = photos / (std::to_string(number) + ".jpg");
        SaveAsJpeg(Picture::FromFile(entry.path().string()), photo.string(), PhotoWidth,
                   PhotoHeight, JpegQuality);
    }
    SaveAsJpeg(Picture::FromArt("RecipeView"), (data_ / "RecipeView.jpg").string(), GroundWidth,
               GroundHeight, JpegQuality);
}

}  // namespace larder
