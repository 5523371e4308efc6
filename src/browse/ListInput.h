#pragma once

#include <cstdint>

namespace larder {

class frmMain;

// The mouse and the keys in the two lists. A press is decided at once, by arithmetic on its
// height; a held key acts on every second repeat.
class ListInput {
  public:
    explicit ListInput(frmMain& hub) : main(hub) {}

    void Connect();
    // A key that moves a bar, pressed while the focus is out of sight: it is for the list whose bar
    // was scrolled away. True when it was one.
    bool TakeDivertedKey(int KeyCode);

    bool booRightClick = false;  // the last press in a list was with the right button

  private:
    void MouseDown(std::int16_t Index, int Button, float Y);
    void MouseMove(std::int16_t Index, float Y);
    void KeyDown(std::int16_t Index, int& KeyCode);
    void Act(std::int16_t Index, int KeyCode);
    void Wheel(std::int16_t Index, int lines);
    // The line under a height, which may lie below the last one.
    int LineAt(std::int16_t Index, float Y) const;

    frmMain& main;
    int intKeyRepeat = 0;  // 1: the next repeat of a held key is swallowed
};

}  // namespace larder
