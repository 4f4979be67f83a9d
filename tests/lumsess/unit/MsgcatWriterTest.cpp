// Writing catalogue texts back: every value written reads back unchanged
// through KORResourceFile, and an update keeps the rest of the file.
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "KORResourceFile.h"
#include "MsgcatWriter.h"
#include "TemporaryDirectory.h"

namespace {

using lumsess::EncodeMsgcatValue;
using lumsess::MsgcatLine;
using lumsess::UpdateMsgcat;

// The value a one-line file declaring iValue under "Key.Msg" reads as; the
// test fails when the line does not parse cleanly.
std::string ReadBack(const std::string& iValue) {
  const std::string line = MsgcatLine("Key.Msg", iValue) + "\n";
  const KORResourceFile file = KORResourceFile::Parse(line, "written.msgcat");
  EXPECT_EQ(file.GetProblems().Size(), 0) << line;
  const KORUnicodeString* value = file.Find("Key.Msg");
  if (value == nullptr) {
    ADD_FAILURE() << "Key.Msg is not declared by: " << line;
    return std::string();
  }
  return std::string(value->View());
}

std::string ReadFile(const std::string& iPath) {
  std::ifstream stream(iPath, std::ios::binary);
  std::ostringstream content;
  content << stream.rdbuf();
  return content.str();
}

}  // namespace

TEST(MsgcatValue, PlainTextIsWrittenAsItIs) {
  EXPECT_EQ(EncodeMsgcatValue("Graph view"), "Graph view");
  EXPECT_EQ(ReadBack("Graph view"), "Graph view");
}

TEST(MsgcatValue, EmptyValueLeavesTheLineWithoutValue) {
  EXPECT_EQ(MsgcatLine("Key.Msg", ""), "Key.Msg =");
  EXPECT_EQ(ReadBack(""), "");
}

TEST(MsgcatValue, BlanksAtTheEndsAreQuoted) {
  EXPECT_EQ(EncodeMsgcatValue(" + "), "\" + \"");
  EXPECT_EQ(ReadBack(" + "), " + ");
  EXPECT_EQ(ReadBack("\tleading tab"), "\tleading tab");
  EXPECT_EQ(ReadBack("trailing blank "), "trailing blank ");
  EXPECT_EQ(ReadBack(" "), " ");
}

TEST(MsgcatValue, LeadingQuoteIsQuotedAndEscaped) {
  EXPECT_EQ(EncodeMsgcatValue("\"Quoted\" word"), "\"\\\"Quoted\\\" word\"");
  EXPECT_EQ(ReadBack("\"Quoted\" word"), "\"Quoted\" word");
  EXPECT_EQ(ReadBack("\""), "\"");
}

TEST(MsgcatValue, QuotesAndBackslashesInsideAreTakenLiterally) {
  EXPECT_EQ(EncodeMsgcatValue("C:\\temp \"x\""), "C:\\temp \"x\"");
  EXPECT_EQ(ReadBack("C:\\temp \"x\""), "C:\\temp \"x\"");
  EXPECT_EQ(ReadBack("ends with \\"), "ends with \\");
}

TEST(MsgcatValue, NewlineAndTabAreEscaped) {
  EXPECT_EQ(EncodeMsgcatValue("one\ntwo"), "\"one\\ntwo\"");
  EXPECT_EQ(ReadBack("one\ntwo"), "one\ntwo");
  EXPECT_EQ(ReadBack("a\tb"), "a\tb");
  EXPECT_EQ(ReadBack("\n"), "\n");
  EXPECT_EQ(ReadBack("trailing newline\n"), "trailing newline\n");
}

TEST(MsgcatValue, BackslashesAndQuotesAreEscapedInAQuotedValue) {
  EXPECT_EQ(EncodeMsgcatValue(" \\n \" "), "\" \\\\n \\\" \"");
  EXPECT_EQ(ReadBack(" \\n \" "), " \\n \" ");
  EXPECT_EQ(ReadBack("\\\n\\t\"\t"), "\\\n\\t\"\t");
}

TEST(MsgcatValue, CarriageReturnIsKept) {
  EXPECT_EQ(ReadBack("line\r"), "line\r");
  EXPECT_EQ(ReadBack("a\rb"), "a\rb");
}

TEST(MsgcatValue, NonLatinTextIsWrittenAsItIs) {
  EXPECT_EQ(EncodeMsgcatValue("セッションファイル"), "セッションファイル");
  EXPECT_EQ(ReadBack("Сеанс «граф»"), "Сеанс «граф»");
  EXPECT_EQ(ReadBack(" عرض "), " عرض ");
}

TEST(MsgcatValue, CommentAndEqualsCharactersReadBack) {
  EXPECT_EQ(ReadBack("# not a comment"), "# not a comment");
  EXPECT_EQ(ReadBack("! nor this"), "! nor this");
  EXPECT_EQ(ReadBack("a = b"), "a = b");
}

TEST(MsgcatUpdate, ReplacesTheValueAndKeepsTheRestOfTheFile) {
  const std::string before =
      "# French texts\nTypeGraph.Msg   = Graphe\n\n! note\nTypeQuery.Msg = Requete\n";
  const auto update = UpdateMsgcat(before, "fr.msgcat", {{"TypeQuery.Msg", "Requête"}});
  EXPECT_EQ(update.error, "");
  EXPECT_EQ(update.content,
            "# French texts\nTypeGraph.Msg   = Graphe\n\n! note\nTypeQuery.Msg = Requête\n");
  EXPECT_EQ(update.changed, 1);
  EXPECT_EQ(update.added, 0);
}

