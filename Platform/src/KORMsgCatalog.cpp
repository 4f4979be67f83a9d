#include "KORMsgCatalog.h"

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "KORError.h"
#include "KORGetEnv.h"
#include "KORPlatformCheck.h"
#include "KORResourceFile.h"
#include "KORResourceSearch.h"

std::atomic<unsigned long> KORMsgCatalogDetail::gCacheStamp{1};

namespace {

// A new stamp: what was read before may now answer otherwise. Called under
// the cache's mutex, after the change, so that a program that read the old
// stamp before a lookup never keeps an answer given after the change.
void ChangeStamp() {
  unsigned long next = KORMsgCatalogDetail::gCacheStamp.load(std::memory_order_relaxed) + 1;
  if (next == 0) next = 1;  // 0 is never a stamp: a program may use it for "nothing kept"
  KORMsgCatalogDetail::gCacheStamp.store(next, std::memory_order_release);
}

constexpr const char* kLanguageVariables[] = {"KOR_LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"};

// One language level of one catalogue: the file found for it, if any.
struct Level {
  std::string path;  // empty when no directory has a readable file
  KORResourceFile resource;
};

// Everything found for one catalogue; immutable once built.
struct Catalog {
  std::vector<std::string> languages;    // the language of each level, "" for the default
  std::vector<std::string> directories;  // where the files were searched
  std::vector<Level> levels;             // one per language level
  std::vector<KORResourceFile> skipped;  // unreadable files passed over
  bool transient = false;                // a search failed for now: searched again next time
};

// The process-wide cache of the catalogue service.
struct Cache {
  std::mutex mutex;
  bool resolved = false;
  std::vector<std::string> directories;
  std::vector<std::string> languages;  // e.g. {"fr_CA", "fr", ""}
  std::string languageVariable;        // the variable that gave the language
  // The catalogues read, by name for the language in force and the search
  // path, by name, directories and language for the others (see CacheKey).
  // A map's elements stay where they are while others come and go.
  std::map<std::string, Catalog, std::less<>> catalogs;
  // Every file read, by path: catalogues of several languages share their
  // default file, and a file is parsed once however many ask for it. A file
  // that failed for now is not kept.
  std::map<std::string, KORResourceFile, std::less<>> files;
  // The element of the last lookup, or none: lookups come in runs on one
  // catalogue (the texts of one display line), which then costs one name
  // comparison instead of a search of the map.
  const std::pair<const std::string, Catalog>* last = nullptr;
};

Cache& TheCache() {
  static Cache cache;
  return cache;
}

// Whether iName can be a language level: a name that a language can take
// once its codeset and modifier are removed, that is one directory of the
// search path, and that is not untranslated ("C", "POSIX").
bool CanBeLanguage(std::string_view iName) {
  return !iName.empty() && iName[0] != '.' &&
         iName.find_first_of(".@/") == std::string_view::npos && iName != "C" && iName != "POSIX";
}

// The language levels of iLanguage as a language variable holds it, the
// default level last.
std::vector<std::string> LevelsOf(std::string_view iLanguage) {
  const std::string_view language = iLanguage.substr(0, iLanguage.find_first_of(".@"));
  if (!CanBeLanguage(language)) return {std::string()};
  std::vector<std::string> levels{std::string(language)};
  const std::size_t underscore = language.find('_');
  if (underscore != std::string_view::npos && underscore > 0) {
    levels.emplace_back(language.substr(0, underscore));
  }
  levels.emplace_back();
  return levels;
}

void EnsureResolved(Cache& ioCache) {
  if (ioCache.resolved) return;
  ioCache.directories = kor_detail::SearchDirectories("KOR_MSGCATALOG_PATH", "msgcatalog");
  ioCache.languageVariable.clear();
  std::string_view language;
  for (const char* variable : kLanguageVariables) {
    const char* value = KORGetEnv(variable);
    if (value != nullptr && *value != '\0') {
      language = value;
      ioCache.languageVariable = variable;
      break;
    }
  }
  ioCache.languages = LevelsOf(language);
  ioCache.resolved = true;
}

// Searches the files of catalogue iName for each of iLanguages in iDirectories.
Catalog ReadCatalog(Cache& ioCache, std::string_view iName,
                    const std::vector<std::string>& iDirectories,
                    const std::vector<std::string>& iLanguages) {
  const auto load = [&ioCache](const std::string& iPath) {
    const auto known = ioCache.files.find(iPath);
    if (known != ioCache.files.end()) return known->second;
    KORResourceFile file = KORResourceFile::Load(iPath.c_str());
    if (!file.IsTransientFailure()) ioCache.files.emplace(iPath, file);
    return file;
  };
  Catalog catalog;
  catalog.languages = iLanguages;
  catalog.directories = iDirectories;
  const std::string fileName = std::string(iName) + ".msgcat";
  for (const std::string& language : iLanguages) {
    const std::string relative =
        language.empty() ? fileName : kor_detail::JoinPath(language, fileName);
    kor_detail::FoundFile found = kor_detail::FindFirstReadable(iDirectories, relative, load);
    catalog.skipped.insert(catalog.skipped.end(), found.skipped.begin(), found.skipped.end());
    catalog.levels.push_back({std::move(found.path), std::move(found.resource)});
    catalog.transient = catalog.transient || found.transient;
  }
  return catalog;
}

// The catalogue iName in the language in force, searched in the search path,
// read on first use. The reference is valid while the cache's mutex is held
// (FlushCache, under the same mutex, destroys it).
const Catalog& FindCatalog(Cache& ioCache, std::string_view iName) {
  if (ioCache.last != nullptr && ioCache.last->first == iName) return ioCache.last->second;
  EnsureResolved(ioCache);
  const auto known = ioCache.catalogs.find(iName);
  if (known != ioCache.catalogs.end() && !known->second.transient) {
    ioCache.last = &*known;
    return known->second;
  }
  Catalog catalog = ReadCatalog(ioCache, iName, ioCache.directories, ioCache.languages);
  // A catalogue whose search failed for now is kept only until the next
  // lookup, which searches again.
  auto& entry = *ioCache.catalogs.insert_or_assign(std::string(iName), std::move(catalog)).first;
  ioCache.last = entry.second.transient ? nullptr : &entry;
  if (entry.second.transient) ChangeStamp();
  return entry.second;
}

// The catalogue iName in the language iLanguage (nullptr: the language in
// force), searched in iDirectories ("": the search path; else the directories
// one per line). Cached under a key that no catalogue name can take.
const Catalog& FindCatalog(Cache& ioCache, std::string_view iName, std::string_view iDirectories,
                           const std::string_view* iLanguage) {
  if (iDirectories.empty() && iLanguage == nullptr) return FindCatalog(ioCache, iName);
  EnsureResolved(ioCache);
  std::string key(iName);
  key.append(1, '\n').append(iDirectories).append(1, '\n');
  if (iLanguage != nullptr) key.append("=").append(*iLanguage);
  const auto known = ioCache.catalogs.find(key);
  if (known != ioCache.catalogs.end() && !known->second.transient) return known->second;
  std::vector<std::string> directories;
  if (iDirectories.empty()) {
    directories = ioCache.directories;
  } else {
    std::string_view rest = iDirectories;
    while (!rest.empty()) {
      const std::size_t newline = rest.find('\n');
      directories.emplace_back(rest.substr(0, newline));
      rest.remove_prefix(newline == std::string_view::npos ? rest.size() : newline + 1);
    }
  }
  const std::vector<std::string> languages =
      iLanguage != nullptr ? LevelsOf(*iLanguage) : ioCache.languages;
  const Catalog& catalog =
      ioCache.catalogs.insert_or_assign(key, ReadCatalog(ioCache, iName, directories, languages))
          .first->second;
  if (catalog.transient) ChangeStamp();
  return catalog;
}

// The position of the first level of iCatalog whose file declares iKey, and
// its text; npos when none does.
std::size_t FindLevel(const Catalog& iCatalog, std::string_view iKey,
                      const KORUnicodeString*& oText) {
  for (std::size_t i = 0; i < iCatalog.levels.size(); ++i) {
    const Level& level = iCatalog.levels[i];
    if (level.path.empty()) continue;  // no file at this level
    if ((oText = level.resource.Find(iKey)) != nullptr) return i;
  }
  return std::string::npos;
}

bool HasFile(const Catalog& iCatalog) {
  for (const Level& level : iCatalog.levels) {
    if (!level.path.empty()) return true;
  }
  return false;
}

std::string LevelName(const std::string& iLanguage) {
  return iLanguage.empty() ? std::string("default") : iLanguage;
}

// The diagnostic of a failed lookup.
std::string Diagnose(std::string_view iCatalogName, std::string_view iKey,
                     const Catalog& iCatalog) {
  std::string text("message catalogue \"");
  text.append(iCatalogName).append("\", key \"").append(iKey).append("\": ");
  std::string levels;
  std::string files;
  for (std::size_t i = 0; i < iCatalog.languages.size(); ++i) {
    if (!levels.empty()) levels += ", ";
    levels += LevelName(iCatalog.languages[i]);
    if (!iCatalog.levels[i].path.empty()) {
      if (!files.empty()) files += ", ";
      files += iCatalog.levels[i].path;
    }
  }
  if (files.empty()) {
    text.append("no catalogue file for the languages tried (").append(levels).append(") in ");
    for (std::size_t i = 0; i < iCatalog.directories.size(); ++i) {
      if (i > 0) text += ':';
      text += iCatalog.directories[i];
    }
  } else {
    text.append("key not declared for the languages tried (")
        .append(levels)
        .append("); files read: ")
        .append(files);
  }
  if (!iCatalog.skipped.empty()) {
    text += "; unreadable files skipped: ";
    KORListValKORUnicodeString skipped;
    kor_detail::AppendProblems(iCatalog.skipped, skipped);
    for (int i = 1; i <= skipped.Size(); ++i) {
      if (i > 1) text += ", ";
      text += skipped[i].View();
    }
  }
  return text;
}

KORMsgResolution Resolution(const Catalog& iCatalog, std::string_view iKey) {
  KORMsgResolution resolution;
  const KORUnicodeString* text = nullptr;
  const std::size_t found = FindLevel(iCatalog, iKey, text);
  if (found == std::string::npos) {
    resolution.outcome =
        HasFile(iCatalog) ? KORMsgResolution::NotDeclared : KORMsgResolution::NoFile;
    return resolution;
  }
  const Level& level = iCatalog.levels[found];
  const std::string& language = iCatalog.languages[found];
  resolution.outcome = KORMsgResolution::Found;
  resolution.level = static_cast<int>(found) + 1;
  resolution.language = KORUnicodeString(language.data(), language.size());
  resolution.file = KORUnicodeString(level.path.data(), level.path.size());
  resolution.line = level.resource.GetLine(iKey);
  resolution.text = *text;
  return resolution;
}

// The directories of a catalogue of a program's own, one per line.
std::string JoinDirectories(const KORListValKORUnicodeString& iDirectories) {
  std::string joined;
  for (int i = 1; i <= iDirectories.Size(); ++i) {
    if (iDirectories[i].View().empty()) continue;
    if (!joined.empty()) joined += '\n';
    joined.append(iDirectories[i].View());
  }
  return joined;
}

}  // namespace

