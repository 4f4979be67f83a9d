#include "KORDMTools.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <string>

#include "TemporaryDirectory.h"

namespace {

std::string Expand(const char* iPath) { return std::string(KORDMTools::ExpandPath(iPath).View()); }

bool Exists(const std::string& iPath) {
  struct stat status {};
  return ::lstat(iPath.c_str(), &status) == 0;
}

}  // namespace

TEST(KORDMTools, DollarNameIsReplacedByTheValue) {
  setenv("KOR_DATA", "/srv/data", 1);
  EXPECT_EQ(Expand("$KOR_DATA/files"), "/srv/data/files");
}

TEST(KORDMTools, BracedNameIsReplacedByTheValue) {
  setenv("KOR_DATA", "/srv/data", 1);
  EXPECT_EQ(Expand("${KOR_DATA}files"), "/srv/datafiles");
}

TEST(KORDMTools, UnsetVariableBecomesEmpty) {
  unsetenv("KOR_UNSET");
  EXPECT_EQ(Expand("/a/$KOR_UNSET/b/${KOR_UNSET}c"), "/a//b/c");
}

TEST(KORDMTools, NameEndsAtTheFirstCharacterThatIsNotALetterDigitOrUnderscore) {
  setenv("KOR_A_1", "x", 1);
  unsetenv("KOR_A_1b");
  setenv("KOR_A", "y", 1);
  EXPECT_EQ(Expand("$KOR_A_1.hub $KOR_A-1 $KOR_A_1b"), "x.hub y-1 ");
}

TEST(KORDMTools, NamesMayContainDigitsAnywhere) {
  setenv("1KOR", "digit", 1);
  EXPECT_EQ(Expand("$1KOR/${1KOR}"), "digit/digit");
}

TEST(KORDMTools, DoubleDollarBecomesOneDollar) {
  setenv("HOME", "/home/u", 1);
  EXPECT_EQ(Expand("cost$$ $$HOME $$$HOME"), "cost$ $HOME $/home/u");
}

TEST(KORDMTools, LeadingTildeAloneBecomesHome) {
  setenv("HOME", "/home/u", 1);
  EXPECT_EQ(Expand("~"), "/home/u");
}

TEST(KORDMTools, LeadingTildeBeforeSlashBecomesHome) {
  setenv("HOME", "/home/u", 1);
  EXPECT_EQ(Expand("~/sessions/$$"), "/home/u/sessions/$");
}

TEST(KORDMTools, TildeAnywhereElseStays) {
  setenv("HOME", "/home/u", 1);
  EXPECT_EQ(Expand("~user/x"), "~user/x");
  EXPECT_EQ(Expand("a/~/b"), "a/~/b");
  EXPECT_EQ(Expand(" ~/b"), " ~/b");
}

TEST(KORDMTools, LeadingTildeStaysWhenHomeIsUnset) {
  unsetenv("HOME");
  EXPECT_EQ(Expand("~/sessions"), "~/sessions");
  EXPECT_EQ(Expand("~"), "~");
}

TEST(KORDMTools, UnterminatedBraceStaysAsItIs) {
  setenv("HOME", "/home/u", 1);
  EXPECT_EQ(Expand("a${HOME"), "a${HOME");
  EXPECT_EQ(Expand("a${"), "a${");
  EXPECT_EQ(Expand("${HOME/$HOME"), "${HOME/$HOME");
}

TEST(KORDMTools, EmptyBracesStayAsTheyAre) { EXPECT_EQ(Expand("a${}b"), "a${}b"); }

TEST(KORDMTools, BracedDefaultValueSyntaxStaysAsItIs) {
  setenv("HOME", "/home/u", 1);
  unsetenv("KOR_UNSET");
  EXPECT_EQ(Expand("${KOR_UNSET:-$HOME}/x $HOME"), "${KOR_UNSET:-$HOME}/x /home/u");
  EXPECT_EQ(Expand("${HOME:+y}"), "${HOME:+y}");
  EXPECT_EQ(Expand("${A B}"), "${A B}");
}

