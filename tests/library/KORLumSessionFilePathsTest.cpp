// The file paths of KORLumSessionFileUtilities: the data-management files
// directory ("MERLO.BRIXFILES", else $PWD), the Graph session files directory
// ("KORBRIX.HUB.GRAPHSESSION", else the data-management files directory), the
// query and history directories, their normalisation and their once-only
// caching. Every test case runs in a process of its own, so the caches start
// empty in each.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "FreshProcess.h"
#include "KORLumPool.h"
#include "KORLumSessionFileUtilities.h"
#include "TemporaryDirectory.h"
#include "TraceCapture.h"

// Checks what happens on first use: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

namespace {

using Lines = std::vector<std::string>;
using Utilities = KORLumSessionFileUtilities;

const std::string kBRIXLabel = "KORLumSessionFileUtilities::GetBRIXFilesPath";
const std::string kGraphLabel = "KORLumSessionFileUtilities::GetGraphFilesPath";
const std::string kPWDMessage = "Problem while retrieving DCLS - defaulting to $PWD";
const std::string kBRIXMessage = "Problem while retrieving DCLS - defaulting to BRIX files path";

// Each test declares its resources in its own directory, searched alone, and
// sets $PWD itself.
class KORLumSessionFilePaths : public ::testing::Test {
 protected:
  void SetUp() override {
    UnsetPlatformVariables();
    UseDeclarations("dcls");
    ::setenv("PWD", "/home/u", 1);
  }

  // Makes iFolder of the temporary directory the only place where
  // declaration resources are searched.
  void UseDeclarations(const std::string& iFolder) {
    ::setenv("KOR_DCLS_PATH", _directory.MakeDirectory(iFolder).c_str(), 1);
  }

  // Writes the declaration resource iResource into iFolder.
  void Declare(const std::string& iResource, const std::string& iContent,
               const std::string& iFolder = "dcls") {
    _directory.Write(iFolder + "/" + iResource + ".dcls", iContent);
  }

  // Replaces the declarations seen by the platform with those of iFolder,
  // as a program would after an administrator changed them.
  void SwitchDeclarationsTo(const std::string& iFolder) {
    KORLumPool::FlushCache();
    UseDeclarations(iFolder);
  }

 private:
  TemporaryDirectory _directory;
};

// The value the platform now declares under iKey of iResource ("<none>"
// when the resource cannot be loaded).
std::string DeclaredNow(const char* iResource, const char* iKey) {
  if (KORLumPool::LoadPool(iResource) != 0) return "<none>";
  int status = 0;
  return std::string(KORLumPool::GetStringDec(iKey, status).View());
}

std::string Text(const KORUnicodeString& iString) { return std::string(iString.View()); }

}  // namespace

// Normalisation of the declared data-management files directory.

TEST_F(KORLumSessionFilePaths, SurroundingBlanksAndRepeatedTrailingSlashesAreRemoved) {
  Declare("MERLO", "MERLO.BRIXFILES = \" /data/files// \"\n");
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "/data/files/");
}

TEST_F(KORLumSessionFilePaths, MissingTrailingSlashIsAdded) {
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n");
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "/data/files/");
}

TEST_F(KORLumSessionFilePaths, SingleTrailingSlashIsKeptAsItIs) {
  Declare("MERLO", "MERLO.BRIXFILES = /data/files/\n");
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "/data/files/");
}

TEST_F(KORLumSessionFilePaths, VariablesAreExpanded) {
  ::setenv("LUM_TEST_ROOT", "/data", 1);
  Declare("MERLO", "MERLO.BRIXFILES = $LUM_TEST_ROOT/files\n");
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "/data/files/");
}

TEST_F(KORLumSessionFilePaths, SlashesFromAnExpandedVariableAreReducedToOne) {
  // The expansion comes first: slashes that the variable brings are trimmed too.
  ::setenv("LUM_TEST_ROOT", "/data/files//", 1);
  Declare("MERLO", "MERLO.BRIXFILES = ${LUM_TEST_ROOT}\n");
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "/data/files/");
}

TEST_F(KORLumSessionFilePaths, RootAloneStaysRoot) {
  Declare("MERLO", "MERLO.BRIXFILES = /\n");
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "/");
}

TEST_F(KORLumSessionFilePaths, RepeatedSlashesAloneGiveRoot) {
  Declare("MERLO", "MERLO.BRIXFILES = \" /// \"\n");
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "/");
}

TEST_F(KORLumSessionFilePaths, LeadingSlashesOfAnAbsolutePathAreKept) {
  Declare("MERLO", "MERLO.BRIXFILES = \" //server/share// \"\n");
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "//server/share/");
}

TEST_F(KORLumSessionFilePaths, RelativePathGetsNoLeadingSlash) {
  Declare("MERLO", "MERLO.BRIXFILES = data/files\n");
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "data/files/");
}

