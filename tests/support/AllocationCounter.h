// Test helper: counts the heap allocations made by the calling thread while
// an AllocationCounter lives (the test executables replace the global
// operator new for this).
#ifndef AllocationCounter_h
#define AllocationCounter_h

class AllocationCounter {
 public:
  AllocationCounter();
  ~AllocationCounter();
  AllocationCounter(const AllocationCounter&) = delete;
  AllocationCounter& operator=(const AllocationCounter&) = delete;

  // Allocations made by this thread since the counter was created.
  [[nodiscard]] long Count() const;

 private:
  long _start;
};

#endif
