// A visitor of a std::variant, put together from one lambda for each alternative.
#pragma once

namespace velmora {

template <typename... Handlers>
struct Overloaded : Handlers... {
  using Handlers::operator()...;
};
template <typename... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

}  // namespace velmora
