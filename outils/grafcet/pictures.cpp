#include "outils/grafcet/pictures.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <vector>

#include "outils/grafcet/painting.h"

using grafcet_file::drawing;
using grafcet_file::program;

namespace {

constexpr double a4_short = 595.28, a4_long = 841.89, paper_margin = 24;  // points
constexpr double least_scale = 0.55;                                      // letters of 6 points

using surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using pen = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

pen pen_on(const surface& paper) { return {cairo_create(paper.get()), cairo_destroy}; }

// What has been written beside it takes the place of the file once it is whole.
void finish(const surface& paper, const std::string& path) {
  const std::string part = path + ".part";
  cairo_surface_finish(paper.get());
  const cairo_status_t status = cairo_surface_status(paper.get());
  std::error_code failed;
  if (status == CAIRO_STATUS_SUCCESS) std::filesystem::rename(part, path, failed);
  if (status == CAIRO_STATUS_SUCCESS && !failed) return;
  std::error_code ignored;
  std::filesystem::remove(part, ignored);
  throw std::runtime_error(path + ": " + (failed ? failed.message() : cairo_status_to_string(status)));
}

struct page {
  drawing shown;
  double w = 0, h = 0, scale = 0;
};

page page_of(const program& charts, const std::vector<int>& shown) {
  page best;
  for (const auto& [w, h] : {std::pair(a4_short, a4_long), std::pair(a4_long, a4_short)}) {
    const double room_w = w - 2 * paper_margin, room_h = h - 2 * paper_margin;
    drawing tried = lay_out(charts, painted_widths(), room_w / room_h, shown);
    const double scale = std::min({room_w / tried.width, room_h / tried.height, 1.0});
    if (scale > best.scale) best = {std::move(tried), w, h, scale};
  }
  return best;
}

std::vector<page> pages_of(const program& charts) {
  std::vector<page> pages;
  std::vector<int> together;
  for (int chart = 0; chart < static_cast<int>(charts.charts.size()); ++chart) {
    together.push_back(chart);
    page tried = page_of(charts, together);
    if (together.size() > 1 && tried.scale < least_scale) {
      together = {chart};
      tried = page_of(charts, together);
    }
    if (together.size() > 1) pages.pop_back();
    pages.push_back(std::move(tried));
  }
  return pages;
}

}  // namespace

void write_svg(const std::string& path, const program& charts) {
  const drawing shown = lay_out(charts, painted_widths());
  const surface paper(cairo_svg_surface_create((path + ".part").c_str(), shown.width, shown.height),
                      cairo_surface_destroy);
  cairo_svg_surface_set_document_unit(paper.get(), CAIRO_SVG_UNIT_PX);
  {
    const pen to = pen_on(paper);
    cairo_set_source_rgb(to.get(), 1, 1, 1);
    cairo_paint(to.get());
    paint(to.get(), charts, shown);
  }
  finish(paper, path);
}

void write_pdf(const std::string& path, const program& charts, const std::string& title) {
  const surface paper(cairo_pdf_surface_create((path + ".part").c_str(), a4_short, a4_long),
                      cairo_surface_destroy);
  cairo_pdf_surface_set_metadata(paper.get(), CAIRO_PDF_METADATA_TITLE, title.c_str());
  for (const page& it : pages_of(charts)) {
    cairo_pdf_surface_set_size(paper.get(), it.w, it.h);
    const pen to = pen_on(paper);
    cairo_translate(to.get(), (it.w - it.scale * it.shown.width) / 2, paper_margin);
    cairo_scale(to.get(), it.scale, it.scale);
    paint(to.get(), charts, it.shown);
    cairo_show_page(to.get());
  }
  finish(paper, path);
}
