// Export macro of the KORPlatform shared library.
//
// The library is built with hidden visibility; everything that programs and
// the session-file library use is marked KORPLATFORM_API.
#ifndef KORPlatformExport_h
#define KORPlatformExport_h

#define KORPLATFORM_API __attribute__((visibility("default")))

#endif
