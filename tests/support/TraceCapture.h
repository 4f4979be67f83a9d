// Test helper: turns tracing on and collects the trace lines written while it
// lives, so that tests can compare whole lines byte for byte.
#ifndef TraceCapture_h
#define TraceCapture_h

#include <sstream>
#include <string>
#include <vector>

class TraceCapture {
 public:
  TraceCapture();
  ~TraceCapture();
  TraceCapture(const TraceCapture&) = delete;
  TraceCapture& operator=(const TraceCapture&) = delete;

  // Everything written so far, as it was written.
  [[nodiscard]] std::string Text() const { return _stream.str(); }
  // The lines written so far, without their line ends.
  [[nodiscard]] std::vector<std::string> Lines() const;
  // Forgets what was written so far.
  void Clear();

 private:
  std::ostringstream _stream;
};

#endif