TEST(MsgcatUpdate, KeepsTheAlignmentBeforeTheValue) {
  const auto update = UpdateMsgcat("A.Msg    =   old\n", "x.msgcat", {{"A.Msg", " new "}});
  EXPECT_EQ(update.content, "A.Msg    =   \" new \"\n");
}

TEST(MsgcatUpdate, EmptyValueLeavesNoBlankAfterTheEqualsSign) {
  const auto update = UpdateMsgcat("A.Msg = old\n", "x.msgcat", {{"A.Msg", ""}});
  EXPECT_EQ(update.content, "A.Msg =\n");
}

TEST(MsgcatUpdate, ValueGivenToAnEmptyDeclarationGetsABlank) {
  const auto update = UpdateMsgcat("A.Msg =\n", "x.msgcat", {{"A.Msg", "new"}});
  EXPECT_EQ(update.content, "A.Msg = new\n");
}

TEST(MsgcatUpdate, AppendsNewKeysInTheOrderGiven) {
  const auto update =
      UpdateMsgcat("A.Msg = a\n", "x.msgcat", {{"C.Msg", "c"}, {"A.Msg", "a"}, {"B.Msg", "b"}});
  EXPECT_EQ(update.content, "A.Msg = a\nC.Msg = c\nB.Msg = b\n");
  EXPECT_EQ(update.added, 2);
  EXPECT_EQ(update.changed, 0);
}

TEST(MsgcatUpdate, AppendsAfterALastLineWithoutNewline) {
  const auto update = UpdateMsgcat("A.Msg = a", "x.msgcat", {{"B.Msg", "b"}});
  EXPECT_EQ(update.content, "A.Msg = a\nB.Msg = b\n");
}

TEST(MsgcatUpdate, UnchangedValuesLeaveTheFileByteForByte) {
  const std::string before =
      "\xEF\xBB\xBF"
      "A.Msg=a\r\nB.Msg = \"  b\"\r\nbroken line\r\nC.Msg =";
  const auto update =
      UpdateMsgcat(before, "x.msgcat", {{"A.Msg", "a"}, {"B.Msg", "  b"}, {"C.Msg", ""}});
  EXPECT_EQ(update.error, "");
  EXPECT_EQ(update.content, before);
  EXPECT_EQ(update.changed, 0);
}

TEST(MsgcatUpdate, KeepsCrlfLineEnds) {
  const auto update =
      UpdateMsgcat("A.Msg = a\r\nB.Msg = b\r\n", "x.msgcat", {{"B.Msg", "B"}, {"C.Msg", "c"}});
  EXPECT_EQ(update.content, "A.Msg = a\r\nB.Msg = B\r\nC.Msg = c\r\n");
}

TEST(MsgcatUpdate, ReplacesTheDeclarationThatCountsOfADuplicateKey) {
  const auto update =
      UpdateMsgcat("A.Msg = first\nA.Msg = second\n", "x.msgcat", {{"A.Msg", "new"}});
  EXPECT_EQ(update.content, "A.Msg = first\nA.Msg = new\n");
}

TEST(MsgcatUpdate, LastValueOfAKeyGivenTwiceWins) {
  const auto update = UpdateMsgcat("A.Msg = a\n", "x.msgcat", {{"A.Msg", "x"}, {"A.Msg", "a"}});
  EXPECT_EQ(update.content, "A.Msg = a\n");
  EXPECT_EQ(update.changed, 0);
}

TEST(MsgcatUpdate, EmptyFileGetsTheNewKeys) {
  const auto update = UpdateMsgcat("", "x.msgcat", {{"A.Msg", "a\tb"}});
  EXPECT_EQ(update.content, "A.Msg = \"a\\tb\"\n");
}

TEST(MsgcatUpdate, KeyThatCannotBeDeclaredIsAnError) {
  const auto update = UpdateMsgcat("A.Msg = a\n", "x.msgcat", {{"Bad key", "b"}});
  EXPECT_NE(update.error, "");
  EXPECT_EQ(update.content, "");
}

TEST(AtomicWrite, ReplacesTheFileAndKeepsItsPermissions) {
  TemporaryDirectory directory;
  const std::string path = directory.Path() + "/fr.msgcat";
  { std::ofstream(path) << "A.Msg = old\n"; }
  ASSERT_EQ(::chmod(path.c_str(), 0600), 0);
  EXPECT_EQ(lumsess::WriteFileAtomically(path, "A.Msg = new\n"), "");
  EXPECT_EQ(ReadFile(path), "A.Msg = new\n");
  struct stat status {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0600U);
}

TEST(AtomicWrite, CreatesAFileAndLeavesNoTemporaryBehind) {
  TemporaryDirectory directory;
  const std::string path = directory.Path() + "/new.msgcat";
  EXPECT_EQ(lumsess::WriteFileAtomically(path, "A.Msg = a\n"), "");
  EXPECT_EQ(ReadFile(path), "A.Msg = a\n");
  int entries = 0;
  for (const auto& entry : std::filesystem::directory_iterator(directory.Path())) {
    (void)entry;
    ++entries;
  }
  EXPECT_EQ(entries, 1);
}

TEST(AtomicWrite, MissingDirectoryIsReportedAndNothingIsWritten) {
  TemporaryDirectory directory;
  const std::string path = directory.Path() + "/absent/fr.msgcat";
  const std::string failure = lumsess::WriteFileAtomically(path, "A.Msg = a\n");
  EXPECT_NE(failure.find("cannot create a temporary file"), std::string::npos) << failure;
  EXPECT_FALSE(std::filesystem::exists(path));
}
