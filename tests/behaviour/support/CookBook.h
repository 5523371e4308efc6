#pragma once

#include <string>
#include <utility>
#include <vector>

#include "support/DataFolder.h"
#include "support/TempFolder.h"

namespace larder::test {

// The content of a small data folder: recipes, descriptions, categories. A test changes it before
// the window is made.
struct CookBook {
    // The six lines at the top of the categories are there from the beginning.
    CookBook();

    // Each returns the recipe's number. Stock recipes come first: none can be added behind an own
    // one. `body` is plain text, its lines ended by "\n"; the title is the first line of the
    // document. An empty title makes a deleted recipe.
    int AddStock(const std::string& title, const std::string& body = "Rinse and dry.\nServe.");
    int AddOwn(const std::string& title, const std::string& body = "As mother made it.");
    // `count` more, called "Stock recipe 7" ("Own recipe 3") by their numbers.
    void AddManyStock(int count);
    void AddManyOwn(int count);

    int StockCount() const { return static_cast<int>(stock_.Positions.size()); }
    int OwnCount() const { return static_cast<int>(own_.Positions.size()); }

    using Category = std::pair<std::string, std::string>;  // name, number string
    std::vector<Category> Categories;
    // The number string of a category, by its name; made at the end when it is not there yet.
    std::string& Numbers(const std::string& category);

    // Puts all files into `folder`/Data.
    void WriteTo(const TempFolder& folder) const;
    std::string CategoryFile() const;

  private:
    int Add(Database& database, const std::string& title, const std::string& body);
    Database stock_;
    Database own_;
    Database descriptions_;
};

// " 3 4 5 " for 3 to 5; one blank when there are none.
std::string NumbersFrom(int first, int last);

}  // namespace larder::test
