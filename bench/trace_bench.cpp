// Cost of the trace scope that every operation of the library opens.
//
// Each measure sits next to its baseline, in one run:
//
//   - tracing off: the traced getter KORLumSessionFile::GetType, next to an
//     empty call into a shared library (BenchNoOp, in a benchmark-only
//     library) and to a disabled spdlog trace call (logger->trace("x {}", i)
//     with the logger's level above trace);
//   - tracing on: the same getter writing its line to a stream that discards
//     it, next to spdlog writing a line to an ostream sink on the same kind
//     of stream;
//   - the scope alone (open and close) and a loop without a scope.
#include <benchmark/benchmark.h>
#include <spdlog/sinks/null_sink.h>
#include <spdlog/sinks/ostream_sink.h>
#include <spdlog/spdlog.h>

#include <memory>
#include <ostream>
#include <streambuf>

#include "BenchNoOp.h"
#include "KORHUBTrace.h"
#include "KORLumSessionFile.h"
#include "KORLumViewerDef.h"

namespace {

// A stream buffer that accepts every character and keeps none.
class DiscardingBuffer : public std::streambuf {
 protected:
  int_type overflow(int_type iCharacter) override { return traits_type::not_eof(iCharacter); }
  std::streamsize xsputn(const char* /*iText*/, std::streamsize iCount) override { return iCount; }
};

KORLumSessionFile GraphSessionFile() {
  return KORLumSessionFile(KORLumSessionFileType_Graph, "/home/user/model.hub",
                           KORUnicodeString("Viewer3D"), KORLumGraphSessionLoadMode_Dynamic,
                           KORLumGraphSessionInstanceMode_All, 0UL);
}

// An spdlog logger writing bare lines ("%v") to iSink, at level iLevel.
std::shared_ptr<spdlog::logger> MakeLogger(spdlog::sink_ptr iSink,
                                           spdlog::level::level_enum iLevel) {
  auto logger = std::make_shared<spdlog::logger>("bench", std::move(iSink));
  logger->set_pattern("%v");
  logger->set_level(iLevel);
  return logger;
}

// --- Tracing off ------------------------------------------------------------------

void BM_Baseline(benchmark::State& state) {
  int value = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(value);
    ++value;
  }
}
BENCHMARK(BM_Baseline);

// Baseline: an empty function of another shared library, called by pointer
// to the object as the getter is.
void BM_EmptyCallIntoSharedLibrary(benchmark::State& state) {
  const KORLumSessionFile file = GraphSessionFile();
  for (auto _ : state) benchmark::DoNotOptimize(BenchNoOp(&file));
}
BENCHMARK(BM_EmptyCallIntoSharedLibrary);

void BM_TracedGetTypeTracingOff(benchmark::State& state) {
  KORHUBTrace::SetActive(0);
  const KORLumSessionFile file = GraphSessionFile();
  for (auto _ : state) benchmark::DoNotOptimize(file.GetType());
}
BENCHMARK(BM_TracedGetTypeTracingOff);

// Baseline: spdlog's trace call while the logger's level is above trace.
void BM_SpdlogDisabledTrace(benchmark::State& state) {
  auto logger = MakeLogger(std::make_shared<spdlog::sinks::null_sink_mt>(), spdlog::level::info);
  int i = 0;
  for (auto _ : state) {
    logger->trace("x {}", i);
    benchmark::DoNotOptimize(i);
    ++i;
  }
}
BENCHMARK(BM_SpdlogDisabledTrace);

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

void BM_TracedViewerDefGetter(benchmark::State& state) {
  KORHUBTrace::SetActive(0);
  const KORLumViewerDef def("Part", "Viewer3D");
  for (auto _ : state) benchmark::DoNotOptimize(&def.GetViewer());
}
BENCHMARK(BM_TracedViewerDefGetter);

// --- Tracing on ---------------------------------------------------------------------

// GetType writes "   KORLumSessionFile::GetType _type = 1" to a stream that
// discards it.
void BM_TracedGetTypeTracingOn(benchmark::State& state) {
  DiscardingBuffer buffer;
  std::ostream discarded(&buffer);
  KORHUBTrace::SetOutput(&discarded);
  KORHUBTrace::SetActive(1);
  const KORLumSessionFile file = GraphSessionFile();
  for (auto _ : state) benchmark::DoNotOptimize(file.GetType());
  KORHUBTrace::SetActive(0);
  KORHUBTrace::SetOutput(nullptr);
}
BENCHMARK(BM_TracedGetTypeTracingOn);

// Baseline: spdlog writes the line "x <i>" to an ostream sink on the same
// kind of discarding stream (its thread-safe sink, as the trace is).
void BM_SpdlogTraceToOstreamSink(benchmark::State& state) {
  DiscardingBuffer buffer;
  std::ostream discarded(&buffer);
  auto logger =
      MakeLogger(std::make_shared<spdlog::sinks::ostream_sink_mt>(discarded), spdlog::level::trace);
  int i = 0;
  for (auto _ : state) {
    logger->trace("x {}", i);
    ++i;
  }
}
BENCHMARK(BM_SpdlogTraceToOstreamSink);

}  // namespace

BENCHMARK_MAIN();
