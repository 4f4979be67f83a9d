// Precondition checks of the platform (internal to KORPlatform).
//
// A violated precondition is a programming error of the caller: the process is
// stopped through the C library's __assert, which reports the condition text,
// the platform source file and the line. The checks are always active.
#ifndef KORPlatformCheck_h
#define KORPlatformCheck_h

#include "KORAssert.h"

#define KOR_PLATFORM_CHECK(condition) \
  ((condition) ? static_cast<void>(0) : __assert(#condition, __FILE__, __LINE__))

#endif
