#pragma once

#include <string>

#include "behaviour/support/MainWindowFixture.h"

namespace larder::test {

// A cook-book with categories of every length that matters to a window of lines, which is known
// only when the window has been laid out once:
//   "SHORT" two recipes less than fit, "EXACT" as many as fit, "ONE MORE", "LONG" three windows and
//   one more, each from recipe 1 on; "NONE" has no recipe, "ONE" has recipe 5.
// There are 200 stock recipes (none deleted), and own ones from 201 to 206, of which 203 is
// deleted. Recipes 2 and 4 have a picture. Behind these come so many more categories that the list
// of categories has two windows and three entries.
class MeasuredLists : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(200);
        Book.AddManyOwn(2);
        Book.AddOwn("");
        Book.AddManyOwn(3);
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 2 4 ";
        ASSERT_TRUE(Start());
        Fit1 = Fit(1);
        Fit2 = Fit(2);
        ASSERT_GE(Fit1, 4);
        ASSERT_GE(Fit2, 6);
        ASSERT_LT(3 * Fit2 + 1, 200);
        Book.Numbers("SHORT") = NumbersFrom(1, Fit2 - 2);
        Book.Numbers("EXACT") = NumbersFrom(1, Fit2);
        Book.Numbers("ONE MORE") = NumbersFrom(1, Fit2 + 1);
        Book.Numbers("LONG") = NumbersFrom(1, 3 * Fit2 + 1);
        Book.Numbers("NONE") = " ";
        Book.Numbers("ONE") = " 5 ";
        for (int i = 1; static_cast<int>(Book.Categories.size()) < 2 * Fit1 + 3; ++i) {
            Book.Numbers("FILLER " + std::to_string(i)) = NumbersFrom(i, i);
        }
        ASSERT_TRUE(Start());
        ASSERT_EQ(Fit(1), Fit1);
        ASSERT_EQ(Fit(2), Fit2);
    }

    // Opens a category and gives the focus to the recipe list, its first line being selected.
    void OpenWithKeys(const std::string& category) {
        ClickCategory(category);
        Focus(2);
    }
    int Categories() const { return static_cast<int>(Book.Categories.size()); }

    int Fit1 = 0;  // lines of list 1 that fit
    int Fit2 = 0;
};

}  // namespace larder::test
