#include "platform/RichTextDocument.h"

#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QSizeF>
#include <QString>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextImageFormat>
#include <QUrl>
#include <algorithm>

#include "platform/RichTextFormats.h"
#include "platform/RichTextPictures.h"

namespace larder {

namespace {

constexpr double kMargin = 4.0;  // pixels; none below, so that a text that fits does not scroll

// Calls visit(first, last, endOfParagraph, format) for each paragraph proper: what line breaks
// divide is one.
template <typename Visitor>
void ForEachBlock(const RichText& text, Visitor&& visit) {
    std::size_t first = 0;
    std::size_t start = 0;
    for (const RichText::Paragraph& paragraph : text.Paragraphs()) {
        const std::size_t end = start + paragraph.length;
        if (paragraph.end == BreakKind::Paragraph || &paragraph == &text.Paragraphs().back()) {
            visit(first, end, paragraph.format);
            first = end + 1;
        }
        start = end + 1;
    }
}

}  // namespace

// Writes units of a text into the document with their formats.
class RichTextDocument::Writer {
  public:
    Writer(RichTextDocument& target, const RichText& text)
        : target_(target), text_(text), formats_(text.CharFormats().size()) {}

    const QTextCharFormat& Format(RichText::FormatIndex index) {
        std::optional<QTextCharFormat>& format = formats_[index];
        if (!format) {
            format = NativeFormat(text_, text_.CharFormats()[index], target_.dotsPerInch_);
        }
        return *format;
    }

    // Calls visit(start, length, run) for the part of each run within a range.
    template <typename Visitor>
    void ForEachRun(std::size_t from, std::size_t to, Visitor&& visit) {
        std::size_t start = 0;
        for (const RichText::Run& run : text_.Runs()) {
            if (start >= to) return;
            const std::size_t end = start + run.length;
            const std::size_t first = std::max(start, from);
            const std::size_t last = std::min(end, to);
            if (first < last) visit(first, last - first, run);
            start = end;
        }
    }

    void Insert(QTextCursor& cursor, std::size_t from, std::size_t to) {
        const QString units = Units(from, to);
        ForEachRun(from, to, [&](std::size_t start, std::size_t length, const RichText::Run& run) {
            if (run.picture >= 0) {
                InsertPicture(cursor, run);
            } else {
                cursor.insertText(
                    units.mid(static_cast<qsizetype>(start - from), static_cast<qsizetype>(length)),
                    Format(run.format));
            }
        });
    }

    QTextCharFormat PictureFormat(const RichText::Run& run) {
        const RichPicture& picture = text_.Pictures()[static_cast<std::size_t>(run.picture)];
        const int number = Number(picture);
        const QUrl url(QStringLiteral("picture:%1").arg(number));
        QImage image =
            target_.document_.resource(QTextDocument::ImageResource, url).value<QImage>();
        if (image.isNull()) {
            image = ImageOf(picture);
            target_.document_.addResource(QTextDocument::ImageResource, url, image);
        }
        QTextImageFormat format;
        format.merge(Format(run.format));
        format.setName(url.toString());
        const QSizeF size = ShownSize(picture, image);
        format.setWidth(size.width());
        format.setHeight(size.height());
        format.setProperty(kPictureProperty, number);
        return format;
    }

    // Gives the blocks that a range touches the layout of their paragraphs; tells whether one had
    // another.
    bool LayBlocks(std::size_t from, std::size_t to) {
        bool laid = false;
        std::vector<std::optional<QTextBlockFormat>> layouts(text_.ParaFormats().size());
        ForEachBlock(text_, [&](std::size_t first, std::size_t last, RichText::FormatIndex index) {
            if (last < from || first > to) return;
            if (!layouts[index]) layouts[index] = NativeFormat(text_.ParaFormats()[index]);
            const QTextBlock block = target_.document_.findBlock(static_cast<int>(first));
            if (block.blockFormat() != *layouts[index]) {
                QTextCursor(block).setBlockFormat(*layouts[index]);
                laid = true;
            }
        });
        return laid;
    }

