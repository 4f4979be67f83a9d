// Damaged declaration resources ("KORBRIX" with its METHOD_LIST table and
// the graph-files path, "MERLO" with the data-management files path): the
// viewer catalogue and the paths take their documented fallbacks, the pool
// reports what it skipped, and every good declaration next to the damage is
// still used.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "BadInput.h"
#include "FreshProcess.h"
#include "KORLumPool.h"
#include "KORLumSessionFileUtilities.h"
#include "MethodListFile.h"
#include "TraceCapture.h"

// Checks what happens on first use: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

using namespace std::string_literals;

namespace {

using Utilities = KORLumSessionFileUtilities;

constexpr const char* kTable = "dcls/KORBRIX.dcls";
constexpr const char* kFiles = "dcls/MERLO.dcls";

// One kept entry: command iCommand, tag iCommand, object "Part".
std::string Entry(int iIndex, const std::string& iCommand) {
  const std::string stem = "KORBRIX.METHOD_LIST(" + std::to_string(iIndex) + ").";
  return stem + "WHERE = HUB\n" + stem + "ROLE = Tools\n" + stem + "COMMAND = " + iCommand + "\n" +
         stem + "TAG = " + iCommand + "\n" + stem + "KORAB = Part\n";
}

std::string Viewers() {
  const KORListValKORUnicodeString viewers = Utilities::GetViewers();
  std::string text;
  for (int i = 1; i <= viewers.Size(); ++i) text.append(viewers[i].View()).append(";");
  return text;
}

std::string BrixFilesPath() { return std::string(Utilities::GetBRIXFilesPath().View()); }

}  // namespace

TEST(KORBadInputDeclaration, MissingDirectoryGivesAnEmptyCatalogue) {
  BadInputConfiguration configuration;
  ::setenv("KOR_DCLS_PATH", configuration.PathOf("no/such/directory").c_str(), 1);
  EXPECT_EQ(Utilities::GetViewers().Size(), 0);
  EXPECT_EQ(Utilities::GetViewerBags().Size(), 0);
  EXPECT_EQ(std::string(Utilities::GetNLSViewer("Viewer3D").View()), "Viewer3D");
}

TEST(KORBadInputDeclaration, MissingDirectoryMakesThePathsFallBackToPwdAndSaysSo) {
  BadInputConfiguration configuration;
  ::setenv("KOR_DCLS_PATH", configuration.PathOf("no/such/directory").c_str(), 1);
  ::setenv("PWD", "/home/u", 1);
  TraceCapture trace;
  EXPECT_EQ(BrixFilesPath(), "/home/u/");
  EXPECT_EQ(std::string(Utilities::GetGraphFilesPath().View()), "/home/u/");
  // Each fallback says so in the trace.
  EXPECT_NE(trace.Text().find("Problem while retrieving DCLS - defaulting to $PWD"),
            std::string::npos)
      << trace.Text();
  EXPECT_NE(trace.Text().find("Problem while retrieving DCLS - defaulting to BRIX files path"),
            std::string::npos)
      << trace.Text();
}

TEST(KORBadInputDeclaration, DirectoryInPlaceOfTheFileIsReportedAndSkipped) {
  BadInputConfiguration configuration;
  configuration.MakeDirectory("first/KORBRIX.dcls");
  configuration.Write("second/KORBRIX.dcls", Entry(1, "Viewer3D"));
  ::setenv("KOR_DCLS_PATH",
           (configuration.PathOf("first") + ":" + configuration.PathOf("second")).c_str(), 1);
  EXPECT_EQ(Viewers(), "Viewer3D;");
  const KORListValKORUnicodeString problems = KORLumPool::GetProblems();
  EXPECT_TRUE(badinput::AnyContains(problems, "first/KORBRIX.dcls: is a directory"))
      << badinput::Lines(problems);
}

