// KORLumViewerDef: the viewer with which a session file is opened, as a pair
// of an object (the kind of data shown) and a viewer (the tool that shows it).
//
// A definition is either complete (both names non-empty) or empty (both
// empty): a half-given pair is turned into the empty one, which is also
// shared as GetNoViewerDef(). Getters return the members themselves; the
// string forms are new strings.
//
//   KORLumViewerDef def("Part", "Viewer3D");
//   def.ConvertToString();                 // "Part.Viewer3D"
//   std::cout << def;                      // "Viewer3D" (the viewer only)
//   KORLumViewerDef half("Part", "");      // == KORLumViewerDef::GetNoViewerDef()
//
// Every operation opens a trace scope; none writes a line.
//
// Threads: the library is used from one thread at a time. The shared empty
// definition is built on the first call of GetNoViewerDef, without a lock;
// a program that uses the library from several threads serialises its calls.
#ifndef KORLumViewerDef_h
#define KORLumViewerDef_h

#include <iosfwd>

#include "KORUnicodeString.h"
#include "VX0SESS0Export.h"

class VX0SESS0_API KORLumViewerDef {
 public:
  // Copies both names; when either is empty, both are reset to empty.
  KORLumViewerDef(const KORUnicodeString& iObject, const KORUnicodeString& iViewer);
  KORLumViewerDef(const KORLumViewerDef& iCopy);
  // Forbidden: a definition always comes from two names or from another
  // definition. Calling it stops the process through an assertion.
  KORLumViewerDef();
  virtual ~KORLumViewerDef();

  // Assigns the object, then the viewer.
  KORLumViewerDef& operator=(const KORLumViewerDef& iCopy);

  // 1 when object and viewer are both equal, else 0.
  int operator==(const KORLumViewerDef& iOther) const;
  // The negation of operator==.
  int operator!=(const KORLumViewerDef& iOther) const;

  // The object name (the member itself).
  [[nodiscard]] const KORUnicodeString& GetObject() const;
  // The viewer name (the member itself).
  [[nodiscard]] const KORUnicodeString& GetViewer() const;

  // "<object>.<viewer>" for a complete definition, "" for the empty one.
  [[nodiscard]] KORUnicodeString ConvertToString() const;
  // Same as ConvertToString().
  operator KORUnicodeString() const;  // NOLINT(google-explicit-constructor)

  // The shared empty definition, built on first call; the same instance on
  // every call.
  static const KORLumViewerDef& GetNoViewerDef();

 private:
  KORUnicodeString _object;
  KORUnicodeString _viewer;
};

// Writes the viewer name only (nothing for the empty definition), no line end.
VX0SESS0_API std::ostream& operator<<(std::ostream& ioStream, const KORLumViewerDef& iDef);

#endif
