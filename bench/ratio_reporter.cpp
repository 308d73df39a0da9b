#include "ratio_reporter.h"

#include <algorithm>
#include <cstdio>

namespace footlight::bench {

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  ConsoleReporter::ReportRuns(runs);
  for (const Run& run : runs) {
    if (run.error_occurred || run.run_type != Run::RT_Iteration) continue;
    const std::string& name = run.run_name.function_name;
    const std::size_t slash = name.find('/');
    if (slash == std::string::npos) continue;
    const double time = run.GetAdjustedCPUTime();
    auto [place, isNew] = times_[name.substr(slash + 1)].try_emplace(name.substr(0, slash), time);
    if (!isNew) place->second = std::min(place->second, time);
  }
}

void RatioReporter::Finalize() {
  std::printf("\n%-44s %s\n", "work", "engine's speed, peer = 1 (best of all repetitions)");
  for (const auto& [work, times] : times_) {
    const auto engine = times.find("engine");
    if (engine == times.end()) continue;
    for (const auto& [peer, time] : times) {
      if (peer != "engine")
        std::printf("%-44s %6.2f  (%s)\n", work.c_str(), time / engine->second, peer.c_str());
    }
  }
}

int runAll(int count, char** words) {
  benchmark::Initialize(&count, words);
  if (benchmark::ReportUnrecognizedArguments(count, words)) return 1;
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return 0;
}

}  // namespace footlight::bench
