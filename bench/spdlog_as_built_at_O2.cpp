// Baselines of the traced getter: spdlog's disabled trace call as a program
// built with Debian's default optimisation (-O2) pays for it.
//
// Whether a disabled spdlog call is cheap depends on the caller's compiler:
// logger::trace is a template that forwards to logger::log_, whose body also
// holds the formatting of an enabled call. Where the caller's compiler
// inlines log_ (trace_bench.cpp, built at -O3, where g++ 12 inlines it), a
// disabled call is a load of the level and a call to
// backtracer::enabled() in libspdlog. Where it does not (g++ 12 at -O2, the
// level Debian builds programs with, in every program tried), a disabled call
// also calls log_ itself, which saves six registers and sets up a frame of
// some 400 bytes before it tests the level. This file is compiled at -O2
// (bench/CMakeLists.txt) so that the second case is measured too;
// bench/run.sh checks in the binary that log_ really was left out of line.
#include <benchmark/benchmark.h>
#include <spdlog/sinks/null_sink.h>
#include <spdlog/spdlog.h>

#include <memory>

namespace {

// A logger writing to spdlog's null sink, at level info: a trace call is
// disabled.
std::shared_ptr<spdlog::logger> DisabledTraceLogger(const char* iName) {
  auto logger =
      std::make_shared<spdlog::logger>(iName, std::make_shared<spdlog::sinks::null_sink_mt>());
  logger->set_level(spdlog::level::info);
  return logger;
}

// A logger of the program's own (a member or a local of the caller).
void BM_SpdlogDisabledTraceAtO2(benchmark::State& state) {
  const auto logger = DisabledTraceLogger("bench-local");
  int i = 0;
  for (auto _ : state) {
    logger->trace("x {}", i);
    benchmark::DoNotOptimize(i);
    ++i;
  }
}
BENCHMARK(BM_SpdlogDisabledTraceAtO2);

// spdlog's default logger, reached through spdlog::trace.
void BM_SpdlogDefaultLoggerDisabledTraceAtO2(benchmark::State& state) {
  const auto previous = spdlog::default_logger();
  spdlog::set_default_logger(DisabledTraceLogger("bench-default"));
  int i = 0;
  for (auto _ : state) {
    spdlog::trace("x {}", i);
    benchmark::DoNotOptimize(i);
    ++i;
  }
  spdlog::set_default_logger(previous);
}
BENCHMARK(BM_SpdlogDefaultLoggerDisabledTraceAtO2);

}  // namespace
