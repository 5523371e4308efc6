#include <QFont>
#include <QString>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <cmath>
#include <unordered_map>

#include "platform/RichTextDocument.h"
#include "platform/RichTextFormats.h"
#include "platform/RichTextPaper.h"

namespace larder {

namespace {

// Builds a text from the blocks of a document.
class Reader {
  public:
    Reader(RichText& text, double dotsPerInch) : text_(text), dotsPerInch_(dotsPerInch) {}
    virtual ~Reader() = default;

    void Layout(const QTextBlockFormat& format) {
        text_.SetParagraphFormat(text_.Intern(ParaFormatOf(format)));
    }

    // Formats come by their number in Qt's own table, so that each is converted once.
    RichText::FormatIndex Format(const QTextCharFormat& format, int number) {
        const auto [entry, isNew] = formats_.try_emplace(number, 0);
        if (isNew) entry->second = text_.Intern(Converted(format));
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

  protected:
    virtual CharFormat Converted(const QTextCharFormat& native) {
        return CharFormatOf(native, text_, dotsPerInch_);
    }
    virtual void Pictures(const QTextCharFormat& native, RichText::FormatIndex format,
                          int count) = 0;

    RichText& text_;

  private:
    double dotsPerInch_;
    std::unordered_map<int, RichText::FormatIndex> formats_;
};

// That of a box, with the pictures that it was given.
class OwnReader : public Reader {
  public:
    OwnReader(RichText& text, double dotsPerInch, const std::vector<RichPicture>& pictures)
        : Reader(text, dotsPerInch), pictures_(pictures) {}

  private:
    void Pictures(const QTextCharFormat& native, RichText::FormatIndex format, int count) override {
        if (!native.hasProperty(kPictureProperty)) return;
        const auto number = static_cast<std::size_t>(native.intProperty(kPictureProperty));
        for (int i = 0; i < count; ++i) {
            text_.AppendPicture(number < pictures_.size() ? pictures_[number] : RichPicture(),
                                format);
        }
    }

    const std::vector<RichPicture>& pictures_;
};

// That of another program.
class ForeignReader : public Reader {
  public:
    ForeignReader(RichText& text, const RichTextBase& base, double defaultPoints,
                  double dotsPerInch)
        : Reader(text, dotsPerInch), base_(base), defaultPoints_(defaultPoints) {}

    std::u16string LabelOf(const QTextBlock& block) const {
        const QTextList* list = block.textList();
        if (list == nullptr) return {};
        switch (list->format().style()) {
            case QTextListFormat::ListStyleUndefined:
                return {};
            case QTextListFormat::ListDisc:
            case QTextListFormat::ListCircle:
            case QTextListFormat::ListSquare:
                return u"\u2022\t";
            default:
                return list->itemText(block).toStdU16String() + u'\t';
        }
    }

  private:
    CharFormat Converted(const QTextCharFormat& native) override {
        CharFormat format = Reader::Converted(OnPaper(native));
        const auto has = [&native](QTextFormat::Property property) {
            return native.hasProperty(property);
        };
        if (!has(QTextFormat::FontFamilies)) format.font = text_.InternFont(base_.font);
        if (has(QTextFormat::FontPointSize) || has(QTextFormat::FontPixelSize)) return format;
        double size = base_.halfPoints;
        if (has(QTextFormat::FontSizeAdjustment)) {
            size *= native.font().pointSizeF() / defaultPoints_;
        }
        format.halfPoints = static_cast<std::uint16_t>(std::lround(size));
        return format;
    }

    void Pictures(const QTextCharFormat&, RichText::FormatIndex, int) override {}

    const RichTextBase& base_;
    double defaultPoints_;
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
    OwnReader reader(text, dotsPerInch_, pictures_);
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

RichText RichTextOf(const QTextDocument& foreign, const RichTextBase& base, double dotsPerInch) {
    RichText text(base.font);
    ForeignReader reader(text, base, foreign.defaultFont().pointSizeF(), dotsPerInch);
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
        reader.Units(reader.LabelOf(block), start);
        reader.Contents(block);
    }
    text.SetEndFormat(text.Intern(CharFormat{0, base.halfPoints}));
    return text;
}

}  // namespace larder
