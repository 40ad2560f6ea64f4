#include "outils/examen/report.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "bibliocpp/formspp/viewer_print.h"
#include "bibliocpp/language.h"
#include "bibliocpp/signal_files.h"
#include "outils/examen/evidence.h"
#include "outils/examen/harmless.h"
#include "outils/examen/number_text.h"
#include "outils/examen/page_text.h"
#include "outils/examen/signal_chart.h"

namespace fs = std::filesystem;

namespace {

constexpr double chart_seconds = 4;

void write_file(const fs::path& path, const std::string& contents) {
  errno = 0;
  std::ofstream file(path, std::ios::binary);
  if (!(file << contents) || !file.flush())
    throw report_error(tr("{} ne s'écrit pas : {}", {path, std::strerror(errno != 0 ? errno : EIO)}));
}

void add_head(std::vector<std::string>& page, const std::string& title, const verdict& v) {
  page.emplace_back("#P T108 T");
  page.emplace_back("#T");
  add_wrapped(page, harmless(title));
  add_wrapped(page, harmless(v.candidate) + " - " + harmless(v.command));
  page.emplace_back("#T");
  add_wrapped(page, sentence_of(v));
  page.emplace_back("#T");
  add_wrapped(page,
              tr("Durée : {} de la maquette, {} s en réalité. Lots d'entrées sans réponse : {}.",
                 {in_seconds(v.cycles), with_decimals(v.wall_seconds, 2), std::to_string(v.unanswered)}));
  for (const std::string& remark : v.remarks) add_wrapped(page, harmless(remark));
}

void add_section(std::vector<std::string>& page, const std::string& name,
                 const std::vector<std::string>& lines) {
  if (lines.empty()) return;
  for (const std::string& line : {std::string("#T"), std::string(), in_page(name), std::string("#T")})
    page.push_back(line);
  for (const std::string& line : lines) add_wrapped(page, line);
}

void add_chart(std::vector<std::string>& page, const verdict& v, medium shown_in) {
  try {
    const signal_record record = read_vcd(fs::path(v.evidence) / evidence_files::signals);
    add_section(page, tr("Les signaux à la fin"), {" "});
    for (const std::string& line : signal_chart(record, chart_seconds, shown_in)) page.push_back(line);
  } catch (const signal_file_error&) {
    // The run came to an end before there were signals.
  }
}

std::vector<std::string> page_of(const std::string& title, const verdict& v, medium shown_in) {
  std::vector<std::string> page;
  add_head(page, title, v);
  add_section(page, tr("Ce qui est arrivé"), happened(v));
  add_chart(page, v, shown_in);
  add_section(page, tr("Son erreur standard, à la fin"), last_errors(v));
  page.emplace_back("#T");
  return page;
}

void write_page(const std::string& title, const verdict& v) {
  std::string text;
  for (const std::string& line : page_of(title, v, medium::window)) text += line + "\n";
  write_file(fs::path(v.evidence) / evidence_files::page, text);
  const std::vector<std::string> page = page_of(title, v, medium::print);
  std::ostringstream pdf;
  OFD_afficheur_filtre_impression(page.data(), static_cast<int>(page.size())).imprime_pdf(pdf);
  write_file(fs::path(v.evidence) / evidence_files::pdf, pdf.str());
}

std::string links_of(const verdict& v) {
  const std::array<std::pair<const char*, std::string>, 4> files{
      {{evidence_files::pdf, tr("page")},
       {evidence_files::signals, tr("signaux")},
       {evidence_files::errors, tr("erreur standard")},
       {evidence_files::picture, tr("image")}}};
  std::string links;
  const std::string folder = fs::path(v.evidence).filename();
  for (const auto& [file, name] : files)
    if (fs::exists(fs::path(v.evidence) / file))
      links.append("<a href=\"")
          .append(folder)
          .append("/")
          .append(file)
          .append("\">")
          .append(name)
          .append("</a> ");
  if (fs::exists(fs::path(v.evidence) / evidence_files::picture))
    links += "<br><img width=\"240\" alt=\"\" src=\"" + folder + "/" + evidence_files::picture + "\">";
  return links;
}

}  // namespace

std::string evidence_folder(const std::string& report, std::size_t number, const std::string& candidate) {
  constexpr std::size_t most = 40;
  std::string name;
  for (const char c : candidate.substr(0, most)) {
    const bool is_plain =
        (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-';
    name += is_plain ? c : '_';
  }
  std::array<char, 32> digits{};
  std::snprintf(digits.data(), digits.size(), "%03zu-", number);
  return fs::path(report) / (digits.data() + name);
}

void write_report(const std::string& report, const std::string& title, const std::vector<verdict>& all) {
  std::string rows;
  for (const verdict& v : all) {
    if (!v.evidence.empty()) write_page(title, v);
    rows += "<tr class=\"" + std::string(v.what == outcome::passed ? "good" : "bad") + "\"><td>" +
            as_markup(v.candidate) + "<td>" + as_markup(sentence_of(v), 600) + "<td>" + links_of(v) + "\n";
  }
  write_file(fs::path(report) / "index.html",
             "<!doctype html>\n<html><head><meta charset=\"utf-8\"><title>" + as_markup(title) +
                 "</title>\n<style>body{font-family:sans-serif;margin:2em}table{border-collapse:collapse}"
                 "td{border:1px solid #bbb;padding:.4em;vertical-align:top}.good{background:#e4f5e4}"
                 ".bad{background:#fbe8e4}</style></head>\n<body><h1>" +
                 as_markup(title) + "</h1>\n<table>\n" + rows + "</table></body></html>\n");
}