TEST(KORBadInputDeclaration, DirectoryInPlaceOfTheOnlyFileMakesThePathFallBackToPwd) {
  BadInputConfiguration configuration;
  configuration.MakeDirectory(kFiles);
  ::setenv("PWD", "/home/u", 1);
  EXPECT_EQ(BrixFilesPath(), "/home/u/");
}

TEST(KORBadInputDeclaration, UnreadableFileIsReportedAndSkipped) {
  BadInputConfiguration configuration;
  const std::string unreadable = configuration.Write("first/KORBRIX.dcls", Entry(1, "Hidden"));
  configuration.Write("second/KORBRIX.dcls", Entry(1, "Viewer3D"));
  if (!MakeUnreadable(unreadable)) {
    GTEST_SKIP() << "this process reads files without read permission (superuser)";
  }
  ::setenv("KOR_DCLS_PATH",
           (configuration.PathOf("first") + ":" + configuration.PathOf("second")).c_str(), 1);
  EXPECT_EQ(Viewers(), "Viewer3D;");
  EXPECT_TRUE(badinput::AnyContains(KORLumPool::GetProblems(), unreadable))
      << badinput::Lines(KORLumPool::GetProblems());
}

TEST(KORBadInputDeclaration, EmptyFileGivesAnEmptyCatalogueAndAnEmptyPath) {
  BadInputConfiguration configuration;
  configuration.Write(kTable, "");
  configuration.Write(kFiles, "");
  ::setenv("PWD", "/home/u", 1);
  EXPECT_EQ(Utilities::GetViewers().Size(), 0);
  EXPECT_EQ(BrixFilesPath(), "");  // loaded, but the key is not declared: no fallback
}

TEST(KORBadInputDeclaration, BinaryGarbageLeavesTheGoodEntriesUsable) {
  BadInputConfiguration configuration;
  configuration.Write(kTable, badinput::Garbage(64 * 1024) + "\n" + Entry(1, "Viewer3D") +
                                  badinput::Garbage(4096) + "\n" + Entry(2, "Print"));
  EXPECT_EQ(Viewers(), "Viewer3D;Print;");
  EXPECT_GT(KORLumPool::GetProblems().Size(), 0);
}

TEST(KORBadInputDeclaration, InvalidUtf8BecomesReplacementCharactersInTheViewerName) {
  BadInputConfiguration configuration;
  configuration.Write(kTable, Entry(1, "View\xFF\xFE") + Entry(2, "Print"));
  EXPECT_EQ(Viewers(), "View\xEF\xBF\xBD\xEF\xBF\xBD;Print;");
}

TEST(KORBadInputDeclaration, NulByteSkipsItsLineOnly) {
  BadInputConfiguration configuration;
  configuration.Write(kTable, Entry(1, "Viewer3D") + "KORBRIX.METHOD_LIST(2).WHERE = H\0UB\n"s +
                                  Entry(3, "Ignored"));
  // Entry 2 has lost its WHERE: the table ends there.
  EXPECT_EQ(Viewers(), "Viewer3D;");
  EXPECT_TRUE(badinput::AnyContains(KORLumPool::GetProblems(), "KORBRIX.dcls:6: NUL byte"))
      << badinput::Lines(KORLumPool::GetProblems());
}

TEST(KORBadInputDeclaration, CrlfLineEndsAreNotPartOfTheValues) {
  BadInputConfiguration configuration;
  std::string table = Entry(1, "Viewer3D") + Entry(2, "Print");
  for (std::size_t at = table.find('\n'); at != std::string::npos; at = table.find('\n', at + 2)) {
    table.insert(at, "\r");
  }
  configuration.Write(kTable, table);
  EXPECT_EQ(Viewers(), "Viewer3D;Print;");  // "HUB\r" would not be kept
}

TEST(KORBadInputDeclaration, ByteOrderMarkIsNotPartOfTheFirstKey) {
  BadInputConfiguration configuration;
  configuration.Write(kTable, "\xEF\xBB\xBF" + Entry(1, "Viewer3D"));
  EXPECT_EQ(Viewers(), "Viewer3D;");
}

