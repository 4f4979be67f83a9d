// A failure that says nothing about the file (too many open files, a failed
// read) is not remembered as the file's absence: the next lookup tries
// again. The faults are injected: opening the file fails with EMFILE, as
// when every descriptor is in use, or reading it fails with EIO.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <string>

#include "FaultInjection.h"
#include "KORError.h"
#include "KORLumPool.h"
#include "KORMsgCatalog.h"
#include "KORResourceFile.h"
#include "ResourceProblems.h"
#include "TemporaryDirectory.h"

namespace {

// The text of iKey in iCatalog, or "<raised: diagnostic>".
std::string Lookup(const char* iCatalog, const char* iKey) {
  const KORMsgCatalog catalog(iCatalog);
  KORUnicodeString text;
  KORXHContext context;
  if (context.Protect([&] { catalog.GetMsg(iKey).BuildMessage(&text); }) != 0) {
    std::string diagnostic = std::string("<raised: ") + context.GetDiagnostic().c_str() + ">";
    context.Release();
    return diagnostic;
  }
  return std::string(text.View());
}

class TransientFailure : public testing::Test {
 protected:
  void SetUp() override {
    UnsetPlatformVariables();
    directory.Write("msgcatalog/Tool.msgcat", "Greeting.Msg = Hello\n");
    directory.Write("dcls/KORBRIX.dcls", "KORBRIX.HUB.GRAPHSESSION = /data/graphs\n");
    setenv("KOR_MSGCATALOG_PATH", directory.PathOf("msgcatalog").c_str(), 1);
    setenv("KOR_DCLS_PATH", directory.PathOf("dcls").c_str(), 1);
    setenv("KOR_LANGUAGE", "C", 1);
    KORMsgCatalog::FlushCache();
    KORLumPool::FlushCache();
  }
  void TearDown() override {
    KORMsgCatalog::FlushCache();
    KORLumPool::FlushCache();
  }

  TemporaryDirectory directory;
};

}  // namespace

TEST_F(TransientFailure, LoadOfAFileWithoutFreeDescriptorIsUnreadableForNow) {
  const std::string path = directory.PathOf("msgcatalog/Tool.msgcat");
  const OpenFailure failure(path, EMFILE);
  const KORResourceFile file = KORResourceFile::Load(path.c_str());
  EXPECT_EQ(file.GetState(), KORResourceFile::Unreadable);
  EXPECT_TRUE(file.IsTransientFailure());
  EXPECT_NE(ProblemsOf(file).find(path + ": cannot be read for now (Too many open files)"),
            std::string::npos)
      << ProblemsOf(file);
}

TEST_F(TransientFailure, FailedReadIsUnreadableForNowWithItsReason) {
  const std::string path = directory.PathOf("msgcatalog/Tool.msgcat");
  ReadFailure failure(path, EIO);
  const KORResourceFile file = KORResourceFile::Load(path.c_str());
  EXPECT_EQ(file.GetState(), KORResourceFile::Unreadable);
  EXPECT_TRUE(file.IsTransientFailure());
  EXPECT_EQ(file.GetSize(), 0);
  EXPECT_EQ(ProblemsOf(file), path +
                                  ": cannot be read for now (Input/output error): the failure is "
                                  "not the file's, and it is read again when next needed\n");
}

TEST_F(TransientFailure, CatalogueWhoseReadFailedIsReadAgainByTheNextLookup) {
  {
    ReadFailure failure(directory.PathOf("msgcatalog/Tool.msgcat"), EIO);
    const std::string failed = Lookup("Tool", "Greeting.Msg");
    EXPECT_NE(failed.find("Input/output error"), std::string::npos) << failed;
  }
  EXPECT_EQ(Lookup("Tool", "Greeting.Msg"), "Hello");
}

TEST_F(TransientFailure, UnreadableFileForItsOwnReasonIsNotTransient) {
  directory.MakeDirectory("msgcatalog/Folder.msgcat");
  const KORResourceFile file =
      KORResourceFile::Load(directory.PathOf("msgcatalog/Folder.msgcat").c_str());
  EXPECT_EQ(file.GetState(), KORResourceFile::Unreadable);
  EXPECT_FALSE(file.IsTransientFailure());
}

