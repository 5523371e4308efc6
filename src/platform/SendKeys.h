#pragma once

#include <string>

namespace larder {

class Control;

// Keys as if the user had typed them into a control: a '^' before a key is Ctrl, and the key stands
// in braces: "^{V}". Letters and digits only; failure 5 for anything else.
void SendKeys(Control& to, const std::string& keys);

}  // namespace larder
