#include "objects/gfx/mc_gr_buffer.h"

#include <algorithm>
#include <cstring>

#include "foundation/memory_budget.h"
#include "gfx/composite.h"
#include "gfx/pixel_format.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "objects/gfx/graphics_arguments.h"
#include "objects/gfx/graphics_methods.h"
#include "script/mc_runner.h"
#include "script/melement.h"

namespace footlight {

namespace {

// Calls `copy(row of the target, offset in the backup, bytes)` for each row under a stamp that lies inside
// the target; nothing when the target's pixels are out of reach.
template <class Copy>
void forRows(CGraphicsObject& target, const CXRect& area, Copy copy) {
  const auto pixels = target.GetDataPtr();
  const auto unit = static_cast<std::size_t>(target.GetPixelSize());
  const auto pitch = static_cast<std::size_t>(target.getPitch()) * unit;
  const auto rowBytes = static_cast<std::size_t>(area.Width()) * unit;
  for (int y = area.top; y < area.bottom; ++y) {
    const std::size_t start =
        static_cast<std::size_t>(y) * pitch + static_cast<std::size_t>(area.left) * unit;
    if (start + rowBytes > pixels.size()) return;
    copy(pixels.data() + start, static_cast<std::size_t>(y - area.top) * rowBytes, rowBytes);
  }
}

// Plain pixels that the blitters draw on.
bool isDrawable(CGraphicsObject& target) {
  target.DeCompress();
  target.unpack();
  const int bytes = target.GetPixelSize();
  return (bytes == 2 || bytes == 4) && target.getCompression() == _compression::none &&
         !target.GetDataPtr().empty();
}

}  // namespace

CMC_GrBuffer::CMC_GrBuffer(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kGrBuffer),
      sourceName_(element->getPropertyValue("SOURCE")),
      targetName_(element->getPropertyValue("DESTINY")),
      window_(container->getWindow()) {
  initializeBehaviours(container, element);
}

void CMC_GrBuffer::init() {
  resolve();
  CMC_Object::init();
}

void CMC_GrBuffer::resolve() {
  const CMC_ObjectsContainer* scope = getScene();
  if (scope == nullptr) return;
  source_ = scope->getGraphicsObject(sourceName_);
  if (targetName_ != "BACKGROUND") target_ = scope->getGraphicsObject(targetName_);
}

// The background is whatever is behind the screen now.
CGraphicsObject* CMC_GrBuffer::target() const {
  if (targetName_ != "BACKGROUND") return target_.get();
  const CRefreshScreen* screen = window_ != nullptr ? window_->getRefreshScreen() : nullptr;
  return screen != nullptr ? screen->getBackgroundIfc() : nullptr;
}

CMC_GrBuffer::Entry* CMC_GrBuffer::at(int number) const {
  return number >= 0 && number < kSlots ? entries_[static_cast<std::size_t>(number)].get() : nullptr;
}

void CMC_GrBuffer::invalidateIf(bool invalidates) const {
  if (invalidates && window_ != nullptr) window_->Invalidate();
}

int CMC_GrBuffer::create(CXPoint place, CXRect part) {
  const CGraphicsObject* source = source_.get();
  const Ref<CGraphicsObject> onto(target());
  if (source == nullptr || !onto || !isDrawable(*onto)) return kNone;
  if (part.IsEmpty()) part = CXRect(0, 0, source->Width(), source->Height());
  const std::int64_t width = std::int64_t{part.right} - part.left;
  const std::int64_t height = std::int64_t{part.bottom} - part.top;
  const bool fits = place.x >= 0 && place.y >= 0 && width > 0 && height > 0 &&
                    place.x + width < onto->Width() && place.y + height < onto->Height();
  const auto slot = std::ranges::find_if(entries_, [](const auto& entry) { return entry == nullptr; });
  const auto bytes = get_data_size(static_cast<int>(width), static_cast<int>(height), onto->getBpp());
  if (!fits || slot == entries_.end() || !memory::hasRoom(bytes)) return kNone;
  auto entry = std::make_unique<Entry>(Entry{place, part, onto.get(), onto->Size(), onto->getBpp(), {}});
  entry->backup.resize(static_cast<std::size_t>(bytes));
  forRows(*onto, CXRect(0, 0, part.Width(), part.Height()) + place,
          [&](const std::byte* row, std::size_t offset, std::size_t count) {
            std::memcpy(entry->backup.data() + offset, row, count);
          });
  *slot = std::move(entry);
  return static_cast<int>(slot - entries_.begin());
}

void CMC_GrBuffer::draw(int number, bool invalidates) {
  const Entry* entry = at(number);
  const Ref<CGraphicsObject> source(source_.get());
  const Ref<CGraphicsObject> onto(target());
  if (entry == nullptr || !source || !onto) return;
  if (const Ref<CGraphicsObject> shown(source->getDrawn()); shown) {
    const DrawnElsewhere elsewhere(shown.get(), entry->place - entry->part.LeftTop() + shown->getAnchor(),
                                   onto.get());
    shown->SetClippingRect(entry->part);
    shown->redraw(onto.get());
  }
  invalidateIf(invalidates);
}

void CMC_GrBuffer::undo(int number, bool invalidates) {
  const Entry* entry = at(number);
  if (entry == nullptr) return;
  const Ref<CGraphicsObject> onto = entry->target.get();
  const bool isSame = onto && onto->Size() == entry->targetSize && isDrawable(*onto) &&
                      onto->GetPixelSize() == get_pixel_size(entry->targetBpp);
  if (isSame) {
    forRows(*onto, CXRect(0, 0, entry->part.Width(), entry->part.Height()) + entry->place,
            [&](std::byte* row, std::size_t offset, std::size_t count) {
              std::memcpy(row, entry->backup.data() + offset, count);
            });
  }
  invalidateIf(invalidates);
}

void CMC_GrBuffer::flush(int number, bool restores) {
  if (at(number) == nullptr) return;
  if (restores) undo(number, false);
  entries_[static_cast<std::size_t>(number)].reset();
}

void CMC_GrBuffer::flushAll(bool restores) {
  for (int number = kSlots - 1; number >= 0; --number) flush(number, restores);
}

int CMC_GrBuffer::findAt(CXPoint place) const {
  for (int number = 0; number < kSlots; ++number) {
    const Entry* entry = at(number);
    if (entry != nullptr &&
        (CXRect(0, 0, entry->part.Width(), entry->part.Height()) + entry->place).IsInRect(place)) {
      return number;
    }
  }
  return kNone;
}

// Scripts' methods

namespace {

using Factory = CMC_VariableFactory;

Result create(CMC_GrBuffer& buffer, Call& call) {
  return Factory::makeInteger(buffer.create(graphics_methods::point(call, 0), rectangleArgument(call, 2)));
}

Result draw(CMC_GrBuffer& buffer, Call& call) {
  buffer.draw(call.integer(0), call.boolean(1));
  return {};
}

Result undo(CMC_GrBuffer& buffer, Call& call) {
  buffer.undo(call.integer(0), call.boolean(1));
  return {};
}

Result flush(CMC_GrBuffer& buffer, Call& call) {
  buffer.flush(call.integer(0), call.boolean(1));
  return {};
}

Result flushAll(CMC_GrBuffer& buffer, Call& call) {
  buffer.flushAll(call.boolean(0));
  return {};
}

Result findAt(CMC_GrBuffer& buffer, Call& call) {
  return Factory::makeInteger(buffer.findAt(graphics_methods::point(call, 0)));
}

constexpr Method kMethods[] = {
    {1, "CREATE", "x:int, y:int, [left:int], [top:int], [right:int], [bottom:int] -> int", method<create>,
     "Prepares a stamp at a place of the target, in its pixels: of all of the source or of a part of it. "
     "Gives "
     "its number, -1 where it does not lie inside the target or where there are 1000 already."},
    {2, "DRAW", "stamp:int, redraws:bool", method<draw>,
     "Stamps; with TRUE the screen is drawn anew with the next frame."},
    {3, "UNDO", "stamp:int, redraws:bool", method<undo>,
     "Brings back what was under the stamp when it was prepared; with TRUE the screen is drawn anew."},
    {4, "FLUSH", "stamp:int, restores:bool", method<flush>,
     "Forgets a stamp; with TRUE what was under it comes back before."},
    {5, "FLUSHALL", "restores:bool", method<flushAll>,
     "The same for all stamps, from the highest number down."},
    {6, "FINDAT", "x:int, y:int -> int", method<findAt>,
     "The lowest number of a stamp at a place of the target, -1 for none."},
};

constexpr auto kProperties = std::to_array<Property>({
    {"SOURCE", PropertyKind::name, "", "The picture to stamp with."},
    {"DESTINY", PropertyKind::name, "",
     "The picture to stamp on; BACKGROUND stands for the screen's background."},
});

}  // namespace

extern constinit const ScriptType kGrBufferType = {
    .number = type::kGrBuffer,
    .definitionWord = "GRBUFFER",
    .meaning = "Stamps that can be taken back.",
    .pass = 5,
    .signals = kSignalsOfAll,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_GrBuffer>,
};

}  // namespace footlight
