// KORLumSessionFile: one session file together with the way it is opened —
// its kind, its file, the viewer that shows it, a load mode, an instance mode
// and option bits.
//
// The viewer is named either by a viewer definition or by a bare viewer name,
// according to the constructor used; the other one stays empty (the no-viewer
// definition, or the empty name) and neither is derived from the other. The
// constructors normalise instead of rejecting: a None session file has no
// file and no viewer, and a mode of 0 becomes 1 (Dynamic, All). Nothing else
// is checked; out-of-range kinds and modes are stored as given.
//
//   KORLumSessionFile file(KORLumSessionFileType_Graph, "/data/model.hub", "Viewer3D",
//                          KORLumGraphSessionLoadMode_None,
//                          KORLumGraphSessionInstanceMode_Selected,
//                          KORLumSessionFileOption_Report);
//   file.GetLoadMode();       // 1 (Dynamic): 0 became the default
//   file.GetViewerDef();      // == KORLumViewerDef::GetNoViewerDef()
//
// Getters of the file, the viewer definition and the viewer name return the
// members themselves; the kind, the modes and the options are returned by
// value. Every operation opens a trace scope and, while tracing is on, writes
// its inputs, the operand it reads or the member it returns.
//
// Threads: the library is used from one thread at a time. The shared
// no-session-file value is built on the first call of GetNoSessionFile, and
// the translated texts come from caches filled on first use, without a lock;
// a program that uses the library from several threads serialises its calls.
#ifndef KORLumSessionFile_h
#define KORLumSessionFile_h

#include "KORLumSessionFileType.h"
#include "KORLumViewerDef.h"
#include "KORUnicodeString.h"
#include "VX0SESS0Export.h"

class KORLumTrace;

class VX0SESS0_API KORLumSessionFile {
 public:
  // Type None, no file, the no-viewer definition, no viewer name, modes 1 and
  // 1, options 0.
  KORLumSessionFile();
  // From a viewer definition; the viewer name stays empty. Type None empties
  // the file and the viewer definition; a mode of 0 becomes 1 afterwards.
  KORLumSessionFile(const _KORLumSessionFileType iType, const KORUnicodeString& iFile,
                    const KORLumViewerDef& iViewer, const _KORLumGraphSessionLoadMode iLoadMode,
                    const _KORLumGraphSessionInstanceMode iInstanceMode,
                    const unsigned long iOption);
  // From a viewer name; the viewer definition is the no-viewer definition.
  // Type None empties the file and the viewer name; a mode of 0 becomes 1
  // afterwards.
  KORLumSessionFile(const _KORLumSessionFileType iType, const KORUnicodeString& iFile,
                    const KORUnicodeString& iViewer, const _KORLumGraphSessionLoadMode iLoadMode,
                    const _KORLumGraphSessionInstanceMode iInstanceMode,
                    const unsigned long iOption);
  // Copies all seven members, whatever the type.
  KORLumSessionFile(const KORLumSessionFile& iCopy);
  virtual ~KORLumSessionFile();

  // Assigns all seven members, whatever the type (assigning a value to
  // itself leaves it unchanged).
  KORLumSessionFile& operator=(const KORLumSessionFile& iCopy);

  // 1 when all seven members are equal, else 0.
  int operator==(const KORLumSessionFile& iOther) const;
  // The negation of operator==.
  int operator!=(const KORLumSessionFile& iOther) const;

  [[nodiscard]] _KORLumSessionFileType GetType() const;
  // The file (the member itself), exactly as given.
  [[nodiscard]] const KORUnicodeString& GetFile() const;
  // The viewer definition (the member itself).
  [[nodiscard]] const KORLumViewerDef& GetViewerDef() const;
  // The viewer name (the member itself).
  [[nodiscard]] const KORUnicodeString& GetViewer() const;
  [[nodiscard]] _KORLumGraphSessionLoadMode GetLoadMode() const;
  [[nodiscard]] _KORLumGraphSessionInstanceMode GetInstanceMode() const;
  // The option bits, all of them as given.
  [[nodiscard]] unsigned long GetOption() const;

  // --- Display line and string form ---------------------------------------------
  //
  // The translated ("NLS") texts come from KORLumSessionFileUtilities; each
  // operation returns a new string.

  // The translated display line:
  //   None (0):      "%t"
  //   Query (2):     "%t : %f"
  //   anything else: "%t : %f [%v] [%l] [%i]", then " [%o]" when the option
  //                  text is not empty
  // with %t the kind, %f the shortened file, %v the viewer, %l the load mode,
  // %i the instance mode and %o the options, each translated.
  [[nodiscard]] KORUnicodeString GetNLS() const;
  // The translated kind.
  [[nodiscard]] KORUnicodeString GetNLSType() const;
  // The file, shortened for display when it has 33 characters or more: part
  // of its directories is replaced by ".../", and the base name is kept whole.
  [[nodiscard]] KORUnicodeString GetNLSFile() const;
  // The translated object and viewer of the viewer definition, joined by ".",
  // or the "no viewer" text for the no-viewer definition.
  [[nodiscard]] KORUnicodeString GetNLSViewerDef() const;
  // The translated viewer name, or the "no viewer" text when there is no
  // viewer name. Never empty.
  [[nodiscard]] KORUnicodeString GetNLSViewer() const;
  // The translated load mode.
  [[nodiscard]] KORUnicodeString GetNLSLoadMode() const;
  // The translated instance mode.
  [[nodiscard]] KORUnicodeString GetNLSInstanceMode() const;
  // The translated option texts joined by the separator; empty when none of
  // the four option bits is set.
  [[nodiscard]] KORUnicodeString GetNLSOption() const;
  // The untranslated line, with the file in full:
  //   None (0):      "0"
  //   Query (2):     "2 : <file>"
  //   anything else: "<type> : <file> [<viewer>] [<load mode>] [<instance mode>] [<options>]"
  // where the viewer is the viewer name, or else the viewer definition's
  // string form.
  [[nodiscard]] KORUnicodeString ConvertToString() const;
  // Same as ConvertToString().
  operator KORUnicodeString() const;  // NOLINT(google-explicit-constructor)

  // The shared value that stands for no session file (type None, modes 1
  // and 1, options 0), built on first call; the same instance on every call.
  static const KORLumSessionFile& GetNoSessionFile();

 private:
  // Writes the members of this value as the bracketed lines with which
  // operator= and operator== show their operand.
  void TraceAsOperand(KORLumTrace& ioTrace) const;

  _KORLumSessionFileType _type;
  KORUnicodeString _file;
  KORLumViewerDef _viewerDef;
  KORUnicodeString _viewer;
  _KORLumGraphSessionLoadMode _loadMode;
  _KORLumGraphSessionInstanceMode _instanceMode;
  unsigned long _option;
};

#endif
