// KORResourceFile: one parsed resource file of the platform — a message
// catalogue (.msgcat), a declaration resource (.dcls) or the administrator
// settings file. The three kinds share one text format and this one parser.
//
//   # a comment (also lines whose first non-blank character is '!')
//   TypeGraph.Msg = Graph
//   KORBRIX.METHOD_LIST(1).WHERE = HUB
//   Leading.Msg = "  keeps blanks, \"quotes\", \\ and \n escapes"
//   Empty.Msg =
//
// The format, line by line:
//   - UTF-8 text; a leading byte-order mark is skipped; lines end with LF or
//     CRLF. Blank lines and comments are ignored. Blank means space or tab.
//   - `key = value`: the key is the text before the first '=', trimmed of
//     blanks, non-empty and without blank inside; the value is the rest,
//     trimmed of blanks.
//   - A value starting with '"' is quoted: it ends at the next unescaped '"',
//     after which only blanks may follow; inside it \" \\ \n \t are the only
//     escapes. Any other value is taken literally.
//   - `key =` and `key = ""` declare an empty value, which is found like any
//     other value.
//   - A malformed line (no '=', empty key, blank in the key, bad quoting,
//     unknown escape, a NUL byte) is skipped and the rest of the file is still
//     read. Bytes that are not valid UTF-8 become U+FFFD; the line is kept.
//   - A key declared twice: the last declaration wins.
// Every problem met is recorded as "file:line: reason" (or "file: reason" for
// a file that cannot be read) for the tools that show them; the first 100 are
// kept, followed by one "file: N more problems not listed".
//
// Size and memory: files up to 256 MiB are read; a larger one is Unreadable
// and its problem says why. Reading stops at the size the file had when it
// was opened. Loading takes at most about twice the file's size plus a
// constant for blank, malformed or repeated lines.
//
//   KORResourceFile file = KORResourceFile::Load("/opt/cfg/KORBRIX.dcls");
//   if (file.GetState() == KORResourceFile::Loaded) {
//     const KORUnicodeString* where = file.Find("KORBRIX.METHOD_LIST(1).WHERE");
//     // where is null when the key is not declared.
//   }
//   KORListValKORUnicodeString problems = file.GetProblems();
//
// A KORResourceFile is a cheap handle on immutable parsed content: copies
// share it, and it lives as long as the last copy. Nothing here raises.
#ifndef KORResourceFile_h
#define KORResourceFile_h

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "KORListValKORUnicodeString.h"
#include "KORPlatformExport.h"
#include "KORString.h"
#include "KORUnicodeString.h"

namespace kor_detail {
struct ResourceFileContent;  // the parsed content, private to the platform
}

// One problem met while reading a resource file, for the tools that present
// problems their own way (KORResourceFile::GetProblems gives them as text).
struct KORResourceProblem {
  int line;            // 1-based; 0 for a problem of the whole file
  std::string reason;  // what is wrong, without the file name and line
};

class KORPLATFORM_API KORResourceFile {
 public:
  enum State {
    Loaded = 0,     // the file was read and parsed (it may have had malformed lines)
    Absent = 1,     // there is no file at that path
    Unreadable = 2  // something is there but cannot be read (permissions, a directory, ...)
  };

  // The encoding the bytes of a loaded file are in, as far as they tell.
  enum Encoding {
    Utf8 = 0,     // well-formed UTF-8 (also a file without any byte above 127)
    Utf16 = 1,    // a UTF-16 byte-order mark, or NUL bytes among the first ones
    EightBit = 2  // not UTF-8: most likely Latin-1 or Windows-1252
  };

  // An absent file without name and without keys.
  KORResourceFile();
  KORResourceFile(const KORResourceFile&) = default;
  KORResourceFile(KORResourceFile&&) noexcept = default;
  KORResourceFile& operator=(const KORResourceFile&) = default;
  KORResourceFile& operator=(KORResourceFile&&) noexcept = default;
  ~KORResourceFile();

  // Reads and parses the file at iPath (a null or empty path is absent). A
  // directory or anything else that is not a regular file is Unreadable, as
  // is a file the process may not read or one above 256 MiB; either records
  // one problem. So is a file that could not be read for a reason that is
  // not the file's (see IsTransientFailure).
  [[nodiscard]] static KORResourceFile Load(const char* iPath);

  // Parses text held in memory; iFileName only names it in the problems.
  // Text above 256 MiB is Unreadable, as a file of that size is.
  [[nodiscard]] static KORResourceFile Parse(std::string_view iContent, const char* iFileName);

  [[nodiscard]] State GetState() const noexcept;

  // Whether the file is Unreadable for a reason that says nothing about the
  // file itself: too many open files, out of memory, an interrupted or failed
  // read. A later Load may well succeed, so whoever keeps what it found must
  // not keep this answer. Its problem names the reason.
  [[nodiscard]] bool IsTransientFailure() const noexcept;
  // The path given to Load (or the name given to Parse).
  [[nodiscard]] const KORString& GetFileName() const noexcept;

  // Number of distinct keys declared.
  [[nodiscard]] int GetSize() const noexcept;

  // The value declared under iKey (UTF-8, compared byte for byte), or null
  // when the key is not declared. The pointer stays valid as long as this
  // handle or a copy of it lives.
  [[nodiscard]] const KORUnicodeString* Find(std::string_view iKey) const noexcept;

  // The line of the declaration that Find gives for iKey (1-based), or 0
  // when the key is not declared.
  [[nodiscard]] int GetLine(std::string_view iKey) const noexcept;

  // Calls iVisit with each key, in the order of its first declaration, and
  // the line of the declaration Find gives for it; nothing is copied (for
  // files of many keys). The key's text is valid during the call.
  void ForEachKey(const std::function<void(std::string_view iKey, int iLine)>& iVisit) const;

  // The keys, in the order of their first declaration (a copy).
  [[nodiscard]] KORListValKORUnicodeString GetKeys() const;

  // The problems met, in line order: "file:line: reason" for a malformed line
  // or a duplicate key, "file: reason" for a file that cannot be read. Empty
  // for a clean or absent file (a copy).
  [[nodiscard]] KORListValKORUnicodeString GetProblems() const;
  // The same problems, each with its line and reason apart.
  [[nodiscard]] std::vector<KORResourceProblem> GetProblemDetails() const;

  // What the bytes of the file are: Utf8 for an absent or unreadable file.
  // Its text is read as UTF-8 whatever it is (ill-formed bytes become
  // U+FFFD); this says whether that was right.
  [[nodiscard]] Encoding GetEncoding() const noexcept;
  // The first line holding a byte that is not UTF-8 (for EightBit), else 0.
  [[nodiscard]] int GetIllFormedLine() const noexcept;

 private:
  explicit KORResourceFile(
      std::shared_ptr<const kor_detail::ResourceFileContent> iContent) noexcept;

  std::shared_ptr<const kor_detail::ResourceFileContent> _content;
};

#endif
