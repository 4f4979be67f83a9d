#include "KORResourceFile.h"
#include "ResourceProblems.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "TemporaryDirectory.h"

namespace {

// The value declared under iKey, or "<undeclared>".
std::string ValueOf(const KORResourceFile& iFile, const char* iKey) {
  const KORUnicodeString* value = iFile.Find(iKey);
  return value ? std::string(value->View()) : std::string("<undeclared>");
}

}  // namespace

// --- Declarations -----------------------------------------------------------

TEST(KORResourceFile, UnquotedValueIsTakenLiterallyAndTrimmedOfBlanks) {
  const KORResourceFile file =
      KORResourceFile::Parse("Key = \t some \"text\" with \\n and # kept \t \n", "test.msgcat");
  EXPECT_EQ(ValueOf(file, "Key"), "some \"text\" with \\n and # kept");
  EXPECT_EQ(ProblemsOf(file), "");
}

TEST(KORResourceFile, KeyIsTrimmedOfBlanks) {
  const KORResourceFile file = KORResourceFile::Parse(" \t TypeGraph.Msg\t = Graph\n", "f");
  EXPECT_EQ(ValueOf(file, "TypeGraph.Msg"), "Graph");
}

TEST(KORResourceFile, ValueIsEverythingAfterTheFirstEqualSign) {
  const KORResourceFile file =
      KORResourceFile::Parse("KORBRIX.METHOD_LIST(1).WHERE = a = b=c\n", "f");
  EXPECT_EQ(ValueOf(file, "KORBRIX.METHOD_LIST(1).WHERE"), "a = b=c");
}

TEST(KORResourceFile, KeysAreComparedExactly) {
  const KORResourceFile file = KORResourceFile::Parse("Key = upper\nkey = lower\n", "f");
  EXPECT_EQ(ValueOf(file, "Key"), "upper");
  EXPECT_EQ(ValueOf(file, "key"), "lower");
  EXPECT_EQ(ValueOf(file, "KEY"), "<undeclared>");
}

TEST(KORResourceFile, QuotedValueKeepsItsBlanks) {
  const KORResourceFile file = KORResourceFile::Parse("Leading.Msg = \"  two blanks  \"\n", "f");
  EXPECT_EQ(ValueOf(file, "Leading.Msg"), "  two blanks  ");
}

TEST(KORResourceFile, QuotedValueDecodesEveryEscape) {
  const KORResourceFile file = KORResourceFile::Parse(R"(Escapes = "q\"b\\n\nt\tend")"
                                                      "\n",
                                                      "f");
  EXPECT_EQ(ValueOf(file, "Escapes"), "q\"b\\n\nt\tend");
}

TEST(KORResourceFile, BlanksMayFollowTheClosingQuote) {
  const KORResourceFile file = KORResourceFile::Parse("Key = \"value\" \t \n", "f");
  EXPECT_EQ(ValueOf(file, "Key"), "value");
  EXPECT_EQ(ProblemsOf(file), "");
}

TEST(KORResourceFile, QuoteInsideAnUnquotedValueIsLiteral) {
  const KORResourceFile file = KORResourceFile::Parse("Key = say \"hi\"\n", "f");
  EXPECT_EQ(ValueOf(file, "Key"), "say \"hi\"");
}

TEST(KORResourceFile, EmptyAndEmptyQuotedValuesAreDeclared) {
  const KORResourceFile file = KORResourceFile::Parse("Empty.Msg =\nQuoted.Msg = \"\"\n", "f");
  ASSERT_NE(file.Find("Empty.Msg"), nullptr);
  EXPECT_EQ(file.Find("Empty.Msg")->GetLengthInChar(), 0);
  ASSERT_NE(file.Find("Quoted.Msg"), nullptr);
  EXPECT_EQ(file.Find("Quoted.Msg")->GetLengthInChar(), 0);
  EXPECT_EQ(file.GetSize(), 2);
}

TEST(KORResourceFile, UndeclaredKeyIsNotFound) {
  const KORResourceFile file = KORResourceFile::Parse("Key = value\n", "f");
  EXPECT_EQ(file.Find("Other"), nullptr);
  EXPECT_EQ(file.Find(""), nullptr);
}

