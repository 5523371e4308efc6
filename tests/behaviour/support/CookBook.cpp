#include "behaviour/support/CookBook.h"

namespace larder::test {

namespace {

std::string Rtf(const std::string& title, const std::string& body) {
    std::string rtf = "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Times New Roman;}}\\fs24 " + title;
    rtf += "\\par ";
    for (const char c : body) {
        if (c == '\n') {
            rtf += "\\par ";
        } else {
            rtf += c;
        }
    }
    return rtf + "\\par}";
}

}  // namespace

CookBook::CookBook() {
    Categories = {{"MY FAVORITES", " "}, {"BUYING AND PREPARATION TIPS", ""}, {"VIDEO", ""},
                  {"KNOTS", ""},         {"ALL RECIPES WITH PICTURES", " "},  {"ALL RECIPES", "*"}};
    descriptions_.AddDescription("COD", Rtf("COD", "A fish of cold waters."));
}

int CookBook::Add(Database& database, const std::string& title, const std::string& body) {
    database.AddRecipe(title, title.empty() ? std::string(20, ' ') : Rtf(title, body));
    return StockCount() + OwnCount();
}

int CookBook::AddStock(const std::string& title, const std::string& body) {
    return Add(stock_, title, body);
}

int CookBook::AddOwn(const std::string& title, const std::string& body) {
    return Add(own_, title, body);
}

void CookBook::AddManyStock(int count) {
    for (int i = 0; i < count; ++i)
        AddStock("Stock recipe " + std::to_string(StockCount() + 1));
}

void CookBook::AddManyOwn(int count) {
    for (int i = 0; i < count; ++i) {
        AddOwn("Own recipe " + std::to_string(StockCount() + OwnCount() + 1));
    }
}

std::string& CookBook::Numbers(const std::string& category) {
    for (Category& each : Categories) {
        if (each.first == category) return each.second;
    }
    return Categories.emplace_back(category, "").second;
}

std::string CookBook::CategoryFile() const {
    std::string text = " " + std::to_string(StockCount() + OwnCount()) + " \r\n";
    for (const Category& each : Categories)
        text += each.first + "\r\n" + each.second + "\r\n";
    return text;
}

void CookBook::WriteTo(const TempFolder& folder) const {
    folder.Write("Data/CategyD.ydb", descriptions_.Text);
    folder.Write("Data/CategyD Index.ind", descriptions_.Index());
    folder.Write("Data/Recipes.ydb", stock_.Text);
    folder.Write("Data/Recipes Index.ind", stock_.Index());
    if (OwnCount() > 0) {
        folder.Write("Data/Custom Recipes.ydb", own_.Text);
        folder.Write("Data/Custom Recipes Index.ind", own_.Index());
    } else {
        folder.Delete("Data/Custom Recipes.ydb");
        folder.Delete("Data/Custom Recipes Index.ind");
    }
    folder.Write("Data/Categories.ctg", CategoryFile());
}

std::string NumbersFrom(int first, int last) {
    std::string numbers = " ";
    for (int i = first; i <= last; ++i)
        numbers += std::to_string(i) + " ";
    return numbers;
}

}  // namespace larder::test
