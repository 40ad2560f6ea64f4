#include "bibliocpp/list.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "bibliocpp/list_String.h"
#include "bibliocpp/list_double.h"
#include "bibliocpp/list_int.h"

namespace {

template <typename List>
std::string printed(List& l) {
  std::ostringstream out;
  out << l;
  return out.str();
}

// Counts how often what was written is flushed.
struct flush_counter : std::stringbuf {
  int flushes = 0;
  int sync() override {
    ++flushes;
    return 0;
  }
};

}  // namespace

TEST(list, finds_the_first_of_equal_elements) {
  list_int l{7, 3, 3};
  EXPECT_EQ(item_where(l, 3), 2);
  EXPECT_EQ(item_where(l, 4), 0);
  EXPECT_EQ(item_where(empty_list_int, 0), 0);
  list_list_int lists{{1}, {1, 2}, {}};
  EXPECT_EQ(item_where(lists, list_int{1, 2}), 2);
  EXPECT_EQ(item_where(lists, list_int{}), 3);
}

TEST(list, heeds_no_position_out_of_range) {
  list_int l{7, 8, 9};
  for (const int n : {-1, 0, 4}) {
    EXPECT_EQ(read_number(l, n), 0);
    replace_number(l, n, 5);
    sup_number(l, n);
  }
  EXPECT_EQ(l, (list_int{7, 8, 9}));
  for (const int n : {1, 2, 3}) {
    EXPECT_EQ(read_number(l, n), 6 + n);
    replace_number(l, n, n);
  }
  sup_number(l, 2);
  EXPECT_EQ(l, (list_int{1, 3}));
  for (const int n : {0, 1}) {
    EXPECT_EQ(read_number(empty_list_int, n), 0);
    replace_number(empty_list_int, n, 5);
    sup_number(empty_list_int, n);
  }
  EXPECT_TRUE(empty_list_int.empty());
}

TEST(list, prints_its_elements_and_flushes_after_each) {
  list_int l{1, 2, 3};
  list_String texts{"a b", "", "\"c\""};
  EXPECT_EQ(printed(l), "(1, 2, 3)");
  EXPECT_EQ(printed(texts), "(a b, , \"c\")");
  EXPECT_EQ(printed(empty_list_String), "()");
  flush_counter buffer;
  std::ostream out(&buffer);
  out << l;
  EXPECT_EQ(buffer.flushes, 4);
}

TEST(list, copies_lists_into_an_array) {
  EXPECT_EQ(array_convert(empty_list_list_int), nullptr);
  list_list_int lists{{1, 2}, {}, {3}};
  const std::unique_ptr<list_int[]> array(array_convert(lists));
  lists.front().clear();
  EXPECT_EQ(array[0], (list_int{1, 2}));
  EXPECT_TRUE(array[1].empty());
  EXPECT_EQ(array[2], list_int{3});
}

TEST(list, shows_the_operations_at_work) {
  testing::internal::CaptureStderr();
  list_int_inutile();
  list_double_inutile();
  list_String_inutile();
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "item_where de 3 3\ntaille 3\nread_number 2\navant (1, 2, 3)\napres (10, 2, 3)\n");
  EXPECT_TRUE(empty_list_double.empty() && empty_list_list_double.empty());
}
