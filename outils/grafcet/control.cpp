#include "outils/grafcet/control.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <span>
#include <string>
#include <vector>

#include "bibliocpp/area_view.h"
#include "bibliocpp/grafcet_file/evolution.h"
#include "bibliocpp/language.h"
#include "outils/grafcet/area_signals.h"

namespace {

using grafcet_file::evolution;
using grafcet_file::program;

class plant_time {
 public:
  plant_time(const area_view& an_area, std::int64_t a_period_us) : area(an_area), period_us(a_period_us) {}

  // In microseconds.
  std::int64_t now() const {
    using namespace std::chrono;
    if (period_us != 0) return area.clock() * period_us;
    return duration_cast<microseconds>(steady_clock::now() - start).count();
  }

 private:
  const area_view& area;
  const std::int64_t period_us;
  const std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};

// Tells of situations that do not become stable, a circle once.
class instability {
 public:
  explicit instability(const program& some_charts) : charts(some_charts) {}

  void look(const evolution& at_work) {
    constexpr int forgotten_after = 100;  // stable batches, about a second
    if (at_work.now().stable) {
      if (++stable_batches == forgotten_after) told.clear();
      return;
    }
    stable_batches = 0;
    const std::span<const int> circle = at_work.circle();
    if (!told.empty() && std::equal(told.begin(), told.end() - 1, circle.begin(), circle.end())) return;
    told.assign(circle.begin(), circle.end());
    told.push_back(grafcet_file::none);  // told, even with no step in it
    std::string steps;
    for (const int s : circle) {
      const auto& step = charts.steps[static_cast<std::size_t>(s)];
      const auto& root =
          charts.charts[static_cast<std::size_t>(charts.charts[static_cast<std::size_t>(step.chart)].root)];
      steps += (s == circle.front() ? "" : ", ") +
               tr("{}.X{} (ligne {})", {root.name, step.label, std::to_string(step.where.line)});
    }
    std::cerr << tr("grafcet: situation instable, sans fin : {}\n",
                    {circle.empty() ? tr("des variables changent sans cesse") : steps})
              << std::flush;
  }

 private:
  const program& charts;
  std::vector<int> told;
  int stable_batches = 0;
};

}  // namespace

void control(IOsharemem_client& area, int ident, const program& charts, std::int64_t period_us,
             shared_situation* shown) {
  const area_view view(ident);
  const plant_time time(view, period_us);
  evolution at_work(charts);
  instability unstable(charts);
  area_signals signals(area, charts);
  for (int news = 0; (news = area.receive()) >= 0;) {
    if (news == 0 && !view.plant_runs()) return;
    if (news == 0) continue;
    at_work.batch(signals.inputs(), time.now());
    unstable.look(at_work);
    signals.answer(at_work.now().outputs);
    if (shown != nullptr) shown->hand_over_if_asked(at_work.now());
  }
}
