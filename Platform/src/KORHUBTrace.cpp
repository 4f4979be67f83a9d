#include "KORHUBTrace.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <mutex>
#include <sstream>
#include <string>
#include <string_view>

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
//
// The default destination (standard error, or the file named by
// KORHUB_TRACE_FILE) is written with write(2), so that a failed write stops
// nothing: each line is written whole or not at all, and the next one is
// written as soon as the destination accepts it again. A line that a failed
// write could only partly write is taken back from a file; elsewhere, the
// next line is put on a line of its own.
class TraceSink {
 public:
  void Write(const std::string& iLine) {
    std::lock_guard<std::mutex> lock(_mutex);
    if (_override != nullptr) {
      _override->write(iLine.data(), static_cast<std::streamsize>(iLine.size()));
      _override->flush();
      // A stream that failed once would refuse every later line.
      _override->clear();
      return;
    }
    WriteToDescriptor(DefaultDescriptor(), iLine);
  }

  void SetOverride(std::ostream* iStream) {
    std::lock_guard<std::mutex> lock(_mutex);
    _override = iStream;
  }

 private:
  // The descriptor of the default destination, decided on first use.
  int DefaultDescriptor() {
    if (!_defaultDecided) {
      _defaultDecided = true;
      const char* fileName = std::getenv("KORHUB_TRACE_FILE");
      if (fileName != nullptr && *fileName != '\0') {
        // Not inherited by the programs the process starts. A file that
        // cannot be opened leaves the lines on standard error.
        const int descriptor =
            ::open(fileName, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY, 0666);
        if (descriptor >= 0) _file = descriptor;
      }
    }
    return _file >= 0 ? _file : STDERR_FILENO;
  }

  void WriteToDescriptor(int iDescriptor, const std::string& iLine) {
    std::string ended;
    std::string_view text(iLine);
    if (_unfinished) {
      ended.reserve(iLine.size() + 1);
      ended.append(1, '\n').append(iLine);
      text = ended;
    }
    std::size_t written = 0;
    while (written < text.size()) {
      const ssize_t count = ::write(iDescriptor, text.data() + written, text.size() - written);
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) break;
      written += static_cast<std::size_t>(count);
    }
    if (written == text.size()) {
      _unfinished = false;
      return;
    }
    if (written == 0) return;
    // Part of the line went out. A file written at its end gets back the
    // size it had before; anywhere else the next line starts with a line end
    // of its own.
    struct stat status {};
    const off_t before = ::fstat(iDescriptor, &status) == 0 && S_ISREG(status.st_mode) &&
                                 ::lseek(iDescriptor, 0, SEEK_CUR) == status.st_size
                             ? status.st_size - static_cast<off_t>(written)
                             : -1;
    if (before >= 0 && ::ftruncate(iDescriptor, before) == 0 &&
        ::lseek(iDescriptor, before, SEEK_SET) == before) {
      return;
    }
    _unfinished = true;
  }

  std::mutex _mutex;
  std::ostream* _override = nullptr;
  bool _defaultDecided = false;
  int _file = -1;            // the trace file, or -1 for standard error
  bool _unfinished = false;  // the destination's last line lacks its end
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
