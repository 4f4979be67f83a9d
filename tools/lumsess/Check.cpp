// lumsess check: validates a configuration before it is rolled out, and
// explains it. Every finding is a line "FILE:LINE: error|warning: message"
// (followed by "FILE:LINE: note: hint" when there is a hint), then come the
// sections that explain the configuration: declarations, catalogues with
// their statistics, settings, paths and the METHOD_LIST table entry by entry.
//
// Errors are what the administrator wrote that the library will ignore or
// misread; warnings are what it fills on its own (an untranslated text, a
// fallback path). Exit status 1 with an error, or with a warning under
// --strict.
//
// Every rule applied here is the library's or the platform's, asked of them:
// the keys read and the values accepted (GetKeysRead), the METHOD_LIST walk
// (ExplainViewers), the paths (ExplainBRIXFilesPath, ExplainGraphFilesPath),
// the catalogue search and the language chain (KORMsgCatalog::Resolve,
// GetLevelFiles, IsLanguageDirectory), the resource-file parser
// (KORResourceFile) and the settings (GetAdminSettingsFile).
//
// `check FILE...` validates resource files on their own: syntax, encoding,
// and keys or values that the library would not read as written.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <initializer_list>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "Configuration.h"
#include "KORGetEnv.h"
#include "KORILumServices.h"
#include "KORLumPool.h"
#include "KORLumSessionFileUtilities.h"
#include "KORMsgCatalog.h"
#include "KORResourceFile.h"
#include "Lumsess.h"

namespace fs = std::filesystem;

namespace lumsess {

namespace {

using json = Json;
using Entry = KORLumMethodListEntry;

std::vector<std::string> gFiles;  // check FILE...
bool gStrict = false;             // --strict

// --- Findings ---------------------------------------------------------------------

enum class Severity { kError, kWarning };

struct Finding {
  std::string file;
  int line = 0;
  Severity severity = Severity::kError;
  std::string code;
  std::string message;
  std::string hint;
};

class Findings {
 public:
  void Add(Severity iSeverity, std::string iFile, int iLine, std::string iCode,
           std::string iMessage, std::string iHint = std::string()) {
    _all.push_back({std::move(iFile), iLine, iSeverity, std::move(iCode), std::move(iMessage),
                    std::move(iHint)});
  }
  void Error(std::string iFile, int iLine, std::string iCode, std::string iMessage,
             std::string iHint = std::string()) {
    Add(Severity::kError, std::move(iFile), iLine, std::move(iCode), std::move(iMessage),
        std::move(iHint));
  }
  void Warning(std::string iFile, int iLine, std::string iCode, std::string iMessage,
               std::string iHint = std::string()) {
    Add(Severity::kWarning, std::move(iFile), iLine, std::move(iCode), std::move(iMessage),
        std::move(iHint));
  }
  [[nodiscard]] const std::vector<Finding>& All() const { return _all; }
  [[nodiscard]] std::size_t Count(Severity iSeverity) const {
    return static_cast<std::size_t>(
        std::count_if(_all.begin(), _all.end(),
                      [iSeverity](const Finding& f) { return f.severity == iSeverity; }));
  }

