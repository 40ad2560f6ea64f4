#pragma once
// A program of ours as a process of its own.

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

class process {
 public:
  // Starts words[0] with the others as its arguments. What it and its children write to the standard
  // output and error streams is kept. `environment` adds "NAME=value" entries.
  explicit process(std::vector<std::string> words, const std::vector<std::string>& environment = {});
  // Kills it if it still runs. It is asked to end when the test program dies.
  ~process();
  process(const process&) = delete;
  process& operator=(const process&) = delete;

  pid_t pid() const { return id; }
  bool runs();
  void signal(int number) const;
  // Waits for its end; its status, minus the signal that killed it, or -1000 when it does not end in time.
  int wait(std::chrono::milliseconds in_time = std::chrono::seconds(20));
  std::string output() const;
  std::string errors() const;

 private:
  pid_t id = -1;
  bool ended = false;
  int status = 0;
  int out = -1;
  int err = -1;
};

// The path of a program built beside the tests.
std::string built(const std::string& program);
// The path of a file of the repository.
std::string in_repository(const std::string& path);
