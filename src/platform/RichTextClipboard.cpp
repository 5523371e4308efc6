#include "platform/RichTextClipboard.h"

#include <QByteArray>
#include <QFont>
#include <QImage>
#include <QMimeData>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <memory>
#include <string_view>
#include <utility>

#include "platform/RichTextPictures.h"
#include "platform/rtf/Rtf.h"

namespace larder {

namespace {

const QString kRtfTypes[] = {QStringLiteral("text/rtf"), QStringLiteral("application/rtf"),
                             QStringLiteral("text/richtext")};

const QString kOwnType = QStringLiteral("application/x-tidewell-larder-text");  // marks our own

constexpr double kDefaultPoints = 12;  // of HTML; any will do, as it is read relative to it

std::optional<RichText> RtfIn(const QMimeData& source) {
    for (const QString& type : kRtfTypes) {
        const QByteArray bytes = source.data(type);
        auto text = ReadRtf({bytes.constData(), static_cast<std::size_t>(bytes.size())});
        if (!text) continue;
        // What is moved within the book stays as it is.
        const std::size_t foreign = source.hasFormat(kOwnType) ? 0 : text->Pictures().size();
        for (std::size_t i = 0; i < foreign; ++i)
            text->SetPicture(i, WithinLimits(text->Pictures()[i]));
        return text;
    }
    return std::nullopt;
}

RichText FromHtml(const QString& html, const RichTextBase& base, double dotsPerInch) {
    QTextDocument foreign;
    QFont font = foreign.defaultFont();
    font.setPointSizeF(kDefaultPoints);
    foreign.setDefaultFont(font);
    foreign.setHtml(html);
    return RichTextOf(foreign, base, dotsPerInch);
}

// With it as with words, what is typed behind looks like the text at the place.
RichText FromImage(const QImage& image, const RichTextBase& base) {
    RichText text(base.font);
    const RichText::FormatIndex format = text.Intern(CharFormat{0, base.halfPoints});
    text.AppendPicture(PictureOf(image), format);
    text.SetEndFormat(format);
    return text;
}

// What divides lines and columns, in plain text and in rich text alike.
constexpr std::u16string_view kDividers = u"\r\n\t\u2028\u2029";

bool HasWords(const std::u16string& units) {
    return units.find_first_not_of(u" \u00A0\u2029") != std::u16string::npos;
}

}  // namespace

QMimeData* MimeOf(const RichText& text, const QTextCursor& selection) {
    const std::string rtf = WriteRtf(text);
    const QByteArray bytes(rtf.data(), static_cast<qsizetype>(rtf.size()));
    const QTextDocumentFragment fragment = selection.selection();
    auto mime = std::make_unique<QMimeData>();
    mime->setData(kRtfTypes[0], bytes);
    mime->setData(kRtfTypes[1], bytes);
    mime->setData(kOwnType, {});
    mime->setHtml(fragment.toHtml());
    mime->setText(fragment.toPlainText());
    return mime.release();
}

bool CanTake(const QMimeData& source) {
    for (const QString& type : kRtfTypes) {
        if (source.hasFormat(type)) return true;
    }
    return source.hasHtml() || source.hasText() || source.hasImage();
}

std::optional<Incoming> IncomingFrom(const QMimeData& source, const RichTextBase& base,
                                     double dotsPerInch) {
    if (auto text = RtfIn(source)) return std::move(*text);
    const bool isHtml = source.hasHtml();
    if (isHtml) {
        RichText text = FromHtml(source.html(), base, dotsPerInch);
        if (HasWords(text.Units())) return text;
    }
    // Of a picture that was copied by itself, a browser gives the address as HTML.
    const QString words = source.text();
    if (source.hasImage() && (isHtml || words.isEmpty())) {
        const auto image = qvariant_cast<QImage>(source.imageData());
        if (!image.isNull()) return FromImage(image, base);
    }
    if (words.isEmpty()) return std::nullopt;
    return words.toStdU16String();
}

Incoming InOneLine(const Incoming& incoming) {
    const auto* rich = std::get_if<RichText>(&incoming);
    const std::u16string& units = rich ? rich->Units() : std::get<std::u16string>(incoming);
    const std::size_t from = units.find_first_not_of(kDividers);
    if (from == std::u16string::npos) return std::u16string();
    const std::size_t to = units.find_last_not_of(kDividers) + 1;
    if (rich && units.find_first_of(kDividers, from) >= to) {
        return rich->Cut(rich->PositionAt(from), rich->PositionAt(to));
    }
    std::u16string line;
    for (std::size_t i = from; i < to; ++i) {
        const bool divides = kDividers.find(units[i]) != std::u16string::npos;
        if (!divides) {
            line += units[i];
        } else if (line.back() != u' ') {
            line += u' ';
        }
    }
    return line;
}

}  // namespace larder
