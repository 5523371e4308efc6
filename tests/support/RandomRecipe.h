#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

namespace larder::test {

// Draws numbers and recipes.
class RandomRecipe {
  public:
    explicit RandomRecipe(std::uint32_t seed) : random_(seed) {}

    int Pick(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }
    // The index of one of so many.
    std::size_t PickOf(std::size_t count) {
        return static_cast<std::size_t>(Pick(0, static_cast<int>(count) - 1));
    }
    std::string Title() {
        std::string title(static_cast<std::size_t>(Pick(1, 20)), ' ');
        for (char& c : title)
            c = static_cast<char>(Pick(33, 255));
        return title;
    }
    // Of this many bytes, with line ends of its own.
    std::string Rtf(std::size_t bytes) {
        std::string rtf = "{\\rtf1";
        while (rtf.size() + 1 < bytes)
            rtf += Pick(0, 9) == 0 && rtf.size() + 3 < bytes ? "\r\n" : "x";
        return rtf + "}";
    }

  private:
    std::mt19937 random_;
};

}  // namespace larder::test
