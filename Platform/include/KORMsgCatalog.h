// KORMsgCatalog and KORMsg: the platform's message catalogues, the texts a
// program shows in the user's language.
//
// A catalogue is a set of resource files (see KORResourceFile.h for their
// format) with one file per language. A catalogue `Name` in language `ll_CC`
// is the file <dir>/ll_CC/Name.msgcat; the default-language file is
// <dir>/Name.msgcat.
//
// Search path: the directories of KOR_MSGCATALOG_PATH, separated by ':' (empty
// entries are skipped); when the variable is unset or names no directory, the
// installed share/VX0SESS0/msgcatalog.
//
// Language: the first non-empty of KOR_LANGUAGE, LC_ALL, LC_MESSAGES, LANG,
// without its ".codeset" and "@modifier". A key is looked for level by level:
//   1. the exact language         fr_CA.UTF-8@euro -> fr_CA/Name.msgcat
//   2. the base language          -> fr/Name.msgcat
//   3. the untranslated default   -> Name.msgcat
// A language without region (fr) has levels 2 and 3; C, POSIX, no language
// (or one that cannot name a directory, such as "../x") has level 3 only. For
// each level the file is taken from the first directory of the search path
// that has a readable one: a file that exists but cannot be read counts as
// absent (the next directory is tried) and is mentioned in the diagnostic of
// a failed lookup. The first level whose file declares the key wins, also
// when it declares it empty.
//
// A subdirectory of a catalogue directory is a language level only when a
// language can name it: a name that contains '.' or '@' (a codeset or a
// modifier, which the language is used without), that starts with '.', or
// that is "C" or "POSIX" is never searched (IsLanguageDirectory).
//
// Cache: the resolved search path, the language levels and every catalogue's
// files (found or not) are read once for the life of the process; later
// lookups do no I/O. FlushCache() forgets them all, so that the next lookup
// reads the environment and the files again. The service is thread-safe.
//
//   KORMsgCatalog* catalog = new KORMsgCatalog("KORLumSessionFile");
//   KORMsg msg = catalog->GetMsg("TypeGraph.Msg");   // may raise, see below
//   KORUnicodeString text;
//   msg.BuildMessage(&text);                         // "Graph"
//   delete catalog;
//
// Throw contract: KORMsgCatalog::GetMsg is the only operation here that
// raises. It raises a KORNLSCatalogError (a heap object, through KORRaise:
// catch it with a KORXHContext, which owns it) exactly when no language level
// has a readable file for the catalogue, or when no level's file declares the
// key. Its diagnostic names the catalogue, the key, the language levels tried
// and the reason (no file, or key not declared), and lists the unreadable
// files that were skipped. Nothing else raises a KORError; the diagnostic
// accessors never raise.
#ifndef KORMsgCatalog_h
#define KORMsgCatalog_h

#include <atomic>
#include <utility>
#include <vector>

#include "KORListValKORUnicodeString.h"
#include "KORPlatformExport.h"
#include "KORResourceFile.h"
#include "KORString.h"
#include "KORUnicodeString.h"

// How one key of a catalogue resolves for one language: the level, file and
// line that give its text, or why none does. KORMsgCatalog::GetMsg takes the
// same path, and raises where this says NoFile or NotDeclared.
struct KORMsgResolution {
  enum Outcome {
    Found = 0,       // a level declares the key (possibly empty)
    NoFile = 1,      // no level has a readable file for the catalogue
    NotDeclared = 2  // files exist, but none declares the key
  };
  Outcome outcome = NoFile;
  int level = 0;              // 1-based position in the levels of the level found; 0 when none
  KORUnicodeString language;  // that level: "fr_CA", "fr", or "" for the default texts
  KORUnicodeString file;      // the file that declares the key
  int line = 0;               // the line of that declaration
  KORUnicodeString text;      // the message text
};

// Implementation detail of KORMsgCatalog::GetCacheStamp: read through it.
namespace KORMsgCatalogDetail {
extern KORPLATFORM_API std::atomic<unsigned long> gCacheStamp;
}  // namespace KORMsgCatalogDetail

// One message of a catalogue: its text, held by value.
class KORPLATFORM_API KORMsg {
 public:
  // An empty message.
  KORMsg() = default;
  // Takes iText by value and moves it in (a caller's temporary is never copied).
  // cppcheck-suppress passedByValue
  explicit KORMsg(KORUnicodeString iText) noexcept : _text(std::move(iText)) {}

  // Sets *oText to the message text unchanged (no parameter is substituted,
  // "{1}" stays as written) and returns 0. A null oText is a programming
  // error (the process stops through __assert).
  int BuildMessage(KORUnicodeString* oText) const&;
  // The same for a message about to be dropped, as in
  // catalog->GetMsg(key).BuildMessage(&text): its text is moved, not copied.
  int BuildMessage(KORUnicodeString* oText) &&;

  // Sets *oText to the message text with "{1}", "{2}", ... replaced by the
  // parameters at those positions (1-based) and returns 0. The text is
  // scanned once from left to right: a parameter's own text is not scanned
  // again. A placeholder without parameter ("{3}" with two parameters,
  // "{0}") and any other brace stay as they are:
  //   "Open {1} with {2}" with ("model.hub", "Viewer3D") -> "Open model.hub with Viewer3D"
  // A null oText is a programming error.
  int BuildMessage(KORUnicodeString* oText, const KORListValKORUnicodeString& iParameters) const;

 private:
  KORUnicodeString _text;
};

