#include "KORLumViewerBag.h"

// Prepares the standard streams for trace output when the library is loaded.
#include <iostream>

#include "KORLumTrace.h"

KORLumViewerBag::KORLumViewerBag(const KORUnicodeString& iObject,
                                 const KORListValKORUnicodeString& iViewers)
    : _object(iObject), _viewers(iViewers) {
  KORLumTrace trace("KORLumViewerBag::KORLumViewerBag (iObject)");
}

KORLumViewerBag::KORLumViewerBag(const KORLumViewerBag& iCopy)
    : _object(iCopy._object), _viewers(iCopy._viewers) {
  KORLumTrace trace("KORLumViewerBag::KORLumViewerBag (KORLumViewerBag)");
}

KORLumViewerBag::KORLumViewerBag() { KORLumTrace trace("KORLumViewerBag::KORLumViewerBag"); }

KORLumViewerBag::~KORLumViewerBag() { KORLumTrace trace("KORLumViewerBag::~KORLumViewerBag"); }

KORLumViewerBag& KORLumViewerBag::operator=(const KORLumViewerBag& iCopy) {
  KORLumTrace trace("KORLumViewerBag::operator =");
  _object = iCopy._object;
  _viewers = iCopy._viewers;
  return *this;
}

// A bag stands for its object: the viewer catalogue holds one bag per object,
// so two bags of the same object are the same entry whatever viewers they
// carry. The bag list relies on this to find a bag by its object and to keep
// only the first bag of each object when it drops duplicates.
int KORLumViewerBag::operator==(const KORLumViewerBag& iOther) const {
  KORLumTrace trace("KORLumViewerBag::operator ==");
  return (_object == iOther._object) ? 1 : 0;
}

int KORLumViewerBag::operator!=(const KORLumViewerBag& iOther) const {
  KORLumTrace trace("KORLumViewerBag::operator !=");
  return (*this == iOther) ? 0 : 1;
}

const KORUnicodeString& KORLumViewerBag::GetObject() const {
  KORLumTrace trace("KORLumViewerBag::GetObject");
  return _object;
}

int KORLumViewerBag::GetNumberOfViewers() const {
  KORLumTrace trace("KORLumViewerBag::GetNumberOfViewers");
  return _viewers.Size();
}

const KORUnicodeString& KORLumViewerBag::GetViewer(const int iIndex) const {
  KORLumTrace trace("KORLumViewerBag::GetViewer");
  return _viewers[iIndex];
}

const KORListValKORUnicodeString& KORLumViewerBag::GetViewers() const {
  KORLumTrace trace("KORLumViewerBag::GetViewers");
  return _viewers;
}

int KORLumViewerBag::Add(const KORUnicodeString& iViewer) {
  KORLumTrace trace("KORLumViewerBag::Add");
  if (!(iViewer.GetLengthInChar() > 0)) return -1;
  if (_viewers.Locate(iViewer, 1) >= 1) return 1;
  _viewers.Append(iViewer);
  return 0;
}
