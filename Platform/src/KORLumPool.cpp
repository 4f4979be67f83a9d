#include "KORLumPool.h"

#include <mutex>
#include <string>
#include <vector>

#include "KORResourceFile.h"
#include "KORResourceSearch.h"

namespace {

// The last search of one resource, successful or not.
struct Search {
  std::string name;
  std::string path;  // the file loaded; empty when the resource is not loaded
  KORResourceFile resource;
  std::vector<KORResourceFile> skipped;  // unreadable files passed over
};

struct Pool {
  std::mutex mutex;
  std::vector<Search> searches;     // in the order resources were first searched
  std::vector<std::size_t> loaded;  // positions in searches, in load order
};

Pool& ThePool() {
  static Pool pool;
  return pool;
}

// LoadPool updates the search found through the returned pointer.
// cppcheck-suppress constParameter
Search* FindSearch(Pool& ioPool, std::string_view iName) {
  for (Search& search : ioPool.searches) {
    if (search.name == iName) return &search;
  }
  return nullptr;
}

// The loaded resource whose value GetStringDec gives for iKey: the one
// loaded first among those that declare it, with that value in oValue; null
// when none does.
const Search* Declaring(const Pool& iPool, std::string_view iKey, const KORUnicodeString*& oValue) {
  for (const std::size_t position : iPool.loaded) {
    const Search& search = iPool.searches[position];
    if ((oValue = search.resource.Find(iKey)) != nullptr) return &search;
  }
  return nullptr;
}

}  // namespace

int KORLumPool::LoadPool(const KORUnicodeString& iResource) {
  Pool& pool = ThePool();
  std::lock_guard<std::mutex> lock(pool.mutex);
  Search* search = FindSearch(pool, iResource.View());
  if (search != nullptr && !search->path.empty()) return 0;

  const std::vector<std::string> directories =
      kor_detail::SearchDirectories("KOR_DCLS_PATH", "dcls");
  kor_detail::FoundFile found =
      kor_detail::FindFirstReadable(directories, std::string(iResource.View()) + ".dcls");
  if (search == nullptr) {
    pool.searches.push_back({std::string(iResource.View()), {}, {}, {}});
    search = &pool.searches.back();
  }
  search->path = std::move(found.path);
  search->resource = std::move(found.resource);
  search->skipped = std::move(found.skipped);
  if (search->path.empty()) return 1;
  pool.loaded.push_back(static_cast<std::size_t>(search - pool.searches.data()));
  return 0;
}

KORUnicodeString KORLumPool::GetStringDec(const KORUnicodeString& iKey, int& oStatus) {
  Pool& pool = ThePool();
  std::lock_guard<std::mutex> lock(pool.mutex);
  const KORUnicodeString* value = nullptr;
  if (Declaring(pool, iKey.View(), value) != nullptr) {
    oStatus = 0;
    return *value;
  }
  oStatus = 1;
  return KORUnicodeString();
}

void KORLumPool::FlushCache() {
  Pool& pool = ThePool();
  std::lock_guard<std::mutex> lock(pool.mutex);
  pool.searches.clear();
  pool.loaded.clear();
}

KORListValKORUnicodeString KORLumPool::GetSearchPath() {
  return kor_detail::ToList(kor_detail::SearchDirectories("KOR_DCLS_PATH", "dcls"));
}

KORListValKORUnicodeString KORLumPool::GetLoadedResources() {
  Pool& pool = ThePool();
  std::lock_guard<std::mutex> lock(pool.mutex);
  std::vector<std::string> names;
  for (const std::size_t position : pool.loaded) names.push_back(pool.searches[position].name);
  return kor_detail::ToList(names);
}

KORUnicodeString KORLumPool::GetResourceFile(const KORUnicodeString& iResource) {
  Pool& pool = ThePool();
  std::lock_guard<std::mutex> lock(pool.mutex);
  const Search* search = FindSearch(pool, iResource.View());
  if (search == nullptr) return KORUnicodeString();
  return KORUnicodeString(search->path.data(), search->path.size());
}

KORResourceFile KORLumPool::GetResource(const KORUnicodeString& iResource) {
  Pool& pool = ThePool();
  std::lock_guard<std::mutex> lock(pool.mutex);
  const Search* search = FindSearch(pool, iResource.View());
  if (search == nullptr || search->path.empty()) return KORResourceFile();
  return search->resource;
}

std::vector<KORResourceFile> KORLumPool::GetSkippedFiles(const KORUnicodeString& iResource) {
  Pool& pool = ThePool();
  std::lock_guard<std::mutex> lock(pool.mutex);
  const Search* search = FindSearch(pool, iResource.View());
  if (search == nullptr) return {};
  return search->skipped;
}

int KORLumPool::GetDeclaration(const KORUnicodeString& iKey, KORUnicodeString& oFile, int& oLine) {
  Pool& pool = ThePool();
  std::lock_guard<std::mutex> lock(pool.mutex);
  const KORUnicodeString* value = nullptr;
  if (const Search* search = Declaring(pool, iKey.View(), value)) {
    oFile = KORUnicodeString(search->path.data(), search->path.size());
    oLine = search->resource.GetLine(iKey.View());
    return 0;
  }
  oFile.Reset();
  oLine = 0;
  return 1;
}

KORListValKORUnicodeString KORLumPool::GetProblems() {
  Pool& pool = ThePool();
  std::lock_guard<std::mutex> lock(pool.mutex);
  KORListValKORUnicodeString problems;
  for (const Search& search : pool.searches) {
    kor_detail::AppendProblems(search.skipped, problems);
    const KORListValKORUnicodeString found = search.resource.GetProblems();
    for (int i = 1; i <= found.Size(); ++i) problems.Append(found[i]);
  }
  return problems;
}
