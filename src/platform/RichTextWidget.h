#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "platform/RichTextDocument.h"
#include "platform/rtf/RichText.h"

class QKeyEvent;
class QTextEdit;
class QWidget;

namespace larder {

// The text on the screen: what the user does with it goes to a host. Scrolls by whole lines for
// the program, freely for the wheel. For the Qt side of the platform layer only.
class RichTextWidget {
  public:
    class Host {
      public:
        virtual ~Host() = default;
        // The document is about to be drawn or worked in, and must be what the box holds.
        virtual void BringUpToDate() = 0;
        virtual bool ConsumesKey(QKeyEvent& event) = 0;
        // The user takes back his last step, or makes the one that he took back last again.
        virtual void Undo() = 0;
        virtual void Redo() = 0;
        virtual void StepDone() = 0;  // a step that can be undone is complete
        // `atEnd` when units were put in behind all others.
        virtual void UserChangedText(bool atEnd) = 0;
        virtual void UserMovedCaret() = 0;
        virtual void Scrolled() = 0;
        // The clipboard and what is dragged.
        virtual RichText SelectedText() = 0;
        // Before what comes from there: a drop has moved the caret, and taken out what was dragged,
        // without telling of it yet.
        virtual void TakesMime() = 0;
        virtual RichTextBase BaseOfIncoming() = 0;
        virtual void Insert(const RichText& text) = 0;
        virtual void Insert(std::u16string_view plain) = 0;
    };

    // The widget belongs to its parent, keeps the host alive, and is worked in only while it lives.
    // The host owns this.
    RichTextWidget(QWidget* parent, const std::shared_ptr<Host>& host);
    QTextEdit& Edit() const;

    void SetLocked(bool locked);
    void SetTransparent(bool transparent);
    void SetTabStop(bool stops);
    void SetScrollBar(bool shown);
    // Of a widget of this kind: it does not wrap its text, and takes what the user pastes or drops
    // in one line.
    static void KeepOneLine(QWidget& widget);
    // Without the focus, the selection is not drawn while this is on. Turning it off again leaves
    // the selection unmarked until it is set anew or the box has the focus.
    void SetHideSelection(bool hide);

    // Calls Host::BringUpToDate before the next drawing.
    void Awaits();
    // The selection, in the document's positions. Does not scroll.
    void SetSelection(int from, int to);

    // Lines as laid out, from 0. A line is the first visible one when nothing of it is cut off at
    // the top.
    int LineCount();
    int FirstVisibleLine();
    void ScrollToLine(int line);
    void ScrollTo(int position);  // so that the line of a position of the document is seen
    // The first line of the next page up or down.
    int LineOfPage(bool up);
    int StartOfLine(int line);

  private:
    class Widget;
    struct Line {
        int top = 0;  // pixels from the top of the document, rounded outwards
        int bottom = 0;
        int start = 0;  // position in the document
    };
    const std::vector<Line>& Lines();
    void TakeSize();
    int ScrollValueOf(int line);
    bool DrawsSelection() const;

    Widget* widget_;
    std::vector<Line> lines_;  // empty until they are needed
    bool awaited_ = false;     // an event to bring the document up to date is under way
    bool hideSelection_ = false;
    bool markGone_ = false;
};

}  // namespace larder
