#include "KORHUBTrace.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "AllocationCounter.h"
#include "FreshProcess.h"
#include "TraceCapture.h"

// Checks what happens on first use: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

namespace {

// Writes one line the way the library does: indentation, label, blank, text.
void WriteLine(KORHUBTrace& ioScope, const char* iText) {
  if (!KORHUBTrace::LevelIsActive(ioScope.GetLevel())) return;
  ioScope.GetLigne() << ioScope.Indent(ioScope.GetIndent() + 3) << ioScope.GetMethod() << " "
                     << iText << std::endl;
  ioScope.Out();
}

// A leaf scope's writer: writes "value = <iValue>" in the scope it is given.
void WriteValue(const KORHUBTrace& iScope, const int& iValue) {
  std::ostream& line = KORHUBTrace::GetLigne();
  line << KORHUBTrace::Indent(iScope.GetIndent() + 3) << iScope.GetMethodText()
       << " value = " << iValue << std::endl;
  KORHUBTrace::Out();
}

std::string ReadFile(const std::string& iPath) {
  std::ifstream file(iPath);
  std::stringstream content;
  content << file.rdbuf();
  return content.str();
}

}  // namespace

TEST(KORHUBTrace, GetLevelReturnsTheLevelGivenAtOpening) {
  KORHUBTrace scope("Unit::Operation", 53, 0);
  EXPECT_EQ(scope.GetLevel(), 53);
}

TEST(KORHUBTrace, GetMethodReturnsTheLabel) {
  KORHUBTrace scope("KORLumSessionFile::operator = ", 53, 0);
  EXPECT_STREQ(scope.GetMethod(), "KORLumSessionFile::operator = ");
}

TEST(KORHUBTrace, IndentReturnsThatManyBlanks) {
  KORHUBTrace scope("Unit::Operation", 53, 0);
  EXPECT_STREQ(scope.Indent(3), "   ");
  EXPECT_STREQ(scope.Indent(0), "");
  EXPECT_STREQ(scope.Indent(-2), "");
}

TEST(KORHUBTrace, GetIndentCountsTheScopesAlreadyOpenTwice) {
  KORHUBTrace outer("Outer", 53, 0);
  EXPECT_EQ(outer.GetIndent(), 0);
  {
    KORHUBTrace inner("Inner", 53, 0);
    EXPECT_EQ(inner.GetIndent(), 2);
    KORHUBTrace innermost("Innermost", 53, 0);
    EXPECT_EQ(innermost.GetIndent(), 4);
  }
  KORHUBTrace sibling("Sibling", 53, 0);
  EXPECT_EQ(sibling.GetIndent(), 2);
}

TEST(KORHUBTrace, NestedScopeLinesAreIndentedThreeThenFiveBlanks) {
  TraceCapture capture;
  {
    KORHUBTrace outer("Outer::Run", 53, 0);
    WriteLine(outer, "before");
    {
      KORHUBTrace inner("Inner::Run", 53, 0);
      WriteLine(inner, "inside");
    }
    WriteLine(outer, "after");
  }
  EXPECT_EQ(capture.Text(),
            "   Outer::Run before\n"
            "     Inner::Run inside\n"
            "   Outer::Run after\n");
}

TEST(KORHUBTrace, OpeningAScopeWritesNothing) {
  TraceCapture capture;
  { KORHUBTrace scope("Unit::Operation", 53, 0); }
  EXPECT_EQ(capture.Text(), "");
}

TEST(KORHUBTrace, LevelIsActiveFollowsSetActiveWhateverTheLevel) {
  KORHUBTrace::SetActive(1);
  EXPECT_EQ(KORHUBTrace::LevelIsActive(53), 1);
  EXPECT_EQ(KORHUBTrace::LevelIsActive(0), 1);
  KORHUBTrace::SetActive(0);
  EXPECT_EQ(KORHUBTrace::LevelIsActive(53), 0);
}

TEST(KORHUBTrace, TracingIsOffWithoutTheEnvironmentVariable) {
  unsetenv("KORHUB_TRACE");
  KORHUBTrace scope("Unit::Operation", 53, 0);
  EXPECT_EQ(KORHUBTrace::LevelIsActive(53), 0);
}