TEST(KORResourceFile, CommentsAndBlankLinesAreIgnored) {
  const KORResourceFile file =
      KORResourceFile::Parse("# Key = 1\n   ! Other = 2\n\n \t \n!\n#\nKept = 3\n", "f");
  EXPECT_EQ(file.GetSize(), 1);
  EXPECT_EQ(ValueOf(file, "Kept"), "3");
  EXPECT_EQ(ProblemsOf(file), "");
}

TEST(KORResourceFile, LastLineWithoutLineEndIsRead) {
  const KORResourceFile file = KORResourceFile::Parse("First = 1\nLast = 2", "f");
  EXPECT_EQ(ValueOf(file, "Last"), "2");
}

TEST(KORResourceFile, KeysAreListedInTheOrderOfTheirFirstDeclaration) {
  const KORResourceFile file = KORResourceFile::Parse("B = 1\nA = 2\nB = 3\nC = 4\n", "f");
  const KORListValKORUnicodeString keys = file.GetKeys();
  ASSERT_EQ(keys.Size(), 3);
  EXPECT_EQ(keys[1], KORUnicodeString("B"));
  EXPECT_EQ(keys[2], KORUnicodeString("A"));
  EXPECT_EQ(keys[3], KORUnicodeString("C"));
}

// --- Malformed lines: skipped, reported with their line, the rest loaded ------

TEST(KORResourceFile, LineWithoutEqualSignIsSkippedAndReported) {
  const KORResourceFile file =
      KORResourceFile::Parse("Before = 1\nno separator here\nAfter = 2\n", "cfg.dcls");
  EXPECT_EQ(ProblemsOf(file), "cfg.dcls:2: no '=' between a key and a value\n");
  EXPECT_EQ(ValueOf(file, "Before"), "1");
  EXPECT_EQ(ValueOf(file, "After"), "2");
  EXPECT_EQ(file.GetSize(), 2);
}

TEST(KORResourceFile, EmptyKeyIsSkippedAndReported) {
  const KORResourceFile file = KORResourceFile::Parse("  = value\nAfter = 2\n", "cfg.dcls");
  EXPECT_EQ(ProblemsOf(file), "cfg.dcls:1: empty key before '='\n");
  EXPECT_EQ(file.GetSize(), 1);
}

TEST(KORResourceFile, BlankInsideTheKeyIsSkippedAndReported) {
  const KORResourceFile file =
      KORResourceFile::Parse("Good = 1\nType Graph.Msg = Graph\nTab\tKey = x\n", "c.msgcat");
  EXPECT_EQ(ProblemsOf(file),
            "c.msgcat:2: blank inside the key \"Type Graph.Msg\"\n"
            "c.msgcat:3: blank inside the key \"Tab\tKey\"\n");
  EXPECT_EQ(file.GetSize(), 1);
}

TEST(KORResourceFile, UnterminatedQuotedValueIsSkippedAndReported) {
  const KORResourceFile file =
      KORResourceFile::Parse("A = \"open\nB = \"ends in escape\\\"\nC = \"x\\\nD = ok\n", "f");
  EXPECT_EQ(ProblemsOf(file),
            "f:1: unterminated quoted value (no closing '\"')\n"
            "f:2: unterminated quoted value (no closing '\"')\n"
            "f:3: unterminated quoted value (no closing '\"')\n");
  EXPECT_EQ(file.GetSize(), 1);
  EXPECT_EQ(ValueOf(file, "D"), "ok");
}

TEST(KORResourceFile, TextAfterTheClosingQuoteIsSkippedAndReported) {
  const KORResourceFile file = KORResourceFile::Parse("A = \"quoted\" tail\nB = 2\n", "f");
  EXPECT_EQ(ProblemsOf(file), "f:1: text after the closing '\"' of a quoted value\n");
  EXPECT_EQ(ValueOf(file, "A"), "<undeclared>");
  EXPECT_EQ(ValueOf(file, "B"), "2");
}