int KORMsg::BuildMessage(KORUnicodeString* oText) const& {
  KOR_PLATFORM_CHECK(oText != nullptr);
  *oText = _text;
  return 0;
}

int KORMsg::BuildMessage(KORUnicodeString* oText) && {
  KOR_PLATFORM_CHECK(oText != nullptr);
  *oText = std::move(_text);
  return 0;
}

int KORMsg::BuildMessage(KORUnicodeString* oText,
                         const KORListValKORUnicodeString& iParameters) const {
  KOR_PLATFORM_CHECK(oText != nullptr);
  const std::string_view text = _text.View();
  std::string built;
  built.reserve(text.size());
  std::size_t position = 0;
  while (position < text.size()) {
    const std::size_t open = text.find('{', position);
    if (open == std::string_view::npos) break;
    std::size_t end = open + 1;
    long index = 0;
    while (end < text.size() && text[end] >= '0' && text[end] <= '9' &&
           index <= iParameters.Size()) {
      index = index * 10 + (text[end] - '0');
      ++end;
    }
    // "{n}" with n from 1 to the number of parameters, written without a
    // leading zero; anything else is literal text.
    const bool placeholder = end > open + 1 && text[open + 1] != '0' && end < text.size() &&
                             text[end] == '}' && index >= 1 && index <= iParameters.Size();
    if (placeholder) {
      built.append(text.substr(position, open - position));
      built.append(iParameters[static_cast<int>(index)].View());
      position = end + 1;
    } else {
      built.append(text.substr(position, open + 1 - position));
      position = open + 1;
    }
  }
  built.append(text.substr(position));
  *oText = KORUnicodeString(built.data(), built.size());
  return 0;
}

