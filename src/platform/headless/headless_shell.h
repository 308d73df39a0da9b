#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/display.h"
#include "platform/file_shell.h"

namespace footlight::platform {

// Keeps what the engine asked of the shell; boxes answer themselves.
class HeadlessShell : public FileShell {
 public:
  static constexpr std::size_t kRememberedBoxes = 256;  // later ones are only counted

  // Texts in code page 1250.
  struct Box {
    std::string caption;
    std::string text;
  };

  using FileShell::FileShell;

  void messageBox(std::string_view caption, std::string_view text) override;
  void setCursor(Cursor cursor) override { cursor_ = cursor; }
  void showCursor(bool visible) override { cursorVisible_ = visible; }
  void clipCursor(int left, int top, int right, int bottom) override {
    clip_ = Rect{left, top, right, bottom};
  }
  void releaseCursor() override { clip_.reset(); }

  const std::vector<Box>& boxes() const { return boxes_; }
  std::size_t boxCount() const { return boxCount_; }
  Cursor cursor() const { return cursor_; }
  bool isCursorVisible() const { return cursorVisible_; }
  const std::optional<Rect>& clip() const { return clip_; }

 private:
  std::vector<Box> boxes_;
  std::size_t boxCount_ = 0;
  Cursor cursor_ = Cursor::none;
  bool cursorVisible_ = true;
  std::optional<Rect> clip_;
};

}  // namespace footlight::platform
