// Test helper: turns tracing on and collects the trace lines written while it
// lives, so that tests can compare whole lines byte for byte.
#ifndef TraceCapture_h
#define TraceCapture_h

#include <initializer_list>
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

// The lines of the parts, one part after another, to compare with Lines():
//
//   EXPECT_EQ(capture.Lines(), Concatenated({OperandLines(), {"   Unit::Op isEqual = 0"}}));
inline std::vector<std::string> Concatenated(
    std::initializer_list<std::vector<std::string>> iParts) {
  std::vector<std::string> all;
  for (const std::vector<std::string>& part : iParts)
    all.insert(all.end(), part.begin(), part.end());
  return all;
}

#endif
