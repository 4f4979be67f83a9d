// Export macro of the VX0SESS0 shared library.
//
// The library is built with hidden visibility; its classes, functions and
// constants for clients are marked VX0SESS0_API.
#ifndef VX0SESS0Export_h
#define VX0SESS0Export_h

#define VX0SESS0_API __attribute__((visibility("default")))

#endif