KORMsgCatalog::KORMsgCatalog(const KORString& iCatalogName) : _catalogName(iCatalogName) {}

KORMsgCatalog::KORMsgCatalog(const KORString& iCatalogName,
                             const KORListValKORUnicodeString& iDirectories)
    : _catalogName(iCatalogName), _directories(JoinDirectories(iDirectories).c_str()) {}

KORMsgCatalog::~KORMsgCatalog() = default;

KORMsg KORMsgCatalog::GetMsg(const KORString& iKey) const {
  KORUnicodeString text;
  if (Find(iKey, &text) == 0) return KORMsg(std::move(text));
  KORRaise(new KORNLSCatalogError(DescribeFailure(iKey)));
}

int KORMsgCatalog::Find(const KORString& iKey, KORUnicodeString* oText) const {
  KOR_PLATFORM_CHECK(oText != nullptr);
  Cache& cache = TheCache();
  std::lock_guard<std::mutex> lock(cache.mutex);
  const Catalog& catalog = FindCatalog(cache, _catalogName.View(), _directories.View(), nullptr);
  const KORUnicodeString* text = nullptr;
  if (FindLevel(catalog, iKey.View(), text) == std::string::npos) return 1;
  *oText = *text;
  return 0;
}

KORString KORMsgCatalog::DescribeFailure(const KORString& iKey) const {
  Cache& cache = TheCache();
  std::lock_guard<std::mutex> lock(cache.mutex);
  const Catalog& catalog = FindCatalog(cache, _catalogName.View(), _directories.View(), nullptr);
  return KORString(Diagnose(_catalogName.View(), iKey.View(), catalog));
}

