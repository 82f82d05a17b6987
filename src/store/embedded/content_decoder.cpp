#include "store/embedded/content_decoder.h"

#include <algorithm>
#include <array>

#include "base/code_page.h"
#include "base/text.h"
#include "store/embedded/gmime_handles.h"

namespace velmora::store::embedded {
namespace {

constexpr std::size_t PieceSize = 65'536;
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

// Sets that mail names but means as Windows-1252, its superset (as every browser reads them).
constexpr std::array<std::string_view, 5> CodePageNames = {"iso-8859-1", "latin1", "windows-1252", "cp1252",
                                                           "iso8859-1"};
// Sets under which anything may stand: what is valid UTF-8 is read as that.
constexpr std::array<std::string_view, 6> VagueNames = {"",      "us-ascii", "ascii",
                                                        "utf-8", "utf8",     "unknown-8bit"};

bool Contains(const auto& names, std::string_view name) {
  return std::ranges::find(names, name) != names.end();
}

std::string GuessCharset(std::string_view bytes) {
  return IsValidUtf8(bytes) ? std::string(bytes) : FromCodePage(bytes);
}

std::string ConvertCharset(std::string_view bytes, const std::string& charset) {
  const GObjectHandle<GMimeFilter> filter(g_mime_filter_charset_new(charset.c_str(), "utf-8"));
  if (!filter) return GuessCharset(bytes);
  std::string text;
  // The filter wants room in front of its input; it gets a copy of each piece instead of the source.
  std::string piece;
  for (std::size_t position = 0; position == 0 || position < bytes.size(); position += PieceSize) {
    const auto part = bytes.substr(position, PieceSize);
    const bool isLast = position + PieceSize >= bytes.size();
    piece.assign(part);
    char* output = nullptr;
    std::size_t size = 0, room = 0;
    const auto step = isLast ? g_mime_filter_complete : g_mime_filter_filter;
    step(filter.get(), piece.data(), piece.size(), 0, &output, &size, &room);
    text.append(output, size);
  }
  return IsValidUtf8(text) ? text : MakeValidUtf8(text);
}

}  // namespace

TransferDecoder::TransferDecoder(std::string_view encoding) {
  (void)MailParserOptions();  // GMime is initialised
  const auto kind = g_mime_content_encoding_from_string(std::string(encoding).c_str());
  isIdentity_ = kind != GMIME_CONTENT_ENCODING_BASE64 && kind != GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE &&
                kind != GMIME_CONTENT_ENCODING_UUENCODE;
  if (!isIdentity_) g_mime_encoding_init_decode(&state_, kind);
}

std::string_view TransferDecoder::Decode(std::string_view piece) {
  if (isIdentity_) return piece;
  decoded_.resize(g_mime_encoding_outlen(&state_, piece.size()));
  const auto size = g_mime_encoding_step(&state_, piece.data(), piece.size(), decoded_.data());
  return std::string_view(decoded_).substr(0, size);
}

std::string DecodeTransfer(std::string_view encoded, std::string_view encoding) {
  TransferDecoder decoder(encoding);
  return std::string(decoder.Decode(encoded));
}

std::size_t DecodedSize(std::string_view encoded, std::string_view encoding) {
  TransferDecoder decoder(encoding);
  std::size_t size = 0;
  for (std::size_t position = 0; position < encoded.size(); position += PieceSize) {
    size += decoder.Decode(encoded.substr(position, PieceSize)).size();
  }
  return size;
}

std::string DecodeCharset(std::string_view bytes, std::string_view charset) {
  (void)MailParserOptions();  // GMime is initialised
  const auto name = ToLower(Trim(charset));
  std::string text;
  if (Contains(VagueNames, name)) {
    text = GuessCharset(bytes);
  } else if (Contains(CodePageNames, name)) {
    text = FromCodePage(bytes);
  } else {
    text = ConvertCharset(bytes, name);
  }
  std::erase(text, '\0');
  if (text.starts_with(ByteOrderMark)) text.erase(0, ByteOrderMark.size());
  return text;
}

}  // namespace velmora::store::embedded
