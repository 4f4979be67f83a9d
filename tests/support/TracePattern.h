// Test helper: patterns for death tests that check the trace lines an
// operation wrote before it stopped the process.
//
// Death tests match the dying process's standard error with a POSIX extended
// regular expression; these functions turn literal text into such a pattern.
//
//   KORHUBTrace::SetOutput(&std::cerr);  // inside the death statement
//   EXPECT_DEATH(statement, TraceLinesPattern({"   Unit::Op iName = "}) + ".*Assertion");
#ifndef TracePattern_h
#define TracePattern_h

#include <string>
#include <vector>

// A pattern that matches iText exactly, every character taken literally.
inline std::string LiteralPattern(const std::string& iText) {
  std::string pattern;
  for (const char character : iText) {
    switch (character) {
      case '.':
      case '[':
      case ']':
      case '(':
      case ')':
      case '{':
      case '}':
      case '*':
      case '+':
      case '?':
      case '|':
      case '$':
        // In a bracket expression every one of these stands for itself.
        pattern += '[';
        pattern += character;
        pattern += ']';
        break;
      case '^':
      case '\\':
        pattern += '\\';
        pattern += character;
        break;
      default:
        pattern += character;
    }
  }
  return pattern;
}

// A pattern that matches the lines one after another, each with its line end.
inline std::string TraceLinesPattern(const std::vector<std::string>& iLines) {
  std::string pattern;
  for (const std::string& line : iLines) pattern += LiteralPattern(line) + "\n";
  return pattern;
}

#endif
