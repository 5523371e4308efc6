#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Control.h"
#include "platform/ImageList.h"

namespace larder {

class ListView;

// A line of a list. Setters show their effect at the next paint.
class ListItem {
  public:
    const std::string& Key() const { return key_; }
    // "" takes the key away. Failure 35602 when another line of the list has it (without regard
    // to case).
    void SetKey(const std::string& key);
    std::string Tag;

    const std::string& Text() const { return cells_[0].Text; }
    void SetText(const std::string& text);
    // Columns behind the first: SubItems(1) is column 2.
    // Failure 9 below 1; a column that was never set reads as "".
    const std::string& SubItems(int i) const;
    void SetSubItems(int i, const std::string& text);

    std::int32_t ForeColor() const { return cells_[0].ForeColor; }
    void SetForeColor(std::int32_t color);
    std::int32_t SubForeColor(int i) const;  // ListSubItems(i).ForeColor
    void SetSubForeColor(int i, std::int32_t color);
    bool Bold() const { return bold_; }
    void SetBold(bool bold);

    // Index into the list's icons, 0 for none.
    int SmallIcon() const { return smallIcon_; }
    void SetSmallIcon(int index);

    bool Selected() const;
    void SetSelected();    // selecting a line takes the selection from the others
    int Index() const;     // place in the control, from 1
    float Height() const;  // twips; the same for all lines

  private:
    friend class ListView;
    ListItem(ListView& list, std::int32_t color) : list_(list), ownColor_(color) {
        cells_[0].ForeColor = color;
    }
    struct Cell {
        std::string Text;
        std::int32_t ForeColor = 0;
    };
    Cell& SubCell(int i);
    void Changed();

    ListView& list_;
    std::int32_t ownColor_;
    std::string key_;
    std::vector<Cell> cells_ = std::vector<Cell>(1);
    int smallIcon_ = 0;
    bool bold_ = false;
};

// A list of lines with columns, one line selected at most, without scroll bars, headings or grid.
// The control holds only the lines that fit; who fills it does the scrolling. Its ground is
// transparent. It decides nothing by itself: presses and keys go to the handlers. A press brings
// the focus, and OnGotFocus comes behind OnMouseDown then; the second press of a double click on
// the same line is no press.
class ListView : public Control {
  public:
    ListView(Container& container, const std::string& name, int index = 0);
    ~ListView() override;

    // ListItems. Places from 1; failure 35600 for a place, 35601 for a key that does not exist.
    int Count() const { return static_cast<int>(items_.size()); }
    ListItem& Item(int index) const;
    ListItem& Item(const std::string& key) const;     // without regard to case
    ListItem* FindKey(const std::string& key) const;  // null when absent
    ListItem& Add();
    void Remove(int index);
    void Clear();

    // The selected line, null when none is; removing it selects none.
    ListItem* SelectedItem() const;
    void ClearSelection();
    // The bar is not drawn while the control is without the focus.
    bool HideSelection() const { return hideSelection_; }
    void SetHideSelection(bool hide);

    // Height of a line in twips, also when the list is empty.
    float RowHeight() const;
    void SetFont(const Font& font);
    const Font& ListFont() const { return font_; }
    std::int32_t ForeColor() const { return foreColor_; }
    void SetForeColor(std::int32_t color);

    // Columns, from 1, widths in twips. The first shows the icon and Text.
    void SetColumns(const std::vector<float>& widths);
    void SetColumnWidth(int column, float width);
    float ColumnWidth(int column) const;
    int ColumnCount() const { return static_cast<int>(widths_.size()); }
    void SetSmallIcons(const ImageList* icons) { icons_ = icons; }

    // The control sorts its lines when Sorted is set to true: by the text of column SortKey + 1,
    // numbers as numbers and before other texts, those without regard to case, 0 ascending, 1
    // descending. Lines that are equal keep their order.
    int SortKey = 0;
    int SortOrder = 0;
    void SetSorted(bool sorted);

    std::function<void(int Button, int Shift, float X, float Y)> OnMouseDown;
    std::function<void(int Button, int Shift, float X, float Y)> OnMouseMove;
    std::function<void(int& KeyCode, int Shift)> OnKeyDown;  // None consumes
    std::function<void(int KeyCode, int Shift)> OnKeyUp;     // not for the repeats of a held key
    // Whole lines, three to a notch of the wheel; positive is towards the end.
    std::function<void(int Lines)> OnWheel;

  private:
    friend class ListItem;
    class Model;
    class Delegate;
    class Widget;
    Widget* Mine() const;
    void Changed();
    void Select(ListItem* item);
    int PlaceOf(const ListItem& item) const;  // from 1

    std::vector<std::unique_ptr<ListItem>> items_;
    ListItem* selected_ = nullptr;
    bool hideSelection_ = false;
    std::vector<float> widths_ = {0};
    const ImageList* icons_ = nullptr;
    Font font_;
    std::int32_t foreColor_ = 0;
};

}  // namespace larder
