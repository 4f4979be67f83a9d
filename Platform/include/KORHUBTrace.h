// KORHUBTrace: the platform's trace facility.
//
// A KORHUBTrace object is a trace scope: an operation opens one as a local
// object on entry and it closes when the operation returns. While tracing is
// on, the operation composes lines in the scope's line buffer (GetLigne) and
// hands each finished line to Out(), which writes it whole to the trace
// destination. The facility writes no line of its own.
//
//   KORHUBTrace trace("KORLumSessionFile::GetType", 53, 0);
//   if (KORHUBTrace::LevelIsActive(trace.GetLevel())) {
//     trace.GetLigne() << trace.Indent(trace.GetIndent() + 3) << trace.GetMethod()
//                      << " _type = " << 1 << std::endl;
//     trace.Out();
//   }
//
// Control: tracing is off unless the environment variable KORHUB_TRACE holds a
// non-empty value other than "0" when the first scope opens. Lines go to
// standard error, or are appended to the file named by KORHUB_TRACE_FILE
// (opened close-on-exec; when it cannot be opened, the lines stay on standard
// error). SetActive and SetOutput override the environment at any time.
//
// Failed writes: a failed or short write never stops tracing. A line is
// written whole or not at all, the next line starts on a line of its own, and
// later lines are written as soon as the destination accepts them again.
//
// Cost: opening and closing a scope allocates nothing, takes no lock and does
// no I/O: it stores the label and counts the scopes open on the thread. An
// operation that only writes its own lines can use InLeafScope instead, which
// opens no scope at all while tracing is off. The
// line buffer of a thread is created on first use, never while tracing is off.
// Lines written by several threads never interleave within a line.
#ifndef KORHUBTrace_h
#define KORHUBTrace_h

#include <atomic>
#include <iosfwd>

#include "KORPlatformExport.h"
#include "KORString.h"

// Implementation details only, past this point, until the class.
namespace KORHUBTraceDetail {
enum State : int { kUndecided = 0, kOff = 1, kOn = 2 };
// Whether tracing is on (kUndecided until the environment has been read).
extern KORPLATFORM_API std::atomic<int> gState;
// Number of scopes open on the calling thread. Initial-exec model: a scope
// reaches it with one thread-pointer-relative access, never through
// __tls_get_addr.
extern __thread int gDepth __attribute__((tls_model("initial-exec"), visibility("default")));
// Reads KORHUB_TRACE once (unless SetActive came first).
KORPLATFORM_API void DecideFromEnvironment() noexcept;
}  // namespace KORHUBTraceDetail

class KORPLATFORM_API KORHUBTrace {
 public:
  // Opens a scope for the operation named iMethod (kept by pointer: a label is
  // a constant text that outlives the scope).
  KORHUBTrace(const char* iMethod, int iLevel, int iOption) noexcept
      : _method(iMethod), _level(iLevel), _option(iOption), _depth(KORHUBTraceDetail::gDepth++) {
    if (__builtin_expect(KORHUBTraceDetail::gState.load(std::memory_order_relaxed) ==
                             KORHUBTraceDetail::kUndecided,
                         0)) {
      KORHUBTraceDetail::DecideFromEnvironment();
    }
  }
  // Closes the scope: the thread's count goes back to what it was when this
  // scope opened (scopes close in the reverse order of their opening). It is
  // stored, not decremented: a decrement would read the count back from
  // memory, and consecutive calls would wait on each other's store.
  ~KORHUBTrace() { KORHUBTraceDetail::gDepth = _depth; }

  KORHUBTrace(const KORHUBTrace&) = delete;
  KORHUBTrace& operator=(const KORHUBTrace&) = delete;

  // The level given at opening.
  [[nodiscard]] int GetLevel() const noexcept { return _level; }
  // The option given at opening.
  [[nodiscard]] int GetOption() const noexcept { return _option; }
  // 1 when tracing is on, whatever the level, else 0: one relaxed load.
  static int LevelIsActive(const int /*iLevel*/) noexcept {
    const int state = KORHUBTraceDetail::gState.load(std::memory_order_relaxed);
    if (__builtin_expect(state == KORHUBTraceDetail::kUndecided, 0)) {
      KORHUBTraceDetail::DecideFromEnvironment();
      return KORHUBTraceDetail::gState.load(std::memory_order_relaxed) == KORHUBTraceDetail::kOn;
    }
    return state == KORHUBTraceDetail::kOn;
  }

