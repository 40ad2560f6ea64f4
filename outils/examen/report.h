#pragma once
#include <stdexcept>
#include <string>
#include <vector>

#include "outils/examen/verdict.h"

// Its text names the file and the reason, in the language of the locale.
struct report_error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The folder for a candidate's evidence within a report: "03-name", unique by its number (from 1 on),
// whatever the name holds.
std::string evidence_folder(const std::string& report, std::size_t number, const std::string& candidate);

// Writes each candidate's page into its folder of evidence, as text in the markup of visionneuse and as PDF,
// and index.html, which leads to all, into the report's folder. Both folders are there; what a run has not
// left is left out. Throws a report_error.
void write_report(const std::string& report, const std::string& title, const std::vector<verdict>& all);
