#pragma once

#include <string>
#include <vector>

#include "tools/RecipeSource.h"

namespace larder {

// One RTF document of all recipes, each as '#', its number, a blank, and the recipe as it is to be
// shown, beginning with its title.
std::string ComposeRecipes(const std::vector<SourceText>& recipes);

// One RTF document of all descriptions, each as '@', a blank, the title in a line of its own, and
// the text.
std::string ComposeDescriptions(const std::vector<SourceText>& descriptions);

}  // namespace larder
