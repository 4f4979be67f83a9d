// KORLumViewerBag: the viewers that can show one object, as an object name
// and the list of its viewer names (1-based, in the order they were given or
// added).
//
// The constructor takes the object and the list as given: empty and repeated
// names are kept. Only Add filters what it appends. Equality looks at the
// object only, so two bags of one object are equal whatever their viewers.
//
//   KORListValKORUnicodeString viewers;
//   viewers.Append("Viewer3D");
//   KORLumViewerBag bag("Part", viewers);
//   bag.Add("Viewer2D");   // 0: added, now the last viewer
//   bag.Add("Viewer3D");   // 1: already present, nothing changes
//   bag.Add("");           // -1: empty name rejected, nothing changes
//
// Getters of the object and the viewers return the members themselves. Every
// operation opens a trace scope; none writes a line.
#ifndef KORLumViewerBag_h
#define KORLumViewerBag_h

#include "KORListValKORUnicodeString.h"
#include "KORUnicodeString.h"
#include "VX0SESS0Export.h"

class VX0SESS0_API KORLumViewerBag {
 public:
  // Copies the object and the whole list, unchecked.
  KORLumViewerBag(const KORUnicodeString& iObject, const KORListValKORUnicodeString& iViewers);
  KORLumViewerBag(const KORLumViewerBag& iCopy);
  // An empty object with no viewers (a valid, usable bag).
  KORLumViewerBag();
  virtual ~KORLumViewerBag();

  // Assigns the object, then the whole list (an empty source list empties
  // this bag's list).
  KORLumViewerBag& operator=(const KORLumViewerBag& iCopy);

  // 1 when the objects are equal, else 0; the viewers are not compared.
  int operator==(const KORLumViewerBag& iOther) const;
  // The negation of operator==.
  int operator!=(const KORLumViewerBag& iOther) const;

  // The object name (the member itself).
  [[nodiscard]] const KORUnicodeString& GetObject() const;
  // The number of viewers.
  [[nodiscard]] int GetNumberOfViewers() const;
  // The viewer at iIndex (1 <= iIndex <= GetNumberOfViewers()), the list
  // element itself; out of range, the string list stops the process.
  [[nodiscard]] const KORUnicodeString& GetViewer(const int iIndex) const;
  // The viewers (the member itself).
  [[nodiscard]] const KORListValKORUnicodeString& GetViewers() const;

  // Appends iViewer at the end and returns 0; returns 1 without change when
  // it is already present, -1 without change when it is empty.
  int Add(const KORUnicodeString& iViewer);

 private:
  KORUnicodeString _object;
  KORListValKORUnicodeString _viewers;
};

#endif
