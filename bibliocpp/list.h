#pragma once
// Position helpers on standard lists. Positions count from 1.

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <list>
#include <ostream>

namespace list_position {

// The element at position n, or end() when there is none.
template <typename T>
typename std::list<T>::iterator at(std::list<T>& l, int n) {
  if (n < 1 || static_cast<std::size_t>(n) > l.size()) return l.end();
  return std::next(l.begin(), n - 1);
}

}  // namespace list_position

// Position of the first element equal to `value`; 0 when there is none.
template <typename T>
int item_where(std::list<T>& l, const T& value) {
  int position = 0;
  for (const T& element : l) {
    ++position;
    if (element == value) return position;
  }
  return 0;
}

// The element at position n; T's zero value when there is none.
template <typename T>
T read_number(std::list<T>& l, int n) {
  const auto found = list_position::at(l, n);
  return found == l.end() ? T{} : *found;
}

// Gives the element at position n the value; does nothing when there is none.
template <typename T>
void replace_number(std::list<T>& l, int n, const T& value) {
  const auto found = list_position::at(l, n);
  if (found != l.end()) *found = value;
}

// Removes the element at position n; does nothing when there is none.
template <typename T>
void sup_number(std::list<T>& l, int n) {
  const auto found = list_position::at(l, n);
  if (found != l.end()) l.erase(found);
}

// Prints "(1, 2, 3)", an empty list as "()". Flushes after each element and after the ")", so that
// what was printed before a crash is not lost.
template <typename T>
std::ostream& operator<<(std::ostream& out, std::list<T>& l) {
  out << "(";
  const char* separator = "";
  for (const T& element : l) {
    out << separator << element << std::flush;
    separator = ", ";
  }
  return out << ")" << std::flush;
}

// Copies of the inner lists, in order, in a new array that the caller releases with delete[]; null
// for an empty outer list.
template <typename T>
std::list<T>* array_convert(std::list<std::list<T>>& lists) {
  if (lists.empty()) return nullptr;
  auto* const array = new std::list<T>[lists.size()];
  std::copy(lists.begin(), lists.end(), array);
  return array;
}