TEST_F(KORLumSessionFilePaths, DataManagementPathIsTracedAsTheResult) {
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n");
  TraceCapture capture;
  (void)Utilities::GetBRIXFilesPath();
  EXPECT_EQ(capture.Lines(), (Lines{"   " + kBRIXLabel + " BRIXFilesPath = /data/files/"}));
}

// Declared but empty, or not declared: no fallback.

TEST_F(KORLumSessionFilePaths, DataManagementPathDeclaredEmptyIsEmptyWithoutFallback) {
  Declare("MERLO", "MERLO.BRIXFILES =\n");
  TraceCapture capture;
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "");
  EXPECT_EQ(capture.Lines(), (Lines{"   " + kBRIXLabel + " BRIXFilesPath = "}));
}

TEST_F(KORLumSessionFilePaths, DataManagementPathNotDeclaredIsEmptyWithoutFallback) {
  Declare("MERLO", "MERLO.OTHER = /data/other\n");
  TraceCapture capture;
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "");
  EXPECT_EQ(capture.Lines(), (Lines{"   " + kBRIXLabel + " BRIXFilesPath = "}));
}

TEST_F(KORLumSessionFilePaths, GraphPathDeclaredEmptyIsEmptyWithoutFallback) {
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n");
  Declare("KORBRIX", "KORBRIX.HUB.GRAPHSESSION = \"\"\n");
  TraceCapture capture;
  EXPECT_EQ(Text(Utilities::GetGraphFilesPath()), "");
  EXPECT_EQ(capture.Lines(), (Lines{"   " + kGraphLabel + " graphFilesPath = "}));
}

TEST_F(KORLumSessionFilePaths, GraphPathNotDeclaredIsEmptyWithoutFallback) {
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n");
  Declare("KORBRIX", "KORBRIX.METHOD_LIST(1).WHERE = HUB\n");
  TraceCapture capture;
  EXPECT_EQ(Text(Utilities::GetGraphFilesPath()), "");
  EXPECT_EQ(capture.Lines(), (Lines{"   " + kGraphLabel + " graphFilesPath = "}));
}

// The working directory stands in for a missing "MERLO" resource.

TEST_F(KORLumSessionFilePaths, MissingDataManagementResourceGivesTheWorkingDirectory) {
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "/home/u/");
}

TEST_F(KORLumSessionFilePaths, WorkingDirectoryFallbackIsAnnouncedBeforeTheResult) {
  TraceCapture capture;
  (void)Utilities::GetBRIXFilesPath();
  EXPECT_EQ(capture.Lines(), (Lines{"   " + kBRIXLabel + " " + kPWDMessage,
                                    "   " + kBRIXLabel + " BRIXFilesPath = /home/u/"}));
}

TEST_F(KORLumSessionFilePaths, WorkingDirectoryIsNormalisedLikeADeclaredPath) {
  ::setenv("PWD", " /home/u// ", 1);
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "/home/u/");
}

TEST_F(KORLumSessionFilePaths, UnsetWorkingDirectoryGivesAnEmptyPath) {
  ::unsetenv("PWD");
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "");
}

TEST_F(KORLumSessionFilePaths, DataManagementResourceInAnotherFolderIsNotSeen) {
  // Only the folders named by the search path count.
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n", "elsewhere");
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "/home/u/");
}

// The data-management files directory stands in for a missing "KORBRIX" resource.

TEST_F(KORLumSessionFilePaths, GraphPathIsNormalised) {
  Declare("KORBRIX", "KORBRIX.HUB.GRAPHSESSION = \" /data/graphs// \"\n");
  EXPECT_EQ(Text(Utilities::GetGraphFilesPath()), "/data/graphs/");
}

TEST_F(KORLumSessionFilePaths, GraphPathIsTracedAsTheResult) {
  Declare("KORBRIX", "KORBRIX.HUB.GRAPHSESSION = /data/graphs\n");
  TraceCapture capture;
  (void)Utilities::GetGraphFilesPath();
  EXPECT_EQ(capture.Lines(), (Lines{"   " + kGraphLabel + " graphFilesPath = /data/graphs/"}));
}

TEST_F(KORLumSessionFilePaths, MissingGraphResourceGivesTheDataManagementPath) {
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n");
  EXPECT_EQ(Text(Utilities::GetGraphFilesPath()), "/data/files/");
}

TEST_F(KORLumSessionFilePaths, DataManagementFallbackIsAnnouncedAndComputedInsideTheGraphScope) {
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n");
  TraceCapture capture;
  (void)Utilities::GetGraphFilesPath();
  EXPECT_EQ(capture.Lines(), (Lines{"   " + kGraphLabel + " " + kBRIXMessage,
                                    "     " + kBRIXLabel + " BRIXFilesPath = /data/files/",
                                    "   " + kGraphLabel + " graphFilesPath = /data/files/"}));
}

