#include "mailarchive/links.h"

#include <array>

#include <fmt/format.h>

namespace velmora::mailarchive {

namespace {

struct HrefEscape {
  char Character;
  std::string_view Text;
};

constexpr std::array HrefEscapes = {
    HrefEscape{'\\', "/"},    HrefEscape{'%', "%25"}, HrefEscape{'#', "%23"}, HrefEscape{'?', "%3F"},
    HrefEscape{'&', "&amp;"}, HrefEscape{'"', "%22"}, HrefEscape{'<', "%3C"}, HrefEscape{'>', "%3E"},
};

}  // namespace

std::string HrefPath(std::string_view path) {
  std::string href;
  href.reserve(path.size());
  for (const char character : path) {
    const HrefEscape* found = nullptr;
    for (const HrefEscape& escape : HrefEscapes) {
      if (escape.Character == character) found = &escape;
    }
    if (found != nullptr) {
      href += found->Text;
    } else {
      href += character;
    }
  }
  return href;
}

std::string FileLink(std::string_view path, std::string_view text) {
  return fmt::format(R"(<a  target="_blank" href="{}">{}</a><br>)", HrefPath(path), text);
}

std::string PlainLink(std::string_view path, std::string_view text) {
  return fmt::format(R"(<a href="{}">{}</a><br>)", HrefPath(path), text);
}

}  // namespace velmora::mailarchive
