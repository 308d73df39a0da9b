#include "state.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "app/mc_application.h"
#include "app/mc_episode.h"
#include "app/unit6.h"
#include "foundation/random.h"
#include "foundation/xtimer.h"
#include "gfx/direct_draw_surface.h"
#include "gfx/refresh_screen.h"
#include "input/hot_spot.h"
#include "objects/gfx/mc_animo.h"
#include "objects/gfx/mc_image.h"
#include "objects/input/mc_button.h"
#include "objects/sound/mc_sequence.h"
#include "objects/sound/mc_sound.h"
#include "objects/system/mc_timer.h"
#include "objects/text/mc_text.h"
#include "script/code_lines.h"
#include "script/mc_behaviour.h"
#include "script/mc_class.h"
#include "script/mc_groupped.h"
#include "script/mc_structure.h"
#include "script/mc_variable.h"
#include "support/game_world.h"

namespace footlight::fuzz {

using test::World;

namespace {

constexpr int kDeepest = 16;  // levels and instances within each other

[[noreturn]] void contradiction(const std::string& what) {
  std::fprintf(stderr, "The state contradicts itself: %s\n", what.c_str());
  std::abort();
}

// Takes the numbers away behind "temp_", which all code of one process shares.
std::string withoutNumbers(const std::string& text) {
  constexpr std::string_view kPrefix = "temp_";
  std::string result;
  std::size_t position = 0;
  for (std::size_t found = text.find(kPrefix); found != std::string::npos;
       found = text.find(kPrefix, position)) {
    const std::size_t end = found + kPrefix.size();
    result.append(text, position, end - position);
    position = std::min(text.find_first_not_of("0123456789", end), text.size());
  }
  return result.append(text, position);
}

bool isInnerCode(const CMC_Object& object) {
  return object.getType() == type::kBehaviour &&
         (object.getName().startsWith("temp_") || object.getName().startsWith("xtemp_"));
}

// A parent or a level of the game, which a container only refers to.
bool isLevelAround(const CMC_ObjectsContainer& container, const CMC_Object& object) {
  const int type = object.getType();
  const CMC_ObjectsContainer* parent = container.getParent();
  return type == type::kApplication || type == type::kEpisode || type == type::kScene ||
         (parent != nullptr && (&object == parent || &object == parent->getParent()));
}

// Grows the text of one world.
class Writer {
 public:
  std::string take() { return std::move(text_); }

  template <class... Parts>
  void line(const Parts&... parts) {
    text_.append(static_cast<std::size_t>(depth_) * 2, ' ');
    (add(parts), ...);
    text_ += '\n';
  }
  void level(const CMC_ObjectsContainer& container);
  void timers(const CXTimer& timers);
  void screen(const CRefreshScreen& screen);

 private:
  void add(std::string_view part) { text_ += part; }
  void add(const char* part) { text_ += part; }
  void add(char part) { text_ += part; }
  void add(double part) { add(std::bit_cast<std::uint64_t>(part)); }
  template <class Number>
  requires std::is_integral_v<Number>
  void add(Number part) { text_ += std::to_string(part); }

  void object(const CMC_Object& object);
  void member(const CMC_ObjectsContainer& container, const CMC_Object& object);
  void bindings(const CMC_Object& object);
  void value(const CMC_Variable& variable);
  void behaviour(const CMC_Behaviour& behaviour);
  void group(const CMC_Groupped& group);
  void graphic(const CMC_Graphic& object);
  void button(const CMC_Button& object);
  void text(const CMC_Text& object);
  void particulars(const CMC_Object& object);
  void sceneParts(const CMC_Scene& scene);

