// The message viewer with lists of growing length: opening, turning a page, exporting. Exports run twice: as
// they are, flushed after every line, and to a stream that holds the lines back, which shows what that costs.

#include <FL/Fl.H>
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "bibliocpp/formspp.h"

namespace {

using message_lines = std::vector<std::string>;

const message_lines& lines(std::int64_t count) {
  static message_lines made;
  if (static_cast<std::int64_t>(made.size()) != count) {
    made.assign(static_cast<std::size_t>(count), "08:00:08# A# arrivee au dechargement (pdAB)# x = 300");
    made.front() = "#P T10 T8 T34 T14 ";
    for (std::size_t i = 1; i < made.size(); i += 10) made[i] = "#T";
  }
  return made;
}

template <typename Filter>
Filter filter(const message_lines& of) {
  return Filter(of.data(), static_cast<int>(of.size()));
}

void report(benchmark::State& state) {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  state.counters["peak_MB"] = static_cast<double>(usage.ru_maxrss) / 1024;
}

void count_pages(benchmark::State& state) {
  const message_lines& all = lines(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(filter<OFD_afficheur_filtre_affichage>(all).nb_pages());
  report(state);
}

void turn_page(benchmark::State& state) {
  auto display = filter<OFD_afficheur_filtre_affichage>(lines(state.range(0)));
  int page = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(display.visu_page(page));
    page = display.nb_pages() - page;
  }
  report(state);
}

// As the operator sees it: the list filled and painted.
struct reading {
  benchmark::State& state;
  OFD_afficheur viewer{nullptr, 0};
  int last_page;
};

void read_on(void* data) {
  auto& [state, viewer, last_page] = *static_cast<reading*>(data);
  int page = 0;
  for (auto _ : state) {
    page = last_page - page;
    viewer.page_numero(page);
    Fl::flush();
  }
  Fl::modal()->hide();
}

void turn_page_in_window(benchmark::State& state) {
  message_lines all = lines(state.range(0));
  reading now{.state = state, .last_page = filter<OFD_afficheur_filtre_affichage>(all).nb_pages()};
  Fl::add_timeout(0.1, read_on, &now);
  now.viewer.activation(all.data(), static_cast<int>(all.size()), "bench", "");
  report(state);
}

struct held_back : std::filebuf {
  int sync() override { return 0; }
};

template <typename Buffer, typename Write>
void write_file(benchmark::State& state, Write write) {
  const message_lines& all = lines(state.range(0));
  const std::string path = std::filesystem::temp_directory_path() / "bench_viewer.out";
  for (auto _ : state) {
    Buffer buffer;
    buffer.open(path, std::ios::out | std::ios::trunc);
    std::ostream file(&buffer);
    write(file, all);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.counters["file_MB"] = static_cast<double>(std::filesystem::file_size(path)) / 1e6;
  std::filesystem::remove(path);
  report(state);
}

template <typename Buffer>
void export_pdf(benchmark::State& state) {
  write_file<Buffer>(state, [](std::ostream& file, const message_lines& all) {
    filter<OFD_afficheur_filtre_impression>(all).imprime_pdf(file);
  });
}

template <typename Buffer>
void export_postscript(benchmark::State& state) {
  write_file<Buffer>(state, [](std::ostream& file, const message_lines& all) {
    filter<OFD_afficheur_filtre_impression>(all).imprime_postscript(file);
  });
}

template <typename Buffer>
void export_text(benchmark::State& state) {
  write_file<Buffer>(state, [](std::ostream& file, const message_lines& all) {
    filter<OFD_afficheur_filtre_texte>(all).imprime(file);
  });
}

// One line of nothing but separators: its cells take linear time, however many lie beyond the last column.
void export_cells(benchmark::State& state) {
  const message_lines one{"#P 10 ", std::string(static_cast<std::size_t>(state.range(0)), '#')};
  for (auto _ : state) {
    std::ostringstream file;
    filter<OFD_afficheur_filtre_impression>(one).imprime_postscript(file);
  }
  state.SetComplexityN(state.range(0));
  report(state);
}

void lengths(benchmark::internal::Benchmark* bench) {
  bench->Arg(1'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(count_pages)->Apply(lengths);
BENCHMARK(turn_page)->Apply(lengths);
BENCHMARK(turn_page_in_window)->Apply(lengths);
BENCHMARK(export_pdf<std::filebuf>)->Apply(lengths);
BENCHMARK(export_pdf<held_back>)->Apply(lengths);
BENCHMARK(export_postscript<std::filebuf>)->Apply(lengths);
BENCHMARK(export_postscript<held_back>)->Apply(lengths);
BENCHMARK(export_text<std::filebuf>)->Apply(lengths);
BENCHMARK(export_text<held_back>)->Apply(lengths);

BENCHMARK(export_cells)
    ->Arg(20'000)
    ->Arg(200'000)
    ->Arg(2'000'000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