  // Gives an operation whose only traced work is its own lines (a getter)
  // its whole trace, and gives back iResult: while tracing is on, opens a
  // scope named iMethod, calls iWrite(scope, iResult, iArguments...) to write
  // the lines, and closes the scope. While tracing is off, such a scope would
  // write no line and no scope would open inside it: nothing could ever see
  // it, so it is not opened at all, and the call costs one relaxed load. The
  // thread's count of open scopes is then not touched either: each update of
  // that count waits for the previous one, which would chain every getter
  // call of a loop to the one before. Before tracing is decided, the scope
  // opens, and decides, as any scope does.
  //
  // The writer is given what it writes (iArguments are taken by value: pass
  // texts and pointers) instead of capturing it, and the result is given
  // back by the traced path too, so that a getter prepares nothing and keeps
  // nothing across a call while tracing is off.
  //
  //   return KORHUBTrace::InLeafScope("KORLumSessionFile::GetType", 53, 0, _type,
  //                                   [](const KORHUBTrace& iScope, const int& iType) { ... });
  template <typename Result, typename Write, typename... Arguments>
  static const Result& InLeafScope(const char* iMethod, int iLevel, int iOption,
                                   const Result& iResult, Write iWrite, Arguments... iArguments) {
    if (__builtin_expect(
            KORHUBTraceDetail::gState.load(std::memory_order_relaxed) == KORHUBTraceDetail::kOff,
            1)) {
      return iResult;
    }
    return OpenLeafScope(iMethod, iLevel, iOption, iResult, iWrite, iArguments...);
  }

  // 2 x the number of scopes that were already open on this thread when this
  // one opened: 0 for a top-level scope, 2 for a scope opened inside it, ...
  [[nodiscard]] int GetIndent() const noexcept { return 2 * _depth; }
  // iWidth blanks (none for a width of 0 or less).
  [[nodiscard]] static KORString Indent(const int iWidth);
  // The label given at opening.
  [[nodiscard]] KORString GetMethod() const { return KORString(_method); }
  // The label given at opening, without copy.
  [[nodiscard]] const char* GetMethodText() const noexcept { return _method; }

  // The calling thread's line buffer, created on first use. Nested scopes of a
  // thread share it: a line is always finished before another one starts.
  // Like Indent and Out, it depends on the thread only, not on the scope, so
  // that a line writer can be handed a scope's label and indent by value and
  // the scope itself never leaves the traced operation: the compiler then
  // keeps it in registers, and a scope whose tracing is off costs a few
  // register operations.
  static std::ostream& GetLigne();
  // Writes the line buffer's text to the destination as it stands, in one
  // write, flushed at once; then empties the buffer.
  static void Out();

  // Turns tracing on (non-zero) or off (0), overriding KORHUB_TRACE.
  static void SetActive(int iOn) noexcept;
  // Sends lines to iStream from now on; null restores the default destination
  // (KORHUB_TRACE_FILE or standard error). The stream must outlive its use.
  static void SetOutput(std::ostream* iStream);

 private:
  // InLeafScope while tracing is on or not yet decided: out of line and out
  // of the hot path.
  template <typename Result, typename Write, typename... Arguments>
  __attribute__((noinline, cold)) static const Result& OpenLeafScope(const char* iMethod,
                                                                     int iLevel, int iOption,
                                                                     const Result& iResult,
                                                                     Write iWrite,
                                                                     Arguments... iArguments) {
    const KORHUBTrace scope(iMethod, iLevel, iOption);
    if (LevelIsActive(iLevel) != 0) iWrite(scope, iResult, iArguments...);
    return iResult;
  }

  const char* _method;
  int _level;
  int _option;
  int _depth;
};

#endif
