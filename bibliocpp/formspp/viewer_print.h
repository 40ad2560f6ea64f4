#pragma once
// The messages as a printable document, PDF or PostScript.
//
// Pages are US letter, 612 * 792 points, in Times-Roman of 7 points. Line slot k of a page lies at
// y = 780 - 10k in PDF and 800 - 10k in PostScript; a character counts as 5 points wide, from x = 40.
//
// A document defines its columns with a #C or #P line before its first text: without columns every cell
// is cut to nothing. Parentheses are left out of cells, though they count for the width; backslashes are
// not escaped. Characters are written as single bytes in the Windows-1252 encoding, which the PDF file
// declares; "?" stands for those that it lacks. The PostScript font keeps its standard encoding, so that
// accented letters come out right in the PDF file only.
//
// Fixed on purpose, as readers of these files know them: the length of every PDF stream (73), the PDF
// cross-reference table (a reader rebuilds it), the PostScript page count (1), its "a4" beside a US letter
// box.

#include <ostream>
#include <span>
#include <string>

#include "bibliocpp/formspp/viewer_markup.h"

class OFD_afficheur_filtre_impression {
 public:
  // `count` lines from `first` on, none when it is null. They stay the caller's and must outlive this object.
  OFD_afficheur_filtre_impression(const std::string* first, int count);

  static int typeligne(const std::string& line) { return viewer_markup::typeligne(line); }

  // Write a whole document to an open stream, which is flushed after every line; failures are left to the
  // stream's state. The columns that one document ends with are those that the next begins with.
  void imprime_pdf(std::ostream& file);
  void imprime_postscript(std::ostream& file);

  // The steps of the two above: begin, then each line, with a page break (1 for the first) before the
  // line that opens a page, then end.
  void begin_pdf(std::ostream& file);
  void pdf(std::ostream& file, const std::string& line);
  void next_page_pdf(std::ostream& file, int page);
  void end_pdf(std::ostream& file);

  void begin_postscript(std::ostream& file);
  void postscript(std::ostream& file, const std::string& line);
  void next_page_postscript(std::ostream& file, int page);
  void end_postscript(std::ostream& file);

 private:
  struct page_format;
  static const page_format pdf_page, pdf_last_page, postscript_page;

  void restart_page();
  void write_line(std::ostream& file, const std::string& line, const page_format& format);
  void write_text(std::ostream& file, const std::string& line, const page_format& format) const;
  // The vertical rules of the block of columns that ends at the current line.
  void write_block_rules(std::ostream& file, const page_format& format) const;
  int left_of(int column) const;

  std::span<const std::string> lines;
  viewer_markup::column_table columns;
  int next_page_object = 0;  // PDF pages added after the first
  int current_line = 1;      // slot that the next line uses
  int block_start = 1;       // slot at which the current block of columns began
};
