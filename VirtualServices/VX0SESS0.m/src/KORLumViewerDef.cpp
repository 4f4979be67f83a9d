#include "KORLumViewerDef.h"

#include <iostream>

#include "KORLumLazyInstance.h"
#include "KORLumTrace.h"

namespace {
// The shared no-viewer definition, built on the first GetNoViewerDef call.
KORLumLazyInstance<KORLumViewerDef> gNoViewerDef;
}  // namespace

KORLumViewerDef::KORLumViewerDef(const KORUnicodeString& iObject, const KORUnicodeString& iViewer)
    : _object(iObject), _viewer(iViewer) {
  KORLumTrace trace("KORLumViewerDef::KORLumViewerDef 2");
  if (_object.GetLengthInChar() > 0 && _viewer.GetLengthInChar() > 0) return;
  // A half-given pair silently becomes the empty definition.
  _object.Reset();
  _viewer.Reset();
}

KORLumViewerDef::KORLumViewerDef(const KORLumViewerDef& iCopy)
    : _object(iCopy._object), _viewer(iCopy._viewer) {
  KORLumTrace trace("KORLumViewerDef::KORLumViewerDef (KORLumViewerDef)");
}

KORLumViewerDef::KORLumViewerDef() {
  KORLumTrace trace("KORLumViewerDef::KORLumViewerDef");
  KORLUM_ASSERT(0, "KORLumViewerDef", 14);
}

KORLumViewerDef::~KORLumViewerDef() { KORLumTrace trace("KORLumViewerDef::~KORLumViewerDef"); }

KORLumViewerDef& KORLumViewerDef::operator=(const KORLumViewerDef& iCopy) {
  KORLumTrace trace("KORLumViewerDef::operator =");
  _object = iCopy._object;
  _viewer = iCopy._viewer;
  return *this;
}

int KORLumViewerDef::operator==(const KORLumViewerDef& iOther) const {
  KORLumTrace trace("KORLumViewerDef::operator ==");
  return (_object == iOther._object && _viewer == iOther._viewer) ? 1 : 0;
}

int KORLumViewerDef::operator!=(const KORLumViewerDef& iOther) const {
  KORLumTrace trace("KORLumViewerDef::operator !=");
  return (*this == iOther) ? 0 : 1;
}

const KORUnicodeString& KORLumViewerDef::GetObject() const {
  return KORLumTrace::Silent("KORLumViewerDef::GetObject", _object);
}

const KORUnicodeString& KORLumViewerDef::GetViewer() const {
  return KORLumTrace::Silent("KORLumViewerDef::GetViewer", _viewer);
}

KORUnicodeString KORLumViewerDef::ConvertToString() const {
  KORLumTrace trace("KORLumViewerDef::ConvertToString");
  KORUnicodeString result;
  if (*this != GetNoViewerDef()) {
    result.Append(_object);
    result.Append(".");
    result.Append(_viewer);
  }
  return result;
}

// The short label is the one this operation has always traced under; it is
// kept so that existing trace readers keep matching it.
KORLumViewerDef::operator KORUnicodeString() const {
  KORLumTrace trace("KORLumViewerDef::operator");
  return ConvertToString();
}

const KORLumViewerDef& KORLumViewerDef::GetNoViewerDef() {
  KORLumTrace trace("KORLumViewerDef::GetNoViewerDef");
  if (!gNoViewerDef.IsCreated()) gNoViewerDef.Create(KORUnicodeString(), KORUnicodeString());
  return gNoViewerDef.Get();
}

std::ostream& operator<<(std::ostream& ioStream, const KORLumViewerDef& iDef) {
  // The object is left out on purpose: a stream shows just the viewer, while
  // ConvertToString gives the pair.
  return ioStream << iDef.GetViewer().ConvertToChar();
}
