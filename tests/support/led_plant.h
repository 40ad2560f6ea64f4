#pragma once
// A mock-up that is led (doc/leading-a-mock-up.md), the test as its leader. Include gtest first.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/process.h"

// A pipe of which one end is the plant's.
struct one_way {
  int ours, theirs;
  explicit one_way(bool to_plant) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    theirs = ends[to_plant ? 0 : 1];
    ours = ends[to_plant ? 1 : 0];
    fcntl(theirs, F_SETFD, 0);
  }
  ~one_way() { close(ours); }
};

class led_plant {
 public:
  explicit led_plant(std::vector<std::string> command)
      : plant(std::move(command),
              {"MOCK_UP_LED=" + std::to_string(to.theirs) + "," + std::to_string(from.theirs), "LC_ALL=en"}) {
    close(to.theirs);
    close(from.theirs);
  }
  void tell(const std::string& lines) const {
    EXPECT_EQ(write(to.ours, lines.data(), lines.size()), static_cast<ssize_t>(lines.size()));
  }
  void leave() {
    close(to.ours);
    to.ours = -1;
  }
  // The next line; empty when none comes.
  std::string line() {
    std::string text;
    pollfd reading{from.ours, POLLIN, 0};
    for (char c = 0; poll(&reading, 1, 20'000) == 1 && read(from.ours, &c, 1) == 1 && c != '\n';) text += c;
    return text;
  }
  // What comes of a line.
  std::string ask(const std::string& text) {
    tell(text + "\n");
    return line();
  }

  one_way to{true}, from{false};
  process plant;
};