TEST_F(KORLumSessionFilePaths, WithNeitherResourceTheGraphPathIsTheWorkingDirectory) {
  TraceCapture capture;
  EXPECT_EQ(Text(Utilities::GetGraphFilesPath()), "/home/u/");
  EXPECT_EQ(capture.Lines(), (Lines{"   " + kGraphLabel + " " + kBRIXMessage,
                                    "     " + kBRIXLabel + " " + kPWDMessage,
                                    "     " + kBRIXLabel + " BRIXFilesPath = /home/u/",
                                    "   " + kGraphLabel + " graphFilesPath = /home/u/"}));
}

TEST_F(KORLumSessionFilePaths, GraphFallbackReusesTheCachedDataManagementPath) {
  Declare("MERLO", "MERLO.BRIXFILES = /first/files\n");
  ASSERT_EQ(Text(Utilities::GetBRIXFilesPath()), "/first/files/");
  Declare("MERLO", "MERLO.BRIXFILES = /second/files\n", "second");
  SwitchDeclarationsTo("second");
  EXPECT_EQ(Text(Utilities::GetGraphFilesPath()), "/first/files/");
}

// Query files and the history file live in the data-management files directory.

TEST_F(KORLumSessionFilePaths, QueryPathIsTheDataManagementPath) {
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n");
  EXPECT_EQ(Text(Utilities::GetQueryFilesPath()), Text(Utilities::GetBRIXFilesPath()));
  EXPECT_EQ(Text(Utilities::GetQueryFilesPath()), "/data/files/");
}

TEST_F(KORLumSessionFilePaths, HistoryPathIsTheDataManagementPath) {
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n");
  EXPECT_EQ(Text(Utilities::GetHistoryFilePath()), Text(Utilities::GetBRIXFilesPath()));
  EXPECT_EQ(Text(Utilities::GetHistoryFilePath()), "/data/files/");
}

TEST_F(KORLumSessionFilePaths, QueryAndHistoryPathsAreTheWorkingDirectoryFallbackToo) {
  EXPECT_EQ(Text(Utilities::GetQueryFilesPath()), "/home/u/");
  EXPECT_EQ(Text(Utilities::GetHistoryFilePath()), "/home/u/");
}

TEST_F(KORLumSessionFilePaths, QueryAndHistoryPathsIgnoreTheGraphDeclaration) {
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n");
  Declare("KORBRIX", "KORBRIX.HUB.GRAPHSESSION = /data/graphs\n");
  EXPECT_EQ(Text(Utilities::GetQueryFilesPath()), "/data/files/");
  EXPECT_EQ(Text(Utilities::GetHistoryFilePath()), "/data/files/");
}

TEST_F(KORLumSessionFilePaths, QueryPathIsTracedInsideItsScope) {
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n");
  TraceCapture capture;
  (void)Utilities::GetQueryFilesPath();
  EXPECT_EQ(
      capture.Lines(),
      (Lines{"     " + kBRIXLabel + " BRIXFilesPath = /data/files/",
             "   KORLumSessionFileUtilities::GetQueryFilesPath queryFilesPath = /data/files/"}));
}

TEST_F(KORLumSessionFilePaths, HistoryPathIsTracedInsideItsScope) {
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n");
  TraceCapture capture;
  (void)Utilities::GetHistoryFilePath();
  EXPECT_EQ(
      capture.Lines(),
      (Lines{"     " + kBRIXLabel + " BRIXFilesPath = /data/files/",
             "   KORLumSessionFileUtilities::GetHistoryFilePath historyFilePath = /data/files/"}));
}

// Each path is computed once per library lifetime.

TEST_F(KORLumSessionFilePaths, DataManagementPathKeepsItsFirstValueWhenTheDeclarationChanges) {
  Declare("MERLO", "MERLO.BRIXFILES = /first/files\n");
  ASSERT_EQ(Text(Utilities::GetBRIXFilesPath()), "/first/files/");
  Declare("MERLO", "MERLO.BRIXFILES = /second/files\n", "second");
  SwitchDeclarationsTo("second");
  ASSERT_EQ(DeclaredNow("MERLO", "MERLO.BRIXFILES"), "/second/files");
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "/first/files/");
}

TEST_F(KORLumSessionFilePaths, DataManagementPathKeepsItsFallbackWhenTheResourceAppears) {
  ASSERT_EQ(Text(Utilities::GetBRIXFilesPath()), "/home/u/");
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n");
  ::setenv("PWD", "/home/v", 1);
  ASSERT_EQ(DeclaredNow("MERLO", "MERLO.BRIXFILES"), "/data/files");
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "/home/u/");
}

