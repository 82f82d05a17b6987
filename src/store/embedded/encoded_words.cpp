#include "store/embedded/encoded_words.h"

#include <algorithm>
#include <optional>

#include "base/text.h"
#include "store/embedded/content_decoder.h"
#include "store/embedded/gmime_handles.h"

namespace velmora::store::embedded {
namespace {

struct EncodedWord {
  std::string Charset;
  std::string Bytes;
  std::size_t End = 0;  // position behind it
};

// The Q encoding is quoted-printable with "_" for a blank.
std::string DecodeQ(std::string_view text) {
  return DecodeTransfer(ReplaceAll(text, "_", "=20"), "quoted-printable");
}

// The word that begins at `begin`; nothing where none begins.
std::optional<EncodedWord> ReadWord(std::string_view line, std::size_t begin) {
  const auto charsetEnd = line.find('?', begin + 2);
  if (charsetEnd == std::string_view::npos || charsetEnd + 2 >= line.size() || line[charsetEnd + 2] != '?') {
    return std::nullopt;
  }
  const char encoding = line[charsetEnd + 1];
  const bool isBase64 = encoding == 'b' || encoding == 'B';
  if (!isBase64 && encoding != 'q' && encoding != 'Q') return std::nullopt;
  const auto textBegin = charsetEnd + 3;
  const auto textEnd = line.find("?=", textBegin);
  if (textEnd == std::string_view::npos) return std::nullopt;
  const auto charset = line.substr(begin + 2, charsetEnd - begin - 2);
  const auto text = line.substr(textBegin, textEnd - textBegin);
  return EncodedWord{ToLower(charset.substr(0, charset.find('*'))),  // RFC 2231: a language behind "*"
                     isBase64 ? DecodeTransfer(text, "base64") : DecodeQ(text), textEnd + 2};
}

// Calls `plain` for what stands between the words and `decoded` for the text of each run of words.
template <typename Plain, typename Decoded>
void SplitWords(std::string_view line, Plain plain, Decoded decoded) {
  std::size_t done = 0;
  // Without another end there is no other word: nothing is searched twice.
  const auto lastEnd = line.rfind("?=");
  for (auto start = line.find("=?");
       start != std::string_view::npos && lastEnd != std::string_view::npos && start < lastEnd;) {
    auto word = ReadWord(line, start);
    if (!word) {
      start = line.find("=?", start + 2);
      continue;
    }
    plain(line.substr(done, start - done));
    std::string text, bytes = std::move(word->Bytes);
    auto charset = std::move(word->Charset);
    done = word->End;
    // Blanks between two words do not count.
    while (true) {
      const auto next = std::min(line.find_first_not_of(" \t", done), line.size());
      if (!line.substr(next).starts_with("=?")) break;
      auto following = ReadWord(line, next);
      if (!following) break;
      if (following->Charset != charset) {
        text.append(DecodeCharset(bytes, charset));
        bytes.clear();
        charset = std::move(following->Charset);
      }
      bytes.append(following->Bytes);
      done = following->End;
    }
    decoded(text + DecodeCharset(bytes, charset));
    start = line.find("=?", done);
  }
  plain(line.substr(done));
}

}  // namespace

std::string DecodeEncodedWords(std::string_view line) {
  std::string result;
  const auto append = [&](std::string_view text) { result.append(text); };
  SplitWords(line, append, append);
  return result;
}

std::string UnifyEncodedWords(std::string_view line) {
  std::string result;
  SplitWords(
      line, [&](std::string_view text) { result.append(text); },
      [&](std::string_view text) {
        const GTextHandle coded(g_base64_encode(reinterpret_cast<const guchar*>(text.data()), text.size()));
        result.append("=?utf-8?B?").append(coded.get()).append("?=");
      });
  return result;
}

}  // namespace velmora::store::embedded
