#include "KORError.h"

#include <cstring>

#include "KORPlatformCheck.h"

KORError::KORError(KORString iDiagnostic) : _diagnostic(std::move(iDiagnostic)) {}

KORError::~KORError() = default;

const char* KORError::ClassName() noexcept { return "KORError"; }

const char* KORError::GetClassName() const noexcept { return ClassName(); }

int KORError::IsKindOf(const char* iClassName) const noexcept {
  return iClassName && std::strcmp(iClassName, ClassName()) == 0 ? 1 : 0;
}

KORNLSCatalogError::KORNLSCatalogError(KORString iDiagnostic) : KORError(std::move(iDiagnostic)) {}

KORNLSCatalogError::~KORNLSCatalogError() = default;

const char* KORNLSCatalogError::ClassName() noexcept { return "KORNLSCatalogError"; }

const char* KORNLSCatalogError::GetClassName() const noexcept { return ClassName(); }

int KORNLSCatalogError::IsKindOf(const char* iClassName) const noexcept {
  if (iClassName && std::strcmp(iClassName, ClassName()) == 0) return 1;
  return KORError::IsKindOf(iClassName);
}

KORRaisedError::~KORRaisedError() = default;

void KORRaise(KORError* iError) {
  KOR_PLATFORM_CHECK(iError != nullptr);
  throw KORRaisedError(iError);
}

KORXHContext::~KORXHContext() = default;

int KORXHContext::IsKindOf(const char* iClassName) const noexcept {
  return _error ? _error->IsKindOf(iClassName) : 0;
}

const KORString& KORXHContext::GetDiagnostic() const noexcept {
  static const KORString kNone;
  return _error ? _error->GetDiagnostic() : kNone;
}

void KORXHContext::Release() noexcept { _error.reset(); }

void KORXHContext::Raise() {
  KOR_PLATFORM_CHECK(_error != nullptr);
  KORRaise(_error.release());
}

void KORXHContext::Hold(KORError* iError) noexcept { _error.reset(iError); }
