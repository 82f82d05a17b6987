#include "mailarchive/format/text_file.h"

#include <algorithm>
#include <utility>

#include "base/code_page.h"
#include "base/text.h"

namespace velmora::mailarchive {

Result<std::string> ReadTextFile(platform::FileSystem& fileSystem, std::string_view path) {
  constexpr std::size_t ChunkSize = 64 * 1024;
  auto reader = fileSystem.OpenReader(path);
  if (!reader) return Fail(std::move(reader.error()));

  std::string bytes;
  while (bytes.size() <= TextFileLimit) {
    auto chunk = (*reader)->Read(std::min(ChunkSize, TextFileLimit + 1 - bytes.size()));
    if (!chunk) return Fail(std::move(chunk.error()));
    if (chunk->empty()) return bytes;
    if (bytes.empty()) {
      bytes = std::move(*chunk);
    } else {
      bytes += *chunk;
    }
  }
  const auto lastLineEnd = bytes.rfind('\n', TextFileLimit - 1);
  bytes.resize(lastLineEnd == std::string::npos ? 0 : lastLineEnd + 1);
  return bytes;
}

std::string DecodeEditedFile(std::string_view bytes) {
  constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
  if (!bytes.starts_with(Utf8Mark)) return FromCodePage(bytes);
  return MakeValidUtf8(bytes.substr(Utf8Mark.size()));
}

std::optional<std::string_view> TakeLine(std::string_view& rest) {
  if (rest.empty()) return std::nullopt;
  const auto lineEnd = rest.find('\n');
  auto line = rest.substr(0, lineEnd);
  rest.remove_prefix(lineEnd == std::string_view::npos ? rest.size() : lineEnd + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::optional<KeyValue> SplitKeyValue(std::string_view line) {
  const auto equals = line.find('=');
  if (equals == std::string_view::npos) return std::nullopt;
  return KeyValue{Trim(line.substr(0, equals)), Trim(line.substr(equals + 1))};
}

std::string DecodeValue(std::string_view bytes) { return DecodeReferences(FromCodePage(bytes)); }

std::string EncodeValue(std::string_view text) {
  return ToCodePage(BlankControlCharacters(text), Unmappable::Reference);
}

}  // namespace velmora::mailarchive
