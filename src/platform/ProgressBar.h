#pragma once

#include "platform/Control.h"

namespace larder {

// A bar that fills from left to right, from 0 to 100.
class ProgressBar : public Control {
  public:
    ProgressBar(Container& container, const std::string& name);

    int Value() const;
    // A value below 0 is 0, one above 100 is 100. Drawn again at once.
    void SetValue(int value);

  private:
    class Widget;
    Widget* Mine() const;
};

}  // namespace larder
