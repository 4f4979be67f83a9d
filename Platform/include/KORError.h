// KORError, KORNLSCatalogError and KORXHContext: the platform's raised errors
// and its protected regions.
//
// An error is raised as a heap object (KORRaise); ownership travels with it
// to the protected region that catches it. A KORXHContext delimits such a
// region: it runs a piece of code, catches the KORErrors raised there (and
// nothing else: standard exceptions pass through), and holds the caught
// error until it is released or raised again. A context deletes an error it
// still holds when it dies, so a caught error cannot leak.
//
//   KORXHContext context;
//   if (context.Protect([&] { message = catalog.GetMsg(key); })) {
//     if (context.IsKindOf(KORNLSCatalogError::ClassName())) {
//       report(context.GetDiagnostic());
//       context.Release();   // handled
//     } else {
//       context.Raise();     // not ours: raised again, unchanged
//     }
//   }
#ifndef KORError_h
#define KORError_h

#include <memory>
#include <utility>

#include "KORPlatformExport.h"
#include "KORString.h"

// Base of the platform's raised errors.
class KORPLATFORM_API KORError {
 public:
  explicit KORError(KORString iDiagnostic);
  virtual ~KORError();

  // "KORError".
  static const char* ClassName() noexcept;
  // The name of the error's own class.
  [[nodiscard]] virtual const char* GetClassName() const noexcept;
  // 1 when iClassName names the error's own class or one of its bases, else 0.
  [[nodiscard]] virtual int IsKindOf(const char* iClassName) const noexcept;
  // What went wrong, in one sentence.
  [[nodiscard]] const KORString& GetDiagnostic() const noexcept { return _diagnostic; }

 protected:
  KORError(const KORError&) = default;
  KORError& operator=(const KORError&) = default;

 private:
  KORString _diagnostic;
};

// Raised by the message catalogues when a catalogue or a key cannot be found.
class KORPLATFORM_API KORNLSCatalogError : public KORError {
 public:
  explicit KORNLSCatalogError(KORString iDiagnostic);
  ~KORNLSCatalogError() override;

  // "KORNLSCatalogError".
  static const char* ClassName() noexcept;
  [[nodiscard]] const char* GetClassName() const noexcept override;
  [[nodiscard]] int IsKindOf(const char* iClassName) const noexcept override;
};

// What travels up the stack while a KORError is raised: the owner of the
// heap error. Protected regions catch it; anything else that catches it and
// lets it go deletes the error with it.
class KORPLATFORM_API KORRaisedError {
 public:
  explicit KORRaisedError(KORError* iError) noexcept : _error(iError) {}
  KORRaisedError(KORRaisedError&&) noexcept = default;
  KORRaisedError& operator=(KORRaisedError&&) noexcept = default;
  ~KORRaisedError();
  // The error, handed over to the caller.
  KORError* Release() noexcept { return _error.release(); }
  [[nodiscard]] const KORError* Get() const noexcept { return _error.get(); }

 private:
  std::unique_ptr<KORError> _error;
};

// Raises iError, a heap object (a null pointer is a programming error). The
// caller gives up ownership.
[[noreturn]] KORPLATFORM_API void KORRaise(KORError* iError);

class KORPLATFORM_API KORXHContext {
 public:
  KORXHContext() noexcept = default;
  // Deletes the error the context still holds, if any.
  ~KORXHContext();
  KORXHContext(const KORXHContext&) = delete;
  KORXHContext& operator=(const KORXHContext&) = delete;

  // Runs iRegion. Returns 0 when it completes; 1 when it raised a KORError,
  // which the context then holds (replacing one it held before). Exceptions
  // that are not raised KORErrors pass through.
  template <typename Region>
  int Protect(Region&& iRegion) {
    try {
      std::forward<Region>(iRegion)();
      return 0;
    } catch (KORRaisedError& raised) {
      Hold(raised.Release());
      return 1;
    }
  }

  // The error held, or null.
  [[nodiscard]] const KORError* GetError() const noexcept { return _error.get(); }
  // 1 when an error is held and it is of the class iClassName or derives from
  // it, else 0.
  [[nodiscard]] int IsKindOf(const char* iClassName) const noexcept;
  // The held error's diagnostic (empty when none is held).
  [[nodiscard]] const KORString& GetDiagnostic() const noexcept;
  // Deletes the held error (nothing happens when none is held).
  void Release() noexcept;
  // Raises the held error again, unchanged; the context gives it up. Holding
  // no error is a programming error.
  [[noreturn]] void Raise();

 private:
  void Hold(KORError* iError) noexcept;

  std::unique_ptr<KORError> _error;
};

#endif
