// Test helper: marks a test file whose test cases each need a process of
// their own, because what they check is the library's first use (its caches
// are filled once per process and cannot be reset).
//
//   VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();  // at namespace scope, once per file
//
// CTest runs every test case in a process of its own, so this changes
// nothing there. A test program started for more than one test case when one
// of them is of such a file (no --gtest_filter, a filter matching several,
// or --gtest_repeat) writes one sentence saying so on standard error and
// stops with status 2 before running any: its results would be the order's,
// not the code's. Listing the test cases (--gtest_list_tests) is not
// affected.
//
// With the environment variable VX0SESS0_FRESH_PROCESS_TEST_LIST naming a
// file, a test program writes there the names of its marked test cases
// (Suite.Name, one per line) before it runs anything: tools/ci/memcheck.sh
// runs those one per process and the others of the program together. (A
// program without a marked file writes nothing.)
#ifndef FreshProcess_h
#define FreshProcess_h

// Records iFile (the marked file's __FILE__) and, the first time, installs
// the GoogleTest listener that checks the test cases to run. Returns true.
bool MarkTestCasesNeedingAFreshProcess(const char* iFile);

#define VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS()                 \
  [[maybe_unused]] static const bool kTestCasesNeedAFreshProcess = \
      MarkTestCasesNeedingAFreshProcess(__FILE__)

#endif
