#include "anim/run.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include "anim/frames.h"
#include "anim/speech.h"
#include "anim/viewer.h"
#include "foundation/code_page.h"
#include "foundation/limits.h"
#include "image/machine_file.h"
#include "platform/posix/atomic_file.h"

namespace footlight::anim {

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::byte>;

constexpr std::int64_t kMostBytes = std::int64_t{1} << 30;
constexpr std::int64_t kMostDescriptionBytes = 16 << 20;

Outcome failure(const std::string& file, const std::string& why) { return {file + ": " + why, {}}; }

std::string within(const std::string& folder, const std::string& file) {
  return (fs::path(folder) / file).string();
}

std::optional<AnnFile> readAnimation(const std::string& file, Outcome& outcome) {
  std::string why;
  const auto bytes = image::readFile(file, kMostBytes, &why);
  const char* fault = nullptr;
  auto animation = bytes ? readAnn(*bytes, &fault) : std::nullopt;
  if (!animation) outcome = failure(file, fault != nullptr ? fault : why);
  return animation;
}

Outcome runInfo(const Words& words) {
  Outcome outcome;
  if (const auto animation = readAnimation(words.file, outcome)) outcome.text = summaryOf(*animation);
  return outcome;
}

std::optional<Description> readDescription(const std::string& file, Outcome& outcome) {
  std::string why;
  const auto text = image::readFile(file, kMostDescriptionBytes, &why);
  auto description =
      text ? parse({reinterpret_cast<const char*>(text->data()), text->size()}, &why) : std::nullopt;
  if (!description) outcome = failure(file, why);
  return description;
}

// The pictures of all frames; one that stands for several is read once.
Outcome readFrames(const std::string& folder, Description& description) {
  std::map<std::string, image::Picture> read;
  for (std::size_t i = 0; i < description.pictures.size(); ++i) {
    const std::string& name = description.pictures[i];
    if (name == kNoPicture) continue;
    std::string why;
    auto known = read.find(name);
    if (known == read.end()) {
      const auto bytes = image::readFile(within(folder, name), limits::kPictureFileBytes, &why);
      auto picture = bytes ? image::readPicture(*bytes, &why) : std::nullopt;
      if (!picture) return failure(within(folder, name), why);
      known = read.emplace(name, std::move(*picture)).first;
    }
    why = setFrame(description, i, known->second);
    if (!why.empty()) return failure(within(folder, name), why);
  }
  return {};
}

Outcome runBuild(const Words& words) {
  Outcome outcome;
  const std::string file = within(words.folder, kDescriptionFile);
  auto description = readDescription(file, outcome);
  if (!description) return outcome;
  outcome = readFrames(words.folder, *description);
  if (!outcome.failure.empty()) return outcome;
  const Bytes written = writeAnn(description->animation);
  const char* fault = nullptr;
  if (!readAnn(written, &fault)) return failure(file, fault);  // the engine would refuse it
  const std::string why = platform::writeAtomically(words.file, written);
  if (!why.empty()) return failure(words.file, why);
  outcome.text = summaryOf(description->animation);
  return outcome;
}

Outcome writePictures(const Description& description, const std::string& folder) {
  for (std::size_t i = 0; i < description.pictures.size(); ++i) {
    if (description.pictures[i] == kNoPicture) continue;
    const std::string name = within(folder, description.pictures[i]);
    std::string why;
    const auto picture = pictureOf(description.animation, i, &why);
    const auto png = picture ? image::toPng(*picture, &why) : std::nullopt;
    if (!png) return failure("frame " + std::to_string(i), why);
    why = platform::writeAtomically(name, *png);
    if (!why.empty()) return failure(name, why);
  }
  return {};
}

Outcome runExtract(const Words& words) {
  Outcome outcome;
  const auto animation = readAnimation(words.file, outcome);
  if (!animation) return outcome;
  std::error_code error;
  fs::create_directories(words.folder, error);
  if (!fs::is_directory(words.folder, error)) return failure(words.folder, "the folder cannot be made");
  const Description description = describe(*animation);
  outcome = writePictures(description, words.folder);
  if (!outcome.failure.empty()) return outcome;
  const std::string text = print(description);
  const std::string name = within(words.folder, kDescriptionFile);
  const std::string why = platform::writeAtomically(name, std::as_bytes(std::span(text)));
  if (!why.empty()) return failure(name, why);
  outcome.text = summaryOf(*animation);
  return outcome;
}

Outcome runView(const Words& words) {
  Outcome outcome;
  const auto animation = readAnimation(words.file, outcome);
  if (!animation) return outcome;
  const std::string why = view(*animation, words);
  return why.empty() ? Outcome{} : failure(words.file, why);
}

Outcome runSpeech(const Words& words) {
  const auto prefix = code_page::fromUtf8(words.prefix);
  if (!prefix) return failure(words.file, "the prefix has letters that no event can have");
  Outcome outcome;
  if (const auto animation = readAnimation(words.file, outcome))
    outcome.text = speechOf(*animation, CXString(*prefix));
  return outcome;
}

}  // namespace

Outcome run(const Words& words) {
  constexpr Outcome (*kRuns[])(const Words&) = {runInfo, runBuild, runExtract, runView, runSpeech};
  return kRuns[static_cast<std::size_t>(words.command)](words);
}

}  // namespace footlight::anim
