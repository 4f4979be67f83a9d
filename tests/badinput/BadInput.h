// Test helper of the bad-input tests: a test's own configuration directory,
// with the platform's search variables pointing into it and nothing else set,
// and the damaged contents that every kind of configuration file is tried
// with (each next to a good declaration that must still be used).
//
//   BadInputConfiguration configuration;  // msgcatalog/ and dcls/, both empty
//   configuration.Write("msgcatalog/KORLumSessionFile.msgcat",
//                       badinput::Garbage(4096) + "\nTypeGraph.Msg = Graphe\n");
#ifndef BadInput_h
#define BadInput_h

#include <stdlib.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "KORListValKORUnicodeString.h"
#include "KORLumPool.h"
#include "KORMsgCatalog.h"
#include "TemporaryDirectory.h"

class BadInputConfiguration {
 public:
  // Unsets every platform variable, points KOR_MSGCATALOG_PATH and
  // KOR_DCLS_PATH at the empty directories "msgcatalog" and "dcls", and
  // flushes the platform's caches. Tracing stays off.
  BadInputConfiguration() {
    UnsetPlatformVariables();
    ::unsetenv("KORHUB_TRACE");
    ::setenv("KOR_MSGCATALOG_PATH", _directory.MakeDirectory("msgcatalog").c_str(), 1);
    ::setenv("KOR_DCLS_PATH", _directory.MakeDirectory("dcls").c_str(), 1);
    KORMsgCatalog::FlushCache();
    KORLumPool::FlushCache();
  }

  [[nodiscard]] std::string PathOf(std::string_view iRelative) const {
    return _directory.PathOf(iRelative);
  }
  std::string Write(std::string_view iRelative, std::string_view iContent) const {
    return _directory.Write(iRelative, iContent);
  }
  std::string MakeDirectory(std::string_view iRelative) const {
    return _directory.MakeDirectory(iRelative);
  }

 private:
  TemporaryDirectory _directory;
};

namespace badinput {

// iSize bytes of the same pseudo-random garbage at every run: every byte
// value, NUL and line ends included.
inline std::string Garbage(std::size_t iSize) {
  std::string bytes(iSize, '\0');
  std::uint32_t state = 0x9E3779B9u;
  for (char& byte : bytes) {
    state = state * 1664525u + 1013904223u;
    byte = static_cast<char>(state >> 24);
  }
  return bytes;
}

// One line of comment that fills about iBytes bytes, line end included.
inline std::string FillerComment(std::size_t iBytes) {
  std::string line("# ");
  line.append(iBytes > 3 ? iBytes - 3 : 0, 'x');
  line += '\n';
  return line;
}

// About iMegabytes megabytes of comment lines of 64 bytes.
inline std::string CommentMegabytes(std::size_t iMegabytes) {
  const std::string line = FillerComment(64);
  std::string text;
  text.reserve(iMegabytes * 1024 * 1024 + line.size());
  while (text.size() < iMegabytes * 1024 * 1024) text += line;
  return text;
}

// True when some element of iList contains iText.
inline bool AnyContains(const KORListValKORUnicodeString& iList, std::string_view iText) {
  for (int i = 1; i <= iList.Size(); ++i) {
    if (iList[i].View().find(iText) != std::string_view::npos) return true;
  }
  return false;
}

// The elements of iList, one per line, for failure messages.
inline std::string Lines(const KORListValKORUnicodeString& iList) {
  std::string text;
  for (int i = 1; i <= iList.Size(); ++i) text.append(iList[i].View()).append("\n");
  return text;
}

}  // namespace badinput

#endif
