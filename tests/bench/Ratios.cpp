#include "Ratios.h"

#include <benchmark/benchmark.h>

#include <map>

#include "tests/support/TempFolder.h"

namespace bench {
namespace {

struct FigureRow {
  std::string name;
  double limit;
};

std::vector<FigureRow>& Figures() {
  static std::vector<FigureRow> rows;
  return rows;
}

// Keeps each run's time; prints nothing of its own.
class Collector : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      times_[run.run_name.function_name].push_back(run.GetAdjustedRealTime());
    }
  }
  // False for one that was filtered out.
  bool HasRun(const FigureRow& row) const { return times_.contains(row.name + "/ours"); }
  double Median(const std::string& name) {
    Check(!times_[name].empty(), name.c_str());
    return bench::Median(times_[name]);
  }

 private:
  std::map<std::string, std::vector<double>> times_;
};

void RegisterRun(const std::string& name, void (*work)(), int repetitions) {
  benchmark::RegisterBenchmark(name.c_str(),
                               [work](benchmark::State& state) {
                                 for ([[maybe_unused]] auto iteration : state) work();
                               })
      ->Repetitions(repetitions)
      ->Iterations(1)
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
}

}  // namespace

const std::string& Workplace() {
  static const qrn::test::TempFolder workspace;
  static const std::string path = workspace.Text();
  return path;
}

void Figure(const std::string& name, double limit, void (*ours)(), void (*yardstick)(),
            int repetitions) {
  Figures().push_back({name, limit});
  RegisterRun(name + "/ours", ours, repetitions);
  RegisterRun(name + "/yardstick", yardstick, repetitions);
}

int RunRatios(int argc, char** argv) {
  std::vector<char*> arguments(argv, argv + argc);
  std::string interleave = "--benchmark_enable_random_interleaving=true";
  arguments.push_back(interleave.data());
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  Collector collector;
  benchmark::RunSpecifiedBenchmarks(&collector);
  bool met = true;
  for (const FigureRow& row : Figures()) {
    if (!collector.HasRun(row)) continue;
    const double ratio =
        collector.Median(row.name + "/ours") / collector.Median(row.name + "/yardstick");
    met = Tell(row.name.c_str(), ratio, row.limit) && met;
  }
  return met ? 0 : 1;
}

}  // namespace bench
