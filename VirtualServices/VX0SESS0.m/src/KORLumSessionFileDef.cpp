#include "KORLumSessionFileDef.h"

// Prepares the standard streams for trace output when the library is loaded.
#include <iostream>

#include "KORLumTrace.h"

namespace {
// The name removed from a list of viewer names, built when the library is
// loaded.
const KORUnicodeString gEmptyString;
}  // namespace

KORLumSessionFileDef::KORLumSessionFileDef(const _KORLumSessionFileType iType,
                                           const KORUnicodeString& iName,
                                           const KORUnicodeString& iSuffix)
    : _type(iType), _name(iName), _suffix(iSuffix) {
  KORLumTrace trace("KORLumSessionFileDef::KORLumSessionFileDef (NULL)");
}

KORLumSessionFileDef::KORLumSessionFileDef(const _KORLumSessionFileType iType,
                                           const KORUnicodeString& iName,
                                           const KORUnicodeString& iSuffix,
                                           const KORListValKORLumViewerBag* const iViewerBags)
    : _type(iType), _name(iName), _suffix(iSuffix) {
  KORLumTrace trace("KORLumSessionFileDef::KORLumSessionFileDef (KORListLumViewerBag*)");
  if (iViewerBags) Build(iType, iName, iSuffix, *iViewerBags);
}

KORLumSessionFileDef::KORLumSessionFileDef(const _KORLumSessionFileType iType,
                                           const KORUnicodeString& iName,
                                           const KORUnicodeString& iSuffix,
                                           const KORListValKORUnicodeString* const iViewers)
    : _type(iType), _name(iName), _suffix(iSuffix) {
  KORLumTrace trace("KORLumSessionFileDef::KORLumSessionFileDef (KORListOfKORUnicodeString*)");
  if (iViewers) Build(iType, iName, iSuffix, *iViewers);
}

KORLumSessionFileDef::KORLumSessionFileDef(const _KORLumSessionFileType iType,
                                           const KORUnicodeString& iName,
                                           const KORUnicodeString& iSuffix,
                                           const KORListValKORLumViewerBag& iViewerBags)
    : _type(iType), _name(iName), _suffix(iSuffix) {
  KORLumTrace trace("KORLumSessionFileDef::KORLumSessionFileDef (KORListLumViewerBag)");
  Build(iType, iName, iSuffix, iViewerBags);
}

KORLumSessionFileDef::KORLumSessionFileDef(const _KORLumSessionFileType iType,
                                           const KORUnicodeString& iName,
                                           const KORUnicodeString& iSuffix,
                                           const KORListValKORUnicodeString& iViewers)
    : _type(iType), _name(iName), _suffix(iSuffix) {
  KORLumTrace trace("KORLumSessionFileDef::KORLumSessionFileDef (KORListOfKORUnicodeString)");
  Build(iType, iName, iSuffix, iViewers);
}

KORLumSessionFileDef::KORLumSessionFileDef(const KORLumSessionFileDef& iCopy)
    : _type(KORLumSessionFileType_None) {
  KORLumTrace trace("KORLumSessionFileDef::KORLumSessionFileDef (KORLumSessionFileDef)");
  *this = iCopy;
}

KORLumSessionFileDef::KORLumSessionFileDef() : _type(KORLumSessionFileType_None) {
  KORLumTrace trace("KORLumSessionFileDef::KORLumSessionFileDef");
  KORLUM_ASSERT(0, "KORLumSessionFileDef", 19);
}

KORLumSessionFileDef::~KORLumSessionFileDef() {
  KORLumTrace trace("KORLumSessionFileDef::~KORLumSessionFileDef");
}

// Assignment merges: a list of iDef replaces this definition's list only when
// it is not empty. The client gives a kind's type, name and suffix apart from
// its viewers, and updating the former from a definition that names no
// viewers must not lose the viewers already configured. The copy constructor
// still gives a full copy, since it assigns onto empty lists.
KORLumSessionFileDef& KORLumSessionFileDef::operator=(const KORLumSessionFileDef& iDef) {
  KORLumTrace trace("KORLumSessionFileDef::operator = ");
  _type = iDef._type;
  _name = iDef._name;
  _suffix = iDef._suffix;
  if (iDef._viewerBags.Size() > 0) _viewerBags = iDef._viewerBags;
  if (iDef._viewers.Size() > 0) _viewers = iDef._viewers;
  return *this;
}

