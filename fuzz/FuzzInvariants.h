// Shared helpers of the fuzz targets: an invariant check that stops the
// process (so that libFuzzer keeps the input that broke it), a strict UTF-8
// decoder written independently of the platform's string class, so that the
// targets compare the platform with a second opinion rather than with
// itself, and a private workspace that the platform is made to read alone.
//
//   FUZZ_REQUIRE(IsValidUtf8(text), "ExpandPath gave invalid UTF-8");
//   std::vector<char32_t> codePoints;
//   FUZZ_REQUIRE(DecodeUtf8(text, &codePoints), "not UTF-8");
#ifndef FuzzInvariants_h
#define FuzzInvariants_h

#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "KORMsgCatalog.h"

namespace fuzz {

[[noreturn]] inline void Fail(const char* iCondition, const std::string& iWhat, const char* iFile,
                              int iLine) {
  // The process aborts next whatever these return: there is nowhere else to
  // report a failure to write the report.
  (void)std::fprintf(stderr, "\n*** invariant violated at %s:%d: %s\n*** %s\n", iFile, iLine,
                     iCondition, iWhat.c_str());
  (void)std::fflush(stderr);
  std::abort();
}

// Decodes iText as strict UTF-8 (RFC 3629: no overlong form, no surrogate,
// nothing above U+10FFFF, no truncated sequence). Returns false at the first
// ill-formed byte. When oCodePoints is not null it receives the code points.
inline bool DecodeUtf8(std::string_view iText, std::vector<char32_t>* oCodePoints = nullptr) {
  if (oCodePoints) oCodePoints->clear();
  std::size_t i = 0;
  while (i < iText.size()) {
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(iText[k]); };
    const unsigned char lead = byte(i);
    std::size_t length = 0;
    char32_t code = 0;
    char32_t minimum = 0;
    if (lead < 0x80) {
      length = 1;
      code = lead;
    } else if ((lead & 0xE0) == 0xC0) {
      length = 2;
      code = lead & 0x1F;
      minimum = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
      length = 3;
      code = lead & 0x0F;
      minimum = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
      length = 4;
      code = lead & 0x07;
      minimum = 0x10000;
    } else {
      return false;
    }
    if (i + length > iText.size()) return false;
    for (std::size_t k = 1; k < length; ++k) {
      if ((byte(i + k) & 0xC0) != 0x80) return false;
      code = (code << 6) | (byte(i + k) & 0x3F);
    }
    if (code < minimum || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return false;
    if (oCodePoints) oCodePoints->push_back(code);
    i += length;
  }
  return true;
}

inline bool IsValidUtf8(std::string_view iText) { return DecodeUtf8(iText); }

// Encodes code points as UTF-8 (they are assumed valid).
inline std::string EncodeUtf8(const std::vector<char32_t>& iCodePoints) {
  std::string text;
  for (const char32_t code : iCodePoints) {
    if (code < 0x80) {
      text += static_cast<char>(code);
    } else if (code < 0x800) {
      text += static_cast<char>(0xC0 | (code >> 6));
      text += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
      text += static_cast<char>(0xE0 | (code >> 12));
      text += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
      text += static_cast<char>(0x80 | (code & 0x3F));
    } else {
      text += static_cast<char>(0xF0 | (code >> 18));
      text += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
      text += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
      text += static_cast<char>(0x80 | (code & 0x3F));
    }
  }
  return text;
}

// Reads numbers and bytes from the front of a fuzz input; a number cut short
// by the end of the input is made of the bytes that remain.
class InputReader {
 public:
  InputReader(const unsigned char* iData, std::size_t iSize)
      : _rest(reinterpret_cast<const char*>(iData), iSize) {}

  template <typename Integer>
  Integer Take() {
    Integer value = 0;
    for (std::size_t k = 0; k < sizeof(Integer) && !_rest.empty(); ++k) {
      value = static_cast<Integer>(value << 8 | static_cast<unsigned char>(_rest.front()));
      _rest.remove_prefix(1);
    }
    return value;
  }

  // The bytes before the first iStop (which is consumed and not returned),
  // or the whole rest when there is no iStop.
  std::string_view TakeUntil(char iStop) {
    const std::size_t stop = _rest.find(iStop);
    const std::string_view taken = _rest.substr(0, stop);
    _rest.remove_prefix(stop == std::string_view::npos ? _rest.size() : stop + 1);
    return taken;
  }

  [[nodiscard]] std::string_view Rest() const { return _rest; }

 private:
  std::string_view _rest;
};

// A private directory for the files a target writes, removed at exit.
class Workspace {
 public:
  Workspace() {
    const char* base = std::getenv("TMPDIR");
    std::string pattern = std::string(base && *base ? base : "/tmp") + "/vx0sess0-fuzz.XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr) Fail("mkdtemp", pattern, __FILE__, __LINE__);
    _path = pattern;
  }
  ~Workspace() {
    std::error_code error;
    std::filesystem::remove_all(_path, error);
  }
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;

  [[nodiscard]] const std::string& Path() const { return _path; }
  [[nodiscard]] std::string PathOf(const std::string& iRelative) const {
    return _path + "/" + iRelative;
  }

  // Writes iContent to iRelative (its directory must exist); returns the path.
  std::string Write(const std::string& iRelative, std::string_view iContent) const {
    std::string path = PathOf(iRelative);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(iContent.data(), static_cast<std::streamsize>(iContent.size()));
    file.close();
    if (!file) Fail("write", path, __FILE__, __LINE__);
    return path;
  }

 private:
  std::string _path;
};

// Makes the platform see the workspace alone: catalogues and declaration
// resources are searched there only, and no language, administrator
// settings or trace variable of the machine running the target is read.
inline void IsolateEnvironment(const Workspace& iWorkspace) {
  for (const char* name : {"KOR_ADMIN_SETTINGS", "KORHUB_TRACE", "KORHUB_TRACE_FILE"}) {
    ::unsetenv(name);
  }
  const KORListValKORUnicodeString languages = KORMsgCatalog::GetLanguageVariables();
  for (int i = 1; i <= languages.Size(); ++i) ::unsetenv(languages[i].ConvertToChar());
  ::setenv("KOR_DCLS_PATH", iWorkspace.Path().c_str(), 1);
  ::setenv("KOR_MSGCATALOG_PATH", iWorkspace.Path().c_str(), 1);
}

}  // namespace fuzz

// Stops the process when iCondition is false; iWhat (a std::string
// expression) is evaluated only then, to say what was expected.
#define FUZZ_REQUIRE(iCondition, iWhat)                                        \
  do {                                                                         \
    if (!(iCondition)) ::fuzz::Fail(#iCondition, (iWhat), __FILE__, __LINE__); \
  } while (false)

#endif
