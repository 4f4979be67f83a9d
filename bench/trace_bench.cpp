// Cost of the trace scope that every operation of the library opens.
//
// Baseline: the same loop without a scope. Compare the medians of
// BM_ScopeOpenClose and BM_Baseline, and of BM_TracedGetter (a library getter
// that opens a scope) against BM_Baseline.
#include <benchmark/benchmark.h>

#include <sstream>

#include "KORHUBTrace.h"
#include "KORLumViewerDef.h"

namespace {

void BM_Baseline(benchmark::State& state) {
  int value = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(value);
    ++value;
  }
}
BENCHMARK(BM_Baseline);

void BM_ScopeOpenClose(benchmark::State& state) {
  KORHUBTrace::SetActive(0);
  int value = 0;
  for (auto _ : state) {
    KORHUBTrace scope("Unit::Operation", 53, 0);
    benchmark::DoNotOptimize(scope);
    benchmark::DoNotOptimize(value);
    ++value;
  }
}
BENCHMARK(BM_ScopeOpenClose);

void BM_TracedGetter(benchmark::State& state) {
  KORHUBTrace::SetActive(0);
  const KORLumViewerDef def("Part", "Viewer3D");
  for (auto _ : state) benchmark::DoNotOptimize(&def.GetViewer());
}
BENCHMARK(BM_TracedGetter);

void BM_OneTraceLineTracingOn(benchmark::State& state) {
  std::ostringstream discarded;
  KORHUBTrace::SetOutput(&discarded);
  KORHUBTrace::SetActive(1);
  const KORLumViewerDef def("Part", "Viewer3D");
  for (auto _ : state) {
    KORHUBTrace scope("KORLumSessionFile::GetType", 53, 0);
    if (KORHUBTrace::LevelIsActive(scope.GetLevel())) {
      scope.GetLigne() << scope.Indent(scope.GetIndent() + 3) << scope.GetMethod() << " "
                       << "_type = " << 1 << std::endl;
      scope.Out();
    }
    discarded.str(std::string());
  }
  KORHUBTrace::SetActive(0);
  KORHUBTrace::SetOutput(nullptr);
}
BENCHMARK(BM_OneTraceLineTracingOn);

}  // namespace

BENCHMARK_MAIN();
