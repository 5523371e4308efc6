#pragma once

#include "store/RecipeUpdater.h"

namespace larder {

// The hourglass for as long as it lives.
class Hourglass {
  public:
    explicit Hourglass(UpdateSurroundings& around) : around_(around) { around_.SetHourglass(true); }
    ~Hourglass() { around_.SetHourglass(false); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

  private:
    UpdateSurroundings& around_;
};

}  // namespace larder
