#pragma once
#include <string>
#include <vector>

// Pixels from the top left, three bytes each: red, green, blue. Throws a std::runtime_error with the file's
// name and the reason; a file that was there before is then left as it was.
void write_png(const std::string& path, const std::vector<unsigned char>& pixels, int width, int height);
