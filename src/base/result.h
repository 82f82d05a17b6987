// Result<T>: a value or an Error. Used as far as std::expected goes, so that it can become that one day.
#pragma once

#include <string>
#include <tl/expected.hpp>
#include <utility>

namespace velmora {

// What went wrong: a number that rules may test, and a German text for the log and the user.
struct Error {
  int Number = 0;
  std::string Text;

  bool operator==(const Error&) const = default;
};

template <typename T>
using Result = tl::expected<T, Error>;

// The result of an operation that yields nothing but success or an Error.
using Status = Result<void>;

// Makes the failing side of any Result: `return Fail(53, "Datei nicht gefunden");`
inline tl::unexpected<Error> Fail(int number, std::string text) {
  return tl::unexpected<Error>(Error{number, std::move(text)});
}
inline tl::unexpected<Error> Fail(Error error) { return tl::unexpected<Error>(std::move(error)); }

}  // namespace velmora
