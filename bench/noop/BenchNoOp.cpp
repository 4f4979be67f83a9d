#include "BenchNoOp.h"

// Returns 0. Not inline and in another shared object, so that every call is a
// real call: the compiler of the caller cannot see this body.
int BenchNoOp(const void* /*iObject*/) { return 0; }
