#include "search/RecipeFinder.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

#include "lists/YStrings.h"
#include "platform/Failure.h"
#include "platform/Text.h"
#include "search/SearchText.h"

namespace larder {

namespace {

// Hands over the blank-separated parts of a text until one is refused; false then.
template <typename Take>
bool WalkTokens(std::string_view text, Take&& take) {
    std::size_t from = text.find_first_not_of(' ');
    while (from != std::string_view::npos) {
        const std::size_t to = std::min(text.find(' ', from), text.size());
        if (!take(text.substr(from, to - from))) return false;
        from = text.find_first_not_of(' ', to);
    }
    return true;
}

std::vector<std::string> TokensOf(std::string_view text) {
    std::vector<std::string> tokens;
    WalkTokens(text, [&](std::string_view token) {
        tokens.emplace_back(token);
        return true;
    });
    return tokens;
}

// The recipe number that a text is, written as numbers are; 0 for any other text.
std::int32_t PlainNumber(std::string_view text) {
    constexpr std::size_t maxDigits = 9;
    if (text.empty() || text.size() > maxDigits || text.front() == '0') return 0;
    std::int32_t number = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return 0;
        number = number * 10 + (c - '0');
    }
    return number;
}

// Tells of a number whether it stands in a term with a blank on both sides: the same answer as
// looking for that text, without walking a long term for every number.
class Term {
  public:
    // Numbers above `last` are those of no recipe and not kept.
    Term(const std::string& text, std::int32_t last) : plain_(static_cast<std::size_t>(last) + 1) {
        std::size_t from = text.find(' ');
        while (from < text.size()) {
            const std::size_t to = text.find(' ', from + 1);
            if (to == std::string::npos) break;
            if (to > from + 1) Take(std::string_view(text).substr(from + 1, to - from - 1));
            from = to;
        }
    }
    // `number` is the PlainNumber of the text.
    bool Holds(std::string_view text, std::int32_t number) const {
        if (number == 0) return others_.contains(std::string(text));
        const auto place = static_cast<std::size_t>(number);
        return place < plain_.size() && plain_[place];
    }

  private:
    void Take(std::string_view text) {
        const auto number = static_cast<std::size_t>(PlainNumber(text));
        if (number == 0) {
            others_.emplace(text);
        } else if (number < plain_.size()) {
            plain_[number] = true;
        }
    }

    std::vector<bool> plain_;
    std::unordered_set<std::string> others_;  // what is not written as numbers are
};

}  // namespace

RecipeFinder::RecipeFinder(RecipeStore& store, WordIndex& index, VirtualList& list,
                           ListTicket& ticket, FindSurroundings& surroundings)
    : store_(store), index_(index), list_(list), ticket_(ticket), surroundings_(surroundings) {}

void RecipeFinder::FindRecipes(std::string& strWhat) {
    if (strWhat.empty()) return;
    lngRecipesFound = 0;
    const bool booOnly = surroundings_.OnlyInList();
    surroundings_.HideGuideArt();
    std::vector<std::string> colList;
    Parts parts;
    if (booOnly) {
        if (TrimBlanks(list_.AllNums()).empty()) return surroundings_.ShowResult(false, false);
        parts = PartsOfList();
        colList.push_back(parts.strStock);
    }
    ReplaceDelimiters(strWhat);
    for (std::string& term : LookUpWords(strWhat))
        colList.push_back(std::move(term));
    if (colList.empty()) return surroundings_.ShowResult(false, false);

    // One answer counts for all that this search reads, the recipe that it opens included.
    const RecipeStore::OneDiscQuestion asksOnce(store_,
                                                RecipeStore::OneDiscQuestion::Of::TitlesAndBodies);
    list_.ClearAll();
    const Hold mine = Held();
    std::string strFound;
    bool complete = AddMatches(colList, strFound);
    if (complete && (!booOnly || !parts.strCustom.empty())) {
        strFound += FindInCustomRecipes(strWhat, parts.strCustom);
        complete = Held() == mine;
    }
    if (complete) {
        surroundings_.ShowResult(true, !strFound.empty());
    } else if (ticket_.Value() == 0 && list_.Generation() == mine.Generation) {
        surroundings_.ShowCancelled();
    }
}

