// The texts of a workbook that is being written: each stands once in the shared string table, cells name it
// by its index ([MS-XLS] 2.4.265 SST, 2.4.107 ExtSST).
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
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
  struct Entry {
    std::string_view Text;
    std::size_t Hash;
  };
  void Grow();
  // Where the index of the text stands, or a free slot for it.
  std::size_t FindSlot(std::string_view text, std::size_t hash) const;

  std::deque<std::string> own_;
  std::vector<Entry> entries_;
  // A hash table with open addressing, since a large sheet has millions of texts: its slots are indexes.
  std::vector<std::uint32_t> slots_;
  std::uint32_t uses_ = 0;
};

}  // namespace velmora::tables
