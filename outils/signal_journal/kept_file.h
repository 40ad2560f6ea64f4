#pragma once
// The file beside the journal that grows with the run.

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "bibliocpp/area_recorder.h"
#include "bibliocpp/signal_files.h"

// `writer` is vcd_writer or csv_writer. Every function throws a signal_file_error when the file cannot be
// written.
template <typename writer>
class kept_file {
 public:
  kept_file(const std::string& a_path, const std::vector<recorded_signal>& signals)
      : path(a_path), stream(path, std::ios::binary), to(stream, signals) {
    hand_over();
  }

  void add(const look_news& news, const area_recorder& recorder) {
    if (news.missed > 0) to.miss({recorder.record().end_us(), news.missed}, recorder.area().clock());
    for (const look_news::change& one : news.changes) to.add(one.signal, one.what);
    if (news.missed > 0 || !news.changes.empty()) hand_over();
  }

  void end(std::int64_t time_us) {
    to.reach(time_us);
    hand_over();
  }

 private:
  void hand_over() {
    if (!stream.flush()) throw signal_file_error(path + ": " + std::strerror(errno));
  }

  std::string path;
  std::ofstream stream;
  writer to;
};
