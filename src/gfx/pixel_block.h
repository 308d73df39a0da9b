#pragma once

// Bytes that several graphic objects may share: the pixels of a picture, its alpha plane, its packed form. A
// change in place is seen by all who share the block; whoever takes a new block leaves the others theirs. The
// pixel format is kept with the bytes, so that one of the sharers may convert them for all.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace footlight {

class PixelBlock {
 public:
  // No bytes.
  PixelBlock() = default;
  PixelBlock(std::vector<std::byte> bytes, int bpp)
      : content_(std::make_shared<Content>(std::move(bytes), bpp)) {}

  // Zero-filled memory for a picture; none for a size that is empty or over the limits.
  static PixelBlock forPicture(int width, int height, int bpp);
  // A block of its own with the same content.
  PixelBlock copy() const { return content_ ? PixelBlock(content_->bytes, content_->bpp) : PixelBlock(); }

  explicit operator bool() const { return content_ != nullptr; }
  std::span<std::byte> bytes() const {
    return content_ ? std::span(content_->bytes) : std::span<std::byte>();
  }
  std::size_t size() const { return content_ ? content_->bytes.size() : 0; }
  int bpp() const { return content_ ? content_->bpp : 0; }
  // For all who share the block; there must be one.
  void setBpp(int bpp) { content_->bpp = bpp; }
  void reset() { content_.reset(); }
  bool shares(const PixelBlock& other) const { return content_ == other.content_; }

 private:
  struct Content {
    Content(std::vector<std::byte> b, int format) : bytes(std::move(b)), bpp(format) {}
    std::vector<std::byte> bytes;
    int bpp;
  };
  std::shared_ptr<Content> content_;
};

// True for sizes that a picture may have and that memory has room for; 64-bit so that no product can wrap.
bool isPictureSize(std::int64_t width, std::int64_t height);

}  // namespace footlight