TEST_F(KORLumSessionFilePaths, DataManagementPathKeepsItsFallbackWhenTheWorkingDirectoryChanges) {
  ASSERT_EQ(Text(Utilities::GetBRIXFilesPath()), "/home/u/");
  ::setenv("PWD", "/home/v", 1);
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "/home/u/");
}

TEST_F(KORLumSessionFilePaths, ExpandedPathKeepsItsFirstValueWhenTheVariableChanges) {
  ::setenv("LUM_TEST_ROOT", "/first", 1);
  Declare("MERLO", "MERLO.BRIXFILES = $LUM_TEST_ROOT/files\n");
  ASSERT_EQ(Text(Utilities::GetBRIXFilesPath()), "/first/files/");
  ::setenv("LUM_TEST_ROOT", "/second", 1);
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "/first/files/");
}

TEST_F(KORLumSessionFilePaths, WorkingDirectoryFallbackIsAnnouncedOnlyOnce) {
  TraceCapture capture;
  (void)Utilities::GetBRIXFilesPath();
  capture.Clear();
  (void)Utilities::GetBRIXFilesPath();
  EXPECT_EQ(capture.Lines(), (Lines{"   " + kBRIXLabel + " BRIXFilesPath = /home/u/"}));
}

TEST_F(KORLumSessionFilePaths, EmptyDataManagementPathIsKeptAndNotRetried) {
  Declare("MERLO", "MERLO.BRIXFILES =\n");
  ASSERT_EQ(Text(Utilities::GetBRIXFilesPath()), "");
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n", "second");
  SwitchDeclarationsTo("second");
  EXPECT_EQ(Text(Utilities::GetBRIXFilesPath()), "");
}

TEST_F(KORLumSessionFilePaths, GraphPathKeepsItsFirstValueWhenTheDeclarationChanges) {
  Declare("KORBRIX", "KORBRIX.HUB.GRAPHSESSION = /first/graphs\n");
  ASSERT_EQ(Text(Utilities::GetGraphFilesPath()), "/first/graphs/");
  Declare("KORBRIX", "KORBRIX.HUB.GRAPHSESSION = /second/graphs\n", "second");
  SwitchDeclarationsTo("second");
  ASSERT_EQ(DeclaredNow("KORBRIX", "KORBRIX.HUB.GRAPHSESSION"), "/second/graphs");
  EXPECT_EQ(Text(Utilities::GetGraphFilesPath()), "/first/graphs/");
}

TEST_F(KORLumSessionFilePaths, GraphPathKeepsItsFallbackWhenTheResourceAppears) {
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n");
  ASSERT_EQ(Text(Utilities::GetGraphFilesPath()), "/data/files/");
  Declare("KORBRIX", "KORBRIX.HUB.GRAPHSESSION = /data/graphs\n");
  ASSERT_EQ(DeclaredNow("KORBRIX", "KORBRIX.HUB.GRAPHSESSION"), "/data/graphs");
  EXPECT_EQ(Text(Utilities::GetGraphFilesPath()), "/data/files/");
}

TEST_F(KORLumSessionFilePaths, DataManagementFallbackOfTheGraphPathIsAnnouncedOnlyOnce) {
  Declare("MERLO", "MERLO.BRIXFILES = /data/files\n");
  TraceCapture capture;
  (void)Utilities::GetGraphFilesPath();
  capture.Clear();
  (void)Utilities::GetGraphFilesPath();
  EXPECT_EQ(capture.Lines(), (Lines{"   " + kGraphLabel + " graphFilesPath = /data/files/"}));
}

TEST_F(KORLumSessionFilePaths, EmptyGraphPathIsKeptAndNotRetried) {
  Declare("KORBRIX", "KORBRIX.HUB.GRAPHSESSION =\n");
  ASSERT_EQ(Text(Utilities::GetGraphFilesPath()), "");
  Declare("KORBRIX", "KORBRIX.HUB.GRAPHSESSION = /data/graphs\n", "second");
  SwitchDeclarationsTo("second");
  EXPECT_EQ(Text(Utilities::GetGraphFilesPath()), "");
}

TEST_F(KORLumSessionFilePaths, QueryPathFollowsTheCachedDataManagementPath) {
  Declare("MERLO", "MERLO.BRIXFILES = /first/files\n");
  ASSERT_EQ(Text(Utilities::GetBRIXFilesPath()), "/first/files/");
  Declare("MERLO", "MERLO.BRIXFILES = /second/files\n", "second");
  SwitchDeclarationsTo("second");
  EXPECT_EQ(Text(Utilities::GetQueryFilesPath()), "/first/files/");
  EXPECT_EQ(Text(Utilities::GetHistoryFilePath()), "/first/files/");
}
