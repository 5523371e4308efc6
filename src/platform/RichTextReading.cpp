#include <QString>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <unordered_map>

#include "platform/RichTextDocument.h"
#include "platform/RichTextFormats.h"
#include "platform/RichTextPaper.h"

namespace larder {

namespace {

// Builds a text from the blocks of a document.
class Reader {
  public:
    Reader(RichText& text, double dotsPerInch, const std::vector<RichPicture>* pictures)
        : text_(text), dotsPerInch_(dotsPerInch), pictures_(pictures) {}

    void Layout(const QTextBlockFormat& format) {
        text_.SetParagraphFormat(text_.Intern(ParaFormatOf(format)));
    }

    // Formats come by their number in Qt's own table, so that each is converted once.
    RichText::FormatIndex Format(const QTextCharFormat& format, int number) {
        const auto [entry, isNew] = formats_.try_emplace(number, 0);
        if (isNew) {
            const bool foreign = pictures_ == nullptr;
            entry->second =
                text_.Intern(CharFormatOf(foreign ? OnPaper(format) : format, text_, dotsPerInch_));
        }
        return entry->second;
    }

    void Contents(const QTextBlock& block) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QTextCharFormat native = fragment.charFormat();
            const RichText::FormatIndex format = Format(native, fragment.charFormatIndex());
            if (native.isImageFormat()) {
                Pictures(native, format, fragment.length());
            } else {
                Units(fragment.text().toStdU16String(), format);
            }
        }
    }

    void Units(std::u16string units, RichText::FormatIndex format) {
        std::size_t start = 0;
        for (std::size_t i = 0; i < units.size(); ++i) {
            if (units[i] != kLineSeparator) {
                units[i] = RichText::CleanUnit(units[i]);
                continue;
            }
            text_.Append(std::u16string_view(units).substr(start, i - start), format);
            text_.AppendBreak(BreakKind::Line, format);
            start = i + 1;
        }
        text_.Append(std::u16string_view(units).substr(start), format);
    }

    void Break(const QTextBlock& next) {
        const QTextCursor cursor(next);
        text_.AppendBreak(BreakKind::Paragraph,
                          Format(cursor.blockCharFormat(), next.charFormatIndex()));
    }

  private:
    void Pictures(const QTextCharFormat& native, RichText::FormatIndex format, int count) {
        if (pictures_ == nullptr || !native.hasProperty(kPictureProperty)) return;
        const auto number = static_cast<std::size_t>(native.intProperty(kPictureProperty));
        for (int i = 0; i < count; ++i) {
            text_.AppendPicture(number < pictures_->size() ? (*pictures_)[number] : RichPicture(),
                                format);
        }
    }

    RichText& text_;
    double dotsPerInch_;
    const std::vector<RichPicture>* pictures_;
    std::unordered_map<int, RichText::FormatIndex> formats_;
};

RichText WithFontsOf(const RichText& other) {
    RichText text(other.Fonts().front());
    for (const RichFont& font : other.Fonts())
        text.InternFont(font);
    return text;
}

// The cell of a table that a block stands in.
QTextTableCell CellOf(const QTextBlock& block) {
    const QTextTable* table = QTextCursor(block).currentTable();
    return table ? table->cellAt(block.position()) : QTextTableCell();
}

bool StartsCellOfSameRow(const QTextBlock& block) {
    const QTextTable* table = QTextCursor(block).currentTable();
    if (table == nullptr || !block.previous().isValid()) return false;
    if (QTextCursor(block.previous()).currentTable() != table) return false;
    const QTextTableCell cell = CellOf(block);
    const QTextTableCell before = CellOf(block.previous());
    return cell.isValid() && before.isValid() && cell != before && cell.row() == before.row();
}

}  // namespace

RichText RichTextDocument::Read(const RichText& before, bool endTyped) const {
    RichText text = WithFontsOf(before);
    Reader reader(text, dotsPerInch_, &pictures_);
    for (QTextBlock block = document_.begin(); block.isValid(); block = block.next()) {
        if (block.blockNumber() > 0) reader.Break(block);
        reader.Layout(block.blockFormat());
        reader.Contents(block);
    }
    if (!endTyped) {
        text.SetEndFormat(text.Intern(before.CharFormats()[before.EndFormat()]));
    } else if (text.Paragraphs().back().length == 0) {
        const QTextBlock last = document_.lastBlock();
        text.SetEndFormat(
            reader.Format(QTextCursor(last).blockCharFormat(), last.charFormatIndex()));
    } else {
        text.SetEndFormat(text.Runs().back().format);
    }
    return text;
}

RichText RichTextOf(const QTextDocument& foreign, double dotsPerInch) {
    RichText text;
    Reader reader(text, dotsPerInch, nullptr);
    for (QTextBlock block = foreign.begin(); block.isValid(); block = block.next()) {
        const RichText::FormatIndex start =
            reader.Format(QTextCursor(block).charFormat(), -1 - block.blockNumber());
        if (block.blockNumber() > 0) {
            if (StartsCellOfSameRow(block)) {
                reader.Units(u"\t", start);
            } else {
                reader.Break(block);
            }
        }
        reader.Layout(block.blockFormat());
        if (const QTextList* list = block.textList()) {
            reader.Units((list->itemText(block) + QLatin1Char('\t')).toStdU16String(), start);
        }
        reader.Contents(block);
    }
    return text;
}

}  // namespace larder
