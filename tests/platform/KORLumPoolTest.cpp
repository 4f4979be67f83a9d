#include "KORLumPool.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "FreshProcess.h"
#include "ListText.h"
#include "TemporaryDirectory.h"

// Checks what happens on first use: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

namespace {

// The value of iKey in the pool, or "<undeclared>" when its status says so.
std::string Declared(const char* iKey) {
  int status = -1;
  const KORUnicodeString value = KORLumPool::GetStringDec(iKey, status);
  if (status != 0) {
    EXPECT_EQ(value.GetLengthInChar(), 0);
    return "<undeclared>";
  }
  return std::string(value.View());
}

// A declaration directory named by KOR_DCLS_PATH.
struct PoolFixture {
  PoolFixture() {
    UnsetPlatformVariables();
    setenv("KOR_DCLS_PATH", directory.Path().c_str(), 1);
  }
  TemporaryDirectory directory;
};

}  // namespace

TEST(KORLumPool, LoadPoolReturnsZeroAndMakesTheDeclarationsAvailable) {
  PoolFixture fixture;
  fixture.directory.Write("KORBRIX.dcls",
                          "KORBRIX.HUB.GRAPHSESSION = /data/graphs\n"
                          "KORBRIX.METHOD_LIST(1).WHERE = HUB\n");
  EXPECT_EQ(KORLumPool::LoadPool("KORBRIX"), 0);
  EXPECT_EQ(Declared("KORBRIX.HUB.GRAPHSESSION"), "/data/graphs");
  EXPECT_EQ(Declared("KORBRIX.METHOD_LIST(1).WHERE"), "HUB");
}

TEST(KORLumPool, KeysAreNotDeclaredBeforeTheirResourceIsLoaded) {
  PoolFixture fixture;
  fixture.directory.Write("MERLO.dcls", "MERLO.BRIXFILES = /data\n");
  EXPECT_EQ(Declared("MERLO.BRIXFILES"), "<undeclared>");
}

TEST(KORLumPool, LoadPoolFailsWhenNoDirectoryHasTheFile) {
  PoolFixture fixture;
  EXPECT_NE(KORLumPool::LoadPool("MERLO"), 0);
  EXPECT_EQ(ListText(KORLumPool::GetLoadedResources()), "");
}

TEST(KORLumPool, LoadPoolSearchesAgainAfterAFailure) {
  PoolFixture fixture;
  ASSERT_NE(KORLumPool::LoadPool("MERLO"), 0);
  fixture.directory.Write("MERLO.dcls", "MERLO.BRIXFILES = /data\n");
  EXPECT_EQ(KORLumPool::LoadPool("MERLO"), 0);
  EXPECT_EQ(Declared("MERLO.BRIXFILES"), "/data");
}

TEST(KORLumPool, DeclaredEmptyValueIsFoundWithStatusZero) {
  PoolFixture fixture;
  fixture.directory.Write("KORBRIX.dcls", "KORBRIX.HUB.GRAPHSESSION =\nQuoted = \"\"\n");
  ASSERT_EQ(KORLumPool::LoadPool("KORBRIX"), 0);
  EXPECT_EQ(Declared("KORBRIX.HUB.GRAPHSESSION"), "");
  EXPECT_EQ(Declared("Quoted"), "");
}

TEST(KORLumPool, MissingKeyGivesNonZeroStatusAndAnEmptyValue) {
  PoolFixture fixture;
  fixture.directory.Write("KORBRIX.dcls", "Other = x\n");
  ASSERT_EQ(KORLumPool::LoadPool("KORBRIX"), 0);
  int status = 0;
  const KORUnicodeString value = KORLumPool::GetStringDec("KORBRIX.HUB.GRAPHSESSION", status);
  EXPECT_NE(status, 0);
  EXPECT_EQ(value.GetLengthInChar(), 0);
}

TEST(KORLumPool, FirstLoadedResourceWinsWhenTwoDeclareTheSameKey) {
  PoolFixture fixture;
  fixture.directory.Write("First.dcls", "Shared = from first\n");
  fixture.directory.Write("Second.dcls", "Shared = from second\nOwn = second\n");
  ASSERT_EQ(KORLumPool::LoadPool("First"), 0);
  ASSERT_EQ(KORLumPool::LoadPool("Second"), 0);
  EXPECT_EQ(Declared("Shared"), "from first");
  EXPECT_EQ(Declared("Own"), "second");
}