// A definition stands for its kind of session file: the client configures at
// most one definition per type, so two definitions of the same type are the
// same entry whatever their names, suffixes and viewers. Lists of definitions
// rely on this to find a kind and to drop a kind given twice.
int KORLumSessionFileDef::operator==(const KORLumSessionFileDef& iOther) const {
  KORLumTrace trace("KORLumSessionFileDef::operator == ");
  const int isEqual = (_type == iOther._type) ? 1 : 0;
  trace.Value("isEqual", isEqual);
  return isEqual;
}

int KORLumSessionFileDef::operator!=(const KORLumSessionFileDef& iOther) const {
  KORLumTrace trace("KORLumSessionFileDef::operator !=");
  const int isDifferent = (*this == iOther) ? 0 : 1;
  trace.Value("isDifferent", isDifferent);
  return isDifferent;
}

_KORLumSessionFileType KORLumSessionFileDef::GetType() const {
  return KORLumTrace::Getter("KORLumSessionFileDef::GetType", "_type", _type);
}

const KORUnicodeString& KORLumSessionFileDef::GetName() const {
  return KORLumTrace::Getter("KORLumSessionFileDef::GetName", "_name", _name);
}

const KORUnicodeString& KORLumSessionFileDef::GetSuffix() const {
  return KORLumTrace::Getter("KORLumSessionFileDef::GetSuffix", "_suffix", _suffix);
}

const KORLumViewerBag& KORLumSessionFileDef::GetViewerBag(const int iIndex) const {
  KORLumTrace trace("KORLumSessionFileDef::GetViewerBag");
  if (trace.IsActive())
    trace.Line("Object [", iIndex, "] = [", _viewerBags[iIndex].GetObject(), "]");
  return _viewerBags[iIndex];
}

const KORListValKORLumViewerBag& KORLumSessionFileDef::GetViewerBags() const {
  KORLumTrace trace("KORLumSessionFileDef::GetViewerBags");
  if (trace.IsActive()) trace.Line("Number of viewer bag(s) = [", _viewerBags.Size(), "]");
  return _viewerBags;
}

const KORListValKORUnicodeString& KORLumSessionFileDef::GetViewers() const {
  KORLumTrace trace("KORLumSessionFileDef::GetViewers");
  return _viewers;
}

// A bag with an empty object or without viewers is kept: only names are
// cleaned of empty entries.
void KORLumSessionFileDef::Build(const _KORLumSessionFileType iType, const KORUnicodeString& iName,
                                 const KORUnicodeString& iSuffix,
                                 const KORListValKORLumViewerBag& iViewerBags) {
  KORLumTrace trace("KORLumSessionFileDef::Build (KORListLumViewerBag)");
  trace.Value("iType", iType);
  trace.Value("iName", iName);
  trace.Value("iSuffix", iSuffix);
  KORLUM_ASSERT(iName.GetLengthInChar(), "KORLumSessionFileDef", 48);
  if (!(iViewerBags.Size() > 0)) return;
  _viewerBags = iViewerBags;
  _viewerBags.RemoveDuplicates();
  if (!trace.IsActive()) return;
  const int nbViewerBag = _viewerBags.Size();
  trace.Value("nbViewerBag", nbViewerBag);
  for (int i = 1; i <= nbViewerBag; ++i) {
    const KORLumViewerBag& bag = _viewerBags[i];
    trace.Line("Viewer bag [", i, "]: Object = [", bag.GetObject(), "]");
    const int nbViewer = bag.GetNumberOfViewers();
    for (int j = 1; j <= nbViewer; ++j) {
      trace.Line("Viewer bag [", i, "]: Viewer [", j, "] = [", bag.GetViewer(j), "]");
    }
  }
}

void KORLumSessionFileDef::Build(const _KORLumSessionFileType iType, const KORUnicodeString& iName,
                                 const KORUnicodeString& iSuffix,
                                 const KORListValKORUnicodeString& iViewers) {
  KORLumTrace trace("KORLumSessionFileDef::Build (KORListOfKORUnicodeString)");
  trace.Value("iType", iType);
  trace.Value("iName", iName);
  trace.Value("iSuffix", iSuffix);
  KORLUM_ASSERT(iName.GetLengthInChar(), "KORLumSessionFileDef", 112);
  if (!(iViewers.Size() > 0)) return;
  _viewers = iViewers;
  _viewers.RemoveValue(gEmptyString);
  _viewers.RemoveDuplicates();
  if (!trace.IsActive()) return;
  const int nbViewer = _viewers.Size();
  trace.Value("nbViewer", nbViewer);
  for (int i = 1; i <= nbViewer; ++i) trace.Line("Viewer [", i, "] = [", _viewers[i], "]");
}
