#pragma once
// A window that pages through marked-up messages (see viewer_markup.h) and exports them.

#include <FL/Fl_Browser.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Window.H>

#include <list>
#include <string>

#include "bibliocpp/formspp/viewer_display.h"
#include "bibliocpp/formspp/viewer_print.h"
#include "bibliocpp/formspp/viewer_text.h"

class Fl_FormsText;

// Exports go to "tmp.pdf", "tmp.ps" and "tmp.txt" in the current directory, over what is there: two viewers
// at work in one directory overwrite each other's files.
class OFD_afficheur {
 public:
  // Builds the window (820 * 500 pixels) without showing it. `parent` is what the viewer keeps inactive
  // while it is open; null when there is nothing to keep. `language`: 0 for French, any other for English.
  OFD_afficheur(Fl_Window* parent, int language);
  ~OFD_afficheur();
  OFD_afficheur(const OFD_afficheur&) = delete;
  OFD_afficheur& operator=(const OFD_afficheur&) = delete;

  // Shows the lines under a title (its first 81 characters) and returns once the operator leaves, by the
  // cancel button or by closing the window. Returns at once when the array is null or the list empty; an
  // array of no lines shows an empty page. The lines must stay as they are meanwhile; the list is copied.
  // `pdf_viewer` is the program that the PDF button opens its file with; empty for none.
  void activation(std::string* lines, int count, const std::string& title, const std::string& pdf_viewer);
  void activation(std::list<std::string>& lines, const std::string& title, const std::string& pdf_viewer);

  // What the buttons do while the viewer is open. Pages count from 0; moves to pages that there are not
  // are ignored. visu_page() shows the current page anew.
  void visu_page();
  void page_precedente();
  void page_suivante();
  void page_numero(int n);

  // Writes all lines to "tmp.txt", and says so in a message box, also if the file cannot be written.
  void fichier_texte();
  // Writes the document to "tmp.pdf". Says so in a message box, also if the file cannot be written; or, with
  // a PDF viewer given, goes on with imprime_tmp_pdf().
  void fichier_pdf();
  // Opens "tmp.pdf" in the PDF viewer, waits for its end and removes the file.
  void imprime_tmp_pdf() const;
  // Turns "tmp.ps" into a PDF with ps2pdf, opens that in acroread, waits for its end and removes both files.
  static void imprime_tmp_ps();

 private:
  void show(const std::string* lines, int count, const std::string& title, const std::string& pdf_viewer);
  void run();
  void go_to_typed_page();
  void add_browser_lines(std::string_view piece);
  void say_generated(const std::string& file) const;

  int language;
  int page = 0;
  OFD_afficheur_filtre_affichage display{nullptr, 0};
  OFD_afficheur_filtre_impression print{nullptr, 0};
  OFD_afficheur_filtre_texte text{nullptr, 0};
  std::string pdf_command;

  Fl_Window* form;
  Fl_Window* parent;
  Fl_FormsText* title_text;
  Fl_FormsText* page_text;
  Fl_Browser* browser;
  Fl_Button* previous;
  Fl_Button* next;
  Fl_Button* cancel;
  Fl_Button* pdf_export;
  Fl_Button* text_export;
  Fl_Input* page_input;
  Fl_Button* go;
};
