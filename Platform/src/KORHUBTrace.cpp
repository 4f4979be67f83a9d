#include "KORHUBTrace.h"

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <mutex>
#include <sstream>
#include <string>

namespace KORHUBTraceDetail {
std::atomic<int> gState{kUndecided};
__thread int gDepth = 0;

void DecideFromEnvironment() noexcept {
  const char* value = std::getenv("KORHUB_TRACE");
  const int decided = (value && *value && std::strcmp(value, "0") != 0) ? kOn : kOff;
  int expected = kUndecided;
  // SetActive may have decided in the meantime: it wins.
  gState.compare_exchange_strong(expected, decided, std::memory_order_relaxed);
}
}  // namespace KORHUBTraceDetail

namespace {

// Where finished lines go; guarded by its mutex so that lines never interleave.
class TraceSink {
 public:
  void Write(const std::string& iLine) {
    std::lock_guard<std::mutex> lock(_mutex);
    std::ostream& stream = Destination();
    stream.write(iLine.data(), static_cast<std::streamsize>(iLine.size()));
    stream.flush();
  }

  void SetOverride(std::ostream* iStream) {
    std::lock_guard<std::mutex> lock(_mutex);
    _override = iStream;
  }

 private:
  std::ostream& Destination() {
    if (_override) return *_override;
    if (!_defaultDecided) {
      _defaultDecided = true;
      const char* fileName = std::getenv("KORHUB_TRACE_FILE");
      if (fileName && *fileName) {
        auto file = std::make_unique<std::ofstream>(fileName, std::ios::out | std::ios::app);
        // A file that cannot be opened leaves the lines on standard error.
        if (file->is_open()) _file = std::move(file);
      }
    }
    if (_file) return *_file;
    return std::cerr;
  }

  std::mutex _mutex;
  std::ostream* _override = nullptr;
  bool _defaultDecided = false;
  std::unique_ptr<std::ofstream> _file;
};

TraceSink& Sink() {
  static TraceSink sink;
  return sink;
}

std::ostringstream& ThreadLineBuffer() {
  thread_local std::ostringstream buffer;
  return buffer;
}

}  // namespace

KORString KORHUBTrace::Indent(const int iWidth) {
  return KORString(std::string(iWidth > 0 ? static_cast<std::size_t>(iWidth) : 0U, ' '));
}

std::ostream& KORHUBTrace::GetLigne() { return ThreadLineBuffer(); }

void KORHUBTrace::Out() {
  std::ostringstream& buffer = ThreadLineBuffer();
  Sink().Write(buffer.str());
  buffer.str(std::string());
  buffer.clear();
}

void KORHUBTrace::SetActive(int iOn) noexcept {
  KORHUBTraceDetail::gState.store(iOn ? KORHUBTraceDetail::kOn : KORHUBTraceDetail::kOff,
                                  std::memory_order_relaxed);
}

void KORHUBTrace::SetOutput(std::ostream* iStream) { Sink().SetOverride(iStream); }
