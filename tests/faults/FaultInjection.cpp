#include "FaultInjection.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <string>

#include <gtest/gtest.h>

namespace {

// The file that grows, by device and inode; a device of 0 when none.
std::atomic<dev_t> gGrowingDevice{0};
std::atomic<ino_t> gGrowingInode{0};
std::string gGrowingPath;
std::atomic<std::size_t> gGrown{0};
std::size_t gMaxGrowth = 0;
std::atomic<int> gNextKey{0};

// The file whose reads fail, and with which error; a device of 0 when none.
std::atomic<dev_t> gFailingDevice{0};
std::atomic<ino_t> gFailingInode{0};
std::atomic<int> gFailingError{0};

// Whether iDescriptor is the file of iDevice and iInode.
bool IsFile(int iDescriptor, dev_t iDevice, ino_t iInode) {
  struct stat status {};
  return iDevice != 0 && ::fstat(iDescriptor, &status) == 0 && status.st_dev == iDevice &&
         status.st_ino == iInode;
}

// The path whose opening fails, and with which error; empty when none.
std::string gFailingPath;
std::atomic<int> gOpenError{0};

using OpenFunction = int (*)(const char*, int, ...);

OpenFunction RealOpen() {
  static const OpenFunction real = reinterpret_cast<OpenFunction>(::dlsym(RTLD_NEXT, "open"));
  return real;
}

using ReadFunction = ssize_t (*)(int, void*, std::size_t);

ReadFunction RealRead() {
  static const ReadFunction real = reinterpret_cast<ReadFunction>(::dlsym(RTLD_NEXT, "read"));
  return real;
}

// Appends about iBytes bytes of new declarations to the growing file.
void Grow(std::size_t iBytes) {
  std::string text;
  while (text.size() < iBytes) {
    text += "Grown" + std::to_string(gNextKey++) + " = appended while the file was read\n";
  }
  const int descriptor = ::open(gGrowingPath.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
  if (descriptor < 0) return;
  if (::write(descriptor, text.data(), text.size()) > 0) gGrown += text.size();
  ::close(descriptor);
}

}  // namespace

// Interposes the C library's open for the whole test program.
extern "C" __attribute__((visibility("default"))) int open(const char* iPath, int iFlags, ...) {
  mode_t mode = 0;
  if ((iFlags & O_CREAT) != 0 || (iFlags & O_TMPFILE) == O_TMPFILE) {
    va_list arguments;
    va_start(arguments, iFlags);
    mode = static_cast<mode_t>(va_arg(arguments, int));
    va_end(arguments);
  }
  if (gOpenError.load() != 0 && gFailingPath == iPath) {
    errno = gOpenError.load();
    return -1;
  }
  return RealOpen()(iPath, iFlags, mode);
}

// Interposes the C library's read for the whole test program.
extern "C" __attribute__((visibility("default"))) ssize_t read(int iDescriptor, void* oBuffer,
                                                               std::size_t iCount) {
  if (gFailingDevice.load() != 0 &&
      IsFile(iDescriptor, gFailingDevice.load(), gFailingInode.load())) {
    errno = gFailingError.load();
    return -1;
  }
  const ssize_t count = RealRead()(iDescriptor, oBuffer, iCount);
  if (count > 0 && gGrowingDevice.load() != 0 && gGrown.load() < gMaxGrowth) {
    const int saved = errno;
    struct stat status {};
    if (::fstat(iDescriptor, &status) == 0 && status.st_dev == gGrowingDevice.load() &&
        status.st_ino == gGrowingInode.load()) {
      Grow(static_cast<std::size_t>(count));
    }
    errno = saved;
  }
  return count;
}

FileGrowth::FileGrowth(const std::string& iPath, std::size_t iMaxGrowth) {
  struct stat status {};
  if (::stat(iPath.c_str(), &status) != 0) {
    ADD_FAILURE() << "no file " << iPath;
    return;
  }
  gGrowingPath = iPath;
  gMaxGrowth = iMaxGrowth;
  gGrown = 0;
  gGrowingInode = status.st_ino;
  gGrowingDevice = status.st_dev;
}

FileGrowth::~FileGrowth() { gGrowingDevice = 0; }

std::size_t FileGrowth::Grown() const { return gGrown.load(); }

ReadFailure::ReadFailure(const std::string& iPath, int iError) {
  struct stat status {};
  if (::stat(iPath.c_str(), &status) != 0) {
    ADD_FAILURE() << "no file " << iPath;
    return;
  }
  gFailingError = iError;
  gFailingInode = status.st_ino;
  gFailingDevice = status.st_dev;
}

ReadFailure::~ReadFailure() { gFailingDevice = 0; }

OpenFailure::OpenFailure(const std::string& iPath, int iError) {
  gFailingPath = iPath;
  gOpenError = iError;
}

OpenFailure::~OpenFailure() { gOpenError = 0; }