TEST(KORLumPool, FirstDirectoryThatHasTheFileWins) {
  UnsetPlatformVariables();
  TemporaryDirectory empty;
  TemporaryDirectory first;
  TemporaryDirectory second;
  const std::string used = first.Write("MERLO.dcls", "MERLO.BRIXFILES = first\n");
  second.Write("MERLO.dcls", "MERLO.BRIXFILES = second\nOnlySecond = x\n");
  setenv("KOR_DCLS_PATH", (empty.Path() + "::" + first.Path() + ":" + second.Path()).c_str(), 1);
  ASSERT_EQ(KORLumPool::LoadPool("MERLO"), 0);
  EXPECT_EQ(Declared("MERLO.BRIXFILES"), "first");
  EXPECT_EQ(Declared("OnlySecond"), "<undeclared>");
  EXPECT_EQ(std::string(KORLumPool::GetResourceFile("MERLO").View()), used);
}

TEST(KORLumPool, UnreadableFileIsPassedOverForTheNextDirectory) {
  UnsetPlatformVariables();
  TemporaryDirectory first;
  TemporaryDirectory second;
  const std::string locked = first.Write("MERLO.dcls", "MERLO.BRIXFILES = locked\n");
  second.Write("MERLO.dcls", "MERLO.BRIXFILES = second\n");
  if (!MakeUnreadable(locked)) {
    GTEST_SKIP() << "this process reads files without read permission (superuser)";
  }
  setenv("KOR_DCLS_PATH", (first.Path() + ":" + second.Path()).c_str(), 1);
  ASSERT_EQ(KORLumPool::LoadPool("MERLO"), 0);
  EXPECT_EQ(Declared("MERLO.BRIXFILES"), "second");
  EXPECT_EQ(ListText(KORLumPool::GetProblems()),
            "[" + locked + ": cannot be read (Permission denied)]");
}

TEST(KORLumPool, DirectoryInPlaceOfTheFileIsPassedOverForTheNextDirectory) {
  UnsetPlatformVariables();
  TemporaryDirectory first;
  TemporaryDirectory second;
  const std::string notAFile = first.MakeDirectory("MERLO.dcls");
  second.Write("MERLO.dcls", "MERLO.BRIXFILES = second\n");
  setenv("KOR_DCLS_PATH", (first.Path() + ":" + second.Path()).c_str(), 1);
  ASSERT_EQ(KORLumPool::LoadPool("MERLO"), 0);
  EXPECT_EQ(Declared("MERLO.BRIXFILES"), "second");
  EXPECT_EQ(ListText(KORLumPool::GetProblems()), "[" + notAFile + ": is a directory, not a file]");
}

TEST(KORLumPool, OnlyUnreadableFilesMakeLoadPoolFail) {
  PoolFixture fixture;
  fixture.directory.MakeDirectory("MERLO.dcls");
  EXPECT_NE(KORLumPool::LoadPool("MERLO"), 0);
}

TEST(KORLumPool, LoadingALoadedResourceAgainReadsNothing) {
  PoolFixture fixture;
  fixture.directory.Write("MERLO.dcls", "MERLO.BRIXFILES = first read\n");
  ASSERT_EQ(KORLumPool::LoadPool("MERLO"), 0);
  std::filesystem::remove_all(fixture.directory.Path());
  EXPECT_EQ(KORLumPool::LoadPool("MERLO"), 0);
  EXPECT_EQ(Declared("MERLO.BRIXFILES"), "first read");
  EXPECT_EQ(ListText(KORLumPool::GetLoadedResources()), "[MERLO]");
}

TEST(KORLumPool, FlushCacheUnloadsEveryResource) {
  PoolFixture fixture;
  fixture.directory.Write("MERLO.dcls", "MERLO.BRIXFILES = before\n");
  ASSERT_EQ(KORLumPool::LoadPool("MERLO"), 0);
  KORLumPool::FlushCache();
  EXPECT_EQ(Declared("MERLO.BRIXFILES"), "<undeclared>");
  EXPECT_EQ(ListText(KORLumPool::GetLoadedResources()), "");
  fixture.directory.Write("MERLO.dcls", "MERLO.BRIXFILES = after\n");
  ASSERT_EQ(KORLumPool::LoadPool("MERLO"), 0);
  EXPECT_EQ(Declared("MERLO.BRIXFILES"), "after");
}

