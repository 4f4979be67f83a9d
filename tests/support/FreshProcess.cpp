#include "FreshProcess.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <set>
#include <string>

namespace {

// The marked files, by their __FILE__ (which is what a test case's file()
// gives too).
std::set<std::string>& MarkedFiles() {
  static std::set<std::string> files;
  return files;
}

// The last component of a path, for the message.
std::string BaseName(const std::string& iPath) {
  const std::string::size_type slash = iPath.find_last_of('/');
  return slash == std::string::npos ? iPath : iPath.substr(slash + 1);
}

// Stops the program before its first test case when it is to run more than
// one test case and one of them is of a marked file.
class FreshProcessCheck : public ::testing::EmptyTestEventListener {
 public:
  void OnTestProgramStart(const ::testing::UnitTest& iUnitTest) override {
    // For the tools that run the other test cases of a program together
    // (tools/ci/memcheck.sh): the marked test cases, whether or not they
    // are to run, one per line, in the file the variable names.
    if (const char* list = std::getenv("VX0SESS0_FRESH_PROCESS_TEST_LIST")) {
      std::ofstream names(list);
      ForEachMarked(iUnitTest, [&names](const ::testing::TestInfo& iTest) {
        names << iTest.test_suite_name() << '.' << iTest.name() << '\n';
      });
      names.flush();
      if (!names) {
        std::cerr << "Cannot write the list of test cases needing a process of their own to "
                  << list << "." << std::endl;
        std::exit(2);
      }
    }
    const int runs = iUnitTest.test_to_run_count();
    const int repeat = GTEST_FLAG_GET(repeat);
    if (runs == 0 || (runs == 1 && repeat == 1)) return;
    const ::testing::TestInfo* marked = FirstMarkedToRun(iUnitTest);
    if (marked == nullptr) return;
    const std::string name = std::string(marked->test_suite_name()) + "." + marked->name();
    std::cout.flush();
    std::cerr << "Not run: the test cases of " << BaseName(marked->file())
              << " check what happens on first use, once per process, so each needs a process of"
                 " its own, and "
              << (runs > 1 ? "this run selected " + std::to_string(runs) + " test cases"
                           : "this run repeats its test case")
              << "; run one at a time, e.g. ctest -R '^" << marked->test_suite_name() << "\\."
              << marked->name() << "$' or --gtest_filter=" << name << "." << std::endl;
    std::exit(2);
  }

 private:
  // Calls iVisit with each test case of a marked file, in order.
  template <typename Visit>
  static void ForEachMarked(const ::testing::UnitTest& iUnitTest, const Visit& iVisit) {
    for (int s = 0; s < iUnitTest.total_test_suite_count(); ++s) {
      const ::testing::TestSuite* suite = iUnitTest.GetTestSuite(s);
      for (int t = 0; t < suite->total_test_count(); ++t) {
        const ::testing::TestInfo* test = suite->GetTestInfo(t);
        if (MarkedFiles().count(test->file()) > 0) iVisit(*test);
      }
    }
  }

  static const ::testing::TestInfo* FirstMarkedToRun(const ::testing::UnitTest& iUnitTest) {
    const ::testing::TestInfo* first = nullptr;
    ForEachMarked(iUnitTest, [&first](const ::testing::TestInfo& iTest) {
      if (first == nullptr && iTest.should_run()) first = &iTest;
    });
    return first;
  }
};

}  // namespace

bool MarkTestCasesNeedingAFreshProcess(const char* iFile) {
  if (MarkedFiles().empty()) {
    // The listener list owns the listener.
    ::testing::UnitTest::GetInstance()->listeners().Append(new FreshProcessCheck);
  }
  MarkedFiles().insert(iFile);
  return true;
}
