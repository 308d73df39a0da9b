// Definition documents: 5 MB with 100,000 objects, beside the INI library inih on the same bytes, and the
// whole way until all objects exist.

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <ini.h>
#include <string>
#include <vector>

#include "files/text_coder.h"
#include "files/text_file_reader.h"
#include "objects/all_types.h"
#include "platform/headless/headless_platform.h"
#include "platform/posix/file_system.h"
#include "ratio_reporter.h"
#include "script/mc_objects_container.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/melements_loader.h"

namespace footlight {

namespace {

constexpr int kObjects = 100000;

const std::string& definition() {
  static const std::string text = [] {
    std::string made;
    for (int i = 0; i < kObjects; ++i) {
      const std::string name = "VAR" + std::to_string(i);
      made +=
          "OBJECT=" + name + "\n" + name + ":TYPE=INTEGER\n" + name + ":VALUE=" + std::to_string(i) + "\n";
    }
    return made;
  }();
  return text;
}

std::unique_ptr<CMElements> load() {
  CTextFileReader reader(nullptr, definition().data(), static_cast<int>(definition().size()));
  return CMElementsLoader::load(static_cast<CWindow*>(nullptr), &reader);
}

void readDocument(benchmark::State& state) {
  for (auto _ : state) {
    const auto document = load();
    if (document->getSize() != kObjects) std::exit(1);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * definition().size()));
}

// Lines are handed over and forgotten.
int countLine(void* user, const char* /*section*/, const char* /*name*/, const char* /*value*/) {
  ++*static_cast<int*>(user);
  return 1;
}

void readByInih(benchmark::State& state) {
  for (auto _ : state) {
    int lines = 0;
    ini_parse_string(definition().c_str(), countLine, &lines);
    if (lines != 3 * kObjects) std::exit(1);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * definition().size()));
}

// Lines are kept, as a document keeps them.
using Lines = std::vector<std::pair<std::string, std::string>>;
int keepLine(void* user, const char* /*section*/, const char* name, const char* value) {
  static_cast<Lines*>(user)->emplace_back(name, value);
  return 1;
}

void keepByInih(benchmark::State& state) {
  for (auto _ : state) {
    Lines lines;
    ini_parse_string(definition().c_str(), keepLine, &lines);
    if (lines.size() != 3 * kObjects) std::exit(1);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * definition().size()));
}

void buildObjects(benchmark::State& state) {
  for (auto _ : state) {
    const auto document = load();
    auto* scope = new CMC_ObjectsContainer(nullptr, "SCOPE", type::kScene);
    scope->resolveObjects(*document);
    if (scope->getElementsNo() != kObjects) std::exit(1);
    state.PauseTiming();
    CMC_Object::destroy(scope);
    state.ResumeTiming();
  }
}

// The life of a scene's objects, from the document that is read already to their end.
void comeAndGo(benchmark::State& state) {
  const auto document = load();
  for (auto _ : state) {
    auto* scope = new CMC_ObjectsContainer(nullptr, "SCOPE", type::kScene);
    scope->resolveObjects(*document);
    if (scope->getElementsNo() != kObjects) std::exit(1);
    CMC_Object::destroy(scope);
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * kObjects);
}

}  // namespace

}  // namespace footlight

int main(int count, char** words) {
  using namespace footlight;
  platform::HeadlessPlatform machine({}, std::make_unique<platform::PosixFileSystem>("."));
  platform::use(&machine);
  CMC_VariableFactory::initialize();
  installAllTypes();
  CMC_RunnerFactory::initialize();
  std::printf("%zu bytes, %d objects\n", definition().size(), kObjects);
  const auto add = [](const char* name, void (*run)(benchmark::State&)) {
    benchmark::RegisterBenchmark(name, run)->Unit(benchmark::kMillisecond);
  };
  add("engine/document of 100,000 objects", readDocument);
  add("inih/document of 100,000 objects", readByInih);
  add("inih, lines kept/document of 100,000 objects", keepByInih);
  add("engine/document and all its objects", buildObjects);
  add("engine/objects of a document in and out", comeAndGo);
  const int status = bench::runAll(count, words);
  CMC_RunnerFactory::done();
  CMC_VariableFactory::done();
  platform::use(nullptr);
  return status;
}
