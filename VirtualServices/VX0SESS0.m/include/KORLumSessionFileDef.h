// KORLumSessionFileDef: one kind of session file as the client configures it —
// its type, a name, a file-name suffix, and the viewers that apply, given
// either as viewer bags (objects with their viewers) or as plain viewer names.
//
// A definition carries one of the two lists, according to the constructor
// used; the other stays empty and neither is derived from the other. The
// constructors that take a list require a non-empty name (an empty one stops
// the process through an assertion) and clean the list: later bags of an
// object already seen are dropped with their viewers; empty and repeated
// viewer names are dropped. Type and suffix are stored as given, unchecked.
//
//   KORListValKORUnicodeString viewers;   // "V1", "", "V2", "V1"
//   KORLumSessionFileDef def(KORLumSessionFileType_Graph, "Graph", KORLumSessionFileSuffix_Graph,
//                            viewers);
//   def.GetViewers();                     // "V1", "V2"
//   def.GetViewerBags().Size();           // 0
//
// Equality looks at the type only. Assignment merges: a list of the source
// replaces this definition's list only when it is not empty.
//
// Getters of the name, the suffix, the lists and a bag return the members
// themselves; the type is returned by value. Every operation opens a trace
// scope; the list constructors trace their inputs and what they kept.
#ifndef KORLumSessionFileDef_h
#define KORLumSessionFileDef_h

#include "KORListLumViewerBag.h"
#include "KORListValKORUnicodeString.h"
#include "KORLumSessionFileType.h"
#include "KORUnicodeString.h"
#include "VX0SESS0Export.h"

class VX0SESS0_API KORLumSessionFileDef {
 public:
  // No list: both lists stay empty; the name is not checked.
  KORLumSessionFileDef(const _KORLumSessionFileType iType, const KORUnicodeString& iName,
                       const KORUnicodeString& iSuffix);
  // With the bags, when iViewerBags is not null (then the name must not be
  // empty); a null pointer is the same as no list.
  KORLumSessionFileDef(const _KORLumSessionFileType iType, const KORUnicodeString& iName,
                       const KORUnicodeString& iSuffix,
                       const KORListValKORLumViewerBag* const iViewerBags);
  // With the viewer names, when iViewers is not null (then the name must not
  // be empty); a null pointer is the same as no list.
  KORLumSessionFileDef(const _KORLumSessionFileType iType, const KORUnicodeString& iName,
                       const KORUnicodeString& iSuffix,
                       const KORListValKORUnicodeString* const iViewers);
  // With the bags; the name must not be empty.
  KORLumSessionFileDef(const _KORLumSessionFileType iType, const KORUnicodeString& iName,
                       const KORUnicodeString& iSuffix,
                       const KORListValKORLumViewerBag& iViewerBags);
  // With the viewer names; the name must not be empty.
  KORLumSessionFileDef(const _KORLumSessionFileType iType, const KORUnicodeString& iName,
                       const KORUnicodeString& iSuffix, const KORListValKORUnicodeString& iViewers);
  // A full copy (the assignment onto empty lists).
  KORLumSessionFileDef(const KORLumSessionFileDef& iCopy);
  // Forbidden: a definition always has a type, a name and a suffix. Calling
  // it stops the process through an assertion.
  KORLumSessionFileDef();
  virtual ~KORLumSessionFileDef();

  // Assigns type, name and suffix; each list of iDef replaces this one's
  // only when it is not empty.
  KORLumSessionFileDef& operator=(const KORLumSessionFileDef& iDef);

  // 1 when the types are equal, else 0; nothing else is compared.
  int operator==(const KORLumSessionFileDef& iOther) const;
  // The negation of operator==.
  int operator!=(const KORLumSessionFileDef& iOther) const;

  [[nodiscard]] _KORLumSessionFileType GetType() const;
  // The name (the member itself).
  [[nodiscard]] const KORUnicodeString& GetName() const;
  // The suffix (the member itself), as given.
  [[nodiscard]] const KORUnicodeString& GetSuffix() const;
  // The bag at iIndex (1 <= iIndex <= GetViewerBags().Size()), the list
  // element itself; out of range, the list stops the process.
  [[nodiscard]] const KORLumViewerBag& GetViewerBag(const int iIndex) const;
  // The bags (the member itself); empty for a definition built from names.
  [[nodiscard]] const KORListValKORLumViewerBag& GetViewerBags() const;
  // The viewer names (the member itself); empty for a definition built from
  // bags.
  [[nodiscard]] const KORListValKORUnicodeString& GetViewers() const;

 private:
  // Check the name, then keep the first bag of each object of a non-empty
  // list.
  void Build(const _KORLumSessionFileType iType, const KORUnicodeString& iName,
             const KORUnicodeString& iSuffix, const KORListValKORLumViewerBag& iViewerBags);
  // Check the name, then keep the non-empty, first-seen names of a non-empty
  // list.
  void Build(const _KORLumSessionFileType iType, const KORUnicodeString& iName,
             const KORUnicodeString& iSuffix, const KORListValKORUnicodeString& iViewers);

  _KORLumSessionFileType _type;
  KORUnicodeString _name;
  KORUnicodeString _suffix;
  KORListValKORLumViewerBag _viewerBags;
  KORListValKORUnicodeString _viewers;
};

#endif
