#include <gtest/gtest.h>

#include "tests/support/display.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (!testing::GTEST_FLAG(list_tests)) use_own_display();
  return RUN_ALL_TESTS();
}
