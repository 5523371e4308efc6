#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/RichTextBox.h"
#include "platform/RichTextCarets.h"
#include "platform/RichTextContent.h"
#include "platform/RichTextDocument.h"
#include "platform/RichTextWidget.h"

class QTextCursor;

namespace larder {

// Whether the screen goes where the program put the caret.
enum class RichTextLook { Stay, AtCaret };

// Holds a box's text and the screen's document together. One of them may be behind the other:
//   the screen, after the program changed the whole text, until somebody looks (BringUpToDate);
//   the text, after the user worked in the document, until the program asks (Text).
// Smaller changes of the program are made in both, so that the user can still undo his own.
// For the Qt side of the platform layer only.
struct RichTextBox::Content : public RichTextWidget::Host {
  public:
    Content();
    ~Content() override;

    // Makes the widget, which keeps `self` (this) alive.
    QWidget* MakeWidget(QWidget* parent, const std::shared_ptr<Content>& self);
    // The box tells itself when it exists, and when it goes.
    void Attach(RichTextBox* box) { box_ = box; }
    void Detach() { box_ = nullptr; }
    RichTextWidget& Widget() { return *widget_; }

    // The text and the selection as they are.
    RichTextContent& Text();
    // To be called after changes of Text() and its selection. Tell the program and the screen.
    void Changed(const RichTextContent::Change& change);
    void Selected(RichTextLook look);
    // As Text() has them. At the caret they come from the screen when the user has typed there,
    // because reading the text anew for every key would be slow in a long one.
    std::vector<CharFormat> Formats();
    std::vector<ParaFormat> Layouts();
    // Formats the selection or, when it is empty, what is typed next.
    void Format(const CharChange& change);

    std::int32_t FirstVisibleLine();
    // Scrolls by what is visible, and the caret with it.
    void TurnPage(bool up);
    void BeginUpdate() { ++updates_; }
    void EndUpdate();

    // What the widget asks and tells.
    void BringUpToDate() override;
    bool ConsumesKey(QKeyEvent& event) override;
    void Undo() override { Walk(true); }
    void Redo() override { Walk(false); }
    void StepDone() override;
    void UserChangedText(bool atEnd) override;
    void UserMovedCaret() override;
    void Scrolled() override;
    RichText SelectedText() override { return Text().Selected(); }
    void TakesMime() override;
    RichTextBase BaseOfIncoming() override;
    void Insert(const RichText& text) override;
    void Insert(std::u16string_view plain) override;

  private:
    class Own;
    bool CaretIsTheUsers() const;
    bool Wholesale(const RichTextContent::Change& change) const;
    void Repeat(const RichTextContent::Change& change);
    std::optional<int> MakeInDocument(const RichTextContent::Change& change);
    void Walk(bool back);
    void Inserted(const RichTextContent::Change& change);
    void TakeSelection();
    int EndOfSelection() const;
    void ShowSelection();
    void ShowCaret();
    void TypeAsBreak();
    void TellSelection();
    void EndStep();

    RichTextBox* box_ = nullptr;
    std::unique_ptr<RichTextWidget> widget_;
    std::optional<RichTextDocument> document_;
    RichTextContent text_;
    bool screenBehind_ = true;
    bool textBehind_ = false;
    bool endTyped_ = false;  // the text is behind at its very end
    bool selectionBehind_ = false;
    bool fromTop_ = true;       // new text is shown from its first line on
    bool caretSought_ = false;  // the caret is to be seen when the screen has caught up
    int own_ = 0;               // changes of the document that are not the user's are under way
    int updates_ = 0;
    RichTextCarets carets_;
    std::unique_ptr<QTextCursor> step_;  // gathers the changes of an update into one for Undo
    int revision_ = 0;                   // of the document, when the caret moved last
    std::size_t toldFrom_ = 0;
    std::size_t toldTo_ = 0;
    std::pair<int, int> userPlace_{-1, -1};  // where the user last put the selection
};

}  // namespace larder
