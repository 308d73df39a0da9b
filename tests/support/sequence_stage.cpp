#include "support/sequence_stage.h"

#include "app/mc_scene.h"
#include "gfx/ann_format.h"
#include "script/mc_variable.h"

namespace footlight::test {

namespace {

constexpr int kRate = 22050;

Content animation(const std::vector<std::string>& events) {
  AnnFile made;
  for (int i = 0; i < 2; ++i) {
    AnnFrame frame;
    frame.size = {2, 2};
    frame.colour.assign(8, static_cast<std::byte>(i));
    made.frames.push_back(std::move(frame));
  }
  for (const std::string& name : events) {
    _annEventInfo3 event;
    event.name = name;
    if (name != "EMPTY") event.frames = {0, 1};
    if (name == "ROUND") event.loopTo = 1;
    made.events.push_back(std::move(event));
  }
  return std::make_shared<const std::vector<std::byte>>(writeAnn(made));
}

std::string sceneOf(const std::string& definitions) {
  std::string text = "DEF:LOG(TYPE=STRING)\nDEF:SAID(TYPE=STRING)\nDEF:LIST(TYPE=ARRAY)\n";
  text += "DEF:FIGURE(TYPE=ANIMO|FILENAME=OBJECT.ANN|TOCANVAS=TRUE|VISIBLE=TRUE)\n";
  text += "DEF:VOICE(TYPE=SOUND|FILENAME=VOICE.WAV)\nOBJECT=S\nS:TYPE=SEQUENCE\nS:FILENAME=S.SEQ\n";
  text += "S:ONSTARTED={LOG^ADD(\"<\");}\nS:ONFINISHED={LOG^ADD(\">\");}\n";
  for (char c = 'a'; c <= 'r'; ++c) {
    const std::string upper(1, static_cast<char>(c - 'a' + 'A'));
    text += "S:ONSTARTED^" + upper + "={LOG^ADD(\"+" + c + "\");}\n";
    text += "S:ONFINISHED^" + upper + "={LOG^ADD(\"-" + c + "\");}\n";
  }
  return text + definitions;
}

}  // namespace

std::string node(const std::string& name, const std::string& mode, const std::string& parent) {
  std::string text = "NAME=" + name + "\n" + name + ":TYPE=SEQUENCE\n" + name + ":MODE=" + mode + "\n";
  return parent.empty() ? text : text + name + ":ADD=" + parent + "\n";
}

std::string leaf(const std::string& name, const std::string& file, const std::string& event,
                 const std::string& parent) {
  std::string text = "NAME=" + name + "\n" + name + ":FILENAME=" + file + "\n";
  if (!event.empty()) text += name + ":EVENT=" + event + "\n";
  text += name + ":TYPE=SIMPLE\n";
  return parent.empty() ? text : text + name + ":ADD=" + parent + "\n";
}

std::string sound(const std::string& name, const std::string& file, const std::string& parent) {
  return leaf(name, file + ".WAV", "", parent);
}

std::string speaker(const std::string& name, const std::string& sound, const std::string& further,
                    const std::string& parent) {
  std::string text = "NAME=" + name + "\n" + name + ":TYPE=SPEAKING\n" + name + ":ANIMOFN=FIGURE\n" + name +
                     ":WAVFN=" + sound + "\n";
  text += further;
  return text + name + ":ADD=" + parent + "\n";
}

Stage::Stage(const std::string& text, const std::string& definitions) {
  const std::string dane = "C:\\GAME\\Dane\\";
  disk_[dane + "application.def"] =
      contentOf("DEF:MAIN(TYPE=SCENE)\nDEF:LAST(TYPE=SCENE)\nDEF:GAME(TYPE=APPLICATION|SCENES=MAIN,LAST)\n");
  disk_[dane + "MAIN.cnv"] = contentOf(sceneOf(definitions));
  disk_[dane + "S.SEQ"] = contentOf(text);
  disk_[dane + "FIGURE.ANN"] = disk_[dane + "OBJECT.ANN"] =
      animation({"GO", "ROUND", "EMPTY", "1", "START", "END", "P_A", "p_b", "P_START", "P_STOP"});
  disk_[dane + "NOEVENTS.ANN"] = animation({});
  for (const char* name : {"A", "C", "D", "VOICE"})
    disk_[std::string("C:\\GAME\\Wavs\\") + name + ".WAV"] = contentOf(waveFile(kRate / 10));
  disk_["C:\\GAME\\Wavs\\B.WAV"] = contentOf(waveFile(kRate / 5));
  disk_["C:\\GAME\\Wavs\\LONG.WAV"] = contentOf(waveFile(kRate));
  world_ = std::make_unique<World>(disk_, Rules());
  world_->tick();  // into the scene
  listen();
}

void Stage::listen() {
  const std::string log = text("LOG");
  if (!log.starts_with(log_)) log_.clear();  // the scene was left
  if (log.size() > log_.size()) {
    heard_ += (heard_.empty() ? "" : " ") + std::to_string(tick_) + log.substr(log_.size());
  }
  log_ = log;
}

Stage& Stage::run(const std::string& code) {
  world_->run(world_->scene(), "TEST", code);
  listen();
  return *this;
}

Stage& Stage::ticks(int count) {
  for (int i = 0; i < count && !world_->hasEnded(); ++i) {
    ++tick_;
    world_->tick();
    listen();
  }
  return *this;
}

std::string Stage::text(const char* name) {
  CMC_Scene* scene = world_->scene();
  const auto* value = scene != nullptr ? scene->CMC_ObjectsContainer::find<CMC_String>(name) : nullptr;
  return value != nullptr ? value->toString().str() : std::string();
}

}  // namespace footlight::test
