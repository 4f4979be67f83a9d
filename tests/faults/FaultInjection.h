// Test helper: faults of the system that a test brings about on purpose.
//
//   DescriptorExhaustion exhaustion;   // every file descriptor is now in use
//   ... a lookup fails with "Too many open files" ...
//   exhaustion.Release();              // descriptors are free again
//
//   FileGrowth growth(path, 1 << 20);  // each read of the file makes it grow
#ifndef FaultInjection_h
#define FaultInjection_h

#include <cstddef>
#include <string>
#include <vector>

// Takes every file descriptor the process may still open (lowering its soft
// limit first, so that this stays cheap), until Release or destruction.
class DescriptorExhaustion {
 public:
  DescriptorExhaustion();
  ~DescriptorExhaustion();
  DescriptorExhaustion(const DescriptorExhaustion&) = delete;
  DescriptorExhaustion& operator=(const DescriptorExhaustion&) = delete;

  // Closes the descriptors taken and restores the limit.
  void Release();

 private:
  std::vector<int> _taken;
  unsigned long long _softLimit = 0;
  bool _held = false;
};

// While it lives, every read(2) of the file iPath by anyone in the process
// is followed by appending as many bytes of new declarations to that file,
// until iMaxGrowth bytes were added: a file written on while it is read.
class FileGrowth {
 public:
  FileGrowth(const std::string& iPath, std::size_t iMaxGrowth);
  ~FileGrowth();
  FileGrowth(const FileGrowth&) = delete;
  FileGrowth& operator=(const FileGrowth&) = delete;

  // The bytes appended so far.
  [[nodiscard]] std::size_t Grown() const;
};

// While it lives, every read(2) of the file iPath by anyone in the process
// fails with iError.
class ReadFailure {
 public:
  ReadFailure(const std::string& iPath, int iError);
  ~ReadFailure();
  ReadFailure(const ReadFailure&) = delete;
  ReadFailure& operator=(const ReadFailure&) = delete;
};

#endif
