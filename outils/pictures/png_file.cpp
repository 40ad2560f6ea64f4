#include "outils/pictures/png_file.h"

#include <png.h>

#include <filesystem>
#include <stdexcept>

void write_png(const std::string& path, const std::vector<unsigned char>& pixels, int width, int height) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(width);
  image.height = static_cast<png_uint_32>(height);
  image.format = PNG_FORMAT_RGB;
  const std::string part = path + ".part";
  if (png_image_write_to_file(&image, part.c_str(), 0, pixels.data(), 0, nullptr) == 0)
    throw std::runtime_error(path + ": " + image.message);
  std::error_code failed;
  std::filesystem::rename(part, path, failed);
  if (!failed) return;
  std::filesystem::remove(part);
  throw std::runtime_error(path + ": " + failed.message());
}
