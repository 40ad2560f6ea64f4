#include "outils/examen/junit.h"

#include <algorithm>

#include "outils/examen/evidence.h"
#include "outils/examen/harmless.h"
#include "outils/examen/number_text.h"

namespace {

std::string seconds(double value) { return with_decimals(value, 3); }

void write_case(std::ostream& file, const std::string& plant, const verdict& v) {
  file << "    <testcase classname=\"" << as_markup(plant) << "\" name=\"" << as_markup(v.candidate)
       << "\" time=\"" << seconds(v.wall_seconds) << "\">\n";
  if (v.what != outcome::passed) {
    const char* const element = v.what == outcome::not_judged ? "error" : "failure";
    file << "      <" << element << " type=\"" << as_markup(word_of(v)) << "\" message=\""
         << as_markup(sentence_of(v), 600) << "\">";
    for (const std::string& line : happened(v)) file << as_markup(line) << "\n";
    file << "</" << element << ">\n";
  }
  file << "      <system-err>";
  for (const std::string& line : last_errors(v)) file << as_markup(line) << "\n";
  file << "</system-err>\n    </testcase>\n";
}

}  // namespace

void write_junit(std::ostream& file, const std::string& title, const std::string& plant,
                 const std::vector<verdict>& all) {
  const auto errors =
      std::count_if(all.begin(), all.end(), [](const verdict& v) { return v.what == outcome::not_judged; });
  const auto good =
      std::count_if(all.begin(), all.end(), [](const verdict& v) { return v.what == outcome::passed; });
  double time = 0;
  for (const verdict& v : all) time += v.wall_seconds;
  const std::string counts = "tests=\"" + std::to_string(all.size()) + "\" failures=\"" +
                             std::to_string(std::ssize(all) - good - errors) + "\" errors=\"" +
                             std::to_string(errors) + "\" time=\"" + seconds(time) + "\"";
  file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"examen\" " << counts
       << ">\n  <testsuite name=\"" << as_markup(title) << "\" " << counts << ">\n";
  for (const verdict& v : all) write_case(file, plant, v);
  file << "  </testsuite>\n</testsuites>\n";
}
