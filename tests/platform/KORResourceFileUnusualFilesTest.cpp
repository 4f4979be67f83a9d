// Resource files that can be opened but are not plain readable files: each is
// unreadable, and the reason is reported as the file's only problem.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "KORResourceFile.h"
#include "ResourceProblems.h"
#include "TemporaryDirectory.h"

TEST(KORResourceFileSpecialFiles, FifoIsNotARegularFile) {
  // Opened without waiting for a writer, then refused.
  TemporaryDirectory directory;
  const std::string path = directory.PathOf("pipe.dcls");
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  const KORResourceFile file = KORResourceFile::Load(path.c_str());
  EXPECT_EQ(file.GetState(), KORResourceFile::Unreadable);
  EXPECT_EQ(ProblemsOf(file), path + ": is not a regular file\n");
  EXPECT_EQ(file.GetSize(), 0);
}

TEST(KORResourceFileSpecialFiles, FileOfSizeZeroAtOpeningIsReadAsEmpty) {
  // Reading stops at the size a file had when it was opened: the process's
  // own memory, a regular file of size 0, is not read at all.
  const char* path = "/proc/self/mem";
  struct stat status {};
  if (::stat(path, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size != 0) {
    GTEST_SKIP() << path << " is not a regular file of size 0 here";
  }
  const KORResourceFile file = KORResourceFile::Load(path);
  EXPECT_EQ(file.GetState(), KORResourceFile::Loaded);
  EXPECT_EQ(file.GetSize(), 0);
  EXPECT_EQ(ProblemsOf(file), "");
}