TEST(KORHUBTrace, EnvironmentVariableTurnsTracingOnAtFirstScope) {
  setenv("KORHUB_TRACE", "1", 1);
  KORHUBTrace scope("Unit::Operation", 53, 0);
  EXPECT_EQ(KORHUBTrace::LevelIsActive(53), 1);
}

TEST(KORHUBTrace, EnvironmentVariableZeroLeavesTracingOff) {
  setenv("KORHUB_TRACE", "0", 1);
  KORHUBTrace scope("Unit::Operation", 53, 0);
  EXPECT_EQ(KORHUBTrace::LevelIsActive(53), 0);
}

TEST(KORHUBTrace, EmptyEnvironmentVariableLeavesTracingOff) {
  setenv("KORHUB_TRACE", "", 1);
  KORHUBTrace scope("Unit::Operation", 53, 0);
  EXPECT_EQ(KORHUBTrace::LevelIsActive(53), 0);
}

TEST(KORHUBTrace, SetActiveOverridesTheEnvironment) {
  setenv("KORHUB_TRACE", "1", 1);
  KORHUBTrace::SetActive(0);
  KORHUBTrace scope("Unit::Operation", 53, 0);
  EXPECT_EQ(KORHUBTrace::LevelIsActive(53), 0);
}

TEST(KORHUBTrace, LinesAreAppendedToTheTraceFile) {
  char directory[] = "/tmp/korhubtraceXXXXXX";
  ASSERT_NE(mkdtemp(directory), nullptr);
  const std::string path = std::string(directory) + "/trace.log";
  { std::ofstream(path) << "earlier line\n"; }
  setenv("KORHUB_TRACE", "1", 1);
  setenv("KORHUB_TRACE_FILE", path.c_str(), 1);
  {
    KORHUBTrace scope("Unit::Operation", 53, 0);
    WriteLine(scope, "x = 1");
  }
  EXPECT_EQ(ReadFile(path), "earlier line\n   Unit::Operation x = 1\n");
  (void)std::remove(path.c_str());  // clean-up only
  (void)std::remove(directory);
}

TEST(KORHUBTrace, UnopenableTraceFileLeavesLinesOnStandardError) {
  setenv("KORHUB_TRACE", "1", 1);
  setenv("KORHUB_TRACE_FILE", "/nonexistent-directory/trace.log", 1);
  testing::internal::CaptureStderr();
  {
    KORHUBTrace scope("Unit::Operation", 53, 0);
    WriteLine(scope, "x = 1");
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "   Unit::Operation x = 1\n");
}

TEST(KORHUBTrace, SetOutputNullRestoresStandardError) {
  std::ostringstream elsewhere;
  KORHUBTrace::SetActive(1);
  KORHUBTrace::SetOutput(&elsewhere);
  KORHUBTrace::SetOutput(nullptr);
  testing::internal::CaptureStderr();
  {
    KORHUBTrace scope("Unit::Operation", 53, 0);
    WriteLine(scope, "x = 1");
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "   Unit::Operation x = 1\n");
  EXPECT_EQ(elsewhere.str(), "");
  KORHUBTrace::SetActive(0);
}

TEST(KORHUBTrace, OutEmptiesTheLineBuffer) {
  TraceCapture capture;
  KORHUBTrace scope("Unit::Operation", 53, 0);
  WriteLine(scope, "first");
  WriteLine(scope, "second");
  EXPECT_EQ(capture.Text(), "   Unit::Operation first\n   Unit::Operation second\n");
}

TEST(KORHUBTrace, ScopesAllocateNothingWhileTracingIsOff) {
  KORHUBTrace::SetActive(0);
  AllocationCounter counter;
  for (int i = 0; i < 100; ++i) {
    KORHUBTrace scope("Unit::Operation", 53, 0);
    WriteLine(scope, "never written");
  }
  EXPECT_EQ(counter.Count(), 0);
}

TEST(KORHUBTrace, LinesOfSeveralThreadsNeverInterleave) {
  TraceCapture capture;
  constexpr int kThreads = 4;
  constexpr int kLines = 500;
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([t] {
      const std::string text =
          "thread " + std::to_string(t) + " " + std::string(200, static_cast<char>('a' + t));
      for (int i = 0; i < kLines; ++i) {
        KORHUBTrace scope("Unit::Operation", 53, 0);
        WriteLine(scope, text.c_str());
      }
    });
  }
  for (auto& thread : threads) thread.join();
  const auto lines = capture.Lines();
  ASSERT_EQ(lines.size(), static_cast<std::size_t>(kThreads * kLines));
  for (const auto& line : lines) {
    const auto at = line.find("thread ");
    ASSERT_NE(at, std::string::npos) << line;
    const int t = line[at + 7] - '0';
    EXPECT_EQ(line, "   Unit::Operation thread " + std::to_string(t) + " " +
                        std::string(200, static_cast<char>('a' + t)));
  }
}