  std::string text_;
  int depth_ = 0;
};

std::string nameOf(const CMC_Object* object) {
  return object != nullptr ? object->getName().str() : std::string("-");
}

const CMC_Object* asObject(const CXObject* object) { return dynamic_cast<const CMC_Object*>(object); }

template <class T>
const T* as(const CMC_Object& object) {
  return T::isTypeOf(object.getType()) ? dynamic_cast<const T*>(&object) : nullptr;
}

// Objects

void Writer::bindings(const CMC_Object& object) {
  for (const std::string_view signal : object.boundSignals()) {
    for (const auto& binding : *object.getBehaviour(signal)) {
      std::string arguments;
      if (binding->arguments != nullptr) {
        for (const CXString& argument : *binding->arguments) arguments += " '" + argument.str() + "'";
      }
      line("on ", signal, ": ", nameOf(binding->behaviour.get()), arguments, " of ",
           nameOf(binding->container.get()));
    }
  }
}

void Writer::value(const CMC_Variable& variable) {
  if (const auto* number = as<CMC_Double>(variable)) {
    line("double ", number->getValue());
  } else if (const auto* structure = as<CMC_Structure>(variable)) {
    for (int i = 0; i < structure->getFieldsNo(); ++i) object(*structure->getField(i));
  } else {
    line("value ", variable.toString());
  }
  if (variable.isToIni() || variable.isNetNotify()) line("ini ", variable.isToIni(), variable.isNetNotify());
}

void Writer::behaviour(const CMC_Behaviour& behaviour) {
  line(behaviour.isEnabled() ? "code " : "disabled code ", behaviour.getCode(), " if ",
       behaviour.getCodition());
  if (behaviour.getLines() == nullptr) {
    line("no lines");
  } else if (behaviour.getLines()->text() != behaviour.getCode()) {
    line("lines ", behaviour.getLines()->text());
  }
}

void Writer::group(const CMC_Groupped& group) {
  line("members ", group.toString(), " at ", group.getMarker());
}

void Writer::graphic(const CMC_Graphic& object) {
  const CGraphicsObject* graphic = object.getGraphic();
  if (graphic == nullptr) {
    line("no picture");
    return;
  }
  const CXRect place = graphic->GetBoundingBox();
  line("picture ", graphic->getObjectFileName(), " ", place.left, " ", place.top, " ", graphic->Width(), "x",
       graphic->Height(), " visible ", graphic->isVisible(), " opacity ", int{graphic->GetOpacity()},
       " anchor ", graphic->getAnchor().x, " ", graphic->getAnchor().y, " watched ",
       graphic->getMonitorCollisionsFlag());
  if (const auto* image = as<CMC_Image>(object))
    line("home ", image->GetStartingPosition().x, " ", image->GetStartingPosition().y);
  if (const auto* animation = as<CMC_Animo>(object)) {
    const CAnimo6& animo = *animation->getAnimo();
    line("event ", animo.GetEventName(animo.GetCurrentEvent()), " at ", animo.GetCurrentFrameInSequence(),
         " frame ", animo.Current(), " status ", static_cast<int>(animo.GetStatus()), " speed ",
         animo.getFPS());
  }
}

void Writer::text(const CMC_Text& object) {
  const CMultilineText6* text = object.getText();
  line("says ", text->getText(), " at ", text->GetPosition().x, " ", text->GetPosition().y, " ",
       text->Width(), "x", text->Height(), " color ", text->getColor(), " visible ", text->isVisible(),
       " words ", text->getNumWords(), " font ", text->getFont() != nullptr);
}

void Writer::button(const CMC_Button& object) {
  const CButton* button = object.getButton();
  if (button == nullptr) return;
  line("button ", button->IsEnabled(), button->IsDraggingEnabled(), " priority ", button->getPriority(),
       " last click ", button->getClick().x, " ", button->getClick().y);
}

void Writer::sceneParts(const CMC_Scene& scene) {
  line("current ", nameOf(scene.getCurrentScene()), " pending ", nameOf(scene.getPending()), " dragged ",
       scene.getDraggedName(), " music ", scene.getMusicFilename(), " ", scene.shouldMusicBeStarted());
  for (const CMC_Scene* entered : scene.getHistory()) line("entered ", nameOf(entered));
  if (const auto* episode = as<CMC_Episode>(scene)) line("latest ", episode->getLatestScene());
}

void Writer::particulars(const CMC_Object& object) {
  if (const auto* variable = as<CMC_Variable>(object)) value(*variable);
  if (const auto* procedure = as<CMC_Behaviour>(object)) behaviour(*procedure);
  if (const auto* members = as<CMC_Groupped>(object)) group(*members);
  if (const auto* picture = as<CMC_Graphic>(object)) graphic(*picture);
  if (const auto* control = as<CMC_Button>(object)) button(*control);
  if (const auto* note = as<CMC_Text>(object)) text(*note);
  if (const auto* sound = as<CMC_Sound>(object); sound != nullptr && sound->getSound() != nullptr)
    line("sound ", sound->getSound()->getFileName(), " status ", sound->getSound()->getStatus());
  if (const auto* sequence = as<CMC_Sequence>(object);
      sequence != nullptr && sequence->getLoadedSequence() != nullptr)
    line("sequence ", sequence->getLoadedSequence()->getStatus(), " event ",
         sequence->getLoadedSequence()->getLastPlayedEvent());
  if (const auto* timer = as<CMC_Timer>(object)) line("timer ", timer->isEnabled(), " ", timer->getTicks());
  if (const auto* instance = as<CMC_Class>(object)) level(*instance);
}

void Writer::object(const CMC_Object& object) {
  line(object.getName(), " #", object.getType(), object.isClone() ? " clone" : "",
       object.isTemporary() ? " temporary" : "", " clones ", object.getClonesNo(), " in ",
       nameOf(object.getScene()), " of ", nameOf(object.getClass()),
       object.overridesSignals() ? "" : " keeps signals");
  ++depth_;
  std::uint32_t flags = 0;
  for (int i = 0; i < 32; ++i) flags |= object.isSignalBound(i) ? 1U << i : 0U;
  line("flags ", flags);
  bindings(object);
  particulars(object);
  --depth_;
}

void Writer::member(const CMC_ObjectsContainer& container, const CMC_Object& object) {
  if (container.getOwnObject(object.getName()) != &object)
    contradiction("two objects of the name " + nameOf(&object) + " in " + nameOf(&container));
  if (object.isDisposed()) contradiction("a dead object " + nameOf(&object) + " in " + nameOf(&container));
  if (isLevelAround(container, object)) {
    line("reaches ", object.getName());
  } else {
    this->object(object);
  }
}

// Where among the others code within code stands is the interpreter's own matter: it comes
// behind them, sorted.
void Writer::level(const CMC_ObjectsContainer& container) {
  if (depth_ >= kDeepest) return;
  line("scope ", container.getName(), " parent ", nameOf(container.getParent()), " runs ",
       nameOf(container.getScene()));
  ++depth_;
  bindings(container);
  if (const auto* scene = as<CMC_Scene>(container)) sceneParts(*scene);
  std::vector<std::string> innerCode;
  for (int i = 0; i < container.getElementsNo(); ++i) {
    const CMC_Object& object = *container.getObject(i);
    const std::size_t start = text_.size();
    member(container, object);
    if (!isInnerCode(object)) continue;
    innerCode.push_back(withoutNumbers(text_.substr(start)));
    text_.resize(start);
  }
  std::sort(innerCode.begin(), innerCode.end());
  for (const std::string& text : innerCode) text_ += text;
  --depth_;
}

// The rest

void Writer::timers(const CXTimer& timers) {
  const std::uint32_t now = platform::current().clock().ticks();
  line("timers run ", CXTimer::isEnabled());
  for (const auto& timer : timers.timers()) {
    if (timer->isToDelete() || !timer->receiver) continue;
    line("timer ", timer->interval, " fired ", timer->count, " since ", now - timer->last, " paused ",
         timer->pausedFor, " tells ", nameOf(asObject(timer->receiver.get())));
  }
}

void Writer::screen(const CRefreshScreen& screen) {
  for (const auto& element : screen.queue().elements()) {
    const CGraphicsObject* shown = element->object.get();
    if (shown == nullptr) continue;
    line("shown ", element->priority, " ", element->flags, " ", shown->getRect().left, " ",
         shown->getRect().top, " ", shown->Width(), "x", shown->Height(), " ", shown->isVisible());
  }
  line("frames ", screen.getFrameCount());
}

std::uint64_t hashOf(std::span<const std::byte> bytes) {
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (; bytes.size() >= sizeof hash; bytes = bytes.subspan(sizeof hash)) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data(), sizeof word);
    hash = std::rotl((hash ^ word) * 0x100000001B3U, 29);
  }
  return hash;
}

