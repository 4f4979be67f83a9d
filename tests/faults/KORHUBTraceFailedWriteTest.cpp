// A failed or short write of a trace line never stops tracing: the line is
// written whole or not at all, and later lines are written once the
// destination accepts them again.
#include <dirent.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "FreshProcess.h"
#include "KORHUBTrace.h"
#include "TemporaryDirectory.h"

// The trace's destination and state are decided on first use, once per
// process: each test case needs a process of its own.
VX0SESS0_TEST_CASES_NEED_A_FRESH_PROCESS();

namespace {

void Trace(const std::string& iText) {
  KORHUBTrace::GetLigne() << iText << std::endl;
  KORHUBTrace::Out();
}

std::string ContentOf(const std::string& iPath) {
  std::ifstream file(iPath, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

// Limits the size of the files the process writes to iBytes (writes past it
// fail with EFBIG instead of raising SIGXFSZ).
void LimitFileSize(rlim_t iBytes) {
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  limit.rlim_cur = iBytes;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
}

class TraceFile : public testing::Test {
 protected:
  void SetUp() override {
    std::signal(SIGXFSZ, SIG_IGN);
    path = directory.PathOf("trace.log");
    setenv("KORHUB_TRACE_FILE", path.c_str(), 1);
    KORHUBTrace::SetOutput(nullptr);
    KORHUBTrace::SetActive(1);
  }
  void TearDown() override {
    KORHUBTrace::SetActive(0);
    LimitFileSize(RLIM_INFINITY);
  }

  TemporaryDirectory directory;
  std::string path;
};

}  // namespace

TEST_F(TraceFile, LineThatDoesNotFitIsNotWrittenAtAll) {
  Trace("   first line");
  LimitFileSize(100);  // room for part of the next line only
  Trace("   " + std::string(200, 'x'));
  EXPECT_EQ(ContentOf(path), "   first line\n");
}

TEST_F(TraceFile, LinesAreWrittenAgainOnceThereIsRoom) {
  Trace("   first line");
  LimitFileSize(100);
  Trace("   " + std::string(200, 'x'));
  Trace("   fits");
  LimitFileSize(RLIM_INFINITY);
  Trace("   after the room came back");
  EXPECT_EQ(ContentOf(path), "   first line\n   fits\n   after the room came back\n");
}

TEST_F(TraceFile, FileIsOpenedCloseOnExec) {
  Trace("   a line");
  bool found = false;
  DIR* descriptors = ::opendir("/proc/self/fd");
  ASSERT_NE(descriptors, nullptr);
  while (const dirent* entry = ::readdir(descriptors)) {
    const int descriptor = std::atoi(entry->d_name);
    char target[4096] = {};
    const std::string link = std::string("/proc/self/fd/") + entry->d_name;
    const ssize_t length = ::readlink(link.c_str(), target, sizeof target - 1);
    if (length <= 0 || std::string(target, static_cast<std::size_t>(length)) != path) continue;
    found = true;
    EXPECT_NE(::fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0);
  }
  ::closedir(descriptors);
  EXPECT_TRUE(found);
}

// Standard error as a pipe that takes part of a line and then refuses more.
TEST(TraceStandardError, LineAfterAPartlyWrittenOneStartsOnALineOfItsOwn) {
  unsetenv("KORHUB_TRACE_FILE");
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const int capacity = ::fcntl(ends[1], F_GETPIPE_SZ);
  ASSERT_GT(capacity, 0);
  ASSERT_EQ(::fcntl(ends[1], F_SETFL, O_NONBLOCK), 0);
  ASSERT_EQ(::fcntl(ends[0], F_SETFL, O_NONBLOCK), 0);
  const int savedError = ::dup(STDERR_FILENO);
  ASSERT_EQ(::dup2(ends[1], STDERR_FILENO), STDERR_FILENO);
  // Fill the pipe but for one page.
  const std::string filler(static_cast<std::size_t>(capacity) - 4096, '.');
  ASSERT_EQ(::write(ends[1], filler.data(), filler.size()), static_cast<ssize_t>(filler.size()));
  KORHUBTrace::SetOutput(nullptr);
  KORHUBTrace::SetActive(1);
  // Longer than what a pipe writes at once: one page goes, the rest cannot.
  Trace("   " + std::string(5000, 'x'));
  // Empty the pipe, then trace again.
  std::string received(static_cast<std::size_t>(capacity) * 2, '\0');
  const ssize_t first = ::read(ends[0], received.data(), received.size());
  Trace("   next");
  KORHUBTrace::SetActive(0);
  const ssize_t second = ::read(ends[0], received.data(), received.size());
  ::dup2(savedError, STDERR_FILENO);
  ::close(savedError);
  ::close(ends[0]);
  ::close(ends[1]);
  ASSERT_EQ(first, capacity);
  ASSERT_GT(second, 0);
  EXPECT_EQ(received.substr(0, static_cast<std::size_t>(second)), "\n   next\n");
}
