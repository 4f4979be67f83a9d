// Fuzz target: KORDMTools::ExpandPath on arbitrary paths.
//
// Invariants, for any path:
//   - nothing is run and no file name is matched: the functions that start a
//     process or expand patterns are replaced in this program, and stop it
//     when they are called from inside ExpandPath;
//   - a path without '$' that does not start with '~' comes back unchanged;
//   - the result is valid UTF-8;
//   - the result is what the documented rules give, computed here once more
//     from those rules ($NAME, ${NAME}, $$, a leading ~; values put in are not
//     scanned again; everything else is kept as written).
// The variables that the paths are likely to name (the dictionary has them)
// are set to values that would do harm if they were expanded again or run.
#include <dlfcn.h>
#include <glob.h>
#include <spawn.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>
#include <wordexp.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzInvariants.h"
#include "KORDMTools.h"
#include "KORUnicodeString.h"

namespace {

bool gExpanding = false;

// Stops the process when ExpandPath calls iFunction; otherwise finds the
// C library's own function, for whoever else calls it.
template <typename Function>
Function Forbidden(const char* iFunction) {
  if (gExpanding) {
    fuzz::Fail("!gExpanding", std::string("ExpandPath called ") + iFunction, __FILE__, __LINE__);
  }
  return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, iFunction));
}

bool IsNameChar(char iChar) {
  return (iChar >= 'A' && iChar <= 'Z') || (iChar >= 'a' && iChar <= 'z') ||
         (iChar >= '0' && iChar <= '9') || iChar == '_';
}

void AppendValue(std::string& ioText, std::string_view iName) {
  if (const char* value = ::getenv(std::string(iName).c_str())) ioText += value;
}

// The expansion rules, applied to iPath once from left to right.
std::string Expected(std::string_view iPath) {
  std::string result;
  std::size_t i = 0;
  const std::size_t size = iPath.size();
  if (size > 0 && iPath[0] == '~' && (size == 1 || iPath[1] == '/')) {
    const char* home = ::getenv("HOME");
    result += home ? home : "~";
    i = 1;
  }
  while (i < size) {
    if (iPath[i] != '$') {
      result += iPath[i++];
      continue;
    }
    if (i + 1 < size && iPath[i + 1] == '$') {  // $$
      result += '$';
      i += 2;
      continue;
    }
    if (i + 1 < size && iPath[i + 1] == '{') {  // ${NAME}, or kept up to its '}'
      std::size_t end = i + 2;
      while (end < size && IsNameChar(iPath[end])) ++end;
      if (end > i + 2 && end < size && iPath[end] == '}') {
        AppendValue(result, iPath.substr(i + 2, end - i - 2));
        i = end + 1;
      } else {
        std::size_t close = iPath.find('}', i + 2);
        close = close == std::string_view::npos ? size : close + 1;
        result.append(iPath.substr(i, close - i));
        i = close;
      }
      continue;
    }
    std::size_t end = i + 1;  // $NAME, or a lone '$'
    while (end < size && IsNameChar(iPath[end])) ++end;
    if (end == i + 1) {
      result += '$';
      ++i;
    } else {
      AppendValue(result, iPath.substr(i + 1, end - i - 1));
      i = end;
    }
  }
  return result;
}

}  // namespace

// The process-starting and pattern-matching functions of the C library.
extern "C" {
int system(const char* iCommand) { return Forbidden<int (*)(const char*)>("system")(iCommand); }
FILE* popen(const char* iCommand, const char* iMode) {
  return Forbidden<FILE* (*)(const char*, const char*)>("popen")(iCommand, iMode);
}
pid_t fork() { return Forbidden<pid_t (*)()>("fork")(); }
// Another caller's vfork is served by fork, which a vfork may always be.
pid_t vfork() { return Forbidden<pid_t (*)()>("fork")(); }
int execve(const char* iPath, char* const iArguments[], char* const iEnvironment[]) {
  return Forbidden<int (*)(const char*, char* const[], char* const[])>("execve")(iPath, iArguments,
                                                                                 iEnvironment);
}
int execv(const char* iPath, char* const iArguments[]) {
  return Forbidden<int (*)(const char*, char* const[])>("execv")(iPath, iArguments);
}
int execvp(const char* iFile, char* const iArguments[]) {
  return Forbidden<int (*)(const char*, char* const[])>("execvp")(iFile, iArguments);
}
int posix_spawn(pid_t* oPid, const char* iPath, const posix_spawn_file_actions_t* iActions,
                const posix_spawnattr_t* iAttributes, char* const iArguments[],
                char* const iEnvironment[]) {
  using Spawn = int (*)(pid_t*, const char*, const posix_spawn_file_actions_t*,
                        const posix_spawnattr_t*, char* const[], char* const[]);
  return Forbidden<Spawn>("posix_spawn")(oPid, iPath, iActions, iAttributes, iArguments,
                                         iEnvironment);
}
int posix_spawnp(pid_t* oPid, const char* iFile, const posix_spawn_file_actions_t* iActions,
                 const posix_spawnattr_t* iAttributes, char* const iArguments[],
                 char* const iEnvironment[]) {
  using Spawn = int (*)(pid_t*, const char*, const posix_spawn_file_actions_t*,
                        const posix_spawnattr_t*, char* const[], char* const[]);
  return Forbidden<Spawn>("posix_spawnp")(oPid, iFile, iActions, iAttributes, iArguments,
                                          iEnvironment);
}
int glob(const char* iPattern, int iFlags, int (*iError)(const char*, int), glob_t* oMatches) {
  using Glob = int (*)(const char*, int, int (*)(const char*, int), glob_t*);
  return Forbidden<Glob>("glob")(iPattern, iFlags, iError, oMatches);
}
int wordexp(const char* iWords, wordexp_t* oWords, int iFlags) {
  return Forbidden<int (*)(const char*, wordexp_t*, int)>("wordexp")(iWords, oWords, iFlags);
}
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  ::setenv("HOME", "/home/fuzz", 1);
  ::setenv("FUZZ_A", "alpha", 1);
  ::setenv("FUZZ_EMPTY", "", 1);
  ::setenv("FUZZ_SELF", "$FUZZ_SELF", 1);     // expanded again, it would grow
  ::setenv("FUZZ_BRACE", "${FUZZ_A}", 1);     // expanded again, it would change
  ::setenv("FUZZ_RUN", "$(id)`id`*?[a]", 1);  // run or globbed, it would change
  ::setenv("FUZZ_TILDE", "~", 1);
  ::setenv("FUZZ_UTF8", "\xC3\xA9t\xC3\xA9", 1);  // "été"
  ::unsetenv("FUZZ_UNSET");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  const KORUnicodeString path(reinterpret_cast<const char*>(iData), iSize);
  gExpanding = true;
  const KORUnicodeString expanded = KORDMTools::ExpandPath(path);
  gExpanding = false;

  const std::string_view text = path.View();
  FUZZ_REQUIRE(fuzz::IsValidUtf8(expanded.View()), "the expanded path is not valid UTF-8");
  if (text.find('$') == std::string_view::npos && (text.empty() || text[0] != '~')) {
    FUZZ_REQUIRE(expanded == path, "a path without '$' or leading '~' was changed");
  }
  const std::string expected = Expected(text);
  FUZZ_REQUIRE(
      expanded == KORUnicodeString(expected.data(), expected.size()),
      "expanded to \"" + std::string(expanded.View()) + "\", expected \"" + expected + "\"");
  return 0;
}
