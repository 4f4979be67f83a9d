// The library's trace and assertion conventions (internal to VX0SESS0).
//
// Every operation of the value classes and of KORLumSessionFileUtilities
// opens a KORLumTrace as its first local object, labelled with the class name,
// "::" and the operation name. While the trace level is active it writes its
// inputs and results as lines of one format:
//
//   <indent + 3 blanks><label> <body>
//
// where the body is a named value ("iType = 1"), a bracketed field
// ("Type          = [1]"), a count, an indexed field or a message. Values are
// written with the standard stream insertions: enumerations, ints and 1/0
// results as signed decimals, option sets as unsigned decimals, strings as
// their UTF-8 text, a viewer definition as its viewer name.
//
//   KORLumTrace trace("KORLumSessionFile::GetType");
//   trace.Value("_type", _type);                     // "   KORLumSessionFile::GetType _type = 1"
//   trace.Line("Number of viewer(s) = [", n, "]");  // pieces written one after another
//
// Each line tests the level first: while tracing is off, a line costs one
// relaxed load and nothing is converted. Pieces that would have to be
// computed (a list element, a call) are guarded by IsActive() so that they
// are not computed either.
#ifndef KORLumTrace_h
#define KORLumTrace_h

#include "KORAssert.h"

#include <ostream>

#include "KORHUBTrace.h"

class KORLumTrace {
 public:
  explicit KORLumTrace(const char* iMethod) noexcept : _scope(iMethod, kLevel, kOption) {}
  // Closes the scope. Declared so that readers (and analysers) see that a
  // named KORLumTrace that is never used still does its work at both ends.
  ~KORLumTrace() = default;
  KORLumTrace(const KORLumTrace&) = delete;
  KORLumTrace& operator=(const KORLumTrace&) = delete;

  // Whether lines are written at this scope's level.
  [[nodiscard]] bool IsActive() const noexcept {
    return KORHUBTrace::LevelIsActive(_scope.GetLevel()) != 0;
  }

  // Writes one line made of the pieces, one after another.
  template <typename... Pieces>
  void Line(const Pieces&... iPieces) {
    if (__builtin_expect(IsActive(), 0)) {
      WriteLine(_scope.GetMethodText(), _scope.GetIndent(), iPieces...);
    }
  }

  // Writes the line "<iName> = <iValue>".
  template <typename Shown>
  void Value(const char* iName, const Shown& iValue) {
    Line(iName, " = ", iValue);
  }

  // The whole trace of a getter, the scope iMethod with the line
  // "<iName> = <iValue>", and iValue given back:
  //
  //   return KORLumTrace::Getter("KORLumSessionFile::GetType", "_type", _type);
  //
  // The lines are those of a KORLumTrace with Value; while tracing is off the
  // getter costs one relaxed load (KORHUBTrace::InLeafScope).
  template <typename Shown>
  static const Shown& Getter(const char* iMethod, const char* iName, const Shown& iValue) {
    return KORHUBTrace::InLeafScope(
        iMethod, kLevel, kOption, iValue,
        [](const KORHUBTrace& iScope, const Shown& iShown, const char* iShownName) {
          WriteLine(iScope.GetMethodText(), iScope.GetIndent(), iShownName, " = ", iShown);
        },
        iName);
  }

  // The trace of a getter that writes no line: the scope iMethod alone, and
  // iValue given back.
  template <typename Shown>
  static const Shown& Silent(const char* iMethod, const Shown& iValue) {
    return KORHUBTrace::InLeafScope(iMethod, kLevel, kOption, iValue,
                                    [](const KORHUBTrace& /*iScope*/, const Shown& /*iShown*/) {});
  }

 private:
  // The writing itself, out of line and out of the hot path. It is given the
  // scope's label and indent by value, not the scope: a scope whose address
  // is passed to a call has to live in memory, and its closing would read its
  // depth back from there; kept in registers, a getter whose tracing is off
  // runs a few instructions.
  template <typename... Pieces>
  __attribute__((noinline, cold)) static void WriteLine(const char* iMethod, int iIndent,
                                                        const Pieces&... iPieces) {
    std::ostream& line = KORHUBTrace::GetLigne();
    line << KORHUBTrace::Indent(iIndent + 3) << iMethod << " ";
    (line << ... << iPieces);
    line << std::endl;
    KORHUBTrace::Out();
  }

  // Every scope of the library is opened at level 53 with option 0.
  static constexpr int kLevel = 53;
  static constexpr int kOption = 0;

  KORHUBTrace _scope;
};

// Asserts a precondition of the library. The source unit is named as the
// library's contract names it (the unit path without extension), and the line
// is the contract's line number, so that the report reads the same in every
// build.
#define KORLUM_ASSERT(condition, unit, line) \
  ((condition) ? static_cast<void>(0)        \
               : __assert(#condition, "VirtualServices/VX0SESS0.m/src/" unit, line))

#endif
