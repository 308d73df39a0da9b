#include "platform/file_shell.h"

#include <cctype>

#include "platform/png_file.h"

namespace footlight::platform {

namespace {

// A page's name is ours, but it becomes a file's name: letters, digits, dashes and underscores only.
bool isPlainName(std::string_view name) {
  if (name.empty() || name.size() > 64) return false;
  for (const char c : name) {
    if (std::isalnum(static_cast<unsigned char>(c)) == 0 && c != '-' && c != '_') return false;
  }
  return true;
}

}  // namespace

bool FileShell::print(const PrintPage& page) {
  if (printFolder_.empty() || !isPlainName(page.name)) return false;
  return writePngFile(printFolder_ + "/" + std::string(page.name) + ".png", page.width, page.height,
                      page.pixels)
      .empty();
}

}  // namespace footlight::platform
