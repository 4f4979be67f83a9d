#include "TemporaryDirectory.h"

#include "KORMsgCatalog.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace {

namespace fs = std::filesystem;

// Gives the owner every permission again on iDirectory and the directories
// below it, so that everything can be removed.
void RestorePermissions(const fs::path& iDirectory) {
  std::error_code error;
  fs::permissions(iDirectory, fs::perms::owner_all, fs::perm_options::add, error);
  for (fs::directory_iterator entry(iDirectory, error), end; !error && entry != end;
       entry.increment(error)) {
    if (entry->is_directory(error) && !entry->is_symlink(error)) RestorePermissions(entry->path());
  }
}

}  // namespace

TemporaryDirectory::TemporaryDirectory() {
  std::string pattern = "/tmp/vx0sess0-test.XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("cannot create a temporary directory under /tmp");
  }
  _path = pattern;
}

TemporaryDirectory::~TemporaryDirectory() {
  RestorePermissions(_path);
  std::error_code error;
  fs::remove_all(_path, error);
}

std::string TemporaryDirectory::PathOf(std::string_view iRelative) const {
  return _path + "/" + std::string(iRelative);
}

std::string TemporaryDirectory::Write(std::string_view iRelative, std::string_view iContent) const {
  const fs::path path = PathOf(iRelative);
  fs::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(iContent.data(), static_cast<std::streamsize>(iContent.size()));
  file.close();
  if (!file) throw std::runtime_error("cannot write " + path.string());
  return path.string();
}

std::string TemporaryDirectory::MakeDirectory(std::string_view iRelative) const {
  std::string path = PathOf(iRelative);
  fs::create_directories(path);
  return path;
}

bool MakeUnreadable(const std::string& iPath) {
  if (::chmod(iPath.c_str(), 0) != 0) return false;
  const int descriptor = ::open(iPath.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return true;
  ::close(descriptor);
  return false;
}

void UnsetPlatformVariables() {
  for (const char* name : {"KOR_MSGCATALOG_PATH", "KOR_DCLS_PATH", "KOR_ADMIN_SETTINGS"}) {
    ::unsetenv(name);
  }
  const KORListValKORUnicodeString languages = KORMsgCatalog::GetLanguageVariables();
  for (int i = 1; i <= languages.Size(); ++i) ::unsetenv(languages[i].ConvertToChar());
}
