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
// program that needs fresh answers reloads the library. The translated texts
// of the values (type, modes, options, "no file") follow the message
// catalogues instead: a text is looked up again whenever the catalogue
// service may answer otherwise than it did (after KORMsgCatalog::FlushCache,
// or after a catalogue could not be read for now), and at every call while
// tracing is on; in between, the text found last is given again. Single-
// threaded use is assumed: the caches are filled without locks.
//
//   KORLumSessionFileUtilities::GetGraphFilesPath();   // "/data/sessions/"
//   KORLumSessionFileUtilities::GetViewers("Part");    // the viewers of Part
//   KORLumSessionFileUtilities::GetNLSType(KORLumSessionFileType_Graph);  // "Graph" or its
//   translation
//
// No operation reports an error: a resource, catalogue or setting that cannot
// be found gives the documented fallback, and nothing is raised.
#ifndef KORLumSessionFileUtilities_h
#define KORLumSessionFileUtilities_h

#include <vector>

#include "KORListLumViewerBag.h"
#include "KORListLumViewerDef.h"
#include "KORListValKORUnicodeString.h"
#include "KORLumSessionFileType.h"
#include "KORString.h"
#include "KORUnicodeString.h"
#include "VX0SESS0Export.h"

// A key that the library reads (see KORLumSessionFileUtilities::GetKeysRead).
struct KORLumKeyRead {
  enum Source {
    Declaration = 0,  // a key of a declaration resource (Name.dcls)
    Setting = 1,      // a variable that an administrator sets in the services
    Catalogue = 2     // a key of a message catalogue (Name.msgcat)
  };
  Source source;
  // The resource ("KORBRIX"), the administrator ("LUMAdmin") or the
  // catalogue ("KORLumSessionFile") that holds the key.
  const char* container;
  // The key. In a METHOD_LIST key, "%d" stands for the entry's index. For a
  // derived key, the suffix that follows the value of the field derivedFrom.
  const char* key;
  // For a derived key, the METHOD_LIST field whose value starts the key:
  // "TAG" (TAG + ".Label") or "KORAB" (KORAB + ".Synonym"); else null.
  const char* derivedFrom;
  // The values the library tests the key's value against (exactly, case
  // included), null-terminated; null when any value is taken as it is.
  const char* const* accepted;
};

// What the viewer catalogue decides for one entry of the METHOD_LIST table
// (see KORLumSessionFileUtilities::ExplainViewers).
struct KORLumMethodListEntry {
  enum Decision {
    Kept = 0,         // its viewer is added and reading goes on
    KeptAndLast = 1,  // its viewer is added, but it has no KORAB: reading stops after it
    Skipped = 2,      // WHERE or ROLE does not select it: reading goes on
    Stopped = 3,      // selected, but COMMAND or TAG is not declared: not added, reading stops
    End = 4           // WHERE is not declared: the table ends here
  };
  // One field of the entry, as the catalogue read it.
  struct Field {
    int read = 0;            // 1 when the catalogue read this field
    int declared = 0;        // 1 when it is declared (possibly empty)
    KORUnicodeString key;    // the key read, e.g. "KORBRIX.METHOD_LIST(3).ROLE"
    KORUnicodeString value;  // its value ("" when not declared)
    KORUnicodeString file;   // where it is declared ("" when not declared)
    int line = 0;            // the line of that declaration
  };
  int index = 0;  // n of METHOD_LIST(n)
  Decision decision = End;
  Field where, role, command, tag, object;
  // For an entry whose viewer is added: its position in GetViewers(), the
  // label put at that position of GetNLSViewers(), and the label that
  // GetNLSViewer(command) gives (that of the first entry of the same
  // command, which differs when one command is declared with several TAGs).
  int viewerPosition = 0;
  KORUnicodeString label;
  KORUnicodeString shownLabel;
  // 1 when this entry adds its object to the catalogue (its first entry),
  // with the object's translated name; 0 when the object was known, is
  // empty or is not declared.
  int addsObject = 0;
  KORUnicodeString synonym;
};

