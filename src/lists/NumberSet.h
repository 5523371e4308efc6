#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace larder {

// A number string that is asked over and over which numbers it holds. The answer is that of a
// search for blank, number, blank in the string, at the cost of a few comparisons.
class NumberSet {
  public:
    void Assign(std::string numbers);
    const std::string& Text() const { return numbers_; }
    // `number` as it would stand in the string.
    bool Holds(const std::string& number) const;

  private:
    void Sort() const;

    std::string numbers_;
    mutable std::vector<std::int32_t>
        sorted_;  // what in it is a number; made at the first question
    mutable bool fresh_ = false;
};

}  // namespace larder
