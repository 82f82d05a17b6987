// Values of fields without a column, as two columns of a database: a kind, and a number or a text.
#pragma once

#include <cstdint>
#include <string>

#include "store/fields.h"

namespace velmora::store::embedded {

struct CodedValue {
  std::int64_t Kind = 0;
  bool IsNumber = false;
  std::int64_t Number = 0;
  std::string Text;
};

// The value must not be monostate: a field without a value has no row.
CodedValue EncodeValue(const FieldValue& value);
// A kind that is not known is read as a text.
FieldValue DecodeValue(const CodedValue& coded);
// Whether values of this kind stand in the number.
bool IsNumberKind(std::int64_t kind);

}  // namespace velmora::store::embedded