// How a files path is derived (see KORLumSessionFileUtilities::ExplainBRIXFilesPath).
struct KORLumPathExplanation {
  KORUnicodeString resource;                  // the declaration resource read ("MERLO", "KORBRIX")
  KORUnicodeString key;                       // the key read ("MERLO.BRIXFILES")
  int resourceLoaded = 0;                     // 1 when the resource could be loaded
  int declared = 0;                           // 1 when the key is declared (possibly empty)
  KORUnicodeString file;                      // where it is declared
  int line = 0;                               // the line of that declaration
  KORUnicodeString fallback;                  // when the resource cannot be loaded: what stands in
                                              // ("$PWD", "BRIX files path"); else ""
  KORUnicodeString value;                     // the declared (or fallback) value, before expansion
  KORListValKORUnicodeString unsetVariables;  // variables the value uses that are unset
  KORUnicodeString path;                      // the path it gives
};

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
  //
  // The viewer catalogue is read from the METHOD_LIST table of the "KORBRIX"
  // declaration resource, entry by entry from METHOD_LIST(1):
  //
  //   KORBRIX.METHOD_LIST(1).WHERE   = HUB        where the method applies
  //   KORBRIX.METHOD_LIST(1).ROLE    = Tools      its role
  //   KORBRIX.METHOD_LIST(1).COMMAND = Viewer3D   the viewer
  //   KORBRIX.METHOD_LIST(1).TAG     = Viewer3D   its label: Viewer3D.Label in "KORDMToolsManager"
  //   KORBRIX.METHOD_LIST(1).KORAB   = Part       the object it opens: Part.Synonym in
  //                                               "KORLumSessionFile" translates it
  //
  // 1. An entry without WHERE ends the table: reading stops there, also when
  //    later entries are declared.
  // 2. An entry is selected when WHERE is exactly "HUB" or "Both" and ROLE is
  //    exactly "Tools" (case included). Any other entry, one without ROLE
  //    included, is skipped and reading goes on with the next index.
  // 3. A selected entry without COMMAND or without TAG stops the reading; its
  //    viewer is not added.
  // 4. A selected entry adds COMMAND to the viewers (again if it was already
  //    there), labelled with TAG.Label, or with COMMAND when TAG is empty or
  //    the label is missing or empty.
  // 5. Its KORAB names the object: the first entry of an object adds the
  //    object (with its synonym) and a bag of viewers; a later one adds its
  //    viewer to that bag unless it is in it already. An empty KORAB adds no
  //    object. A selected entry WITHOUT KORAB keeps its viewer but stops the
  //    reading after it.
  // 6. When "KORBRIX" cannot be loaded, the catalogue stays empty.
  // The catalogue is read once; ExplainViewers reports these decisions.

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
  // iDefaultNLSMessage when the catalogue has no file or no level declares
  // the key (a message declared empty is returned as it is). With tracing
  // on, a missing text writes an "Error : " line with the catalogue's
  // diagnostic.
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

  // --- Explanations (for the tools that check a configuration) ----------------
  // They answer from the configuration as it is now, through the same code
  // as the operations above, and change none of the answers kept.

  // Every key that the library reads: declarations, the administrator
  // setting, the catalogue keys, and the keys derived from the METHOD_LIST
  // fields TAG and KORAB (a copy of a fixed table).
  static std::vector<KORLumKeyRead> GetKeysRead();
  // Reads the METHOD_LIST table with the viewer catalogue's own reader, into
  // a catalogue of its own, and sets oEntries to its decision on each entry
  // it read, in order: the last one tells where and why reading stops.
  // Returns 0, or non-zero (oEntries empty) when "KORBRIX" cannot be loaded.
  static int ExplainViewers(std::vector<KORLumMethodListEntry>& oEntries);
  // How GetBRIXFilesPath() and GetGraphFilesPath() derive their path: the
  // declaration (and its place), the fallback, the variables left unset.
  static KORLumPathExplanation ExplainBRIXFilesPath();
  static KORLumPathExplanation ExplainGraphFilesPath();
};

#endif
