#include "KORResourceSearch.h"

#include <dlfcn.h>
#include <sys/stat.h>

#include <climits>
#include <cstdlib>

#include "KORGetEnv.h"

#ifndef KOR_PLATFORM_INSTALLED_DATADIR
#error "KOR_PLATFORM_INSTALLED_DATADIR must name the configured data directory"
#endif
#ifndef KOR_PLATFORM_DATADIR_FROM_LIBDIR
#error "KOR_PLATFORM_DATADIR_FROM_LIBDIR must give the data directory relative to the library's"
#endif

namespace kor_detail {

namespace {

bool IsDirectory(const std::string& iPath) {
  struct stat status {};
  return ::stat(iPath.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// The canonical path of an existing file, or empty.
std::string CanonicalPath(const char* iPath) {
  char* resolved = ::realpath(iPath, nullptr);
  if (resolved == nullptr) return std::string();
  std::string path(resolved);
  std::free(resolved);
  return path;
}

// The data directory beside the loaded KORPlatform library, or empty when
// the library's directory has none (as in a build tree).
std::string DataDirectoryBesideLibrary() {
  Dl_info information{};
  if (::dladdr(reinterpret_cast<const void*>(&InstalledDataDirectory), &information) == 0 ||
      information.dli_fname == nullptr) {
    return std::string();
  }
  const std::string library = CanonicalPath(information.dli_fname);
  const std::size_t slash = library.rfind('/');
  if (slash == std::string::npos) return std::string();
  const std::string candidate =
      JoinPath(std::string_view(library).substr(0, slash), KOR_PLATFORM_DATADIR_FROM_LIBDIR);
  if (!IsDirectory(candidate)) return std::string();
  return CanonicalPath(candidate.c_str());
}

}  // namespace

const std::string& InstalledDataDirectory() {
  static const std::string directory = [] {
    std::string beside = DataDirectoryBesideLibrary();
    return beside.empty() ? std::string(KOR_PLATFORM_INSTALLED_DATADIR) : beside;
  }();
  return directory;
}

std::vector<std::string> SearchDirectories(const char* iVariable, const char* iKind) {
  std::vector<std::string> directories;
  if (const char* value = KORGetEnv(iVariable)) {
    std::string_view rest(value);
    while (true) {
      const std::size_t colon = rest.find(':');
      const std::string_view entry = rest.substr(0, colon);
      if (!entry.empty()) directories.emplace_back(entry);
      if (colon == std::string_view::npos) break;
      rest.remove_prefix(colon + 1);
    }
  }
  if (directories.empty()) directories.push_back(JoinPath(InstalledDataDirectory(), iKind));
  return directories;
}

std::string JoinPath(std::string_view iDirectory, std::string_view iRelative) {
  std::string path(iDirectory);
  if (!path.empty() && path.back() != '/') path += '/';
  path.append(iRelative);
  return path;
}

FoundFile FindFirstReadable(const std::vector<std::string>& iDirectories,
                            std::string_view iRelative,
                            const std::function<KORResourceFile(const std::string&)>& iLoad) {
  FoundFile found;
  for (const std::string& directory : iDirectories) {
    const std::string path = JoinPath(directory, iRelative);
    KORResourceFile resource = iLoad ? iLoad(path) : KORResourceFile::Load(path.c_str());
    switch (resource.GetState()) {
      case KORResourceFile::Loaded:
        found.path = path;
        found.resource = std::move(resource);
        return found;
      case KORResourceFile::Unreadable: {
        const bool transient = resource.IsTransientFailure();
        found.skipped.push_back(std::move(resource));
        if (transient) {
          found.transient = true;
          return found;
        }
        break;
      }
      case KORResourceFile::Absent:
        break;
    }
  }
  return found;
}

KORListValKORUnicodeString ToList(const std::vector<std::string>& iValues) {
  KORListValKORUnicodeString list;
  for (const std::string& value : iValues)
    list.Append(KORUnicodeString(value.data(), value.size()));
  return list;
}

void AppendProblems(const std::vector<KORResourceFile>& iFiles,
                    KORListValKORUnicodeString& ioProblems) {
  for (const KORResourceFile& file : iFiles) {
    const KORListValKORUnicodeString problems = file.GetProblems();
    for (int i = 1; i <= problems.Size(); ++i) ioProblems.Append(problems[i]);
  }
}

}  // namespace kor_detail
