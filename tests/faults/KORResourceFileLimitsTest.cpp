// Resource files of any size and content load within bounds: at most 100
// problems kept, nothing read past the size at opening, nothing above
// 256 MiB read at all.
#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <string>

#include "FaultInjection.h"
#include "KORResourceFile.h"
#include "ResourceProblems.h"
#include "TemporaryDirectory.h"

TEST(KORResourceFileLimits, KeepsTheFirst100ProblemsAndCountsTheOthers) {
  std::string text;
  for (int i = 0; i < 250; ++i) text += "not a declaration\n";
  const KORResourceFile file = KORResourceFile::Parse(text, "big.msgcat");
  const KORListValKORUnicodeString problems = file.GetProblems();
  ASSERT_EQ(problems.Size(), 101);
  EXPECT_EQ(std::string(problems[1].View()), "big.msgcat:1: no '=' between a key and a value");
  EXPECT_EQ(std::string(problems[100].View()), "big.msgcat:100: no '=' between a key and a value");
  EXPECT_EQ(std::string(problems[101].View()), "big.msgcat: 150 more problems not listed");
}

TEST(KORResourceFileLimits, CountsDuplicatesBeyondTheFirst100Problems) {
  std::string text;
  for (int i = 0; i < 102; ++i) text += "Key = " + std::to_string(i) + "\n";
  const KORResourceFile file = KORResourceFile::Parse(text, "dup.msgcat");
  const KORListValKORUnicodeString problems = file.GetProblems();
  ASSERT_EQ(problems.Size(), 101);
  EXPECT_EQ(std::string(problems[100].View()),
            "dup.msgcat:101: key \"Key\" declared again (previously at line 100): the last "
            "declaration wins");
  EXPECT_EQ(std::string(problems[101].View()), "dup.msgcat: 1 more problem not listed");
  EXPECT_EQ(file.GetSize(), 1);
  EXPECT_EQ(std::string(file.Find("Key")->View()), "101");
}

TEST(KORResourceFileLimits, ExactlyOneHundredProblemsHaveNoCount) {
  std::string text;
  for (int i = 0; i < 100; ++i) text += "=\n";
  EXPECT_EQ(KORResourceFile::Parse(text, "a").GetProblems().Size(), 100);
}

TEST(KORResourceFileLimits, FileAbove256MiBIsUnreadableAndSaysWhy) {
  TemporaryDirectory directory;
  const std::string path = directory.Write("huge.msgcat", "");
  // Sparse: no disk space taken.
  ASSERT_EQ(::truncate(path.c_str(), (off_t{256} << 20) + 1), 0);
  const KORResourceFile file = KORResourceFile::Load(path.c_str());
  EXPECT_EQ(file.GetState(), KORResourceFile::Unreadable);
  EXPECT_FALSE(file.IsTransientFailure());
  EXPECT_EQ(ProblemsOf(file),
            path + ": is too large to be read (268435457 bytes; at most 256 MiB are read)\n");
}

TEST(KORResourceFileLimits, ReadingStopsAtTheSizeTheFileHadWhenOpened) {
  TemporaryDirectory directory;
  std::string text;
  for (int i = 0; i < 1000; ++i) text += "Key" + std::to_string(i) + " = value\n";
  const std::string path = directory.Write("growing.msgcat", text);
  FileGrowth growth(path, std::size_t{8} << 20);
  const KORResourceFile file = KORResourceFile::Load(path.c_str());
  EXPECT_GT(growth.Grown(), 0U);  // the file did grow while it was read
  EXPECT_EQ(file.GetState(), KORResourceFile::Loaded);
  EXPECT_EQ(file.GetSize(), 1000);
  EXPECT_EQ(file.Find("Grown0"), nullptr);
}

TEST(KORResourceFileLimits, FileReadInPiecesGivesWhatItsTextGives) {
  // Lines of every length cross the boundaries of the pieces a file is read
  // in (a megabyte), CRLF and a byte-order mark included, and one value is
  // longer than a piece.
  std::string text(
      "\xEF\xBB\xBF"
      "First = 1\r\n");
  for (int i = 0; text.size() < (std::size_t{5} << 20); ++i) {
    text += "Key" + std::to_string(i) + " = " + std::string(static_cast<std::size_t>(i % 300), 'v');
    text += i % 7 == 0 ? "\r\n" : "\n";
    if (i % 1000 == 0) text += "malformed line " + std::to_string(i) + "\n";
    if (i == 20000) text += "Long = " + std::string(std::size_t{3} << 20, 'L') + "\n";
  }
  text += "Last = no line end";
  TemporaryDirectory directory;
  const std::string path = directory.Write("pieces.msgcat", text);
  const KORResourceFile loaded = KORResourceFile::Load(path.c_str());
  const KORResourceFile parsed = KORResourceFile::Parse(text, path.c_str());
  ASSERT_EQ(loaded.GetState(), KORResourceFile::Loaded);
  ASSERT_EQ(loaded.GetSize(), parsed.GetSize());
  EXPECT_EQ(ProblemsOf(loaded), ProblemsOf(parsed));
  const KORListValKORUnicodeString keys = loaded.GetKeys();
  ASSERT_TRUE(keys == parsed.GetKeys());
  for (int i = 1; i <= keys.Size(); ++i) {
    const KORUnicodeString* value = loaded.Find(keys[i].View());
    ASSERT_NE(value, nullptr) << keys[i].View();
    ASSERT_TRUE(*value == *parsed.Find(keys[i].View())) << keys[i].View();
  }
  EXPECT_EQ(loaded.Find("Long")->GetLengthInChar(), 3 << 20);
  EXPECT_EQ(std::string(loaded.Find("Last")->View()), "no line end");
  EXPECT_EQ(std::string(loaded.Find("First")->View()), "1");
}
