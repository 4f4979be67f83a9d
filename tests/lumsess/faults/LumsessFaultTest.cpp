// lumsess under faults of its surroundings: output that cannot be written,
// standard error closed, a directory that cannot be read. Each case runs the
// real tool in a child process set up for the fault.
//
// LUMSESS_UNDER_TEST, when set, names another lumsess to run.
#include <fcntl.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "TemporaryDirectory.h"

namespace {

// The status a child returns when the fault cannot be set up here.
constexpr int kCannotSetUp = 77;

const char* Program() {
  const char* other = std::getenv("LUMSESS_UNDER_TEST");
  return other != nullptr && *other != '\0' ? other : LUMSESS_PROGRAM;
}

std::string ContentOf(const std::string& iPath) {
  std::ifstream file(iPath, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

// Runs lumsess with iArguments in a child whose standard output is iOutput
// (a descriptor, or -1 for /dev/null) and whose standard error goes to the
// file iErrors; iSetUp runs in the child just before the tool starts.
// Returns the exit status (or 128 + the signal).
int RunLumsess(
    const std::vector<std::string>& iArguments, int iOutput, const std::string& iErrors,
    const std::function<void()>& iSetUp = [] {}) {
  const pid_t child = ::fork();
  if (child == 0) {
    const int output = iOutput >= 0 ? iOutput : ::open("/dev/null", O_WRONLY);
    const int errors = ::open(iErrors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (output < 0 || errors < 0) ::_exit(kCannotSetUp);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(errors, STDERR_FILENO);
    if (output != STDOUT_FILENO) ::close(output);
    ::close(errors);
    iSetUp();
    std::vector<char*> arguments{const_cast<char*>(Program())};
    for (const std::string& argument : iArguments) {
      arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    ::execv(arguments[0], arguments.data());
    ::_exit(126);
  }
  int status = 0;
  if (child < 0 || ::waitpid(child, &status, 0) != child) return -1;
  if (WIFSIGNALED(status)) return 128 + WTERMSIG(status);
  return WEXITSTATUS(status);
}

class LumsessFault : public testing::Test {
 protected:
  void SetUp() override { errors = directory.PathOf("stderr.txt"); }

  TemporaryDirectory directory;
  std::string errors;
};

}  // namespace

TEST_F(LumsessFault, OutputToAFullDeviceIsAnError) {
  // Every command, through the one check at the end of the tool.
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{},
                                             {"paths"},
                                             {"viewers", "--json"},
                                             {"list"},
                                             {"show", "--file", "/d/a.hub"},
                                             {"--version"},
                                             {"--help"}}) {
    SCOPED_TRACE("lumsess " + testing::PrintToString(arguments));
    const int full = ::open("/dev/full", O_WRONLY);
    ASSERT_GE(full, 0);
    const int status = RunLumsess(arguments, full, errors);
    ::close(full);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(ContentOf(errors), "lumsess: cannot write the output: No space left on device.\n");
  }
}

TEST_F(LumsessFault, OutputToAClosedPipeWithSigpipeIgnoredIsAnError) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  ::close(ends[0]);  // nobody reads
  const int status = RunLumsess({"paths"}, ends[1], errors, [] { std::signal(SIGPIPE, SIG_IGN); });
  ::close(ends[1]);
  EXPECT_EQ(status, 1);
  EXPECT_EQ(ContentOf(errors), "lumsess: cannot write the output: Broken pipe.\n");
}

TEST_F(LumsessFault, OutputThatArrivesIsSuccess) {
  EXPECT_EQ(RunLumsess({"paths"}, -1, errors), 0);
  EXPECT_EQ(ContentOf(errors), "");
}

TEST_F(LumsessFault, ErrorSentencesNeverGoIntoTheTraceFileWhenStandardErrorIsClosed) {
  // A configuration whose graph files directory does not exist: list asks
  // the library (which opens the trace file), then reports an error.
  const std::string missing = directory.PathOf("no-such-directory");
  directory.Write("config/dcls/KORBRIX.dcls", "KORBRIX.HUB.GRAPHSESSION = " + missing + "\n");
  directory.Write("config/dcls/MERLO.dcls", "MERLO.BRIXFILES = " + missing + "\n");
  const std::string trace = directory.PathOf("trace.log");
  const int status =
      RunLumsess({"--config", directory.PathOf("config"), "list"}, -1, errors, [&trace] {
        ::setenv("KORHUB_TRACE", "1", 1);
        ::setenv("KORHUB_TRACE_FILE", trace.c_str(), 1);
        ::close(STDERR_FILENO);
      });
  EXPECT_EQ(status, 1);
  const std::string traced = ContentOf(trace);
  EXPECT_NE(traced.find("KORLumSessionFileUtilities::"), std::string::npos) << traced;
  EXPECT_EQ(traced.find("lumsess:"), std::string::npos) << traced;
}

TEST_F(LumsessFault, ListOfADirectoryThatCannotBeReadIsAnError) {
  const std::string sessions = directory.MakeDirectory("sessions");
  directory.Write("sessions/model.hub", "");
  ASSERT_EQ(::chmod(sessions.c_str(), 0), 0);
  const int status = RunLumsess({"list", sessions}, -1, errors, [] {
    if (::geteuid() != 0) return;
    // The superuser reads any directory: without these capabilities it
    // cannot, as any user could not.
    if (::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE) != 0 ||
        ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH) != 0) {
      ::_exit(kCannotSetUp);
    }
  });
  ::chmod(sessions.c_str(), 0700);
  if (status == kCannotSetUp) GTEST_SKIP() << "cannot make a directory unreadable here";
  EXPECT_EQ(status, 1);
  EXPECT_EQ(ContentOf(errors), "lumsess: the session file directory \"" + sessions +
                                   "\" cannot be read (Permission denied).\n");
}
