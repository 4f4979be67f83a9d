// KORGetEnv: the platform's environment lookup.
//
//   const char* home = KORGetEnv("HOME");   // null when HOME is unset
#ifndef KORGetEnv_h
#define KORGetEnv_h

#include "KORPlatformExport.h"

// The value of the environment variable iName, or null when it is unset (a
// variable set to the empty string gives ""). A null iName gives null. The
// text belongs to the environment: it stays valid until the variable is
// changed or unset.
KORPLATFORM_API const char* KORGetEnv(const char* iName);

#endif
