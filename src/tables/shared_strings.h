// The texts of a workbook that is being written: each stands once in the shared string table, cells name it
// by its index ([MS-XLS] 2.4.265 SST, 2.4.107 ExtSST).
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velmora::tables {

class SharedStrings {
 public:
  // The index of the text, which must live as long as this object.
  std::uint32_t IndexOf(std::string_view text);
  // The same for a text that does not live as long.
  std::uint32_t IndexOfCopy(std::string text);

  // The table with its continuation records, and the index into it. `stream` begins where the workbook's
  // stream begins: the index holds positions.
  void AppendTo(std::string& stream) const;

 private:
  std::deque<std::string> own_;
  std::vector<std::string_view> texts_;
  std::unordered_map<std::string_view, std::uint32_t> indexes_;
  std::uint32_t uses_ = 0;
};

}  // namespace velmora::tables
