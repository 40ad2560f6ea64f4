#pragma once
// The signals of a mock-up, named once: each is an enumerator, its place is its index in the area, and the
// names in the area are those of the enumerators.
//
//   namespace entree { enum index : int { rentre, sorti, count }; }  // what the controller sees
//   namespace sortie { enum index : int { SORTIR, count }; }         // what it commands
//
// `count` ends each enumeration. A list that the area cannot hold does not compile, nor does an output where
// an input is wanted.

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace signal_table {

constexpr std::size_t most_signals = 41, longest_name = 49;  // of one area

// The compiler's name for this function ends with that of its argument: "... = entree::rentre]".
template <auto signal>
consteval const char* spelled_out() {
  return __PRETTY_FUNCTION__;
}

template <auto signal>
consteval std::string_view name_of() {
  std::string_view text = spelled_out<signal>();
  text.remove_suffix(1);
  return text.substr(text.find_last_of(": )") + 1);
}

template <auto signal>
inline constexpr auto stored_name = [] {
  constexpr std::string_view name = name_of<signal>();
  static_assert(name.front() < '0' || name.front() > '9', "an index below count has no signal");
  static_assert(name.size() <= longest_name, "the name of a signal is too long for the area");
  std::array<char, name.size() + 1> text{};
  name.copy(text.data(), name.size());
  return text;
}();

template <typename Signal, std::size_t... index>
constexpr std::array<const char*, sizeof...(index)> all_names(std::index_sequence<index...>) {
  return {stored_name<static_cast<Signal>(index)>.data()...};
}

}  // namespace signal_table

template <typename Signal>
inline constexpr std::size_t signal_count = static_cast<std::size_t>(Signal::count);

// Their names, in the order of the area.
template <typename Signal>
inline constexpr auto signal_names = [] {
  static_assert(signal_count<Signal> <= signal_table::most_signals, "more signals than the area holds");
  return signal_table::all_names<Signal>(std::make_index_sequence<signal_count<Signal>>());
}();

template <typename Signal>
constexpr const char* signal_name(Signal signal) {
  return signal_names<Signal>[static_cast<std::size_t>(signal)];
}

// A value for each signal of an enumeration, all of them 0 at first.
template <typename Signal>
class signal_values {
 public:
  bool& operator[](Signal signal) { return values[static_cast<std::size_t>(signal)]; }
  bool operator[](Signal signal) const { return values[static_cast<std::size_t>(signal)]; }

 private:
  std::array<bool, signal_count<Signal>> values{};
};

// Calls act(signal) for each of an enumeration, in the order of the area.
template <typename Signal, typename Act>
void for_each_signal(Act act) {
  for (std::size_t n = 0; n < signal_count<Signal>; ++n) act(static_cast<Signal>(n));
}