TEST(KORResourceFile, UnknownEscapeIsSkippedAndReported) {
  const KORResourceFile file =
      KORResourceFile::Parse("A = \"C:\\xtemp\"\nB = \"\\r\"\nC = 3\n", "f");
  EXPECT_EQ(ProblemsOf(file),
            "f:1: unknown escape '\\x' in a quoted value (only \\\" \\\\ \\n \\t are allowed)\n"
            "f:2: unknown escape '\\r' in a quoted value (only \\\" \\\\ \\n \\t are allowed)\n");
  EXPECT_EQ(file.GetSize(), 1);
  EXPECT_EQ(ValueOf(file, "C"), "3");
}

TEST(KORResourceFile, NulByteMakesTheLineMalformed) {
  constexpr char kText[] = "A = 1\nB = x\0y\nC\0 = 3\nD = 4\n";
  const std::string text(kText, sizeof kText - 1);
  const KORResourceFile file = KORResourceFile::Parse(text, "f");
  EXPECT_EQ(ProblemsOf(file), "f:2: NUL byte in the line\nf:3: NUL byte in the line\n");
  EXPECT_EQ(ValueOf(file, "A"), "1");
  EXPECT_EQ(ValueOf(file, "B"), "<undeclared>");
  EXPECT_EQ(ValueOf(file, "D"), "4");
}

TEST(KORResourceFile, LineNumbersCountCommentsAndBlankLines) {
  const KORResourceFile file = KORResourceFile::Parse("# header\n\nA = 1\r\n\r\nbroken\n", "f");
  EXPECT_EQ(ProblemsOf(file), "f:5: no '=' between a key and a value\n");
}

// --- Duplicate keys -----------------------------------------------------------

TEST(KORResourceFile, DuplicateKeyLastDeclarationWinsAndIsReported) {
  const KORResourceFile file =
      KORResourceFile::Parse("Key = first\nOther = x\nKey = second\nKey = third\n", "d.msgcat");
  EXPECT_EQ(ValueOf(file, "Key"), "third");
  EXPECT_EQ(file.GetSize(), 2);
  EXPECT_EQ(ProblemsOf(file),
            "d.msgcat:3: key \"Key\" declared again (previously at line 1): the last "
            "declaration wins\n"
            "d.msgcat:4: key \"Key\" declared again (previously at line 3): the last "
            "declaration wins\n");
}

TEST(KORResourceFile, ProblemsAreListedInLineOrder) {
  const KORResourceFile file = KORResourceFile::Parse("K = 1\nbad\nK = 2\nworse\n", "f");
  EXPECT_EQ(ProblemsOf(file),
            "f:2: no '=' between a key and a value\n"
            "f:3: key \"K\" declared again (previously at line 1): the last declaration wins\n"
            "f:4: no '=' between a key and a value\n");
}

TEST(KORResourceFile, DeclarationsOfEveryKindAreRecordedInLineOrder) {
  // Plain declarations, a duplicate of each kind, a quoted value, a key that
  // is not UTF-8 and malformed lines, close together.
  const KORResourceFile file = KORResourceFile::Parse(
      "A = 1\nB = 2\nA = 3\nQ = \"q\"\nB = 4\nbad\nK\xE9 = 5\nQ = 6\nA = \"7\"\nC = 8\n", "f");
  EXPECT_EQ(ValueOf(file, "A"), "7");
  EXPECT_EQ(ValueOf(file, "B"), "4");
  EXPECT_EQ(ValueOf(file, "Q"), "6");
  EXPECT_EQ(ValueOf(file, "K\xEF\xBF\xBD"), "5");
  EXPECT_EQ(ValueOf(file, "C"), "8");
  EXPECT_EQ(ProblemsOf(file),
            "f:3: key \"A\" declared again (previously at line 1): the last declaration wins\n"
            "f:5: key \"B\" declared again (previously at line 2): the last declaration wins\n"
            "f:6: no '=' between a key and a value\n"
            "f:8: key \"Q\" declared again (previously at line 4): the last declaration wins\n"
            "f:9: key \"A\" declared again (previously at line 3): the last declaration wins\n");
}

