// Plain text to HTML and back. Whole-text replacement in a fixed order; case-sensitive. Text is UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace velmora::html {

// "&", umlauts, "ß", "<", ">", the double quote and "©" as entities, every blank as "&nbsp;"; with
// `withLineBreaks` CR LF as "<BR>".
std::string TextToHtml(std::string_view text, bool withLineBreaks);
// The reverse, pair by pair in the same order, so that "&amp;lt;" gives "<".
std::string HtmlToText(std::string_view text);
// Umlauts and "ß" as entities, nothing else: for text that holds HTML.
std::string UmlautsToHtml(std::string_view text);
// The same, appended to `html`, for writers that build long pages.
void AppendUmlautsToHtml(std::string& html, std::string_view text);
// ">" and "<" as entities, nothing else.
std::string EscapeAngleBrackets(std::string_view text);
// UmlautsToHtml, then every character whose Windows-1252 code is 128 or above as "&#", that code in decimal,
// ";". A character beyond the code page takes its code point.
std::string ToNumericEntities(std::string_view text);

}  // namespace velmora::html
