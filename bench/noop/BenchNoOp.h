// An exported function that does nothing, in a shared library of its own
// (benchmarks only): the cost of a plain call into a shared library, through
// the procedure linkage table, as a baseline for the library's getters.
#ifndef BenchNoOp_h
#define BenchNoOp_h

__attribute__((visibility("default"))) int BenchNoOp(const void* iObject);

#endif