TEST(KORResourceFile, LookupsInAnyOrderGiveTheLastDeclaration) {
  const KORResourceFile file =
      KORResourceFile::Parse("A = 1\nB = old\nC = 3\nB = new\nD = 4\n", "f");
  // In this order: in file order (after A comes the first declaration of B,
  // which the last one overrides), an undeclared key, backwards, the same key
  // twice, and a key after the last declaration.
  const std::pair<const char*, const char*> lookups[] = {
      {"A", "1"}, {"B", "new"}, {"D", "4"}, {"E", "<undeclared>"},
      {"C", "3"}, {"C", "3"},   {"A", "1"}, {"B", "new"},
      {"D", "4"}, {"A", "1"}};
  int number = 0;
  for (const auto& [key, expected] : lookups) {
    EXPECT_EQ(ValueOf(file, key), expected) << "lookup " << ++number << " of " << key;
  }
}

TEST(KORResourceFile, ThreadsSharingAFileFindEveryKey) {
  const int keys = 2000;
  std::string text;
  for (int i = 0; i < keys; ++i) {
    text.append("K").append(std::to_string(i)).append(" = ").append(std::to_string(i)).append("\n");
  }
  const KORResourceFile file = KORResourceFile::Parse(text, "f");
  // Each thread reads every key many times in an order of its own.
  std::vector<int> wrong(4, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&file, &wrong, t, keys] {
      for (int round = 0; round < 20; ++round) {
        for (int n = 0; n < keys; ++n) {
          const int i = t % 2 == 0 ? n : (n * 7 + t) % keys;
          if (ValueOf(file, ("K" + std::to_string(i)).c_str()) != std::to_string(i)) ++wrong[t];
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, std::vector<int>(4, 0));
}

// --- Encoding and line ends ---------------------------------------------------

TEST(KORResourceFile, LeadingByteOrderMarkIsSkipped) {
  const KORResourceFile file = KORResourceFile::Parse(
      "\xEF\xBB\xBF"
      "First = 1\n",
      "f");
  EXPECT_EQ(ValueOf(file, "First"), "1");
  EXPECT_EQ(ProblemsOf(file), "");
}

TEST(KORResourceFile, CrLfLineEndsAreAccepted) {
  const KORResourceFile file =
      KORResourceFile::Parse("A = 1\r\nB = \"two\"\r\n# comment\r\nC =\r\n", "f");
  EXPECT_EQ(ValueOf(file, "A"), "1");
  EXPECT_EQ(ValueOf(file, "B"), "two");
  EXPECT_EQ(ValueOf(file, "C"), "");
  EXPECT_EQ(ProblemsOf(file), "");
}

TEST(KORResourceFile, InvalidUtf8BecomesReplacementCharactersAndTheLineIsKept) {
  const KORResourceFile file = KORResourceFile::Parse(
      "Key = a\xFF"
      "b\nK\xC3y = \"\xE9t\xE9\"\n",
      "f");
  EXPECT_EQ(ValueOf(file, "Key"),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(ValueOf(file, "K\xEF\xBF\xBDy"), "\xEF\xBF\xBDt\xEF\xBF\xBD");
  EXPECT_EQ(ProblemsOf(file), "");
}

TEST(KORResourceFile, ValidUtf8IsKeptAsItIs) {
  const KORResourceFile file = KORResourceFile::Parse("Été.Msg = « Graphe » — 图\n", "f");
  EXPECT_EQ(ValueOf(file, "Été.Msg"), "« Graphe » — 图");
}

// --- Size ----------------------------------------------------------------------

TEST(KORResourceFile, LineOfOneMegabyteIsLoaded) {
  const std::string value(1 << 20, 'v');
  const KORResourceFile file =
      KORResourceFile::Parse("Before = 1\nLong = " + value + "\nAfter = 2\n", "f");
  ASSERT_NE(file.Find("Long"), nullptr);
  EXPECT_EQ(file.Find("Long")->GetLengthInChar(), 1 << 20);
  EXPECT_EQ(ValueOf(file, "After"), "2");
}

TEST(KORResourceFile, FileOfTensOfMegabytesIsLoaded) {
  TemporaryDirectory directory;
  std::string text;
  const int lines = 300000;
  const std::string filler(60, 'x');
  text.reserve(static_cast<std::size_t>(lines) * 90);
  for (int i = 0; i < lines; ++i) {
    text.append("Key.").append(std::to_string(i)).append(" = ").append(filler).append("\n");
  }
  ASSERT_GT(text.size(), 20u << 20);
  const KORResourceFile file = KORResourceFile::Load(directory.Write("big.dcls", text).c_str());
  EXPECT_EQ(file.GetState(), KORResourceFile::Loaded);
  EXPECT_EQ(file.GetSize(), lines);
  EXPECT_EQ(ValueOf(file, "Key.299999"), filler);
}

TEST(KORResourceFile, EveryKeyOfAFileOfManyKeysIsFoundWithItsLastValue) {
  // Enough keys for the index to grow many times past its smallest size;
  // every tenth key is declared again at the end of the file.
  const int keys = 20000;
  std::string text;
  for (int i = 0; i < keys; ++i) {
    text.append("Key.").append(std::to_string(i)).append(" = first ");
    text.append(std::to_string(i)).append("\n");
  }
  for (int i = 0; i < keys; i += 10) {
    text.append("Key.").append(std::to_string(i)).append(" = again ");
    text.append(std::to_string(i)).append("\n");
  }
  const KORResourceFile file = KORResourceFile::Parse(text, "many.dcls");
  EXPECT_EQ(file.GetSize(), keys);
  // The first 100 duplicates are listed, the others counted.
  const KORListValKORUnicodeString problems = file.GetProblems();
  ASSERT_EQ(problems.Size(), 101);
  EXPECT_EQ(std::string(problems[101].View()),
            "many.dcls: " + std::to_string(keys / 10 - 100) + " more problems not listed");
  for (int i = 0; i < keys; ++i) {
    const std::string key = "Key." + std::to_string(i);
    const std::string expected = (i % 10 == 0 ? "again " : "first ") + std::to_string(i);
    ASSERT_EQ(ValueOf(file, key.c_str()), expected) << key;
  }
  for (const char* undeclared : {"Key.20000", "Key.-1", "Key.", "Key", "", "key.1"}) {
    EXPECT_EQ(ValueOf(file, undeclared), "<undeclared>") << undeclared;
  }
  const KORListValKORUnicodeString listed = file.GetKeys();
  ASSERT_EQ(listed.Size(), keys);
  EXPECT_EQ(listed[1], KORUnicodeString("Key.0"));
  EXPECT_EQ(listed[keys], KORUnicodeString("Key.19999"));
}

TEST(KORResourceFile, FileReadInPiecesGivesEveryKeyWithItsLastValue) {
  // Read a megabyte at a time: a first piece of comments and a few keys, then
  // many more keys than the first piece suggests, then every tenth key again
  // with a quoted value.
  TemporaryDirectory directory;
  std::string text;
  for (int i = 0; text.size() < (3u << 19); ++i) {
    text.append("# comment line ").append(std::to_string(i)).append(std::string(40, '.'));
    text.append(i % 1000 == 0 ? "\nEarly." + std::to_string(i) + " = e\n" : "\n");
  }
  const int keys = 100000;
  for (int i = 0; i < keys; ++i) text.append("Key.").append(std::to_string(i)).append(" = first\n");
  for (int i = 0; i < keys; i += 10) {
    text.append("Key.").append(std::to_string(i)).append(" = \"again\"\n");
  }
  ASSERT_GT(text.size(), 3u << 20);
  const KORResourceFile file = KORResourceFile::Load(directory.Write("pieces.dcls", text).c_str());
  ASSERT_EQ(file.GetState(), KORResourceFile::Loaded);
  EXPECT_EQ(ValueOf(file, "Early.0"), "e");
  for (int i = 0; i < keys; ++i) {
    const std::string key = "Key." + std::to_string(i);
    ASSERT_EQ(ValueOf(file, key.c_str()), i % 10 == 0 ? "again" : "first") << key;
  }
}

// --- Files ---------------------------------------------------------------------

TEST(KORResourceFile, LoadReadsTheFileAndNamesItInProblems) {
  TemporaryDirectory directory;
  const std::string path = directory.Write("c.msgcat", "A = 1\nbroken\n");
  const KORResourceFile file = KORResourceFile::Load(path.c_str());
  EXPECT_EQ(file.GetState(), KORResourceFile::Loaded);
  EXPECT_STREQ(file.GetFileName(), path.c_str());
  EXPECT_EQ(ValueOf(file, "A"), "1");
  EXPECT_EQ(ProblemsOf(file), path + ":2: no '=' between a key and a value\n");
}

TEST(KORResourceFile, EmptyFileIsLoadedWithoutKeysAndWithoutProblems) {
  TemporaryDirectory directory;
  const KORResourceFile file = KORResourceFile::Load(directory.Write("empty.dcls", "").c_str());
  EXPECT_EQ(file.GetState(), KORResourceFile::Loaded);
  EXPECT_EQ(file.GetSize(), 0);
  EXPECT_EQ(file.Find("Key"), nullptr);
  EXPECT_EQ(ProblemsOf(file), "");
}

TEST(KORResourceFile, MissingFileIsAbsentWithoutProblem) {
  TemporaryDirectory directory;
  const KORResourceFile file = KORResourceFile::Load(directory.PathOf("none.dcls").c_str());
  EXPECT_EQ(file.GetState(), KORResourceFile::Absent);
  EXPECT_EQ(file.GetSize(), 0);
  EXPECT_EQ(ProblemsOf(file), "");
}

TEST(KORResourceFile, NullOrEmptyPathIsAbsent) {
  EXPECT_EQ(KORResourceFile::Load(nullptr).GetState(), KORResourceFile::Absent);
  EXPECT_EQ(KORResourceFile::Load("").GetState(), KORResourceFile::Absent);
}

TEST(KORResourceFile, DirectoryInPlaceOfTheFileIsUnreadableAndReported) {
  TemporaryDirectory directory;
  const std::string path = directory.MakeDirectory("c.msgcat");
  const KORResourceFile file = KORResourceFile::Load(path.c_str());
  EXPECT_EQ(file.GetState(), KORResourceFile::Unreadable);
  EXPECT_EQ(ProblemsOf(file), path + ": is a directory, not a file\n");
}

TEST(KORResourceFile, FileWithoutReadPermissionIsUnreadableAndReported) {
  TemporaryDirectory directory;
  const std::string path = directory.Write("locked.dcls", "A = 1\n");
  if (!MakeUnreadable(path)) {
    GTEST_SKIP() << "this process reads files without read permission (superuser)";
  }
  const KORResourceFile file = KORResourceFile::Load(path.c_str());
  EXPECT_EQ(file.GetState(), KORResourceFile::Unreadable);
  EXPECT_EQ(ProblemsOf(file), path + ": cannot be read (Permission denied)\n");
  EXPECT_EQ(file.Find("A"), nullptr);
}

TEST(KORResourceFile, SymbolicLinkLoopIsUnreadableAndReported) {
  // A link to itself cannot be opened by anyone, the superuser included.
  TemporaryDirectory directory;
  const std::string path = directory.PathOf("loop.dcls");
  ASSERT_EQ(::symlink(path.c_str(), path.c_str()), 0);
  const KORResourceFile file = KORResourceFile::Load(path.c_str());
  EXPECT_EQ(file.GetState(), KORResourceFile::Unreadable);
  EXPECT_EQ(ProblemsOf(file), path + ": cannot be read (Too many levels of symbolic links)\n");
}

TEST(KORResourceFile, CopiesShareTheContentAfterTheOriginalIsGone) {
  const KORUnicodeString* value = nullptr;
  KORResourceFile copy;
  {
    const KORResourceFile original = KORResourceFile::Parse("Key = kept\n", "f");
    copy = original;
    value = original.Find("Key");
  }
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(*value, KORUnicodeString("kept"));
  EXPECT_EQ(copy.Find("Key"), value);
}

TEST(KORResourceFile, DefaultConstructedFileIsAbsentAndEmpty) {
  const KORResourceFile file;
  EXPECT_EQ(file.GetState(), KORResourceFile::Absent);
  EXPECT_EQ(file.GetSize(), 0);
  EXPECT_EQ(file.GetKeys().Size(), 0);
  EXPECT_EQ(file.Find(""), nullptr);
}

// --- Places, problems apart, encoding ----------------------------------------------

TEST(KORResourceFile, LineOfAKeyIsTheLineOfTheDeclarationFound) {
  const KORResourceFile file = KORResourceFile::Parse("# comment\n\nA = 1\nB = 2\nA = 3\n", "f");
  EXPECT_EQ(file.GetLine("A"), 5);  // the last declaration wins
  EXPECT_EQ(file.GetLine("B"), 4);
  EXPECT_EQ(file.GetLine("C"), 0);
}

TEST(KORResourceFile, ProblemDetailsGiveLineAndReasonApart) {
  const KORResourceFile file = KORResourceFile::Parse("ok = 1\nbroken line\nok = 2\n", "x.dcls");
  const std::vector<KORResourceProblem> details = file.GetProblemDetails();
  ASSERT_EQ(details.size(), 2U);
  EXPECT_EQ(details[0].line, 2);
  EXPECT_EQ(details[0].reason, "no '=' between a key and a value");
  EXPECT_EQ(details[1].line, 3);
  EXPECT_EQ(std::string(file.GetProblems()[2].View()), "x.dcls:3: " + details[1].reason);
}

TEST(KORResourceFile, ProblemDetailOfAWholeFileHasLineZero) {
  TemporaryDirectory directory;
  const std::string path = directory.MakeDirectory("not-a-file.msgcat");
  const std::vector<KORResourceProblem> details =
      KORResourceFile::Load(path.c_str()).GetProblemDetails();
  ASSERT_EQ(details.size(), 1U);
  EXPECT_EQ(details[0].line, 0);
  EXPECT_EQ(details[0].reason, "is a directory, not a file");
}

TEST(KORResourceFile, Utf8FileIsReportedAsUtf8) {
  const KORResourceFile file = KORResourceFile::Parse("Label = Pièce 部品\n", "f");
  EXPECT_EQ(file.GetEncoding(), KORResourceFile::Utf8);
  EXPECT_EQ(file.GetIllFormedLine(), 0);
}

TEST(KORResourceFile, Windows1252FileIsReportedWithItsFirstIllFormedLine) {
  const KORResourceFile file = KORResourceFile::Parse(
      "A = plain\n# comment\nB = Pi\xE8"
      "ce \x93quoted\x94\n",
      "f");
  EXPECT_EQ(file.GetEncoding(), KORResourceFile::EightBit);
  EXPECT_EQ(file.GetIllFormedLine(), 3);
}

TEST(KORResourceFile, Utf16FileIsReportedAsUtf16) {
  const std::string littleEndian(
      "\xFF\xFE"
      "A\0 \0=\0 \0"
      "1\0\n\0",
      14);
  EXPECT_EQ(KORResourceFile::Parse(littleEndian, "f").GetEncoding(), KORResourceFile::Utf16);
  const std::string withoutMark(
      "\0A\0 \0=\0 \0"
      "1\0\n",
      12);
  EXPECT_EQ(KORResourceFile::Parse(withoutMark, "f").GetEncoding(), KORResourceFile::Utf16);
}

TEST(KORResourceFile, ForEachKeyVisitsKeysInOrderWithTheLinesFindGives) {
  const KORResourceFile file = KORResourceFile::Parse("B = 1\nA = 2\n# c\nB = 3\n", "f");
  std::vector<std::string> visited;
  file.ForEachKey([&](std::string_view iKey, int iLine) {
    visited.push_back(std::string(iKey) + "@" + std::to_string(iLine));
  });
  EXPECT_EQ(visited, (std::vector<std::string>{"B@4", "A@2"}));
}