class KORPLATFORM_API KORMsgCatalog {
 public:
  // The catalogue named iCatalogName. Construction reads nothing: the files
  // are found on the first lookup.
  explicit KORMsgCatalog(const KORString& iCatalogName);
  // A catalogue of a program's own, searched in iDirectories (in order)
  // instead of the search path; languages and levels as for any catalogue.
  KORMsgCatalog(const KORString& iCatalogName, const KORListValKORUnicodeString& iDirectories);
  KORMsgCatalog(const KORMsgCatalog&) = default;
  KORMsgCatalog& operator=(const KORMsgCatalog&) = default;
  virtual ~KORMsgCatalog();

  // The message declared under iKey at the first language level that
  // declares it. Raises KORNLSCatalogError when the catalogue has no file
  // or no level declares the key (see the throw contract above).
  [[nodiscard]] KORMsg GetMsg(const KORString& iKey) const;

  // Sets *oText to the message declared under iKey at the first language
  // level that declares it and returns 0; returns non-zero, leaving *oText
  // as it was, where GetMsg would raise. Never raises: a program for which a
  // missing text is no error (the texts of a site without translations)
  // pays nothing for it. A null oText is a programming error.
  int Find(const KORString& iKey, KORUnicodeString* oText) const;
  // The diagnostic that GetMsg raises for iKey when the lookup fails (built
  // now, from the files read): for those who show why Find returned
  // non-zero. Never raises.
  [[nodiscard]] KORString DescribeFailure(const KORString& iKey) const;

  // How iKey resolves in the language in force: the same search as GetMsg,
  // reported instead of raised. Never raises.
  [[nodiscard]] KORMsgResolution Resolve(const KORString& iKey) const;
  // How iKey resolves for a user whose language is iLanguage, written as a
  // language variable holds it ("ja_JP.UTF-8", "fr", "C"; empty means the
  // default texts), with the same search path. Never raises.
  [[nodiscard]] KORMsgResolution Resolve(const KORString& iKey, const KORString& iLanguage) const;

  // The catalogue name given at construction.
  [[nodiscard]] const KORString& GetCatalogName() const noexcept { return _catalogName; }

  // Forgets the resolved environment and every file read, in the whole
  // process; the next lookup reads them again.
  static void FlushCache();

  // The stamp of what the service has read: it stays the same for as long
  // as every lookup answers as it did, and changes when an answer may
  // change, that is when FlushCache forgets what was read and after a
  // lookup that met a failure it does not remember (a catalogue that the
  // next lookup searches again, see the throw contract). A program that
  // reads the stamp before a lookup may keep what the lookup gave, text or
  // failure, for as long as the stamp is still the one it read: the same
  // lookup would give the same answer. Never 0; one load, no lock.
  //
  //   const unsigned long stamp = KORMsgCatalog::GetCacheStamp();
  //   found = catalog->Find("TypeGraph.Msg", &text);
  //   ...  // later: if (KORMsgCatalog::GetCacheStamp() == stamp) text and found still hold
  [[nodiscard]] static unsigned long GetCacheStamp() noexcept {
    return KORMsgCatalogDetail::gCacheStamp.load(std::memory_order_acquire);
  }

  // --- Diagnostics (for the tools that check a configuration) ---------------
  // They resolve and cache what a lookup would, and never raise.

  // The directories searched, in order (a copy).
  [[nodiscard]] static KORListValKORUnicodeString GetSearchPath();
  // The language levels tried, in order, e.g. ("fr_CA", "fr", ""): the last
  // one, "", is the untranslated default file (a copy).
  [[nodiscard]] static KORListValKORUnicodeString GetLanguageLevels();
  // The levels of the language iLanguage, written as a language variable
  // holds it: "fr_CA.UTF-8@euro" gives ("fr_CA", "fr", ""), "fr" gives
  // ("fr", ""), "C", "POSIX", "" and a name that cannot be a directory give ("").
  [[nodiscard]] static KORListValKORUnicodeString GetLanguageLevels(const KORString& iLanguage);
  // The variables that give the language, in the order they are read:
  // KOR_LANGUAGE, LC_ALL, LC_MESSAGES, LANG (the first non-empty one wins).
  [[nodiscard]] static KORListValKORUnicodeString GetLanguageVariables();
  // The variable that gives the language in force, or "" when none is set.
  [[nodiscard]] static KORUnicodeString GetLanguageVariable();
  // Whether a subdirectory named iName of a catalogue directory can be a
  // language level (see the rule above): 1 or 0.
  [[nodiscard]] static int IsLanguageDirectory(const KORString& iName);
  // For each language level (same positions as GetLanguageLevels), the path
  // of this catalogue's file used at that level, or "" when no directory has
  // a readable one.
  [[nodiscard]] KORListValKORUnicodeString GetFilesUsed() const;
  // The problems met while reading this catalogue: "file: reason" for each
  // unreadable file skipped, then "file:line: reason" for each malformed line
  // or duplicate key of the files used.
  [[nodiscard]] KORListValKORUnicodeString GetProblems() const;
  // For each level of the language iLanguage (as GetLanguageLevels(iLanguage)
  // gives them), the parsed file used at that level: absent when no
  // directory has a readable one.
  [[nodiscard]] std::vector<KORResourceFile> GetLevelFiles(const KORString& iLanguage) const;
  // The files found for those levels that could not be read, each with its
  // problem, in search order.
  [[nodiscard]] std::vector<KORResourceFile> GetSkippedFiles(const KORString& iLanguage) const;

 private:
  KORString _catalogName;
  // The catalogue's own directories, "" when it uses the search path: they
  // are part of the name under which the cache keeps it.
  KORString _directories;
};

#endif
