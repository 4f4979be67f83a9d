// Damaged environment: variables that the paths name or fall back to (PWD,
// HOME, the search paths) holding unterminated braces, themselves, commands,
// invalid UTF-8 or very long values. Paths are expanded once, as written, and
// nothing is ever run.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "BadInput.h"
#include "FreshProcess.h"
#include "KORDMTools.h"
#include "KORLumSessionFileUtilities.h"

// Checks what happens on first use: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

namespace {

using Utilities = KORLumSessionFileUtilities;

std::string Expand(const char* iPath) { return std::string(KORDMTools::ExpandPath(iPath).View()); }

std::string BrixFilesPath() { return std::string(Utilities::GetBRIXFilesPath().View()); }

// Declares MERLO.BRIXFILES as iValue.
void DeclareFilesPath(const BadInputConfiguration& iConfiguration, const std::string& iValue) {
  iConfiguration.Write("dcls/MERLO.dcls", "MERLO.BRIXFILES = " + iValue + "\n");
}

}  // namespace

TEST(KORBadInputEnvironment, UnterminatedBraceIsKeptAsWritten) {
  BadInputConfiguration configuration;
  ::setenv("KOR_BADINPUT_A", "alpha", 1);
  EXPECT_EQ(Expand("/data/${KOR_BADINPUT_A"), "/data/${KOR_BADINPUT_A");
  // Without its '}', the construct runs to the end of the path, copied as is.
  EXPECT_EQ(Expand("/data/${KOR_BADINPUT_A/$KOR_BADINPUT_A"),
            "/data/${KOR_BADINPUT_A/$KOR_BADINPUT_A");
  EXPECT_EQ(Expand("$KOR_BADINPUT_A/${KOR_BADINPUT_A"), "alpha/${KOR_BADINPUT_A");
  EXPECT_EQ(Expand("${"), "${");
}

TEST(KORBadInputEnvironment, UnterminatedBraceInPwdIsKeptInTheFallbackPath) {
  BadInputConfiguration configuration;
  ::setenv("PWD", "/home/${USER", 1);
  EXPECT_EQ(BrixFilesPath(), "/home/${USER/");
}

TEST(KORBadInputEnvironment, VariableThatNamesItselfIsExpandedOnce) {
  BadInputConfiguration configuration;
  ::setenv("KOR_BADINPUT_SELF", "$KOR_BADINPUT_SELF", 1);
  ::setenv("KOR_BADINPUT_BRACE", "${KOR_BADINPUT_SELF}x", 1);
  EXPECT_EQ(Expand("$KOR_BADINPUT_SELF/a"), "$KOR_BADINPUT_SELF/a");
  EXPECT_EQ(Expand("${KOR_BADINPUT_BRACE}"), "${KOR_BADINPUT_SELF}x");
}

TEST(KORBadInputEnvironment, SelfNamingVariableInTheFilesPathIsExpandedOnce) {
  BadInputConfiguration configuration;
  ::setenv("KOR_BADINPUT_SELF", "$KOR_BADINPUT_SELF", 1);
  DeclareFilesPath(configuration, "/data/$KOR_BADINPUT_SELF");
  EXPECT_EQ(BrixFilesPath(), "/data/$KOR_BADINPUT_SELF/");
}

TEST(KORBadInputEnvironment, CommandSubstitutionAndBackticksAreNeverRun) {
  BadInputConfiguration configuration;
  const std::string marker = configuration.PathOf("ran");
  const std::string path = "/data/$(touch " + marker + ")/`touch " + marker + "`/*";
  EXPECT_EQ(Expand(path.c_str()), path);
  ::setenv("KOR_BADINPUT_RUN", path.c_str(), 1);
  EXPECT_EQ(Expand("$KOR_BADINPUT_RUN"), path);
  EXPECT_FALSE(std::filesystem::exists(marker));
}

TEST(KORBadInputEnvironment, CommandInPwdIsNeverRun) {
  BadInputConfiguration configuration;
  const std::string marker = configuration.PathOf("ran");
  ::setenv("PWD", ("/home/$(touch " + marker + ")").c_str(), 1);
  EXPECT_EQ(BrixFilesPath(), "/home/$(touch " + marker + ")/");
  EXPECT_FALSE(std::filesystem::exists(marker));
}

TEST(KORBadInputEnvironment, InvalidUtf8InAVariableBecomesReplacementCharacters) {
  BadInputConfiguration configuration;
  ::setenv("PWD", "/home/\xFF\xC3", 1);
  EXPECT_EQ(BrixFilesPath(), "/home/\xEF\xBF\xBD\xEF\xBF\xBD/");
}

TEST(KORBadInputEnvironment, HundredThousandCharacterPwdIsKeptWhole) {
  BadInputConfiguration configuration;
  const std::string pwd = "/" + std::string(99999, 'p');
  ::setenv("PWD", pwd.c_str(), 1);
  EXPECT_EQ(BrixFilesPath(), pwd + "/");
  EXPECT_EQ(std::string(Utilities::GetGraphFilesPath().View()), pwd + "/");
  EXPECT_EQ(std::string(Utilities::GetHistoryFilePath().View()), pwd + "/");
}

TEST(KORBadInputEnvironment, HundredThousandCharacterPathWithVariablesExpands) {
  BadInputConfiguration configuration;
  ::setenv("KOR_BADINPUT_A", "a", 1);
  std::string path;
  std::string expected;
  while (path.size() < 100000) {
    path += "/$KOR_BADINPUT_A";
    expected += "/a";
  }
  EXPECT_EQ(Expand(path.c_str()), expected);
}

TEST(KORBadInputEnvironment, UnsetPwdWithoutDeclarationsGivesAnEmptyPath) {
  BadInputConfiguration configuration;
  ::unsetenv("PWD");
  EXPECT_EQ(BrixFilesPath(), "");
  EXPECT_EQ(std::string(Utilities::GetGraphFilesPath().View()), "");
}

TEST(KORBadInputEnvironment, TildeWithoutHomeIsKeptAsWritten) {
  BadInputConfiguration configuration;
  ::unsetenv("HOME");
  DeclareFilesPath(configuration, "~/sessions");
  EXPECT_EQ(BrixFilesPath(), "~/sessions/");
}

TEST(KORBadInputEnvironment, EmptyAndMissingSearchPathEntriesAreSkipped) {
  BadInputConfiguration configuration;
  configuration.Write("good/MERLO.dcls", "MERLO.BRIXFILES = /data/files\n");
  ::setenv(
      "KOR_DCLS_PATH",
      ("::" + configuration.PathOf("missing") + "::" + configuration.PathOf("good") + ":").c_str(),
      1);
  EXPECT_EQ(BrixFilesPath(), "/data/files/");
}

TEST(KORBadInputEnvironment, LanguageThatCannotNameADirectoryUsesTheDefaultTexts) {
  BadInputConfiguration configuration;
  configuration.Write("msgcatalog/KORLumSessionFile.msgcat", "TypeGraph.Msg = Default\n");
  configuration.Write("KORLumSessionFile.msgcat", "TypeGraph.Msg = Escaped\n");
  ::setenv("KOR_LANGUAGE", "..", 1);  // would be msgcatalog/../KORLumSessionFile.msgcat
  KORMsgCatalog::FlushCache();
  EXPECT_EQ(std::string(Utilities::GetNLSType(KORLumSessionFileType_Graph).View()), "Default");
}
