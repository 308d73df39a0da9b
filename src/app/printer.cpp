#include "app/printer.h"

#include <cstdint>
#include <cstring>
#include <vector>

#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "gfx/direct_draw_surface.h"
#include "gfx/window.h"
#include "platform/platform.h"
#include "platform/shot.h"

namespace footlight {

namespace {

// A landscape sheet of A4 at 100 dots an inch.
constexpr CXSize kPage(limits::usualOrSmall(1169, 57), limits::usualOrSmall(827, 40));
constexpr std::uint32_t kPaper = 0xFFFFFF;
constexpr const char* kDocument = "DocPrint";

constexpr std::size_t at(int x, int y, int width) {
  return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
}

// The largest size of the rectangle's shape that fits the page.
CXSize fitted(CXSize size) {
  const double shape = static_cast<double>(size.width) / size.height;
  const double page = static_cast<double>(kPage.width) / kPage.height;
  if (shape <= page) return {static_cast<int>(kPage.height * shape), kPage.height};
  return {kPage.width, static_cast<int>(kPage.width / shape)};
}

}  // namespace

CPrinter::CPrinter(CWindow* window, CXRect rect) : window_(window) {
  const CXRect screen(0, 0, window->GetScreenSize().width, window->GetScreenSize().height);
  print(rect.IsEmpty() ? screen : rect.Common(screen));
}

void CPrinter::print(CXRect rect) const {
  CDirectDrawSurface* surface = window_->getBackSurface();
  if (surface == nullptr || rect.IsEmpty()) return;
  window_->Invalidate();
  window_->Redraw();
  const int width = surface->Width();
  const int bytes = surface->GetPixelSize();
  const std::vector<std::uint32_t> picture =
      platform::expandFrame({surface->GetDataPtr().data(), surface->getPitch() * bytes, width,
                             surface->Height(), window_->GetBpp()});

  std::vector<std::uint32_t> page(static_cast<std::size_t>(kPage.mul()), kPaper);
  const CXSize size = fitted(rect.Size());
  const CXPoint corner = CXRect(0, 0, kPage.width, kPage.height).GetCenteredPosition(size);
  for (int y = 0; y < size.height; ++y) {
    const int sourceY = rect.top + y * rect.Height() / size.height;
    for (int x = 0; x < size.width; ++x) {
      const int sourceX = rect.left + x * rect.Width() / size.width;
      page[at(corner.x + x, corner.y + y, kPage.width)] = picture[at(sourceX, sourceY, width)];
    }
  }
  if (platform::current().shell().print({kDocument, kPage.width, kPage.height, page})) return;
  if (diagnose::isOn()) diagnose::report(diagnose::Group::file, kDocument, "", "the page cannot be written");
}

}  // namespace footlight
