// Links from the pages of a mail archive to its files.
#pragma once

#include <string>
#include <string_view>

namespace velmora::mailarchive {

// A relative path as the value of an href in double quotes: "/" for "\", and what a browser would read as
// something else than a character of a file name ("%", "#", "&", the double quote, angle brackets) escaped.
std::string HrefPath(std::string_view path);
// `<a  target="_blank" href="{path}">{text}</a><br>`; the two blanks belong to the format. The text is HTML.
std::string FileLink(std::string_view path, std::string_view text);
// `<a href="{path}">{text}</a><br>`.
std::string PlainLink(std::string_view path, std::string_view text);

}  // namespace velmora::mailarchive
