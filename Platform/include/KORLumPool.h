// KORLumPool: the process-wide pool of declaration resources.
//
// A declaration resource `Name` is the file <dir>/Name.dcls (see
// KORResourceFile.h for the format), taken from the first directory of
// KOR_DCLS_PATH (separated by ':', empty entries skipped) that has a readable
// one; when the variable is unset or names no directory, the installed
// share/VX0SESS0/dcls is searched. A file that exists but cannot be read
// counts as absent: the next directory is tried. The variable is read at each
// search, that is at each LoadPool of a resource that is not loaded yet.
//
//   if (KORLumPool::LoadPool("KORBRIX") == 0) {
//     int status = 0;
//     KORUnicodeString where =
//         KORLumPool::GetStringDec("KORBRIX.METHOD_LIST(1).WHERE", status);
//     // status 0: declared (possibly empty); non-zero: not declared, where is empty.
//   }
//
// All operations are static and thread-safe; none raises.
#ifndef KORLumPool_h
#define KORLumPool_h

#include <vector>

#include "KORListValKORUnicodeString.h"
#include "KORPlatformExport.h"
#include "KORResourceFile.h"
#include "KORUnicodeString.h"

class KORPLATFORM_API KORLumPool {
 public:
  KORLumPool() = delete;

  // Loads the resource iResource into the pool and returns 0; returns
  // non-zero when no directory has a readable file for it (nothing is kept,
  // so a later call searches again). Loading a resource that is already
  // loaded returns 0 and reads nothing.
  static int LoadPool(const KORUnicodeString& iResource);

  // The value declared under iKey in the loaded resources. When several
  // loaded resources declare the key, the one loaded first wins (within one
  // file, the last declaration wins). oStatus is 0 when the key is declared,
  // also when it is declared empty; it is non-zero, and the result empty,
  // when no loaded resource declares it.
  static KORUnicodeString GetStringDec(const KORUnicodeString& iKey, int& oStatus);

  // Unloads every resource and forgets every problem recorded.
  static void FlushCache();

  // --- Diagnostics (for the tools that check a configuration) ---------------

  // The directories a LoadPool would search now, in order (a copy).
  static KORListValKORUnicodeString GetSearchPath();
  // The names of the loaded resources, in load order (a copy).
  static KORListValKORUnicodeString GetLoadedResources();
  // The path of the file loaded for iResource, or "" when it is not loaded.
  static KORUnicodeString GetResourceFile(const KORUnicodeString& iResource);
  // The parsed file loaded for iResource (an absent one when it is not
  // loaded): its keys, lines, problems and encoding.
  static KORResourceFile GetResource(const KORUnicodeString& iResource);
  // The files of iResource that the last search found but could not read,
  // each with its problem, in search order.
  static std::vector<KORResourceFile> GetSkippedFiles(const KORUnicodeString& iResource);
  // Where GetStringDec finds iKey: sets oFile to the file and oLine to the
  // line of the declaration it gives, and returns 0; returns non-zero, with
  // oFile empty and oLine 0, when no loaded resource declares it.
  static int GetDeclaration(const KORUnicodeString& iKey, KORUnicodeString& oFile, int& oLine);
  // The problems met by the last search of each resource, in the order the
  // resources were first searched: "file: reason" for each unreadable file
  // skipped, then "file:line: reason" for each malformed line or duplicate
  // key of the file loaded (a copy).
  static KORListValKORUnicodeString GetProblems();
};

#endif
