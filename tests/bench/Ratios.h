// Figures as ratios. A figure is two Google Benchmark runs, "NAME/ours" and "NAME/yardstick"; the
// runs of one program are interleaved, and what is printed is the ratio of their medians beside the
// figure's limit. Absolute times stay out: they say more about the machine than about us.
#pragma once

#include <string>

#include "tests/bench/Measure.h"

namespace bench {

// Registers a figure: ours may cost at most `limit` times the yardstick. Call before RunRatios.
void Figure(const std::string& name, double limit, void (*ours)(), void (*yardstick)(),
            int repetitions = 5);

// Runs every figure, or those that --benchmark_filter=REGEX names, and prints the table. Returns 0;
// 1 when a figure misses its limit.
int RunRatios(int argc, char** argv);

// A fresh folder of this process, removed at its end.
const std::string& Workplace();

}  // namespace bench
