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

namespace {

constexpr const char* kLanguageVariables[] = {"KOR_LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"};

// One language level of one catalogue: the file found for it, if any.
struct Level {
  std::string path;  // empty when no directory has a readable file
  KORResourceFile resource;
};

// Everything found for one catalogue; immutable once built.
struct Catalog {
  std::vector<Level> levels;         // one per language level
  std::vector<std::string> skipped;  // unreadable files passed over
  bool transient = false;            // a search failed for now: searched again next time
};

// The process-wide cache of the catalogue service.
struct Cache {
  std::mutex mutex;
  bool resolved = false;
  std::vector<std::string> directories;
  std::vector<std::string> languages;  // e.g. {"fr_CA", "fr", ""}
  // A map's elements stay where they are while others come and go.
  std::map<std::string, Catalog, std::less<>> catalogs;
  // The element of the last lookup, or none: lookups come in runs on one
  // catalogue (the texts of one display line), which then costs one name
  // comparison instead of a search of the map.
  const std::pair<const std::string, Catalog>* last = nullptr;
};

Cache& TheCache() {
  static Cache cache;
  return cache;
}

// The language levels for the user's language, the default level last.
std::vector<std::string> ResolveLanguages() {
  std::string_view language;
  for (const char* variable : kLanguageVariables) {
    const char* value = KORGetEnv(variable);
    if (value != nullptr && *value != '\0') {
      language = value;
      break;
    }
  }
  language = language.substr(0, language.find_first_of(".@"));
  // "C" and "POSIX" mean untranslated; a name that cannot be one directory
  // of the search path is not a language either.
  if (language.empty() || language == "C" || language == "POSIX" ||
      language.find('/') != std::string_view::npos || language == "..") {
    return {std::string()};
  }
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
  ioCache.languages = ResolveLanguages();
  ioCache.resolved = true;
}

// The catalogue iName, read on first use. The reference is valid while the
// cache's mutex is held (FlushCache, under the same mutex, destroys it).
const Catalog& FindCatalog(Cache& ioCache, std::string_view iName) {
  if (ioCache.last != nullptr && ioCache.last->first == iName) return ioCache.last->second;
  EnsureResolved(ioCache);
  const auto known = ioCache.catalogs.find(iName);
  if (known != ioCache.catalogs.end() && !known->second.transient) {
    ioCache.last = &*known;
    return known->second;
  }

  Catalog catalog;
  const std::string fileName = std::string(iName) + ".msgcat";
  for (const std::string& language : ioCache.languages) {
    const std::string relative =
        language.empty() ? fileName : kor_detail::JoinPath(language, fileName);
    kor_detail::FoundFile found = kor_detail::FindFirstReadable(ioCache.directories, relative);
    catalog.skipped.insert(catalog.skipped.end(), found.skipped.begin(), found.skipped.end());
    catalog.levels.push_back({std::move(found.path), std::move(found.resource)});
    catalog.transient = catalog.transient || found.transient;
  }
  // A catalogue whose search failed for now is kept only until the next
  // lookup, which searches again.
  auto& entry = *ioCache.catalogs.insert_or_assign(std::string(iName), std::move(catalog)).first;
  ioCache.last = entry.second.transient ? nullptr : &entry;
  return entry.second;
}

std::string LevelName(const std::string& iLanguage) {
  return iLanguage.empty() ? std::string("default") : iLanguage;
}

// The diagnostic of a failed lookup.
std::string Diagnose(std::string_view iCatalogName, std::string_view iKey,
                     const std::vector<std::string>& iLanguages,
                     const std::vector<std::string>& iDirectories, const Catalog& iCatalog) {
  std::string text("message catalogue \"");
  text.append(iCatalogName).append("\", key \"").append(iKey).append("\": ");
  std::string levels;
  std::string files;
  for (std::size_t i = 0; i < iLanguages.size(); ++i) {
    if (!levels.empty()) levels += ", ";
    levels += LevelName(iLanguages[i]);
    if (!iCatalog.levels[i].path.empty()) {
      if (!files.empty()) files += ", ";
      files += iCatalog.levels[i].path;
    }
  }
  if (files.empty()) {
    text.append("no catalogue file for the languages tried (").append(levels).append(") in ");
    for (std::size_t i = 0; i < iDirectories.size(); ++i) {
      if (i > 0) text += ':';
      text += iDirectories[i];
    }
  } else {
    text.append("key not declared for the languages tried (")
        .append(levels)
        .append("); files read: ")
        .append(files);
  }
  if (!iCatalog.skipped.empty()) {
    text += "; unreadable files skipped: ";
    for (std::size_t i = 0; i < iCatalog.skipped.size(); ++i) {
      if (i > 0) text += ", ";
      text += iCatalog.skipped[i];
    }
  }
  return text;
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

KORMsgCatalog::~KORMsgCatalog() = default;

KORMsg KORMsgCatalog::GetMsg(const KORString& iKey) const {
  std::string diagnostic;
  {
    Cache& cache = TheCache();
    std::lock_guard<std::mutex> lock(cache.mutex);
    const Catalog& catalog = FindCatalog(cache, _catalogName.View());
    for (const Level& level : catalog.levels) {
      if (level.path.empty()) continue;  // no file at this level
      if (const KORUnicodeString* text = level.resource.Find(iKey.View())) return KORMsg(*text);
    }
    diagnostic =
        Diagnose(_catalogName.View(), iKey.View(), cache.languages, cache.directories, catalog);
  }
  KORRaise(new KORNLSCatalogError(KORString(diagnostic)));
}

void KORMsgCatalog::FlushCache() {
  Cache& cache = TheCache();
  std::lock_guard<std::mutex> lock(cache.mutex);
  cache.last = nullptr;
  cache.catalogs.clear();
  cache.directories.clear();
  cache.languages.clear();
  cache.resolved = false;
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

KORListValKORUnicodeString KORMsgCatalog::GetFilesUsed() const {
  Cache& cache = TheCache();
  std::lock_guard<std::mutex> lock(cache.mutex);
  const Catalog& catalog = FindCatalog(cache, _catalogName.View());
  std::vector<std::string> paths;
  for (const Level& level : catalog.levels) paths.push_back(level.path);
  return kor_detail::ToList(paths);
}

KORListValKORUnicodeString KORMsgCatalog::GetProblems() const {
  Cache& cache = TheCache();
  std::lock_guard<std::mutex> lock(cache.mutex);
  const Catalog& catalog = FindCatalog(cache, _catalogName.View());
  KORListValKORUnicodeString problems = kor_detail::ToList(catalog.skipped);
  for (const Level& level : catalog.levels) {
    const KORListValKORUnicodeString found = level.resource.GetProblems();
    for (int i = 1; i <= found.Size(); ++i) problems.Append(found[i]);
  }
  return problems;
}
