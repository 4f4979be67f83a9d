// Test helper: a fresh directory under /tmp (mkdtemp) that a test fills with
// its own configuration files; it is removed with everything in it when the
// helper dies, also when the test made parts of it unreadable.
//
//   TemporaryDirectory directory;
//   directory.Write("msgcatalog/fr/KORLumSessionFile.msgcat", "TypeGraph.Msg = Graphe\n");
//   setenv("KOR_MSGCATALOG_PATH", directory.PathOf("msgcatalog").c_str(), 1);
#ifndef TemporaryDirectory_h
#define TemporaryDirectory_h

#include <string>
#include <string_view>

class TemporaryDirectory {
 public:
  TemporaryDirectory();
  ~TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  // The directory's absolute path.
  [[nodiscard]] const std::string& Path() const { return _path; }
  // The absolute path of iRelative inside the directory.
  [[nodiscard]] std::string PathOf(std::string_view iRelative) const;

  // Writes iContent (bytes, NUL bytes included) to iRelative, creating the
  // missing parent directories; returns the file's absolute path.
  std::string Write(std::string_view iRelative, std::string_view iContent) const;
  // Creates the directory iRelative and its missing parents; returns its path.
  std::string MakeDirectory(std::string_view iRelative) const;

 private:
  std::string _path;
};

// Takes every permission away from the file at iPath. Returns true when the
// process can then no longer open it for reading; false when it still can
// (the superuser reads anything), in which case the test must be skipped.
bool MakeUnreadable(const std::string& iPath);

// Unsets every variable that the platform services read (search paths,
// language, administrator settings, HOME is left alone), so that a test
// starts from a known environment and sets what it needs itself.
void UnsetPlatformVariables();

#endif
