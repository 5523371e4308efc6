#include "platform/RichTextClipboard.h"

#include <QByteArray>
#include <QImage>
#include <QMimeData>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <memory>

#include "platform/RichTextDocument.h"
#include "platform/RichTextPictures.h"
#include "platform/rtf/Rtf.h"

namespace larder {

namespace {

const QString kRtfTypes[] = {QStringLiteral("text/rtf"), QStringLiteral("application/rtf"),
                             QStringLiteral("text/richtext")};

std::optional<RichText> RtfIn(const QMimeData& source) {
    for (const QString& type : kRtfTypes) {
        const QByteArray bytes = source.data(type);
        auto text = ReadRtf({bytes.constData(), static_cast<std::size_t>(bytes.size())});
        if (text) return text;
    }
    return std::nullopt;
}

}  // namespace

QMimeData* MimeOf(const RichText& text, const QTextCursor& selection) {
    const std::string rtf = WriteRtf(text);
    const QByteArray bytes(rtf.data(), static_cast<qsizetype>(rtf.size()));
    const QTextDocumentFragment fragment = selection.selection();
    auto mime = std::make_unique<QMimeData>();
    mime->setData(kRtfTypes[0], bytes);
    mime->setData(kRtfTypes[1], bytes);
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

void Take(const QMimeData& source, RichTextWidget::Host& host, double dotsPerInch) {
    if (const auto text = RtfIn(source)) return host.Insert(*text);
    if (source.hasHtml()) {
        QTextDocument foreign;
        foreign.setHtml(source.html());
        return host.Insert(RichTextOf(foreign, dotsPerInch));
    }
    if (source.hasText()) return host.Insert(source.text().toStdU16String());
    if (source.hasImage()) {
        RichText picture;
        picture.AppendPicture(PictureOf(qvariant_cast<QImage>(source.imageData())), 0);
        host.Insert(picture);
    }
}

}  // namespace larder
