#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace larder {

class Window;

// An entry of a pop-up menu, or a separator.
class MenuItem {
  public:
    MenuItem(std::string name, std::string caption)
        : Name(std::move(name)), Caption(std::move(caption)) {}
    static MenuItem Separator(std::string name) { return {std::move(name), "-"}; }

    std::string Name;
    std::string Caption;  // '&' before the access letter; "-" is a separator
    bool Visible = true;
    bool Enabled = true;
    std::function<void()> OnClick;
};

// A menu that pops up at the mouse (or, from the keyboard, at the control with the focus). Its
// entries are looked at when it pops up; separators at an edge or next to another one are left
// out. Returns when it has closed; the chosen entry's OnClick runs then.
class PopupMenu {
  public:
    explicit PopupMenu(std::string name) : name_(std::move(name)) {}
    void Add(MenuItem& item) { items_.push_back(&item); }
    void Popup(Window& owner);

  private:
    std::string name_;
    std::vector<MenuItem*> items_;
};

}  // namespace larder
