#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Control.h"

namespace larder {

class Window;

// An entry of a menu, or a separator.
class MenuItem {
  public:
    MenuItem(std::string name, std::string caption)
        : Name(std::move(name)), Caption(std::move(caption)) {}
    static MenuItem Separator(std::string name) { return {std::move(name), "-"}; }

    std::string Name;
    std::string Caption;   // '&' before the access letter; "-" is a separator
    std::string Shortcut;  // "Ctrl+B": acts as the entry does, for a menu of a menu bar
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

// The row of menus along the upper edge of a window. The window's owner gives it its place, as
// wide as the client area, and lays the other controls out below it.
class MenuBar : public Control {
  public:
    explicit MenuBar(Window& window, const std::string& name);

    // A menu with its entries, which outlive the bar. Their captions, keys and kinds are looked at
    // now, Visible and Enabled whenever the menu opens or a key is pressed.
    void Add(const std::string& name, const std::string& caption,
             const std::vector<MenuItem*>& items);
    // What it needs for one row, in twips.
    float RowHeight() const;

  private:
    class Widget;
    Widget* Mine() const;
};

}  // namespace larder