TEST(KORDMTools, DollarBeforeAnythingElseStays) {
  EXPECT_EQ(Expand("a$"), "a$");
  EXPECT_EQ(Expand("$/x $- $. $é"), "$/x $- $. $é");
}

TEST(KORDMTools, ExpandedValuesAreNotExpandedAgain) {
  setenv("KOR_OUTER", "$KOR_INNER ${KOR_INNER} ~ $$", 1);
  setenv("KOR_INNER", "inner", 1);
  setenv("HOME", "$KOR_INNER", 1);
  EXPECT_EQ(Expand("$KOR_OUTER"), "$KOR_INNER ${KOR_INNER} ~ $$");
  EXPECT_EQ(Expand("~/x"), "$KOR_INNER/x");
}

TEST(KORDMTools, TextWithoutVariablesIsUnchanged) {
  EXPECT_EQ(Expand(""), "");
  EXPECT_EQ(Expand("/data/été/model.hub"), "/data/été/model.hub");
}

TEST(KORDMTools, CommandSubstitutionComesBackLiterallyAndRunsNothing) {
  TemporaryDirectory directory;
  const std::string dollar = directory.PathOf("made-by-dollar");
  const std::string quotes = directory.PathOf("made-by-quotes");
  const std::string withDollar = "$(touch " + dollar + ")";
  const std::string withQuotes = "`touch " + quotes + "`";
  EXPECT_EQ(Expand(withDollar.c_str()), withDollar);
  EXPECT_EQ(Expand(withQuotes.c_str()), withQuotes);
  EXPECT_FALSE(Exists(dollar));
  EXPECT_FALSE(Exists(quotes));
}

TEST(KORDMTools, FileNamePatternsAreNotMatched) {
  TemporaryDirectory directory;
  directory.Write("a.hub", "");
  directory.Write("b.hub", "");
  const std::string pattern = directory.Path() + "/*.hub [ab].hub ?.hub";
  EXPECT_EQ(Expand(pattern.c_str()), pattern);
}

TEST(KORDMTools, ExpansionNamesTheUnsetVariablesOnceInTheOrderTheyAppear) {
  setenv("KOR_DATA", "/srv/data", 1);
  unsetenv("KOR_NOWHERE");
  unsetenv("KOR_ELSEWHERE");
  KORListValKORUnicodeString unset;
  unset.Append("<stale>");
  const KORUnicodeString path = KORDMTools::ExpandPath(
      "${KOR_NOWHERE}/$KOR_DATA/$KOR_ELSEWHERE/${KOR_NOWHERE}/$$KOR_HIDDEN", unset);
  EXPECT_EQ(std::string(path.View()), "//srv/data///$KOR_HIDDEN");
  ASSERT_EQ(unset.Size(), 2);
  EXPECT_EQ(unset[1], KORUnicodeString("KOR_NOWHERE"));
  EXPECT_EQ(unset[2], KORUnicodeString("KOR_ELSEWHERE"));
}

TEST(KORDMTools, ExpansionNamesHomeWhenATildeCannotBeExpanded) {
  unsetenv("HOME");
  KORListValKORUnicodeString unset;
  EXPECT_EQ(std::string(KORDMTools::ExpandPath("~/sessions", unset).View()), "~/sessions");
  ASSERT_EQ(unset.Size(), 1);
  EXPECT_EQ(unset[1], KORUnicodeString("HOME"));
}

TEST(KORDMTools, ExpansionWithAllVariablesSetNamesNone) {
  setenv("KOR_DATA", "/srv/data", 1);
  KORListValKORUnicodeString unset;
  EXPECT_EQ(std::string(KORDMTools::ExpandPath("$KOR_DATA", unset).View()), "/srv/data");
  EXPECT_EQ(unset.Size(), 0);
}
