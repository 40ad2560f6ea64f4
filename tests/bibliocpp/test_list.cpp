#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "bibliocpp/list_String.h"
#include "bibliocpp/list_double.h"
#include "bibliocpp/list_int.h"

TEST(list, counts_positions_from_1_and_heeds_none_out_of_range) {
  list_int l{7, 8, 8};
  list_list_int lists{{1}, {1, 2}};
  EXPECT_EQ(item_where(l, 8), 2) << "the first of equal ones";
  EXPECT_EQ(item_where(lists, list_int{1, 2}), 2);
  EXPECT_EQ(item_where(l, 4) + item_where(empty_list_list_int, list_int{}), 0);
  for (list_int* const out_of_range : {&l, &empty_list_int})
    for (const int n : {-1, 0, 4}) {
      EXPECT_EQ(read_number(*out_of_range, n), 0);
      replace_number(*out_of_range, n, 5);
      sup_number(*out_of_range, n);
    }
  EXPECT_EQ(l, (list_int{7, 8, 8}));
  EXPECT_EQ(read_number(l, 1) + read_number(l, 3), 15);
  replace_number(l, 3, 9);
  sup_number(l, 2);
  EXPECT_EQ(l, (list_int{7, 9}));
}

TEST(list, prints_and_converts) {
  list_String texts{"a b", "", "\"c\""};
  std::ostringstream out;
  out << texts << empty_list_String;
  EXPECT_EQ(out.str(), "(a b, , \"c\")()");
  list_list_int lists{{1, 2}, {}};
  const std::unique_ptr<list_int[]> array(array_convert(lists));
  lists.front().clear();
  EXPECT_EQ(array[0], (list_int{1, 2}));
  EXPECT_TRUE(array[1].empty() && array_convert(empty_list_list_int) == nullptr);
  testing::internal::CaptureStderr();
  list_int_inutile();
  list_double_inutile();
  list_String_inutile();
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "item_where de 3 3\ntaille 3\nread_number 2\navant (1, 2, 3)\napres (10, 2, 3)\n");
}