  private:
    QString Units(std::size_t from, std::size_t to) const {
        std::u16string units = text_.Units().substr(from, to - from);
        std::size_t start = 0;
        for (const RichText::Paragraph& paragraph : text_.Paragraphs()) {
            const std::size_t end = start + paragraph.length;
            if (paragraph.end == BreakKind::Line && end >= from && end < to) {
                units[end - from] = kLineSeparator;
            }
            start = end + 1;
        }
        return QString::fromStdU16String(units);
    }

    int Number(const RichPicture& picture) {
        std::vector<RichPicture>& known = target_.pictures_;
        const auto same = [&picture](const RichPicture& other) {
            return other.bytes == picture.bytes && other.kind == picture.kind &&
                   other.goalWidth == picture.goalWidth && other.goalHeight == picture.goalHeight;
        };
        const auto found = std::find_if(known.begin(), known.end(), same);
        const auto number = static_cast<int>(found - known.begin());
        if (found == known.end()) known.push_back(picture);
        return number;
    }

    void InsertPicture(QTextCursor& cursor, const RichText::Run& run) {
        cursor.insertText(QString(QChar::ObjectReplacementCharacter), PictureFormat(run));
    }

    RichTextDocument& target_;
    const RichText& text_;
    std::vector<std::optional<QTextCharFormat>> formats_;
};

RichTextDocument::RichTextDocument(QTextDocument& document, double dotsPerInch)
    : document_(document), dotsPerInch_(dotsPerInch) {}

void RichTextDocument::Build(const RichText& text) {
    document_.setUndoRedoEnabled(false);
    document_.clear();
    pictures_.clear();
    QTextFrameFormat frame = document_.rootFrame()->frameFormat();
    frame.setMargin(kMargin);
    frame.setBottomMargin(0);
    document_.rootFrame()->setFrameFormat(frame);

    Writer writer(*this, text);
    QTextCursor cursor(&document_);
    cursor.beginEditBlock();
    cursor.setBlockCharFormat(
        writer.Format(text.Runs().empty() ? text.EndFormat() : text.Runs().front().format));
    writer.Insert(cursor, 0, text.Units().size());
    writer.LayBlocks(0, text.Units().size());
    cursor.endEditBlock();
    document_.setUndoRedoEnabled(true);
}

bool RichTextDocument::Splice(const RichText& text, std::size_t from, std::size_t oldTo,
                              std::size_t newTo) {
    Writer writer(*this, text);
    QTextCursor cursor(&document_);
    cursor.beginEditBlock();
    cursor.setPosition(static_cast<int>(from));
    cursor.setPosition(static_cast<int>(oldTo), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    if (text.Units().empty()) cursor.setBlockCharFormat(writer.Format(text.EndFormat()));
    writer.Insert(cursor, from, newTo);
    const bool laid = writer.LayBlocks(from, newTo);
    cursor.endEditBlock();
    return laid;
}

void RichTextDocument::FormatCharacters(const RichText& text, std::size_t from, std::size_t to) {
    Writer writer(*this, text);
    QTextCursor cursor(&document_);
    cursor.beginEditBlock();
    writer.ForEachRun(
        from, to, [&](std::size_t start, std::size_t length, const RichText::Run& run) {
            cursor.setPosition(static_cast<int>(start));
            cursor.setPosition(static_cast<int>(start + length), QTextCursor::KeepAnchor);
            cursor.setCharFormat(run.picture >= 0 ? writer.PictureFormat(run)
                                                  : writer.Format(run.format));
        });
    cursor.endEditBlock();
}

void RichTextDocument::FormatParagraphs(const RichText& text, std::size_t from, std::size_t to) {
    QTextCursor cursor(&document_);
    cursor.beginEditBlock();
    Writer(*this, text).LayBlocks(from, to);
    cursor.endEditBlock();
}

std::optional<QTextCharFormat> RichTextDocument::BreakFormat(int position) const {
    // A break's format is that of the block behind it.
    const QTextBlock next = document_.findBlock(position).next();
    if (!next.isValid()) return std::nullopt;
    return QTextCursor(next).blockCharFormat();
}

}  // namespace larder
