// Text on its way between the program (UTF-8) and Qt.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace velmora::ui {

inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string FromQt(const QString& text) { return text.toStdString(); }
// A caption that is data, not ours: an ampersand in it is shown and marks no key.
inline QString PlainCaption(std::string_view text) { return ToQt(text).replace('&', "&&"); }

// A tool tip that is data: names come from anyone, and the toolkit takes what looks like markup for markup.
inline QString PlainTip(const QString& text) {
  return text.isEmpty() ? QString() : "<p style=\"white-space:pre-wrap\">" + text.toHtmlEscaped() + "</p>";
}

}  // namespace velmora::ui
