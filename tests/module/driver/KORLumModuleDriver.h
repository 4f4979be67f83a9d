// The test driver of the module load tests: a small shared library that
// links VX0SESS0 and answers questions about it as plain text, so that a
// program that does not link VX0SESS0 can load it with dlopen, use it and
// unload it again.
//
// Every function has the same shape: it writes its answer, NUL-terminated
// and cut to iSize - 1 bytes, into oText, and returns the answer's full
// length in bytes.
//
//   auto answer = reinterpret_cast<KORLumDriverQuestion>(
//       dlsym(driver, "KORLumDriverGraphFilesPath"));
//   char text[256];
//   answer(text, sizeof text);  // "/data/graphs/"
#ifndef KORLumModuleDriver_h
#define KORLumModuleDriver_h

#include <cstddef>

// The type of every question of the driver.
using KORLumDriverQuestion = std::size_t (*)(char* oText, std::size_t iSize);

#define KORLUM_DRIVER_API extern "C" __attribute__((visibility("default")))

// KORLumSessionFileUtilities::GetBRIXFilesPath().
KORLUM_DRIVER_API std::size_t KORLumDriverBRIXFilesPath(char* oText, std::size_t iSize);
// KORLumSessionFileUtilities::GetGraphFilesPath().
KORLUM_DRIVER_API std::size_t KORLumDriverGraphFilesPath(char* oText, std::size_t iSize);
// The viewers of the catalogue, each in brackets, separated by one blank.
KORLUM_DRIVER_API std::size_t KORLumDriverViewers(char* oText, std::size_t iSize);
// The translated viewer labels, each in brackets, separated by one blank.
KORLUM_DRIVER_API std::size_t KORLumDriverViewerLabels(char* oText, std::size_t iSize);
// The display line of the Graph session file /data/model.hub opened with the
// viewer "Viewer3D", load mode Static, instance mode Selected and the
// options Report and CSB.
KORLUM_DRIVER_API std::size_t KORLumDriverDisplayLine(char* oText, std::size_t iSize);

#endif