RecipeFinder::Parts RecipeFinder::PartsOfList() {
    if (surroundings_.ListIsFavorites()) return PartsOfFavorites();
    const std::string& numbers = list_.AllNums();
    const std::int32_t firstOwn = list_.NextCustomRecipeNum(true);
    if (firstOwn == -1) return {numbers, ""};
    const std::size_t cut = numbers.find(" " + std::to_string(firstOwn) + " ");
    if (cut == std::string::npos) return {numbers, ""};
    return {numbers.substr(0, cut + 1), numbers.substr(cut)};
}

RecipeFinder::Parts RecipeFinder::PartsOfFavorites() const {
    // The stock part begins without a blank, so its first number is found in no other term's way.
    Parts parts;
    for (std::int32_t i = 1; i <= list_.Count(); ++i) {
        const std::int32_t number = list_.Peek(i)->Num;
        std::string& part = number > store_.OriginalNumRecords ? parts.strCustom : parts.strStock;
        part += std::to_string(number) + " ";
    }
    return parts;
}

std::vector<std::string> RecipeFinder::LookUpWords(const std::string& strWhat) {
    std::vector<std::string> words = TokensOf(strWhat);
    std::erase_if(words, IsStopWord);
    std::vector<std::string> terms;
    for (const std::string& numbers : index_.LookUpWords(words))
        terms.push_back(" " + numbers + " ");
    return terms;
}

bool RecipeFinder::AddMatches(const std::vector<std::string>& colList, std::string& strFound) {
    const auto shortest = std::ranges::min_element(colList, {}, &std::string::size);
    std::vector<Term> others;
    for (auto term = colList.begin(); term != colList.end(); ++term) {
        if (term != shortest) others.emplace_back(*term, store_.TotalNumRecords);
    }
    const Hold mine = Held();
    return WalkTokens(*shortest, [&](std::string_view text) {
        const std::int32_t number = PlainNumber(text);
        const bool match =
            std::ranges::all_of(others, [&](const Term& term) { return term.Holds(text, number); });
        Ignoring([&] {
            if (match && AddFound(number != 0 ? number : ToLong(text)))
                strFound.append(" ").append(text).append(" ");
        });
        return LetEventsRun(mine);
    });
}

bool RecipeFinder::LetEventsRun(const Hold& mine) {
    // What the user does meanwhile asks for the disc by itself.
    const RecipeStore::OneDiscQuestion asksAfresh(store_);
    surroundings_.LetEventsRun();
    return Held() == mine;
}

// A deleted recipe, which the index still knows, is no hit.
bool RecipeFinder::AddFound(std::int32_t recipeNum) {
    if (!list_.AddRecipe(recipeNum, true)) return false;
    ++lngRecipesFound;
    return true;
}

std::string RecipeFinder::FindInCustomRecipes(const std::string& strWhat,
                                              const std::string& strCustom) {
    if (strWhat.empty()) return {};
    const std::vector<std::string> words = TokensOf(strWhat);
    const Hold mine = Held();
    std::string result = " ";
    std::int32_t start = 1;
    std::int32_t next = store_.OriginalNumRecords;
    const auto nextNumber = [&]() -> std::int32_t {
        if (strCustom.empty()) return ++next;
        const std::string token = start <= static_cast<std::int32_t>(strCustom.size())
                                      ? YStrings::TokenFrom(strCustom, start, " ")
                                      : std::string();
        return token.empty() ? -1 : ToLong(token);
    };
    for (std::int32_t number = nextNumber(); number != -1 && number <= store_.TotalNumRecords;
         number = nextNumber()) {
        Ignoring([&] {
            if (MatchesAllWords(number, words) && AddFound(number)) {
                result += std::to_string(number) + " ";
            }
        });
        if (!LetEventsRun(mine)) break;
    }
    return result == " " ? std::string() : result;
}

bool RecipeFinder::MatchesAllWords(std::int32_t recipeNum, const std::vector<std::string>& words) {
    surroundings_.TakeText(store_.GetRecipeRTF(recipeNum));
    return std::ranges::all_of(
        words, [this](const std::string& word) { return surroundings_.HoldsWord(word); });
}

}  // namespace larder
