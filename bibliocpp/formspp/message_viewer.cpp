#include "bibliocpp/formspp/message_viewer.h"

#include <FL/Fl.H>
#include <FL/forms.H>

#include <cstdlib>
#include <fstream>
#include <string_view>
#include <vector>

#include "bibliocpp/Stringpp.h"
#include "bibliocpp/formspp/current_group.h"
#include "bibliocpp/formspp/string_dialogs.h"

namespace {

Fl_Button* add_button(int x, int y, int w, int h, const char* label) {
  Fl_Button* const button = fl_add_button(FL_NORMAL_BUTTON, x, y, w, h, label);
  button->labelfont(FL_TIMES);
  button->labelsize(10);
  return button;
}

// The toolkit draws symbols at "@" in labels; a doubled one stands for itself.
std::string without_symbols(std::string_view label) {
  std::string plain;
  for (const char c : label) plain.append(c == '@' ? 2 : 1, c);
  return plain;
}

void run_command(const std::string& command) {
  [[maybe_unused]] const int ignored = std::system(command.c_str());
}

}  // namespace

OFD_afficheur::OFD_afficheur(Fl_Window* a_parent, int a_language) : language(a_language), parent(a_parent) {
  const auto label = [this](const char* french, const char* english) {
    return language == 0 ? french : english;
  };

  const current_group none(nullptr);
  form = fl_bgn_form(FL_NO_BOX, 820, 500);
  fl_add_box(FL_UP_BOX, 0, 0, 820, 500, "");
  browser = fl_add_browser(FL_HOLD_BROWSER, 10, 50, 800, 370, nullptr);
  browser->box(FL_DOWN_BOX);
  browser->color(FL_BACKGROUND_COLOR);
  browser->labelfont(FL_TIMES);
  title_text = fl_add_text(FL_NO_BOX, 230, 20, 310, 20, nullptr);
  title_text->labelfont(FL_HELVETICA_BOLD);
  title_text->labelsize(12);
  title_text->align(FL_ALIGN_INSIDE);
  page_text = fl_add_text(FL_NO_BOX, 80, 20, 120, 20, nullptr);
  page_text->align(FL_ALIGN_LEFT);
  next = add_button(270, 430, 120, 20, label("page suivante", "next page"));
  previous = add_button(270, 460, 120, 20, label("page precedente", "previous page"));
  cancel = add_button(40, 430, 90, 50, label("ANNULER", "CANCEL"));
  pdf_export = add_button(460, 430, 100, 50, label("fichier pdf", "pdf file"));
  text_export = add_button(660, 430, 100, 50, label("fichier texte", "text file"));
  page_input = fl_add_input(FL_NORMAL_INPUT, 150, 445, 40, 20, "");
  go = fl_add_button(FL_NORMAL_BUTTON, 190, 445, 20, 20, "");
  form->end();  // fl_end_form() turns y upside down in a program that has not called fl_initialize()
}

OFD_afficheur::~OFD_afficheur() { delete form; }

void OFD_afficheur::activation(std::string* lines, int count, const std::string& title,
                               const std::string& pdf_viewer) {
  if (parent != nullptr) parent->deactivate();
  if (lines != nullptr) show(lines, count, title, pdf_viewer);
  if (parent != nullptr) parent->activate();
}

void OFD_afficheur::show(const std::string* lines, int count, const std::string& title,
                         const std::string& pdf_viewer) {
  constexpr int title_length = 81;
  const current_group none(nullptr);  // which showing a window makes it anyway
  pdf_command = pdf_viewer;
  page = 0;
  display = {lines, count};
  print = {lines, count};
  text = {lines, count};
  visu_page();
  const std::string_view shown_title = viewer_markup::first_characters(title, title_length);
  fl_set_object_Slabel(title_text, without_symbols(shown_title), -1);
  fl_show_form(form, FL_PLACE_MOUSE, FL_TRANSIENT, "");
  run();
  display = {nullptr, 0};  // the lines are the caller's again
  print = {nullptr, 0};
  text = {nullptr, 0};
}

void OFD_afficheur::activation(std::list<std::string>& lines, const std::string& title,
                               const std::string& pdf_viewer) {
  std::vector<std::string> array(lines.begin(), lines.end());
  activation(array.empty() ? nullptr : array.data(), static_cast<int>(array.size()), title, pdf_viewer);
}

// The form also leaves the screen when the operator closes it with the window manager or Escape.
void OFD_afficheur::run() {
  while (form->shown()) {
    const Fl_Widget* const used = Fl::readqueue();
    if (used == nullptr)
      Fl::wait();
    else if (used == previous)
      page_precedente();
    else if (used == next)
      page_suivante();
    else if (used == pdf_export)
      fichier_pdf();
    else if (used == text_export)
      fichier_texte();
    else if (used == go)
      go_to_typed_page();
    else if (used == cancel)
      fl_hide_form(form);
  }
  // Clicks that followed the last one must not reach the next activation.
  while (Fl::readqueue() != nullptr) {
  }
}

void OFD_afficheur::go_to_typed_page() {
  const long typed = Stol(page_input->value());
  if (typed >= 1 && typed <= display.nb_pages() + 1) page_numero(static_cast<int>(typed - 1));
}

void OFD_afficheur::page_precedente() { page_numero(page - 1); }
void OFD_afficheur::page_suivante() { page_numero(page + 1); }

void OFD_afficheur::page_numero(int n) {
  if (n < 0 || n > display.nb_pages()) return;
  page = n;
  visu_page();
}

void OFD_afficheur::visu_page() {
  const std::string shown = display.visu_page(page);
  browser->clear();
  for (std::string_view rest = shown; !rest.empty();) {
    const std::size_t end = rest.find('\n');
    add_browser_lines(rest.substr(0, end));
    rest.remove_prefix(end + 1);
  }
  constexpr int page_text_length = 25;
  const std::string number = std::to_string(page + 1);
  const std::string position = "page " + number + " / " + std::to_string(display.nb_pages() + 1) + "    ";
  fl_set_object_Slabel(page_text, position, page_text_length);
  fl_set_Sinput(page_input, number);
}

// Deliberate: the character at each cut is lost.
void OFD_afficheur::add_browser_lines(std::string_view piece) {
  constexpr int longest = 161;
  while (true) {
    const std::string_view line = viewer_markup::first_characters(piece, longest);
    fl_add_browser_Sline(browser, std::string(line));
    if (line.size() == piece.size()) return;
    piece.remove_prefix(viewer_markup::first_characters(piece, longest + 1).size());
  }
}

void OFD_afficheur::fichier_texte() {
  std::ofstream file("tmp.txt");
  if (file) text.imprime(file);
  file.close();
  say_generated("tmp.txt");
}

void OFD_afficheur::fichier_pdf() {
  std::ofstream file("tmp.pdf");
  if (file) print.imprime_pdf(file);
  file.close();
  if (pdf_command.empty())
    say_generated("tmp.pdf");
  else
    imprime_tmp_pdf();
}

void OFD_afficheur::say_generated(const std::string& file) const {
  fl_show_Smessages(language == 0 ? "generation du fichier " + file : "generation of " + file + " file");
}

void OFD_afficheur::imprime_tmp_pdf() const {
  run_command("\"" + pdf_command + "\" tmp.pdf");
  run_command("rm tmp.pdf");
}

void OFD_afficheur::imprime_tmp_ps() {
  for (const char* const command : {"ps2pdf tmp.ps", "acroread tmp.pdf", "rm tmp.pdf", "rm tmp.ps"})
    run_command(command);
}