 private:
  std::vector<Finding> _all;
};

const char* SeverityName(Severity iSeverity) {
  return iSeverity == Severity::kError ? "error" : "warning";
}

std::string Place(const Finding& iFinding) {
  std::string place = iFinding.file.empty() ? std::string("lumsess") : iFinding.file;
  if (iFinding.line > 0) place += ":" + std::to_string(iFinding.line);
  return place;
}

void PrintFindings(const Findings& iFindings) {
  for (const Finding& finding : iFindings.All()) {
    std::cout << Place(finding) << ": " << SeverityName(finding.severity) << ": " << finding.message
              << '\n';
    if (!finding.hint.empty()) std::cout << Place(finding) << ": note: " << finding.hint << '\n';
  }
}

json ToJson(const Findings& iFindings) {
  json findings = json::array();
  for (const Finding& finding : iFindings.All()) {
    findings.push_back({{"file", finding.file},
                        {"line", finding.line},
                        {"severity", SeverityName(finding.severity)},
                        {"code", finding.code},
                        {"message", finding.message},
                        {"hint", finding.hint.empty() ? json(nullptr) : json(finding.hint)}});
  }
  return findings;
}

// --- Near misses --------------------------------------------------------------------

std::string Lower(std::string iText) {
  for (char& c : iText) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return iText;
}

// The number of single-character edits between two texts, counted up to 3.
std::size_t Distance(const std::string& iLeft, const std::string& iRight) {
  const std::size_t left = iLeft.size();
  const std::size_t right = iRight.size();
  if ((left > right ? left - right : right - left) > 2) return 3;
  std::vector<std::size_t> previous(right + 1);
  std::vector<std::size_t> current(right + 1);
  for (std::size_t j = 0; j <= right; ++j) previous[j] = j;
  for (std::size_t i = 1; i <= left; ++i) {
    current[0] = i;
    for (std::size_t j = 1; j <= right; ++j) {
      const std::size_t substitution = previous[j - 1] + (iLeft[i - 1] == iRight[j - 1] ? 0 : 1);
      current[j] = std::min({previous[j] + 1, current[j - 1] + 1, substitution});
    }
    std::swap(previous, current);
  }
  return std::min<std::size_t>(previous[right], 3);
}

// The known text that iText was probably meant to be: one that differs only
// in case, or by at most two edits (one for short texts); empty when none.
std::string NearMiss(const std::string& iText, const std::vector<std::string>& iKnown) {
  const std::string lower = Lower(iText);
  for (const std::string& known : iKnown) {
    if (known != iText && Lower(known) == lower) return known;
  }
  const std::size_t allowed = iText.size() <= 6 ? 1 : 2;
  for (const std::string& known : iKnown) {
    if (known != iText && Distance(Lower(known), lower) <= allowed) return known;
  }
  return std::string();
}

// The parts one after the other, in one string built once.
std::string Concat(std::initializer_list<std::string_view> iParts) {
  std::size_t size = 0;
  for (const std::string_view part : iParts) size += part.size();
  std::string text;
  text.reserve(size);
  for (const std::string_view part : iParts) text.append(part);
  return text;
}

// iText without blanks at either end.
std::string Trimmed(const std::string& iText) {
  const std::size_t begin = iText.find_first_not_of(" \t");
  if (begin == std::string::npos) return std::string();
  return iText.substr(begin, iText.find_last_not_of(" \t") + 1 - begin);
}

bool OnlyCaseDiffers(const std::string& iLeft, const std::string& iRight) {
  return iLeft != iRight && Lower(iLeft) == Lower(iRight);
}

// --- What the library reads ---------------------------------------------------------

// A key pattern with "%d" for an entry's index: the text before and after it.
struct Pattern {
  std::string prefix;
  std::string suffix;
};

Pattern Split(const std::string& iPattern) {
  const std::size_t at = iPattern.find("%d");
  if (at == std::string::npos) return {iPattern, std::string()};
  return {iPattern.substr(0, at), iPattern.substr(at + 2)};
}

// The keys the library reads, sorted by the kind of file that holds them.
struct Knowledge {
  std::vector<std::string> declarationKeys;  // with "%d" for the index
  std::vector<std::string> resources;        // the declaration resources, in order
  std::vector<std::string> settingKeys;      // as the settings file declares them
  std::vector<std::string> catalogues;       // the catalogues, in order
  std::map<std::string, std::vector<std::string>> catalogueKeys;  // fixed keys by catalogue
  // Derived keys by catalogue: suffix and the METHOD_LIST field that starts it.
  std::map<std::string, std::vector<std::pair<std::string, std::string>>> derived;
  // The accepted values of the keys that have some, by key as written in a file.
  std::map<std::string, std::vector<std::string>> accepted;
  // The values of TAG and KORAB that the METHOD_LIST makes the library read.
  std::map<std::string, std::set<std::string>> derivedFrom;  // field -> values
};

void AddOnce(std::vector<std::string>& ioList, const std::string& iValue) {
  if (std::find(ioList.begin(), ioList.end(), iValue) == ioList.end()) ioList.push_back(iValue);
}

Knowledge LibraryKnowledge() {
  Knowledge knowledge;
  for (const KORLumKeyRead& key : KORLumSessionFileUtilities::GetKeysRead()) {
    std::string name;
    switch (key.source) {
      case KORLumKeyRead::Declaration:
        name = key.key;
        AddOnce(knowledge.resources, key.container);
        knowledge.declarationKeys.push_back(name);
        break;
      case KORLumKeyRead::Setting:
        name = Text(GetAdminSettingKey(key.key, key.container));
        knowledge.settingKeys.push_back(name);
        break;
      case KORLumKeyRead::Catalogue:
        AddOnce(knowledge.catalogues, key.container);
        if (key.derivedFrom != nullptr) {
          knowledge.derived[key.container].emplace_back(key.key, key.derivedFrom);
        } else {
          knowledge.catalogueKeys[key.container].push_back(key.key);
        }
        continue;
    }
    if (key.accepted != nullptr) {
      for (const char* const* value = key.accepted; *value != nullptr; ++value) {
        knowledge.accepted[name].emplace_back(*value);
      }
    }
  }
  return knowledge;
}

// The field of a METHOD_LIST key pattern ("TAG" for "...(%d).TAG").
std::string FieldOf(const std::string& iPattern) {
  const std::size_t dot = iPattern.rfind('.');
  return dot == std::string::npos ? iPattern : iPattern.substr(dot + 1);
}

// --- One resource file ---------------------------------------------------------------

enum class FileKind { kDeclarations, kCatalogue, kSettings };

std::string FileName(const KORResourceFile& iFile) {
  return std::string(iFile.GetFileName().View());
}

// Reports what the parser met: encoding, malformed lines, duplicate keys.
void CheckSyntax(const KORResourceFile& iFile, Findings& ioFindings) {
  const std::string file = FileName(iFile);
  if (iFile.GetState() == KORResourceFile::Unreadable) {
    for (const KORResourceProblem& problem : iFile.GetProblemDetails()) {
      ioFindings.Error(file, problem.line, "unreadable-file",
                       "the file " + problem.reason + ": the library passes it over",
                       "make it a readable regular file");
    }
    return;
  }
  if (iFile.GetState() != KORResourceFile::Loaded) return;
  const bool utf16 = iFile.GetEncoding() == KORResourceFile::Utf16;
  if (utf16) {
    ioFindings.Error(file, 0, "encoding",
                     "the file is UTF-16, not UTF-8: the library cannot read its declarations",
                     "convert it: iconv -f UTF-16 -t UTF-8 " + file + " > " + file + ".utf8");
  } else if (iFile.GetEncoding() == KORResourceFile::EightBit) {
    ioFindings.Error(file, iFile.GetIllFormedLine(), "encoding",
                     "the file is not UTF-8 (first at this line): its accented letters are read "
                     "as U+FFFD",
                     "it looks like Latin-1 or Windows-1252: convert it with iconv -f "
                     "WINDOWS-1252 -t UTF-8");
  }
  for (const KORResourceProblem& problem : iFile.GetProblemDetails()) {
    // A UTF-16 file has a NUL byte on every line: its encoding says it all.
    if (utf16 && problem.reason.find("NUL byte") != std::string::npos) continue;
    const bool duplicate = problem.reason.find("declared again") != std::string::npos;
    ioFindings.Error(file, problem.line, duplicate ? "duplicate-key" : "malformed-line",
                     problem.reason,
                     duplicate ? "remove one of the two declarations"
                               : "write it as KEY = VALUE; the library skips this line");
  }
}

// For a key of a declaration file that names a METHOD_LIST entry: the
// pattern it follows and its index text, or false.
bool MatchEntryKey(const std::string& iKey, const std::vector<std::string>& iPatterns,
                   std::string& oPattern, std::string& oIndex) {
  for (const std::string& pattern : iPatterns) {
    const Pattern parts = Split(pattern);
    if (parts.suffix.empty()) continue;
    if (iKey.size() <= parts.prefix.size() + parts.suffix.size()) continue;
    if (iKey.compare(0, parts.prefix.size(), parts.prefix) != 0) continue;
    if (iKey.compare(iKey.size() - parts.suffix.size(), parts.suffix.size(), parts.suffix) != 0) {
      continue;
    }
    oPattern = pattern;
    oIndex =
        iKey.substr(parts.prefix.size(), iKey.size() - parts.prefix.size() - parts.suffix.size());
    return true;
  }
  return false;
}

// The index as the library writes it ("%d" of 1, 2, ...), or 0.
int CanonicalIndex(const std::string& iIndex) {
  if (iIndex.empty() || iIndex.size() > 9 || iIndex[0] == '0') return 0;
  if (iIndex.find_first_not_of("0123456789") != std::string::npos) return 0;
  return std::stoi(iIndex);
}

// iKey with its first "(...)" written "(%d)", and the text that was there.
std::string AsPattern(const std::string& iKey, std::string& oIndex) {
  const std::size_t open = iKey.find('(');
  const std::size_t close = open == std::string::npos ? open : iKey.find(')', open);
  if (close == std::string::npos) return iKey;
  oIndex = iKey.substr(open + 1, close - open - 1);
  return iKey.substr(0, open + 1) + "%d" + iKey.substr(close);
}

std::string WithIndex(const std::string& iPattern, const std::string& iIndex) {
  const Pattern parts = Split(iPattern);
  return parts.suffix.empty() && iPattern.find("%d") == std::string::npos
             ? iPattern
             : parts.prefix + iIndex + parts.suffix;
}

void CheckValue(const std::string& iFile, int iLine, const std::string& iKey,
                const std::string& iValue, const std::vector<std::string>& iAccepted,
                Findings& ioFindings) {
  if (std::find(iAccepted.begin(), iAccepted.end(), iValue) != iAccepted.end()) return;
  for (const std::string& accepted : iAccepted) {
    if (Lower(Trimmed(iValue)) == Lower(accepted)) {
      ioFindings.Error(
          iFile, iLine, "value-case",
          Concat({iKey, " = ", Quote(iValue), " is not ", Quote(accepted),
                  ": the library compares the value exactly, case and blanks included"}),
          Concat({"write ", iKey, " = ", accepted}));
      return;
    }
  }
}

// Keys and values of a declaration file that the library would not read as
// written.
void CheckDeclarationKeys(const KORResourceFile& iFile, const Knowledge& iKnowledge,
                          Findings& ioFindings) {
  const std::string file = FileName(iFile);
  iFile.ForEachKey([&](std::string_view iKey, int iLine) {
    const std::string key(iKey);
    const int line = iLine;
    std::string pattern;
    std::string index;
    if (MatchEntryKey(key, iKnowledge.declarationKeys, pattern, index)) {
      if (CanonicalIndex(index) == 0) {
        ioFindings.Error(file, line, "entry-index",
                         key +
                             " is never read: METHOD_LIST entries are numbered 1, 2, 3, ... "
                             "without leading zeros or blanks",
                         "number the entry from 1 up, as in " + WithIndex(pattern, "1"));
        return;
      }
      const auto accepted = iKnowledge.accepted.find(pattern);
      if (accepted != iKnowledge.accepted.end()) {
        CheckValue(file, line, key, Text(*iFile.Find(key)), accepted->second, ioFindings);
      }
      return;
    }
    if (std::find(iKnowledge.declarationKeys.begin(), iKnowledge.declarationKeys.end(), key) !=
        iKnowledge.declarationKeys.end()) {
      return;
    }
    std::string written;
    const std::string asPattern = AsPattern(key, written);
    const std::string meant = NearMiss(asPattern, iKnowledge.declarationKeys);
    if (!meant.empty()) {
      const std::string suggestion = WithIndex(meant, written);
      ioFindings.Error(file, line, "unknown-key",
                       "the library never reads " + key + ": did you mean " + suggestion + "?",
                       "rename the key to " + suggestion);
    }
  });
}

void CheckSettingKeys(const KORResourceFile& iFile, const Knowledge& iKnowledge,
                      Findings& ioFindings) {
  const std::string file = FileName(iFile);
  iFile.ForEachKey([&](std::string_view iKey, int iLine) {
    const std::string key(iKey);
    const auto accepted = iKnowledge.accepted.find(key);
    if (accepted != iKnowledge.accepted.end()) {
      CheckValue(file, iLine, key, Text(*iFile.Find(key)), accepted->second, ioFindings);
      return;
    }
    const std::string meant = NearMiss(key, iKnowledge.settingKeys);
    if (!meant.empty()) {
      ioFindings.Error(file, iLine, "unknown-key",
                       "the library never reads " + key + ": did you mean " + meant + "?",
                       "rename the key to " + meant);
    }
  });
}

// Keys of the catalogue iCatalogue's file that the library would not read
// as written. iDerivedValues holds the TAG and KORAB values of the
// METHOD_LIST (empty when a file is checked on its own).
void CheckCatalogueKeys(const KORResourceFile& iFile, const std::string& iCatalogue,
                        const Knowledge& iKnowledge, Findings& ioFindings) {
  const auto fixed = iKnowledge.catalogueKeys.find(iCatalogue);
  const auto derived = iKnowledge.derived.find(iCatalogue);
  if (fixed == iKnowledge.catalogueKeys.end() && derived == iKnowledge.derived.end()) return;
  const std::vector<std::string> none;
  const std::vector<std::string>& fixedKeys =
      fixed != iKnowledge.catalogueKeys.end() ? fixed->second : none;
  const std::string file = FileName(iFile);
  iFile.ForEachKey([&](std::string_view iKey, int iLine) {
    const std::string key(iKey);
    if (std::find(fixedKeys.begin(), fixedKeys.end(), key) != fixedKeys.end()) return;
    const int line = iLine;
    const std::string meant = NearMiss(key, fixedKeys);
    if (!meant.empty()) {
      ioFindings.Error(
          file, line, "unknown-key",
          "the library never reads " + key + " in " + iCatalogue + ": did you mean " + meant + "?",
          "rename the key to " + meant);
      return;
    }
    if (derived == iKnowledge.derived.end()) return;
    const std::size_t dot = key.rfind('.');
    if (dot == std::string::npos || dot == 0) return;
    const std::string stem = key.substr(0, dot);
    const std::string suffix = key.substr(dot);
    for (const auto& [wanted, field] : derived->second) {
      if (suffix != wanted) {
        if (!NearMiss(suffix, {wanted}).empty()) {
          ioFindings.Error(
              file, line, "unknown-key",
              Concat({"the library never reads ", key, ": did you mean ", stem, wanted, "?"}),
              Concat({"rename the key to ", stem, wanted}));
        }
        continue;
      }
      const auto values = iKnowledge.derivedFrom.find(field);
      if (values == iKnowledge.derivedFrom.end() || values->second.count(stem) != 0) continue;
      for (const std::string& value : values->second) {
        if (OnlyCaseDiffers(value, stem)) {
          ioFindings.Error(file, line, "unknown-key",
                           Concat({"the library never reads ", key, ": the ", field, " is ", value,
                                   ", so it reads ", value, wanted}),
                           Concat({"rename the key to ", value, wanted}));
        }
      }
    }
  });
}

void CheckFile(const KORResourceFile& iFile, FileKind iKind, const std::string& iCatalogue,
               const Knowledge& iKnowledge, Findings& ioFindings) {
  CheckSyntax(iFile, ioFindings);
  if (iFile.GetState() != KORResourceFile::Loaded ||
      iFile.GetEncoding() == KORResourceFile::Utf16) {
    return;
  }
  switch (iKind) {
    case FileKind::kDeclarations:
      CheckDeclarationKeys(iFile, iKnowledge, ioFindings);
      break;
    case FileKind::kSettings:
      CheckSettingKeys(iFile, iKnowledge, ioFindings);
      break;
    case FileKind::kCatalogue:
      CheckCatalogueKeys(iFile, iCatalogue, iKnowledge, ioFindings);
      break;
  }
}

// --- check FILE... ---------------------------------------------------------------------

int CheckFiles(const GlobalOptions& iGlobal) {
  const Knowledge knowledge = LibraryKnowledge();
  Findings findings;
  json files = json::array();
  for (const std::string& name : gFiles) {
    const KORResourceFile file = KORResourceFile::Load(name.c_str());
    const fs::path path(name);
    FileKind kind = FileKind::kSettings;
    std::string catalogue;
    if (path.extension() == ".dcls") {
      kind = FileKind::kDeclarations;
    } else if (path.extension() == ".msgcat") {
      kind = FileKind::kCatalogue;
      catalogue = path.stem().string();
    }
    if (file.GetState() == KORResourceFile::Absent) {
      findings.Error(name, 0, "missing-file", "no such file");
    } else {
      CheckFile(file, kind, catalogue, knowledge, findings);
    }
    files.push_back({{"file", name},
                     {"kind", kind == FileKind::kDeclarations ? "declarations"
                              : kind == FileKind::kCatalogue  ? "catalogue"
                                                              : "settings"},
                     {"keys", file.GetSize()}});
  }
  const std::size_t errors = findings.Count(Severity::kError);
  const std::size_t warnings = findings.Count(Severity::kWarning);
  const bool failed = errors > 0 || (gStrict && warnings > 0);
  if (iGlobal.json) {
    PrintJson({{"files", files},
               {"findings", ToJson(findings)},
               {"errors", errors},
               {"warnings", warnings},
               {"ok", !failed}});
  } else {
    PrintFindings(findings);
  }
  if (failed) {
    std::cout.flush();
    std::cerr << "lumsess: " << errors << (errors == 1 ? " error" : " errors") << " and "
              << warnings << (warnings == 1 ? " warning" : " warnings") << " in " << gFiles.size()
              << (gFiles.size() == 1 ? " file." : " files.") << std::endl;
    return kProblems;
  }
  return kSuccess;
}

// --- The configuration: declarations ---------------------------------------------------

bool IsDirectory(const std::string& iPath) {
  std::error_code error;
  return fs::is_directory(iPath, error);
}

// The files of a directory whose names end with iExtension.
std::vector<fs::path> FilesIn(const std::string& iDirectory, const char* iExtension) {
  std::vector<fs::path> files;
  std::error_code error;
  for (fs::directory_iterator entry(iDirectory, error), end; !error && entry != end;
       entry.increment(error)) {
    if (entry->path().extension() == iExtension) files.push_back(entry->path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

// A file of iDirectory that was probably meant to be iWanted (a name that
// differs in case or by an edit or two), reported when iWanted is not there.
void CheckFileNames(const std::string& iDirectory, const std::vector<std::string>& iWanted,
                    const char* iExtension, const char* iWhat, Findings& ioFindings) {
  std::error_code error;
  for (const std::string& wanted : iWanted) {
    if (fs::exists(fs::path(iDirectory) / (wanted + iExtension), error)) continue;
    for (fs::directory_iterator entry(iDirectory, error), end; !error && entry != end;
         entry.increment(error)) {
      const std::string name = entry->path().filename().string();
      const std::string stem = entry->path().stem().string();
      const std::string extension = entry->path().extension().string();
      const bool sameStem = stem == wanted || !NearMiss(stem, {wanted}).empty();
      const bool sameExtension =
          extension == iExtension || !NearMiss(extension, {iExtension}).empty();
      if (name != wanted + iExtension && sameStem && sameExtension) {
        ioFindings.Error(entry->path().string(), 0, "file-name",
                         Concat({"the library never reads this file: the ", iWhat, " ", wanted,
                                 " is read from ", wanted, iExtension}),
                         Concat({"rename it to ", wanted, iExtension}));
      }
    }
  }
}

struct Declarations {
  json resources = json::array();
  bool brixLoaded = false;
};

Declarations CheckDeclarations(const Knowledge& iKnowledge, Findings& ioFindings) {
  Declarations declarations;
  const std::vector<std::string> directories = Texts(KORLumPool::GetSearchPath());
  for (const std::string& directory : directories) {
    if (!IsDirectory(directory)) {
      ioFindings.Warning(directory, 0, "missing-directory",
                         "the declaration directory does not exist");
    } else {
      CheckFileNames(directory, iKnowledge.resources, ".dcls", "declaration resource", ioFindings);
    }
  }
  for (const std::string& resource : iKnowledge.resources) {
    const bool loaded = KORLumPool::LoadPool(resource.c_str()) == 0;
    for (const KORResourceFile& skipped : KORLumPool::GetSkippedFiles(resource.c_str())) {
      CheckSyntax(skipped, ioFindings);
    }
    const KORResourceFile file = KORLumPool::GetResource(resource.c_str());
    if (loaded) {
      CheckFile(file, FileKind::kDeclarations, std::string(), iKnowledge, ioFindings);
    } else {
      ioFindings.Warning(
          directories.empty() ? std::string() : directories.front(), 0, "missing-resource",
          "no readable declaration resource " + resource + ".dcls in " + Join(directories, ":") +
              ": " +
              (resource == "MERLO" ? "the BRIX files path falls back to $PWD"
                                   : "the viewer catalogue stays empty and the graph files "
                                     "path falls back to the BRIX files path"));
    }
    if (resource == "KORBRIX") declarations.brixLoaded = loaded;
    declarations.resources.push_back(
        {{"resource", resource}, {"file", loaded ? json(FileName(file)) : json(nullptr)}});
  }
  return declarations;
}

// --- The METHOD_LIST table ---------------------------------------------------------------

const char* DecisionName(Entry::Decision iDecision) {
  switch (iDecision) {
    case Entry::Kept:
      return "kept";
    case Entry::KeptAndLast:
      return "kept, last";
    case Entry::Skipped:
      return "skipped";
    case Entry::Stopped:
      return "stop";
    case Entry::End:
      return "end";
  }
  return "";
}

// The accepted values of the METHOD_LIST field iField, quoted and joined.
std::string AcceptedValues(const Knowledge& iKnowledge, const char* iField) {
  for (const std::string& pattern : iKnowledge.declarationKeys) {
    if (FieldOf(pattern) != iField) continue;
    const auto found = iKnowledge.accepted.find(pattern);
    if (found == iKnowledge.accepted.end()) break;
    std::vector<std::string> quoted;
    for (const std::string& value : found->second) quoted.push_back(Quote(value));
    return Join(quoted, " or ");
  }
  return std::string();
}

// Why the catalogue took its decision on iEntry, in words.
std::string Reason(const Entry& iEntry, const Knowledge& iKnowledge) {
  switch (iEntry.decision) {
    case Entry::Kept:
      if (iEntry.object.value.GetLengthInChar() == 0) {
        return "KORAB is empty: the viewer belongs to no object";
      }
      return std::string();
    case Entry::KeptAndLast:
      return "KORAB is not declared: the viewer belongs to no object and reading stops after "
             "this entry";
    case Entry::Skipped: {
      const std::string where = AcceptedValues(iKnowledge, "WHERE");
      if (where.find(Quote(Text(iEntry.where.value))) == std::string::npos) {
        return "WHERE is " + Quote(Text(iEntry.where.value)) + ", not " + where;
      }
      if (iEntry.role.declared == 0) return "ROLE is not declared";
      return "ROLE is " + Quote(Text(iEntry.role.value)) + ", not " +
             AcceptedValues(iKnowledge, "ROLE");
    }
    case Entry::Stopped:
      return std::string("selected, but ") + (iEntry.command.declared == 0 ? "COMMAND" : "TAG") +
             " is not declared: reading stops here and this entry's viewer is not added";
    case Entry::End:
      return "WHERE is not declared: the table ends here";
  }
  return std::string();
}

struct MethodTable {
  bool read = false;  // false when KORBRIX cannot be loaded
  std::vector<Entry> entries;
  std::vector<int> neverRead;  // declared entries after the last one read
};

// The entries that the KORBRIX file declares, by index, with the line of
// their first declared key.
std::map<int, int> DeclaredEntries(const KORResourceFile& iFile, const Knowledge& iKnowledge) {
  std::map<int, int> entries;
  iFile.ForEachKey([&](std::string_view iKey, int iLine) {
    std::string pattern;
    std::string index;
    if (!MatchEntryKey(std::string(iKey), iKnowledge.declarationKeys, pattern, index)) return;
    const int n = CanonicalIndex(index);
    if (n == 0) return;
    const auto known = entries.find(n);
    if (known == entries.end() || iLine < known->second) entries[n] = iLine;
  });
  return entries;
}

std::string IndexList(const std::vector<int>& iIndices) {
  if (iIndices.size() > 6) {
    return std::to_string(iIndices.front()) + " to " + std::to_string(iIndices.back()) + " (" +
           std::to_string(iIndices.size()) + " entries)";
  }
  std::vector<std::string> texts;
  texts.reserve(iIndices.size());
  for (const int index : iIndices) texts.push_back(std::to_string(index));
  return Join(texts, ", ");
}

std::string NeverRead(const std::vector<int>& iIndices) {
  if (iIndices.empty()) return std::string();
  return (iIndices.size() == 1 ? "; entry " : "; entries ") + IndexList(iIndices) +
         (iIndices.size() == 1 ? " is never read" : " are never read");
}

// The place of a field, or else of the entry's first declaration.
std::pair<std::string, int> PlaceOf(const Entry::Field& iField, const std::string& iFile,
                                    int iEntryLine) {
  if (iField.declared != 0) return {Text(iField.file), iField.line};
  return {iFile, iEntryLine};
}

MethodTable CheckMethodList(bool iBrixLoaded, Knowledge& ioKnowledge, Findings& ioFindings) {
  MethodTable table;
  if (!iBrixLoaded) return table;
  table.read = KORLumSessionFileUtilities::ExplainViewers(table.entries) == 0;
  if (!table.read || table.entries.empty()) return table;
  const KORResourceFile file = KORLumPool::GetResource("KORBRIX");
  const std::string fileName = FileName(file);
  const std::map<int, int> declared = DeclaredEntries(file, ioKnowledge);

  // The TAG and KORAB values of the viewers added: the library reads their
  // labels and synonyms.
  std::map<std::string, const Entry*> firstOfCommand;
  for (const Entry& entry : table.entries) {
    if (entry.viewerPosition == 0) continue;
    if (entry.tag.value.GetLengthInChar() > 0) {
      ioKnowledge.derivedFrom["TAG"].insert(Text(entry.tag.value));
    }
    if (entry.addsObject != 0) ioKnowledge.derivedFrom["KORAB"].insert(Text(entry.object.value));
    const std::string command = Text(entry.command.value);
    const auto first = firstOfCommand.find(command);
    if (first == firstOfCommand.end()) {
      firstOfCommand.emplace(command, &entry);
    } else if (first->second->tag.value != entry.tag.value) {
      ioFindings.Warning(Text(entry.tag.file), entry.tag.line, "command-tags",
                         "the command " + command + " is declared again with TAG " +
                             Quote(Text(entry.tag.value)) + " (METHOD_LIST(" +
                             std::to_string(first->second->index) + ") gives it TAG " +
                             Quote(Text(first->second->tag.value)) +
                             "): wherever the viewer is named, its label "
                             "is " +
                             Quote(Text(entry.shownLabel)),
                         "give one command one TAG");
    }
  }

  const Entry& last = table.entries.back();
  for (const auto& [index, line] : declared) {
    if (index > last.index) table.neverRead.push_back(index);
  }
  const auto entryLine = [&](int iIndex) {
    const auto found = declared.find(iIndex);
    return found != declared.end() ? found->second : 0;
  };
  const std::string entry = "METHOD_LIST(" + std::to_string(last.index) + ")";
  switch (last.decision) {
    case Entry::End:
      if (!table.neverRead.empty()) {
        const int line =
            entryLine(last.index) != 0 ? entryLine(last.index) : entryLine(table.neverRead.front());
        ioFindings.Error(
            fileName, line, "method-list-stops",
            entry + " has no WHERE, so the table ends there" + NeverRead(table.neverRead),
            "declare KORBRIX." + entry +
                ".WHERE, or number the entries without a "
                "gap");
      }
      break;
    case Entry::Stopped: {
      const auto [where, line] = PlaceOf(last.where, fileName, entryLine(last.index));
      const char* missing = last.command.declared == 0 ? "COMMAND" : "TAG";
      ioFindings.Error(where, line, "method-list-stops",
                       entry + " is selected but has no " + missing +
                           ": reading stops there and its viewer is not added" +
                           NeverRead(table.neverRead),
                       std::string("declare KORBRIX.") + entry + "." + missing);
      break;
    }
    case Entry::KeptAndLast: {
      const auto [where, line] = PlaceOf(last.command, fileName, entryLine(last.index));
      if (!table.neverRead.empty()) {
        ioFindings.Error(where, line, "method-list-stops",
                         entry + " has no KORAB: its viewer " + Text(last.command.value) +
                             " belongs to no object and reading stops after it" +
                             NeverRead(table.neverRead),
                         "declare KORBRIX." + entry + ".KORAB");
      } else {
        ioFindings.Warning(where, line, "no-object",
                           entry + " has no KORAB: its viewer " + Text(last.command.value) +
                               " belongs to no object",
                           "declare KORBRIX." + entry + ".KORAB");
      }
      break;
    }
    case Entry::Kept:
    case Entry::Skipped:
      break;
  }
  if (last.index == 1 && last.decision == Entry::End && table.neverRead.empty() &&
      declared.empty()) {
    ioFindings.Warning(fileName, 0, "no-viewer",
                       "the METHOD_LIST table has no entry: the viewer catalogue is empty");
  }
  return table;
}

json FieldJson(const Entry::Field& iField) {
  return iField.declared != 0 ? json(Text(iField.value)) : json(nullptr);
}

json ToJson(const MethodTable& iTable, const Knowledge& iKnowledge) {
  json entries = json::array();
  for (const Entry& entry : iTable.entries) {
    json item = {{"index", entry.index},
                 {"status", DecisionName(entry.decision)},
                 {"where", FieldJson(entry.where)},
                 {"role", FieldJson(entry.role)},
                 {"command", FieldJson(entry.command)},
                 {"tag", FieldJson(entry.tag)},
                 {"object", FieldJson(entry.object)},
                 {"reason", Reason(entry, iKnowledge)}};
    if (entry.viewerPosition > 0) {
      item["viewer"] = Text(entry.command.value);
      item["label"] = Text(entry.shownLabel);
      item["object_name"] =
          entry.object.value.GetLengthInChar() > 0 ? json(Text(entry.object.value)) : json(nullptr);
    }
    entries.push_back(std::move(item));
  }
  return {{"entries", entries}, {"never_read", iTable.neverRead}};
}

void Print(const MethodTable& iTable, const Knowledge& iKnowledge) {
  std::cout << "METHOD_LIST of KORBRIX\n";
  if (!iTable.read) {
    std::cout << "  not read: KORBRIX cannot be loaded\n";
    return;
  }
  for (const Entry& entry : iTable.entries) {
    std::cout << "  " << Pad(std::to_string(entry.index), 4)
              << Pad(DecisionName(entry.decision), 11);
    const std::string reason = Reason(entry, iKnowledge);
    if (entry.viewerPosition > 0) {
      std::cout << Text(entry.command.value);
      if (entry.object.value.GetLengthInChar() > 0)
        std::cout << " for " << Text(entry.object.value);
      std::cout << ", labelled " << Quote(Text(entry.shownLabel));
      if (!reason.empty()) std::cout << "; " << reason;
    } else {
      std::cout << reason;
    }
    std::cout << '\n';
  }
  if (!iTable.neverRead.empty()) {
    std::cout << "  never read: " << (iTable.neverRead.size() == 1 ? "entry " : "entries ")
              << IndexList(iTable.neverRead) << '\n';
  }
}

// --- The configuration: message catalogues -------------------------------------------

struct LanguageStatistics {
  std::string language;
  std::size_t here = 0;       // translated at the language's own level
  std::size_t inherited = 0;  // from the base language
  std::size_t fallback = 0;   // from the default texts
  std::size_t missing = 0;    // nowhere: the library's own text
};

struct CatalogueReport {
  std::string name;
  // Each level ("default", then the languages) with the file used there ("" when none).
  std::vector<std::pair<std::string, std::string>> files;
  [[nodiscard]] const std::string& FileAt(const std::string& iLevel) const {
    static const std::string kNone;
    for (const auto& [level, file] : files) {
      if (level == iLevel) return file;
    }
    return kNone;
  }
  std::vector<LanguageStatistics> statistics;
};

std::string BaseOf(const std::string& iLanguage) {
  const std::size_t underscore = iLanguage.find('_');
  return underscore == std::string::npos ? std::string() : iLanguage.substr(0, underscore);
}

// The directory a directory name that no language can reach was probably
// meant to be ("fr_FR" for "fr_FR.UTF-8", "de" for "de@euro"), or "" when the
// name is no language's with a codeset or modifier (a backup, a tool's own).
std::string MeantLanguage(const std::string& iName) {
  const std::size_t cut = iName.find_first_of(".@");
  if (cut == std::string::npos || cut == 0) return std::string();
  std::string language = iName.substr(0, cut);
  if (KORMsgCatalog::IsLanguageDirectory(language.c_str()) == 0) return std::string();
  // A language is two or three lower-case letters, then perhaps _REGION.
  const std::string base = language.substr(0, language.find('_'));
  if (base.size() < 2 || base.size() > 3 ||
      !std::all_of(base.begin(), base.end(), [](char c) { return c >= 'a' && c <= 'z'; })) {
    return std::string();
  }
  // What follows is a modifier, or a codeset: a name of a character set.
  if (iName[cut] == '@' || language.find('_') != std::string::npos) return language;
  const std::string codeset = Lower(iName.substr(cut + 1, iName.find('@', cut) - cut - 1));
  for (const char* known : {"utf", "iso", "euc", "gb", "big5", "koi8", "cp", "ascii", "sjis",
                            "shift_jis", "tis", "windows"}) {
    if (codeset.compare(0, std::char_traits<char>::length(known), known) == 0) return language;
  }
  return std::string();
}

// The language directories of the catalogue directories, and what is
// wrong with the others.
std::vector<std::string> LanguagesOf(const std::vector<std::string>& iDirectories,
                                     Findings& ioFindings) {
  std::set<std::string> languages;
  for (const std::string& directory : iDirectories) {
    std::error_code error;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error)) {
      std::error_code typeError;
      if (!entry->is_directory(typeError)) continue;
      const std::string name = entry->path().filename().string();
      if (KORMsgCatalog::IsLanguageDirectory(name.c_str()) != 0) {
        languages.insert(name);
        continue;
      }
      if (FilesIn(entry->path().string(), ".msgcat").empty()) continue;
      const std::string meant = MeantLanguage(name);
      if (!meant.empty()) {
        ioFindings.Error(entry->path().string(), 0, "unreachable-language",
                         "no language can reach this directory: the language is used without "
                         "its codeset and modifier, so its catalogues are never read",
                         "rename it to " + (fs::path(directory) / meant).string());
      } else if (name == "C" || name == "POSIX") {
        ioFindings.Error(entry->path().string(), 0, "unreachable-language",
                         "the " + name +
                             " language means the default texts, which are read "
                             "from the catalogue directory itself: this directory "
                             "is never read",
                         "move its files to " + directory);
      }
    }
  }
  return std::vector<std::string>(languages.begin(), languages.end());
}

// The catalogue keys that the library reads, with the derived ones that the
// METHOD_LIST table gives.
std::vector<std::string> KeysOf(const std::string& iCatalogue, const Knowledge& iKnowledge) {
  std::vector<std::string> keys;
  const auto fixed = iKnowledge.catalogueKeys.find(iCatalogue);
  if (fixed != iKnowledge.catalogueKeys.end()) keys = fixed->second;
  const auto derived = iKnowledge.derived.find(iCatalogue);
  if (derived != iKnowledge.derived.end()) {
    for (const auto& [suffix, field] : derived->second) {
      const auto values = iKnowledge.derivedFrom.find(field);
      if (values == iKnowledge.derivedFrom.end()) continue;
      for (const std::string& value : values->second) keys.push_back(value + suffix);
    }
  }
  return keys;
}

std::vector<CatalogueReport> CheckCatalogues(const std::vector<std::string>& iLanguages,
                                             const Knowledge& iKnowledge, Findings& ioFindings) {
  std::vector<CatalogueReport> reports;
  const std::vector<std::string> directories = Texts(KORMsgCatalog::GetSearchPath());
  std::set<std::string> checked;  // files already checked
  bool anyFile = false;
  for (const std::string& name : iKnowledge.catalogues) {
    CatalogueReport report;
    report.name = name;
    const KORMsgCatalog catalogue(name.c_str());
    // The files of each level: the default, then each language's own.
    std::vector<std::string> levels{std::string()};
    levels.insert(levels.end(), iLanguages.begin(), iLanguages.end());
    for (const std::string& level : levels) {
      for (const KORResourceFile& skipped : catalogue.GetSkippedFiles(level.c_str())) {
        if (checked.insert(FileName(skipped)).second) CheckSyntax(skipped, ioFindings);
      }
      const KORResourceFile file = catalogue.GetLevelFiles(level.c_str()).front();
      const bool found = file.GetState() == KORResourceFile::Loaded;
      report.files.emplace_back(level.empty() ? "default" : level,
                                found ? FileName(file) : std::string());
      if (!found) continue;
      anyFile = true;
      if (checked.insert(FileName(file)).second) {
        CheckFile(file, FileKind::kCatalogue, name, iKnowledge, ioFindings);
      }
    }
    reports.push_back(std::move(report));
  }
  if (!anyFile) return reports;  // a site without catalogues: the library's own texts

  for (CatalogueReport& report : reports) {
    const KORMsgCatalog catalogue(report.name.c_str());
    const std::vector<std::string> keys = KeysOf(report.name, iKnowledge);
    if (report.FileAt("default").empty()) {
      ioFindings.Warning(directories.empty() ? std::string() : directories.front(), 0,
                         "no-default-file",
                         "the catalogue " + report.name + " has no default-language file " +
                             report.name + ".msgcat: untranslated texts are the library's own");
    }
    // Keys without a default text: who has no translation sees the library's own.
    for (const std::string& key : keys) {
      if (report.FileAt("default").empty()) break;  // reported above
      if (catalogue.Resolve(key.c_str(), "").outcome == KORMsgResolution::Found) continue;
      ioFindings.Warning(report.FileAt("default"), 0, "no-default-text",
                         "the key " + key + " of " + report.name +
                             " has no default text: untranslated, the library shows its own",
                         "add " + key + " = ... to this file");
    }
    for (const std::string& language : iLanguages) {
      LanguageStatistics statistics;
      statistics.language = language;
      const std::string base = BaseOf(language);
      // A regional level that leaves a text to its base language does so on
      // purpose; the base language answers for what it lacks.
      const bool baseAnswers = !base.empty() && !report.FileAt(base).empty();
      const bool ownFile = !report.FileAt(language).empty();
      if (!ownFile && !baseAnswers) {
        ioFindings.Warning(
            directories.empty() ? language : (fs::path(directories.front()) / language).string(), 0,
            "no-language-file",
            "the language " + language + " has no file for the catalogue " + report.name +
                ": its texts are the default ones",
            "add " + language + "/" + report.name + ".msgcat");
      }
      for (const std::string& key : keys) {
        const KORMsgResolution resolution = catalogue.Resolve(key.c_str(), language.c_str());
        const std::string level = Text(resolution.language);
        if (resolution.outcome != KORMsgResolution::Found) {
          ++statistics.missing;
        } else if (level == language) {
          ++statistics.here;
        } else if (!level.empty()) {
          ++statistics.inherited;
        } else {
          ++statistics.fallback;
          if (ownFile && !baseAnswers) {
            ioFindings.Warning(
                report.FileAt(language), 0, "untranslated",
                Concat({"the key ", key, " of ", report.name, " is not translated in ", language,
                        ": it falls back to the default text ", Quote(Text(resolution.text))}),
                "translate it in this file");
          }
        }
      }
      report.statistics.push_back(statistics);
    }
  }
  return reports;
}

std::string StatisticsText(const LanguageStatistics& iStatistics) {
  std::string text = std::to_string(iStatistics.here) + " translated";
  if (iStatistics.inherited > 0) {
    text += ", " + std::to_string(iStatistics.inherited) + " inherited from " +
            BaseOf(iStatistics.language);
  }
  if (iStatistics.fallback > 0) {
    text += ", " + std::to_string(iStatistics.fallback) + " from the default texts";
  }
  if (iStatistics.missing > 0) {
    text += ", " + std::to_string(iStatistics.missing) + " nowhere (the library's own text)";
  }
  return text;
}

// --- The configuration: settings and paths ---------------------------------------------

json CheckSettings(const Knowledge& iKnowledge, Findings& ioFindings) {
  const char* path = KORGetEnv("KOR_ADMIN_SETTINGS");
  if (path == nullptr) {
    // No services: never the start-up session.
    return {{"file", nullptr},
            {"state", "unset"},
            {"startup_session", KORLumSessionFileUtilities::IsStartUpSession() == 1}};
  }
  const KORResourceFile file = GetAdminSettingsFile();
  json settings = {{"file", path}};
  switch (file.GetState()) {
    case KORResourceFile::Absent:
      settings["state"] = "absent";
      if (CurrentConfiguration().kind == ConfigurationSource::kEnvironment) {
        ioFindings.Error(path, 0, "missing-file",
                         "KOR_ADMIN_SETTINGS names this file, which does not exist: there are no "
                         "services, so this is never the start-up session",
                         "create it, or unset KOR_ADMIN_SETTINGS");
      }
      break;
    case KORResourceFile::Unreadable:
      settings["state"] = "unreadable";
      CheckSyntax(file, ioFindings);
      break;
    case KORResourceFile::Loaded: {
      settings["state"] = "loaded";
      CheckFile(file, FileKind::kSettings, std::string(), iKnowledge, ioFindings);
      for (const std::string& key : iKnowledge.settingKeys) {
        const KORUnicodeString* value = file.Find(key);
        settings["values"][key] = value != nullptr ? json(Text(*value)) : json(nullptr);
      }
      break;
    }
  }
  settings["startup_session"] = KORLumSessionFileUtilities::IsStartUpSession() == 1;
  return settings;
}

json CheckPath(const char* iWhat, const KORLumPathExplanation& iPath, Findings& ioFindings) {
  const std::string path = Text(iPath.path);
  const std::string key = Text(iPath.key);
  const std::string file = Text(iPath.file);
  if (iPath.unsetVariables.Size() > 0) {
    const std::vector<std::string> unset = Texts(iPath.unsetVariables);
    ioFindings.Error(file, iPath.line, "unset-variable",
                     key + " uses " + Join(unset, ", ") +
                         (unset.size() == 1 ? ", which is" : ", which are") + " not set: the " +
                         iWhat + " path becomes " + Quote(path),
                     "set " + Join(unset, ", ") +
                         " for every program that uses the library, or write the path "
                         "without it");
  }
  if (iPath.resourceLoaded == 0) {
    ioFindings.Warning(std::string(), 0, "fallback-path",
                       "the " + std::string(iWhat) + " path falls back to the " +
                           Text(iPath.fallback) + " (" + Text(iPath.resource) +
                           " cannot be loaded): " + Quote(path));
  } else if (iPath.declared == 0) {
    ioFindings.Warning(FileName(KORLumPool::GetResource(iPath.resource)), 0, "empty-path",
                       key + " is not declared: the " + iWhat + " path is empty", "declare " + key);
  } else if (path.empty()) {
    ioFindings.Warning(file, iPath.line, "empty-path",
                       key + " is declared empty: the " + iWhat + " path is empty");
  } else if (!IsDirectory(path)) {
    ioFindings.Warning(file, iPath.line, "missing-directory",
                       "the " + std::string(iWhat) + " directory " + path + " does not exist");
  }
  return {{"key", key},
          {"file", file.empty() ? json(nullptr) : json(file)},
          {"line", iPath.line},
          {"declared", iPath.declared != 0 ? json(Text(iPath.value)) : json(nullptr)},
          {"fallback",
           iPath.fallback.GetLengthInChar() > 0 ? json(Text(iPath.fallback)) : json(nullptr)},
          {"unset_variables", Texts(iPath.unsetVariables)},
          {"path", path},
          {"exists", !path.empty() && IsDirectory(path)}};
}

// --- check ---------------------------------------------------------------------------------

int CheckConfiguration(const GlobalOptions& iGlobal) {
  Findings findings;
  Knowledge knowledge = LibraryKnowledge();
  const json configuration = DescribeConfiguration();

  const Declarations declarations = CheckDeclarations(knowledge, findings);
  const MethodTable table = CheckMethodList(declarations.brixLoaded, knowledge, findings);

  const std::vector<std::string> catalogueDirectories = Texts(KORMsgCatalog::GetSearchPath());
  for (const std::string& directory : catalogueDirectories) {
    if (IsDirectory(directory)) {
      CheckFileNames(directory, knowledge.catalogues, ".msgcat", "catalogue", findings);
    }
  }
  const std::vector<std::string> languages = LanguagesOf(catalogueDirectories, findings);
  const std::vector<CatalogueReport> catalogues = CheckCatalogues(languages, knowledge, findings);

  const json settings = CheckSettings(knowledge, findings);
  const json paths = {
      {"brix_files",
       CheckPath("BRIX files", KORLumSessionFileUtilities::ExplainBRIXFilesPath(), findings)},
      {"graph_files",
       CheckPath("graph files", KORLumSessionFileUtilities::ExplainGraphFilesPath(), findings)}};

  const std::size_t errors = findings.Count(Severity::kError);
  const std::size_t warnings = findings.Count(Severity::kWarning);
  const bool failed = errors > 0 || (gStrict && warnings > 0);

  if (iGlobal.json) {
    json catalogueJson = json::array();
    for (const CatalogueReport& catalogue : catalogues) {
      json files = json::object();
      for (const auto& [level, file] : catalogue.files) {
        files[level] = file.empty() ? json(nullptr) : json(file);
      }
      json statistics = json::array();
      for (const LanguageStatistics& language : catalogue.statistics) {
        statistics.push_back({{"language", language.language},
                              {"translated", language.here},
                              {"inherited", language.inherited},
                              {"default", language.fallback},
                              {"missing", language.missing}});
      }
      catalogueJson.push_back(
          {{"name", catalogue.name}, {"files", files}, {"statistics", statistics}});
    }
    PrintJson({{"configuration", configuration},
               {"findings", ToJson(findings)},
               {"errors", errors},
               {"warnings", warnings},
               {"declarations", declarations.resources},
               {"languages", languages},
               {"catalogues", catalogueJson},
               {"settings", settings},
               {"paths", paths},
               {"method_list", table.read ? ToJson(table, knowledge) : json(nullptr)},
               {"ok", !failed}});
  } else {
    PrintFindings(findings);
    if (!findings.All().empty()) std::cout << '\n';
    PrintConfiguration(configuration);

    std::cout << "\nDeclarations\n";
    for (const json& resource : declarations.resources) {
      std::cout << "  " << Pad(resource["resource"].get<std::string>(), 9)
                << (resource["file"].is_null() ? std::string("not found")
                                               : resource["file"].get<std::string>())
                << '\n';
    }

    std::cout << "\nMessage catalogues (languages: "
              << (languages.empty() ? std::string("none") : Join(languages, ", ")) << ")\n";
    for (const CatalogueReport& catalogue : catalogues) {
      std::cout << "  " << catalogue.name << '\n';
      for (const auto& [level, file] : catalogue.files) {
        std::cout << "    " << Pad(level, 9) << (file.empty() ? std::string("no file") : file)
                  << '\n';
      }
      for (const LanguageStatistics& language : catalogue.statistics) {
        std::cout << "    " << Pad(language.language + ":", 9) << StatisticsText(language) << '\n';
      }
    }

    std::cout << "\nAdministrator settings\n  ";
    if (settings["file"].is_null()) {
      std::cout << "none (KOR_ADMIN_SETTINGS is not set)";
    } else {
      std::cout << settings["file"].get<std::string>() << " ("
                << settings["state"].get<std::string>() << ")";
      if (settings.contains("values")) {
        for (const auto& [key, value] : settings["values"].items()) {
          if (!value.is_null()) std::cout << ": " << key << " = " << value.get<std::string>();
        }
      }
    }
    std::cout << "\n  " << Pad("Start-up session", 18)
              << (settings["startup_session"].get<bool>() ? "yes" : "no") << '\n';

    std::cout << "\nPaths\n";
    for (const auto& [label, name] :
         {std::pair<const char*, const char*>{"BRIX files", "brix_files"},
          {"Graph files", "graph_files"}}) {
      const json& path = paths[name];
      const std::string value = path["path"].get<std::string>();
      std::cout << "  " << Pad(label, 14) << (value.empty() ? std::string("(empty)") : value)
                << "  (" << path["key"].get<std::string>();
      if (!path["fallback"].is_null()) {
        std::cout << " not loaded: " << path["fallback"].get<std::string>();
      }
      std::cout << (path["exists"].get<bool>() ? "" : ", no such directory") << ")\n";
    }

    std::cout << '\n';
    Print(table, knowledge);
    std::cout << '\n'
              << (errors == 0 && warnings == 0
                      ? std::string("No problem found.")
                      : std::to_string(errors) + (errors == 1 ? " error, " : " errors, ") +
                            std::to_string(warnings) + (warnings == 1 ? " warning." : " warnings."))
              << '\n';
  }
  if (failed) {
    std::cout.flush();
    std::cerr << "lumsess: the configuration has " << errors << (errors == 1 ? " error" : " errors")
              << " and " << warnings << (warnings == 1 ? " warning." : " warnings.") << std::endl;
    return kProblems;
  }
  return kSuccess;
}

}  // namespace

CLI::App* SetupCheck(CLI::App& ioApp) {
  CLI::App* command = ioApp.add_subcommand(
      "check",
      "Validate the configuration (or the given resource files) and explain it; exit status 1 "
      "when it has errors");
  command
      ->add_option("FILE", gFiles,
                   "Resource files to validate on their own (.dcls, .msgcat, settings)")
      ->type_name("FILE");
  command->add_flag("--strict", gStrict, "Warnings make the exit status 1 too");
  return command;
}

int RunCheck(const GlobalOptions& iGlobal) {
  return gFiles.empty() ? CheckConfiguration(iGlobal) : CheckFiles(iGlobal);
}

}  // namespace lumsess