TEST(KORBadInputDeclaration, MegabyteLineIsReadWholeAndTheNextEntryToo) {
  BadInputConfiguration configuration;
  const std::string longName(1024 * 1024, 'v');
  configuration.Write(kTable, Entry(1, longName) + Entry(2, "Print"));
  EXPECT_EQ(Viewers(), longName + ";Print;");
}

TEST(KORBadInputDeclaration, FiftyMegabyteFileLoadsAndItsTableIsRead) {
  BadInputConfiguration configuration;
  configuration.Write(kTable,
                      Entry(1, "Viewer3D") + badinput::CommentMegabytes(50) + Entry(2, "Print"));
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(Viewers(), "Viewer3D;Print;");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST(KORBadInputDeclaration, TenThousandEntriesAreAllRead) {
  BadInputConfiguration configuration;
  MethodListFile table;
  for (int i = 1; i <= 10000; ++i) {
    const std::string command = "C" + std::to_string(i);
    const std::string object = "O" + std::to_string(i % 100);
    table.Entry("HUB", "Tools", command.c_str(), command.c_str(), object.c_str());
  }
  configuration.Write(kTable, table.Text());
  const KORListValKORUnicodeString viewers = Utilities::GetViewers();
  ASSERT_EQ(viewers.Size(), 10000);
  EXPECT_EQ(std::string(viewers[10000].View()), "C10000");
  EXPECT_EQ(Utilities::GetViewerBags().Size(), 100);
  EXPECT_EQ(Utilities::GetViewers("O7").Size(), 100);
  EXPECT_EQ(Utilities::GetNLSViewers().Size(), 10000);
}

TEST(KORBadInputDeclaration, KeyDeclaredTwiceTakesTheLastValueAndIsReported) {
  BadInputConfiguration configuration;
  configuration.Write(
      kTable, Entry(1, "First") + "KORBRIX.METHOD_LIST(1).COMMAND = Second\n" + Entry(2, "Print"));
  EXPECT_EQ(Viewers(), "Second;Print;");
  EXPECT_TRUE(badinput::AnyContains(KORLumPool::GetProblems(),
                                    ":6: key \"KORBRIX.METHOD_LIST(1).COMMAND\" declared again"))
      << badinput::Lines(KORLumPool::GetProblems());
}

TEST(KORBadInputDeclaration, UnterminatedBraceInThePathIsKeptAsWritten) {
  BadInputConfiguration configuration;
  ::setenv("HOME", "/home/u", 1);
  configuration.Write(kFiles, "MERLO.BRIXFILES = /data/${HOME/files\n");
  EXPECT_EQ(BrixFilesPath(), "/data/${HOME/files/");
}

TEST(KORBadInputDeclaration, CommandsInThePathAreNeverRun) {
  BadInputConfiguration configuration;
  const std::string marker = configuration.PathOf("ran");
  configuration.Write(kFiles,
                      "MERLO.BRIXFILES = /data/$(touch " + marker + ")/`touch " + marker + "`\n");
  EXPECT_EQ(BrixFilesPath(), "/data/$(touch " + marker + ")/`touch " + marker + "`/");
  EXPECT_FALSE(std::filesystem::exists(marker));
}

TEST(KORBadInputDeclaration, HundredThousandCharacterPathIsKeptWhole) {
  BadInputConfiguration configuration;
  std::string path;
  while (path.size() < 100000) path += "/directory";
  path.resize(100000);
  configuration.Write(kFiles, "MERLO.BRIXFILES = " + path + "\n");
  configuration.Write(kTable, "KORBRIX.HUB.GRAPHSESSION = " + path + "/graph\n");
  EXPECT_EQ(BrixFilesPath(), path + "/");
  EXPECT_EQ(std::string(Utilities::GetGraphFilesPath().View()), path + "/graph/");
  EXPECT_EQ(std::string(Utilities::GetQueryFilesPath().View()), path + "/");
}
