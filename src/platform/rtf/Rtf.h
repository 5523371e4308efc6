#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/rtf/RichText.h"

namespace larder {

// Reads an RTF document. A text that does not begin with "{\rtf" is not RTF: nullopt, and the
// caller may take it as plain text. Anything else succeeds: of a damaged document comes what can
// be read. What stands behind the brace that closes the document is ignored. Memory and time are
// proportional to the size of the input, whatever the input says.
std::optional<RichText> ReadRtf(std::string_view rtf);

// The document as RTF in ASCII, as a rich edit control writes it: small, and always the same for
// the same content. Reading it back and writing it again gives the same bytes.
std::string WriteRtf(const RichText& document);

// The plain text of an RTF document (or, if it is none, of Windows-1252 text) in UTF-8, for
// reading outside the program: paragraphs as lines ended by LF, table cells divided by tabs, list
// labels as the document gives them.
std::string RtfToPlainUtf8(std::string_view bytes);

}  // namespace larder
