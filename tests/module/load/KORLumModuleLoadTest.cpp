// Loading and unloading VX0SESS0 in a running program: the library's caches
// (file paths, viewer catalogue) are built anew at each load and destroyed at
// each unload. This program does not link VX0SESS0: it loads the test driver
// (which does) with dlopen, asks its questions, unloads it with dlclose and
// checks that VX0SESS0 has left the process. The platform library stays
// loaded, as in the client's programs; its own caches of declarations and
// catalogues are flushed whenever the configuration is switched.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "KORLumModuleDriver.h"
#include "KORLumPool.h"
#include "KORMsgCatalog.h"
#include "TemporaryDirectory.h"

#ifndef KOR_TEST_DRIVER
#error "KOR_TEST_DRIVER must name the test driver library"
#endif
#ifndef KOR_TEST_LIBRARY_SONAME
#error "KOR_TEST_LIBRARY_SONAME must give the shared object name of VX0SESS0"
#endif

namespace {

// What the driver answers about one configuration.
struct Answers {
  std::string BRIXFilesPath;
  std::string graphFilesPath;
  std::string viewers;
  std::string viewerLabels;
  std::string displayLine;
};

bool operator==(const Answers& iLeft, const Answers& iRight) {
  return iLeft.BRIXFilesPath == iRight.BRIXFilesPath &&
         iLeft.graphFilesPath == iRight.graphFilesPath && iLeft.viewers == iRight.viewers &&
         iLeft.viewerLabels == iRight.viewerLabels && iLeft.displayLine == iRight.displayLine;
}

void PrintTo(const Answers& iAnswers, std::ostream* ioStream) {
  *ioStream << "{BRIXFilesPath " << iAnswers.BRIXFilesPath << ", graphFilesPath "
            << iAnswers.graphFilesPath << ", viewers " << iAnswers.viewers << ", labels "
            << iAnswers.viewerLabels << ", display line " << iAnswers.displayLine << "}";
}

// The first configuration: one viewer, paths under /first.
const Answers kFirstAnswers = {"/first/files/", "/first/graphs/", "[Viewer3D]", "[3D viewer]",
                               "Graph : /data/model.hub [3D viewer] [Static] [Selected] [R+C]"};
// The second configuration: two viewers, another label, paths under /second.
const Answers kSecondAnswers = {
    "/second/files/", "/second/graphs/", "[Viewer3D] [Inspector]",
    "[Shaded 3D view] [Product inspector]",
    "Graph : /data/model.hub [Shaded 3D view] [Static] [Selected] [R+C]"};

// Whether VX0SESS0 is in the process now (looked up without loading it).
bool LibraryIsLoaded() {
  void* library = ::dlopen(KOR_TEST_LIBRARY_SONAME, RTLD_NOW | RTLD_NOLOAD);
  if (library == nullptr) return false;
  ::dlclose(library);
  return true;
}

std::string LastLoaderError() {
  const char* error = ::dlerror();
  return error != nullptr ? error : "";
}

class KORLumModuleLoad : public ::testing::Test {
 protected:
  void SetUp() override {
    UnsetPlatformVariables();
    ::setenv("PWD", "/home/u", 1);
    WriteFirstConfiguration();
    WriteSecondConfiguration();
  }

  void TearDown() override {
    if (_driver != nullptr) ::dlclose(_driver);
  }

  // Points the platform at the configuration of iFolder and forgets the
  // declarations and catalogues it had read.
  void UseConfiguration(const std::string& iFolder) {
    ::setenv("KOR_DCLS_PATH", _directory.PathOf(iFolder + "/dcls").c_str(), 1);
    ::setenv("KOR_MSGCATALOG_PATH", _directory.PathOf(iFolder + "/msgcatalog").c_str(), 1);
    KORLumPool::FlushCache();
    KORMsgCatalog::FlushCache();
  }

