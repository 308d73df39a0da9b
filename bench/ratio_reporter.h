#pragma once

// Benchmarks are named "engine/WORK" and "PEER/WORK". After the usual table the reporter prints, for each
// work, how many times the peer's speed the engine reached in this run.

#include <benchmark/benchmark.h>
#include <map>
#include <string>

namespace footlight::bench {

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  // Work, then who does it, then the shortest time of a round.
  std::map<std::string, std::map<std::string, double>> times_;
};

// Runs the benchmarks of the program as the command line says; gives the exit status.
int runAll(int count, char** words);

}  // namespace footlight::bench