TEST_F(TransientFailure, CatalogueLookupWithoutFreeDescriptorIsTriedAgainAfterwards) {
  {
    const OpenFailure failure(directory.PathOf("msgcatalog/Tool.msgcat"), EMFILE);
    const std::string failed = Lookup("Tool", "Greeting.Msg");
    EXPECT_NE(failed.find("<raised: "), std::string::npos) << failed;
    // The diagnostic names the reason, not only "no catalogue file".
    EXPECT_NE(failed.find("Too many open files"), std::string::npos) << failed;
  }
  EXPECT_EQ(Lookup("Tool", "Greeting.Msg"), "Hello");
}

TEST_F(TransientFailure, CatalogueProblemsNameTheReasonWhileItLasts) {
  const KORMsgCatalog catalog("Tool");
  KORListValKORUnicodeString problems;
  {
    const OpenFailure failure(directory.PathOf("msgcatalog/Tool.msgcat"), EMFILE);
    problems = catalog.GetProblems();
  }
  ASSERT_EQ(problems.Size(), 1);
  EXPECT_NE(std::string(problems[1].View()).find("Too many open files"), std::string::npos)
      << problems[1].View();
  EXPECT_EQ(catalog.GetProblems().Size(), 0);
}

TEST_F(TransientFailure, LaterDirectoryNeverStandsInForAFileThatFailedForNow) {
  // The first directory's catalogue takes precedence: while it cannot be
  // opened, the second directory's is not taken (and then kept) instead.
  directory.Write("other/Tool.msgcat", "Greeting.Msg = Hello from elsewhere\n");
  const std::string path = directory.PathOf("msgcatalog") + ":" + directory.PathOf("other");
  setenv("KOR_MSGCATALOG_PATH", path.c_str(), 1);
  KORMsgCatalog::FlushCache();
  {
    const OpenFailure failure(directory.PathOf("msgcatalog/Tool.msgcat"), EMFILE);
    EXPECT_NE(Lookup("Tool", "Greeting.Msg").find("<raised: "), std::string::npos);
  }
  EXPECT_EQ(Lookup("Tool", "Greeting.Msg"), "Hello");
}

TEST_F(TransientFailure, DeclarationResourceWithoutFreeDescriptorIsLoadedByTheNextCall) {
  {
    const OpenFailure failure(directory.PathOf("dcls/KORBRIX.dcls"), EMFILE);
    EXPECT_NE(KORLumPool::LoadPool("KORBRIX"), 0);
  }
  EXPECT_EQ(KORLumPool::LoadPool("KORBRIX"), 0);
  int status = -1;
  EXPECT_EQ(std::string(KORLumPool::GetStringDec("KORBRIX.HUB.GRAPHSESSION", status).View()),
            "/data/graphs");
  EXPECT_EQ(status, 0);
}

TEST_F(TransientFailure, CacheStampChangesAfterALookupThatFailedForNow) {
  ASSERT_EQ(Lookup("Tool", "Greeting.Msg"), "Hello");
  const unsigned long stamp = KORMsgCatalog::GetCacheStamp();
  KORMsgCatalog::FlushCache();
  const unsigned long flushed = KORMsgCatalog::GetCacheStamp();
  ASSERT_NE(flushed, stamp);
  {
    const OpenFailure failure(directory.PathOf("msgcatalog/Tool.msgcat"), EMFILE);
    (void)Lookup("Tool", "Greeting.Msg");
  }
  // The answer given during the failure may not be kept: the next lookup
  // answers otherwise.
  EXPECT_NE(KORMsgCatalog::GetCacheStamp(), flushed);
  const unsigned long recovered = KORMsgCatalog::GetCacheStamp();
  EXPECT_EQ(Lookup("Tool", "Greeting.Msg"), "Hello");
  EXPECT_EQ(KORMsgCatalog::GetCacheStamp(), recovered);
}
