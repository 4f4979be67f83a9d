// Tracing decided by the first question asked, before any scope is opened.
// Each test runs as its own process: the decision is taken once per process.
#include <gtest/gtest.h>

#include <cstdlib>

#include "FreshProcess.h"
#include "KORHUBTrace.h"

// Checks what happens on first use: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

TEST(KORHUBTraceFirstQuery, LevelIsActiveReadsTheEnvironmentWhenAskedBeforeAnyScope) {
  setenv("KORHUB_TRACE", "1", 1);
  EXPECT_EQ(KORHUBTrace::LevelIsActive(53), 1);
  // Decided once: a later change of the variable is not read again.
  setenv("KORHUB_TRACE", "0", 1);
  EXPECT_EQ(KORHUBTrace::LevelIsActive(53), 1);
}

TEST(KORHUBTraceFirstQuery, LevelIsActiveIsOffWhenTheVariableIsUnsetAndNoScopeWasOpened) {
  unsetenv("KORHUB_TRACE");
  EXPECT_EQ(KORHUBTrace::LevelIsActive(53), 0);
}
