// Test helper: faults of the system that a test brings about on purpose.
//
//   OpenFailure failure(path, EMFILE);  // opening that file fails so
//   ReadFailure failure(path, EIO);     // reading it fails so
//   FileGrowth growth(path, 1 << 20);   // each read of it makes it grow
#ifndef FaultInjection_h
#define FaultInjection_h

#include <cstddef>
#include <string>

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

// While it lives, every open(2) of the path iPath by anyone in the process
// fails with iError (EMFILE: as if every descriptor were in use).
class OpenFailure {
 public:
  OpenFailure(const std::string& iPath, int iError);
  ~OpenFailure();
  OpenFailure(const OpenFailure&) = delete;
  OpenFailure& operator=(const OpenFailure&) = delete;
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