TEST(KORLumPool, MalformedLinesAreSkippedAndReported) {
  PoolFixture fixture;
  const std::string path = fixture.directory.Write(
      "KORBRIX.dcls",
      "KORBRIX.METHOD_LIST(1).WHERE = HUB\nKORBRIX.METHOD_LIST(1).ROLE Tools\n"
      "KORBRIX.METHOD_LIST(1).COMMAND = Viewer3D\n");
  ASSERT_EQ(KORLumPool::LoadPool("KORBRIX"), 0);
  EXPECT_EQ(Declared("KORBRIX.METHOD_LIST(1).ROLE"), "<undeclared>");
  EXPECT_EQ(Declared("KORBRIX.METHOD_LIST(1).COMMAND"), "Viewer3D");
  EXPECT_EQ(ListText(KORLumPool::GetProblems()),
            "[" + path + ":2: no '=' between a key and a value]");
}

TEST(KORLumPool, DiagnosticsNameTheLoadedResourcesAndTheirFiles) {
  PoolFixture fixture;
  const std::string merlo = fixture.directory.Write("MERLO.dcls", "A = 1\n");
  const std::string brix = fixture.directory.Write("KORBRIX.dcls", "B = 2\n");
  ASSERT_EQ(KORLumPool::LoadPool("MERLO"), 0);
  ASSERT_NE(KORLumPool::LoadPool("Absent"), 0);
  ASSERT_EQ(KORLumPool::LoadPool("KORBRIX"), 0);
  EXPECT_EQ(ListText(KORLumPool::GetLoadedResources()), "[MERLO] [KORBRIX]");
  EXPECT_EQ(std::string(KORLumPool::GetResourceFile("MERLO").View()), merlo);
  EXPECT_EQ(std::string(KORLumPool::GetResourceFile("KORBRIX").View()), brix);
  EXPECT_EQ(KORLumPool::GetResourceFile("Absent").GetLengthInChar(), 0);
  EXPECT_EQ(ListText(KORLumPool::GetSearchPath()), "[" + fixture.directory.Path() + "]");
}

TEST(KORLumPool, SearchPathVariableIsReadAtEachSearch) {
  PoolFixture fixture;
  TemporaryDirectory other;
  other.Write("MERLO.dcls", "MERLO.BRIXFILES = other\n");
  ASSERT_NE(KORLumPool::LoadPool("MERLO"), 0);
  setenv("KOR_DCLS_PATH", other.Path().c_str(), 1);
  EXPECT_EQ(KORLumPool::LoadPool("MERLO"), 0);
  EXPECT_EQ(Declared("MERLO.BRIXFILES"), "other");
}

TEST(KORLumPool, GetDeclarationGivesTheFileAndLineOfTheValueFound) {
  PoolFixture fixture;
  const std::string first = fixture.directory.Write("A.dcls", "# A\nShared = from A\n");
  fixture.directory.Write("B.dcls", "Shared = from B\nOnlyB = b\n");
  ASSERT_EQ(KORLumPool::LoadPool("A"), 0);
  ASSERT_EQ(KORLumPool::LoadPool("B"), 0);
  KORUnicodeString file;
  int line = -1;
  EXPECT_EQ(KORLumPool::GetDeclaration("Shared", file, line), 0);  // the first loaded wins
  EXPECT_EQ(std::string(file.View()), first);
  EXPECT_EQ(line, 2);
  EXPECT_EQ(KORLumPool::GetDeclaration("OnlyB", file, line), 0);
  EXPECT_EQ(line, 2);
}

TEST(KORLumPool, GetDeclarationOfAnUndeclaredKeyIsNonZeroWithoutPlace) {
  PoolFixture fixture;
  fixture.directory.Write("A.dcls", "Key = 1\n");
  ASSERT_EQ(KORLumPool::LoadPool("A"), 0);
  KORUnicodeString file("<untouched>");
  int line = -1;
  EXPECT_NE(KORLumPool::GetDeclaration("Other", file, line), 0);
  EXPECT_EQ(file, KORUnicodeString(""));
  EXPECT_EQ(line, 0);
}

TEST(KORLumPool, GetResourceGivesTheParsedFileOfALoadedResource) {
  PoolFixture fixture;
  fixture.directory.Write("A.dcls", "Key = 1\nbroken\n");
  EXPECT_EQ(KORLumPool::GetResource("A").GetState(), KORResourceFile::Absent);
  ASSERT_EQ(KORLumPool::LoadPool("A"), 0);
  const KORResourceFile resource = KORLumPool::GetResource("A");
  EXPECT_EQ(resource.GetState(), KORResourceFile::Loaded);
  EXPECT_EQ(resource.GetLine("Key"), 1);
  EXPECT_EQ(resource.GetProblemDetails().size(), 1U);
}
