#include "anim/frames.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "foundation/code_page.h"

namespace footlight::anim {

std::string setFrame(Description& description, std::size_t number, const image::Picture& picture) {
  std::string why;
  auto planes = image::packed(picture, description.form, &why);
  if (!planes) return why;
  AnnFrame& frame = description.animation.frames[number];
  frame.size = planes->size;
  frame.compression = planes->compression;
  frame.colour = std::move(planes->colour);
  frame.alpha = std::move(planes->alpha);
  return {};
}

std::optional<image::Picture> pictureOf(const AnnFile& animation, std::size_t number, std::string* why) {
  const AnnFrame& frame = animation.frames[number];
  ImgPicture planes;
  planes.size = frame.size;
  planes.bpp = animation.bpp;
  planes.compression = planes.stored = frame.compression;
  planes.position = frame.position;
  planes.colour = frame.colour;
  planes.alpha = frame.alpha;
  planes.hasAlpha = !frame.alpha.empty();
  return image::unpacked(std::move(planes), why);
}

Description describe(const AnnFile& animation) {
  Description description;
  description.animation = animation;
  description.form.bpp = animation.bpp;
  if (!animation.frames.empty()) description.form.packing = animation.frames.front().compression;
  for (std::size_t i = 0; i < animation.frames.size(); ++i) {
    char name[32];
    std::snprintf(name, sizeof name, "frame_%04zu.png", i);
    const CXSize size = animation.frames[i].size;
    description.pictures.emplace_back(size.width == 0 || size.height == 0 ? kNoPicture : name);
  }
  return description;
}

std::string summaryOf(const AnnFile& animation) {
  CXSize most;
  for (const AnnFrame& frame : animation.frames)
    most = {std::max(most.width, frame.size.width), std::max(most.height, frame.size.height)};
  std::string text = std::to_string(animation.frames.size()) + " frames of at most " +
                     std::to_string(most.width) + "x" + std::to_string(most.height) + ", " +
                     std::to_string(animation.bpp) + " bits per pixel, " + std::to_string(animation.fps) +
                     " frames a second\n";
  for (const _annEventInfo3& event : animation.events) {
    text += "event \"" + code_page::toUtf8(event.name.view()) + "\": " + std::to_string(event.frameCount()) +
            " positions";
    if (event.loopTo != 0)
      text += ", loop from " + std::to_string(event.loopFrom) + " to " + std::to_string(event.loopTo) +
              (event.loopCount == 0 ? " for ever" : ", " + std::to_string(event.loopCount) + " times");
    text += "\n";
  }
  return text;
}

}  // namespace footlight::anim
