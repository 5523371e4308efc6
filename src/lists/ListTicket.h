#pragma once

#include <cstdint>

namespace larder {

// `intListTicket`: marks the latest fill of a list. A fill remembers the value that it began with
// and stops when the value has moved on, because then a newer fill, or somebody who cancels it,
// owns the list. It runs from 1 to 1000 and back to 1; 0 is the value of a cancellation from
// outside.
class ListTicket {
  public:
    std::int16_t Value() const { return intListTicket_; }
    void Next() { intListTicket_ = intListTicket_ >= 1000 ? 1 : intListTicket_ + 1; }
    void Cancel() { intListTicket_ = 0; }

  private:
    std::int16_t intListTicket_ = 0;
};

}  // namespace larder
