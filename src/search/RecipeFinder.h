#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "lists/ListTicket.h"
#include "lists/VirtualList.h"
#include "search/WordIndex.h"
#include "store/RecipeStore.h"

namespace larder {

// What a search needs of the program around it.
class FindSurroundings {
  public:
    virtual ~FindSurroundings() = default;

    // The user asks for a search within the list on the screen (and that is not the whole book).
    virtual bool OnlyInList() const = 0;
    // That list is in the user's own order: the favourites.
    virtual bool ListIsFavorites() const = 0;
    // What stands beside guide pages and the film goes away.
    virtual void HideGuideArt() = 0;

    // The box in which the user's own recipes are searched: takes a recipe, and tells whether a
    // word stands in it as a whole word, in whatever case.
    virtual void TakeText(const std::string& rtf) = 0;
    virtual bool HoldsWord(const std::string& word) = 0;

    virtual void LetEventsRun() = 0;
    // The list is complete. `searched` is false for a query without a word to search for: the list
    // is as it was before.
    virtual void ShowResult(bool searched, bool found) = 0;
    // Cancelled from outside: the list keeps the recipes found so far.
    virtual void ShowCancelled() = 0;
};

// Evaluates word queries into the recipe list: every word of the query must stand in a recipe.
// Stock recipes are found through the word index, the user's own by reading each. Searches show no
// errors: a word whose look-up fails counts as if it were not in the query. A disc that is out is
// asked for until the user gives up, and then no more in this search.
class RecipeFinder {
  public:
    // All outlive the finder. `list` receives the result; its ticket cancels a running search.
    RecipeFinder(RecipeStore& store, WordIndex& index, VirtualList& list, ListTicket& ticket,
                 FindSurroundings& surroundings);

    std::int32_t lngRecipesFound = 0;  // by the search that runs or ran last

    // Fills the list with the recipes that match. Delimiters in `strWhat` become blanks. Does
    // nothing for an empty query.
    void FindRecipes(std::string& strWhat);
    // Adds the matching own recipes to the list and returns their numbers. An empty `strCustom`
    // stands for all of them; else its numbers are searched, in their order.
    std::string FindInCustomRecipes(const std::string& strWhat, const std::string& strCustom);

  private:
    // The numbers of the list on the screen, cut into stock and own recipes.
    struct Parts {
        std::string strStock;
        std::string strCustom;
    };
    Parts PartsOfList();
    Parts PartsOfFavorites() const;
    std::vector<std::string> LookUpWords(const std::string& strWhat);
    // False when the search was cancelled.
    bool AddMatches(const std::vector<std::string>& colList, std::string& strFound);
    bool MatchesAllWords(std::int32_t recipeNum, const std::vector<std::string>& words);
    bool AddFound(std::int32_t recipeNum);

    // The list as a search holds it: its ticket, and how often it was emptied, because a ticket
    // that was cancelled may come to the same value again.
    struct Hold {
        std::int16_t Ticket;
        std::uint32_t Generation;
        bool operator==(const Hold&) const = default;
    };
    Hold Held() const { return {ticket_.Value(), list_.Generation()}; }
    bool LetEventsRun(const Hold& mine);  // false when the search was cancelled

    RecipeStore& store_;
    WordIndex& index_;
    VirtualList& list_;
    ListTicket& ticket_;
    FindSurroundings& surroundings_;
};

}  // namespace larder
