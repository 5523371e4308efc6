#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/Control.h"

namespace larder {

// A box of rich text: shown, selected in, edited, searched. Positions count from 0, a paragraph
// break counts two (CR and LF) in Text, SelStart, SelLength, Find and Span alike, so a position
// in Text is a position in the box. A character outside Windows-1252 counts as it does in UTF-16
// and shows as '?' in Text.
//
// A box that nobody sees keeps only the text that it was given: filling and searching hundreds
// of recipes lays nothing out. What the screen shows is made when it is drawn, when the user works
// in it, or when the program asks for its lines.
class RichTextBox : public Control {
  public:
    static constexpr int WholeWord = 2;  // options of Find
    static constexpr int MatchCase = 4;
    enum class Alignment { Left = 0, Right = 1, Center = 2 };

    RichTextBox(Container& container, const std::string& name, int index = 0);
    ~RichTextBox() override;

    // The plain text, paragraphs ended by CR LF. Setting it drops all formats.
    std::string Text() const;
    void SetText(const std::string& text);
    // The document as RTF. Text that is not RTF is taken as plain text; "" empties the box.
    std::string TextRTF() const;
    void SetTextRTF(const std::string& rtf);
    // Takes a file by its native path, RTF or plain. Failures as of an opened file (53, 75).
    void LoadFile(const std::string& nativePath);

    std::int32_t SelStart() const;
    // The caret goes there, and the selection becomes empty. Kept within the text.
    void SetSelStart(std::int32_t start);
    std::int32_t SelLength() const;
    void SetSelLength(std::int32_t length);
    std::string SelText() const;
    // Replaces the selection; the caret stands behind the new text. CR CR is two breaks, CR LF one.
    void SetSelText(const std::string& text);
    std::string SelRTF() const;
    void SetSelRTF(const std::string& rtf);

    // Formats of the selection, or of what is typed next when it is empty. Nothing is returned
    // where the selection is mixed. Colours have red in the low byte, and text without a colour of
    // its own is black (0); sizes are in points, in steps of a half, and one that is not above 0
    // or too large for a font is failure 5. Justified text has no SelAlignment.
    std::optional<std::int32_t> SelColor() const;
    void SetSelColor(std::int32_t color);
    std::optional<float> SelFontSize() const;
    void SetSelFontSize(float points);
    std::optional<bool> SelBold() const;
    void SetSelBold(bool on);
    std::optional<bool> SelItalic() const;
    void SetSelItalic(bool on);
    std::optional<bool> SelUnderline() const;
    void SetSelUnderline(bool on);
    std::optional<Alignment> SelAlignment() const;
    void SetSelAlignment(Alignment alignment);

    // The first occurrence at or behind `start` that ends at or before `end` (-1: the text's end;
    // a start of -1 means from the present selection on); selects it and returns its position,
    // or -1 and leaves the selection.
    std::int32_t Find(const std::string& text, std::int32_t start = -1, std::int32_t end = -1,
                      int options = 0);
    // Extends the selection from its start (or, backward, from its end) over the characters of
    // the set, or with `negate` over those outside it.
    void Span(const std::string& characters, bool forward = true, bool negate = false);

    bool Locked() const { return locked_; }
    void SetLocked(bool locked);
    bool HideSelection() const { return hideSelection_; }
    void SetHideSelection(bool hide);
    // The window's art shows through behind the text.
    void SetTransparent(bool transparent);
    // Whether Tab and Shift+Tab come to it from other controls.
    void SetTabStop(bool stops);
    // A bar at the right edge for a text that is longer than the box.
    void SetScrollBar(bool shown);

    // Scrolling, in lines as laid out on the screen, from 0.
    std::int32_t FirstVisibleLine() const;
    void LineScroll(std::int32_t lines);  // negative is up
    void PageUp();
    void PageDown();
    std::int32_t LineCount() const;

    // While it lives, changes are gathered and laid out once at the end.
    class Update {
      public:
        explicit Update(RichTextBox& box);
        ~Update();
        Update(const Update&) = delete;
        Update& operator=(const Update&) = delete;

      private:
        RichTextBox& box_;
    };

    std::function<void()> OnChange;  // the text was changed, by typing or by program
    std::function<void()> OnSelChange;
    std::function<void(int& KeyCode, int Shift)> OnKeyDown;
    std::function<void()> OnScroll;  // other lines are visible: by the wheel, a key, the program

  private:
    struct Content;
    RichTextBox(Container& container, const std::string& name, int index,
                const std::shared_ptr<Content>& content);

    std::shared_ptr<Content> content_;  // the widget holds it too, as long as it lives
    bool locked_ = false;
    bool hideSelection_ = false;
};

}  // namespace larder