KORMsgResolution KORMsgCatalog::Resolve(const KORString& iKey) const {
  Cache& cache = TheCache();
  std::lock_guard<std::mutex> lock(cache.mutex);
  return Resolution(FindCatalog(cache, _catalogName.View(), _directories.View(), nullptr),
                    iKey.View());
}

KORMsgResolution KORMsgCatalog::Resolve(const KORString& iKey, const KORString& iLanguage) const {
  Cache& cache = TheCache();
  std::lock_guard<std::mutex> lock(cache.mutex);
  const std::string_view language = iLanguage.View();
  return Resolution(FindCatalog(cache, _catalogName.View(), _directories.View(), &language),
                    iKey.View());
}

void KORMsgCatalog::FlushCache() {
  Cache& cache = TheCache();
  std::lock_guard<std::mutex> lock(cache.mutex);
  cache.last = nullptr;
  cache.catalogs.clear();
  cache.files.clear();
  cache.directories.clear();
  cache.languages.clear();
  cache.languageVariable.clear();
  cache.resolved = false;
  ChangeStamp();
}

KORListValKORUnicodeString KORMsgCatalog::GetSearchPath() {
  Cache& cache = TheCache();
  std::lock_guard<std::mutex> lock(cache.mutex);
  EnsureResolved(cache);
  return kor_detail::ToList(cache.directories);
}

KORListValKORUnicodeString KORMsgCatalog::GetLanguageLevels() {
  Cache& cache = TheCache();
  std::lock_guard<std::mutex> lock(cache.mutex);
  EnsureResolved(cache);
  return kor_detail::ToList(cache.languages);
}

KORListValKORUnicodeString KORMsgCatalog::GetLanguageLevels(const KORString& iLanguage) {
  return kor_detail::ToList(LevelsOf(iLanguage.View()));
}

KORListValKORUnicodeString KORMsgCatalog::GetLanguageVariables() {
  KORListValKORUnicodeString variables;
  for (const char* variable : kLanguageVariables) variables.Append(variable);
  return variables;
}

KORUnicodeString KORMsgCatalog::GetLanguageVariable() {
  Cache& cache = TheCache();
  std::lock_guard<std::mutex> lock(cache.mutex);
  EnsureResolved(cache);
  return KORUnicodeString(cache.languageVariable.c_str());
}

int KORMsgCatalog::IsLanguageDirectory(const KORString& iName) {
  return CanBeLanguage(iName.View()) ? 1 : 0;
}

KORListValKORUnicodeString KORMsgCatalog::GetFilesUsed() const {
  Cache& cache = TheCache();
  std::lock_guard<std::mutex> lock(cache.mutex);
  const Catalog& catalog = FindCatalog(cache, _catalogName.View(), _directories.View(), nullptr);
  std::vector<std::string> paths;
  for (const Level& level : catalog.levels) paths.push_back(level.path);
  return kor_detail::ToList(paths);
}

std::vector<KORResourceFile> KORMsgCatalog::GetLevelFiles(const KORString& iLanguage) const {
  Cache& cache = TheCache();
  std::lock_guard<std::mutex> lock(cache.mutex);
  const std::string_view language = iLanguage.View();
  const Catalog& catalog = FindCatalog(cache, _catalogName.View(), _directories.View(), &language);
  std::vector<KORResourceFile> files;
  for (const Level& level : catalog.levels) files.push_back(level.resource);
  return files;
}

std::vector<KORResourceFile> KORMsgCatalog::GetSkippedFiles(const KORString& iLanguage) const {
  Cache& cache = TheCache();
  std::lock_guard<std::mutex> lock(cache.mutex);
  const std::string_view language = iLanguage.View();
  return FindCatalog(cache, _catalogName.View(), _directories.View(), &language).skipped;
}

KORListValKORUnicodeString KORMsgCatalog::GetProblems() const {
  Cache& cache = TheCache();
  std::lock_guard<std::mutex> lock(cache.mutex);
  const Catalog& catalog = FindCatalog(cache, _catalogName.View(), _directories.View(), nullptr);
  KORListValKORUnicodeString problems;
  kor_detail::AppendProblems(catalog.skipped, problems);
  for (const Level& level : catalog.levels) {
    const KORListValKORUnicodeString found = level.resource.GetProblems();
    for (int i = 1; i <= found.Size(); ++i) problems.Append(found[i]);
  }
  return problems;
}
