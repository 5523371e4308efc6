#pragma once

#include <cstdint>

// The roles of the file numbers. A number means the same file wherever it stands.
namespace larder::filenumber {

inline constexpr std::int16_t Recipes = 1;
inline constexpr std::int16_t RecipesIndex = 2;
inline constexpr std::int16_t CatD = 3;
inline constexpr std::int16_t CatDIndex = 4;
inline constexpr std::int16_t Categories = 8;
inline constexpr std::int16_t RecipesTemp = 11;
inline constexpr std::int16_t RecipesIndexTemp = 12;
inline constexpr std::int16_t CustomRecipes = 21;
inline constexpr std::int16_t CustomRecipesIndex = 22;
inline constexpr std::int16_t SearchYDB = 33;
inline constexpr std::int16_t SearchIND = 34;

}  // namespace larder::filenumber
