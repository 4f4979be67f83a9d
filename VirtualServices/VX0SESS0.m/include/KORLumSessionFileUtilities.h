// KORLumSessionFileUtilities: where session files live, which viewers can
// show them, and how their properties read in the user's language.
//
// All operations are static; the class is never instantiated (its
// constructor stops the process through an assertion).
//
// Every answer is computed once, on the first call that needs it, and kept
// while the library is loaded: the start-up session flag, the file paths, the
// viewer catalogue and the "no viewer" text. Declarations, the environment and
// the services interface are therefore consulted once per library lifetime; a
// program that needs fresh answers reloads the library. Single-threaded use
// is assumed: the caches are filled without locks.
//
//   KORLumSessionFileUtilities::GetGraphFilesPath();   // "/data/sessions/"
//   KORLumSessionFileUtilities::GetViewers("Part");    // the viewers of Part
//   KORLumSessionFileUtilities::GetNLSType(KORLumSessionFileType_Graph);  // "Graph" or its
//   translation
//
// No operation reports an error: a resource, catalogue or setting that cannot
// be found gives the documented fallback. Only a raised platform error other
// than a catalogue error passes through GetNLSMessage (and the operations
// that call it) to the caller.
#ifndef KORLumSessionFileUtilities_h
#define KORLumSessionFileUtilities_h

#include "KORListLumViewerBag.h"
#include "KORListLumViewerDef.h"
#include "KORListValKORUnicodeString.h"
#include "KORLumSessionFileType.h"
#include "KORString.h"
#include "KORUnicodeString.h"
#include "VX0SESS0Export.h"

class VX0SESS0_API KORLumSessionFileUtilities {
 public:
  // Forbidden: the class only gathers static services. Calling it stops the
  // process through an assertion.
  KORLumSessionFileUtilities();
  virtual ~KORLumSessionFileUtilities();

  // --- Start-up session and file paths ---------------------------------------

  // 1 when the administrator "LUMAdmin" has set "LUM_STARTUP_SESSION" to
  // exactly "YES" in the services, else 0 (also when no services exist).
  static int IsStartUpSession();
  // Directory of the data-management files, ending in "/": the declaration
  // "MERLO.BRIXFILES", or $PWD when the "MERLO" resource cannot be loaded.
  // Variables in it are expanded, surrounding blanks removed and trailing
  // slashes reduced to one. Empty when declared empty or not declared.
  static KORUnicodeString GetBRIXFilesPath();
  // Directory of Graph session files, ending in "/": the declaration
  // "KORBRIX.HUB.GRAPHSESSION", or GetBRIXFilesPath() when the "KORBRIX"
  // resource cannot be loaded. Normalised as above.
  static KORUnicodeString GetGraphFilesPath();
  // Directory of query files: always GetBRIXFilesPath().
  static KORUnicodeString GetQueryFilesPath();
  // Directory of the history file: always GetBRIXFilesPath().
  static KORUnicodeString GetHistoryFilePath();

  // --- Viewer catalogue --------------------------------------------------------

  // The viewer commands of the "KORBRIX" METHOD_LIST table meant for the
  // structure navigator's tools, in table order (a command kept twice appears
  // twice). The table is read on the first call of any catalogue or name
  // translation operation.
  static KORListValKORUnicodeString GetViewers();
  // The viewers of the object iObject (empty for an unknown object).
  static KORListValKORUnicodeString GetViewers(const KORUnicodeString& iObject);
  // One bag per object, in table order, each with its viewers.
  static KORListValKORLumViewerBag GetViewerBags();
  // One definition (object, viewer) per viewer of each bag, built anew.
  static KORListValKORLumViewerDef GetViewerDefs();

  // --- Translated texts --------------------------------------------------------

  // The message iNLSMessageKey of the catalogue iNLSDictionnary, or
  // iDefaultNLSMessage when the catalogue raises its lookup error (a message
  // that builds as empty is returned as it is).
  static KORUnicodeString GetNLSMessage(const KORString& iNLSDictionnary,
                                        const KORString& iNLSMessageKey,
                                        const KORUnicodeString& iDefaultNLSMessage);
  // Translated kind: "Query", "Graph", or "None" for any other value (the
  // English texts stand in for an empty or missing translation).
  static KORUnicodeString GetNLSType(const _KORLumSessionFileType iType);
  // Translated load mode: "Dynamic", "Static", or "None".
  static KORUnicodeString GetNLSLoadMode(const _KORLumGraphSessionLoadMode iLoadMode);
  // Translated instance mode: "All", "Selected", or "None".
  static KORUnicodeString GetNLSInstanceMode(const _KORLumGraphSessionInstanceMode iInstanceMode);
  // The texts of the set option bits in the order Report, Modification,
  // Query, CSB ("R", "M", "Q", "C" untranslated) joined by the separator
  // ("+" untranslated); empty when none of the four bits is set.
  static KORUnicodeString GetNLSOption(const unsigned long iOption);
  // Translated "no file" text ("None" untranslated), read at every call.
  static KORUnicodeString GetNLSNoFile();
  // Translated "no viewer" text ("None" untranslated), read once.
  static KORUnicodeString GetNLSNoViewer();
  // The translated name of an object of the viewer catalogue, or iObject.
  static KORUnicodeString GetNLSObject(const KORUnicodeString& iObject);
  // The translated label of a viewer of the viewer catalogue, or iViewer.
  static KORUnicodeString GetNLSViewer(const KORUnicodeString& iViewer);
  // The translated object names, index for index with the objects.
  static KORListValKORUnicodeString GetNLSObjects();
  // The translated viewer labels, index for index with GetViewers().
  static KORListValKORUnicodeString GetNLSViewers();
};

#endif
