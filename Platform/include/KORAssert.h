// The C library's assertion routine, through which the platform and the
// session-file library report programming errors.
//
// __assert(condition, file, line) reports "file:line: ... Assertion
// `condition' failed." on standard error and aborts; it never returns. The
// declaration is given here because <assert.h> leaves it out when NDEBUG is
// defined, while our checks stay active in every build.
#ifndef KORAssert_h
#define KORAssert_h

extern "C" void __assert(const char*, const char*, int) noexcept __attribute__((__noreturn__));

#endif