  // Loads the driver, and with it VX0SESS0.
  void Load() {
    ASSERT_EQ(_driver, nullptr);
    _driver = ::dlopen(KOR_TEST_DRIVER, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(_driver, nullptr) << LastLoaderError();
  }

  // Unloads the driver, and with it VX0SESS0.
  void Unload() {
    ASSERT_NE(_driver, nullptr);
    void* driver = _driver;
    _driver = nullptr;
    ASSERT_EQ(::dlclose(driver), 0) << LastLoaderError();
  }

  // The driver's answer to iQuestion.
  std::string Ask(const char* iQuestion) {
    const auto question = reinterpret_cast<KORLumDriverQuestion>(::dlsym(_driver, iQuestion));
    if (question == nullptr) {
      ADD_FAILURE() << "the driver does not answer " << iQuestion << ": " << LastLoaderError();
      return std::string();
    }
    std::vector<char> text(64);
    std::size_t length = question(text.data(), text.size());
    if (length >= text.size()) {
      text.resize(length + 1);
      length = question(text.data(), text.size());
    }
    return std::string(text.data(), length);
  }

  Answers AskEverything() {
    Answers answers;
    answers.BRIXFilesPath = Ask("KORLumDriverBRIXFilesPath");
    answers.graphFilesPath = Ask("KORLumDriverGraphFilesPath");
    answers.viewers = Ask("KORLumDriverViewers");
    answers.viewerLabels = Ask("KORLumDriverViewerLabels");
    answers.displayLine = Ask("KORLumDriverDisplayLine");
    return answers;
  }

 private:
  void WriteFirstConfiguration() {
    _directory.Write("first/dcls/MERLO.dcls", "MERLO.BRIXFILES = /first/files\n");
    _directory.Write("first/dcls/KORBRIX.dcls",
                     "KORBRIX.HUB.GRAPHSESSION = /first/graphs\n"
                     "KORBRIX.METHOD_LIST(1).WHERE = HUB\n"
                     "KORBRIX.METHOD_LIST(1).ROLE = Tools\n"
                     "KORBRIX.METHOD_LIST(1).COMMAND = Viewer3D\n"
                     "KORBRIX.METHOD_LIST(1).TAG = View3D\n"
                     "KORBRIX.METHOD_LIST(1).KORAB = Part\n");
    _directory.Write("first/msgcatalog/KORDMToolsManager.msgcat", "View3D.Label = 3D viewer\n");
  }

  void WriteSecondConfiguration() {
    _directory.Write("second/dcls/MERLO.dcls", "MERLO.BRIXFILES = /second/files//\n");
    _directory.Write("second/dcls/KORBRIX.dcls",
                     "KORBRIX.HUB.GRAPHSESSION = /second/graphs\n"
                     "KORBRIX.METHOD_LIST(1).WHERE = HUB\n"
                     "KORBRIX.METHOD_LIST(1).ROLE = Tools\n"
                     "KORBRIX.METHOD_LIST(1).COMMAND = Viewer3D\n"
                     "KORBRIX.METHOD_LIST(1).TAG = View3D\n"
                     "KORBRIX.METHOD_LIST(1).KORAB = Part\n"
                     "KORBRIX.METHOD_LIST(2).WHERE = Both\n"
                     "KORBRIX.METHOD_LIST(2).ROLE = Tools\n"
                     "KORBRIX.METHOD_LIST(2).COMMAND = Inspector\n"
                     "KORBRIX.METHOD_LIST(2).TAG = Inspect\n"
                     "KORBRIX.METHOD_LIST(2).KORAB = Product\n");
    _directory.Write("second/msgcatalog/KORDMToolsManager.msgcat",
                     "View3D.Label = Shaded 3D view\n"
                     "Inspect.Label = Product inspector\n");
  }

  TemporaryDirectory _directory;
  void* _driver = nullptr;
};

}  // namespace

TEST_F(KORLumModuleLoad, LibraryComesWithTheDriverAndLeavesWithIt) {
  UseConfiguration("first");
  ASSERT_FALSE(LibraryIsLoaded());
  Load();
  EXPECT_TRUE(LibraryIsLoaded());
  EXPECT_EQ(AskEverything(), kFirstAnswers);
  Unload();
  EXPECT_FALSE(LibraryIsLoaded());
}

TEST_F(KORLumModuleLoad, LoadedLibraryKeepsItsAnswersWhenTheConfigurationChanges) {
  UseConfiguration("first");
  Load();
  ASSERT_EQ(AskEverything(), kFirstAnswers);
  UseConfiguration("second");
  EXPECT_EQ(AskEverything(), kFirstAnswers);
}

TEST_F(KORLumModuleLoad, ReloadedLibraryAnswersFromTheConfigurationOfItsNewLoad) {
  UseConfiguration("first");
  Load();
  ASSERT_EQ(AskEverything(), kFirstAnswers);
  // While loaded, the library keeps what it read, whatever the platform now
  // declares: only the unload can make it read again.
  UseConfiguration("second");
  ASSERT_EQ(AskEverything(), kFirstAnswers);
  Unload();
  ASSERT_FALSE(LibraryIsLoaded());

  Load();
  EXPECT_EQ(AskEverything(), kSecondAnswers);
  Unload();
  EXPECT_FALSE(LibraryIsLoaded());
}

TEST_F(KORLumModuleLoad, SecondLoadWithTheFirstConfigurationGivesTheFirstAnswersAgain) {
  UseConfiguration("first");
  Load();
  ASSERT_EQ(AskEverything(), kFirstAnswers);
  Unload();
  Load();
  EXPECT_EQ(AskEverything(), kFirstAnswers);
  Unload();
  EXPECT_FALSE(LibraryIsLoaded());
}

TEST_F(KORLumModuleLoad, UnloadWithoutAnyPathOperationLeavesAndReloadsCleanly) {
  UseConfiguration("first");
  Load();
  // Viewers and the display line only: neither path string is ever built.
  EXPECT_EQ(Ask("KORLumDriverViewers"), kFirstAnswers.viewers);
  EXPECT_EQ(Ask("KORLumDriverDisplayLine"), kFirstAnswers.displayLine);
  Unload();
  ASSERT_FALSE(LibraryIsLoaded());

  UseConfiguration("second");
  Load();
  EXPECT_EQ(Ask("KORLumDriverGraphFilesPath"), kSecondAnswers.graphFilesPath);
  EXPECT_EQ(Ask("KORLumDriverBRIXFilesPath"), kSecondAnswers.BRIXFilesPath);
  Unload();
  EXPECT_FALSE(LibraryIsLoaded());
}

TEST_F(KORLumModuleLoad, UnloadRightAfterLoadingLeavesAndReloadsCleanly) {
  UseConfiguration("first");
  Load();
  Unload();
  ASSERT_FALSE(LibraryIsLoaded());
  Load();
  EXPECT_EQ(AskEverything(), kFirstAnswers);
  Unload();
  EXPECT_FALSE(LibraryIsLoaded());
}
