#include "addresses/birthday.h"

#include <fmt/format.h>

#include <string>
#include <vector>

#include "base/text.h"

namespace velmora::addresses {
namespace {

// As spreadsheets and databases read a year of two digits.
constexpr std::string_view FirstYearOfLastCentury = "30";

std::string TwoDigits(std::string_view number) {
  return (number.size() == 1 ? "0" : "") + std::string(number);
}

std::string FullYear(const std::string& year) {
  if (year.size() != 2) return year;
  return (year >= FirstYearOfLastCentury ? "19" : "20") + year;
}

}  // namespace

std::optional<DateTime> ParseBirthday(std::string_view text) {
  const std::string_view trimmed = Trim(text);
  const std::size_t dateEnd = trimmed.find_first_of(" T");
  const std::string_view date = trimmed.substr(0, dateEnd);
  std::string_view time = dateEnd == std::string_view::npos ? "" : Trim(trimmed.substr(dateEnd + 1));
  if (time.ends_with('Z')) time.remove_suffix(1);

  const std::vector<std::string> german = Split(date, ".");
  const std::vector<std::string> iso = Split(date, "-");
  std::string year, month, day;
  if (german.size() == 3) {
    day = german[0], month = german[1], year = FullYear(german[2]);
  } else if (iso.size() == 3) {
    year = iso[0], month = iso[1], day = iso[2];
  }
  if (year.size() != 4) return std::nullopt;
  return ParseDateTime(fmt::format("{}.{}.{}{}{}", TwoDigits(day), TwoDigits(month), year,
                                   time.empty()          ? ""
                                   : time.find(':') == 1 ? " 0"
                                                         : " ",
                                   time));
}

}  // namespace velmora::addresses
