#pragma once
// What is told about a controller: each call writes one line, "surveillant: " and a sentence in the
// language of the locale, to the standard error stream.

#include <chrono>
#include <string>

namespace tell {
void area_unusable(const std::string& reason);
// `error` is an errno. The status a shell would give: 127 when there is no such program, else 126.
int not_started(const std::string& program, int error);
void ended(int status);
void killed(int signal);
void not_attached(int ident);
void no_outputs();
void late(long long batches, std::chrono::milliseconds longest);
void outputs_dropped();
void plant_over();
void plant_killed(int ident);
}  // namespace tell
