// From the bytes of a part to its content: transfer decoding (base64, quoted-printable, uuencode) in pieces
// of any size, and character sets to UTF-8.
#pragma once

#include <gmime/gmime.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora::store::embedded {

class TransferDecoder {
 public:
  // `encoding`: a Content-Transfer-Encoding; an unknown one leaves the bytes as they are.
  explicit TransferDecoder(std::string_view encoding);
  // The decoded bytes of the next piece, valid until the next call.
  std::string_view Decode(std::string_view piece);

 private:
  bool isIdentity_;
  GMimeEncoding state_{};
  std::string decoded_;
};

std::string DecodeTransfer(std::string_view encoded, std::string_view encoding);
// Size of the decoded content, without holding it.
std::size_t DecodedSize(std::string_view encoded, std::string_view encoding);

// Text of a character set as valid UTF-8, without NUL and byte order mark. "" and unknown sets: UTF-8 where
// the bytes are valid, else Windows-1252. Bytes that the set lacks become a replacement character.
std::string DecodeCharset(std::string_view bytes, std::string_view charset);

}  // namespace velmora::store::embedded
