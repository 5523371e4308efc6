#pragma once

#include <string>

namespace larder {

// Asks the user for the disc: a message box with OK and Cancel, or what stands in for it.
class DiscQuestion {
  public:
    virtual ~DiscQuestion() = default;

    // True for OK.
    virtual bool AskOkCancel(const std::string& text) = 0;
};

}  // namespace larder
