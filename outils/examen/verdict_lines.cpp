#include "outils/examen/verdict_lines.h"

#include <iomanip>
#include <sstream>

std::string to_lines(const verdict& v) {
  std::ostringstream lines;
  lines << static_cast<int>(v.what) << ' ' << v.number << ' ' << v.cycle << ' ' << v.cycles << ' '
        << v.unanswered << ' ' << v.wall_seconds << '\n'
        << std::quoted(v.sentence) << '\n'
        << v.events.size() << '\n';
  for (const run_event& e : v.events) lines << e.cycle << ' ' << std::quoted(e.text) << '\n';
  lines << v.remarks.size() << '\n';
  for (const std::string& remark : v.remarks) lines << std::quoted(remark) << '\n';
  return lines.str() + ".\n";
}

bool from_lines(const std::string& text, verdict& v) {
  std::istringstream lines(text);
  verdict read = v;
  int what = 0;
  std::size_t events = 0, remarks = 0;
  lines >> what >> read.number >> read.cycle >> read.cycles >> read.unanswered >> read.wall_seconds >>
      std::quoted(read.sentence) >> events;
  read.what = static_cast<outcome>(what);
  read.events.clear();
  for (; events > 0 && lines; --events) {
    run_event e{};
    lines >> e.cycle >> std::quoted(e.text);
    read.events.push_back(e);
  }
  lines >> remarks;
  for (; remarks > 0 && lines; --remarks) {
    std::string remark;
    lines >> std::quoted(remark);
    read.remarks.push_back(remark);
  }
  std::string end;
  if (!(lines >> end) || end != ".") return false;
  v = read;
  return true;
}
