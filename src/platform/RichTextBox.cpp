#include "platform/RichTextBox.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <vector>

#include "platform/Failure.h"
#include "platform/Handlers.h"
#include "platform/RichTextBoxContent.h"
#include "platform/rtf/Rtf.h"

namespace larder {

using Look = RichTextLook;

namespace {

std::size_t PositionOf(std::int32_t position) {
    return static_cast<std::size_t>(std::max(position, 0));
}

// What all formats have in common, if they do.
template <typename Format, typename Get>
auto Common(const std::vector<Format>& formats, Get get) {
    const auto first = get(formats.front());
    const auto same = [&](const Format& format) { return get(format) == first; };
    const bool all = std::all_of(formats.begin(), formats.end(), same);
    return all ? std::optional(first) : std::nullopt;
}

}  // namespace

RichTextBox::RichTextBox(Container& container, const std::string& name, int index)
    : RichTextBox(container, name, index, std::make_shared<Content>()) {}

RichTextBox::RichTextBox(Container& container, const std::string& name, int index,
                         const std::shared_ptr<Content>& content)
    : Control(container, name, index, content->MakeWidget(ParentFor(container), content)),
      content_(content) {
    content_->Attach(this);
}

RichTextBox::~RichTextBox() {
    content_->Detach();
}

std::string RichTextBox::Text() const {
    return content_->Text().Text();
}

void RichTextBox::SetText(const std::string& text) {
    content_->Changed(content_->Text().SetPlain(text));
    content_->Selected(Look::Stay);
}

std::string RichTextBox::TextRTF() const {
    return content_->Text().Rtf();
}

void RichTextBox::SetTextRTF(const std::string& rtf) {
    content_->Changed(content_->Text().SetRtf(rtf));
    content_->Selected(Look::Stay);
}

void RichTextBox::LoadFile(const std::string& nativePath) {
    std::error_code error;
    if (!std::filesystem::exists(nativePath, error)) {
        throw Failure(failure::FileNotFound, "RichTextBox.LoadFile");
    }
    std::ifstream file(nativePath, std::ios::binary);
    if (!std::filesystem::is_regular_file(nativePath, error) || !file.is_open()) {
        throw Failure(failure::PathAccess, "RichTextBox.LoadFile");
    }
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    if (file.bad()) throw Failure(failure::PathAccess, "RichTextBox.LoadFile");
    SetTextRTF(bytes);
}

std::int32_t RichTextBox::SelStart() const {
    return static_cast<std::int32_t>(content_->Text().From());
}

void RichTextBox::SetSelStart(std::int32_t start) {
    content_->Text().Select(PositionOf(start), PositionOf(start));
    content_->Selected(Look::AtCaret);
}

std::int32_t RichTextBox::SelLength() const {
    const RichTextContent& text = content_->Text();
    return static_cast<std::int32_t>(text.To() - text.From());
}

void RichTextBox::SetSelLength(std::int32_t length) {
    RichTextContent& text = content_->Text();
    text.Select(text.From(), text.From() + PositionOf(length));
    content_->Selected(Look::Stay);
}

std::string RichTextBox::SelText() const {
    return content_->Text().SelectedText();
}

void RichTextBox::SetSelText(const std::string& text) {
    content_->Changed(content_->Text().ReplaceSelection(std::string_view(text)));
    content_->Selected(Look::AtCaret);
}

std::string RichTextBox::SelRTF() const {
    return WriteRtf(content_->Text().Selected());
}

void RichTextBox::SetSelRTF(const std::string& rtf) {
    const auto document = ReadRtf(rtf);
    if (!document) return SetSelText(rtf);
    content_->Changed(content_->Text().ReplaceSelection(*document));
    content_->Selected(Look::AtCaret);
}

std::int32_t RichTextBox::Find(const std::string& text, std::int32_t start, std::int32_t end,
                               int options) {
    RichTextContent& content = content_->Text();
    const std::size_t from = start < 0 ? content.From() : PositionOf(start);
    const std::size_t to = end < 0 ? std::string::npos : PositionOf(end);
    const auto found = content.Find(text, from, to, options);
    if (found >= 0) content_->Selected(Look::AtCaret);
    return static_cast<std::int32_t>(found);
}

void RichTextBox::Span(const std::string& characters, bool forward, bool negate) {
    content_->Text().Span(characters, forward, negate);
    content_->Selected(Look::Stay);
}

std::optional<std::int32_t> RichTextBox::SelColor() const {
    return Common(content_->Formats(), [](const CharFormat& format) {
        return format.colour == kAutomaticColour ? 0 : static_cast<std::int32_t>(format.colour);
    });
}

std::optional<float> RichTextBox::SelFontSize() const {
    return Common(content_->Formats(), [](const CharFormat& format) {
        return static_cast<float>(format.halfPoints) / 2.0F;
    });
}

std::optional<bool> RichTextBox::SelBold() const {
    return Common(content_->Formats(), [](const CharFormat& f) { return f.bold; });
}

std::optional<bool> RichTextBox::SelItalic() const {
    return Common(content_->Formats(), [](const CharFormat& f) { return f.italic; });
}

std::optional<bool> RichTextBox::SelUnderline() const {
    return Common(content_->Formats(), [](const CharFormat& f) { return f.underline; });
}

std::optional<RichTextBox::Alignment> RichTextBox::SelAlignment() const {
    const auto common =
        Common(content_->Layouts(), [](const ParaFormat& format) { return format.alignment; });
    if (!common) return std::nullopt;
    switch (*common) {
        case larder::Alignment::Left:
            return Alignment::Left;
        case larder::Alignment::Right:
            return Alignment::Right;
        case larder::Alignment::Centre:
            return Alignment::Center;
        default:
            return std::nullopt;
    }
}

void RichTextBox::SetSelColor(std::int32_t color) {
    CharChange change;
    change.colour = static_cast<std::uint32_t>(color) & 0xFFFFFF;
    content_->Format(change);
}

void RichTextBox::SetSelFontSize(float points) {
    const float halfPoints = std::round(points * 2.0F);
    if (!(halfPoints >= 1.0F && halfPoints <= static_cast<float>(kMostHalfPoints))) {
        throw Failure(failure::InvalidArgument, "RichTextBox.SelFontSize");
    }
    CharChange change;
    change.halfPoints = static_cast<std::uint16_t>(halfPoints);
    content_->Format(change);
}

void RichTextBox::SetSelBold(bool on) {
    CharChange change;
    change.bold = on;
    content_->Format(change);
}

void RichTextBox::SetSelItalic(bool on) {
    CharChange change;
    change.italic = on;
    content_->Format(change);
}

void RichTextBox::SetSelUnderline(bool on) {
    CharChange change;
    change.underline = on;
    content_->Format(change);
}

void RichTextBox::SetSelAlignment(Alignment alignment) {
    ParaChange change;
    switch (alignment) {
        case Alignment::Left:
            change.alignment = larder::Alignment::Left;
            break;
        case Alignment::Right:
            change.alignment = larder::Alignment::Right;
            break;
        case Alignment::Center:
            change.alignment = larder::Alignment::Centre;
            break;
    }
    content_->Changed(content_->Text().Lay(change));
}

void RichTextBox::SetLocked(bool locked) {
    locked_ = locked;
    content_->Widget().SetLocked(locked);
}

void RichTextBox::SetHideSelection(bool hide) {
    hideSelection_ = hide;
    content_->Widget().SetHideSelection(hide);
}

void RichTextBox::SetTransparent(bool transparent) {
    content_->Widget().SetTransparent(transparent);
}

void RichTextBox::SetTabStop(bool stops) {
    content_->Widget().SetTabStop(stops);
}

void RichTextBox::SetScrollBar(bool shown) {
    content_->Widget().SetScrollBar(shown);
}

std::int32_t RichTextBox::FirstVisibleLine() const {
    return content_->FirstVisibleLine();
}

void RichTextBox::LineScroll(std::int32_t lines) {
    content_->BringUpToDate();
    RichTextWidget& widget = content_->Widget();
    const std::int64_t line = std::int64_t{widget.FirstVisibleLine()} + lines;
    widget.ScrollToLine(static_cast<int>(std::clamp<std::int64_t>(line, 0, widget.LineCount())));
}

void RichTextBox::PageUp() {
    content_->TurnPage(true);
}
void RichTextBox::PageDown() {
    content_->TurnPage(false);
}

std::int32_t RichTextBox::LineCount() const {
    content_->BringUpToDate();
    return content_->Widget().LineCount();
}

RichTextBox::Update::Update(RichTextBox& box) : box_(box) {
    box_.content_->BeginUpdate();
}
RichTextBox::Update::~Update() {
    box_.content_->EndUpdate();
}

}  // namespace larder