void allLevels(Writer& writer, const CMC_Scene& scene) {
  writer.level(scene);
  for (const CMC_Scene* below : scene.getSubScenes()) allLevels(writer, *below);
}

void machineParts(Writer& writer, World& world) {
  const auto& shell = world.machine().shell();
  writer.line("clock ", world.machine().clock().ticks(), " chance ", CXRandom::next(), " boxes ",
              shell.boxCount(), " cursor ", static_cast<int>(shell.cursor()), shell.isCursorVisible());
  const CWindow& window = world.window();
  writer.line("window ", window.isActive(), window.isQuitting(), CWindow::isPaused(), window.isMouseEnabled(),
              " music ", window.getMusicFileName(), " ", window.getMusicVolume(), " spots ",
              CHotSpot::getMinPriority(), " ", CHotSpot::getMaxPriority());
  if (CDirectDrawSurface* back = window.getBackSurface()) writer.line("frame ", hashOf(back->GetDataPtr()));
}

}  // namespace

std::string describe(World& world) {
  Writer writer;
  if (world.game() == nullptr) return "no game\n";
  allLevels(writer, *world.game());
  writer.timers(*world.window().GetTimerInterface());
  if (const CRefreshScreen* screen = world.window().getRefreshScreen()) writer.screen(*screen);
  machineParts(writer, world);
  return withoutNumbers(writer.take());
}

std::string describeDisk(const World& world) {
  std::string text;
  for (const auto& [name, content] : world.files().changes()) {
    text += "file " + name + "\n";
    if (content != nullptr) text.append(reinterpret_cast<const char*>(content->data()), content->size());
    text += "\n";
  }
  return withoutNumbers(text);
}

}  // namespace footlight::fuzz