TEST(KORHUBTrace, EachThreadCountsItsOwnScopes) {
  KORHUBTrace outer("Outer", 53, 0);
  int indentInThread = -1;
  std::thread([&indentInThread] {
    KORHUBTrace scope("Thread", 53, 0);
    indentInThread = scope.GetIndent();
  }).join();
  EXPECT_EQ(indentInThread, 0);
}

TEST(KORHUBTrace, LeafScopeGivesBackItsResult) {
  KORHUBTrace::SetActive(0);
  const int value = 7;
  EXPECT_EQ(&KORHUBTrace::InLeafScope("Unit::Get", 53, 0, value, WriteValue), &value);
}

TEST(KORHUBTrace, LeafScopeWritesItsLinesNestedInTheOpenScopes) {
  TraceCapture capture;
  const int value = 7;
  {
    KORHUBTrace outer("Outer::Run", 53, 0);
    EXPECT_EQ(&KORHUBTrace::InLeafScope("Unit::Get", 53, 0, value, WriteValue), &value);
  }
  EXPECT_EQ(capture.Text(), "     Unit::Get value = 7\n");
}

TEST(KORHUBTrace, LeafScopeClosesBeforeTheNextScopeOpens) {
  KORHUBTrace::SetActive(1);
  const int value = 7;
  (void)KORHUBTrace::InLeafScope("Unit::Get", 53, 0, value, [](const KORHUBTrace&, const int&) {});
  KORHUBTrace next("Unit::Next", 53, 0);
  EXPECT_EQ(next.GetIndent(), 0);
}

TEST(KORHUBTrace, LeafScopeWritesNothingWhileTracingIsOff) {
  KORHUBTrace::SetActive(0);
  int calls = 0;
  (void)KORHUBTrace::InLeafScope(
      "Unit::Get", 53, 0, calls, [](const KORHUBTrace&, const int&, int* ioCalls) { ++*ioCalls; },
      &calls);
  EXPECT_EQ(calls, 0);
}

TEST(KORHUBTrace, LeafScopeWhileTracingIsOffLeavesTheOpenScopesCount) {
  KORHUBTrace::SetActive(0);
  KORHUBTrace outer("Outer::Run", 53, 0);
  const int value = 7;
  (void)KORHUBTrace::InLeafScope("Unit::Get", 53, 0, value, WriteValue);
  KORHUBTrace inner("Inner::Run", 53, 0);
  EXPECT_EQ(inner.GetIndent(), 2);
}

TEST(KORHUBTrace, LeafScopeDecidesTracingFromTheEnvironmentWhenItIsTheFirstScope) {
  setenv("KORHUB_TRACE", "1", 1);
  std::ostringstream written;
  KORHUBTrace::SetOutput(&written);
  const int value = 7;
  (void)KORHUBTrace::InLeafScope("Unit::Get", 53, 0, value, WriteValue);
  KORHUBTrace::SetOutput(nullptr);
  EXPECT_EQ(written.str(), "   Unit::Get value = 7\n");
}

TEST(KORHUBTrace, LeafScopeAsFirstScopeLeavesTracingOffWithoutTheEnvironmentVariable) {
  unsetenv("KORHUB_TRACE");
  const int value = 7;
  (void)KORHUBTrace::InLeafScope("Unit::Get", 53, 0, value, WriteValue);
  // Decided at that first scope: a later change of the variable is not read.
  setenv("KORHUB_TRACE", "1", 1);
  EXPECT_EQ(KORHUBTrace::LevelIsActive(53), 0);
}

TEST(KORHUBTrace, LeafScopesAllocateNothingWhileTracingIsOff) {
  KORHUBTrace::SetActive(0);
  const int value = 7;
  AllocationCounter counter;
  for (int i = 0; i < 100; ++i)
    (void)KORHUBTrace::InLeafScope("Unit::Get", 53, 0, value, WriteValue);
  EXPECT_EQ(counter.Count(), 0);
}
